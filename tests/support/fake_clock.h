// A clock of the test's own in place of the platform's, for as long as it lives: a sleep returns
// at once and moves the clock's time on, and a wait that finds nothing ready gives up at once,
// its whole time-out counted as passed, so that a silent peer costs no wall time. It notes
// every sleep and wait of the library in order, so that a test can hold the library to the
// pauses and time-outs of the protocol.
//
// A serial line is paced by sleeps alone: the library reads after a pause and gives up when the
// tick count says the time is over. Paced sleeps take a fifth of their time for real, so that a
// real peer still answers in the time the library gives it while the exchange runs five times
// faster.
//
// It is installed for the whole process: the library's calls on every thread see it. Use it
// where the peer stays silent or the order of events is forced; where a real peer has to answer
// in time over a serial line, use real waits and paced sleeps. Threads that use the library
// under it must be joined before it goes.
#pragma once

#include <cstdint>
#include <functional>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "platform/clock.h"

namespace zel::test {

class FakeClock final : public platform::Clock {
  public:
    enum class Waits {
        Expire, // a wait finds what is ready at this moment, else it times out at once
        Real,   // a wait blocks for real up to its time-out; only the sleeps are skipped
    };

    enum class Sleeps {
        Skip,  // a sleep returns at once
        Paced, // a sleep takes a fifth of its time for real
    };

    // `startTick` is the first tick count the library reads.
    explicit FakeClock(Waits waits = Waits::Expire, uint32_t startTick = 0,
                       Sleeps sleeps = Sleeps::Skip);
    // Real waits and paced sleeps: a real peer on a serial line, five times faster.
    static constexpr struct PacedTag {
    } kPaced{};
    explicit FakeClock(PacedTag) : FakeClock(Waits::Real, 0, Sleeps::Paced) {}
    ~FakeClock() override;
    FakeClock(const FakeClock &) = delete;
    FakeClock &operator=(const FakeClock &) = delete;

    // In order: "sleep 100", "wait 5000 timed out", "wait 3000 ready", "wait 1000 failed".
    std::vector<std::string> events() const;
    // Runs `action` once, on the thread whose sleep or wait brings the clock's time (0 when it
    // was made) to `atMs` or beyond.
    void at(uint64_t atMs, std::function<void()> action);

    uint32_t tick_count_ms() override;
    void sleep_ms(uint32_t milliseconds) override;
    int poll(pollfd *fds, std::size_t count, uint32_t timeoutMs) override;

  private:
    void pass(std::string event, uint32_t milliseconds);

    const Waits m_waits;
    const uint32_t m_startTick;
    const Sleeps m_sleeps;
    platform::Clock *m_previous = nullptr;
    mutable std::mutex m_mutex;
    uint64_t m_elapsed = 0;
    std::vector<std::string> m_events;
    std::vector<std::pair<uint64_t, std::function<void()>>> m_actions;
};

} // namespace zel::test

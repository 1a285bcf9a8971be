// The clock of the fuzz targets that go through a peer: sleeps return at once and move the
// tick count on, and a wait on descriptors only looks at what is ready now. A peer that would
// wait seconds for an answer that is not there gives up at once, as on its time-out.
#pragma once

#include <cstdint>

#include "platform/clock.h"

namespace zel::fuzz {

class InstantClock final : public platform::Clock {
  public:
    InstantClock() { platform::install_clock(this); }
    ~InstantClock() override { platform::install_clock(nullptr); }
    InstantClock(const InstantClock &) = delete;
    InstantClock &operator=(const InstantClock &) = delete;

    uint32_t tick_count_ms() override { return m_ticks; }
    void sleep_ms(uint32_t milliseconds) override { m_ticks += milliseconds; }
    int poll(pollfd *fds, std::size_t count, uint32_t timeoutMs) override {
        const int ready = platform::real_clock().poll(fds, count, 0);
        if (ready == 0) m_ticks += timeoutMs;
        return ready;
    }

  private:
    uint32_t m_ticks = 0;
};

} // namespace zel::fuzz

#include "support/fake_clock.h"

#include <utility>

namespace zel::test {

namespace {

constexpr uint32_t kPaceDivisor = 5;

} // namespace

FakeClock::FakeClock(Waits waits, uint32_t startTick, Sleeps sleeps)
    : m_waits(waits), m_startTick(startTick), m_sleeps(sleeps) {
    m_previous = platform::install_clock(this);
}

FakeClock::~FakeClock() {
    platform::install_clock(m_previous);
}

std::vector<std::string> FakeClock::events() const {
    std::lock_guard<std::mutex> guard(m_mutex);
    return m_events;
}

void FakeClock::at(uint64_t atMs, std::function<void()> action) {
    std::lock_guard<std::mutex> guard(m_mutex);
    m_actions.emplace_back(atMs, std::move(action));
}

uint32_t FakeClock::tick_count_ms() {
    std::lock_guard<std::mutex> guard(m_mutex);
    return static_cast<uint32_t>(m_startTick + m_elapsed); // wraps like the real tick count
}

void FakeClock::sleep_ms(uint32_t milliseconds) {
    if (m_sleeps == Sleeps::Paced) {
        platform::real_clock().sleep_ms(milliseconds / kPaceDivisor);
    }
    pass("sleep " + std::to_string(milliseconds), milliseconds);
}

int FakeClock::poll(pollfd *fds, std::size_t count, uint32_t timeoutMs) {
    const int ready =
        platform::real_clock().poll(fds, count, m_waits == Waits::Real ? timeoutMs : 0);
    const std::string wait = "wait " + std::to_string(timeoutMs);
    if (ready == 0) {
        pass(wait + " timed out", timeoutMs);
    } else {
        pass(wait + (ready > 0 ? " ready" : " failed"), 0);
    }
    return ready;
}

void FakeClock::pass(std::string event, uint32_t milliseconds) {
    std::vector<std::function<void()>> due;
    {
        std::lock_guard<std::mutex> guard(m_mutex);
        m_events.push_back(std::move(event));
        m_elapsed += milliseconds;
        for (auto it = m_actions.begin(); it != m_actions.end();) {
            if (it->first <= m_elapsed) {
                due.push_back(std::move(it->second));
                it = m_actions.erase(it);
            } else {
                ++it;
            }
        }
    }
    // Outside the lock: an action may call the library, which comes back to this clock.
    for (auto &action : due)
        action();
}

} // namespace zel::test

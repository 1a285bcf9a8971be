#include "platform/clock.h"

#include <atomic>
#include <cerrno>
#include <chrono>
#include <thread>

namespace zel::platform {
namespace {

class RealClock final : public Clock {
  public:
    uint32_t tick_count_ms() override {
        const auto now = std::chrono::steady_clock::now().time_since_epoch();
        return static_cast<uint32_t>(
            std::chrono::duration_cast<std::chrono::milliseconds>(now).count());
    }

    void sleep_ms(uint32_t milliseconds) override {
        std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
    }

    int poll(pollfd *fds, std::size_t count, uint32_t timeoutMs) override {
        const int timeout = timeoutMs > 0x7FFFFFFFu ? 0x7FFFFFFF : static_cast<int>(timeoutMs);
        // Restarted with the whole time-out again: a signal is rare here.
        int rc;
        do {
            rc = ::poll(fds, static_cast<nfds_t>(count), timeout);
        } while (rc < 0 && errno == EINTR);
        return rc;
    }
};

// Null while the real clock is in use. The library may sleep on several threads at once while
// a test installs or removes its clock.
std::atomic<Clock *> g_installed{nullptr};

} // namespace

Clock &real_clock() {
    static RealClock real;
    return real;
}

Clock &current_clock() {
    Clock *installed = g_installed.load(std::memory_order_acquire);
    return installed != nullptr ? *installed : real_clock();
}

Clock *install_clock(Clock *replacement) {
    return g_installed.exchange(replacement, std::memory_order_acq_rel);
}

} // namespace zel::platform

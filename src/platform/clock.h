// The time the library lives by: the tick count, sleeps, and how long a wait on descriptors
// may take. Every sleep and every time-out of the library goes through the installed clock, so
// that a test can put a clock of its own in place of the OS's and run a time-out without
// waiting for it. Nothing outside the tests installs one; the library runs on the real clock.
#pragma once

#include <cstddef>
#include <cstdint>
#include <poll.h>

namespace zel::platform {

class Clock {
  public:
    virtual ~Clock() = default;

    // Milliseconds of a monotonic clock, wrapping like a 32-bit tick counter.
    virtual uint32_t tick_count_ms() = 0;
    virtual void sleep_ms(uint32_t milliseconds) = 0;
    // poll() on `fds` for up to `timeoutMs`, restarted after a signal: the number of ready
    // descriptors, 0 when the time ran out, -1 when the wait failed.
    virtual int poll(pollfd *fds, std::size_t count, uint32_t timeoutMs) = 0;
};

// The OS's clock: steady_clock, sleep_for and poll().
Clock &real_clock();

// The clock in use: the installed one, else the real one.
Clock &current_clock();

// Puts `replacement` in place for the whole process (nullptr: the real clock again) and returns the
// clock it replaces (nullptr for the real one). A test's own clock must outlive every call that
// can reach it: install it before starting threads that use the library, remove it after
// joining them.
Clock *install_clock(Clock *replacement);

} // namespace zel::platform

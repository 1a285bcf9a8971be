// Threads, sleeps and clocks of the OS. Sleeps and the tick count go through the installed
// clock (platform/clock.h), which is the OS's unless a test put its own in place.
#pragma once

#include <cstdint>
#include <ctime>

namespace zel::platform {

// A non-zero value per thread (the kernel's thread id).
uint32_t current_thread_id();

void sleep_ms(uint32_t milliseconds);

// Milliseconds of a monotonic clock, wrapping like a 32-bit tick counter.
uint32_t tick_count_ms();

// The local time of `t`; false if it cannot be converted.
bool local_time(std::time_t t, std::tm &out);

} // namespace zel::platform

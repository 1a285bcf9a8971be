#include "platform/thread.h"

#include <unistd.h>

#include "platform/clock.h"

namespace zel::platform {

uint32_t current_thread_id() {
    // gettid() is never 0 for a live thread, which the program owner relies on: 0 means "none".
    return static_cast<uint32_t>(::gettid());
}

void sleep_ms(uint32_t milliseconds) {
    current_clock().sleep_ms(milliseconds);
}

uint32_t tick_count_ms() {
    return current_clock().tick_count_ms();
}

bool local_time(std::time_t t, std::tm &out) {
    return ::localtime_r(&t, &out) != nullptr;
}

} // namespace zel::platform

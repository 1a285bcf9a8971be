#include "platform/thread.h"

#include <chrono>
#include <thread>
#include <unistd.h>

namespace zel::platform {

uint32_t current_thread_id() {
    // gettid() is never 0 for a live thread, which the program owner relies on: 0 means "none".
    return static_cast<uint32_t>(::gettid());
}

void sleep_ms(uint32_t milliseconds) {
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

uint32_t tick_count_ms() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<uint32_t>(std::chrono::duration_cast<std::chrono::milliseconds>(now).count());
}

bool local_time(std::time_t t, std::tm &out) { return ::localtime_r(&t, &out) != nullptr; }

} // namespace zel::platform

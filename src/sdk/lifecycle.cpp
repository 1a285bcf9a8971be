#include "sdk/lifecycle.h"

#include "sdk/console.h"
#include "sdk/globals.h"

namespace zel {

int32_t init_sdk() {
    console_printf("%s", kVersionLine);
    if (g_sdkStarted.load(std::memory_order_relaxed) != 0) {
        return 0;
    }
    // Linux sockets need no start-up, so the start cannot fail; the mark is still kept so that
    // release behaves as it always has.
    g_sdkStarted.store(kSdkStartedMark, std::memory_order_relaxed);
    return 0;
}

int32_t release_sdk() {
    const uint8_t mark = g_sdkStarted.load(std::memory_order_relaxed);
    if (mark != kSdkStartedMark) {
        return mark;
    }
    g_sdkStarted.store(0, std::memory_order_relaxed);
    return 0;
}

} // namespace zel

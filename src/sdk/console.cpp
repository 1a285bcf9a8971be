#include "sdk/console.h"

#include <cstdarg>
#include <cstdio>
#include <vector>

namespace zel {

void console_write(const char *bytes, std::size_t length) {
    if (length > 0) {
        std::fwrite(bytes, 1, length, stdout);
    }
    std::fflush(stdout);
}

void console_printf(const char *format, ...) {
    char small[512];
    va_list args;
    va_start(args, format);
    va_list again;
    va_copy(again, args);
    const int needed = std::vsnprintf(small, sizeof small, format, args);
    va_end(args);
    if (needed < 0) {
        va_end(again);
        return;
    }
    if (static_cast<std::size_t>(needed) < sizeof small) {
        va_end(again);
        console_write(small, static_cast<std::size_t>(needed));
        return;
    }
    std::vector<char> large(static_cast<std::size_t>(needed) + 1);
    std::vsnprintf(large.data(), large.size(), format, again);
    va_end(again);
    console_write(large.data(), static_cast<std::size_t>(needed));
}

} // namespace zel

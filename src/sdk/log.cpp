#include "sdk/log.h"

#include <cstdio>
#include <cstring>
#include <ctime>

#include "platform/thread.h"

namespace zel {
namespace {

std::recursive_mutex &dynamic_area_mutex() {
    static std::recursive_mutex mutex;
    return mutex;
}

const char *level_tag(uint32_t level) {
    switch (level) {
    case kLogCritical: return " [TEST] [CRITICAL] ";
    case kLogError: return " [TEST] [ERROR   ] ";
    case kLogWarning: return " [TEST] [WARNING ] ";
    case kLogInfo: return " [TEST] [INFO    ] ";
    case kLogDebug: return " [TEST] [DEBUG   ] ";
    default: return ""; // unknown levels keep the rest of the line
    }
}

// strncat with the room that is left in the line: the zero byte always fits, so the longest
// line is capacity - 1 bytes.
void append_bounded(char *line, const char *text) {
    const std::size_t used = std::strlen(line);
    const std::size_t room = kLogLineCapacity - 1 - used;
    std::strncat(line, text, room);
}

} // namespace

int32_t write_log(uint32_t level, const char *message) {
    char line[kLogLineCapacity] = {};
    std::tm local{};
    if (platform::local_time(std::time(nullptr), local)) {
        // "%X" is the locale's time; fixed here to hours, minutes and seconds.
        std::strftime(line, sizeof line, "[%Y-%m-%d %H:%M:%S]", &local);
    }
    append_bounded(line, level_tag(level));
    append_bounded(line, "# DEMO # ");
    append_bounded(line, message != nullptr ? message : "");
    append_bounded(line, "\n");

    std::FILE *file = std::fopen(kLogFileName, "a+");
    if (file == nullptr) {
        return -1;
    }
    std::fwrite(line, 1, std::strlen(line), file);
    std::fflush(file);
    std::fclose(file);
    return 0;
}

int32_t dynamic_area_lock() {
    dynamic_area_mutex().lock();
    return 1;
}

int32_t dynamic_area_unlock() {
    dynamic_area_mutex().unlock();
    return 1;
}

} // namespace zel

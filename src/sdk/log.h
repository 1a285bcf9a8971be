// The log file "testDemoLog" that the dynamic-area paths write, and the dynamic-area lock that
// their callers hold around it.
#pragma once

#include <cstdint>
#include <mutex>

namespace zel {

inline constexpr const char *kLogFileName = "testDemoLog";
inline constexpr std::size_t kLogLineCapacity = 512; // a longer line is cut, newline and all

enum LogLevel : uint32_t {
    kLogCritical = 0,
    kLogError = 1,
    kLogWarning = 2,
    kLogInfo = 3,
    kLogDebug = 4,
};

// Appends one line to "testDemoLog" in the working directory: 0, or -1 if the file cannot be
// opened. Takes no lock itself.
int32_t write_log(uint32_t level, const char *message);

// The one lock of the library. A Windows critical section may be re-entered by its owner, so
// this is a recursive mutex. Both return 1, as the lock calls always have.
int32_t dynamic_area_lock();
int32_t dynamic_area_unlock();

// Holds the dynamic-area lock for a scope, so that an exception cannot leave it held.
class DynamicAreaLockGuard {
  public:
    DynamicAreaLockGuard() { dynamic_area_lock(); }
    ~DynamicAreaLockGuard() { dynamic_area_unlock(); }
    DynamicAreaLockGuard(const DynamicAreaLockGuard &) = delete;
    DynamicAreaLockGuard &operator=(const DynamicAreaLockGuard &) = delete;
};

} // namespace zel

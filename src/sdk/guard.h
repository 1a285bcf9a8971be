// No C++ exception crosses the C boundary: every exported body that can throw runs inside
// guarded(), which turns an exception into the entry's documented failure result.
#pragma once

#include <cstdint>
#include <utility>

namespace zel {

template <class Body> int32_t guarded(int32_t on_failure, Body &&body) noexcept {
    try {
        return std::forward<Body>(body)();
    } catch (...) {
        return on_failure;
    }
}

} // namespace zel

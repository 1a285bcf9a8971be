// Start and end of the library.
#pragma once

#include <cstdint>

namespace zel {

inline constexpr const char *kVersionLine = "Version:202006121156;\r\n";

int32_t init_sdk();
int32_t release_sdk();

} // namespace zel

// Controller type code to pixel transfer mode.
//
// The table is data, not a rule: the low byte alone does not decide (0x66 and 0x766 give 3,
// 0x166 to 0x666 give 5) and some codes are absent on purpose (0x563, while 0x463 and 0x5063
// are present).
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

namespace zel {

// The mode of a known controller type code, or nothing for a code outside the table.
std::optional<uint32_t> tran_pixel_mode_of(uint16_t controllerType);

// Number of codes in the table (104).
std::size_t controller_type_count();

} // namespace zel

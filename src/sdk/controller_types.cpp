#include "sdk/controller_types.h"

#include <algorithm>
#include <array>
#include <utility>

namespace zel {
namespace {

struct ControllerMode {
    uint16_t code;
    uint8_t mode;
};

// Sorted by code for the binary search; grouped by mode in the comments below would be easier to
// read but harder to search.
constexpr std::array<ControllerMode, 104> kControllerModes{{
    {0x0051, 0}, {0x0052, 0}, {0x0055, 0}, {0x0062, 4}, {0x0063, 4}, {0x0064, 4}, {0x0066, 3},
    {0x0151, 0}, {0x0154, 0}, {0x0155, 0}, {0x015E, 0}, {0x015F, 0}, {0x0162, 4}, {0x0163, 4},
    {0x0164, 4}, {0x0166, 5}, {0x0174, 4}, {0x0251, 0}, {0x0252, 0}, {0x0254, 0}, {0x0255, 0},
    {0x025E, 0}, {0x025F, 0}, {0x0262, 4}, {0x0263, 4}, {0x0264, 4}, {0x0266, 5}, {0x0274, 4},
    {0x0351, 0}, {0x0352, 0}, {0x0354, 0}, {0x0355, 0}, {0x035E, 0}, {0x035F, 0}, {0x0362, 4},
    {0x0363, 4}, {0x0364, 4}, {0x0366, 5}, {0x0374, 4}, {0x0451, 0}, {0x0452, 0}, {0x0455, 0},
    {0x045E, 0}, {0x045F, 0}, {0x0462, 4}, {0x0463, 4}, {0x0464, 4}, {0x0466, 5}, {0x0474, 4},
    {0x0551, 0}, {0x0552, 0}, {0x0555, 0}, {0x055E, 0}, {0x055F, 0}, {0x0562, 4}, {0x0564, 4},
    {0x0566, 5}, {0x0574, 4}, {0x0651, 0}, {0x065E, 0}, {0x065F, 0}, {0x0666, 5}, {0x0751, 0},
    {0x0755, 0}, {0x075E, 0}, {0x0766, 3}, {0x0851, 0}, {0x0855, 0}, {0x0951, 0}, {0x1062, 4},
    {0x1162, 4}, {0x1262, 4}, {0x1351, 0}, {0x1362, 4}, {0x1462, 4}, {0x1551, 0}, {0x1651, 0},
    {0x1851, 0}, {0x2063, 4}, {0x2163, 4}, {0x2251, 0}, {0x2263, 4}, {0x2363, 4}, {0x2463, 4},
    {0x3063, 4}, {0x3163, 4}, {0x3263, 4}, {0x3363, 4}, {0x3366, 5}, {0x3463, 4}, {0x4063, 4},
    {0x4163, 4}, {0x4263, 4}, {0x4363, 4}, {0x4463, 4}, {0x4563, 4}, {0x4663, 4}, {0x4763, 4},
    {0x5063, 4}, {0x5163, 4}, {0x5263, 4}, {0x5363, 4}, {0x8166, 5}, {0x8374, 4},
}};

constexpr bool sorted_and_unique() {
    for (std::size_t i = 1; i < kControllerModes.size(); ++i) {
        if (kControllerModes[i - 1].code >= kControllerModes[i].code) {
            return false;
        }
    }
    return true;
}
static_assert(sorted_and_unique(), "the controller table must stay sorted for the search");

} // namespace

std::optional<uint32_t> tran_pixel_mode_of(uint16_t controllerType) {
    const auto *found = std::lower_bound(
        kControllerModes.begin(), kControllerModes.end(), controllerType,
        [](const ControllerMode &entry, uint16_t code) { return entry.code < code; });
    if (found == kControllerModes.end() || found->code != controllerType) {
        return std::nullopt;
    }
    return found->mode;
}

std::size_t controller_type_count() {
    return kControllerModes.size();
}

} // namespace zel

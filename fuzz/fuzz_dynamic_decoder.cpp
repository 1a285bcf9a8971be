// The simulator's reader of dynamic-area commands, fed with anything. The first byte picks the
// family (even: G5, odd: G6); the rest is the command data. What reads is applied to a set of
// live areas and drawn for a few kinds of screen.
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "sim/panel/dynamic_decoder.h"
#include "sim/panel/live_areas.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *bytes, std::size_t size) {
    using namespace zel::sim;
    if (size < 1) return 0;
    const DynamicFamily family = (bytes[0] & 1) != 0 ? DynamicFamily::G6 : DynamicFamily::G5;
    const std::span<const uint8_t> data(bytes + 1, size - 1);
    (void)decode_dynamic(data, family);
    LiveAreas live;
    if (live.apply(data, family)) return 0;
    static const ScreenMode kModes[] = {{96, 48, 1, 0, 1}, {96, 48, 2, 4, 2}, {96, 48, 4, 5, 1}};
    for (const ScreenMode &mode : kModes) {
        Rgb canvas{mode.width, mode.height,
                   std::vector<uint32_t>(static_cast<std::size_t>(mode.width) * mode.height, 0)};
        live.paint(canvas, mode);
    }
    return 0;
}

#include "clock/clock_color.h"

#include <algorithm>

#include "sdk/screen_globals.h"

namespace zel {
namespace {

constexpr uint32_t kCodeLimit = 8; // colours below it are codes
constexpr int32_t kFullColor = 4;
constexpr uint32_t kMode565 = 3;

struct Components {
    uint8_t red = 0;
    uint8_t green = 0;
    uint8_t blue = 0;
};

Components components_of(uint32_t color) {
    if (color < kCodeLimit) {
        return {static_cast<uint8_t>((color & 1) != 0 ? 255 : 0),
                static_cast<uint8_t>((color & 2) != 0 ? 255 : 0),
                static_cast<uint8_t>((color & 4) != 0 ? 255 : 0)};
    }
    return {static_cast<uint8_t>(color >> 16), static_cast<uint8_t>(color >> 8),
            static_cast<uint8_t>(color)};
}

template <std::size_t N> std::array<uint8_t, N> to_array(const std::vector<uint8_t> &bytes) {
    std::array<uint8_t, N> out{};
    std::copy_n(bytes.begin(), std::min(N, bytes.size()), out.begin());
    return out;
}

} // namespace

ClockScreen clock_screen_now() {
    return {static_cast<int32_t>(g_screenColor.load(std::memory_order_relaxed)),
            g_tranPixelMode.load(std::memory_order_relaxed)};
}

uint8_t clock_color_code(uint32_t color) {
    if (color < kCodeLimit) return static_cast<uint8_t>(color);
    // Strictly above the middle: 0x800000 is not red enough and falls to the default.
    const bool r = (color & 0xFF0000) > 0x800000;
    const bool g = (color & 0xFF00) > 0x8000;
    const bool b = (color & 0xFF) > 128;
    if (r && g && b) return 7;
    if (r && g) return 3;
    if (r && b) return 5;
    if (g && b) return 6;
    if (g) return 2;
    if (b) return 4;
    return 1; // red alone, and a dark colour too: a lit LED, never black
}

uint32_t full_color_value(uint32_t color, uint32_t tranPixelMode, const GammaTables &gamma) {
    const Components c = components_of(color);
    if (tranPixelMode == kMode565) {
        // Blue in the high bits, red in the low ones: the controllers' order.
        return ((static_cast<uint32_t>(gamma.blue[c.blue]) << 8) & 0xF800) +
               ((static_cast<uint32_t>(gamma.green[c.green]) * 8) & 0x7E0) +
               (static_cast<uint32_t>(gamma.red[c.red]) >> 3);
    }
    return c.red + (static_cast<uint32_t>(c.green) << 8) + (static_cast<uint32_t>(c.blue) << 16);
}

std::size_t write_clock_color(ByteWriter &out, uint32_t color, uint8_t hourFlag,
                              const ClockScreen &screen, const GammaTables &gamma) {
    if (screen.screenColor != kFullColor) {
        out.u8(clock_color_code(color)).u8(hourFlag);
        return 2;
    }
    const uint32_t value = full_color_value(color, screen.tranPixelMode, gamma);
    if (screen.tranPixelMode == kMode565) {
        out.u16(static_cast<uint16_t>(value)).u8(hourFlag);
        return 3;
    }
    out.u32(value).u8(hourFlag);
    return 5;
}

uint32_t convertHandColor(uint32_t color, const ClockScreen &screen, const GammaTables &gamma) {
    if (screen.screenColor != kFullColor) return color;
    return full_color_value(color, screen.tranPixelMode, gamma);
}

std::array<uint8_t, kHandRecordSize> hand_record_short(const AnalogClock &clock) {
    ByteWriter out(kHandRecordSize);
    out.u16(clock.clockParam1).u16(clock.clockParam2).u8(clock.clockParam3);
    out.u8(clock.hourHandParam)
        .u8(clock.hourHandLength)
        .u8(static_cast<uint8_t>(clock.hourHandColor));
    out.u8(clock.minuteHandParam).u8(clock.minuteHandLength);
    out.u8(static_cast<uint8_t>(clock.minuteHandColor));
    out.u8(clock.secondHandParam).u8(clock.secondHandLength);
    out.u8(static_cast<uint8_t>(clock.secondHandColor));
    return to_array<kHandRecordSize>(out.data());
}

std::array<uint8_t, kHandRecordMediumSize>
hand_record_medium(const AnalogClock &clock, const ClockScreen &screen, const GammaTables &gamma) {
    const auto color16 = [&](uint32_t color) {
        return static_cast<uint16_t>(convertHandColor(color, screen, gamma));
    };
    ByteWriter out(kHandRecordMediumSize);
    out.u16(clock.clockParam1).u16(clock.clockParam2).u8(clock.clockParam3);
    out.u8(clock.hourHandParam).u8(clock.hourHandLength).u16(color16(clock.hourHandColor));
    out.u8(clock.minuteHandParam).u8(clock.minuteHandLength).u16(color16(clock.minuteHandColor));
    out.u8(clock.secondHandParam).u8(clock.secondHandLength).u16(color16(clock.secondHandColor));
    return to_array<kHandRecordMediumSize>(out.data());
}

std::array<uint8_t, kHandRecordLongSize>
hand_record_long(const AnalogClock &clock, const ClockScreen &screen, const GammaTables &gamma) {
    ByteWriter out(kHandRecordLongSize);
    out.u16(clock.clockParam1).u16(clock.clockParam2).u8(clock.clockParam3);
    out.u8(clock.hourHandParam).u8(clock.hourHandLength);
    out.u32(convertHandColor(clock.hourHandColor, screen, gamma));
    out.u8(clock.minuteHandParam).u8(clock.minuteHandLength);
    out.u32(convertHandColor(clock.minuteHandColor, screen, gamma));
    out.u8(clock.secondHandParam).u8(clock.secondHandLength);
    out.u32(convertHandColor(clock.secondHandColor, screen, gamma));
    return to_array<kHandRecordLongSize>(out.data());
}

std::size_t TimeArea::writeClockColor(ByteWriter &out, uint8_t hourFlag) const {
    return write_clock_color(out, textColor, hourFlag, clock_screen_now(), area_gamma(*this));
}

} // namespace zel

// The process-wide screen settings: what kind of screen everything is rendered for.
//
// They belong to no program and no connection. A host sets them with
// zelDual_program_setScreenParams_G56 before it builds a program; the dynamic-area entries set
// them from a controller's ping answer; zelDual_program_pictureArea overwrites them with its own
// values. They keep their value until the next write and survive program deletion and
// zelDual_ReleaseSdk. Relaxed atomics give the same last-writer-wins behaviour as the plain
// globals of the protocol's design, without a data race. Readers must not keep per-thread
// copies: a dynamic entry relies on its ping step writing the globals that its encoder then
// reads in the same call.
//
// They sit in the lowest layer because the renderers read them; zelDual_program_setScreenParams_G56
// (program/screen_settings.h) writes them. The screen number and the dual-pixel value also count
// among these settings; they live in sdk/globals.h.
#pragma once

#include <atomic>
#include <cstdint>

namespace zel {

// Colour class of the screen. Passed by value through the C interface and stored as it comes,
// even outside 1 to 4, hence the fixed 32-bit underlying type.
enum E_ScreenColor_G56 : int32_t {
    kScreenOneColor = 1,    // one bit plane
    kScreenTwoColors = 2,   // two bit planes; g_doubleColor chooses their order
    kScreenThreeColors = 3, // three bit planes
    kScreenFullColor = 4,   // byte-per-component pixels chosen by g_tranPixelMode
};

// Pixel transfer modes. A pair of colour class and mode that this list does not name encodes
// to nothing: colour 4 wants mode 3 or 5, colours 1 to 3 want mode 0 or 4.
inline constexpr uint32_t kTranPixelBits8 = 0;  // colours 1-3: bit planes, rows padded to 8
inline constexpr uint32_t kTranPixel565 = 3;    // colour 4: two bytes per pixel, 5-6-5
inline constexpr uint32_t kTranPixelBits32 = 4; // colours 1-3: bit planes, rows padded to 32
inline constexpr uint32_t kTranPixelRgb888 = 5; // colour 4: three bytes per pixel

inline constexpr E_ScreenColor_G56 kInitialScreenColor = kScreenTwoColors;
inline constexpr uint32_t kInitialTranPixelMode = kTranPixelBits32;
inline constexpr uint32_t kInitialDoubleColor = 1;
inline constexpr uint16_t kInitialControllerType = 0;

extern std::atomic<E_ScreenColor_G56> g_screenColor;
extern std::atomic<uint32_t> g_tranPixelMode;
// Plane order of a two-colour screen: 1 selects one order, every other value the other.
extern std::atomic<uint32_t> g_doubleColor;
// The last controller type code given to setScreenParams_G56. The G6 time areas look at its
// low byte only.
extern std::atomic<uint16_t> g_controllerType;

} // namespace zel

// Exported entry of the screen settings.
#include "zel_sdk_dual.h"

#include "program/screen_settings.h"
#include "sdk/guard.h"

using namespace zel;

extern "C" {

ZEL_API int32_t zelDual_program_setScreenParams_G56(::E_ScreenColor_G56 color,
                                                    uint16_t ControllerType, uint32_t doubleColor) {
    return guarded(0, [&] {
        return setScreenParams_G56(static_cast<zel::E_ScreenColor_G56>(color), ControllerType,
                                   doubleColor);
    });
}

} // extern "C"

#include "program/screen_settings.h"

#include "sdk/console.h"
#include "sdk/controller_types.h"

namespace zel {

int32_t setScreenParams_G56(E_ScreenColor_G56 color, uint16_t controllerType,
                            uint32_t doubleColor) {
    // The double space before doubleColor and the "; \r\n" ending are part of the trace.
    console_printf("color = %d, ControllerType = %d,  doubleColor = %d; \r\n",
                   static_cast<int>(color), static_cast<int>(controllerType),
                   static_cast<int>(doubleColor));
    g_screenColor.store(color, std::memory_order_relaxed);
    g_controllerType.store(controllerType, std::memory_order_relaxed);
    uint32_t mode = 0;
    if (const auto known = tran_pixel_mode_of(controllerType)) {
        mode = *known;
    } else {
        console_printf("Error:can't find tranPixelMode,use 0 instead.\n");
    }
    g_tranPixelMode.store(mode, std::memory_order_relaxed);
    g_doubleColor.store(doubleColor, std::memory_order_relaxed);
    return 0;
}

} // namespace zel

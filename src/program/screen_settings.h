// zelDual_program_setScreenParams_G56: writes the process-wide screen settings of
// sdk/screen_globals.h from a colour class, a controller type code and a double-colour value.
#pragma once

#include <cstdint>

#include "sdk/screen_globals.h"

namespace zel {

// The body of zelDual_program_setScreenParams_G56, also called by the dynamic-area entries with
// the code of a ping answer and g_dualPixel. Traces the arguments, stores them, looks the
// controller type up (an unknown code prints its error line and stores mode 0) and returns 0.
int32_t setScreenParams_G56(E_ScreenColor_G56 color, uint16_t controllerType, uint32_t doubleColor);

} // namespace zel

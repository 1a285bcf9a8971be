#include "sdk/screen_globals.h"

namespace zel {

std::atomic<E_ScreenColor_G56> g_screenColor{kInitialScreenColor};
std::atomic<uint32_t> g_tranPixelMode{kInitialTranPixelMode};
std::atomic<uint32_t> g_doubleColor{kInitialDoubleColor};
std::atomic<uint16_t> g_controllerType{kInitialControllerType};

} // namespace zel

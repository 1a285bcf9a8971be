// Exported entries of the SDK frame.
#include "zel_sdk_dual.h"

#include "sdk/globals.h"
#include "sdk/guard.h"
#include "sdk/lifecycle.h"
#include "sdk/program_access.h"

using namespace zel;

extern "C" {

ZEL_API int32_t zelDual_InitSdk(void) {
    return guarded(-1, [] { return init_sdk(); });
}

ZEL_API int32_t zelDual_ReleaseSdk(void) {
    return release_sdk();
}

ZEL_API int32_t zelDual_set_screenNum_G56(uint16_t screenNum) {
    g_screenNum.store(screenNum, std::memory_order_relaxed);
    return 0;
}

ZEL_API int32_t zelDual_set_packetLen(uint16_t packetLen) {
    g_packetLen.store(packetLen, std::memory_order_relaxed);
    return 0;
}

ZEL_API int32_t zelDual_program_deleteProgram(void) {
    return delete_program();
}

ZEL_API int32_t zelDual_program_deleteProgram_G6(void) {
    return delete_program();
}

} // extern "C"

/* The C ABI as a host sees it: plain C, linked against the shared library. */
#include <stdio.h>
#include <string.h>

#include "zel_sdk_dual.h"

static int failures = 0;

#define CHECK(cond)                                                                           \
    do {                                                                                      \
        if (!(cond)) {                                                                        \
            fprintf(stderr, "%s:%d: check failed: %s\n", __FILE__, __LINE__, #cond);          \
            ++failures;                                                                       \
        }                                                                                     \
    } while (0)

int main(void) {
    static const uint8_t digits[] = "123456789";
    ZelCrc16Record c16 = {digits, 9, 0};
    ZelCrc32Record c32 = {digits, 9, 0};
    ZelProgramFile_G5 g5;
    ZelProgramFile_G6 g6;

    CHECK(zelDual_InitSdk() == 0);
    CHECK(zelDual_get_crc16(&c16) == 0 && c16.crc == 0xBB3D);
    CHECK(zelDual_get_crc32(&c32) == 0 && c32.crc == 0xCBF43926u);
    CHECK(zelDual_set_packetLen(0) == 0);
    CHECK(zelDual_set_packetLen(1024) == 0);
    CHECK(zelDual_set_screenNum_G56(5) == 0);

    memset(&g5, 0, sizeof g5);
    memset(&g6, 0, sizeof g6);
    CHECK(zelDual_program_freeBuffer(&g5) == 0 && g5.fileData == NULL);
    CHECK(zelDual_program_freeBuffer_G6(&g6) == 0);
    CHECK(zelDual_program_deleteProgram() == 0);
    CHECK(zelDual_program_deleteProgram_G6() == 0);
    CHECK(zelDual_ReleaseSdk() == 0);
    CHECK(zelDual_ReleaseSdk() == 0);

    if (failures == 0) {
        printf("abi: all checks passed\n");
    }
    return failures == 0 ? 0 : 1;
}

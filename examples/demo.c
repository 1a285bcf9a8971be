/* A first host program: start the library, compute the checks of a buffer, stop. */
#include <stdio.h>
#include <string.h>

#include "zel_sdk_dual.h"

int main(void) {
    static const char text[] = "123456789";
    ZelCrc16Record c16;
    ZelCrc32Record c32;

    if (zelDual_InitSdk() != 0) {
        fprintf(stderr, "demo: the library did not start\n");
        return 1;
    }
    c16.data = (const uint8_t *)text;
    c16.length = (uint32_t)strlen(text);
    c32.data = c16.data;
    c32.length = c16.length;
    zelDual_get_crc16(&c16);
    zelDual_get_crc32(&c32);
    printf("CRC-16/ARC of \"%s\": 0x%04X\n", text, c16.crc);
    printf("CRC-32 of \"%s\": 0x%08X\n", text, c32.crc);
    zelDual_ReleaseSdk();
    return 0;
}

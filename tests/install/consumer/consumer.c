#include <stdio.h>

#include "zel_sdk_dual.h"

int main(void) {
    static const uint8_t digits[] = "123456789";
    ZelCrc32Record r = {digits, 9, 0};
    zelDual_get_crc32(&r);
    printf("%08X\n", r.crc);
    return r.crc == 0xCBF43926u ? 0 : 1;
}

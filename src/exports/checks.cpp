// Exported checks.
#include "zel_sdk_dual.h"

#include "sdk/crc.h"

using namespace zel;

extern "C" {

ZEL_API int32_t zelDual_get_crc16(ZelCrc16Record *record) {
    if (record == nullptr) return -1;
    record->crc = record->length == 0 ? 0 : crc16(record->data, record->length);
    return 0;
}

ZEL_API int32_t zelDual_get_crc32(ZelCrc32Record *record) {
    if (record == nullptr) return -1;
    record->crc = record->length == 0 ? 0 : crc32_ieee(record->data, record->length);
    return 0;
}

} // extern "C"

// Exported entries of device control: a peer per call, one command body.
#include "zel_sdk_dual.h"

#include "commands/control.h"
#include "commands/peer_call.h"
#include "sdk/guard.h"

using namespace zel;
using namespace zel::commands;

extern "C" {

ZEL_API int32_t zelDual_cmd_sysReset(const char *address, uint16_t port) {
    return over_tcp(address, port, [](KOR_command &p) { return sysReset(p); });
}

ZEL_API int32_t zelDual_cmd_check_time(const char *address, uint16_t port) {
    return over_tcp(address, port, [](KOR_command &p) { return check_time(p); });
}

ZEL_API int32_t zelDual_cmd_coerceOnOff(const char *address, uint16_t port, uint8_t onOff) {
    return over_tcp(address, port, [=](KOR_command &p) { return coerceOnOff(p, onOff); });
}

ZEL_API int32_t zelDual_cmd_timingOnOff(const char *address, uint16_t port, uint8_t count,
                                        const uint8_t *table) {
    if (table == nullptr && count != 0) return -1;
    return over_tcp(address, port, [=](KOR_command &p) { return timingOnOff(p, count, table); });
}

ZEL_API int32_t zelDual_cmd_setBrightness(const char *address, uint16_t port,
                                          const uint8_t *table) {
    if (table == nullptr) return -1;
    return over_tcp(address, port, [=](KOR_command &p) { return setBrightness(p, table); });
}

ZEL_API int32_t zelDual_cmd_cancelTimingOnOff(const char *address, uint16_t port) {
    return over_tcp(address, port, [](KOR_command &p) { return cancelTimingOnOff(p); });
}

ZEL_API int32_t zelDual_cmd_readControllerID(const char *address, uint16_t port, uint8_t *id) {
    if (id == nullptr) return -1;
    return over_tcp(address, port, [=](KOR_command &p) { return readControllerID(p, id); });
}

ZEL_API int32_t zelDual_cmd_screenLock(const char *address, uint16_t port, uint8_t first,
                                       uint8_t second) {
    return over_tcp(address, port, [=](KOR_command &p) { return screenLock(p, first, second); });
}

ZEL_API int32_t zelDual_cmd_programLock(const char *address, uint16_t port, uint8_t first,
                                        uint8_t second, const uint8_t *four, uint32_t value) {
    if (four == nullptr) return -1;
    return over_tcp(address, port,
                    [=](KOR_command &p) { return programLock(p, first, second, four, value); });
}

ZEL_API int32_t zelDual_cmd_uart_programLock(const char *portName, uint8_t speedIndex,
                                             uint8_t first, uint8_t second, const uint8_t *four,
                                             uint32_t value) {
    if (four == nullptr) return -1;
    return over_serial(portName, speedIndex,
                       [=](KOR_command &p) { return programLock(p, first, second, four, value); });
}

ZEL_API int32_t zelDual_cmd_uart_programLock_6G(const char *portName, uint8_t speedIndex,
                                                uint8_t first, uint8_t second, const uint8_t *four,
                                                uint32_t value) {
    if (four == nullptr) return -1;
    return over_serial(portName, speedIndex, [=](KOR_command &p) {
        return programLock_6G(p, first, second, four, value);
    });
}

ZEL_API int32_t zelDual_cmd_check_controllerStatus(const char *address, uint16_t port,
                                                   uint8_t *status) {
    if (status == nullptr) return -1;
    return over_tcp(address, port,
                    [=](KOR_command &p) { return check_controllerStatus(p, status); });
}

ZEL_API int32_t zelDual_cmd_setPassword(const char *address, uint16_t port, const char *oldPassword,
                                        const char *newPassword) {
    if (oldPassword == nullptr || newPassword == nullptr) return -1;
    return over_tcp(address, port,
                    [=](KOR_command &p) { return setPassword(p, oldPassword, newPassword); });
}

ZEL_API int32_t zelDual_cmd_deletePassword(const char *address, uint16_t port,
                                           const char *password) {
    if (password == nullptr) return -1;
    return over_tcp(address, port, [=](KOR_command &p) { return deletePassword(p, password); });
}

ZEL_API int32_t zelDual_cmd_setDelayTime(const char *address, uint16_t port, uint16_t value) {
    return over_tcp(address, port, [=](KOR_command &p) { return setDelayTime(p, value); });
}

ZEL_API int32_t zelDual_cmd_setBtnFunc(const char *address, uint16_t port, uint8_t value) {
    return over_tcp(address, port, [=](KOR_command &p) { return setBtnFunc(p, value); });
}

ZEL_API int32_t zelDual_cmd_setTimingReset(const char *address, uint16_t port,
                                           const uint8_t *table) {
    if (table == nullptr) return -1;
    return over_tcp(address, port, [=](KOR_command &p) { return setTimingReset(p, table); });
}

ZEL_API int32_t zelDual_cmd_setDispMode(const char *address, uint16_t port, uint8_t value) {
    return over_tcp(address, port, [=](KOR_command &p) { return setDispMode(p, value); });
}

ZEL_API int32_t zelDual_cmd_battieTime(const char *address, uint16_t port, uint8_t selector,
                                       uint8_t *record) {
    if (record == nullptr) return -1;
    return over_tcp(address, port, [=](KOR_command &p) { return battieTime(p, selector, record); });
}

ZEL_API int32_t zelDual_cmd_getStopwatch(const char *address, uint16_t port, uint8_t selector,
                                         uint8_t * /*out: never written*/) {
    return over_tcp(address, port, [=](KOR_command &p) { return getStopwatch(p, selector); });
}

ZEL_API int32_t zelDual_cmd_getSensorBrightnessValue(const char *address, uint16_t port,
                                                     uint8_t * /*out: never written*/) {
    return over_tcp(address, port, [](KOR_command &p) { return getSensorBrightnessValue(p); });
}

ZEL_API int32_t zelDual_cmd_setSpeedAdjust(const char *address, uint16_t port, uint16_t value) {
    return over_tcp(address, port, [=](KOR_command &p) { return setSpeedAdjust(p, value); });
}

ZEL_API int32_t zelDual_cmd_setScreenAddress(const char *address, uint16_t port, uint16_t value) {
    return over_tcp(address, port, [=](KOR_command &p) { return setScreenAddress(p, value); });
}

ZEL_API int32_t zelDual_cmd_SetExternalRelay(const char *address, uint16_t port, uint8_t value) {
    return over_tcp(address, port, [=](KOR_command &p) { return SetExternalRelay(p, value); });
}

ZEL_API int32_t zelDual_cmd_setGlobalVolume(const char *address, uint16_t port, uint8_t /*first*/,
                                            uint8_t /*second*/) {
    // Connects and probes, and that is all: the controller has no volume command here.
    return over_tcp(address, port, [](KOR_command &) { return 0; });
}

} // extern "C"

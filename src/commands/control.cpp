#include "commands/control.h"

#include <array>
#include <ctime>
#include <vector>

#include "commands/control_data.h"
#include "platform/thread.h"
#include "sdk/bytes.h"

namespace zel::commands {
namespace {

int32_t plain(KOR_command &peer, uint8_t code, const std::vector<uint8_t> &data) {
    return peer.send_cmd(kGroupControl, code, data.data(), static_cast<uint16_t>(data.size()));
}

int32_t plain(KOR_command &peer, uint8_t code, const uint8_t *data, std::size_t length) {
    return peer.send_cmd(kGroupControl, code, data, static_cast<uint16_t>(length));
}

std::vector<uint8_t> u16_data(uint16_t value) {
    return ByteWriter(2).u16(value).take();
}

} // namespace

int32_t sysReset(KOR_command &peer) {
    return plain(peer, control_code::kSysReset, nullptr, 0);
}

int32_t check_time(KOR_command &peer) {
    std::tm now{};
    if (!platform::local_time(std::time(nullptr), now)) return -1;
    return plain(peer, control_code::kCheckTime, time_stamp_data(now));
}

int32_t coerceOnOff(KOR_command &peer, uint8_t onOff) {
    return plain(peer, control_code::kCoerceOnOff, &onOff, 1);
}

int32_t timingOnOff(KOR_command &peer, uint8_t count, const uint8_t *table) {
    return plain(peer, control_code::kTimingOnOff, timing_data(count, table));
}

int32_t setBrightness(KOR_command &peer, const uint8_t *table) {
    return plain(peer, control_code::kSetBrightness, table, kBrightnessTableLen);
}

int32_t cancelTimingOnOff(KOR_command &peer) {
    return plain(peer, control_code::kCancelTimingOnOff, nullptr, 0);
}

int32_t readControllerID(KOR_command &peer, uint8_t *id) {
    uint16_t capacity = kControllerIdLen;
    return peer.send_recv_cmd(kGroupControl, control_code::kReadControllerID, nullptr, 0, id,
                              capacity);
}

int32_t screenLock(KOR_command &peer, uint8_t first, uint8_t second) {
    const uint8_t data[] = {first, second};
    return plain(peer, control_code::kScreenLock, data, sizeof data);
}

int32_t programLock(KOR_command &peer, uint8_t first, uint8_t second, const uint8_t *four,
                    uint32_t value) {
    return plain(peer, control_code::kProgramLock, program_lock_data(first, second, four, value));
}

int32_t programLock_6G(KOR_command &peer, uint8_t first, uint8_t second, const uint8_t *four,
                       uint32_t value) {
    return plain(peer, control_code::kProgramLock,
                 program_lock_data_6g(first, second, four, value));
}

int32_t check_controllerStatus(KOR_command &peer, uint8_t *status) {
    uint16_t capacity = kControllerStatusLen;
    return peer.send_recv_cmd(kGroupControl, control_code::kControllerStatus, nullptr, 0, status,
                              capacity);
}

int32_t setPassword(KOR_command &peer, const char *oldPassword, const char *newPassword) {
    return plain(peer, control_code::kSetPassword, password_data(oldPassword, newPassword));
}

int32_t deletePassword(KOR_command &peer, const char *password) {
    return plain(peer, control_code::kDeletePassword, reinterpret_cast<const uint8_t *>(password),
                 kPasswordLen);
}

int32_t setDelayTime(KOR_command &peer, uint16_t value) {
    return plain(peer, control_code::kSetDelayTime, u16_data(value));
}

int32_t setBtnFunc(KOR_command &peer, uint8_t value) {
    return plain(peer, control_code::kSetBtnFunc, padded_value_data(value));
}

int32_t setTimingReset(KOR_command &peer, const uint8_t *table) {
    return plain(peer, control_code::kSetTimingReset, table, kTimingResetLen);
}

int32_t setDispMode(KOR_command &peer, uint8_t value) {
    return plain(peer, control_code::kSetDispMode, padded_value_data(value));
}

int32_t battieTime(KOR_command &peer, uint8_t selector, uint8_t *record) {
    std::array<uint8_t, kBattleTimeLen> answer{};
    uint16_t capacity = kBattleTimeLen;
    const int32_t result = peer.send_recv_cmd(kGroupControl, control_code::kBattleTime, &selector,
                                              1, answer.data(), capacity);
    decode_battle_time(answer.data(), static_cast<int16_t>(capacity), record);
    return result;
}

int32_t getStopwatch(KOR_command &peer, uint8_t selector) {
    uint8_t unused = 0;
    uint16_t capacity = 0;
    return peer.send_recv_cmd(kGroupControl, control_code::kStopwatch, &selector, 1, &unused,
                              capacity);
}

int32_t getSensorBrightnessValue(KOR_command &peer) {
    uint8_t unused = 0;
    uint16_t capacity = 0;
    return peer.send_recv_cmd(kGroupControl, control_code::kSensorBrightness, nullptr, 0, &unused,
                              capacity);
}

int32_t setSpeedAdjust(KOR_command &peer, uint16_t value) {
    return plain(peer, control_code::kSetSpeedAdjust, u16_data(value));
}

int32_t setScreenAddress(KOR_command &peer, uint16_t value) {
    return plain(peer, control_code::kSetScreenAddress, u16_data(value));
}

int32_t SetExternalRelay(KOR_command &peer, uint8_t value) {
    const uint8_t data[] = {value, 0};
    return plain(peer, control_code::kExternalRelay, data, sizeof data);
}

int32_t firmwareActivate(KOR_command &peer, const uint8_t *four) {
    return plain(peer, control_code::kFirmwareActivate, four, kFirmwareKeyLen);
}

} // namespace zel::commands

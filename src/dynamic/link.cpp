#include "dynamic/link.h"

#include <array>
#include <cstdarg>
#include <cstdio>

#include "commands/discovery.h"
#include "dynamic/command_g5.h"
#include "sdk/log.h"
#include "wire/serial_peer.h"
#include "wire/tcp_peer.h"

namespace zel::dynamic {

// The log lines of these paths are formatted into a buffer of this size.
constexpr std::size_t kLogMessageLen = 256;

int32_t ping_controller_type(const Target &target, uint16_t &controllerType) {
    std::array<uint8_t, kPingRecordLen> record{};
    const int32_t result = tcp_ping(target.address.c_str(), target.port, record.data());
    if (result == 0) controllerType = static_cast<uint16_t>(record[0] | (record[1] << 8));
    return result;
}

int32_t exchange(KOR_command &peer, const std::vector<uint8_t> &data, bool alwaysLarge) {
    std::vector<uint8_t> answer(kFrameBufferLen, 0);
    uint16_t capacity = 0;
    if (!alwaysLarge && data.size() <= kSmallExchangeLimit) {
        return peer.send_recv_cmd_1K(kGroupDynamic, kCodeAddArea, data.data(),
                                     static_cast<uint16_t>(data.size()), answer.data(), capacity);
    }
    return peer.send_recv_cmd_1K_large(kGroupDynamic, kCodeAddArea, data.data(),
                                       static_cast<uint32_t>(data.size()), answer.data(), capacity);
}

OpenPeer open_peer(const Target &target) {
    OpenPeer out;
    if (target.serial) {
        auto peer = std::make_unique<TK_serialPort>();
        out.initResult = peer->init(target.portName.c_str(), target.speedIndex);
        out.peer = std::move(peer);
    } else {
        auto peer = std::make_unique<TK_Client>();
        out.initResult = peer->init(target.address.c_str(), target.port);
        out.peer = std::move(peer);
    }
    return out;
}

void log_locked(uint32_t level, const char *format, ...) {
    char message[kLogMessageLen] = {};
    va_list args;
    va_start(args, format);
    std::vsnprintf(message, sizeof message, format, args);
    va_end(args);
    DynamicAreaLockGuard lock;
    write_log(level, message);
}

} // namespace zel::dynamic

// How a dynamic entry reaches its controller: a TCP address and port or a serial port and
// speed index, the ping that tells the controller's type, and the exchange that carries the
// command (the 65536-byte path up to 32768 bytes of data, the heap path above).
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "wire/kor_command.h"

namespace zel::dynamic {

// The largest data that goes by the dynamic exchange; one byte more takes the large one.
inline constexpr std::size_t kSmallExchangeLimit = 32768;

struct Target {
    bool serial = false;
    std::string address; // TCP
    uint16_t port = 0;
    std::string portName; // serial
    int32_t speedIndex = 0;

    static Target tcp(const char *address, uint16_t port) { return {false, address, port, {}, 0}; }
    static Target line(const char *portName, int32_t speedIndex) {
        return {true, {}, 0, portName, speedIndex};
    }
};

// Pings over TCP: 0 and the controller type, or the ping's failure.
int32_t ping_controller_type(const Target &target, uint16_t &controllerType);

// Sends `data` as the data of a version 240 packet with group 0xA7 and code 0, an answer
// capacity of 0 (only an acknowledge succeeds), on the dynamic exchange up to 32768 bytes and
// on the large one above. `alwaysLarge` takes the large one whatever the size.
int32_t exchange(KOR_command &peer, const std::vector<uint8_t> &data, bool alwaysLarge = false);

// A peer that has run its init: TK_Client or TK_serialPort.
struct OpenPeer {
    std::unique_ptr<KOR_command> peer;
    int32_t initResult = -1;
};
OpenPeer open_peer(const Target &target);

// Writes a line of the log file at `level` under the dynamic-area lock.
void log_locked(uint32_t level, const char *format, ...) __attribute__((format(printf, 2, 3)));

// Narrows a result to signed 16 bits, as several entries hand theirs on.
inline int32_t narrow16(int32_t result) {
    return static_cast<int16_t>(result);
}

} // namespace zel::dynamic

// Finding controllers and setting their network identity: ping and the searches over TCP,
// UDP broadcast and serial lines, the network records, and a Wi-Fi module's AT commands.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "wire/broadcast_peer.h"
#include "wire/kor_command.h"

namespace zel {

// The ping record: ControllerType at 0, 30 controller-defined bytes, the address text at 32.
inline constexpr std::size_t kPingRecordLen = 52;
inline constexpr std::size_t kPingAddressOffset = 32;
inline constexpr std::size_t kPingAddressLen = 20;
// Ping answers are received with room for this many data bytes.
inline constexpr uint16_t kPingCapacity = 1024;
// A controller's Wi-Fi module in access-point mode always sits here.
inline constexpr const char *kAccessPointAddress = "192.168.100.1";
inline constexpr uint16_t kControllerTcpPort = 5005;
// The searches go through all their ways up to this many times.
inline constexpr int kSearchTries = 3;

inline constexpr uint8_t kCodePing = 0x00;        // group 0xA2
inline constexpr uint8_t kCodeSetMac = 0x00;      // group 0xA4
inline constexpr uint8_t kCodeSetIp = 0x01;       // group 0xA4
inline constexpr uint8_t kCodeNetSearch = 0x02;   // group 0xA4, 64-byte record
inline constexpr uint8_t kCodeNetSearch6G = 0x03; // group 0xA4, 206 or 595 bytes
inline constexpr uint16_t kNetSearchLen = 64;
inline constexpr uint16_t kNetSearch6GLen = 206;
inline constexpr uint16_t kNetSearch6GWebLen = 595;
inline constexpr std::size_t kSetIpDataLen = 51;
// "AT+INQUIRY" answers shorter than this carry no network name and password.
inline constexpr std::size_t kWifiInquiryMinLen = 38;

// --- Command bodies on a peer that has run its init ---------------------------------------

// Ping: group 0xA2, code 0, no data, into `answer` (room for 1024 bytes). The exchange's
// result, or -1 when unpack left a length above 1024 behind.
int32_t cmd_ping(KOR_command &peer, uint8_t *answer);

// Network search record (0xA4 0x02 or 0x03) into `out` with room for `capacity` bytes.
int32_t cmd_network_search(KOR_command &peer, uint8_t code, uint8_t *out, uint16_t capacity);

// The arguments of the set-IP command, in the order the host gives them.
struct SetIpArgs {
    uint8_t mode = 0;
    const char *address1 = nullptr;
    const char *address2 = nullptr;
    const char *address3 = nullptr;
    uint16_t port = 0;
    uint8_t type = 0;
    const char *address4 = nullptr;
    uint16_t port2 = 0;
    const uint8_t *value8 = nullptr; // 8 bytes
    uint16_t value16 = 0;
    const uint8_t *bytes12 = nullptr; // 12 bytes
};
std::array<uint8_t, kSetIpDataLen> set_ip_data(const SetIpArgs &args);
int32_t cmd_set_ip(KOR_command &peer, const SetIpArgs &args);

// Dotted text to 4 bytes: tokens end at a dot, at the end or after 4 characters, and are read
// as decimal numbers of which the low byte is kept.
std::array<uint8_t, 4> address_text_bytes(const char *text);
// "1-2-3-4-5-6" to 6 bytes: tokens end at a hyphen, at the end or after 5 characters, and are
// read as decimal numbers (hexadecimal letters read as 0) of which the low byte is kept.
std::array<uint8_t, 6> mac_text_bytes(const char *text);
int32_t cmd_set_mac(KOR_command &peer, const char *mac);

// One AT command to a Wi-Fi module: the text without a terminator, one answer within 5 polls.
// 0 when the answer says "OK" or "ok", else -1.
int32_t at_command(BroadcastPeer &peer, const char *text);

// --- Whole entries: peer, init, command, peer gone ----------------------------------------

int32_t search_controller(uint8_t *record);
int32_t tcp_ping(const char *address, uint16_t port, uint8_t *record);
int32_t udp_ping(uint8_t *record);
int32_t uart_search_controller(uint8_t *record, const char *portName);
int32_t udp_network_search(uint8_t *out, uint16_t capacity);
int32_t udp_network_search_6g(uint8_t *out, uint16_t capacity);
int32_t tcp_network_search_6g(const char *address, uint16_t port, uint8_t *out, uint16_t capacity);
int32_t uart_network_search_6g(uint8_t *out, uint16_t capacity, const char *portName,
                               int32_t speedIndex);
int32_t udp_set_ip(const SetIpArgs &args);
int32_t udp_set_mac(const char *mac);
int32_t at_set_wifi(const char *ssid, const char *password);
int32_t at_get_wifi(char *ssid, char *password);
// The inquiry of at_get_wifi on a module that has answered "AT": the question, one answer of
// at most 512 bytes, and the name and password read out of it up to their commas.
int32_t at_inquiry(BroadcastPeer &udp, char *ssid, char *password);

} // namespace zel

#include "commands/discovery.h"

#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "platform/thread.h"
#include "sdk/bytes.h"
#include "sdk/console.h"
#include "wire/serial_peer.h"
#include "wire/tcp_peer.h"

namespace zel {
namespace {

constexpr uint32_t kAtLinePauseMs = 100;
constexpr uint16_t kWifiInquiryRoom = 512;
constexpr std::size_t kAddressTokenLen = 4;
constexpr std::size_t kMacTokenLen = 5;

// Splits `text` at `separator` into `N` tokens of at most `MaxLen` characters and reads each
// as a decimal number, keeping its low byte. A token that reaches MaxLen ends there, and the
// next one starts at the following character.
template <std::size_t N, std::size_t MaxLen>
std::array<uint8_t, N> decimal_tokens(const char *text, char separator) {
    std::array<uint8_t, N> out{};
    const char *p = text != nullptr ? text : "";
    for (std::size_t i = 0; i < N; ++i) {
        char token[MaxLen + 1] = {};
        std::size_t j = 0;
        while (*p != '\0' && *p != separator && j < MaxLen) {
            token[j++] = *p++;
        }
        if (*p == separator) {
            ++p;
        }
        out[i] = static_cast<uint8_t>(std::strtol(token, nullptr, 10));
    }
    return out;
}

// Writes the sender of the UDP peer's last answer over the record's address field.
void put_peer_address(BroadcastPeer &peer, uint8_t *record) {
    peer.get_peer_address(reinterpret_cast<char *>(record + kPingAddressOffset));
}

// Pings into a zeroed local answer and hands the record's 52 bytes on when unpack wrote them
// (results 0 and 1). The record is 52 bytes: a longer ping answer is not spilled into it.
int32_t ping_into_record(KOR_command &peer, uint8_t *record) {
    std::vector<uint8_t> answer(kPingCapacity, 0);
    const int32_t result = cmd_ping(peer, answer.data());
    if (result == 0 || result == 1) {
        std::memcpy(record, answer.data(), kPingRecordLen);
    }
    return result;
}

} // namespace

int32_t cmd_ping(KOR_command &peer, uint8_t *answer) {
    uint16_t capacity = kPingCapacity;
    const int32_t result = peer.send_recv_cmd(0xA2, kCodePing, nullptr, 0, answer, capacity);
    // A failed unpack leaves the unescaped length behind, which may exceed the room.
    return capacity > kPingCapacity ? -1 : result;
}

int32_t cmd_network_search(KOR_command &peer, uint8_t code, uint8_t *out, uint16_t capacity) {
    return peer.send_recv_cmd(0xA4, code, nullptr, 0, out, capacity);
}

std::array<uint8_t, 4> address_text_bytes(const char *text) {
    return decimal_tokens<4, kAddressTokenLen>(text, '.');
}

std::array<uint8_t, 6> mac_text_bytes(const char *text) {
    return decimal_tokens<6, kMacTokenLen>(text, '-');
}

std::array<uint8_t, kSetIpDataLen> set_ip_data(const SetIpArgs &args) {
    ByteWriter w(kSetIpDataLen);
    w.u8(args.mode);
    w.bytes(address_text_bytes(args.address1));
    w.bytes(address_text_bytes(args.address2));
    w.bytes(address_text_bytes(args.address3));
    w.u16(args.port).u8(args.type);
    w.bytes(address_text_bytes(args.address4));
    w.u16(args.port2);
    if (args.value8 != nullptr) {
        w.bytes(args.value8, 8);
    } else {
        w.zeros(8);
    }
    w.u16(args.value16);
    if (args.bytes12 != nullptr) {
        w.bytes(args.bytes12, 12);
    } else {
        w.zeros(12);
    }
    w.zeros(kSetIpDataLen - w.size());
    std::array<uint8_t, kSetIpDataLen> out{};
    std::memcpy(out.data(), w.data().data(), kSetIpDataLen);
    return out;
}

int32_t cmd_set_ip(KOR_command &peer, const SetIpArgs &args) {
    const auto data = set_ip_data(args);
    return peer.send_cmd(0xA4, kCodeSetIp, data.data(), static_cast<uint16_t>(data.size()));
}

int32_t cmd_set_mac(KOR_command &peer, const char *mac) {
    const auto data = mac_text_bytes(mac);
    return peer.send_cmd(0xA4, kCodeSetMac, data.data(), static_cast<uint16_t>(data.size()));
}

int32_t at_command(BroadcastPeer &peer, const char *text) {
    const std::size_t length = text != nullptr ? std::strlen(text) : 0;
    if (peer.send(reinterpret_cast<const uint8_t *>(text), static_cast<uint32_t>(length)) != 0) {
        return -1;
    }
    std::vector<uint8_t> answer(kFrameBufferLen, 0);
    uint32_t room = kFrameBufferLen;
    if (peer.recv(answer.data(), room, kAnswerTimeout) != 0) {
        return -1;
    }
    return says_ok(answer.data(), answer.size()) ? 0 : -1;
}

int32_t search_controller(uint8_t *record) {
    if (record == nullptr) {
        return -1;
    }
    std::memset(record, 0, kPingRecordLen);
    std::vector<uint8_t> answer(kPingCapacity, 0);
    int32_t result = -1;
    for (int attempt = 0; attempt < kSearchTries; ++attempt) {
        // 1. A Wi-Fi module that answers "AT" names the controller's address.
        TK_Broadcast udp;
        if (udp.init_AT() == 0) {
            char address[kPeerAddressLen] = {};
            udp.get_peer_address(address);
            TK_Client client;
            if (client.init(address, kControllerTcpPort) != 0) {
                client.close();
                udp.close();
            } else if (cmd_ping(client, answer.data()) == 0) {
                std::memcpy(record, answer.data(), kPingRecordLen);
                put_peer_address(udp, record);
                return 0;
            }
        } else {
            udp.close();
        }

        // 2. The module's own access point, at its fixed address.
        {
            TK_Client client;
            if (client.init(kAccessPointAddress, kControllerTcpPort) == 0 &&
                cmd_ping(client, answer.data()) == 0) {
                std::memcpy(record, answer.data(), kPingRecordLen);
                std::memset(record + kPingAddressOffset, 0, kPingAddressLen);
                std::memcpy(record + kPingAddressOffset, kAccessPointAddress,
                            std::strlen(kAccessPointAddress));
                return 0;
            }
            client.close();
        }

        // 3. A broadcast on every local network.
        result = udp.init();
        if (result == 0) {
            result = cmd_ping(udp, answer.data());
            if (result == 0) {
                std::memcpy(record, answer.data(), kPingRecordLen);
                put_peer_address(udp, record);
                udp.close();
                return 0;
            }
        }
        udp.close();
    }
    return result;
}

int32_t tcp_ping(const char *address, uint16_t port, uint8_t *record) {
    TK_Client client;
    int32_t result = client.init(address, port);
    if (result != 0) {
        return result;
    }
    std::vector<uint8_t> answer(kPingCapacity, 0);
    result = cmd_ping(client, answer.data());
    if (result == 0 && record != nullptr) {
        std::memcpy(record, answer.data(), kPingRecordLen);
    }
    return result;
}

int32_t udp_ping(uint8_t *record) {
    if (record == nullptr) {
        return -1;
    }
    std::memset(record, 0, kPingRecordLen);
    TK_Broadcast udp;
    int32_t result = udp.init();
    if (result != 0) {
        return result;
    }
    result = ping_into_record(udp, record);
    // Whatever the ping gave: the address of whoever answered, empty if nobody did.
    put_peer_address(udp, record);
    return result;
}

int32_t uart_search_controller(uint8_t *record, const char *portName) {
    if (record == nullptr) {
        return -1;
    }
    TK_serialPort port;
    std::memset(record, 0, kPingRecordLen);
    int32_t result = -1;
    for (int attempt = 0; attempt < kSearchTries; ++attempt) {
        result = port.init(portName, kSpeedIndex9600);
        if (result == 0) {
            result = ping_into_record(port, record);
            if (result == 0) {
                return 0;
            }
        }
        port.close();
        result = port.init(portName, kSpeedIndex57600);
        if (result == 0) {
            result = ping_into_record(port, record);
            if (result == 0) {
                return 0;
            }
        }
        if (attempt + 1 < kSearchTries) {
            port.close();
        }
    }
    return result;
}

namespace {

int32_t udp_search_with(uint8_t code, uint8_t *out, uint16_t capacity) {
    TK_Broadcast udp;
    const int32_t result = udp.init();
    if (result != 0) {
        return result;
    }
    return cmd_network_search(udp, code, out, capacity);
}

} // namespace

int32_t udp_network_search(uint8_t *out, uint16_t capacity) {
    return udp_search_with(kCodeNetSearch, out, capacity);
}

int32_t udp_network_search_6g(uint8_t *out, uint16_t capacity) {
    return udp_search_with(kCodeNetSearch6G, out, capacity);
}

int32_t tcp_network_search_6g(const char *address, uint16_t port, uint8_t *out, uint16_t capacity) {
    TK_Client client;
    const int32_t result = client.init(address, port);
    if (result != 0) {
        return result;
    }
    return cmd_network_search(client, kCodeNetSearch6G, out, capacity);
}

int32_t uart_network_search_6g(uint8_t *out, uint16_t capacity, const char *portName,
                               int32_t speedIndex) {
    if (out == nullptr) {
        return -1;
    }
    TK_serialPort port;
    // Only the first 52 bytes, whatever the record's length: the search always did so.
    std::memset(out, 0, kPingRecordLen);
    int32_t result = -1;
    for (int attempt = 0; attempt < kSearchTries; ++attempt) {
        result = port.init(portName, speedIndex);
        if (result == 0) {
            result = cmd_network_search(port, kCodeNetSearch6G, out, capacity);
            if (result == 0) {
                return 0;
            }
        }
        if (attempt + 1 < kSearchTries) {
            port.close();
        }
    }
    return result;
}

int32_t udp_set_ip(const SetIpArgs &args) {
    TK_Broadcast udp;
    const int32_t result = udp.init();
    if (result != 0) {
        return result;
    }
    return cmd_set_ip(udp, args);
}

int32_t udp_set_mac(const char *mac) {
    TK_Broadcast udp;
    const int32_t result = udp.init();
    if (result != 0) {
        return result;
    }
    return cmd_set_mac(udp, mac);
}

int32_t at_set_wifi(const char *ssid, const char *password) {
    const std::string apLine = std::string("AT+AP=") + (ssid != nullptr ? ssid : "") + "," + "4" +
                               "," + (password != nullptr ? password : "") + "," + "11";
    TK_Broadcast udp;
    int32_t result = udp.init_AT();
    if (result != 0) {
        return result;
    }
    const std::string lines[] = {
        apLine,
        std::string("AT+AP_IP=") + kAccessPointAddress,
        "AT+SOCKET=TCPS,0.0.0.0,0,5005",
        "AT+WMODE=2",
    };
    for (const auto &line : lines) {
        result = at_command(udp, line.c_str());
        if (result != 0) {
            return result;
        }
        platform::sleep_ms(kAtLinePauseMs);
    }
    // The module restarts on this one and may not say so: its answer does not count.
    at_command(udp, "AT+RST");
    return result;
}

int32_t at_get_wifi(char *ssid, char *password) {
    TK_Broadcast udp;
    const int32_t result = udp.init_AT();
    if (result != 0) {
        return result;
    }
    return at_inquiry(udp, ssid, password);
}

int32_t at_inquiry(BroadcastPeer &udp, char *ssid, char *password) {
    static constexpr char kInquiry[] = "AT+INQUIRY";
    udp.send(reinterpret_cast<const uint8_t *>(kInquiry), sizeof kInquiry - 1);
    uint8_t answer[kWifiInquiryRoom] = {};
    uint32_t length = kWifiInquiryRoom;
    // A silent module leaves the length as it was: that is how it shows.
    if (udp.recv(answer, length, kAnswerTimeout) != 0 || length == kWifiInquiryRoom) {
        console_printf("cmd_AT_getWifiSsidPwd return data err\n");
        return -1;
    }
    if (length < kWifiInquiryMinLen) {
        return 2;
    }
    // "name,password,...": no terminator is written; the host's outputs come zeroed.
    std::size_t comma = 1;
    while (comma < length && answer[comma] != ',') {
        ++comma;
    }
    if (comma >= length) {
        return 0;
    }
    if (ssid != nullptr) {
        std::memcpy(ssid, answer, comma);
    }
    std::size_t next = comma + 1;
    while (next < length && answer[next] != ',') {
        ++next;
    }
    if (next < length && password != nullptr) {
        std::memcpy(password, answer + comma + 1, next - comma - 1);
    }
    return 0;
}

} // namespace zel

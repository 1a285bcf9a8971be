// A controller, or a controller's Wi-Fi module, whose address is not known: one UDP socket on
// each IPv4 address of the host, every packet broadcast out of all of them, and the first
// datagram that comes back on any of them is the answer.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "wire/kor_command.h"

namespace zel {

inline constexpr const char *kBroadcastAddress = "255.255.255.255";
// The controller's own protocol.
inline constexpr uint16_t kControllerUdpPort = 5007;
inline constexpr uint16_t kHostUdpPort = 5009;
// A Wi-Fi module's AT commands.
inline constexpr uint16_t kWifiModuleAtPort = 13769;
inline constexpr uint16_t kHostAtPort = 14769;
// The address text of the sender of the last answer fits in this many bytes, zero-padded.
inline constexpr std::size_t kPeerAddressLen = 20;

// Whether the text in `buf` (up to its first zero byte, at most `len` bytes) contains "OK" or
// "ok": how a Wi-Fi module's answer, or a short datagram, is accepted.
bool says_ok(const uint8_t *buf, std::size_t len);

class BroadcastPeer : public KOR_command {
  public:
    BroadcastPeer() = default;
    ~BroadcastPeer() override; // closes the sockets and frees the answer pool

    // Opens one socket per local IPv4 address, bound to `localPort`, to broadcast to
    // `destAddress`:`destPort`. 0, or the positive error code of the address listing or of
    // the socket layer. A host without a usable address gets no socket and result 0.
    int32_t open(const char *destAddress, uint16_t destPort, uint16_t localPort);

    // One datagram out of every socket; always 0.
    int32_t send(const uint8_t *data, uint32_t len) override;

    // Waits up to `timeout` polls of one second for the first datagram on any socket. 0 also
    // when nothing came (buffer and `len` then untouched); -1 for a datagram shorter than 15
    // bytes that contains neither "OK" nor "ok".
    int32_t recv(uint8_t *buf, uint32_t &len, uint32_t timeout) override;

    // Zeroes 20 bytes of `out` and copies the sender address of the last answer into it
    // (empty when nothing answered). Always 0.
    int32_t get_peer_address(char *out);

    // Closes every socket, pausing 10 ms after each.
    void close();

    const std::vector<std::string> &local_addresses() const { return m_localAddresses; }
    std::size_t socket_count() const { return m_sockets.size(); }

  protected:
    char m_peerAddress[160] = {};
    std::vector<int32_t> m_answerLengths;
    std::vector<const uint8_t *> m_answerPointers;
    std::vector<uint32_t> m_senderAddresses;
    std::vector<int32_t> m_senderLengths;
    std::vector<uint8_t> m_answerPool; // 1 MiB once the first recv has run
    std::string m_destAddress;
    uint16_t m_destPort = 0;
    uint16_t m_localPort = 0;
    std::vector<int> m_sockets;
    std::vector<std::string> m_localAddresses;
    std::map<std::string, std::string> m_adapters; // address -> interface name; only stored
};

class TK_Broadcast : public BroadcastPeer {
  public:
    // The controller's protocol: opens towards port 5007 from 5009, runs the device-type probe
    // and takes m_DeviceType from its answer. 0, -1, -4 or the codes of open.
    int32_t init();

    // A Wi-Fi module: opens towards port 13769 from 14769, says "AT" and waits for the answer,
    // whose text is not looked at. 0, or the codes of open and recv.
    int32_t init_AT();
};

} // namespace zel

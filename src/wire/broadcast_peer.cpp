#include "wire/broadcast_peer.h"

#include <algorithm>
#include <cstring>

#include "platform/net.h"
#include "platform/thread.h"

namespace zel {
namespace {

constexpr std::size_t kAnswerPoolLen = 1024 * 1024;
constexpr std::size_t kMaxWatchedSockets = 64; // sockets beyond these are not watched
constexpr uint32_t kPollMs = 1000;
constexpr uint32_t kPauseAfterCloseMs = 10;
// A datagram this short is an answer only when it says "OK" (a Wi-Fi module's reply).
constexpr ssize_t kShortestAnswer = 15;
// Adapter entries of an unconfigured interface read "0.0.0.0"; the test is for the substring,
// so an address such as 10.0.0.0 is skipped too.
constexpr const char *kUnconfiguredAddress = "0.0.0.0";

// Whether the text in buf (up to its first zero byte, within len) contains needle.
bool text_contains(const uint8_t *buf, std::size_t len, const char *needle) {
    const std::size_t textLen = strnlen(reinterpret_cast<const char *>(buf), len);
    const std::size_t needleLen = std::strlen(needle);
    if (needleLen > textLen) {
        return false;
    }
    return std::search(buf, buf + textLen, needle, needle + needleLen) != buf + textLen;
}

} // namespace

bool says_ok(const uint8_t *buf, std::size_t len) {
    return buf != nullptr && (text_contains(buf, len, "OK") || text_contains(buf, len, "ok"));
}

BroadcastPeer::~BroadcastPeer() {
    close();
}

int32_t BroadcastPeer::open(const char *destAddress, uint16_t destPort, uint16_t localPort) {
    // Sockets of an earlier open that nobody closed are closed here rather than leaked.
    for (const int fd : m_sockets) {
        platform::socket_close(fd);
    }
    m_localAddresses.clear();
    m_sockets.clear();
    m_adapters.clear();

    std::vector<platform::InterfaceAddress> interfaces;
    const int listed = platform::list_ipv4_addresses(interfaces);
    if (listed == 0) {
        for (const auto &entry : interfaces) {
            if (entry.address.find(kUnconfiguredAddress) != std::string::npos) {
                continue;
            }
            m_localAddresses.push_back(entry.address);
            m_adapters[entry.address] = entry.name;
        }
    }
    m_destAddress = destAddress != nullptr ? destAddress : "";
    m_destPort = destPort;
    m_localPort = localPort;
    if (listed != 0) {
        return listed;
    }
    for (const auto &address : m_localAddresses) {
        const int fd = platform::udp_socket();
        if (fd < 0) {
            return platform::last_socket_error();
        }
        platform::set_broadcast_and_reuse(fd);
        platform::bind_ipv4(fd, platform::parse_ipv4(address.c_str()), localPort);
        m_sockets.push_back(fd);
    }
    return 0;
}

int32_t BroadcastPeer::send(const uint8_t *data, uint32_t len) {
    // Every socket sends whatever the others did; results are not looked at. A length beyond
    // the frame buffer (a frame of 32768 bytes or more) is refused by the socket layer.
    if (data == nullptr || len > kFrameBufferLen) {
        return 0;
    }
    const uint32_t dest = platform::parse_ipv4(m_destAddress.c_str());
    for (const int fd : m_sockets) {
        platform::send_datagram(fd, dest, m_destPort, data, len);
    }
    return 0;
}

int32_t BroadcastPeer::recv(uint8_t *buf, uint32_t &len, uint32_t timeout) {
    if (m_answerPool.empty()) {
        m_answerPool.assign(kAnswerPoolLen, 0);
    }
    std::memset(m_peerAddress, 0, sizeof m_peerAddress);
    m_answerLengths.clear();
    m_answerPointers.clear();
    m_senderAddresses.clear();
    m_senderLengths.clear();
    if (buf == nullptr) {
        return -1;
    }

    const std::vector<int> watched(
        m_sockets.begin(), m_sockets.begin() + static_cast<std::ptrdiff_t>(
                                                   std::min(m_sockets.size(), kMaxWatchedSockets)));
    for (uint32_t polls = 0; polls < timeout;) {
        const std::size_t ready = platform::wait_any_readable(watched, kPollMs);
        ++polls;
        if (ready >= watched.size()) {
            continue;
        }
        uint32_t sender = 0;
        uint32_t senderLength = 0;
        ssize_t n = platform::receive_datagram(watched[ready], buf, len, sender, senderLength);
        n = std::max<ssize_t>(n, 0); // a failed receive delivers nothing
        if (n < kShortestAnswer && !says_ok(buf, len)) {
            return -1;
        }
        m_answerLengths.push_back(static_cast<int32_t>(n));
        m_answerPointers.push_back(m_answerPool.data());
        m_senderAddresses.push_back(sender);
        m_senderLengths.push_back(static_cast<int32_t>(senderLength));
        const std::string text = platform::ipv4_text(sender);
        std::memcpy(m_peerAddress, text.data(), std::min(text.size(), sizeof m_peerAddress - 1));
        len = static_cast<uint32_t>(n);
        break;
    }
    // Also when nothing came: the caller then sees its own buffer and length unchanged.
    return 0;
}

int32_t BroadcastPeer::get_peer_address(char *out) {
    if (out == nullptr) {
        return 0;
    }
    std::memset(out, 0, kPeerAddressLen);
    std::memcpy(out, m_peerAddress, strnlen(m_peerAddress, kPeerAddressLen - 1));
    return 0;
}

void BroadcastPeer::close() {
    for (const int fd : m_sockets) {
        platform::socket_close(fd);
        platform::sleep_ms(kPauseAfterCloseMs);
    }
    m_sockets.clear();
}

int32_t TK_Broadcast::init() {
    const int32_t result = open(kBroadcastAddress, kControllerUdpPort, kHostUdpPort);
    if (result != 0) {
        return result;
    }
    return probe_device_type(kAnswerTimeout);
}

int32_t TK_Broadcast::init_AT() {
    const int32_t result = open(kBroadcastAddress, kWifiModuleAtPort, kHostAtPort);
    if (result != 0) {
        return result;
    }
    static constexpr uint8_t kHello[] = {'A', 'T'};
    send(kHello, sizeof kHello);
    std::vector<uint8_t> answer(kFrameBufferLen, 0);
    uint32_t length = kFrameBufferLen;
    recv(answer.data(), length, kAnswerTimeout); // the module's words are not looked at
    return 0;
}

} // namespace zel

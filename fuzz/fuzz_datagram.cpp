// The broadcast peer receiving datagrams: each piece of the input is sent as one datagram on
// loopback to the socket the peer watches, and the peer's own recv takes it (short datagrams
// pass only when they say "OK"). What the exchanges do with it follows: the probe, a ping,
// the G5 network record, an AT command line and the Wi-Fi module's inquiry, whose answer is
// read out into the host's name and password buffers.
//
// Input: the datagrams, one per exchange (see fuzz_chunks.h).
#include <arpa/inet.h>
#include <cstddef>
#include <cstdint>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>
#include <vector>

#include "commands/discovery.h"
#include "fuzz_chunks.h"
#include "fuzz_clock.h"
#include "wire/broadcast_peer.h"

namespace {

// A peer that watches one loopback socket instead of one per address and sends nothing.
class LoopbackPeer : public zel::TK_Broadcast {
  public:
    LoopbackPeer() {
        const int fd = ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
        sockaddr_in sa{};
        sa.sin_family = AF_INET;
        sa.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t len = sizeof sa;
        ::bind(fd, reinterpret_cast<sockaddr *>(&sa), sizeof sa);
        ::getsockname(fd, reinterpret_cast<sockaddr *>(&sa), &len);
        m_to = sa;
        m_sockets.push_back(fd);
        m_sender = ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    }
    ~LoopbackPeer() override { ::close(m_sender); } // the base closes the watched socket

    void put(const std::vector<uint8_t> &datagram) {
        ::sendto(m_sender, datagram.data(), datagram.size(), 0,
                 reinterpret_cast<const sockaddr *>(&m_to), sizeof m_to);
    }
    void drain() {
        uint8_t sink[9000];
        while (::recv(m_sockets.front(), sink, sizeof sink, MSG_DONTWAIT) >= 0) {
        }
    }

    int32_t send(const uint8_t *, uint32_t) override { return 0; }
    int32_t probe() { return probe_device_type(zel::kAnswerTimeout); }

  private:
    sockaddr_in m_to{};
    int m_sender = -1;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size) {
    static zel::fuzz::InstantClock clock;
    static LoopbackPeer peer;
    const auto pieces = zel::fuzz::chunks(data, size, 8192);
    std::size_t next = 0;
    auto feed = [&] {
        peer.drain();
        if (next < pieces.size()) peer.put(pieces[next++]);
    };

    peer.m_DeviceType = 0xFFFE;
    feed();
    peer.probe();

    feed();
    std::vector<uint8_t> ping(zel::kPingCapacity, 0);
    zel::cmd_ping(peer, ping.data());

    feed();
    std::vector<uint8_t> record(zel::kNetSearchLen, 0);
    zel::cmd_network_search(peer, zel::kCodeNetSearch, record.data(), zel::kNetSearchLen);

    feed();
    zel::at_command(peer, "AT+WMODE=2");

    feed();
    std::vector<char> ssid(512, 0), password(512, 0);
    zel::at_inquiry(peer, ssid.data(), password.data());

    char address[zel::kPeerAddressLen];
    peer.get_peer_address(address);
    return 0;
}

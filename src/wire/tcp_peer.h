// A controller reached over TCP: the usual peer of every zelDual_cmd_* entry that takes an
// address and a port.
#pragma once

#include <cstdint>

#include "wire/kor_command.h"

namespace zel {

// Seconds: connecting, being able to send, and each answer.
inline constexpr uint32_t kConnectTimeout = 5;
inline constexpr uint32_t kSendReadyTimeout = 3;
// Milliseconds: the pause after a connection is made, and the one after it is closed.
inline constexpr uint32_t kTcpSettleAfterConnectMs = 5;
inline constexpr uint32_t kTcpPauseAfterCloseMs = 10;

class TcpPeer : public KOR_command {
  public:
    TcpPeer() = default;
    ~TcpPeer() override; // closes the socket

    // Connects without blocking for longer than `timeoutSeconds`: 0 or -1. A connection still
    // pending when the time runs out is not a failure here; it shows at the first send. A
    // refused connection prints "TCP connect to select to FD_ISSET failed! ip=%s \n".
    int32_t connect(const char *address, uint16_t port, uint32_t timeoutSeconds);

    // One send call of the whole frame: 0, or -1 (the socket is closed unless it was merely
    // not ready within 3 s). Nothing to send (an empty packet) is a failure.
    int32_t send(const uint8_t *data, uint32_t len) override;

    // One recv call: 0, or -1 when nothing came within `timeout` seconds (the socket stays
    // open), when the connection failed, or when the bytes received do not end with 0x5A (an
    // answer split over two segments is refused on purpose).
    int32_t recv(uint8_t *buf, uint32_t &len, uint32_t timeout) override;

    // Shuts down and closes the socket, if any, and pauses 10 ms.
    void close();

    bool connected() const { return m_socket >= 0; }

  protected:
    int m_socket = -1;
};

class TK_Client : public TcpPeer {
  public:
    // Connects (5 s) and runs the device-type probe, which sets m_DeviceType and the echo
    // byte. 0, -1, or -4 for a probe answer with an unknown header version.
    int32_t init(const char *address, uint16_t port);
};

} // namespace zel

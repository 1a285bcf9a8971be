// The conversation with one controller: send and recv as the transport's two virtual
// operations, and the exchanges that every command body is written against. Command bodies
// never see a socket, a port or a terminal, so each runs unchanged over TCP, UDP and serial.
#pragma once

#include <cstdint>

#include "wire/packet.h"

namespace zel {

// Room of the frame buffer of every exchange; a frame is read with one recv into it.
inline constexpr uint32_t kFrameBufferLen = 65536;
// The most command data that the signed 16-bit length of a request body can describe; an
// exchange refuses more with -1 and sends nothing.
inline constexpr uint16_t kLargestCommandData = 0x7FFF;
// The plain command drops its answer into a buffer of this size.
inline constexpr uint16_t kPlainAnswerCapacity = 1024;
// Dynamic frames go to the controller in pieces of at most this many bytes, back to back.
inline constexpr uint32_t kDynamicChunkLen = 1024;
// Every exchange waits this long for its answer (seconds on TCP; polls of 1 s on UDP; units of
// 500 ms on a serial line).
inline constexpr uint32_t kAnswerTimeout = 5;

class KOR_command : public LedTKPacket {
  public:
    KOR_command() = default;
    ~KOR_command() override;
    KOR_command(const KOR_command &) = delete;
    KOR_command &operator=(const KOR_command &) = delete;

    // Sends `len` bytes of one frame: 0 or -1. The base has no transport and fails.
    virtual int32_t send(const uint8_t *data, uint32_t len);
    // Receives one answer into `buf`: `len` is the room on the way in and the count on the way
    // out. `timeout` is in the transport's own unit (see kAnswerTimeout). 0 or -1; the base
    // fails.
    virtual int32_t recv(uint8_t *buf, uint32_t &len, uint32_t timeout);

    // The command exchange: packs one version 5 or 7 request, sends it, receives one answer and
    // unpacks it into `answer`, which has room for `capacity` bytes. `capacity` comes back as
    // unpack leaves it. The result is unpack's, or that of the first step that failed; -1 for
    // data longer than kLargestCommandData, which never goes out.
    int32_t send_recv_cmd(uint8_t group, uint8_t code, const uint8_t *data, uint16_t dataLen,
                          uint8_t *answer, uint16_t &capacity);

    // The plain command: the command exchange with a throw-away answer of 1024 bytes, for
    // commands that expect an acknowledge or whose answer nobody reads.
    int32_t send_cmd(uint8_t group, uint8_t code, const uint8_t *data, uint16_t dataLen);

    // The dynamic exchange: a version 240 frame of up to 65536 bytes sent in pieces of 1024;
    // group and code only recognise the answer.
    int32_t send_recv_cmd_1K(uint8_t group, uint8_t code, const uint8_t *data, uint16_t dataLen,
                             uint8_t *answer, uint16_t &capacity);

    // The large dynamic exchange: the same with a 32-bit data length and a frame built on the
    // heap. Its own name, so that a call with an int length is never ambiguous.
    int32_t send_recv_cmd_1K_large(uint8_t group, uint8_t code, const uint8_t *data,
                                   uint32_t dataLen, uint8_t *answer, uint16_t &capacity);

    uint8_t m_reservedState = 0; // one byte that no command reads

  protected:
    // The device-type probe of every init: sends the probe, receives its answer (room 65536,
    // `timeout` in the transport's unit), opens it and takes m_DeviceType from offset 6. The
    // first non-zero result of send, recv or unpack is the result.
    int32_t probe_device_type(uint32_t timeout);
};

} // namespace zel

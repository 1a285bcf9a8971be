// A controller on an asynchronous serial line (or anything that looks like one, such as a
// pseudo-terminal). There is no connection to open, so each send is followed by a pause that
// the line's speed and the write time-outs decide, and each answer must come in one read.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "wire/kor_command.h"

namespace zel {

// Speed index of every serial entry: 1 is 9600 bit/s, 2 is 57600; anything else is refused.
inline constexpr int32_t kSpeedIndex9600 = 1;
inline constexpr int32_t kSpeedIndex57600 = 2;
// recv's time-out counts units of this many milliseconds: the usual 5 gives 2500 ms.
inline constexpr uint32_t kSerialTimeoutUnitMs = 500;

// The line's time-outs in milliseconds, kept as the port was told them. The write pause after
// each frame is computed from the write values.
struct SerialTimeouts {
    uint32_t readInterval = 0xFFFFFFFF;
    uint32_t readTotalMultiplier = 0;
    uint32_t readTotalConstant = 100;
    uint32_t writeTotalMultiplier = 1;
    uint32_t writeTotalConstant = 100;
};

class SerialPortPeer : public KOR_command {
  public:
    SerialPortPeer();
    ~SerialPortPeer() override; // closes the port

    // Opens `portName` exclusively in raw mode, 8N1, at the speed of `speedIndex`: 0 or -1.
    // With a wrong speed index the port stays open (and is closed by close or the destructor).
    int32_t open(const char *portName, int32_t speedIndex);

    // Writes the frame, then pauses (write constant + multiplier x length ms, divided by the
    // speed's multiple of 9600). 0 or -1.
    int32_t send(const uint8_t *data, uint32_t len) override;

    // Reads every 100 ms for up to timeout x 500 ms; the first read that brings bytes is the
    // answer, which ends at its first 0x5A. 0, or -1 (after discarding both queues) when
    // nothing came or the read holds no 0x5A.
    int32_t recv(uint8_t *buf, uint32_t &len, uint32_t timeout) override;

    void close();

    bool is_open() const { return m_port >= 0; }

  protected:
    int m_port = -1;
    std::vector<std::string> m_unusedLists[4]; // never filled by serial work
    std::vector<uint8_t> m_scratch;            // never allocated by serial work
    uint32_t m_instanceCounter = 0;
    uint16_t m_value = 1000; // 5 after open; read by nobody
    SerialTimeouts m_timeouts;
};

class TK_serialPort : public SerialPortPeer {
  public:
    // Opens the port at the speed index and runs the device-type probe, which sets
    // m_DeviceType and the echo byte. 0, -1, or -4 for a probe answer with an unknown header
    // version.
    int32_t init(const char *portName, int32_t speedIndex);
};

} // namespace zel

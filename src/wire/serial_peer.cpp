#include "wire/serial_peer.h"

#include "platform/serial.h"
#include "platform/thread.h"
#include "sdk/console.h"

namespace zel {
namespace {

constexpr uint16_t kValueAfterOpen = 5;
constexpr uint32_t kBaseSpeed = 9600; // the write pause is given for this speed
constexpr uint32_t kFallbackPauseMs = 500;
constexpr uint32_t kReadPauseMs = 100; // gives an answer time to arrive whole before the read
constexpr uint32_t kRetryPauseMs = 10;

uint32_t speed_for_index(int32_t speedIndex) {
    switch (speedIndex) {
    case kSpeedIndex9600:
        return 9600;
    case kSpeedIndex57600:
        return 57600;
    default:
        return 0;
    }
}

} // namespace

SerialPortPeer::SerialPortPeer() {
    ++m_instanceCounter;
}

SerialPortPeer::~SerialPortPeer() {
    close();
}

int32_t SerialPortPeer::open(const char *portName, int32_t speedIndex) {
    m_value = kValueAfterOpen;
    close(); // a second open of the same object does not leave the first port behind
    m_port = platform::serial_open(portName);
    if (m_port < 0) {
        return -1;
    }
    uint32_t current = 0;
    if (!platform::serial_speed(m_port, current)) {
        return -1;
    }
    const uint32_t speed = speed_for_index(speedIndex);
    if (speed == 0) {
        return -1; // the port stays open until close or the destructor
    }
    const bool configured = platform::serial_configure(m_port, speed);
    platform::serial_purge(m_port);
    m_timeouts = SerialTimeouts{};
    return configured ? 0 : -1;
}

int32_t SerialPortPeer::send(const uint8_t *data, uint32_t len) {
    if (!platform::serial_check(m_port)) {
        console_printf("ClearCommError error return ===== %d \n", 0);
        return -1;
    }
    const uint32_t writeTimeout =
        m_timeouts.writeTotalConstant + m_timeouts.writeTotalMultiplier * len;
    // A length beyond the frame buffer is what a frame of 32768 bytes or more turns into; the
    // write refuses it.
    if (data == nullptr || len > kFrameBufferLen ||
        platform::serial_write(m_port, data, len, writeTimeout) < 0) {
        console_printf("WriteFile error return ===== %d \n", 0);
        return -1;
    }
    uint32_t speed = 0;
    uint32_t pause = kFallbackPauseMs;
    if (platform::serial_speed(m_port, speed)) {
        pause = writeTimeout;
        if (speed != kBaseSpeed && speed / kBaseSpeed != 0) {
            pause /= speed / kBaseSpeed;
        }
    }
    platform::sleep_ms(pause);
    return 0;
}

int32_t SerialPortPeer::recv(uint8_t *buf, uint32_t &len, uint32_t timeout) {
    const uint32_t start = platform::tick_count_ms();
    const uint32_t limit = timeout * kSerialTimeoutUnitMs;
    ssize_t got = 0;
    while (platform::tick_count_ms() - start < limit) {
        platform::sleep_ms(kReadPauseMs);
        got = buf != nullptr ? platform::serial_read(m_port, buf, len) : -1;
        if (got >= 1) {
            break;
        }
        got = 0;
        platform::sleep_ms(kRetryPauseMs);
    }
    if (got >= 1) {
        // Only this one read is looked at: the first end byte ends the answer, and whatever
        // came behind it is dropped.
        for (ssize_t p = 0; p < got; ++p) {
            if (buf[p] == kFrameEnd) {
                len = static_cast<uint32_t>(p + 1);
                return 0;
            }
        }
    }
    platform::serial_purge(m_port);
    return -1;
}

void SerialPortPeer::close() {
    platform::serial_close(m_port);
    m_port = -1;
}

int32_t TK_serialPort::init(const char *portName, int32_t speedIndex) {
    if (open(portName, speedIndex) != 0) {
        return -1;
    }
    const int32_t result = probe_device_type(kAnswerTimeout);
    // Failures of send and recv are -1; the probe's unpack gives its own result.
    return result;
}

} // namespace zel

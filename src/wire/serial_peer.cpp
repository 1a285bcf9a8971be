#include "wire/serial_peer.h"

namespace zel {

SerialPortPeer::SerialPortPeer() {
    ++m_instanceCounter;
}
SerialPortPeer::~SerialPortPeer() {
    close();
}

int32_t SerialPortPeer::open(const char *, int32_t) {
    return -1;
}
int32_t SerialPortPeer::send(const uint8_t *, uint32_t) {
    return -1;
}
int32_t SerialPortPeer::recv(uint8_t *, uint32_t &, uint32_t) {
    return -1;
}
void SerialPortPeer::close() {
    m_port = -1;
}

int32_t TK_serialPort::init(const char *, int32_t) {
    return -1;
}

} // namespace zel

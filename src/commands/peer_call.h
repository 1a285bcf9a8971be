// How a command entry reaches the wire: a peer of its own, init (connect or open, then the
// device-type probe), one command body, and the peer's destructor closing the connection. No
// connection outlives a call.
#pragma once

#include <cstdint>

#include "wire/serial_peer.h"
#include "wire/tcp_peer.h"

namespace zel::commands {

template <class Body> int32_t with_tcp_peer(const char *address, uint16_t port, Body &&body) {
    if (address == nullptr) return -1;
    TK_Client peer;
    const int32_t result = peer.init(address, port);
    if (result != 0) return result;
    return body(static_cast<KOR_command &>(peer));
}

template <class Body>
int32_t with_serial_peer(const char *portName, uint8_t speedIndex, Body &&body) {
    if (portName == nullptr) return -1;
    TK_serialPort peer;
    const int32_t result = peer.init(portName, speedIndex);
    if (result != 0) return result;
    return body(static_cast<KOR_command &>(peer));
}

} // namespace zel::commands

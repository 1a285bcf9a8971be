// How a command entry reaches the wire: a peer of its own, init (connect or open, then the
// device-type probe), one command body, and the peer's destructor closing the connection. No
// connection outlives a call.
#pragma once

#include <cstdint>

#include "sdk/guard.h"
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

// The same, guarded for an exported entry: an exception becomes -1.
template <class Body> int32_t over_tcp(const char *address, uint16_t port, Body &&body) {
    return guarded(-1, [&] { return with_tcp_peer(address, port, body); });
}

template <class Body> int32_t over_serial(const char *portName, uint8_t speedIndex, Body &&body) {
    return guarded(-1, [&] { return with_serial_peer(portName, speedIndex, body); });
}

} // namespace zel::commands

#include "wire/tcp_peer.h"

namespace zel {

TcpPeer::~TcpPeer() {
    close();
}

int32_t TcpPeer::connect(const char *, uint16_t, uint32_t) {
    return -1;
}
int32_t TcpPeer::send(const uint8_t *, uint32_t) {
    return -1;
}
int32_t TcpPeer::recv(uint8_t *, uint32_t &, uint32_t) {
    return -1;
}
void TcpPeer::close() {
    m_socket = -1;
}

int32_t TK_Client::init(const char *, uint16_t) {
    return -1;
}

} // namespace zel

#include "wire/broadcast_peer.h"

namespace zel {

BroadcastPeer::~BroadcastPeer() {
    close();
}

int32_t BroadcastPeer::open(const char *, uint16_t, uint16_t) {
    return -1;
}
int32_t BroadcastPeer::send(const uint8_t *, uint32_t) {
    return 0;
}
int32_t BroadcastPeer::recv(uint8_t *, uint32_t &, uint32_t) {
    return -1;
}
int32_t BroadcastPeer::getPeerAddress(char *) {
    return 0;
}
void BroadcastPeer::close() {
    m_sockets.clear();
}

int32_t TK_Broadcast::init() {
    return -1;
}
int32_t TK_Broadcast::init_AT() {
    return -1;
}

} // namespace zel

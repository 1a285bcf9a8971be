#include "sdk/globals.h"

namespace zel {

std::atomic<uint8_t> g_sdkStarted{0};
std::atomic<uint16_t> g_packetLen{kDefaultPacketLen};
std::atomic<uint16_t> g_screenNum{kBroadcastScreenNum};
std::atomic<uint16_t> g_lastTcpPort{kDefaultTcpPort};
std::atomic<int32_t> g_deletePeerKind{kDeletePeerTcp};
std::atomic<int32_t> g_dualPixel{1};

} // namespace zel

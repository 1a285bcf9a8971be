// The library's process-wide values. They are unguarded in the controller protocol's design
// (a setting made on one thread is seen by the next read on any other); atomics with relaxed
// ordering keep exactly that behaviour without a data race.
#pragma once

#include <atomic>
#include <cstdint>

namespace zel {

// The screen number that every G5 and G6 header starts with. Every LedPacket constructor puts
// 0xFFFE back, so a value set by the host lives only until the next peer is built.
inline constexpr uint16_t kBroadcastScreenNum = 0xFFFE;
inline constexpr uint16_t kDefaultPacketLen = 1024;
inline constexpr uint16_t kDefaultTcpPort = 5005;
inline constexpr uint8_t kSdkStartedMark = 127;

// Peer kind of the area-delete commands: TCP normally, serial while a _Serial delete runs.
inline constexpr int32_t kDeletePeerTcp = 1;
inline constexpr int32_t kDeletePeerSerial = 2;

extern std::atomic<uint8_t> g_sdkStarted;
extern std::atomic<uint16_t> g_packetLen;
extern std::atomic<uint16_t> g_screenNum;
// Written by every TK_Client init and never read: kept because the controller's host tools
// have always recorded it.
extern std::atomic<uint16_t> g_lastTcpPort;
extern std::atomic<int32_t> g_deletePeerKind;
extern std::atomic<int32_t> g_dualPixel;

} // namespace zel

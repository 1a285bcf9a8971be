// The wire format of every packet: the outer frame with its escapes, the header forms, the
// choice of header by device type, the sequence counter, the checks and the answer pad, and
// the rules by which an answer is accepted. No I/O here.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace zel {

inline constexpr uint8_t kFrameStart = 0xA5;
inline constexpr uint8_t kFrameEnd = 0x5A;
inline constexpr std::size_t kFrameStartRun = 8; // the start byte goes out eight times

inline constexpr uint8_t kGroupAck = 0xA0;
inline constexpr uint8_t kGroupFiles = 0xA1;
inline constexpr uint8_t kGroupControl = 0xA2;
inline constexpr uint8_t kGroupNetwork = 0xA4;
inline constexpr uint8_t kGroupDynamic = 0xA7;

inline constexpr uint8_t kHeaderVersionProbe = 0;
inline constexpr uint8_t kHeaderVersionG5 = 5;
inline constexpr uint8_t kHeaderVersionG6 = 7;
inline constexpr uint8_t kHeaderVersionDynamic = 240;

inline constexpr std::size_t kHeaderLenG5 = 27;
inline constexpr std::size_t kHeaderLenG6 = 28;
inline constexpr std::size_t kHeaderLenDynamic = 16;
inline constexpr std::size_t kProbeLen = 19;
inline constexpr uint16_t kSourceAddress = 0x8000;
inline constexpr uint8_t kNoPadMarker = 0x96;
inline constexpr std::size_t kPadPeriod = 112; // the pad repeats every 112 bytes
inline constexpr std::size_t kWorkAreaLen = 65536;

// Results of unpack.
inline constexpr int32_t kResultOk = 0;
inline constexpr int32_t kResultTruncated = 1;
inline constexpr int32_t kResultFailed = -1;
inline constexpr int32_t kResultHeaderCheck = -2;
inline constexpr int32_t kResultBodyCrc = -3;
inline constexpr int32_t kResultUnknownVersion = -4;
inline constexpr int32_t kResultUnexpected = -5;

// The header a device type packs with: by its low byte only.
enum class HeaderForm { None, G5, G6 };
HeaderForm header_form_for(uint16_t deviceType);

// Escapes `inner` and wraps it in the start run and the end byte.
void frame_bytes(std::span<const uint8_t> inner, std::vector<uint8_t> &out);

// The inverse, for a frame whose first byte is 0xA5 and last 0x5A: drops the leading start
// bytes and the trailing end bytes and undoes the escapes. Lengths are signed 16-bit, as the
// controllers count them; `frame` must not be longer than 32767 bytes.
std::size_t unframe_bytes(std::span<const uint8_t> frame, uint8_t *out);

class LedPacket {
  public:
    LedPacket();
    virtual ~LedPacket();

    uint8_t m_startByte = kFrameStart;
    uint8_t m_endByte = kFrameEnd;
    // The controller type code that selects the header; 0xFFFE until the probe has run.
    uint16_t m_DeviceType = 0xFFFE;
};

class LedTKPacket : public LedPacket {
  public:
    // Packs a version 5 or version 7 request by the device type. For a device type that has no
    // header nothing is written and `out` stays as the caller left it.
    virtual void pack(uint8_t group, uint8_t code, const uint8_t *data, int16_t dataLen,
                      std::vector<uint8_t> &out);

    // Checks and opens an answer; copies its data to `out`, which has room for `capacity`
    // bytes. `capacity` comes back as the data length, the bytes copied or the unescaped
    // length, by the rule that applied. Result 0, 1, a controller's error code or negative.
    virtual int32_t unpack(const uint8_t *frame, uint16_t frameLen, uint8_t group, uint8_t code,
                           uint8_t *out, uint16_t &capacity);

    // Version 240, for dynamic-area data, into an ordinary frame.
    void pack240(uint8_t group, uint8_t code, const uint8_t *data, uint16_t dataLen,
                 std::vector<uint8_t> &out);
    // Version 240 with a 32-bit length: the frame is sized exactly on the heap.
    std::vector<uint8_t> pack_240_large(uint8_t group, uint8_t code, const uint8_t *data,
                                        uint32_t dataLen);

    // The device-type probe (version 0), whatever the device.
    void pack_probe(std::vector<uint8_t> &out);
    // Opens a probe answer into `out` (resized to the work area, zero-filled) and sets
    // `outLen` to the unescaped length: 0 for a version 5 or 7 header, -1 or -4 otherwise.
    // The caller then reads the device type at offset 6.
    int32_t unpack_probe(const uint8_t *frame, uint16_t frameLen, std::vector<uint8_t> &out,
                         uint16_t &outLen);

    uint8_t m_reservedA = 0;
    uint8_t m_echo = 0;      // byte 5 of the last answer header, sent back in every request
    uint16_t m_sequence = 2; // 2, 4 … 32766, 2 …
    uint8_t m_capMask = 0;
    uint8_t m_capAnswer = 0; // byte 9 of the last version 7 answer

  private:
    uint16_t next_sequence();
};

} // namespace zel

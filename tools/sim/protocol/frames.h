// The controller's side of the wire: cutting a byte stream into frames, reading a request, and
// building an answer. Written from the packet layout, separately from the host's packer, so
// that the simulator checks the library instead of agreeing with it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace zel::sim {

// Collects bytes as they come (TCP segments, serial reads) and hands out whole frames: a run
// of 0xA5, escaped bytes, one 0x5A. Bytes before a start run are dropped.
class FrameSplitter {
  public:
    // Frames are never longer than this; a longer run of bytes without an end is dropped.
    static constexpr std::size_t kMaxFrameLen = 16 * 1024 * 1024;

    void feed(const uint8_t *data, std::size_t len);
    std::optional<std::vector<uint8_t>> next();
    std::size_t pending() const { return m_buffer.size(); }

  private:
    std::vector<uint8_t> m_buffer;
    std::vector<std::vector<uint8_t>> m_ready;
};

// Undoes the escapes between the start run and the end byte.
std::vector<uint8_t> unescape(const std::vector<uint8_t> &frame);
// The opposite: start run of eight, escapes, end byte.
std::vector<uint8_t> escape(const std::vector<uint8_t> &inner);

// A request read from its unescaped packet.
struct ParsedRequest {
    uint8_t version = 0;
    uint16_t screen = 0;
    uint16_t deviceType = 0;
    uint16_t sequence = 0;
    uint8_t echo = 0;
    uint8_t group = 0;
    uint8_t code = 0;
    std::vector<uint8_t> data;
    bool valid = false; // long enough, and header check and CRC right where the form has them
};
ParsedRequest parse_request(const std::vector<uint8_t> &inner);

// Everything an answer carries, and the ways it can be broken on purpose.
struct AnswerLayout {
    uint8_t version = 5; // 5 or 7 decide the layout; headerVersion may overwrite the byte
    uint16_t deviceType = 0;
    uint8_t echo = 0;
    uint8_t capability = 0; // byte 9 of a version 7 header
    uint16_t sequence = 0;
    uint8_t group = 0;
    uint8_t code = 0;
    uint16_t errorCode = 0;
    std::vector<uint8_t> data;
    int padIndex = -1;      // 0 to 255: XOR the body with the pad from this index
    int headerVersion = -1; // 0 to 255: write this into the version byte
    bool badHeaderCheck = false;
    bool badCrc = false;
};
// The unescaped answer packet, and the framed one.
std::vector<uint8_t> answer_inner(const AnswerLayout &layout);
std::vector<uint8_t> answer_frame(const AnswerLayout &layout);

} // namespace zel::sim

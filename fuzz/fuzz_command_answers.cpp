// Drives the device-control and file-system command bodies against a controller whose answers
// come from the fuzzer: each answer is well framed (so that it passes the checks) and carries
// arbitrary data. The listing, the battle time, read start and the status outputs parse those
// data; nothing may read or write outside its buffers.
//
// Input: a sequence of answers, each a kind byte (0 data, 1 acknowledge, 2 refusal), a length
// byte and that many data bytes.
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "commands/control.h"
#include "commands/dir_blocks.h"
#include "commands/files.h"
#include "sdk/bytes.h"
#include "sdk/crc.h"
#include "wire/kor_command.h"
#include "wire/packet.h"

namespace {

class ScriptedController : public zel::KOR_command {
  public:
    ScriptedController(const uint8_t *data, size_t size) : m_in(data, size) {
        m_DeviceType = 0x0051;
    }

    int32_t send(const uint8_t *data, uint32_t len) override {
        if (len == 0) return -1;
        std::vector<uint8_t> inner(len);
        inner.resize(zel::unframe_bytes({data, len}, inner.data()));
        m_group = inner.size() > 28 ? inner[28] : 0;
        m_code = inner.size() > 29 ? inner[29] : 0;
        return 0;
    }

    int32_t recv(uint8_t *buf, uint32_t &len, uint32_t) override {
        const uint8_t kind = m_in.u8();
        const uint8_t n = m_in.u8();
        const auto payload = m_in.bytes(n);
        if (!m_in.ok()) return -1;
        zel::ByteWriter body;
        if (kind == 0) {
            body.u8(1).u8(m_group).u8(static_cast<uint8_t>(m_code + 128)).u16(0).u16(0);
        } else {
            body.u8(1).u8(zel::kGroupAck).u8(kind == 1 ? 0 : 1).u16(0).u16(n);
        }
        body.u16(static_cast<uint16_t>(kind == 0 ? n : 0));
        if (kind == 0) body.bytes(payload);
        const auto b = body.take();
        zel::ByteWriter head;
        head.u16(0xFFFE).u16(0x8000).u8(5).u8(0).u16(0x0051).u8(0).u8(0).u16(4).u8(0).u8(0x84);
        head.u8(zel::kNoPadMarker).u8(0).zeros(6).u16(static_cast<uint16_t>(b.size()));
        head.u16(zel::crc16(b.data(), b.size()));
        auto inner = head.take();
        inner.push_back(zel::xor_check(inner.data(), inner.size()));
        inner.insert(inner.end(), b.begin(), b.end());
        std::vector<uint8_t> frame;
        zel::frame_bytes(inner, frame);
        if (frame.size() > len) return -1;
        std::copy(frame.begin(), frame.end(), buf);
        len = static_cast<uint32_t>(frame.size());
        return 0;
    }

  private:
    zel::ByteReader m_in;
    uint8_t m_group = 0;
    uint8_t m_code = 0;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    using namespace zel::commands;
    ScriptedController controller(data, size);

    uint16_t count = 0;
    uint8_t *entries = nullptr;
    readDirectory(controller, 0xFF, count, entries);
    dir_block_free(entries);

    std::array<uint8_t, 20> record{};
    battieTime(controller, 0, record.data());

    std::array<uint8_t, 4> name = {'C', '0', '0', '0'};
    uint32_t first = 0, second = 0;
    startReadFile(controller, FileSpace::Conf, name.data(), &first, &second);
    readFileBlocks(controller, FileSpace::Ofs, name.data());

    uint8_t state = 0;
    uint32_t a = 0, b = 0, c = 0;
    getTransStatus(controller, state, a, b, c);
    getMemoryVolume(controller, a, b);

    std::array<uint8_t, 8> id{};
    readControllerID(controller, id.data());
    const std::array<uint8_t, 40> file{};
    writeFile(controller, FileSpace::Conf, name.data(), 1, file.size(), 1, file.data());
    return 0;
}

// Feeds arbitrary bytes to the answer parsers: unpack for each header form and capacity,
// and the probe answer parser. Nothing may read or write outside its buffers.
#include <cstddef>
#include <cstdint>
#include <vector>

#include "wire/packet.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (size > 65535) return 0;
    const uint16_t length = static_cast<uint16_t>(size);
    for (const uint16_t room : {uint16_t{0}, uint16_t{4}, uint16_t{1024}}) {
        zel::LedTKPacket packet;
        std::vector<uint8_t> out(room + 1u);
        uint16_t capacity = room;
        const uint8_t group = size > 0 ? data[0] : 0xA2;
        packet.unpack(data, length, group, 0x01, out.data(), capacity);
    }
    zel::LedTKPacket probe;
    std::vector<uint8_t> answer;
    uint16_t answerLen = 0;
    probe.unpack_probe(data, length, answer, answerLen);
    return 0;
}

#include "program/program_header.h"

#include <algorithm>
#include <cstdio>
#include <string>

#include "sdk/bytes.h"

namespace zel {

std::array<uint8_t, kProgramHeaderSize> header_bytes(const ProgramHeaderG5 &header,
                                                     const FileName &name) {
    ByteWriter w(kProgramHeaderSize);
    w.u8(header.fileType).bytes(name.data(), name.size());
    w.u8(header.programStyle).u8(header.playPeriodFlag).u8(header.playTimes).u16(header.timeSpan);
    w.u8(header.week);
    w.u16(header.lifeStart.year).u8(header.lifeStart.month).u8(header.lifeStart.day);
    w.u16(header.lifeEnd.year).u8(header.lifeEnd.month).u8(header.lifeEnd.day);
    std::array<uint8_t, kProgramHeaderSize> out{};
    std::copy_n(w.data().begin(), kProgramHeaderSize, out.begin());
    return out;
}

std::optional<FileName> program_file_name(uint32_t number) {
    const char *prefix = "";
    if (number < 10) {
        prefix = "P00";
    } else if (number < 100) {
        prefix = "P0";
    } else if (number < 1000) {
        prefix = "P";
    }
    char text[24];
    std::snprintf(text, sizeof text, "%s%d", prefix, static_cast<int32_t>(number));
    const std::string name(text);
    if (name.size() != 4) {
        return std::nullopt;
    }
    return FileName{name[0], name[1], name[2], name[3]};
}

} // namespace zel

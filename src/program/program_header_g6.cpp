#include "program/program_header_g6.h"

#include <algorithm>
#include <string>

#include "sdk/bytes.h"
#include "sdk/console.h"

namespace zel {

std::array<uint8_t, kProgramHeaderSizeG6> header_bytes_g6(const ProgramHeaderG6 &header,
                                                          const FileName &name) {
    ByteWriter w(kProgramHeaderSizeG6);
    w.u8(header.fileType).bytes(name.data(), name.size());
    w.u8(header.programStyle).u8(header.programPriority).u8(header.playTimes);
    w.u16(header.timeSpan).u8(header.specialFlag).u8(header.commExtendParaLen);
    w.u16(header.scheduNum).u16(header.loopValue).u8(header.intergrate);
    w.u8(header.timeAttributeNum).u16(header.timeAttribute0Offset).u8(header.week);
    w.u16(header.lifeStart.year).u8(header.lifeStart.month).u8(header.lifeStart.day);
    w.u16(header.lifeEnd.year).u8(header.lifeEnd.month).u8(header.lifeEnd.day);
    std::array<uint8_t, kProgramHeaderSizeG6> out{};
    std::copy_n(w.data().begin(), kProgramHeaderSizeG6, out.begin());
    return out;
}

FileName data_file_name(const FileName &programFile) {
    FileName name = programFile;
    name[0] = 'D';
    return name;
}

void trace_program_header_g6(const ProgramHeaderG6 &h, const FileName &name) {
    // The name runs on into the bytes behind it up to a zero byte, within the header.
    const auto bytes = header_bytes_g6(h, name);
    const auto first = bytes.begin() + 1;
    const std::string shownName(first, std::find(first, bytes.end(), uint8_t{0}));
    console_printf("============== zelDual_program_addProgram_G6 ===================\r\n");
    console_printf("CommExtendParaLen = %d, FileType = %d,  Intergrate = %d; \r\n"
                   " \t\tLoopValue = %d, ProgramLifeSpan_ed = %d, ProgramLifeSpan_em = %d; \r\n"
                   " \t\tProgramLifeSpan_ey = %d, ProgramLifeSpan_sd = %d, "
                   "ProgramLifeSpan_sm = %d; \r\n"
                   " \t\tProgramLifeSpan_sy = %d, ProgramName = %s, ProgramPlayTimes = %d; \r\n"
                   " \t\tProgramPriority = %d, ProgramStyle = %d, ProgramTimeSpan = %d; \r\n"
                   " \t\tProgramWeek = %d, ScheduNum = %d, SpecialFlag = %d; \r\n"
                   " \t\tTimeAttribute0Offset = %d; TimeAttributeNum = %d; \r\n",
                   h.commExtendParaLen, h.fileType, h.intergrate, h.loopValue, h.lifeEnd.day,
                   h.lifeEnd.month, h.lifeEnd.year, h.lifeStart.day, h.lifeStart.month,
                   h.lifeStart.year, shownName.c_str(), h.playTimes, h.programPriority,
                   h.programStyle, h.timeSpan, h.week, h.scheduNum, h.specialFlag,
                   h.timeAttribute0Offset, h.timeAttributeNum);
}

} // namespace zel

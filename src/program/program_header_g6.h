// The header that opens a G6 program file, and the name of the program's data file.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "program/program_header.h"

namespace zel {

inline constexpr std::size_t kProgramHeaderSizeG6 = 29;

// The G6 program header. As in G5 the library reads only the number, which names the file and
// is replaced by that name in the file; every other field is the firmware's and passes through.
struct ProgramHeaderG6 {
    uint8_t fileType = 0;
    uint32_t programNumber = 0;
    uint8_t programStyle = 0;
    uint8_t programPriority = 0;
    uint8_t playTimes = 0;
    uint16_t timeSpan = 0;
    uint8_t specialFlag = 0;
    uint8_t commExtendParaLen = 0;
    uint16_t scheduNum = 0;
    uint16_t loopValue = 0;
    uint8_t intergrate = 0; // traced and carried; the files do not depend on it
    uint8_t timeAttributeNum = 0;
    uint16_t timeAttribute0Offset = 0;
    uint8_t week = 0;
    LifeSpanDate lifeStart;
    LifeSpanDate lifeEnd;

    bool operator==(const ProgramHeaderG6 &) const = default;
};

// The 29 bytes that open a G6 program file: the header with the file name in the place of
// the number.
std::array<uint8_t, kProgramHeaderSizeG6> header_bytes_g6(const ProgramHeaderG6 &header,
                                                          const FileName &name);

// The data file's name: the program file's name with a D in front ("P012" gives "D012",
// "1234" gives "D234").
FileName data_file_name(const FileName &programFile);

// The trace of zelDual_program_addProgram_G6: the entry's banner and every field, in the
// order of their names. The name is printed as text from its first byte to the first zero
// byte of the header behind it, so bytes of the fields that follow it show too.
void trace_program_header_g6(const ProgramHeaderG6 &header, const FileName &name);

} // namespace zel

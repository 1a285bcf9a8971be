// Reads a G6 program the way a controller does: a program file and its data file, each closed
// by its CRC-32. The program file holds the structure and the page records; every record
// points into the data file with a one-based offset (14 is the first pixel byte, which stands
// at 13) and a length. The pixels decode as G5 ones (program_decoder.h).
//
// Written from the file layout alone, like the G5 reader, and sharing no code with the
// library's writer. As in G5 the play periods and the frame strips carry no length: the reader
// keeps the first reading under which the area blocks end exactly at the CRC and, inside each
// area, the page records end exactly at the area's end. Two things more tie a G6 file down:
// the page records are 30 bytes, each with the length word 26, and the data file holds exactly
// what the records point at, one after the other from offset 14 on.
//
// The block of a background with a frame holds 7 bytes more than its length word says (the
// length counts the 14-byte frame header as 7); the reader knows it. A clock's block ends
// behind its items (clock_body_g6.h), which may run past its length word.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "sim/panel/clock_body_g6.h"
#include "sim/panel/program_decoder.h"

namespace zel::sim {

struct DecodedFrameG6 {
    std::size_t offset = 0; // of the 14-byte header
    std::array<uint8_t, 14> header{};
    std::span<const uint8_t> strip; // encoded bytes
};

struct DecodedSoundG6 {
    std::array<uint8_t, 17> header{}; // byte 0 is 1
    std::string text;
};

struct DecodedPageG6 {
    std::size_t offset = 0; // of the record's length word
    std::array<uint8_t, 18> header{};
    uint32_t dataOffset = 0; // as stored: one above the position in the data file
    uint32_t dataLength = 0;
    std::span<const uint8_t> pixels; // in the data file
    uint8_t effect() const { return header[1]; }
    uint16_t pageWidth() const { return static_cast<uint16_t>(header[7] | (header[8] << 8)); }
};

struct DecodedAreaG6 {
    std::size_t offset = 0;    // of the block's length word
    uint32_t bodyLength = 0;   // as declared
    std::size_t bodyBytes = 0; // as held: 7 more for a background with a frame
    uint8_t type = 0;          // 0 pictures and text, 2 clock, 11 background
    uint16_t x = 0, y = 0, width = 0, height = 0;
    std::optional<DecodedFrameG6> frame;
    std::array<uint8_t, 3> extra{}; // BackGroundFlag, Transparency, AreaEqual
    std::optional<DecodedSoundG6> sound;
    std::vector<DecodedPageG6> pages;
    std::optional<DecodedClockG6> clock; // clock areas
};

struct DecodedProgramG6 {
    std::array<uint8_t, 29> header{};
    std::string name; // header bytes 1 to 4
    uint8_t playPeriodFlag = 0;
    std::vector<std::array<uint8_t, 6>> playPeriods;
    std::optional<DecodedFrameG6> frame;
    uint8_t hasBackground = 0;
    uint8_t areaCount = 0;
    std::vector<DecodedAreaG6> areas;
    uint32_t crc = 0;
    std::string dataName; // data file bytes 1 to 4
    uint32_t dataCrc = 0;
};

struct DecodeResultG6 {
    std::optional<DecodedProgramG6> program;
    std::optional<DecodeError> error;
    bool inDataFile = false; // where the error's offset points
    bool ok() const { return program.has_value(); }
};

// Checks and parses a program file and its data file, written for the screen `mode` (a clock
// body's sizes depend on it).
DecodeResultG6 decode_program_g6(std::span<const uint8_t> programFile,
                                 std::span<const uint8_t> dataFile, const ScreenMode &mode);

// A G6 area as the panel painters take it (program_decoder.h, clock_painter.h): its rectangle,
// its frame strip and its pages with their pixels, or its clock. The headers keep their first
// bytes (effect and page width stand where they stand in G5).
DecodedArea panel_area(const DecodedAreaG6 &area);

// The data file name that goes with a program file name: a D in front ("P005" and "D005",
// "1234" and "D234").
std::string data_file_name_for(const std::string &programName);

} // namespace zel::sim

// Reads the data of a dynamic-area command (version 240, group 0xA7) the way a controller
// does: the G5 add command, the G6 add command in both of its layouts (each area's pixels
// behind its block, or all blocks first and then all pixels), the delete command that both
// families share, and the two independent sound commands.
//
// Written from the command layouts alone, sharing no code with the library's builders. Two
// things have no length of their own: a G6 frame's encoded strip, which the reader sizes so
// that the rest of the block ends where its itemLen says, and the choice of the G6 layout,
// which the reader makes by trying the per-area layout first. Page records must point at
// their pixels in order, from offset 0 (of the area's pixels, or of all pixels in the split
// layout).
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "sim/panel/program_decoder.h"

namespace zel::sim {

enum class DynamicFamily { G5, G6 };

struct DynamicAreaG5Head {
    uint8_t headByte0 = 0; // the area's number
    uint8_t headByte1 = 0;
    uint16_t headWord = 0;
    uint8_t listFlag = 0;
    std::vector<uint16_t> listWords;
    uint8_t playByte = 0;
};

struct DynamicAreaG6Head {
    uint8_t runMode = 0;
    uint16_t timeout = 0;
    uint8_t allPrograms = 0;
    uint16_t programCount = 0;
    std::vector<uint16_t> programs;
    uint8_t immediate = 0;
    std::optional<std::string> soundText;
};

// One area of an add command, drawn as a program's area is drawn (panel_png.h): page headers
// hold the first 13 bytes (G6: bytes 0 to 8 of its 18, then zeros).
struct DecodedDynamicArea {
    uint8_t areaID = 0;
    DecodedArea area;
    DynamicAreaG5Head g5;
    DynamicAreaG6Head g6;
};

struct DecodedDynamic {
    enum class Kind { Add, Delete, SoundUpdate, SoundInsert } kind = Kind::Add;
    bool splitLayout = false; // G6 add: all blocks first
    std::vector<DecodedDynamicArea> areas;
    bool deleteAll = false;
    std::vector<uint8_t> deleted;
    std::vector<std::string> soundTexts;
};

struct DynamicDecodeResult {
    std::optional<DecodedDynamic> command;
    std::optional<DecodeError> error;
    bool ok() const { return command.has_value(); }
};

// Reads `data` (the command data, head included). The decoded spans point into `data`.
DynamicDecodeResult decode_dynamic(std::span<const uint8_t> data, DynamicFamily family);

} // namespace zel::sim

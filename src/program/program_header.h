// What a program says about itself: the header that opens its file, its file name and its
// play periods.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace zel {

inline constexpr std::size_t kProgramHeaderSize = 19;
inline constexpr std::size_t kPlayPeriodRecordSize = 6;

// A controller's file name: four ASCII characters, not terminated.
using FileName = std::array<char, 4>;

struct LifeSpanDate {
    uint16_t year = 0;
    uint8_t month = 0;
    uint8_t day = 0;

    bool operator==(const LifeSpanDate &) const = default;
};

// The G5 program header. The library reads the number, which names the file and is replaced
// by that name in the file, and keeps the play-period flag; the rest is for the controller's
// firmware and passes through.
struct ProgramHeaderG5 {
    uint8_t fileType = 0;
    uint32_t programNumber = 0;
    uint8_t programStyle = 0;
    uint8_t playPeriodFlag = 0;
    uint8_t playTimes = 0;
    uint16_t timeSpan = 0;
    uint8_t week = 0; // bit mask of days
    LifeSpanDate lifeStart;
    LifeSpanDate lifeEnd;

    bool operator==(const ProgramHeaderG5 &) const = default;
};

// The 19 bytes that open a G5 program file: the header with the file name in the place of the
// number.
std::array<uint8_t, kProgramHeaderSize> header_bytes(const ProgramHeaderG5 &header,
                                                     const FileName &name);

// The file name of a program number: "P00n", "P0nn", "Pnnn", or the number alone printed as a
// signed decimal, so 1000 to 9999 name themselves and 0xFFFFFC19 to 0xFFFFFF9C give "-999" to
// "-100". Nothing when that is not exactly four characters: the name is the file's name on the
// controller.
std::optional<FileName> program_file_name(uint32_t number);

// One play period: six bytes for the controller, carried unread.
struct PlayPeriod {
    std::array<uint8_t, kPlayPeriodRecordSize> bytes{};

    bool operator==(const PlayPeriod &) const = default;
};
using PlayPeriods = std::vector<PlayPeriod>;

} // namespace zel

// The page header and text style of a picture area, as the program files carry them, and how
// the packed parameter records of the exported G5 text and picture entries map onto them.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "sdk/bytes.h"

namespace zel {

// Arrangement of a text (TextStyleRecord::arrMode).
inline constexpr uint32_t SINGLELINE = 0;
inline constexpr uint32_t MULTILINE = 1;

// Display effects that change how pages are made. The controller knows many more; all others
// give one page per line (single line) or ordinary pages (multi-line).
inline constexpr uint8_t kEffectRoll = 4;         // single line: horizontal roll, left to right
inline constexpr uint8_t kEffectVerticalRoll = 6; // multi-line: one tall column
inline constexpr uint8_t kEffectRollReverse = 38; // the roll laid out for the other direction
inline constexpr uint8_t kEffectVerticalRoll2 = 40;

// The 13-byte header shared by all pages of a text; stored and written to the file as it is.
struct PageDisplayRecord {
    static constexpr std::size_t kSize = 13;

    uint8_t pageByte0 = 0;
    uint8_t displayEffect = 0;
    uint8_t pageByte2 = 0;
    uint8_t pageByte3 = 0;
    uint16_t pageWord4 = 0;
    uint8_t pageByte6 = 0;
    uint16_t pageWidth = 0; // rewritten by the file writer for each page
    uint32_t reserved = 0;

    // Reads the first 13 bytes; a shorter span reads as zero past its end.
    static PageDisplayRecord read(std::span<const uint8_t> bytes);
    void write(ByteWriter &out) const;
    std::array<uint8_t, kSize> bytes() const;

    bool operator==(const PageDisplayRecord &) const = default;
};

// The 18-byte page header of a G6 area: the G5 header's nine bytes, a reserved byte, one byte
// more for the controller and seven reserved bytes.
struct PageDisplayRecord_G6 {
    static constexpr std::size_t kSize = 18;

    uint8_t pageByte0 = 0;
    uint8_t displayEffect = 0;
    uint8_t pageByte2 = 0;
    uint8_t pageByte3 = 0;
    uint16_t pageWord4 = 0;
    uint8_t pageByte6 = 0;
    uint16_t pageWidth = 0; // rewritten by the file writer for each page
    uint8_t pageByte10 = 0; // for the controller

    void write(ByteWriter &out) const;
    std::array<uint8_t, kSize> bytes() const;
    // The G5 header that page generation reads: bytes 0 to 8 as here, bytes 9 to 12 zero.
    PageDisplayRecord display_record() const;

    bool operator==(const PageDisplayRecord_G6 &) const = default;
};

// The 20-byte style of a text.
struct TextStyleRecord {
    static constexpr std::size_t kSize = 20;

    uint32_t arrMode = 0;
    uint16_t fontSize = 0; // points
    uint32_t fontColor = 0;
    uint8_t fontBold = 0;
    uint8_t fontItalic = 0;
    uint32_t styleWord12 = 0; // carried, drawn with by nothing
    uint16_t styleWord16 = 0; // carried, drawn with by nothing
    uint8_t horizontalAlign = 0;
    uint8_t verticalAlign = 0;

    static TextStyleRecord read(std::span<const uint8_t> bytes);
    void write(ByteWriter &out) const;
    std::array<uint8_t, kSize> bytes() const;

    bool operator==(const TextStyleRecord &) const = default;
};

// The page header and the style of one text, as the text entries give them.
struct TextPageParams {
    PageDisplayRecord display;
    TextStyleRecord style;
};

// The same for the G6 text entries.
struct TextPageParamsG6 {
    PageDisplayRecord_G6 display;
    TextStyleRecord style;
};

} // namespace zel

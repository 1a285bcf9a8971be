// Reads a G5 program file the way a controller does: checks its CRC-32, walks its structure,
// and turns the encoded pages back into pixels for a given kind of screen.
//
// This reader is written from the file layout alone and shares no code with the library's
// writer, so that a file written by the library and read back here checks the writer.
//
// Three places of the layout carry no length of their own: the play periods (the count is not
// written), the program frame's strip and an area frame's strip. The reader tries every
// reading of them and keeps the first under which the rest of the file makes sense: area
// blocks that end exactly at the CRC, and page records that end exactly at their area's end.
//
// A clock area is read only with the screen it was written for, since neither its background
// nor its colour records carry a length. Its items may run past the length its block declares
// (full-colour colour records, fields of unknown formats): the block then ends at the first
// item boundary at or beyond the declared end from which the rest of the file makes sense.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace zel::sim {

// The kind of screen the pages were encoded for.
struct ScreenMode {
    uint32_t width = 0;
    uint32_t height = 0;
    int32_t colorMode = 1;      // 1, 2, 3 single colours; 4 full colour
    uint32_t tranPixelMode = 0; // 0, 3, 4, 5 (1 is two zero bytes per pixel)
    int32_t doubleColor = 1;    // plane order of a two-colour screen
};

struct DecodedFrame {
    std::size_t offset = 0; // of the 7-byte header
    std::array<uint8_t, 7> header{};
    std::span<const uint8_t> strip; // encoded bytes
    int32_t thickness = -1;         // learnt from the page size; -1 when unknown
};

struct DecodedPage {
    std::size_t offset = 0; // of the record's length word
    std::array<uint8_t, 13> header{};
    std::span<const uint8_t> pixels; // encoded bytes
    uint8_t effect() const { return header[1]; }
    uint16_t pageWidth() const { return static_cast<uint16_t>(header[7] | (header[8] << 8)); }
};

// One changing field of a clock: the controller copies the glyph of the field's value to
// (x, y), relative to the area, in the colour of the item.
struct DecodedClockItem {
    std::size_t offset = 0;
    uint16_t x = 0, y = 0;
    uint8_t type = 0; // 0 year, 1 month, 2 day, 3 hour, 4 minute, 5 second, 6 AM/PM, 7 week
                      // day, 8 the hands of an analog clock
    uint8_t align = 0;
    std::span<const uint8_t> color; // 2, 3 or 5 bytes, the last one the 12-hour flag
    std::span<const uint8_t> table; // a whole glyph table; the 14-byte hand record for type 8
};

struct DecodedClock {
    std::span<const uint8_t> background; // encoded like a page, the area's whole rectangle
    uint8_t unitCount = 0;               // as written; an unknown format counts more items
    std::vector<DecodedClockItem> items;
};

struct DecodedArea {
    std::size_t offset = 0;  // of the block's length word
    uint32_t bodyLength = 0; // as declared
    uint8_t type = 0;        // 0 picture or text, 2 clock
    uint16_t x = 0, y = 0, width = 0, height = 0;
    std::optional<DecodedFrame> frame;
    std::vector<DecodedPage> pages;    // picture areas only
    std::optional<DecodedClock> clock; // clock areas read with a screen
    std::size_t end = 0;               // where the block really ends
};

struct DecodedProgram {
    std::array<uint8_t, 19> header{};
    std::string name; // header bytes 1 to 4
    uint8_t playPeriodFlag = 0;
    std::vector<std::array<uint8_t, 6>> playPeriods;
    std::optional<DecodedFrame> frame;
    uint8_t areaCount = 0; // as written; may exceed the blocks after an area was replaced
    std::vector<DecodedArea> areas;
    uint32_t crc = 0;
};

struct DecodeError {
    std::size_t offset = 0;
    std::string what;
};

struct DecodeResult {
    std::optional<DecodedProgram> program;
    std::optional<DecodeError> error;
    bool ok() const { return program.has_value(); }
};

// Checks and parses a whole file image. Without a screen, clock bodies are taken as their
// blocks declare them and not read.
DecodeResult decode_program(std::span<const uint8_t> file);
DecodeResult decode_program(std::span<const uint8_t> file, const ScreenMode &mode);

// An image of 0x00RRGGBB pixels, row after row.
struct Rgb {
    uint32_t width = 0;
    uint32_t height = 0;
    std::vector<uint32_t> pixels;
    uint32_t at(uint32_t px, uint32_t py) const { return pixels[py * width + px]; }
};

// The number of bytes one page of `width` x `height` at screen column `left` takes.
std::size_t encoded_page_size(const ScreenMode &mode, uint32_t left, uint32_t width,
                              uint32_t height);

// Turns encoded pixels back into an image of `width` x `height`. Empty when the byte count is
// not the one the screen mode gives. A screen kind that carries no pixel bytes gives a dark
// image no larger than the screen.
std::optional<Rgb> decode_pixels(const ScreenMode &mode, std::span<const uint8_t> bytes,
                                 uint32_t left, uint32_t width, uint32_t height);

// What a panel of this kind shows for a 0xRRGGBB colour: itself in full colour; on a panel of
// single colours the LEDs that the encoder lights for it (a component of 97 or more).
uint32_t panel_colour(const ScreenMode &mode, uint32_t rgb);

// The 0xRRGGBB of a 16-bit pixel of full-colour mode 3 (blue in the top five bits, red in the
// low five), taken back through the gamma of the encoder.
uint32_t rgb_from_565(uint16_t word);

// The drawable rectangle of a picture area: the frame takes a margin of its thickness on
// every side. Learns the thickness of an area frame from the size of its pages.
struct DrawRect {
    int32_t left = 0, top = 0, width = 0, height = 0;
    int32_t thickness = 0;
};
std::optional<DrawRect> draw_rect(const ScreenMode &mode, const DecodedArea &area);

} // namespace zel::sim

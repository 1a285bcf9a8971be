// TKarea: the common base of every rectangle of a program (picture and text areas, clocks,
// backgrounds), and the small services that all rendering shares: character-set conversion,
// the alignment arithmetic, the rounding rule and the pixel packing unit.
//
// Text arrives as zero-terminated GBK. Inside it exists as GBK (as received), UCS-2LE (the
// working form of line breaking) and UTF-8 (the only form cairo draws).
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

typedef struct _cairo cairo_t;

namespace zel {

// What every conversion returns when iconv fails or cannot be opened: iconv's (size_t)-1.
inline constexpr uint64_t kConversionFailed = UINT64_MAX;

// Size of the add-area record kept in areaHeader: type u8, x, y, width, height u16 LE.
inline constexpr std::size_t kAreaHeaderSize = 9;

// Where an area lies on the screen, in pixels.
struct AreaRect {
    uint16_t x = 0;
    uint16_t y = 0;
    uint16_t width = 0;
    uint16_t height = 0;

    bool operator==(const AreaRect &) const = default;
};

// The three bytes that a G6 add-area record carries behind the rectangle. The library keeps
// them for the file and reads none of them.
struct AreaExtraG6 {
    uint8_t backGroundFlag = 0;
    uint8_t transparency = 0;
    uint8_t areaEqual = 0;

    bool operator==(const AreaExtraG6 &) const = default;
};

class TKarea {
  public:
    // Everything zero or empty, gamma tables filled; also starts the process-wide FreeType
    // library if it is not running yet (see render/font.h).
    TKarea();
    virtual ~TKarea();
    TKarea(const TKarea &) = delete;
    TKarea &operator=(const TKarea &) = delete;

    // Slot 1. Empty here; picture areas and clocks break their content into lines and pages.
    // The program objects call it after moving an area (set_rect).
    virtual void layoutText();

    // ---- Geometry ----
    uint16_t areaID = 0;
    uint8_t areaType = 0; // 0 picture and text area, 2 time area
    uint16_t x = 0;       // the rectangle as the caller gave it
    uint16_t y = 0;
    uint16_t width = 0;
    uint16_t height = 0;
    int32_t drawWidth = 0; // pixels that rendering really uses: the rectangle less the frame
    int32_t drawHeight = 0;

    // ---- Font request ----
    // At most one of the two is non-empty after the content operations; both are UTF-8.
    std::string fontName; // a family name, for the font system
    std::string fontPath; // a font file, opened with FreeType

    // The add-area record, kept verbatim because the program file repeats it. Rendering reads
    // x, width and height from here, not from the fields above.
    std::array<uint8_t, kAreaHeaderSize> areaHeader{};

    // Gamma tables, used only by the 16-bit (5-6-5) pixel mode. All three are identical.
    std::array<uint8_t, 256> gammaRed{};
    std::array<uint8_t, 256> gammaGreen{};
    std::array<uint8_t, 256> gammaBlue{};

    uint8_t header_type() const { return areaHeader[0]; }
    uint16_t header_x() const { return header_word(1); }
    uint16_t header_y() const { return header_word(3); }
    uint16_t header_width() const { return header_word(5); }
    uint16_t header_height() const { return header_word(7); }
    // Keeps the type and the rectangle both as the 9-byte add-area record that the program
    // files repeat and in areaType, x, y, width, height.
    void set_area_header(uint8_t type, const AreaRect &rect);
    // Writes a new rectangle into both x, y, width, height and areaHeader (the type stays).
    void set_rect(const AreaRect &rect);
    AreaRect rect() const { return {x, y, width, height}; }

    // ---- Character conversion ----
    // Each returns what iconv returned: the number of irreversible conversions, or
    // kConversionFailed. The in-place forms convert into a zeroed buffer of 3 × n bytes (the
    // only bound, for every direction) and keep what did convert, even after a failure: a
    // conversion that stops early leaves the converted part, one that never starts leaves "".
    static uint64_t convertGbkToUtf8(std::string &text);
    static uint64_t convertGbkToUcs2(std::string &text);
    static uint64_t convertUcs2ToUtf8(std::string &text);
    // The form behind UnicodeToUTF8_V2: first clears (int8_t)(low byte of *outLeft) bytes of
    // `out` (a negative count clears nothing), then runs one pass over the caller's buffers,
    // the two counters being iconv's.
    static uint64_t convertUcs2ToUtf8Buffer(const char *in, std::size_t *inLeft, char *out,
                                            std::size_t *outLeft);
    // The one iconv pass beneath all of them: open (target, source), one iconv call with the
    // caller's pointers and counters, close. A descriptor that cannot be opened touches nothing.
    static uint64_t convertCharset(const char *target, const char *source, char **in,
                                   std::size_t *inLeft, char **out, std::size_t *outLeft);

    // ---- Font and colour of a drawing context (render/font.cpp) ----
    // Selects the font (the family name wins over the file) and switches anti-aliasing off.
    // Both empty: the context keeps cairo's default font. The caller sets the size afterwards.
    void applyFont(cairo_t *cr, uint8_t bold, uint8_t italic) const;
    // Source colour: 0 to 7 are the eight codes (bit 0 red, bit 1 green, bit 2 blue), anything
    // greater is 0xRRGGBB (bits above 23 ignored).
    static void applyTextColor(cairo_t *cr, uint32_t color);

  private:
    uint16_t header_word(std::size_t offset) const {
        return static_cast<uint16_t>(areaHeader[offset] | (areaHeader[offset + 1] << 8));
    }
};

// Where content of `used` pixels starts within `total`: align 1 centres (integer division),
// 2 pushes to the end; 0, any other value, or no room to spare gives 0.
int32_t alignOffset(uint8_t align, int32_t total, int32_t used);

// (total - count × unit) in 32-bit arithmetic read as signed, halved in double precision,
// truncated towards zero and never negative: more content than room gives 0.
int32_t centreOffset(uint32_t total, int32_t count, int32_t unit);

// Width in pixels of one packing unit of the bit-plane encodings: 32 in mode 4, otherwise 8.
uint32_t pixelUnit(uint32_t tranPixelMode);

// floor(v + 0.5) for v > 0, otherwise ceil(v - 0.5) (so 0 gives -0.0).
double roundHalfAway(double v);

// A double truncated towards zero to 32 bits, as the x86-64 conversion does it: a value out of
// range, or NaN, gives INT32_MIN instead of undefined behaviour.
int32_t truncate_to_int32(double v);

} // namespace zel

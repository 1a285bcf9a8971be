// Line breaking and pagination of a picture area's text.
//
// There is no word wrap: a line breaks at the character that no longer fits, whatever it is,
// and blanks have no special role. Widths are measured between guard digits (see
// guarded_text_width in render/text_painter.h) and truncated to whole pixels; a prefix fits while
// that width is not greater than the room.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include <cairo.h>

namespace zel {

// The guarded width, truncated towards zero, of a prefix text[start, end) of one UCS-2LE text.
// Line breaking asks for the prefixes of one line in growing order, one character at a time,
// and starts again from the line's first character after each break.
class PrefixMeasurer {
  public:
    virtual ~PrefixMeasurer() = default;
    virtual int32_t prefix_width(std::size_t start, std::size_t end) = 0;
};

// Measures every prefix anew: converts it to UTF-8 and measures "1" + prefix + "1" on the
// context. One measurement costs the length of the prefix, so a line costs the square of its
// length. This is the reference the incremental measurer is checked against.
class LiteralPrefixMeasurer final : public PrefixMeasurer {
  public:
    LiteralPrefixMeasurer(cairo_t *cr, const std::string &ucs2) : m_cr(cr), m_text(ucs2) {}
    int32_t prefix_width(std::size_t start, std::size_t end) override;

  private:
    cairo_t *m_cr;
    const std::string &m_text;
};

// Gives the same numbers as LiteralPrefixMeasurer at a constant cost per character.
//
// cairo lays a string out glyph by glyph, each at the running sum of the advances before it,
// and its ink extents are the span from the leftmost glyph ink to the rightmost (glyphs without
// ink are skipped). A prefix one character longer only adds one glyph at the end and moves the
// trailing guard, so the running sum is carried along and only the glyphs that can hold the
// extreme left or right ink edge are kept; cairo then measures the two guards with those few
// glyphs at their exact positions, which reproduces its own arithmetic bit for bit. When the
// text does not map to one glyph per code unit it falls back to the literal measurer.
class IncrementalPrefixMeasurer final : public PrefixMeasurer {
  public:
    IncrementalPrefixMeasurer(cairo_t *cr, const std::string &ucs2);
    int32_t prefix_width(std::size_t start, std::size_t end) override;
    // True when the text could not be laid out glyph by glyph and every measurement goes
    // through the literal measurer.
    bool fallsBack() const { return m_fallback; }

  private:
    struct Glyph {
        unsigned long index = 0;
        double xBearing = 0.0;
        double inkWidth = 0.0; // close to cairo's own; used only to pick candidates
        double advance = 0.0;
        bool visible = false;
    };
    struct Placed {
        std::size_t glyph;
        double x;
        double left;
        double right;
    };
    void startLine(std::size_t start);
    void add_glyph(std::size_t glyph);

    cairo_t *m_cr;
    cairo_scaled_font_t *m_font = nullptr;
    LiteralPrefixMeasurer m_literal;
    bool m_fallback = false;
    std::vector<Glyph> m_glyphs; // one per code unit of the text
    Glyph m_guard;               // the digit "1"
    double m_guardPairWidth = 0.0;
    double m_originX = 0.0;
    double m_originY = 0.0;

    // The line being measured: text[m_lineStart, m_lineEnd), pen after its last glyph.
    std::size_t m_lineStart = SIZE_MAX;
    std::size_t m_lineEnd = 0;
    double m_pen = 0.0;
    std::vector<Placed> m_leftmost;  // visible glyphs within a hair of the leftmost ink
    std::vector<Placed> m_rightmost; // visible glyphs within a hair of the rightmost ink
    double m_leastLeft = 0.0;
    double m_mostRight = 0.0;
    std::vector<cairo_glyph_t> m_run;
};

// Breaks a UCS-2LE text into lines no wider than `width`. A line feed ends a line; so does a
// carriage return that is not the text's last code unit (a CR LF pair thus ends a line and then
// an empty one). A text that ends in a line feed has an empty last line. When a line's very
// first character is already too wide, the rest of the text stays on that line unbroken.
std::vector<std::string> break_lines(const std::string &ucs2, int32_t width,
                                     PrefixMeasurer &measurer);

// Deals lines onto pages of `pageHeight` pixels, `lineHeight` each. A line that does not fit
// starts a new page (a line taller than a page gets one to itself); no line is split.
// `currentLines` ends as the last page.
void paginate_lines(const std::vector<std::string> &lines, double lineHeight, int32_t pageHeight,
                    std::vector<std::string> &currentLines,
                    std::vector<std::vector<std::string>> &pages);

} // namespace zel

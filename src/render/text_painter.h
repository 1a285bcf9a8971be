// The text painters: one page of text onto a canvas of exactly drawWidth × drawHeight pixels.
//
// Page generation (render/page_generation) decides what goes on a page and calls one painter per
// page; the painters measure, place and draw with cairo and know nothing of pages, programs or
// controllers. A bitmap painter appends one 32-bit canvas to the caller's list, a preview painter
// appends a PNG to the caller's byte string. Each takes its text by value and owns its copy.
//
// Canvas: CAIRO_FORMAT_ARGB32, stride drawWidth × 4, rows from the top, bytes blue, green, red,
// alpha per pixel (little-endian). It starts all zero and text has no anti-aliasing, so every
// pixel is either 0 or the text colour with alpha 255.
//
// Lines are UCS-2LE byte strings as line breaking leaves them; paintRollSlice and measureGbkText
// take GBK. Every painter sets up its context the same way: applyFont(bold, italic) of the area,
// applyTextColor(fontColor), cairo_set_font_size(fontPixelSize).
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <cairo.h>

#include "render/area.h"

namespace zel {

// What a painter reads besides the area's font request: the drawable size and the text style.
struct TextPaintStyle {
    int32_t drawWidth = 0;  // W
    int32_t drawHeight = 0; // H
    double fontPixelSize = 0.0;
    uint32_t fontColor = 0;
    uint8_t fontBold = 0;
    uint8_t fontItalic = 0;
    uint8_t horizontalAlign = 0; // 0 to 3; painters differ in what 0 means, see below
    uint8_t verticalAlign = 0;
};

// One painted page: drawWidth × drawHeight × 4 bytes (empty when either is not positive).
using PageBitmap = std::vector<uint8_t>;
using PageBitmaps = std::vector<PageBitmap>;

// ---- Measuring ----

// A scratch surface of width × height with a context whose font is set up like the area's
// text (applyFont, then the pixel size; no colour). Line breaking measures on it; pass
// antialiasAgain to set the no-anti-aliasing option once more after the size, as breaking does.
class TextScratch {
  public:
    TextScratch(const TKarea &area, int32_t width, int32_t height, double fontPixelSize,
                uint8_t bold, uint8_t italic, bool antialiasAgain = false);
    ~TextScratch();
    TextScratch(const TextScratch &) = delete;
    TextScratch &operator=(const TextScratch &) = delete;
    cairo_t *context() const { return m_cr; }

  private:
    cairo_surface_t *m_surface;
    cairo_t *m_cr;
};

// Ink widths ignore blanks at the ends of a string, so a text is measured between two guard
// digits: te.width of "1" + text + "1" less te.width of "11". `utf8` is the text in UTF-8;
// when `guarded` is given it receives the extents of the guarded string.
double guarded_text_width(cairo_t *cr, const std::string &utf8,
                          cairo_text_extents_t *guarded = nullptr);

// fe.ascent + fe.descent of the context's font: the height of one text row. No row spacing is
// ever added.
double lineHeight(cairo_t *cr);

// Guarded width of a GBK text on a scratch context of the style's size, as a double.
double measureGbkText(const TKarea &area, const TextPaintStyle &style, std::string gbk);
// Guarded width of a UCS-2LE text, truncated towards zero.
int32_t measureUcs2Text(const TKarea &area, const TextPaintStyle &style, std::string ucs2);

// ---- Bitmap painters: each appends to pageBitmaps ----

// One page of several lines. horizontalAlign: 1 left, 0 and 2 centre, 3 right (both only when
// the line fits), any other value centres even when that starts left of 0. verticalAlign: 1 top,
// 3 bottom, anything else centre. Each line is placed by its own ink extents. Also writes the
// page to "0.png" in the working directory (each page overwrites the one before).
void paintLinesPage(const TKarea &area, const TextPaintStyle &style, std::vector<std::string> lines,
                    PageBitmaps &pageBitmaps);

// One line on one page. horizontalAlign: 2 centre, 3 right (when it fits), anything else left.
// verticalAlign: 0 and 2 centre, 1 top, 3 bottom (descent on the bottom edge), any other value
// (H - y_bearing) / 2.
void paintOneLine(const TKarea &area, const TextPaintStyle &style, std::string line,
                  PageBitmaps &pageBitmaps);

// One view onto a long line (horizontal roll): the whole GBK text is drawn starting `offset`
// pixels left of the canvas, centred vertically; the canvas clips it. Alignment is ignored.
void paintRollSlice(const TKarea &area, const TextPaintStyle &style, std::string gbkText,
                    double offset, PageBitmaps &pageBitmaps);

// One view onto a tall column of lines (vertical roll): the first baseline is startY + ascent,
// each further line one row lower, all at x 0. Alignment is ignored.
void paintLinesAtOffset(const TKarea &area, const TextPaintStyle &style,
                        std::vector<std::string> lines, double startY, PageBitmaps &pageBitmaps);

// Cuts a vertical roll of all lines into slices of drawHeight: (n × lineH / H) full slices at
// offsets 0, -H, -2H …, and one more when (n × lineH) mod H is not 0. `unused` is always 1.
void paintVerticalRoll(const TKarea &area, const TextPaintStyle &style,
                       std::vector<std::string> lines, int32_t unused, PageBitmaps &pageBitmaps);

// ---- Preview painters: each appends one PNG to pngBytes ----

// As paintLinesPage, but measured with measureUcs2Text, placed with the extents of the plain
// line, the centred and right-aligned x computed in integers, and no "0.png".
void previewLinesPage(const TKarea &area, const TextPaintStyle &style,
                      std::vector<std::string> lines, std::string &pngBytes);
// As paintOneLine.
void previewOneLine(const TKarea &area, const TextPaintStyle &style, std::string line,
                    std::string &pngBytes);

// cairo write callback that appends to the std::string behind `closure`; always success.
cairo_status_t pngAppend(void *closure, const unsigned char *data, unsigned int length);

} // namespace zel

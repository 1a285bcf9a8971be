// Fonts of the drawing contexts.
//
// The library draws no glyph itself: cairo places and paints them, FreeType only opens font
// files. A font is named either by family (the font system resolves it) or by file; a face
// opened from a file stays open for the life of the process, because every page of every text
// selects its font again. All text is drawn without anti-aliasing: an LED is on or off, so a
// glyph pixel is the full text colour or nothing.
//
// TKarea::applyFont and TKarea::applyTextColor (render/area.h) are the entry points; the
// functions here are what they are built from and what other renderers share.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

typedef struct _cairo cairo_t;

namespace zel {

// The pixel size given to cairo for a size in points: roundHalfAway(points × 4.0 / 3.0).
// 12 points give 16.0, 16 points 21.0, 0 gives 0.0.
double font_pixel_size_for(uint16_t fontSize);

// Starts the process-wide FreeType library if it is not running. Every TKarea constructor calls
// it; its result is not examined (a failed start shows later as "Error NULL == FTLib\n").
void ensure_free_type_library();

// Gives the context a face opened from the file at `path` (UTF-8), face index 0, with bold and
// oblique synthesised when asked, and switches anti-aliasing off. The file is opened once per
// process and kept; a file that does not open prints "Error %d opening font.\n" with the
// FreeType error, is not remembered (the next attempt tries and prints again), and leaves the
// context's font and options as they were (applyFont switches anti-aliasing off in any case).
void openFontFile(cairo_t *cr, const std::string &path, uint8_t bold, uint8_t italic);

// Reads the context's font options, sets CAIRO_ANTIALIAS_NONE and writes them back.
void set_no_antialias(cairo_t *cr);

// The test the dynamic-area entries make on their font argument: true when the argument,
// lower-cased (ASCII only), contains ".ttf" or ".ttc" anywhere. A file goes to addTextByPath,
// anything else to addText.
bool font_argument_is_file(std::string_view argument);

} // namespace zel

// BackGround: the area of a G6 program (area type 11) that lies behind the others and shows a
// picture, a series of pictures, or one colour.
//
// It is a PicturesArea_g6 in everything but its pages: its own generator knows pictures and
// colour only, so a text added to it is kept and never rendered, and every page is a full
// drawable rectangle. Its body in the program file is that of a picture area.
#pragma once

#include <cstdint>

#include "render/pictures_area_g6.h"

namespace zel {

// The colour value that means "no colour: the pictures count". A host that sets this value as
// a colour switches back to its pictures.
inline constexpr uint32_t kNoBackgroundColor = 0xEEFFEEFF;

class BackGround : public PicturesArea_g6 {
  public:
    BackGround() = default;
    ~BackGround() override = default;

    // Makes the background one colour (0 to 7 a colour code, above that 0xRRGGBB) from the next
    // integration on, whatever pictures it holds. The record is not kept: a colour page carries
    // the area's own G6 header.
    void setBackgroundColor(uint32_t color, const PageDisplayRecord_G6 &record);
    // Appends one page painted all over in `color`.
    void fillBackground(uint32_t color);
    // Paints and encodes the pages for the current screen settings: one of the colour, or one
    // per picture that can be opened ("Error:The picture does not exist.ID:0\n" for each that
    // cannot, whichever it is).
    void renderBackground();

    uint32_t backgroundColor = kNoBackgroundColor;
};

} // namespace zel

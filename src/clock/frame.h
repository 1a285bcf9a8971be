// Area frames: decorative borders around a picture area.
//
// The library never paints a frame into a page. It loads the PNG as a strip, encodes it once,
// when the frame is added, with the screen settings of that moment, and ships the encoded strip
// with a small settings record in the program file; drawing the strip around the rectangle is
// the controller's business. The only effect on rendering is the margin: an area with a frame
// gives up the strip's height on all four sides, and its text is broken again for the room
// that is left. The program frame, the program's own border, belongs to the program object.
#pragma once

#include <array>
#include <cstdint>

#include "render/pictures_area.h"
#include "render/pictures_area_frame.h"
#include "render/pictures_area_g6.h"

namespace zel {

// Attaches a G5 frame: byte 0 of the area's record becomes 1, bytes 1 to 6 are the caller's.
// An area that has a frame keeps it and the call changes nothing. A PNG that cannot be read
// prints "Error:Can't find frame png.\n" and leaves the area without a frame (with the new
// record). Otherwise the strip is encoded and the text is broken again for the smaller room.
void add_area_frame(PicturesArea &area, const FrameHeaderG5 &header, const char *pngPath);

// The G6 form: the header made of `params` goes to frameRecord_G6 (its bytes 7 to 13 held at
// 0); the G5 record is not touched. An unreadable PNG prints
// "Error:PicturesArea_g6 Can't create_from_png. file:<path> \n".
void add_area_frame_g6(PicturesArea_g6 &area, const FrameParamsG6 &params, const char *pngPath);

// Detaches the frame and gives the area its full size back. The encoded strip stays until the
// next frame or the area's end. Nothing happens without a frame.
void remove_area_frame(PicturesArea &area);

} // namespace zel

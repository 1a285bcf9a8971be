// Frames: decorative borders around a picture area or around the whole program.
//
// The library never paints a frame into a page. It loads the PNG as a strip, encodes it once,
// when the frame is added, with the screen settings of that moment, and ships the encoded strip
// with a small settings record in the program file; drawing the strip around the rectangle is
// the controller's business. The only effect on rendering is the margin: an area with a frame
// gives up the strip's height on all four sides, and its text is broken again for the room
// that is left.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "render/area.h"
#include "render/pictures_area.h"
#include "render/pictures_area_frame.h"

namespace zel {

class ProgramObj;

inline constexpr std::size_t kFrameRecordSize = 7;    // G5 frame header
inline constexpr std::size_t kFrameRecordSizeG6 = 14; // G6 frame header
inline constexpr std::size_t kFrameParamsSizeG6 = 6;  // what a G6 host passes
inline constexpr uint8_t kFrameMark = 1;              // byte 0 of every area frame header

// Encodes a loaded strip with the current screen settings (x 0, the strip's own size), using
// the gamma tables of `area`.
std::vector<uint8_t> encode_frame_strip(const PicturesAreaFrame &strip, const TKarea &area);

// ---- Area frames ----

// Attaches a G5 frame: byte 0 of the area's record becomes 1, bytes 1 to 6 are the caller's.
// An area that has a frame keeps it and the call changes nothing. A PNG that cannot be read
// prints "Error:Can't find frame png.\n" and leaves the area without a frame (with the new
// record). Otherwise the strip is encoded and the text is broken again for the smaller room.
void add_area_frame(PicturesArea &area, const uint8_t *record, const char *pngPath);

// The G6 form: `record` is 7 bytes (1 and the caller's six), stored in bytes 0 to 6 of
// `frameRecordG6` with bytes 7 to 13 held at 0; the G5 record is not touched. An unreadable
// PNG prints "Error:PicturesArea_g6 Can't create_from_png. file:<path> \n".
void add_area_frame_g6(PicturesArea &area, std::array<uint8_t, kFrameRecordSizeG6> &frameRecordG6,
                       const uint8_t *record, const char *pngPath);

// Detaches the frame and gives the area its full size back. The encoded strip stays until the
// next frame or the area's end. Nothing happens without a frame.
void remove_area_frame(PicturesArea &area);

// ---- Program frames ----

// G5: replaces any frame; never fails. An unreadable PNG prints "Error:Can't find frame
// png.\n" and leaves no frame, the new header standing.
void add_program_frame(ProgramObj &program, const uint8_t *header, const char *pngPath);

// Both generations: drops the strip's PNG and the mark; the encoded strip stays.
void remove_program_frame(ProgramObj &program);

// G6: refuses (-1, silently) while a frame is present; -1 with "Error:Can't find frame png.\n"
// for an unreadable PNG. `header` is the 14-byte G6 frame header.
int32_t add_program_frame_g6(ProgramObj &program,
                             std::array<uint8_t, kFrameRecordSizeG6> &frameHeaderG6,
                             const uint8_t *header, const char *pngPath);

// G6: replaces the frame of a program that has one. The new header stands even when the PNG
// cannot be read, beside the old strip.
int32_t change_program_frame_g6(ProgramObj &program,
                                std::array<uint8_t, kFrameRecordSizeG6> &frameHeaderG6,
                                const uint8_t *header, const char *pngPath);

// The 14-byte G6 header made from a host's six parameter bytes: 1, the six, then zeros.
std::array<uint8_t, kFrameRecordSizeG6> frame_header_g6(const uint8_t *params);

} // namespace zel

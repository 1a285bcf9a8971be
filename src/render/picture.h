// PNG pictures of picture areas and backgrounds: one file becomes one page of exactly the
// drawable size, stretched to fill it in both directions, proportions ignored.
//
// How the stretch is done depends on the picture's size, and the difference shows in the page:
// - larger than the page in either direction: the picture is first reduced inside its own
//   surface and then copied, so a picture larger in one direction only keeps just its first
//   rows (or columns) of the stretched result, and the rest of the page stays dark;
// - otherwise smaller: enlarged by cairo's scaling while painting;
// - equal: copied as it stands, alpha included.
// A file that is not a PNG gives a blank (all-zero, dark) page and no message; callers check
// beforehand that the file can be opened.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace zel {

// Paints the picture at `path` on a new drawWidth × drawHeight ARGB32 bitmap (4 bytes per
// pixel, rows of drawWidth × 4 bytes) and returns it. A page with no pixels (a width or height
// of 0 or less) gives an empty bitmap.
std::vector<uint8_t> paintPicture(const std::string &path, int32_t drawWidth, int32_t drawHeight);

// Paints the picture the same way and appends the page, re-encoded as a PNG of exactly
// drawWidth × drawHeight pixels, to `pngBytes`. Appends nothing if cairo cannot write the PNG.
void previewPicture(const std::string &path, int32_t drawWidth, int32_t drawHeight,
                    std::string &pngBytes);

} // namespace zel

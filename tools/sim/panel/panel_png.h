// What a panel would show of a G5 program file: one PNG per area and page, each a canvas of
// the screen's size with the page at its area's place, one PNG of every area's first page
// together, and a JSON summary of the file.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <sstream>
#include <string>
#include <vector>

#include "sim/panel/clock_painter.h"
#include "sim/panel/program_decoder.h"

namespace zel::sim {

struct PanelReport {
    bool decoded = false;
    std::vector<std::string> pngs; // paths written, in order
    std::string jsonPath;
    std::string json;
};

// Paints one area page (with its frame strip, tiled along the four edges of the area) onto a
// canvas. Pixels outside the canvas are dropped.
void paint_area_page(Rgb &canvas, const ScreenMode &mode, const DecodedArea &area,
                     std::size_t page);

// Decodes `file` (named `name` on the controller) for the screen `mode` and writes into
// `folder`:
//   <name>-area<a>-page<p>.png  every page of every picture area, and every clock area as it
//                               shows at `time` (page 0),
//   <name>-panel.png            the first page of every area together, clocks at `time`,
//   <name>.json                 the summary; for a file that cannot be read, the error and the
//                               offset where the file stopped making sense.
// The folder must exist. Files that cannot be written are left out of the report.
PanelReport write_panel(const std::string &folder, const std::string &name,
                        std::span<const uint8_t> file, const ScreenMode &mode,
                        const ClockTime &time);

// The summary alone; `pngs` are the page and clock pictures in the order the summary lists
// them.
std::string panel_json(const std::string &name, std::span<const uint8_t> file,
                       const ScreenMode &mode, const DecodeResult &decoded,
                       const std::vector<std::string> &pngs, const ClockTime &time = {});

// The summary of a clock area (appended to a JSON object that is open): the bytes its block
// holds past its length word, its background, its items, and the picture of it at `time`.
void clock_json(std::ostringstream &j, const DecodedArea &area, const std::string &png,
                const ClockTime &time);

// What the screen shows of the file: the first page of every area together, clocks at `time`
// (the picture <name>-panel.png holds). None when the file cannot be read.
std::optional<Rgb> panel_image(std::span<const uint8_t> file, const ScreenMode &mode,
                               const ClockTime &time);

// An image as the bytes of an 8-bit RGB PNG; empty when it cannot be encoded.
std::vector<uint8_t> png_bytes(const Rgb &image);

// Writes an image as an 8-bit RGB PNG. False if the file could not be written.
bool write_png(const std::string &path, const Rgb &image);

} // namespace zel::sim

// What a panel would show of a G6 program: its program file and data file read together, and
// drawn as G5 programs are (panel_png.h), with the backgrounds behind the other areas.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "sim/panel/panel_png.h"
#include "sim/panel/program_decoder_g6.h"

namespace zel::sim {

// Decodes the pair and writes into `folder`, `name` being the program file's name:
//   <name>-area<a>-page<p>.png  every page of every text, picture and background area, and the
//                               clock of every clock area at `time` (page 0), on the first page
//                               of each background,
//   <name>-panel.png            the first page of every background, then of every other area,
//   <name>.json                 the summary; for files that cannot be read, the error, the file
//                               it is in and the offset where that file stopped making sense.
// Clocks show `time`. The folder must exist. Files that cannot be written are left out of the
// report.
PanelReport write_panel_g6(const std::string &folder, const std::string &name,
                           std::span<const uint8_t> programFile, std::span<const uint8_t> dataFile,
                           const ScreenMode &mode, const ClockTime &time);

// What the screen shows of the pair (the picture <name>-panel.png holds). None when the files
// cannot be read.
std::optional<Rgb> panel_image_g6(std::span<const uint8_t> programFile,
                                  std::span<const uint8_t> dataFile, const ScreenMode &mode,
                                  const ClockTime &time);

// The summary alone.
std::string panel_json_g6(const std::string &name, std::span<const uint8_t> programFile,
                          std::span<const uint8_t> dataFile, const ScreenMode &mode,
                          const DecodeResultG6 &decoded, const std::vector<std::string> &pngs,
                          const ClockTime &time);

} // namespace zel::sim

// Clock areas belong to the clock layer, which sits above the program layer. A program object
// makes them and writes their bodies through these two functions; the clock layer defines
// them (clock/program_areas.cpp).
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "render/area.h"

namespace zel {

// A new, empty clock area of a G5 program; null while the clock layer has none to offer.
std::unique_ptr<TKarea> make_time_area_g5();

// Renders a clock area with the screen settings of now and returns its body in the G5 program
// file (what follows the block's length word).
std::vector<uint8_t> time_area_body_g5(TKarea &area);

} // namespace zel

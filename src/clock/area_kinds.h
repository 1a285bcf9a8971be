// The kinds of area that the clock layer adds to the programs' tables.
#pragma once

#include "program/area_kinds.h"

namespace zel {

// Adds the clock layer's kinds to a G5 program's table: the time area (type 2), which renders
// its background and tables at integration and writes the G5 time body.
void add_clock_area_kinds(AreaKindTable &table);

// Adds the clock layer's kinds to a G6 program's table: the G6 time area (type 2) and the
// background (type 11).
void add_clock_area_kinds_g6(AreaKindTable &table);

} // namespace zel

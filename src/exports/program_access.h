// The current program as the exported program entries reach it, and the area kinds of the
// programs they make: the one place where the layers' kinds come together.
#pragma once

#include "program/area_kinds.h"
#include "program/program_obj.h"
#include "program/program_obj_g6.h"
#include "sdk/program_access.h"

namespace zel::exports {

// The kinds of a G5 program: picture areas, and what the clock layer adds.
const AreaKindTable &area_kinds_g5();
// The kinds of a G6 program: G6 picture areas, and what the clock layer adds (backgrounds).
const AreaKindTable &area_kinds_g6();

// The two accessors of the program slot: the current program, made as a G5 (G6) program when
// none exists. Either hands back whatever program exists, of either generation.
ProgramObject *program_access_g5();
ProgramObject *program_access_g6();

// The current program through the G5 accessor, of either generation: the G5 entries act on
// what every program has. Null only when no program could be made.
ProgramObj *current_program_g5();
// The same through the G6 accessor, for the G6 entries that act on what every program has
// (areas, their content, play periods, removing the frame).
ProgramObj *any_program_g6();
// The current program through the G6 accessor when it is a G6 program; null otherwise. The
// entries that need the G6 header, the G6 frame header or the two files use it.
ProgramObj_g6 *current_program_g6();

} // namespace zel::exports

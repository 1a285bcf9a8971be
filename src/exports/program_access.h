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
// The kinds of a G6 program.
const AreaKindTable &area_kinds_g6();

// The two accessors of the program slot: the current program, made as a G5 (G6) program when
// none exists. Either hands back whatever program exists, of either generation.
ProgramObject *program_access_g5();
ProgramObject *program_access_g6();

// The current program through the G5 accessor when it is a G5 program; null otherwise (no
// program could be made, or the current one is a G6 program, which a G5 entry refuses).
ProgramObj *current_program_g5();
// The current program through the G6 accessor when it is a G6 program; null otherwise.
ProgramObj_g6 *current_program_g6();

} // namespace zel::exports

// The G5 program under construction.
#pragma once

#include "sdk/program_access.h"

namespace zel {

class ProgramObj : public ProgramObject {
  public:
    ~ProgramObj() override = default;
};

// The G5 accessor: the current program, made as a ProgramObj when none exists. The object may
// be a ProgramObj_g6 if the G6 accessor made it; callers cast and treat a mismatch as failure.
ProgramObject *program_access_g5();

} // namespace zel

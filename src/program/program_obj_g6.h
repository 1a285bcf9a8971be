// The G6 program under construction.
#pragma once

#include "sdk/program_access.h"

namespace zel {

class ProgramObj_g6 : public ProgramObject {
  public:
    ~ProgramObj_g6() override = default;
};

// The G6 accessor: the current program, made as a ProgramObj_g6 when none exists.
ProgramObject *program_access_g6();

} // namespace zel

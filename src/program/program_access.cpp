#include "program/program_obj.h"
#include "program/program_obj_g6.h"

namespace zel {

ProgramObject *program_access_g5() {
    return access_program([]() -> std::unique_ptr<ProgramObject> {
        return std::make_unique<ProgramObj>();
    });
}

ProgramObject *program_access_g6() {
    return access_program([]() -> std::unique_ptr<ProgramObject> {
        return std::make_unique<ProgramObj_g6>();
    });
}

} // namespace zel

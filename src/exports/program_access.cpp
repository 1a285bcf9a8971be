#include "exports/program_access.h"

#include "clock/area_kinds.h"

namespace zel::exports {

const AreaKindTable &area_kinds_g5() {
    static const AreaKindTable table = [] {
        AreaKindTable t;
        add_program_area_kinds(t);
        add_clock_area_kinds(t);
        return t;
    }();
    return table;
}

const AreaKindTable &area_kinds_g6() {
    static const AreaKindTable table = [] {
        AreaKindTable t;
        add_program_area_kinds_g6(t);
        add_clock_area_kinds_g6(t);
        return t;
    }();
    return table;
}

ProgramObject *program_access_g5() {
    return access_program([]() -> std::unique_ptr<ProgramObject> {
        return std::make_unique<ProgramObj>(area_kinds_g5());
    });
}

ProgramObject *program_access_g6() {
    return access_program([]() -> std::unique_ptr<ProgramObject> {
        return std::make_unique<ProgramObj_g6>(area_kinds_g6());
    });
}

ProgramObj *current_program_g5() {
    return dynamic_cast<ProgramObj *>(program_access_g5());
}

ProgramObj *any_program_g6() {
    return dynamic_cast<ProgramObj *>(program_access_g6());
}

ProgramObj_g6 *current_program_g6() {
    return dynamic_cast<ProgramObj_g6 *>(program_access_g6());
}

} // namespace zel::exports

#include "clock/area_kinds.h"

#include "clock/time_area.h"
#include "clock/time_body_g5.h"

namespace zel {
namespace {

std::unique_ptr<TKarea> make_time_area() {
    return std::make_unique<TimeArea>();
}

AreaBodyG5 time_area_body(TKarea &area) {
    return time_area_body_g5(dynamic_cast<TimeArea &>(area));
}

} // namespace

void add_clock_area_kinds(AreaKindTable &table) {
    table.add({kAreaTypeTime, &make_time_area, &time_area_body});
}

} // namespace zel

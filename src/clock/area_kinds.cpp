#include "clock/area_kinds.h"

namespace zel {

void add_clock_area_kinds(AreaKindTable & /*table*/) {}

} // namespace zel

// The clock layer's side of the program objects: making a clock area and writing its body.
// Clock areas are not built yet: a G5 program refuses area type 2 until they are.
#include "program/time_area_support.h"

namespace zel {

std::unique_ptr<TKarea> make_time_area_g5() {
    return nullptr;
}

std::vector<uint8_t> time_area_body_g5(TKarea & /*area*/) {
    return {};
}

} // namespace zel

#include "clock/area_kinds.h"

#include "clock/background.h"
#include "clock/time_area.h"
#include "clock/time_area_g6.h"
#include "clock/time_body_g5.h"
#include "clock/time_body_g6.h"
#include "program/program_file_g6.h"

namespace zel {
namespace {

std::unique_ptr<TKarea> make_time_area() {
    return std::make_unique<TimeArea>();
}

AreaBodyG5 time_area_body(TKarea &area) {
    return time_area_body_g5(dynamic_cast<TimeArea &>(area));
}

std::unique_ptr<TKarea> make_time_area_g6() {
    return std::make_unique<TimeArea_G6>();
}

void keep_time_area_extra(TKarea &area, const AreaExtraG6 &extra) {
    dynamic_cast<TimeArea_G6 &>(area).keep_area_extra(extra);
}

AreaBodyG6 time_area_body_g6(TKarea &area, DataFileWriter &data) {
    return time_area_body_g6(dynamic_cast<TimeArea_G6 &>(area), data);
}

std::unique_ptr<TKarea> make_background() {
    return std::make_unique<BackGround>();
}

void keep_background_extra(TKarea &area, const AreaExtraG6 &extra) {
    dynamic_cast<BackGround &>(area).areaExtra_G6 = extra;
}

AreaBodyG6 background_body_g6(TKarea &area, DataFileWriter &data) {
    auto &background = dynamic_cast<BackGround &>(area);
    background.displayRecord.displayEffect = background.displayRecord_G6.displayEffect;
    background.renderBackground();
    // The body of a picture area, whose length counts a frame header as 7 bytes.
    return write_picture_area_g6(background, data, FrameCount::AsG5);
}

} // namespace

void add_clock_area_kinds(AreaKindTable &table) {
    table.add({kAreaTypeTime, &make_time_area, &time_area_body});
}

void add_clock_area_kinds_g6(AreaKindTable &table) {
    // A G6 clock is a clock: a G5 integration of its program writes its G5 body.
    table.add({kAreaTypeTime, &make_time_area_g6, &time_area_body, &keep_time_area_extra,
               &time_area_body_g6});
    // A G5 file has no place for a background: a G5 integration leaves it out.
    table.add({kAreaTypeBackground, &make_background, nullptr, &keep_background_extra,
               &background_body_g6});
}

} // namespace zel

// Exported entries of the clock areas, G5 and G6.
#include "zel_sdk_dual.h"

#include <cstring>
#include <ctime>
#include <span>

#include "clock/time_area.h"
#include "clock/time_area_g6.h"
#include "exports/program_access.h"
#include "exports/records.h"
#include "platform/thread.h"
#include "sdk/console.h"
#include "sdk/guard.h"

using namespace zel;
using namespace zel::exports;

namespace {

// The clock area `areaID` of the current program, of either generation (the G5 entries act on
// the clock areas of a G6 program too); null when there is none or the area is of another kind.
TimeArea *time_area_g5(uint16_t areaID) {
    ProgramObj *program = current_program_g5();
    return program == nullptr ? nullptr : program->find_area_of<TimeArea>(areaID);
}

// The clock area `areaID` of the current program as class Area, through the G6 accessor. A
// missing area prints the entry's line, `entry` being its name without "zelDual_program_"; an
// area of another class gives null silently.
template <class Area> Area *time_area_g6(uint16_t areaID, const char *entry) {
    ProgramObj *program = any_program_g6();
    TKarea *area = program == nullptr ? nullptr : program->find_area(areaID);
    if (area == nullptr) {
        console_printf("Error:program_%s==>Can not find the area.please check areaID.\n", entry);
        return nullptr;
    }
    return dynamic_cast<Area *>(area);
}

enum class FontBy { Name, File, Kept };

void apply_content(TimeArea &area, const TimeContentRecord &record, FontBy by) {
    switch (by) {
    case FontBy::Name:
        area.addContent(unpack(record), content_font(record));
        break;
    case FontBy::File:
        area.addContentByPath(unpack(record), content_font(record));
        break;
    case FontBy::Kept:
        area.changeContent(unpack(record));
        break;
    }
}

int32_t content_g5(uint16_t areaID, const TimeContentRecord *content, FontBy by) {
    return guarded(-1, [&] {
        if (content == nullptr) return -1;
        TimeArea *area = time_area_g5(areaID);
        if (area == nullptr) return -1;
        apply_content(*area, *content, by);
        return 0;
    });
}

int32_t content_g6(uint16_t areaID, const TimeContentRecord *content, FontBy by,
                   const char *entry) {
    return guarded(-1, [&] {
        TimeArea *area = time_area_g6<TimeArea>(areaID, entry);
        if (area == nullptr || content == nullptr) return -1;
        apply_content(*area, *content, by);
        return 0;
    });
}

int32_t analog_clock_g5(uint16_t areaID, const AnalogClockRecord *clock, uint32_t dialStyle,
                        const ZelDialMarkColors *markColors) {
    return guarded(-1, [&] {
        if (clock == nullptr || markColors == nullptr) return -1;
        TimeArea *area = time_area_g5(areaID);
        if (area == nullptr) return -1;
        area->addAnalogClock(unpack(*clock), dialStyle, unpack(*markColors));
        return 0;
    });
}

int32_t analog_clock_g6(uint16_t areaID, const AnalogClockRecord *clock, uint32_t dialStyle,
                        const ZelDialMarkColors *markColors, const char *entry) {
    return guarded(-1, [&] {
        auto *area = time_area_g6<TimeArea_G6>(areaID, entry);
        if (area == nullptr || clock == nullptr || markColors == nullptr) return -1;
        area->addAnalogClock_G6(unpack(*clock), dialStyle, unpack(*markColors));
        return 0;
    });
}

} // namespace

extern "C" {

ZEL_API int32_t zelDual_program_timeAreaAddContent(uint16_t areaID,
                                                   const TimeContentRecord *content) {
    return content_g5(areaID, content, FontBy::Name);
}

ZEL_API int32_t zelDual_program_fontPath_timeAreaAddContent(uint16_t areaID,
                                                            const TimeContentRecord *content) {
    return content_g5(areaID, content, FontBy::File);
}

ZEL_API int32_t zelDual_program_timeAreaChangeContent(uint16_t areaID,
                                                      const TimeContentRecord *content) {
    return content_g5(areaID, content, FontBy::Kept);
}

ZEL_API int32_t zelDual_program_timeAreaGetOnePage(uint16_t areaID, OnePageResult *result) {
    return guarded(-1, [&] {
        if (result == nullptr) return -1;
        std::memset(result, 0, sizeof *result);
        TimeArea *area = time_area_g5(areaID);
        if (area == nullptr) return -1;
        std::tm now{};
        if (!platform::local_time(std::time(nullptr), now)) return -1;
        uint32_t length = 0;
        uint16_t count = 0;
        const int32_t r = area->getOnePage(now, 0, &length, &count);
        result->pageCount = count;
        result->pngLength = length;
        result->pngData = area->previewData;
        return r;
    });
}

ZEL_API int32_t zelDual_program_timeAreaAddAnalogClock(uint16_t areaID,
                                                       const AnalogClockRecord *clock,
                                                       uint32_t dialStyle,
                                                       const ZelDialMarkColors *markColors) {
    return analog_clock_g5(areaID, clock, dialStyle, markColors);
}

ZEL_API int32_t zelDual_program_timeAreaChangeAnalogClock(uint16_t areaID,
                                                          const AnalogClockRecord *clock,
                                                          uint32_t dialStyle,
                                                          const ZelDialMarkColors *markColors) {
    return analog_clock_g5(areaID, clock, dialStyle, markColors);
}

ZEL_API int32_t zelDual_program_timeAreaChangeDialPic(uint16_t areaID, const char *pngPath) {
    return guarded(-1, [&] {
        if (pngPath == nullptr) return -1;
        TimeArea *area = time_area_g5(areaID);
        if (area == nullptr) return -1;
        area->changeDialPicture(pngPath);
        return 0;
    });
}

ZEL_API int32_t zelDual_program_timeAreaChangeDialPicAdd_G56(uint16_t areaID, const uint8_t *png,
                                                             uint32_t length) {
    return guarded(-1, [&] {
        if (png == nullptr && length != 0) return -1;
        TimeArea *area = time_area_g5(areaID);
        if (area == nullptr) return -1;
        area->addDialPictureBytes(std::span<const uint8_t>(png, png == nullptr ? 0 : length));
        return 0;
    });
}

ZEL_API int32_t zelDual_program_timeAreaRemoveDialPic(uint16_t areaID) {
    return guarded(-1, [&] {
        TimeArea *area = time_area_g5(areaID);
        if (area == nullptr) return -1;
        area->removeDialPicture();
        return 0;
    });
}

ZEL_API int32_t zelDual_program_timeAreaAddContent_G6(uint16_t areaID,
                                                      const TimeContentRecord *content) {
    return content_g6(areaID, content, FontBy::Name, "timeAreaAddContent_G6");
}

ZEL_API int32_t zelDual_program_fontPath_timeAreaAddContent_G6(uint16_t areaID,
                                                               const TimeContentRecord *content) {
    return content_g6(areaID, content, FontBy::File, "fontPath_timeAreaAddContent_G6");
}

ZEL_API int32_t zelDual_program_timeAreaChangeContent_G6(uint16_t areaID,
                                                         const TimeContentRecord *content) {
    return content_g6(areaID, content, FontBy::Kept, "timeAreaChangeContent_G6");
}

ZEL_API int32_t zelDual_program_timeAreaAddAnalogClock_G6(uint16_t areaID,
                                                          const AnalogClockRecord *clock,
                                                          uint32_t dialStyle,
                                                          const ZelDialMarkColors *markColors) {
    // Its line names the fontPath entry, as it always has.
    return analog_clock_g6(areaID, clock, dialStyle, markColors, "fontPath_timeAreaAddContent_G6");
}

ZEL_API int32_t zelDual_program_timeAreaChangeAnalogClock_G6(uint16_t areaID,
                                                             const AnalogClockRecord *clock,
                                                             uint32_t dialStyle,
                                                             const ZelDialMarkColors *markColors) {
    return analog_clock_g6(areaID, clock, dialStyle, markColors, "timeAreaChangeAnalogClock_G6");
}

ZEL_API int32_t zelDual_program_timeAreaChangeDialPic_G6(uint16_t areaID, const char *pngPath) {
    return guarded(-1, [&] {
        TimeArea *area = time_area_g6<TimeArea>(areaID, "timeAreaChangeDialPic_G6");
        if (area == nullptr || pngPath == nullptr) return -1;
        area->changeDialPicture(pngPath);
        return 0;
    });
}

ZEL_API int32_t zelDual_program_timeAreaRemoveDialPic_G6(uint16_t areaID) {
    return guarded(-1, [&] {
        TimeArea *area = time_area_g6<TimeArea>(areaID, "timeAreaRemoveDialPic_G6");
        if (area == nullptr) return -1;
        area->removeDialPicture();
        return 0;
    });
}

ZEL_API int32_t zelDual_program_timeAreaSetBattleTime_G6(uint16_t areaID,
                                                         const ZelBattleTime_G6 *battle) {
    return guarded(-1, [&] {
        auto *area = time_area_g6<TimeArea_G6>(areaID, "timeAreaSetBattleTime_G6");
        if (area == nullptr || battle == nullptr) return -1;
        const BattleTime time = unpack(*battle);
        area->setBattleTime(&time, 1);
        return 0;
    });
}

ZEL_API int32_t zelDual_program_timeAreaCancleBattleTime_G6(uint16_t areaID) {
    return guarded(-1, [&] {
        auto *area = time_area_g6<TimeArea_G6>(areaID, "timeAreaCancleBattleTime_G6");
        if (area == nullptr) return -1;
        area->setBattleTime(nullptr, 0);
        return 0;
    });
}

} // extern "C"

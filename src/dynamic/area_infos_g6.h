// One G6 dynamic area whose pages come from a list of contents, texts and pictures mixed: the
// only calls that carry a frame and the area's runMode, timeout and immediate bytes.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "dynamic/command_g6.h"
#include "dynamic/link.h"
#include "dynamic/render.h"
#include "sdk/screen_globals.h"

namespace zel::dynamic {

enum class InfosForm {
    Plain,    // pages rendered with double colour 2, fonts always family names
    Serial,   // the same over a serial line
    V2,       // double colour from zelDual_dynamicArea_SetDualPixel, font files allowed, sound
    V2Serial, // font files allowed, no sound
};

struct InfosRequestG6 {
    uint8_t areaID = 0;
    uint8_t runMode = 0;
    uint16_t timeout = 5;
    uint8_t allPrograms = 1;
    ProgramList programs;
    bool programsMissing = false; // a count above 0 without its numbers: nothing is sent
    uint8_t immediate = 1;
    AreaRect rect;
    uint8_t frameFlag = 0; // 1: the frame below
    std::array<uint8_t, 5> frameHeader{};
    std::string framePng;
    std::vector<ContentG6> contents;
    std::optional<DynamicSound> sound; // V2 only
};

// 0 or the exchange's result; the ping's failure; -1 for a frame PNG that does not read, a
// line that does not open or nothing to send.
int32_t add_area_infos_g6(const Target &target, InfosForm form, E_ScreenColor_G56 color,
                          const InfosRequestG6 &request);

} // namespace zel::dynamic

// The G6 dynamic-area calls: one area with a text or a picture, shown with all programs or
// with some; sets of areas in one command; and independent sound. Each call pings the
// controller (TCP) or opens the line (serial) to learn its type, renders with a local
// PicturesArea_g6, builds a DynamicAreaCommand_6G and sends it.
#pragma once

#include <cstdint>
#include <span>

#include "dynamic/command_g6.h"
#include "dynamic/link.h"
#include "dynamic/render.h"
#include "sdk/screen_globals.h"

namespace zel::dynamic {

// The members of the single-area family, which differ in console and log lines, in the lock,
// in the kind of item and in how they hand on the result.
enum class FormG6 {
    Txt,                   // fixed page settings, no sound
    TxtDetails,            // the host's settings and sound; 0 or -1 with a log line
    TxtDetailsWithProgram, // the same shown with programs
    Pic,                   // a picture, no sound
    PicWithProgram,        // a picture shown with programs
};

// One area as the host describes it.
struct AreaRequestG6 {
    uint8_t areaID = 0;
    AreaRect rect;
    DynamicSound sound; // used where the form carries sound and byte 0 is 1
    ContentG6 content;
};

int32_t add_area_g6(const Target &target, FormG6 form, E_ScreenColor_G56 color,
                    const AreaRequestG6 &area, const ProgramList &programs);

// Several areas in one command (layout B). A failed element, such as a repeated area number,
// sends nothing and gives -1. `withPrograms` shows every area with `programs`.
int32_t add_set_g6(const Target &target, bool pictures, bool withPrograms, E_ScreenColor_G56 color,
                   std::span<const AreaRequestG6> areas, const ProgramList &programs);

// Independent sound over TCP; the connect's result shows in the exchange, which always takes
// the heap path.
int32_t insert_sound(const Target &target, uint8_t first, uint8_t second,
                     const DynamicSound &sound);
int32_t update_sound(const Target &target, uint8_t first, std::span<const SoundUpdateItem> items);

} // namespace zel::dynamic

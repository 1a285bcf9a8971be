// The G5 dynamic-area calls: add an area with a text, a picture or a list of contents, over
// TCP (after a ping that tells the controller's type) or a serial line (whose probe tells it),
// and delete areas by number.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "dynamic/command_g5.h"
#include "dynamic/link.h"
#include "dynamic/render.h"
#include "sdk/screen_globals.h"

namespace zel::dynamic {

// The three add calls differ in their console lines, their serial log line and what an
// exception leaves as the result.
enum class AddFormG5 { Text, Picture, Items };

// Renders every content under the dynamic-area lock (one hold per content), builds one add
// command and sends it. The result is the exchange's, narrowed to 16 bits; -1 for an empty
// command or a failed serial init; a failed ping's own result over TCP.
int32_t add_area_g5(const Target &target, AddFormG5 form, E_ScreenColor_G56 color,
                    const AddHeadG5 &head, std::span<const ContentG5> contents);

// Deletes one area (0xFF: all). A number above 64, taken as signed, gives -1 without traffic.
int32_t delete_area(const Target &target, int8_t number);
// Deletes the numbered areas.
int32_t delete_areas(const Target &target, std::span<const uint8_t> numbers);

} // namespace zel::dynamic

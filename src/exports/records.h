// The packed records of the public header turned into the core's typed values. This is the
// only place that reads them: the layers beneath never see a packed record.
#pragma once

#include "clock/frame.h"
#include "clock/time_area.h"
#include "clock/time_area_g6.h"
#include "program/program_header.h"
#include "program/program_header_g6.h"
#include "render/area.h"
#include "render/page_records.h"
#include "render/pictures_area_g6.h"
#include "zel_sdk_dual.h"

namespace zel::exports {

ProgramHeaderG5 unpack(const ZelProgramHeader_G5 &record);

// The first `count` periods of the block; a count above 8 gives zero periods behind the
// eighth, as the file has always carried them.
PlayPeriods unpack(const ZelPlayPeriods_G5 &record);

AreaRect unpack_rect(const ZelAreaRecord_G5 &record);

// The text entries' record: bytes 0 to 8 are the page header, whose reserved bytes 9 to 12
// are zero whatever the caller had in mind; bytes 9 to 28 are the style, in the same order.
TextPageParams unpack(const TextPageParams_G5 &record);
// A picture reads only the page header part of the record, and nothing behind it.
PageDisplayRecord unpack_picture_page(const TextPageParams_G5 &record);

FrameHeaderG5 unpack(const ZelFrameHeader_G5 &record);

ProgramHeaderG6 unpack(const ZelProgramHeader_G6 &record);

AreaRect unpack_rect(const ZelAreaRecord_G6 &record);
AreaExtraG6 unpack_extra(const ZelAreaRecord_G6 &record);

FrameParamsG6 unpack(const ZelFrameParams_G6 &record);

// The G6 text entries' record: bytes 0 to 9 are the page header (byte 9 its byte 10), byte 10
// is not read, bytes 11 to 30 are the style.
TextPageParamsG6 unpack(const TextPageParams_G6 &record);
// A picture or background reads only the page header part of the record.
PageDisplayRecord_G6 unpack_picture_page(const TextPageParams_G6 &record);

// The sound header of the enable entries: the settings behind a byte 1.
SoundRecord unpack_sound(const ZelSoundParams_G6 &record);

// A clock's content without its font pointer, which the entries read on their own (null
// reads as ""); the reserved bytes are not carried.
TimeContent unpack(const TimeContentRecord &record);
const char *content_font(const TimeContentRecord &record);

AnalogClock unpack(const AnalogClockRecord &record);
DialMarkColors unpack(const ZelDialMarkColors &record);

BattleTime unpack(const ZelBattleTime_G6 &record);

} // namespace zel::exports

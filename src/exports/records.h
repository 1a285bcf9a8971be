// The packed records of the public header turned into the core's typed values. This is the
// only place that reads them: the layers beneath never see a packed record.
#pragma once

#include "clock/frame.h"
#include "clock/time_area.h"
#include "program/program_header.h"
#include "render/area.h"
#include "render/page_records.h"
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

// A clock's content without its font pointer, which the entries read on their own (null
// reads as ""); the reserved bytes are not carried.
TimeContent unpack(const TimeContentRecord &record);
const char *content_font(const TimeContentRecord &record);

AnalogClock unpack(const AnalogClockRecord &record);
DialMarkColors unpack(const ZelDialMarkColors &record);

} // namespace zel::exports

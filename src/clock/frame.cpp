#include "clock/frame.h"

#include <algorithm>

#include "sdk/console.h"

namespace zel {
namespace {

constexpr char kNoFramePng[] = "Error:Can't find frame png.\n";

// Loads a new strip for an area and encodes it; the common part of the G5 and G6 area add.
// Returns false when the PNG has no pixels.
bool attach_strip(PicturesArea &area, const char *pngPath) {
    area.frameObject = std::make_unique<PicturesAreaFrame>();
    area.frameObject->load(pngPath);
    if (area.frameObject->framePixels == nullptr) {
        return false;
    }
    // Encoded before the frame counts as attached: a strip too large for the encoder throws
    // and leaves the area without a frame.
    std::vector<uint8_t> strip = area.frameObject->encode(area);
    area.frameEnabled = 1;
    area.frameData = std::move(strip);
    area.frameDataLength = static_cast<uint32_t>(area.frameData.size());
    area.layoutText();
    return true;
}

} // namespace

void add_area_frame(PicturesArea &area, const FrameHeaderG5 &header, const char *pngPath) {
    if (area.frameEnabled != 0) {
        return; // the area keeps its frame; a host removes it first to replace it
    }
    area.frameRecord = header.bytes();
    area.frameRecord[0] = kFrameMark; // whatever the caller's mark
    if (!attach_strip(area, pngPath)) {
        console_write(kNoFramePng, sizeof kNoFramePng - 1);
    }
}

void add_area_frame_g6(PicturesArea_g6 &area, const FrameParamsG6 &params, const char *pngPath) {
    if (area.frameEnabled != 0) {
        return;
    }
    area.frameRecord_G6 = params.header();
    if (!attach_strip(area, pngPath)) {
        console_printf("Error:PicturesArea_g6 Can't create_from_png. file:%s \n", pngPath);
    }
}

void remove_area_frame(PicturesArea &area) {
    if (area.frameEnabled == 0) {
        return;
    }
    area.frameEnabled = 0;
    area.frameObject.reset();
    area.layoutText();
}

} // namespace zel

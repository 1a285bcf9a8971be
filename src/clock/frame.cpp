#include "clock/frame.h"

#include <algorithm>

#include "program/program_obj.h"
#include "program/screen_settings.h"
#include "render/encode.h"
#include "render/screen_format.h"
#include "sdk/console.h"

namespace zel {
namespace {

constexpr char kNoFramePng[] = "Error:Can't find frame png.\n";

std::span<const uint8_t> strip_pixels(const PicturesAreaFrame &strip) {
    const auto bytes = static_cast<std::size_t>(std::max(strip.frameLength, 0)) *
                       static_cast<std::size_t>(std::max(strip.frameThickness, 0)) * 4;
    return {strip.framePixels, bytes};
}

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
    std::vector<uint8_t> strip = encode_frame_strip(*area.frameObject, area);
    area.frameEnabled = 1;
    area.frameData = std::move(strip);
    area.frameDataLength = static_cast<uint32_t>(area.frameData.size());
    area.layoutText();
    return true;
}

// Encodes the program's strip and then marks the frame present, so that a strip too large for
// the encoder (it throws) leaves the frame as it was.
void encode_program_strip(ProgramObj &program) {
    const TKarea scratch; // only for its gamma tables
    std::vector<uint8_t> strip = encode_frame_strip(*program.framePicture, scratch);
    program.frameData = std::move(strip);
    program.frameDataLen = static_cast<uint32_t>(program.frameData.size());
    program.hasFrame = 1;
}

} // namespace

std::vector<uint8_t> encode_frame_strip(const PicturesAreaFrame &strip, const TKarea &area) {
    std::vector<uint8_t> out;
    encode_for_screen(area, strip_pixels(strip), out, 0, static_cast<uint32_t>(strip.frameLength),
                      static_cast<uint32_t>(strip.frameThickness));
    return out;
}

void add_area_frame(PicturesArea &area, const uint8_t *record, const char *pngPath) {
    if (area.frameEnabled != 0) {
        return; // the area keeps its frame; a host removes it first to replace it
    }
    area.frameRecord[0] = kFrameMark;
    std::copy_n(record + 1, kFrameRecordSize - 1, area.frameRecord.begin() + 1);
    if (!attach_strip(area, pngPath)) {
        console_write(kNoFramePng, sizeof kNoFramePng - 1);
    }
}

void add_area_frame_g6(PicturesArea &area, std::array<uint8_t, kFrameRecordSizeG6> &frameRecordG6,
                       const uint8_t *record, const char *pngPath) {
    if (area.frameEnabled != 0) {
        return;
    }
    std::copy_n(record, kFrameRecordSize, frameRecordG6.begin());
    std::fill(frameRecordG6.begin() + kFrameRecordSize, frameRecordG6.end(), 0);
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

void add_program_frame(ProgramObj &program, const uint8_t *header, const char *pngPath) {
    program.hasFrame = 0;
    std::copy_n(header, kFrameRecordSize, program.frameHeader.begin());
    if (!program.framePicture) {
        program.framePicture = std::make_unique<PicturesAreaFrame>();
    }
    program.framePicture->load(pngPath);
    if (program.framePicture->framePixels == nullptr) {
        console_write(kNoFramePng, sizeof kNoFramePng - 1);
        return;
    }
    encode_program_strip(program);
}

void remove_program_frame(ProgramObj &program) {
    program.framePicture.reset();
    program.hasFrame = 0;
}

int32_t add_program_frame_g6(ProgramObj &program,
                             std::array<uint8_t, kFrameRecordSizeG6> &frameHeaderG6,
                             const uint8_t *header, const char *pngPath) {
    if (program.hasFrame != 0) {
        return -1;
    }
    std::copy_n(header, kFrameRecordSizeG6, frameHeaderG6.begin());
    program.framePicture = std::make_unique<PicturesAreaFrame>();
    program.framePicture->load(pngPath);
    if (program.framePicture->framePixels == nullptr) {
        console_write(kNoFramePng, sizeof kNoFramePng - 1);
        return -1;
    }
    encode_program_strip(program);
    return 0;
}

int32_t change_program_frame_g6(ProgramObj &program,
                                std::array<uint8_t, kFrameRecordSizeG6> &frameHeaderG6,
                                const uint8_t *header, const char *pngPath) {
    if (program.hasFrame == 0) {
        console_printf("Error:No frame have been added.\n");
        return -1;
    }
    std::copy_n(header, kFrameRecordSizeG6, frameHeaderG6.begin());
    if (!program.framePicture) {
        return -1;
    }
    program.framePicture->load(pngPath);
    if (program.framePicture->framePixels == nullptr) {
        // The new header now stands beside the old strip. Deliberate.
        console_write(kNoFramePng, sizeof kNoFramePng - 1);
        return -1;
    }
    encode_program_strip(program);
    return 0;
}

std::array<uint8_t, kFrameRecordSizeG6> frame_header_g6(const uint8_t *params) {
    std::array<uint8_t, kFrameRecordSizeG6> header{};
    header[0] = kFrameMark;
    std::copy_n(params, kFrameParamsSizeG6, header.begin() + 1);
    return header;
}

} // namespace zel

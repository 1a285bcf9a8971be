// Exported entries of the G6 program: header, play periods, areas, program frame, the two files.
#include "zel_sdk_dual.h"

#include <cstring>

#include "exports/program_access.h"
#include "exports/records.h"
#include "sdk/guard.h"
#include "sdk/host_buffer.h"

using namespace zel;
using namespace zel::exports;

namespace {

enum class Trace { Yes, No };

int32_t set_header_g6(const ZelProgramHeader_G6 *record, Trace trace) {
    return guarded(-1, [&] {
        ProgramObj_g6 *program = current_program_g6();
        if (program == nullptr || record == nullptr) return -1;
        return program->set_header_g6(unpack(*record), trace == Trace::Yes);
    });
}

int32_t frame_g6(const ZelFrameParams_G6 *params, const char *pngPath, bool change) {
    return guarded(-1, [&] {
        ProgramObj_g6 *program = current_program_g6();
        if (program == nullptr || params == nullptr || pngPath == nullptr) return -1;
        return change ? program->change_frame_g6(unpack(*params), pngPath)
                      : program->add_frame_g6(unpack(*params), pngPath);
    });
}

} // namespace

extern "C" {

ZEL_API int32_t zelDual_program_addProgram_G6(const ZelProgramHeader_G6 *header) {
    return set_header_g6(header, Trace::Yes);
}

ZEL_API int32_t zelDual_program_changeProgramParams_G6(const ZelProgramHeader_G6 *header) {
    return set_header_g6(header, Trace::No);
}

ZEL_API int32_t zelDual_program_addPlayPeriodGrp_G6(const ZelPlayPeriods_G5 *periods) {
    return guarded(-1, [&] {
        ProgramObj *program = any_program_g6();
        if (program == nullptr || periods == nullptr) return -1;
        // The G5 operation: its flag lands in the G5 header, which a G6 file does not carry.
        program->set_play_periods(unpack(*periods));
        return 0;
    });
}

ZEL_API int32_t zelDual_program_addArea_G6(uint16_t areaID, const ZelAreaRecord_G6 *area) {
    return guarded(-1, [&] {
        ProgramObj *program = any_program_g6();
        if (program == nullptr || area == nullptr) return -1;
        return program->add_area_g6(areaID, area->AreaType, unpack_rect(*area), unpack_extra(*area),
                                    area_kinds_g6());
    });
}

ZEL_API int32_t zelDual_program_deleteArea_G6(uint16_t areaID) {
    return guarded(-1, [&] {
        ProgramObj *program = any_program_g6();
        if (program == nullptr) return -1;
        program->delete_area(areaID);
        return 0;
    });
}

ZEL_API int32_t zelDual_program_MoveArea_G6(uint16_t areaID, uint32_t x, uint32_t y, int32_t width,
                                            int32_t height) {
    return guarded(-1, [&] {
        ProgramObj *program = any_program_g6();
        if (program == nullptr) return -1;
        return program->move_area(areaID,
                                  {static_cast<uint16_t>(x), static_cast<uint16_t>(y),
                                   static_cast<uint16_t>(width), static_cast<uint16_t>(height)});
    });
}

ZEL_API int32_t zelDual_program_addFrame_G6(const ZelFrameParams_G6 *params, const char *pngPath) {
    return frame_g6(params, pngPath, false);
}

ZEL_API int32_t zelDual_program_changeFrame_G6(const ZelFrameParams_G6 *params,
                                               const char *pngPath) {
    return frame_g6(params, pngPath, true);
}

ZEL_API int32_t zelDual_program_removeFrame_G6(void) {
    return guarded(-1, [] {
        ProgramObj *program = any_program_g6();
        if (program == nullptr) return -1;
        program->remove_frame();
        return 0;
    });
}

ZEL_API int32_t zelDual_program_IntegrateProgramFile_G6(ZelProgramFile_G6 *files) {
    return guarded(-1, [&] {
        ProgramObj_g6 *program = current_program_g6();
        if (program == nullptr || files == nullptr) return -1;
        const ProgramFilesG6 &built = program->integrate_g6();
        uint8_t *programCopy = host_copy(built.program.data.data(), built.program.data.size());
        uint8_t *dataCopy = host_copy(built.data.data.data(), built.data.data.size());
        if (programCopy == nullptr || dataCopy == nullptr) {
            host_free(programCopy);
            host_free(dataCopy);
            return -1;
        }
        std::memcpy(files->programFileName, built.program.name.data(), built.program.name.size());
        files->programFileType = built.program.type;
        files->programFileLen = static_cast<uint32_t>(built.program.data.size());
        files->programFileData = programCopy;
        std::memcpy(files->dataFileName, built.data.name.data(), built.data.name.size());
        files->dataFileType = built.data.type;
        files->dataFileLen = static_cast<uint32_t>(built.data.data.size());
        files->dataFileData = dataCopy;
        return 0;
    });
}

} // extern "C"

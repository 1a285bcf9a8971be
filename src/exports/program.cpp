// Exported entries of the G5 program family.
#include "zel_sdk_dual.h"

#include <cstdio>
#include <cstring>

#include "commands/files.h"
#include "commands/peer_call.h"
#include "exports/program_access.h"
#include "exports/records.h"
#include "render/pictures_area.h"
#include "sdk/console.h"
#include "sdk/guard.h"
#include "sdk/host_buffer.h"
#include "sdk/screen_globals.h"

using namespace zel;
using namespace zel::exports;

namespace {

// The picture area `areaID` of the current G5 program, or null.
PicturesArea *pictures_area(uint16_t areaID) {
    ProgramObj *program = current_program_g5();
    return program == nullptr ? nullptr : program->find_area_of<PicturesArea>(areaID);
}

// The header entries: the name replaces the number in the caller's record too.
int32_t set_header(ZelProgramHeader_G5 *record) {
    if (record == nullptr) return -1;
    ProgramObj *program = current_program_g5();
    if (program == nullptr) return -1;
    if (program->set_header(unpack(*record)) != 0) return -1;
    std::memcpy(reinterpret_cast<uint8_t *>(record) + offsetof(ZelProgramHeader_G5, ProgramName),
                program->file_name().data(), program->file_name().size());
    return 0;
}

enum class FontBy { Name, File };

// The two text entries differ only in how the font is named.
int32_t add_text(uint16_t areaID, const char *text, const char *font,
                 const TextPageParams_G5 *params, FontBy by) {
    return guarded(-1, [&] {
        if (text == nullptr || params == nullptr) return -1;
        PicturesArea *area = pictures_area(areaID);
        if (area == nullptr) return -1;
        const TextPageParams p = unpack(*params);
        const char *named = font == nullptr ? "" : font;
        if (by == FontBy::Name) {
            area->addText(text, named, p.style, p.display);
        } else {
            area->addTextByPath(text, named, p.style, p.display);
        }
        return 0;
    });
}

int32_t change_text(uint16_t areaID, const char *text, const TextPageParams_G5 *params) {
    return guarded(-1, [&] {
        if (text == nullptr || params == nullptr) return -1;
        PicturesArea *area = pictures_area(areaID);
        if (area == nullptr) return -1;
        const TextPageParams p = unpack(*params);
        area->changeText(text, p.style, p.display);
        return 0;
    });
}

// The program that zelDual_program_pictureArea sends: P000, played once, every day, for ever,
// with one empty area at x 943, y 0, 80 x 80.
ProgramHeaderG5 test_program_header() {
    ProgramHeaderG5 h;
    h.programNumber = 0;
    h.playTimes = 1;
    h.week = 0xFF;
    h.lifeStart = {0xFFFF, 0x12, 0x12};
    h.lifeEnd = {0xFFFF, 0x12, 0x12};
    return h;
}
constexpr AreaRect kTestProgramArea{943, 0, 80, 80};
constexpr uint8_t kOverwrite = 1;

} // namespace

extern "C" {

ZEL_API int32_t zelDual_program_freeBuffer(ZelProgramFile_G5 *file) {
    if (file != nullptr) {
        uint8_t *data = file->fileData;
        host_free(data);
        file->fileData = data;
    }
    return 0;
}

ZEL_API int32_t zelDual_program_freeBuffer_G6(ZelProgramFile_G6 *file) {
    if (file != nullptr) {
        // Packed fields cannot bind to a reference, hence the copies.
        uint8_t *data = file->dataFileData; // the data file goes first
        host_free(data);
        file->dataFileData = data;
        uint8_t *program = file->programFileData;
        host_free(program);
        file->programFileData = program;
    }
    return 0;
}

ZEL_API int32_t zelDual_program_addProgram(ZelProgramHeader_G5 *header) {
    return guarded(-1, [&] { return set_header(header); });
}

ZEL_API int32_t zelDual_program_changeProgramParams(ZelProgramHeader_G5 *header) {
    return guarded(-1, [&] { return set_header(header); });
}

ZEL_API int32_t zelDual_program_addPlayPeriodGrp(const ZelPlayPeriods_G5 *periods) {
    return guarded(-1, [&] {
        ProgramObj *program = current_program_g5();
        if (program == nullptr || periods == nullptr) return -1;
        program->set_play_periods(unpack(*periods));
        return 0;
    });
}

ZEL_API int32_t zelDual_program_AddArea(uint16_t areaID, const ZelAreaRecord_G5 *area) {
    return guarded(-1, [&] {
        ProgramObj *program = current_program_g5();
        if (program == nullptr || area == nullptr) return -1;
        return program->add_area(areaID, area->AreaType, unpack_rect(*area));
    });
}

ZEL_API int32_t zelDual_program_deleteArea(uint16_t areaID) {
    return guarded(-1, [&] {
        ProgramObj *program = current_program_g5();
        if (program == nullptr) return -1;
        program->delete_area(areaID);
        return 0;
    });
}

ZEL_API int32_t zelDual_program_MoveArea(uint16_t areaID, uint32_t x, uint32_t y, int32_t width,
                                         int32_t height) {
    return guarded(-1, [&] {
        ProgramObj *program = current_program_g5();
        if (program == nullptr) return -1;
        // Each value is stored as its low 16 bits.
        return program->move_area(areaID,
                                  {static_cast<uint16_t>(x), static_cast<uint16_t>(y),
                                   static_cast<uint16_t>(width), static_cast<uint16_t>(height)});
    });
}

ZEL_API int32_t zelDual_program_picturesAreaAddTxt(uint16_t areaID, const char *text,
                                                   const char *fontName,
                                                   const TextPageParams_G5 *params) {
    return add_text(areaID, text, fontName, params, FontBy::Name);
}

ZEL_API int32_t zelDual_program_fontPath_picturesAreaAddTxt(uint16_t areaID, const char *text,
                                                            const char *fontPath,
                                                            const TextPageParams_G5 *params) {
    return add_text(areaID, text, fontPath, params, FontBy::File);
}

ZEL_API int32_t zelDual_program_picturesAreaChangeTxt(uint16_t areaID, const char *text,
                                                      const TextPageParams_G5 *params) {
    return change_text(areaID, text, params);
}

ZEL_API int32_t zelDual_program_fontPath_picturesAreaChangeTxt(uint16_t areaID, const char *text,
                                                               const TextPageParams_G5 *params) {
    return change_text(areaID, text, params);
}

ZEL_API int32_t zelDual_program_pictureAreaAddPic(uint16_t areaID, uint16_t picID,
                                                  const TextPageParams_G5 *params,
                                                  const char *path) {
    return guarded(-1, [&] {
        // The file is tested before anything else is read: a missing file prints its line
        // whatever the record.
        if (path == nullptr) return -1;
        FILE *test = std::fopen(path, "r");
        if (test == nullptr) {
            console_printf("Error:The picture file :%s does not exist.ID:", path);
            return -1;
        }
        if (std::fclose(test) != 0) {
            console_printf("The file 'crt_fopen' was not closed\n");
        }
        PicturesArea *area = pictures_area(areaID);
        if (area == nullptr || params == nullptr) return -1;
        area->addPicture(picID, path, unpack_picture_page(*params));
        return 0;
    });
}

ZEL_API int32_t zelDual_program_pictureAreaGetOnePage(uint16_t areaID, uint32_t pageNum,
                                                      OnePageResult *result) {
    return guarded(-1, [&] {
        if (result == nullptr) return -1;
        std::memset(result, 0, sizeof *result);
        PicturesArea *area = pictures_area(areaID);
        if (area == nullptr) return -1;
        uint32_t length = 0;
        uint16_t count = 0;
        const int32_t r = area->getOnePage(pageNum, &length, &count);
        result->pageCount = count;
        result->pngLength = length;
        result->pngData = area->pngData; // on failure too
        return r;
    });
}

ZEL_API int32_t zelDual_program_IntegrateProgramFile(ZelProgramFile_G5 *file) {
    return guarded(-1, [&] {
        ProgramObj *program = current_program_g5();
        if (program == nullptr || file == nullptr) return -1;
        const ProgramFileImage &image = program->integrate();
        uint8_t *copy = host_copy(image.data.data(), image.data.size());
        if (copy == nullptr) return -1;
        std::memcpy(file->fileName, image.name.data(), image.name.size());
        file->fileType = image.type;
        file->fileLen = static_cast<uint32_t>(image.data.size());
        file->fileData = copy;
        file->fileCrc = image.crc;
        return 0;
    });
}

ZEL_API int32_t zelDual_program_pictureArea(const void * /*reserved*/, const char *address,
                                            uint16_t port) {
    return guarded(-1, [&] {
        g_screenColor.store(kScreenTwoColors, std::memory_order_relaxed);
        g_tranPixelMode.store(kTranPixelBits8, std::memory_order_relaxed);
        g_doubleColor.store(2, std::memory_order_relaxed);
        ProgramObj *program = current_program_g5();
        if (program == nullptr || address == nullptr) return -1;
        program->set_header(test_program_header());
        program->add_area(0, kAreaTypePictures, kTestProgramArea);
        const ProgramFileImage &image = program->integrate();
        // One connection with its probe, then the write, as every file entry makes them.
        return commands::with_tcp_peer(address, port, [&](KOR_command &peer) {
            return commands::writeFile(peer, commands::FileSpace::Ofs,
                                       reinterpret_cast<const uint8_t *>(image.name.data()),
                                       image.type, static_cast<uint32_t>(image.data.size()),
                                       kOverwrite, image.data.data());
        });
    });
}

} // extern "C"

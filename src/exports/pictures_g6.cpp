// Exported content entries of the G6 text and picture areas and backgrounds: text, pictures,
// sound, area frames, background colour.
#include "zel_sdk_dual.h"

#include <cstdio>

#include "clock/background.h"
#include "clock/frame.h"
#include "exports/program_access.h"
#include "exports/records.h"
#include "render/pictures_area_g6.h"
#include "sdk/console.h"
#include "sdk/guard.h"

using namespace zel;
using namespace zel::exports;

namespace {

// The area `areaID` of the current program as class Area. A missing area prints the entry's
// line, `entry` being its name without "zelDual_program_"; an area of another class gives null
// silently.
template <class Area> Area *area_g6(uint16_t areaID, const char *entry) {
    ProgramObj *program = any_program_g6();
    TKarea *area = program == nullptr ? nullptr : program->find_area(areaID);
    if (area == nullptr) {
        console_printf("Error:program_%s==>Can not find the area.please check areaID.\n", entry);
        return nullptr;
    }
    return dynamic_cast<Area *>(area);
}

enum class FontBy { Name, File };

int32_t add_text(uint16_t areaID, const char *text, const char *font,
                 const TextPageParams_G6 *params, FontBy by, const char *entry) {
    return guarded(-1, [&] {
        auto *area = area_g6<PicturesArea_g6>(areaID, entry);
        if (area == nullptr || text == nullptr || params == nullptr) return -1;
        const TextPageParamsG6 p = unpack(*params);
        const char *named = font == nullptr ? "" : font;
        if (by == FontBy::Name) {
            area->addText(text, named, p.style, p.display);
        } else {
            area->addTextByPath(text, named, p.style, p.display);
        }
        return 0;
    });
}

int32_t change_text(uint16_t areaID, const char *text, const TextPageParams_G6 *params,
                    const char *entry) {
    return guarded(-1, [&] {
        auto *area = area_g6<PicturesArea_g6>(areaID, entry);
        if (area == nullptr || text == nullptr || params == nullptr) return -1;
        const TextPageParamsG6 p = unpack(*params);
        area->changeText(text, p.style, p.display);
        return 0;
    });
}

int32_t add_picture(uint16_t areaID, uint16_t picID, const TextPageParams_G6 *params,
                    const char *path, const char *entry) {
    return guarded(-1, [&] {
        auto *area = area_g6<PicturesArea_g6>(areaID, entry);
        if (area == nullptr || params == nullptr || path == nullptr) return -1;
        area->addPicture(picID, path, unpack_picture_page(*params));
        return 0;
    });
}

int32_t enable_sound(uint16_t areaID, const ZelSoundParams_G6 *params, const char *text,
                     const char *entry) {
    return guarded(-1, [&] {
        auto *area = area_g6<PicturesArea_g6>(areaID, entry);
        if (area == nullptr || params == nullptr || text == nullptr) return -1;
        return area->setSound(unpack_sound(*params), 1, text);
    });
}

} // namespace

extern "C" {

ZEL_API int32_t zelDual_program_picturesAreaAddTxt_G6(uint16_t areaID, const char *text,
                                                      const char *fontName,
                                                      const TextPageParams_G6 *params) {
    return add_text(areaID, text, fontName, params, FontBy::Name, "picturesAreaAddTxt_G6");
}

ZEL_API int32_t zelDual_program_fontPath_picturesAreaAddTxt_G6(uint16_t areaID, const char *text,
                                                               const char *fontPath,
                                                               const TextPageParams_G6 *params) {
    return add_text(areaID, text, fontPath, params, FontBy::File, "fontPath_picturesAreaAddTxt_G6");
}

ZEL_API int32_t zelDual_program_picturesAreaChangeTxt_G6(uint16_t areaID, const char *text,
                                                         const TextPageParams_G6 *params) {
    return change_text(areaID, text, params, "picturesAreaChangeTxt_G6");
}

ZEL_API int32_t zelDual_program_fontPath_picturesAreaChangeTxt_G6(uint16_t areaID, const char *text,
                                                                  const TextPageParams_G6 *params) {
    return change_text(areaID, text, params, "fontPath_picturesAreaChangeTxt_G6");
}

ZEL_API int32_t zelDual_program_pictureAreaAddPic_G6(uint16_t areaID, uint16_t picID,
                                                     const TextPageParams_G6 *params,
                                                     const char *path) {
    return guarded(-1, [&] {
        // The file is tested before the area is looked for.
        if (path == nullptr) return -1;
        FILE *test = std::fopen(path, "r");
        if (test == nullptr) {
            console_printf("Error:The picture file :%s does not exist.ID:", path);
            return -1;
        }
        if (std::fclose(test) != 0) {
            console_printf("The file 'crt_fopen' was not closed\n");
        }
        return add_picture(areaID, picID, params, path, "pictureAreaAddPic_G6");
    });
}

ZEL_API int32_t zelDual_program_pictureAreaChangePic_G6(uint16_t areaID, uint16_t picID,
                                                        const TextPageParams_G6 *params,
                                                        const char *path) {
    return guarded(-1, [&] {
        auto *area = area_g6<PicturesArea_g6>(areaID, "pictureAreaChangePic_G6");
        if (area == nullptr || params == nullptr || path == nullptr) return -1;
        area->changePicture(picID, path, unpack_picture_page(*params));
        return 0;
    });
}

ZEL_API int32_t zelDual_program_pictureAreaEnableSound_G6(uint16_t areaID,
                                                          const ZelSoundParams_G6 *params,
                                                          const char *soundText) {
    return enable_sound(areaID, params, soundText, "pictureAreaEnableSound_G6");
}

ZEL_API int32_t zelDual_program_pictureAreaChangeSoundSettings_G6(uint16_t areaID,
                                                                  const ZelSoundParams_G6 *params,
                                                                  const char *soundText) {
    return enable_sound(areaID, params, soundText, "pictureAreaChangeSoundSettings_G6");
}

ZEL_API int32_t zelDual_program_pictureAreaDisableSound_G6(uint16_t areaID) {
    return guarded(-1, [&] {
        auto *area = area_g6<PicturesArea_g6>(areaID, "pictureAreaDisableSound_G6");
        if (area == nullptr) return -1;
        return area->setSound(SoundRecord{}, 0, "");
    });
}

ZEL_API int32_t zelDual_program_picturesAreaAddFrame_G6(uint16_t areaID,
                                                        const ZelFrameParams_G6 *params,
                                                        const char *pngPath) {
    return guarded(-1, [&] {
        ProgramObj *program = any_program_g6();
        if (program == nullptr || params == nullptr || pngPath == nullptr) return -1;
        // An unknown area is refused silently, unlike the content entries.
        auto *area = program->find_area_of<PicturesArea_g6>(areaID);
        if (area == nullptr) return -1;
        add_area_frame_g6(*area, unpack(*params), pngPath);
        return 0;
    });
}

ZEL_API int32_t zelDual_program_backGroundPic_G6(uint16_t areaID, uint16_t picID,
                                                 const TextPageParams_G6 *params,
                                                 const char *path) {
    // Any text and picture area takes it, and the file is not tested now.
    return add_picture(areaID, picID, params, path, "backGroundPic_G6");
}

ZEL_API int32_t zelDual_program_backGroundColor_G6(uint16_t areaID, const TextPageParams_G6 *params,
                                                   uint32_t color) {
    return guarded(-1, [&] {
        auto *area = area_g6<BackGround>(areaID, "backGroundColor_G6");
        if (area == nullptr || params == nullptr) return -1;
        area->setBackgroundColor(color, unpack_picture_page(*params));
        return 0;
    });
}

} // extern "C"

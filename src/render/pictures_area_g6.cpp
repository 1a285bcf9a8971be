#include "render/pictures_area_g6.h"

#include <algorithm>
#include <iterator>

#include "sdk/bytes.h"
#include "sdk/console.h"

namespace zel {

std::array<uint8_t, SoundRecord::kSize> SoundRecord::bytes() const {
    ByteWriter w(kSize);
    w.u8(enabled).bytes(settings.soundSettings1);
    w.u32(settings.soundValue1).u32(settings.soundValue2).bytes(settings.soundSettings2);
    std::array<uint8_t, kSize> out{};
    std::copy_n(w.data().begin(), kSize, out.begin());
    return out;
}

void PicturesArea_g6::addText(const std::string &text, const std::string &fontFamily,
                              const TextStyleRecord &style, const PageDisplayRecord_G6 &display) {
    displayRecord_G6 = display;
    PicturesArea::addText(text, fontFamily, style, display.display_record());
}

void PicturesArea_g6::addTextByPath(const std::string &text, const std::string &fontFile,
                                    const TextStyleRecord &style,
                                    const PageDisplayRecord_G6 &display) {
    displayRecord_G6 = display;
    PicturesArea::addTextByPath(text, fontFile, style, display.display_record());
}

void PicturesArea_g6::changeText(const std::string &text, const TextStyleRecord &style,
                                 const PageDisplayRecord_G6 &display) {
    displayRecord_G6 = display;
    PicturesArea::changeText(text, style, display.display_record());
}

void PicturesArea_g6::addPicture(uint16_t picID, const char *path,
                                 const PageDisplayRecord_G6 &display) {
    compute_draw_rect();
    pictureDetails_G6.push_back({display, picID});
    map_display_record();
    insert_picture_path(picID, path);
}

void PicturesArea_g6::changePicture(uint16_t picID, const char *path,
                                    const PageDisplayRecord_G6 &display) {
    if (m_PageList.empty()) return;
    if (picID < m_PageList.size()) {
        *std::next(m_PageList.begin(), picID) = path;
    }
    const auto detail = std::find_if(pictureDetails_G6.begin(), pictureDetails_G6.end(),
                                     [&](const PictureDetail_G6 &d) { return d.picID == picID; });
    if (detail != pictureDetails_G6.end()) {
        *detail = {display, picID};
    }
}

int32_t PicturesArea_g6::setSound(const SoundRecord &record, uint8_t enable,
                                  const std::string &data) {
    if (enable != 0) {
        soundEnabled = 1;
        soundRecord = record;
        soundData = data;
        if (soundData.empty()) {
            console_printf("Error:soundData is empty.\n");
            soundEnabled = 0;
            return -1;
        }
    } else {
        soundEnabled = 0;
        soundRecord = SoundRecord{};
        soundData.clear();
    }
    return 0;
}

} // namespace zel

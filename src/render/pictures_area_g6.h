// PicturesArea_g6: the text and picture area of a G6 program.
//
// It renders exactly as PicturesArea does; what differs is what it carries for the G6 files:
// an 18-byte page header (kept beside the 13-byte one that page generation reads), the three
// attribute bytes of its add-area record, a page header per picture that can be changed in
// place, a 14-byte frame record, and the sound that the controller speaks or plays with the
// pages.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "render/pictures_area.h"
#include "render/pictures_area_frame.h"

namespace zel {

// What a host sets for an area's sound, carried to the file unread.
struct SoundSettings {
    std::array<uint8_t, 4> soundSettings1{};
    uint32_t soundValue1 = 0;
    uint32_t soundValue2 = 0;
    std::array<uint8_t, 4> soundSettings2{};

    bool operator==(const SoundSettings &) const = default;
};

// The 17-byte sound header of the file: 1 while sound is on, then the settings.
struct SoundRecord {
    static constexpr std::size_t kSize = 17;

    uint8_t enabled = 0;
    SoundSettings settings;

    std::array<uint8_t, kSize> bytes() const;
    bool operator==(const SoundRecord &) const = default;
};

// A picture's own G6 page header and the identifier it was added with.
struct PictureDetail_G6 {
    PageDisplayRecord_G6 record;
    uint16_t picID = 0;
};

class PicturesArea_g6 : public PicturesArea {
  public:
    PicturesArea_g6() = default;
    ~PicturesArea_g6() override = default;

    // ---- Content ----
    // The text operations of PicturesArea with the G6 page header, which is kept and mapped
    // onto the G5 one before the text is broken into pages.
    void addText(const std::string &text, const std::string &fontFamily,
                 const TextStyleRecord &style, const PageDisplayRecord_G6 &display);
    void addTextByPath(const std::string &text, const std::string &fontFile,
                       const TextStyleRecord &style, const PageDisplayRecord_G6 &display);
    void changeText(const std::string &text, const TextStyleRecord &style,
                    const PageDisplayRecord_G6 &display);
    // Adds a picture at play-list position `picID` as PicturesArea does. Its header goes to
    // pictureDetails_G6 only; the G5 header is refreshed from the text's G6 header.
    void addPicture(uint16_t picID, const char *path, const PageDisplayRecord_G6 &display);
    // Replaces the path at play-list position `picID` and the first picture header added with
    // identifier `picID`. Nothing happens in an area without pictures; a position or an
    // identifier that does not exist leaves that list alone. The two agree only while
    // pictures were added at the end; deliberate.
    void changePicture(uint16_t picID, const char *path, const PageDisplayRecord_G6 &display);

    // ---- Sound ----
    // Enables sound with `record` and `data` (`enable` non-zero) or disables it (the record
    // zeroed, the data emptied). Enabling with empty data prints "Error:soundData is empty.\n",
    // leaves the sound off with the new record and returns -1; otherwise 0.
    int32_t setSound(const SoundRecord &record, uint8_t enable, const std::string &data);

    PageDisplayRecord_G6 displayRecord_G6;
    AreaExtraG6 areaExtra_G6;                        // from the add-area record
    std::vector<PictureDetail_G6> pictureDetails_G6; // one per picture, in adding order
    SoundRecord soundRecord;
    std::array<uint8_t, kFrameRecordSizeG6> frameRecord_G6{};

  private:
    // After each change of displayRecord_G6: the G5 header takes its first nine bytes.
    void map_display_record() { displayRecord = displayRecord_G6.display_record(); }
};

} // namespace zel

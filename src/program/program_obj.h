// The G5 program under construction: a header, optional play periods, an optional program
// frame and an ordered list of areas. The exported program entries only record what they are
// given; rendering happens when the program is integrated into its file image.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

#include "program/program_file.h"
#include "render/area.h"
#include "render/pictures_area_frame.h"
#include "sdk/program_access.h"

namespace zel {

class PicturesArea;

// Area types of the add-area record.
inline constexpr uint8_t kAreaTypePictures = 0;
inline constexpr uint8_t kAreaTypeTime = 2;

// The one result code of the program family besides 0 and -1: an unknown area to move.
inline constexpr int32_t kWrongAreaId = 29;
// deleteArea with this identifier empties the program, unless an area carries it.
inline constexpr uint16_t kAllAreas = 0xFFFF;

class ProgramObj : public ProgramObject {
  public:
    ProgramObj();
    ~ProgramObj() override;

    // ---- The file image, made by integrate() ----
    std::vector<uint8_t> fileData; // its size is fileLen
    std::array<char, 4> fileName{};
    uint8_t fileType = 0; // nothing writes another value
    uint32_t fileCrc = 0;

    // ---- What the host gave ----
    std::array<uint8_t, kProgramHeaderSize> header{};
    std::array<uint8_t, kFrameHeaderSize> frameHeader{};
    uint8_t hasFrame = 0;
    uint8_t hasBackground = 0; // stays 0 in a G5 program
    // The count that goes into the file. Replacing an area does not lower it, so it can stand
    // above the number of areas; the controllers expect exactly that.
    uint32_t areaCount = 0;
    std::vector<std::unique_ptr<TKarea>> areas; // in order of (last) addition
    std::unique_ptr<PicturesAreaFrame> framePicture;
    std::vector<uint8_t> frameData; // the program frame's encoded strip
    uint32_t frameDataLen = 0;
    uint32_t hasPlayPeriods = 0;
    std::array<uint8_t, kPlayPeriodBlockSize> playPeriods{};

    // Applies the file name rule to the number at bytes 1 to 4 of `record` (19 bytes). On
    // success writes the name over those bytes of the caller's record, stores the header and
    // the name, and returns 0; otherwise -1 and nothing changes.
    int32_t setHeader(uint8_t *record);
    // A block whose count byte is not 0 is stored and sets the flags; count 0 clears the flags
    // and keeps the block that was there.
    void addPlayPeriodGrp(const uint8_t *block);
    // Adds a picture area (type 0) or a clock area (type 2), replacing an area of the same
    // identifier. 0; -1 for a type that has no area class.
    int32_t addArea(uint16_t areaID, const uint8_t *record);
    void deleteArea(uint16_t areaID);
    // 0, or kWrongAreaId with its console line when the area does not exist.
    int32_t moveArea(uint16_t areaID, uint32_t x, uint32_t y, int32_t width, int32_t height);
    // The first area with this identifier, or null.
    TKarea *findArea(uint16_t areaID) const;
    // The picture area with this identifier, or null (also when it is a clock area).
    PicturesArea *findPicturesArea(uint16_t areaID) const;

    // Renders every area with the screen settings of now and builds fileData and fileCrc, then
    // writes the image to the trace file. Throws what rendering throws (a page too large for
    // the controller's bit planes).
    void integrate();
};

// The G5 accessor: the current program, made as a ProgramObj when none exists. The object may
// be a ProgramObj_g6 if the G6 accessor made it; callers cast and treat a mismatch as failure.
ProgramObject *program_access_g5();

// The current program through the G5 accessor, or null when it is not a G5 program.
ProgramObj *current_program_g5();

// The view of a rendered picture area that the file writer takes.
PictureAreaImage picture_area_image(const PicturesArea &area);

} // namespace zel

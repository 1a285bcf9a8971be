// The G6 program file, and the bodies of the G6 picture and background areas in it.
//
// A G6 program is two files. The program file holds the structure: header, play periods,
// program frame, areas and their page records; the data file (program/data_file.h) holds every
// pixel byte, and each page record points into it. As in G5 the writer works on plain views of
// what the program object and its areas hold.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "program/area_kinds.h"
#include "program/data_file.h"
#include "program/program_file.h"
#include "program/program_header_g6.h"
#include "render/area.h"
#include "render/pictures_area_frame.h"
#include "render/pictures_area_g6.h"

namespace zel {

inline constexpr std::size_t kPageHeaderSizeG6 = 18;
// A page record: its length word, then 26 bytes (header, data offset, data length).
inline constexpr uint32_t kPageRecordLengthG6 = kPageHeaderSizeG6 + 4 + 4;
inline constexpr std::size_t kSoundHeaderSize = 17;
inline constexpr std::size_t kAreaExtraSize = 3;

using PageHeaderG6 = std::array<uint8_t, kPageHeaderSizeG6>;

// How a picture body counts its area frame's header in the declared length: a picture area
// counts the 14 bytes it writes, a background 7. Deliberate; the controllers expect it.
enum class FrameCount { Written, AsG5 };

// A G6 picture or background area as the files take it, read after its pages were rendered.
struct PictureAreaImageG6 {
    std::array<uint8_t, kAreaRecordSize> areaHeader{};
    bool frameEnabled = false;
    std::array<uint8_t, kFrameRecordSizeG6> frameRecord{};
    std::span<const uint8_t> frameData;
    FrameCount frameCount = FrameCount::Written;
    std::array<uint8_t, kAreaExtraSize> extra{}; // BackGroundFlag, Transparency, AreaEqual
    bool soundEnabled = false;
    std::array<uint8_t, kSoundHeaderSize> soundHeader{};
    std::span<const uint8_t> soundData;
    PageHeaderG6 displayRecord{};                // the common page header of the text
    int32_t drawWidth = 0;                       // W
    uint16_t lastPageWidth = 0;                  // L
    int32_t textPageCount = 0;                   // T
    std::vector<PageHeaderG6> pictureHeaders;    // H, in order of adding
    std::vector<std::span<const uint8_t>> pages; // encoded pages, text first
};

// 19 + 30p, plus the frame (f + 14, or f + 7 for a background; 1 without) and the sound
// (its length + 21; 1 without).
uint32_t picture_body_length_g6(const PictureAreaImageG6 &area);

// The order of the page records and what header each carries.
struct PagePlacementG6 {
    static constexpr int kCommon = -1; // the common header with `width` as its page width
    static constexpr int kNone = -2;   // no header: the 18 bytes stay zero
    std::size_t page;
    uint16_t width;
    int header = kCommon; // otherwise an index into pictureHeaders
};
std::vector<PagePlacementG6> picture_page_order_g6(const PictureAreaImageG6 &area);

// The body: every page's pixels go to `data` in the order of the records, a page written twice
// twice. Its declared length is picture_body_length_g6.
AreaBodyG6 picture_area_body_g6(const PictureAreaImageG6 &area, DataFileWriter &data);

// The body of a G6 picture or background area whose pages were rendered. The common header
// keeps the page width it was written with last.
AreaBodyG6 write_picture_area_g6(PicturesArea_g6 &area, DataFileWriter &data, FrameCount count);

// The program part of the G6 program file.
struct ProgramImageHeadG6 {
    std::array<uint8_t, kProgramHeaderSizeG6> header{};
    uint32_t hasPlayPeriods = 0;
    std::span<const PlayPeriod> playPeriods; // written only when hasPlayPeriods is 1
    bool hasFrame = false;
    std::array<uint8_t, kFrameRecordSizeG6> frameHeader{};
    std::span<const uint8_t> frameData; // stays in the program file, unlike all pages
    bool hasBackground = false;
    uint32_t areaCount = 0;
};

// Starts the program file: header, period flag and periods, frame, background byte (always
// written, unlike G5), area count.
std::vector<uint8_t> begin_program_image_g6(const ProgramImageHeadG6 &head);

} // namespace zel

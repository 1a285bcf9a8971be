// The G5 program file: one image made of the program header, the play periods, the program
// frame, the areas and a CRC-32 over everything before it.
//
// The writer works on plain views of what the program object and its areas hold, so that the
// layout can be built and checked without rendering anything.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "program/program_header.h"
#include "render/area.h"
#include "render/pictures_area_frame.h"

namespace zel {

inline constexpr std::size_t kAreaRecordSize = kAreaHeaderSize;
inline constexpr std::size_t kFrameHeaderSize = kFrameRecordSize;
inline constexpr std::size_t kPageHeaderSize = 13;
inline constexpr std::size_t kPageWidthOffset = 7; // pageWidth inside a page header

// Effects that run the pages backwards; the writer lays their pages out in reverse.
inline constexpr uint8_t kEffectReverseRoll = 0x26;
inline constexpr uint8_t kEffectReverseRollAlt = 0x28;
// The horizontal roll, whose last page is narrower.
inline constexpr uint8_t kEffectHorizontalRoll = 4;

// The debugging trace of the last image, written into the working directory on every G5
// integration. Nothing reads it.
inline constexpr const char *kProgramTraceFile = "dataFantx.bin";

using PageHeader = std::array<uint8_t, kPageHeaderSize>;

// A picture area as the file takes it, read after its pages were rendered.
struct PictureAreaImage {
    std::array<uint8_t, kAreaRecordSize> areaHeader{};
    bool frameEnabled = false;
    std::array<uint8_t, kFrameHeaderSize> frameRecord{};
    std::span<const uint8_t> frameData;
    PageHeader displayRecord{};                  // the common page header of the text
    int32_t drawWidth = 0;                       // W: valid width of an ordinary page
    uint16_t lastPageWidth = 0;                  // L: valid width of the last page of a roll
    int32_t textPageCount = 0;                   // T: the first T pages are text pages
    std::vector<PageHeader> pictureHeaders;      // H: one per picture added, in order of adding
    std::vector<std::span<const uint8_t>> pages; // encoded pages, text first
};

// Body length of a picture area: 12 + 17p + d without a frame, 18 + f + 17p + d with one.
uint32_t picture_body_length(const PictureAreaImage &area);

// The order in which the pages of an area go into the file, and the valid width of each.
struct PagePlacement {
    std::size_t page;       // index into the area's pages
    uint16_t width;         // pageWidth written into the common header
    int pictureHeader = -1; // index into pictureHeaders when that header is written as it stands
};
std::vector<PagePlacement> picture_page_order(const PictureAreaImage &area);

// The body of a picture area, exactly as long as picture_body_length says.
std::vector<uint8_t> picture_area_body(const PictureAreaImage &area);

// Appends an area block: the body's length, then the body.
void append_area_block(std::vector<uint8_t> &image, std::span<const uint8_t> body);
// The same with a declared length that may differ from the body's: the block carries the
// length as declared and then every byte of the body.
void append_area_block(std::vector<uint8_t> &image, uint32_t declaredLength,
                       std::span<const uint8_t> body);

// The program part of the image.
struct ProgramImageHead {
    std::array<uint8_t, kProgramHeaderSize> header{};
    uint32_t hasPlayPeriods = 0;
    std::span<const PlayPeriod> playPeriods; // written only when hasPlayPeriods is 1
    bool hasFrame = false;
    std::array<uint8_t, kFrameHeaderSize> frameHeader{};
    std::span<const uint8_t> frameData;
    bool hasBackground = false;
    uint32_t areaCount = 0;
};

// Starts an image: header, play period flag and periods, frame, background mark, area count.
std::vector<uint8_t> begin_program_image(const ProgramImageHead &head);

// Closes an image with the CRC-32 of all its bytes; returns the CRC.
uint32_t finish_program_image(std::vector<uint8_t> &image);

// Writes the image to the trace file; failures are ignored.
void write_program_trace(std::span<const uint8_t> image);

} // namespace zel

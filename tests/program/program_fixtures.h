// Small makers for the program tests: records as a host fills them, and PNG strips.
#pragma once

#include <cairo.h>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "zel_sdk_dual.h"

namespace zel::test {

inline constexpr const char *kDejaVu = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";

// A PNG of `width` x `height` filled with one opaque colour 0xRRGGBB.
inline void write_png(const std::string &path, int width, int height, uint32_t rgb) {
    cairo_surface_t *s = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height);
    cairo_t *cr = cairo_create(s);
    cairo_set_source_rgb(cr, ((rgb >> 16) & 0xFF) / 255.0, ((rgb >> 8) & 0xFF) / 255.0,
                         (rgb & 0xFF) / 255.0);
    cairo_paint(cr);
    cairo_destroy(cr);
    cairo_surface_write_to_png(s, path.c_str());
    cairo_surface_destroy(s);
}

// The G5 and G6 records of the same name share these fields.
template <class Header> Header program_header_of(uint32_t number) {
    Header h;
    std::memset(&h, 0, sizeof h);
    h.ProgramName = number;
    h.ProgramPlayTimes = 1;
    h.ProgramWeek = 0xFF;
    h.ProgramLifeSpan_sy = 0xFFFF;
    h.ProgramLifeSpan_ey = 0xFFFF;
    return h;
}

template <class Area>
Area area_record_of(uint8_t type, uint16_t x, uint16_t y, uint16_t w, uint16_t h) {
    Area a;
    std::memset(&a, 0, sizeof a);
    a.AreaType = type;
    a.AreaX = x;
    a.AreaY = y;
    a.AreaWidth = w;
    a.AreaHeight = h;
    return a;
}

template <class Params>
Params text_params_of(uint8_t effect, uint32_t arrMode, uint16_t fontSize, uint32_t colour) {
    Params p;
    std::memset(&p, 0, sizeof p);
    p.displayEffect = effect;
    p.pageWidth = 0x7777; // replaced in the file for text pages
    p.arrMode = arrMode;
    p.fontSize = fontSize;
    p.fontColor = colour;
    p.horizontalAlign = 1;
    p.verticalAlign = 1;
    return p;
}

inline ZelProgramHeader_G5 program_header(uint32_t number) {
    return program_header_of<ZelProgramHeader_G5>(number);
}

inline ZelAreaRecord_G5 area_record(uint8_t type, uint16_t x, uint16_t y, uint16_t w, uint16_t h) {
    return area_record_of<ZelAreaRecord_G5>(type, x, y, w, h);
}

inline TextPageParams_G5 text_params(uint8_t effect, uint32_t arrMode, uint16_t fontSize,
                                     uint32_t colour) {
    return text_params_of<TextPageParams_G5>(effect, arrMode, fontSize, colour);
}

inline ZelFrameHeader_G5 frame_header(uint8_t mark) {
    ZelFrameHeader_G5 f;
    f.frameMark = mark;
    f.frameParam1 = 0x11;
    f.frameParam2 = 0x22;
    f.frameParam3 = 0x33;
    f.frameParam4 = 0x44;
    f.frameParam5 = 0x6655;
    return f;
}

inline uint16_t le16(const uint8_t *p) {
    return static_cast<uint16_t>(p[0] | (p[1] << 8));
}

inline uint32_t le32(const uint8_t *p) {
    return static_cast<uint32_t>(p[0]) | (static_cast<uint32_t>(p[1]) << 8) |
           (static_cast<uint32_t>(p[2]) << 16) | (static_cast<uint32_t>(p[3]) << 24);
}

// Integrates the current program; the image, or empty on failure.
inline std::vector<uint8_t> integrate() {
    ZelProgramFile_G5 file;
    std::memset(&file, 0, sizeof file);
    if (zelDual_program_IntegrateProgramFile(&file) != 0) return {};
    std::vector<uint8_t> image(file.fileData, file.fileData + file.fileLen);
    zelDual_program_freeBuffer(&file);
    return image;
}

// ---- G6 ----

inline ZelProgramHeader_G6 program_header_g6(uint32_t number) {
    return program_header_of<ZelProgramHeader_G6>(number);
}

inline ZelAreaRecord_G6 area_record_g6(uint8_t type, uint16_t x, uint16_t y, uint16_t w,
                                       uint16_t h) {
    return area_record_of<ZelAreaRecord_G6>(type, x, y, w, h);
}

inline TextPageParams_G6 text_params_g6(uint8_t effect, uint32_t arrMode, uint16_t fontSize,
                                        uint32_t colour) {
    return text_params_of<TextPageParams_G6>(effect, arrMode, fontSize, colour);
}

// The two files of the current G6 program; both empty on failure.
struct FilesG6 {
    std::string programName, dataName;
    uint8_t programType = 0xEE, dataType = 0xEE;
    std::vector<uint8_t> program, data;
};
inline FilesG6 integrate_g6() {
    ZelProgramFile_G6 record;
    std::memset(&record, 0, sizeof record);
    FilesG6 files;
    if (zelDual_program_IntegrateProgramFile_G6(&record) != 0) return files;
    files.programName.assign(record.programFileName, 4);
    files.dataName.assign(record.dataFileName, 4);
    files.programType = record.programFileType;
    files.dataType = record.dataFileType;
    files.program.assign(record.programFileData, record.programFileData + record.programFileLen);
    files.data.assign(record.dataFileData, record.dataFileData + record.dataFileLen);
    zelDual_program_freeBuffer_G6(&record);
    return files;
}

} // namespace zel::test

#include "clock/time_area.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <unistd.h>

#include "clock/clock_color.h"
#include "render/font.h"

namespace zel {
namespace {

// Writes the PNG bytes to a new file in the temporary directory and returns its path, or ""
// when no file could be made or written (the dial then counts as missing).
std::string write_dial_scratch(std::span<const uint8_t> png) {
    std::error_code ec;
    std::filesystem::path folder = std::filesystem::temp_directory_path(ec);
    if (ec) folder = "/tmp";
    std::string name = (folder / "zel-dial-XXXXXX.png").string();
    const int fd = ::mkstemps(name.data(), 4);
    if (fd < 0) return {};
    std::FILE *file = ::fdopen(fd, "wb");
    if (file == nullptr) {
        ::close(fd);
        std::remove(name.c_str());
        return {};
    }
    const bool written = png.empty() || std::fwrite(png.data(), 1, png.size(), file) == png.size();
    if (std::fclose(file) != 0 || !written) {
        std::remove(name.c_str());
        return {};
    }
    return name;
}

} // namespace

TimeArea::~TimeArea() {
    replace_dial_scratch({});
}

void TimeArea::store_content(const TimeContent &content) {
    timeContent = content;
    fontPixelSize = font_pixel_size_for(content.fontSize);
    textColor = content.fontColor;
}

void TimeArea::addContent(const TimeContent &content, const std::string &fontFamily) {
    // One way of naming the font at a time, whichever add runs.
    fontName.clear();
    fontPath.clear();
    fontName = fontFamily;
    store_content(content);
    convertGbkToUtf8(fontName);
    layoutText();
}

void TimeArea::addContentByPath(const TimeContent &content, const std::string &fontFile) {
    fontName.clear();
    fontPath.clear();
    fontPath = fontFile;
    store_content(content);
    convertGbkToUtf8(fontPath); // FreeType takes the path in UTF-8
    layoutText();
}

void TimeArea::changeContent(const TimeContent &content) {
    store_content(content);
    layoutText();
}

void TimeArea::layoutText() {
    pageLeft = header_x();
    drawWidth = header_width();
    drawHeight = header_height();
}

void TimeArea::addAnalogClock(const AnalogClock &clock, uint32_t style,
                              const DialMarkColors &marks) {
    handRecord = hand_record_short(clock);
    analogFlag = 1;
    dialStyle = style;
    markColors = marks;
    layoutText();
}

void TimeArea::changeDialPicture(const std::string &path) {
    dialPictureFlag = 1;
    dialPicturePath = path;
    analogFlag = 1;
    replace_dial_scratch({}); // the path no longer names it
}

void TimeArea::addDialPictureBytes(std::span<const uint8_t> png) {
    std::string scratch = write_dial_scratch(png);
    dialPictureFlag = 1;
    analogFlag = 1;
    dialPicturePath = scratch;
    replace_dial_scratch(std::move(scratch));
    layoutText();
}

void TimeArea::removeDialPicture() {
    dialPictureFlag = 0;
}

void TimeArea::replace_dial_scratch(std::string path) {
    if (!m_dialScratch.empty() && m_dialScratch != path) {
        std::remove(m_dialScratch.c_str());
    }
    m_dialScratch = std::move(path);
}

} // namespace zel

// Page generation: the content of a picture area becomes pages of exactly the drawable size.
#include <cstdio>
#include <iterator>

#include "render/encode.h"
#include "render/picture.h"
#include "render/pictures_area.h"
#include "render/screen_format.h"
#include "sdk/console.h"

namespace zel {

namespace {

// The painters of text_painter.h and picture.h on one area, appending to its pageBitmaps.
class AreaCanvas final : public PageCanvas {
  public:
    explicit AreaCanvas(PicturesArea &area) : m_area(area) {}

    double measureGbkText(std::string gbk) override {
        return zel::measureGbkText(m_area, m_area.paint_style(), std::move(gbk));
    }
    void paintRollSlice(std::string gbk, double offset) override {
        zel::paintRollSlice(m_area, m_area.paint_style(), std::move(gbk), offset,
                            m_area.pageBitmaps);
    }
    void paintOneLine(std::string ucs2) override {
        zel::paintOneLine(m_area, m_area.paint_style(), std::move(ucs2), m_area.pageBitmaps);
    }
    void paintLinesPage(std::vector<std::string> lines) override {
        zel::paintLinesPage(m_area, m_area.paint_style(), std::move(lines), m_area.pageBitmaps);
    }
    void paintVerticalRoll(std::vector<std::string> lines) override {
        zel::paintVerticalRoll(m_area, m_area.paint_style(), std::move(lines), 1,
                               m_area.pageBitmaps);
    }
    void paintPicture(std::string path) override {
        m_area.pageBitmaps.push_back(zel::paintPicture(path, m_area.drawWidth, m_area.drawHeight));
    }

  private:
    PicturesArea &m_area;
};

// A picture is used only if its file opens for reading; it is closed again after painting.
class ReadableFile {
  public:
    explicit ReadableFile(const char *path)
        : m_file(path != nullptr ? std::fopen(path, "r") : nullptr) {}
    ~ReadableFile() {
        if (m_file != nullptr) std::fclose(m_file);
    }
    ReadableFile(const ReadableFile &) = delete;
    ReadableFile &operator=(const ReadableFile &) = delete;
    explicit operator bool() const { return m_file != nullptr; }

  private:
    std::FILE *m_file;
};

// The low 16 bits of a pixel count, as the roll arithmetic keeps them.
int32_t low16(int32_t v) {
    return static_cast<uint16_t>(v);
}

// Width of one blank, to leave a gap after the last slice of a roll.
int32_t blank_width(PageCanvas &canvas) {
    const double spaced = canvas.measureGbkText("1 1");
    const double tight = canvas.measureGbkText("11");
    return static_cast<int32_t>(spaced - tight);
}

} // namespace

void PicturesArea::renderPages() {
    AreaCanvas canvas(*this);
    renderPages(canvas);
}

void PicturesArea::renderPages(PageCanvas &canvas) {
    encodedTotal = 0;
    compute_draw_rect();
    if (soundEnabled != 0) soundLength = static_cast<uint32_t>(soundData.size());
    pageBitmaps.clear();
    encodedPages.clear();

    const uint8_t effect = displayRecord.displayEffect;
    if (styleRecord.arrMode == SINGLELINE) {
        // An area without room for a slice has nothing to roll (see docs/decisions.md).
        const bool roll = effect == kEffectRoll || effect == kEffectRollReverse;
        if (textContent.empty() || (roll && drawWidth == 0)) {
            // nothing to paint
        } else if (effect == kEffectRoll) {
            const double textWidth = canvas.measureGbkText(textContent);
            // The slice count sees only the low 16 bits of the width; the remainder test
            // below sees all of it. Long rolls depend on both as they are.
            const int32_t n = low16(static_cast<int32_t>(textWidth)) / drawWidth;
            double offset = 0.0;
            for (int32_t i = 0; i < n; ++i) {
                canvas.paintRollSlice(textContent, offset);
                offset += drawWidth;
            }
            const auto r = static_cast<int32_t>(roundHalfAway(textWidth));
            if (r % drawWidth != 0) {
                canvas.paintRollSlice(textContent, offset);
                lastPageWidth = static_cast<uint16_t>(low16(r) % drawWidth);
                lastPageWidth = static_cast<uint16_t>(lastPageWidth + blank_width(canvas));
            }
        } else if (effect == kEffectRollReverse) {
            const double textWidth = canvas.measureGbkText(textContent);
            const int32_t rem = low16(static_cast<int32_t>(roundHalfAway(textWidth))) % drawWidth;
            double offset = 0.0;
            if (rem == 0) {
                lastPageWidth = static_cast<uint16_t>(drawWidth);
            } else {
                // The first slice shows the text's first `rem` pixels at its right edge.
                canvas.paintRollSlice(textContent, -static_cast<double>(drawWidth - rem));
                lastPageWidth = static_cast<uint16_t>(rem + blank_width(canvas));
                offset += rem;
            }
            const int32_t n = low16(static_cast<int32_t>(textWidth)) / drawWidth;
            for (int32_t i = 0; i < n; ++i) {
                canvas.paintRollSlice(textContent, offset);
                offset += drawWidth;
            }
        } else {
            for (const std::string &line : _subString)
                canvas.paintOneLine(line);
        }
    } else {
        lastPageWidth = static_cast<uint16_t>(drawWidth);
        if (effect == kEffectVerticalRoll || effect == kEffectVerticalRoll2) {
            if (!_subString.empty()) canvas.paintVerticalRoll(_subString);
        } else if (effect == kEffectRollReverse) {
            for (auto page = PageString.rbegin(); page != PageString.rend(); ++page) {
                canvas.paintLinesPage(*page);
            }
        } else {
            for (const auto &page : PageString)
                canvas.paintLinesPage(page);
        }
    }
    textPageCount = static_cast<int32_t>(pageBitmaps.size());

    for (const char *path : m_PageList) {
        const ReadableFile file(path);
        if (!file) {
            // The number is always 0, whichever picture is missing.
            console_printf("%s%d\n", "Error:The picture does not exist.ID:", 0);
            continue;
        }
        canvas.paintPicture(path);
    }
    pageCount = static_cast<uint32_t>(pageBitmaps.size());

    const PixelFormat format = screen_pixel_format();
    const GammaTables gamma = area_gamma(*this);
    for (const PageBitmap &bitmap : pageBitmaps) {
        std::vector<uint8_t> out;
        // A frame wider than half the area leaves no page at all (see docs/decisions.md).
        if (drawWidth >= 0 && drawHeight >= 0) {
            encodePixels(bitmap, out, pageLeft, static_cast<uint32_t>(drawWidth),
                         static_cast<uint32_t>(drawHeight), format, gamma);
        }
        encodedTotal += static_cast<uint32_t>(out.size());
        encodedPages.push_back(std::move(out));
    }
}

int32_t PicturesArea::getOnePage(uint32_t pageNum, uint32_t *pngLength, uint16_t *pageCountOut) {
    const auto giveBack = [&](uint16_t count) {
        pngData = reinterpret_cast<const uint8_t *>(pngBytes.data());
        if (pngLength != nullptr) *pngLength = static_cast<uint32_t>(pngBytes.size());
        if (pageCountOut != nullptr) *pageCountOut = count;
    };

    compute_draw_rect(false);
    if (PageString.empty() && _subString.empty() && m_PageList.empty()) {
        // The separators are a damaged ideographic comma; hosts match the line as it is.
        static constexpr char kNothing[] = "PageString\xE3\x80?_subString\xE3\x80?m_PageList"
                                           "\xE3\x80?all is NULL.\n";
        console_write(kNothing, sizeof kNothing - 1);
        return -1;
    }

    if (!PageString.empty() || !_subString.empty()) {
        const std::size_t units =
            styleRecord.arrMode == SINGLELINE ? _subString.size() : PageString.size();
        if (pageNum >= units) {
            console_printf("Error:pageNum out of range.\n");
            pageNum = units == 0 ? 0 : static_cast<uint32_t>(units - 1);
        }
        pngBytes.clear();
        if (styleRecord.arrMode == SINGLELINE) {
            if (!_subString.empty()) {
                previewOneLine(*this, paint_style(), _subString[pageNum], pngBytes);
            }
        } else if (!PageString.empty()) {
            previewLinesPage(*this, paint_style(), PageString[pageNum], pngBytes);
        }
        // In SINGLELINE mode the count is that of PageString, which is empty there: hosts see 0.
        giveBack(static_cast<uint16_t>(PageString.size()));
    }

    if (m_PageList.empty()) return 0;
    // With pictures present the picture wins and the page number is read as a picture index.
    if (pageNum >= m_PageList.size()) {
        const char *last = m_PageList.back();
        const ReadableFile file(last);
        if (!file) {
            console_printf("Error:The last picture is not exist.\n");
            return -1;
        }
        pngBytes.clear();
        previewPicture(last, drawWidth, drawHeight, pngBytes);
    } else {
        const char *path = *std::next(m_PageList.begin(), static_cast<std::ptrdiff_t>(pageNum));
        const ReadableFile file(path);
        if (!file) {
            console_printf("Error:The picture is not exist.\n");
        } else {
            pngBytes.clear();
            previewPicture(path, drawWidth, drawHeight, pngBytes);
        }
    }
    if (pngBytes.empty()) {
        console_printf("Error:unable to generate pictures.\n");
        return -1;
    }
    // The count of a picture preview comes from a list nothing fills: always 0.
    giveBack(0);
    return 0;
}

} // namespace zel

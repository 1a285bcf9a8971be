#include "render/pictures_area.h"

#include "render/font.h"
#include "render/line_breaking.h"
#include "sdk/console.h"

namespace zel {

void PicturesArea::compute_draw_rect(bool withLeft) {
    // A frame enabled without its strip cannot occur through the frame operations; it counts
    // as a frame of thickness 0.
    const int32_t t = (frameEnabled != 0 && frameObject) ? frameObject->frameThickness : 0;
    if (withLeft) pageLeft = static_cast<uint32_t>(header_x() + t);
    drawWidth = header_width() - 2 * t;
    drawHeight = header_height() - 2 * t;
}

TextPaintStyle PicturesArea::paint_style() const {
    TextPaintStyle s;
    s.drawWidth = drawWidth;
    s.drawHeight = drawHeight;
    s.fontPixelSize = fontPixelSize;
    s.fontColor = fontColor;
    s.fontBold = styleRecord.fontBold;
    s.fontItalic = styleRecord.fontItalic;
    s.horizontalAlign = styleRecord.horizontalAlign;
    s.verticalAlign = styleRecord.verticalAlign;
    return s;
}

void PicturesArea::store_text_style(const TextStyleRecord &style,
                                    const PageDisplayRecord &display) {
    fontPixelSize = font_pixel_size_for(style.fontSize);
    fontColor = style.fontColor;
    displayRecord = display;
    styleRecord = style;
}

void PicturesArea::addText(const std::string &text, const std::string &fontFamily,
                           const TextStyleRecord &style, const PageDisplayRecord &display) {
    fontPath.clear();
    textContent = text;
    fontName = fontFamily;
    convertGbkToUtf8(fontName);
    store_text_style(style, display);
    layoutText();
}

void PicturesArea::addTextByPath(const std::string &text, const std::string &fontFile,
                                 const TextStyleRecord &style, const PageDisplayRecord &display) {
    fontName.clear();
    textContent = text;
    fontPath = fontFile;
    convertGbkToUtf8(fontPath); // FreeType takes the path in UTF-8
    store_text_style(style, display);
    layoutText();
}

void PicturesArea::changeText(const std::string &text, const TextStyleRecord &style,
                              const PageDisplayRecord &display) {
    textContent = text;
    store_text_style(style, display);
    layoutText();
}

void PicturesArea::addPicture(uint16_t picID, const char *path, const PageDisplayRecord &display) {
    compute_draw_rect();
    pictureDetails.push_back({display, picID});
    // pictureDetails keeps adding order while the play list follows picID; the file writer
    // relies on both as they are.
    insert_picture_path(picID, path);
}

void PicturesArea::insert_picture_path(uint16_t picID, const char *path) {
    std::size_t index = 0;
    for (auto it = m_PageList.begin(); it != m_PageList.end(); ++it, ++index) {
        if (index == picID) {
            m_PageList.insert(it, path);
            return;
        }
    }
    m_PageList.push_back(path);
}

void PicturesArea::layoutText() {
    compute_draw_rect();
    if (styleRecord.arrMode != SINGLELINE && styleRecord.arrMode != MULTILINE) {
        console_printf("Error: no arrMode is specified.Use MULTILINE Mode\n");
        styleRecord.arrMode = MULTILINE;
    }
    _subString.clear();
    currentLines.clear();
    PageString.clear();
    if (textContent.empty()) {
        console_printf("Error:no string has been added.\n");
        return;
    }
    // An area lower than the font still gets whole lines: it paginates against the font size.
    int32_t pageHeight = drawHeight;
    if (drawHeight < fontPixelSize) pageHeight = static_cast<int32_t>(fontPixelSize);
    if (styleRecord.arrMode == SINGLELINE) {
        breakSingleLine(textContent, drawWidth, pageHeight);
    } else {
        breakMultiLine(textContent, drawWidth, pageHeight);
    }
}

void PicturesArea::breakSingleLine(std::string text, int32_t lineWidth, int32_t pageHeight) {
    TextScratch scratch(*this, lineWidth, pageHeight, fontPixelSize, styleRecord.fontBold,
                        styleRecord.fontItalic, true);
    convertGbkToUcs2(text);
    IncrementalPrefixMeasurer measurer(scratch.context(), text);
    _subString = break_lines(text, lineWidth, measurer);
}

void PicturesArea::breakMultiLine(std::string text, int32_t lineWidth, int32_t pageHeight) {
    TextScratch scratch(*this, lineWidth, pageHeight, fontPixelSize, styleRecord.fontBold,
                        styleRecord.fontItalic, true);
    convertGbkToUcs2(text);
    IncrementalPrefixMeasurer measurer(scratch.context(), text);
    _subString = break_lines(text, lineWidth, measurer);
    paginate_lines(_subString, lineHeight(scratch.context()), pageHeight, currentLines, PageString);
}

} // namespace zel

// PicturesArea: the area that shows text pages and pictures, one after another.
//
// A caller gives it one text (one style, one font) and any number of PNG files; the text plays
// first, the pictures after it. The content operations only record what is to be shown and
// break the text into lines and pages; renderPages paints and encodes every page when a file
// is built or a dynamic area is sent, and getOnePage paints one page as a PNG for a preview.
//
// Members are public: the program file writers read the pages, headers and widths, and the
// frame operations fill the frame members.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <list>
#include <memory>
#include <string>
#include <vector>

#include "render/area.h"
#include "render/page_records.h"
#include "render/pictures_area_frame.h"
#include "render/text_painter.h"

namespace zel {

class PageCanvas;

// Size of the G5 area frame record: frame mark (1 while a frame is attached) and six
// parameter bytes for the controller.
inline constexpr std::size_t kAreaFrameRecordSize = 7;

// A picture's own page header and the identifier it was added with, in adding order.
struct PictureDetail {
    PageDisplayRecord record;
    uint16_t picID = 0;
};

class PicturesArea : public TKarea {
  public:
    PicturesArea() = default;
    ~PicturesArea() override = default;

    // ---- Content ----
    // Stores the text (GBK) with a font family name (GBK, kept as UTF-8), the style and the
    // page header, and breaks the text into lines and pages. Clears the font path.
    void addText(const std::string &text, const std::string &fontFamily,
                 const TextStyleRecord &style, const PageDisplayRecord &display);
    // The same with a font file path (GBK, kept as UTF-8 for FreeType). Clears the family.
    void addTextByPath(const std::string &text, const std::string &fontFile,
                       const TextStyleRecord &style, const PageDisplayRecord &display);
    // Replaces text, style and header and keeps the font as it was.
    void changeText(const std::string &text, const TextStyleRecord &style,
                    const PageDisplayRecord &display);
    // Adds a picture. `picID` is a position in the play list: the path goes in front of the
    // picture now at that position, or at the end when there is none. The pointer is kept,
    // not the string: it must stay valid until the pages are rendered.
    void addPicture(uint16_t picID, const char *path, const PageDisplayRecord &display);
    // Puts a path into the play list as addPicture does, without recording a page header.
    void insert_picture_path(uint16_t picID, const char *path);

    // ---- Pages ----
    // Breaks the text into lines (and, in MULTILINE mode, pages) for the drawable rectangle.
    void layoutText() override;
    void breakMultiLine(std::string text, int32_t lineWidth, int32_t pageHeight);
    void breakSingleLine(std::string text, int32_t lineWidth, int32_t pageHeight);
    // Paints every page, text first and then pictures, and encodes each for the current
    // screen settings into encodedPages.
    void renderPages();
    // The same through another canvas (the tests record what would be painted).
    void renderPages(PageCanvas &canvas);
    // Paints one page as a PNG into pngBytes (pngData points at it) and gives back its length
    // and a page count. 0, or -1 with a message when there is nothing to show.
    int32_t getOnePage(uint32_t pageNum, uint32_t *pngLength, uint16_t *pageCountOut);

    // The drawable rectangle: the area less the frame's margin on every side. getOnePage
    // leaves pageLeft alone.
    void compute_draw_rect(bool withLeft = true);
    // What the painters need to know of this area's text.
    TextPaintStyle paint_style() const;

    // ---- Lines and pages of the text (UCS-2LE) ----
    std::vector<std::string> _subString;              // the text's lines
    std::vector<std::string> currentLines;            // the last page of the pagination
    std::vector<std::vector<std::string>> PageString; // MULTILINE pages, each its lines

    double fontPixelSize = 0.0; // the size given to cairo
    uint32_t fontColor = 0;     // copy of styleRecord.fontColor

    // ---- Frame (filled by the frame operations) ----
    std::unique_ptr<PicturesAreaFrame> frameObject; // null when no frame was ever added
    uint8_t frameEnabled = 0;                       // 1 while a frame is attached
    std::array<uint8_t, kAreaFrameRecordSize> frameRecord{};
    std::vector<uint8_t> frameData; // the frame's encoded pixels
    uint32_t frameDataLength = 0;

    // ---- Rendered pages ----
    PageBitmaps pageBitmaps;                        // painted, kept until the next render
    std::vector<std::vector<uint8_t>> encodedPages; // each page's encoded bytes
    uint32_t encodedTotal = 0;                      // sum of their lengths
    uint32_t pageLeft = 0;                          // x of the drawable rectangle on the screen
    uint16_t lastPageWidth = 0; // significant columns of the last page of a horizontal roll
    uint32_t pageCount = 0;     // pages rendered, text and pictures
    int32_t textPageCount = 0;  // how many of them are text pages; pictures follow

    // ---- Preview ----
    std::string pngBytes;             // the PNG of the last preview
    const uint8_t *pngData = nullptr; // points into pngBytes once a preview was made

    // ---- Content as given ----
    std::string textContent;                   // GBK
    std::list<const char *> m_PageList;        // picture paths, the caller's pointers
    std::vector<PictureDetail> pictureDetails; // one per picture, in adding order
    PageDisplayRecord displayRecord;           // header shared by the text's pages
    TextStyleRecord styleRecord;

    // ---- Sound (used by G6 areas) ----
    uint8_t soundEnabled = 0;
    std::string soundData;
    uint32_t soundLength = 0; // size of soundData when the pages were rendered

  private:
    void store_text_style(const TextStyleRecord &style, const PageDisplayRecord &display);
};

// The drawing operations of page generation. The real canvas runs the text painters and the
// picture painter on its area and appends to its pageBitmaps; another canvas may stand in.
class PageCanvas {
  public:
    virtual ~PageCanvas() = default;
    virtual double measureGbkText(std::string gbk) = 0;
    virtual void paintRollSlice(std::string gbk, double offset) = 0;
    virtual void paintOneLine(std::string ucs2) = 0;
    virtual void paintLinesPage(std::vector<std::string> lines) = 0;
    virtual void paintVerticalRoll(std::vector<std::string> lines) = 0;
    virtual void paintPicture(std::string path) = 0;
};

} // namespace zel

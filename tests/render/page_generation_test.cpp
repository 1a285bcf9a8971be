#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "program/screen_settings.h"
#include "render/pictures_area.h"
#include "render_test_support.h"
#include "support/capture.h"
#include "support/hex.h"

namespace zel {
namespace {

using test::place;
using test::ucs2Lines;

// Records what page generation asks to paint and leaves a dark page for each request.
// Texts measure as the table says; "1 1" and "11" make a blank of 5 pixels.
class RecordingCanvas final : public PageCanvas {
  public:
    explicit RecordingCanvas(PicturesArea &area) : m_area(area) {}

    double measureGbkText(std::string gbk) override {
        if (gbk == "1 1") return 27.7;
        if (gbk == "11") return 22.0;
        return widths.at(gbk);
    }
    void paintRollSlice(std::string gbk, double offset) override {
        rolled.push_back(gbk);
        offsets.push_back(offset);
        page();
    }
    void paintOneLine(std::string ucs2) override {
        pages.push_back({std::move(ucs2)});
        page();
    }
    void paintLinesPage(std::vector<std::string> lines) override {
        pages.push_back(std::move(lines));
        page();
    }
    void paintVerticalRoll(std::vector<std::string> lines) override {
        columns.push_back(std::move(lines));
        page();
    }
    void paintPicture(std::string path) override {
        pictures.push_back(path);
        page();
    }

    std::map<std::string, double> widths;
    std::vector<std::string> rolled;
    std::vector<double> offsets;
    std::vector<std::vector<std::string>> pages;
    std::vector<std::vector<std::string>> columns;
    std::vector<std::string> pictures;

  private:
    void page() {
        const auto size = static_cast<std::size_t>(std::max(0, m_area.drawWidth)) *
                          static_cast<std::size_t>(std::max(0, m_area.drawHeight)) * 4;
        m_area.pageBitmaps.emplace_back(size, 0);
    }
    PicturesArea &m_area;
};

// A single-line area of the given width, 16 high, holding `text` with `effect`, whose
// lastPageWidth starts at 777.
struct RollCase {
    double textWidth;
    int32_t drawWidth;
    std::vector<double> offsets;
    uint16_t lastPageWidth;
};

void expectRoll(uint8_t effect, const RollCase &c) {
    PicturesArea area;
    place(area, 0, 0, static_cast<uint16_t>(c.drawWidth), 16);
    area.textContent = "roll";
    area.displayRecord.displayEffect = effect;
    area.lastPageWidth = 777;
    RecordingCanvas canvas(area);
    canvas.widths["roll"] = c.textWidth;
    area.renderPages(canvas);
    EXPECT_EQ(canvas.offsets, c.offsets) << "width " << c.textWidth << " in " << c.drawWidth;
    EXPECT_EQ(area.lastPageWidth, c.lastPageWidth) << "width " << c.textWidth;
    EXPECT_EQ(area.textPageCount, static_cast<int32_t>(c.offsets.size()));
}

TEST(PageGeneration, HorizontalRollCutsTheLineIntoSlices) {
    const RollCase cases[] = {
        // Narrower than the area: no whole slice, one remainder slice of the text plus a blank.
        {40.4, 64, {0}, 45},
        // Exactly two widths: two slices, and the last width keeps its former value.
        {128.0, 64, {0, 64}, 777},
        // The count truncates while the remainder test rounds: 127.6 makes one slice only.
        {127.6, 64, {0}, 777},
        {150.0, 64, {0, 64, 128}, 150 % 64 + 5},
        // 70,000 pixels count as 4,464 for the slices, while the remainder sees 70,000.
        {70000.0, 1000, {0, 1000, 2000, 3000}, 777},
        {70000.0, 3000, {0, 3000}, 4464 % 3000 + 5},
    };
    for (const RollCase &c : cases)
        expectRoll(kEffectRoll, c);
}

TEST(PageGeneration, ReverseRollPutsTheRemainderFirst) {
    const RollCase cases[] = {
        // 150 in 64: the first slice shows the first 22 pixels at its right edge, then whole
        // slices follow from there.
        {150.0, 64, {-42, 22, 86}, 22 + 5},
        {128.0, 64, {0, 64}, 64},
        {40.4, 64, {-24}, 40 + 5},
        {70000.0, 3000, {-1536, 1464}, 1464 + 5},
    };
    for (const RollCase &c : cases)
        expectRoll(kEffectRollReverse, c);
}

TEST(PageGeneration, SingleLineTextRollsAsOneStringOrGivesOnePagePerLine) {
    PicturesArea area;
    place(area, 0, 0, 64, 16);
    area.textContent = "ab\ncd";
    area._subString = ucs2Lines({"ab", "cd"});
    area.displayRecord.displayEffect = kEffectRoll;
    RecordingCanvas canvas(area);
    canvas.widths["ab\ncd"] = 100.0;
    area.renderPages(canvas);
    // The line end goes to the painter with the text; the lines are not used.
    EXPECT_EQ(canvas.rolled, (std::vector<std::string>{"ab\ncd", "ab\ncd"}));
    EXPECT_TRUE(canvas.pages.empty());

    for (const uint8_t effect : {0, 6, 40, 99}) {
        RecordingCanvas lines(area);
        area.displayRecord.displayEffect = effect;
        area.renderPages(lines);
        EXPECT_EQ(lines.pages,
                  (std::vector<std::vector<std::string>>{ucs2Lines({"ab"}), ucs2Lines({"cd"})}));
        EXPECT_EQ(area.pageCount, 2u);
    }
}

TEST(PageGeneration, MultiLineEffectsChooseOrderOrAColumn) {
    PicturesArea area;
    place(area, 0, 0, 48, 16);
    area.styleRecord.arrMode = MULTILINE;
    area.textContent = "abc";
    area._subString = ucs2Lines({"a", "b", "c"});
    area.PageString = {ucs2Lines({"a", "b"}), ucs2Lines({"c"})};
    const auto inOrder = area.PageString;
    const std::vector<std::vector<std::string>> reversed{inOrder[1], inOrder[0]};

    for (const uint8_t effect : {0, 4, 38, 6, 40}) {
        RecordingCanvas canvas(area);
        area.displayRecord.displayEffect = effect;
        area.lastPageWidth = 777;
        area.renderPages(canvas);
        EXPECT_EQ(area.lastPageWidth, 48);
        if (effect == 6 || effect == 40) {
            EXPECT_EQ(canvas.columns, std::vector{area._subString});
            EXPECT_TRUE(canvas.pages.empty());
        } else {
            EXPECT_EQ(canvas.pages, effect == 38 ? reversed : inOrder) << int(effect);
            EXPECT_TRUE(canvas.columns.empty());
        }
    }
}

TEST(PageGeneration, PicturesFollowTheTextAndMissingOnesAreSkipped) {
    test::writePng("one.png", 4, 4, 1, 0, 0);
    test::writePng("three.png", 4, 4, 0, 1, 0);
    PicturesArea area;
    place(area, 0, 0, 32, 8);
    area.textContent = "t";
    area._subString = ucs2Lines({"t"});
    area.addPicture(0, "one.png", {});
    area.addPicture(1, "gone.png", {});
    area.addPicture(2, "three.png", {});
    area.addPicture(3, "gone.png", {});

    RecordingCanvas canvas(area);
    test::StdoutCapture out;
    area.renderPages(canvas);
    // The number is 0 whichever picture is missing.
    EXPECT_EQ(out.text(), "Error:The picture does not exist.ID:0\n"
                          "Error:The picture does not exist.ID:0\n");
    EXPECT_EQ(canvas.pictures, (std::vector<std::string>{"one.png", "three.png"}));
    EXPECT_EQ(area.textPageCount, 1);
    EXPECT_EQ(area.pageCount, 3u);
    EXPECT_EQ(area.encodedPages.size(), 3u);
}

TEST(PageGeneration, PagesAreEncodedAtTheDrawableLeftEdge) {
    g_screenColor = kScreenOneColor;
    g_tranPixelMode = kTranPixelBits8;
    g_doubleColor = 1;
    test::writePng("p.png", 2, 2, 1, 1, 1);
    PicturesArea area;
    area.addPicture(0, "p.png", {});
    area.addPicture(1, "p.png", {});

    // At x 5 with width 20 the rows are padded to 32 positions: 4 bytes a row, all dark.
    place(area, 5, 0, 20, 8);
    RecordingCanvas canvas(area);
    area.renderPages(canvas);
    ASSERT_EQ(area.encodedPages.size(), 2u);
    EXPECT_EQ(area.encodedPages[0], std::vector<uint8_t>(32, 0xFF));
    EXPECT_EQ(area.encodedTotal, 64u);

    // A frame strip 2 high moves the page to x 7 and leaves 16 × 4: rows of 24 positions.
    test::writePng("strip.png", 10, 2, 1, 0, 0);
    area.frameObject = std::make_unique<PicturesAreaFrame>();
    area.frameObject->load("strip.png");
    area.frameEnabled = 1;
    RecordingCanvas framed(area);
    area.renderPages(framed);
    EXPECT_EQ(area.pageLeft, 7u);
    EXPECT_EQ(area.encodedPages[1], std::vector<uint8_t>(12, 0xFF));
    EXPECT_EQ(area.encodedTotal, 24u);

    // An area with neither text nor pictures renders nothing, and old pages are gone.
    area.m_PageList.clear();
    area.renderPages();
    EXPECT_EQ(area.pageCount, 0u);
    EXPECT_TRUE(area.encodedPages.empty());
    EXPECT_EQ(area.encodedTotal, 0u);
}

// ---- Real painting ----

TextStyleRecord yellowText(uint32_t arrMode) {
    TextStyleRecord s;
    s.arrMode = arrMode;
    s.fontSize = 12;
    s.fontColor = 3; // yellow: red and green full, no blue
    s.fontBold = 1;
    return s;
}

TEST(PageGeneration, TextPixelsAreDarkOrTheTextColour) {
    const uint32_t kYellow = 0xFFFFFF00; // alpha, red, green, blue
    for (const uint32_t arrMode : {SINGLELINE, MULTILINE}) {
        for (const uint8_t effect : {0, 4, 6, 38}) {
            PicturesArea area;
            place(area, 0, 0, 40, 20);
            PageDisplayRecord display;
            display.displayEffect = effect;
            area.addTextByPath("Hello, world\n\xC4\xE3\xBA\xC3 line two", test::kWenQuanYi,
                               yellowText(arrMode), display);
            area.renderPages();
            ASSERT_GT(area.pageBitmaps.size(), 1u);
            std::size_t lit = 0;
            for (const PageBitmap &page : area.pageBitmaps) {
                ASSERT_EQ(page.size(), 40u * 20u * 4u);
                for (std::size_t i = 0; i < page.size(); i += 4) {
                    const uint32_t pixel = static_cast<uint32_t>(page[i]) |
                                           static_cast<uint32_t>(page[i + 1]) << 8 |
                                           static_cast<uint32_t>(page[i + 2]) << 16 |
                                           static_cast<uint32_t>(page[i + 3]) << 24;
                    ASSERT_TRUE(pixel == 0 || pixel == kYellow)
                        << std::hex << pixel << " mode " << arrMode << " effect " << int(effect);
                    lit += pixel == kYellow ? 1 : 0;
                }
            }
            EXPECT_GT(lit, 40u) << "mode " << arrMode << " effect " << int(effect);
        }
    }
}

TEST(PageGeneration, PreviewOutOfRangeShowsTheLastPage) {
    PicturesArea area;
    place(area, 0, 0, 64, 20); // one row of 12-point text per page
    area.addTextByPath("A\nB\nC", test::kDejaVu, yellowText(MULTILINE), {});
    ASSERT_EQ(area.PageString.size(), 3u);

    uint32_t length = 0;
    uint16_t count = 0;
    ASSERT_EQ(area.getOnePage(2, &length, &count), 0);
    const std::string third = area.pngBytes;
    ASSERT_EQ(area.getOnePage(0, &length, &count), 0);
    const std::string first = area.pngBytes;
    EXPECT_NE(first, third);
    {
        test::StdoutCapture out;
        EXPECT_EQ(area.getOnePage(1000, &length, &count), 0);
        EXPECT_EQ(out.text(), "Error:pageNum out of range.\n");
    }
    EXPECT_EQ(area.pngBytes, third);
    EXPECT_EQ(length, third.size());
    EXPECT_EQ(count, 3);
    EXPECT_EQ(area.pngData, reinterpret_cast<const uint8_t *>(area.pngBytes.data()));
    const test::DecodedPng png = test::decodePng(area.pngBytes);
    EXPECT_EQ(png.width, 64);
    EXPECT_EQ(png.height, 20);

    // A single-line text gives its lines as pages and a count of 0.
    area.addTextByPath("A\nB\nC", test::kDejaVu, yellowText(SINGLELINE), {});
    {
        test::StdoutCapture out;
        EXPECT_EQ(area.getOnePage(3, &length, &count), 0);
        EXPECT_EQ(out.text(), "Error:pageNum out of range.\n");
    }
    EXPECT_EQ(count, 0);
    EXPECT_GT(length, 0u);
}

TEST(PageGeneration, PreviewOfTextWithPicturesShowsThePicture) {
    test::writePng("red.png", 8, 4, 1, 0, 0);
    test::writePng("blue.png", 8, 4, 0, 0, 1);
    PicturesArea area;
    place(area, 0, 0, 16, 8);
    area.addTextByPath("A\nB", test::kDejaVu, yellowText(MULTILINE), {});
    area.addPicture(0, "red.png", {});
    area.addPicture(1, "blue.png", {});

    uint32_t length = 0;
    uint16_t count = 9;
    // Page 1 is read as a picture index, not as the text's second page.
    ASSERT_EQ(area.getOnePage(1, &length, &count), 0);
    test::DecodedPng png = test::decodePng(area.pngBytes);
    ASSERT_EQ(png.width, 16);
    ASSERT_EQ(png.height, 8);
    EXPECT_EQ(png.at(0, 0), 0xFF0000FFu); // blue, stretched over the whole page
    EXPECT_EQ(png.at(15, 7), 0xFF0000FFu);
    EXPECT_EQ(length, area.pngBytes.size());
    EXPECT_EQ(count, 0);

    // Beyond the pictures: the last one.
    {
        test::StdoutCapture out;
        ASSERT_EQ(area.getOnePage(7, &length, &count), 0);
        EXPECT_EQ(out.text(), "Error:pageNum out of range.\n");
    }
    EXPECT_EQ(test::decodePng(area.pngBytes).at(3, 3), 0xFF0000FFu);

    // A missing picture at the asked place leaves the text's page; a lowered page number
    // is what picks the picture.
    PicturesArea textOnly;
    place(textOnly, 0, 0, 16, 8);
    textOnly.addTextByPath("A\nB", test::kDejaVu, yellowText(MULTILINE), {});
    ASSERT_EQ(textOnly.getOnePage(1, &length, &count), 0);
    area.m_PageList = {"red.png", "gone.png"};
    {
        test::StdoutCapture out;
        ASSERT_EQ(area.getOnePage(5, &length, &count), 0);
        EXPECT_EQ(out.text(), "Error:pageNum out of range.\nError:The picture is not exist.\n");
    }
    EXPECT_EQ(area.pngBytes, textOnly.pngBytes);
    EXPECT_EQ(count, 0);
}

TEST(PageGeneration, PreviewOfMissingPicturesFails) {
    test::writePng("red.png", 8, 4, 1, 0, 0);
    PicturesArea area;
    place(area, 0, 0, 16, 8);
    area.addPicture(0, "red.png", {});
    area.addPicture(1, "gone.png", {});
    uint32_t length = 0;
    uint16_t count = 0;
    {
        test::StdoutCapture out;
        EXPECT_EQ(area.getOnePage(2, &length, &count), -1);
        EXPECT_EQ(out.text(), "Error:The last picture is not exist.\n");
    }
    {
        // Nothing shown before: the preview is empty.
        test::StdoutCapture out;
        EXPECT_EQ(area.getOnePage(1, &length, &count), -1);
        EXPECT_EQ(out.text(),
                  "Error:The picture is not exist.\nError:unable to generate pictures.\n");
    }
    ASSERT_EQ(area.getOnePage(0, &length, &count), 0);
    EXPECT_EQ(test::decodePng(area.pngBytes).at(8, 4), 0xFFFF0000u);
}

TEST(PageGeneration, PreviewOfAnEmptyAreaPrintsItsDamagedLine) {
    PicturesArea area;
    place(area, 0, 0, 16, 8);
    uint32_t length = 5;
    uint16_t count = 5;
    test::StdoutCapture out;
    EXPECT_EQ(area.getOnePage(0, &length, &count), -1);
    const auto expected = test::hex("50616765537472696E67 E380 3F 5F737562537472696E67 E380 3F"
                                    "6D5F506167654C697374 E380 3F 616C6C206973204E554C4C2E 0A");
    EXPECT_EQ(out.text(), std::string(expected.begin(), expected.end()));
    EXPECT_EQ(length, 5u);
    EXPECT_EQ(area.pngData, nullptr);
}

} // namespace
} // namespace zel

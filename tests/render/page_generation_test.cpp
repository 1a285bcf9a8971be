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
using Log = std::vector<std::string>;

// Logs what page generation asks to paint, lines as ASCII joined by "|", and leaves a dark
// page for each request. Texts measure as `widths` says; "1 1" and "11" make a blank of 5.
class RecordingCanvas final : public PageCanvas {
  public:
    explicit RecordingCanvas(PicturesArea &area) : m_area(area) {}
    double measureGbkText(std::string gbk) override {
        return gbk == "1 1" ? 27.7 : gbk == "11" ? 22.0 : widths.at(gbk);
    }
    void paintRollSlice(std::string gbk, double offset) override {
        add("roll " + gbk + " " + std::to_string(static_cast<int>(offset)));
    }
    void paintOneLine(std::string ucs2) override { add("line " + ascii({ucs2})); }
    void paintLinesPage(std::vector<std::string> lines) override { add("page " + ascii(lines)); }
    void paintVerticalRoll(std::vector<std::string> lines) override {
        add("column " + ascii(lines));
    }
    void paintPicture(std::string path) override { add("picture " + path); }

    std::map<std::string, double> widths;
    Log log;

  private:
    static std::string ascii(const std::vector<std::string> &lines) {
        std::string out;
        for (const std::string &line : lines) {
            if (!out.empty()) out += '|';
            for (std::size_t i = 0; i < line.size(); i += 2)
                out += line[i];
        }
        return out;
    }
    void add(std::string entry) {
        log.push_back(std::move(entry));
        const auto w = static_cast<std::size_t>(std::max(0, m_area.drawWidth));
        const auto h = static_cast<std::size_t>(std::max(0, m_area.drawHeight));
        m_area.pageBitmaps.emplace_back(w * h * 4, 0);
    }
    PicturesArea &m_area;
};

struct RollCase {
    double textWidth;
    uint16_t drawWidth;
    Log slices;
    uint16_t lastPageWidth; // 777 is the value before the render
};

void expectRolls(uint8_t effect, std::initializer_list<RollCase> cases) {
    for (const RollCase &c : cases) {
        PicturesArea area;
        place(area, 0, 0, c.drawWidth, 16);
        area.textContent = "t";
        area.displayRecord.displayEffect = effect;
        area.lastPageWidth = 777;
        RecordingCanvas canvas(area);
        canvas.widths["t"] = c.textWidth;
        area.renderPages(canvas);
        EXPECT_EQ(canvas.log, c.slices) << c.textWidth << " in " << c.drawWidth;
        EXPECT_EQ(area.lastPageWidth, c.lastPageWidth) << c.textWidth << " in " << c.drawWidth;
        EXPECT_EQ(area.textPageCount, static_cast<int32_t>(c.slices.size()));
    }
}

TEST(PageGeneration, HorizontalRollCutsTheLineIntoSlices) {
    expectRolls(kEffectRoll,
                {// Narrower than the area: one slice, and the text's width plus a blank.
                 {40.4, 64, {"roll t 0"}, 45},
                 // Exactly two widths: two slices, the last width keeps its former value.
                 {128.0, 64, {"roll t 0", "roll t 64"}, 777},
                 // The count truncates while the remainder test rounds.
                 {127.6, 64, {"roll t 0"}, 777},
                 {150.0, 64, {"roll t 0", "roll t 64", "roll t 128"}, 22 + 5},
                 // 70,000 pixels count as 4,464 for the slices; the remainder sees 70,000.
                 {70000.0, 1000, {"roll t 0", "roll t 1000", "roll t 2000", "roll t 3000"}, 777},
                 {70000.0, 3000, {"roll t 0", "roll t 3000"}, 4464 % 3000 + 5}});
}

TEST(PageGeneration, ReverseRollPutsTheRemainderFirst) {
    expectRolls(kEffectRollReverse,
                {// The first slice shows the text's first 22 pixels at its right edge.
                 {150.0, 64, {"roll t -42", "roll t 22", "roll t 86"}, 22 + 5},
                 {128.0, 64, {"roll t 0", "roll t 64"}, 64},
                 {40.4, 64, {"roll t -24"}, 40 + 5},
                 {70000.0, 3000, {"roll t -1536", "roll t 1464"}, 1464 + 5}});
}

TEST(PageGeneration, EffectsChooseSlicesLinesPagesOrAColumn) {
    PicturesArea area;
    place(area, 0, 0, 48, 16);
    area.textContent = "ab\ncd";
    area._subString = ucs2Lines({"ab", "cd"});
    area.PageString = {ucs2Lines({"ab"}), ucs2Lines({"cd"})};
    const auto run = [&](uint32_t arrMode, uint8_t effect) {
        area.styleRecord.arrMode = arrMode;
        area.displayRecord.displayEffect = effect;
        area.lastPageWidth = 777;
        RecordingCanvas canvas(area);
        canvas.widths["ab\ncd"] = 40.0;
        area.renderPages(canvas);
        return canvas.log;
    };
    // A single line rolls as one string, line end and all; other effects give a page a line.
    EXPECT_EQ(run(SINGLELINE, 4), Log{"roll ab\ncd 0"});
    for (const uint8_t effect : {0, 6, 40, 99}) {
        EXPECT_EQ(run(SINGLELINE, effect), (Log{"line ab", "line cd"})) << int(effect);
    }
    EXPECT_EQ(run(MULTILINE, 0), (Log{"page ab", "page cd"}));
    EXPECT_EQ(run(MULTILINE, 4), (Log{"page ab", "page cd"}));
    EXPECT_EQ(run(MULTILINE, 38), (Log{"page cd", "page ab"}));
    EXPECT_EQ(run(MULTILINE, 6), Log{"column ab|cd"});
    EXPECT_EQ(run(MULTILINE, 40), Log{"column ab|cd"});
    EXPECT_EQ(area.lastPageWidth, 48);
}

TEST(PageGeneration, PicturesFollowTheTextAndPagesAreEncodedAtTheDrawableLeftEdge) {
    g_screenColor = kScreenOneColor;
    g_tranPixelMode = kTranPixelBits8;
    test::writePng("p.png", 2, 2, 1, 1, 1);
    PicturesArea area;
    place(area, 5, 0, 20, 8);
    area.textContent = "t";
    area._subString = ucs2Lines({"t"});
    for (const char *path : {"p.png", "gone.png", "p.png", "gone.png"}) {
        area.addPicture(static_cast<uint16_t>(area.m_PageList.size()), path, {});
    }
    RecordingCanvas canvas(area);
    {
        test::StdoutCapture out;
        area.renderPages(canvas);
        // The number is 0 whichever picture is missing.
        EXPECT_EQ(out.text(), "Error:The picture does not exist.ID:0\n"
                              "Error:The picture does not exist.ID:0\n");
    }
    EXPECT_EQ(canvas.log, (Log{"line t", "picture p.png", "picture p.png"}));
    EXPECT_EQ(area.textPageCount, 1);
    EXPECT_EQ(area.pageCount, 3u);
    // At x 5 with width 20 the rows are padded to 32 positions: 4 bytes a row, all dark.
    ASSERT_EQ(area.encodedPages.size(), 3u);
    EXPECT_EQ(area.encodedPages[2], std::vector<uint8_t>(32, 0xFF));
    EXPECT_EQ(area.encodedTotal, 96u);

    // A frame strip 2 high moves the page to x 7 and leaves 16 × 4: rows of 24 positions.
    test::writePng("strip.png", 10, 2, 1, 0, 0);
    area.frameObject = std::make_unique<PicturesAreaFrame>();
    area.frameObject->load("strip.png");
    area.frameEnabled = 1;
    area.m_PageList.clear();
    RecordingCanvas framed(area);
    area.renderPages(framed);
    EXPECT_EQ(area.pageLeft, 7u);
    EXPECT_EQ(area.encodedPages.at(0), std::vector<uint8_t>(12, 0xFF));

    // Neither text nor pictures: no pages, and the old ones are gone.
    area.textContent.clear();
    area.renderPages();
    EXPECT_EQ(area.pageCount, 0u);
    EXPECT_TRUE(area.encodedPages.empty());
    EXPECT_EQ(area.encodedTotal, 0u);
}

// ---- Real painting ----

TextStyleRecord yellow(uint32_t arrMode) {
    TextStyleRecord s;
    s.arrMode = arrMode;
    s.fontSize = 12;
    s.fontColor = 3; // red and green full, no blue
    s.fontBold = 1;
    return s;
}

TEST(PageGeneration, PreviewOutOfRangeShowsTheLastPage) {
    PicturesArea area;
    place(area, 0, 0, 64, 20); // one row of 12-point text per page
    area.addTextByPath("A\nB\nC", test::kDejaVu, yellow(MULTILINE), {});
    ASSERT_EQ(area.PageString.size(), 3u);
    uint32_t length = 0;
    uint16_t count = 0;
    ASSERT_EQ(area.getOnePage(2, &length, &count), 0);
    const std::string third = area.pngBytes;
    ASSERT_EQ(area.getOnePage(0, &length, &count), 0);
    EXPECT_NE(area.pngBytes, third);
    {
        test::StdoutCapture out;
        EXPECT_EQ(area.getOnePage(1000, &length, &count), 0);
        EXPECT_EQ(out.text(), "Error:pageNum out of range.\n");
    }
    EXPECT_EQ(area.pngBytes, third);
    EXPECT_EQ(length, third.size());
    EXPECT_EQ(count, 3);
    EXPECT_EQ(area.pngData, reinterpret_cast<const uint8_t *>(area.pngBytes.data()));
    EXPECT_EQ(test::decodePng(area.pngBytes).width, 64);

    // A single-line text previews its lines, with a count of 0.
    area.addTextByPath("A\nB\nC", test::kDejaVu, yellow(SINGLELINE), {});
    test::StdoutCapture out;
    EXPECT_EQ(area.getOnePage(3, &length, &count), 0);
    EXPECT_EQ(out.text(), "Error:pageNum out of range.\n");
    EXPECT_EQ(count, 0);
    EXPECT_GT(length, 0u);
}

TEST(PageGeneration, PreviewOfTextWithPicturesShowsThePicture) {
    test::writePng("red.png", 8, 4, 1, 0, 0);
    test::writePng("blue.png", 8, 4, 0, 0, 1);
    PicturesArea area;
    place(area, 0, 0, 16, 8); // the text makes two pages
    area.addTextByPath("A\nB", test::kDejaVu, yellow(MULTILINE), {});
    area.addPicture(0, "red.png", {});
    area.addPicture(1, "blue.png", {});
    uint32_t length = 0;
    uint16_t count = 9;

    // Page 1 is read as a picture index, and a page number that the text lowered to its last
    // page picks that picture too.
    for (const uint32_t page : {1u, 7u}) {
        test::StdoutCapture out;
        ASSERT_EQ(area.getOnePage(page, &length, &count), 0);
        EXPECT_EQ(out.text(), page == 7 ? "Error:pageNum out of range.\n" : "");
        const test::DecodedPng png = test::decodePng(area.pngBytes);
        ASSERT_EQ(png.width, 16);
        EXPECT_EQ(png.at(8, 4), 0xFF0000FFu); // blue, stretched over the page
        EXPECT_EQ(length, area.pngBytes.size());
        EXPECT_EQ(count, 0);
    }

    // A missing picture at that place leaves the text's page.
    PicturesArea textOnly;
    place(textOnly, 0, 0, 16, 8);
    textOnly.addTextByPath("A\nB", test::kDejaVu, yellow(MULTILINE), {});
    ASSERT_EQ(textOnly.getOnePage(1, &length, &count), 0);
    area.m_PageList = {"red.png", "gone.png"};
    test::StdoutCapture out;
    ASSERT_EQ(area.getOnePage(1, &length, &count), 0);
    EXPECT_EQ(out.text(), "Error:The picture is not exist.\n");
    EXPECT_EQ(area.pngBytes, textOnly.pngBytes);
}

TEST(PageGeneration, PreviewFailures) {
    PicturesArea area;
    place(area, 0, 0, 16, 8);
    uint32_t length = 5;
    uint16_t count = 5;
    const auto failure = [&](uint32_t page) {
        test::StdoutCapture out;
        EXPECT_EQ(area.getOnePage(page, &length, &count), -1);
        return out.text();
    };
    // Nothing at all: a line whose separators are a damaged ideographic comma.
    const auto damaged = test::hex("50616765537472696E67 E3803F 5F737562537472696E67 E3803F"
                                   "6D5F506167654C697374 E3803F 616C6C206973204E554C4C2E 0A");
    EXPECT_EQ(failure(0), std::string(damaged.begin(), damaged.end()));
    EXPECT_EQ(area.pngData, nullptr);

    test::writePng("red.png", 8, 4, 1, 0, 0);
    area.addPicture(0, "red.png", {});
    area.addPicture(1, "gone.png", {});
    EXPECT_EQ(failure(2), "Error:The last picture is not exist.\n");
    EXPECT_EQ(failure(1), "Error:The picture is not exist.\nError:unable to generate pictures.\n");
    EXPECT_EQ(length, 5u);
    ASSERT_EQ(area.getOnePage(0, &length, &count), 0);
    EXPECT_EQ(test::decodePng(area.pngBytes).at(8, 4), 0xFFFF0000u);
}

} // namespace
} // namespace zel

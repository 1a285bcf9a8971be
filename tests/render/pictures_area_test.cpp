#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "render/pictures_area.h"
#include "render_test_support.h"
#include "support/capture.h"

namespace zel {
namespace {

using test::place;
using test::ucs2Lines;
using Paths = std::vector<std::string>;

Paths playList(const PicturesArea &area) {
    return {area.m_PageList.begin(), area.m_PageList.end()};
}

TextStyleRecord style(uint32_t arrMode, uint16_t fontSize) {
    TextStyleRecord s;
    s.arrMode = arrMode;
    s.fontSize = fontSize;
    return s;
}

TEST(PicturesArea, PictureIdIsAPlaceInThePlayList) {
    const char *a = "a.png";
    PageDisplayRecord first;
    first.displayEffect = 1;

    // Identifier 0 each time: each goes in front, so they play in reverse order of adding,
    // while the details keep the adding order. The caller's pointers are kept, not copies.
    PicturesArea front;
    front.addPicture(0, a, first);
    front.addPicture(0, "b.png", {});
    front.addPicture(0, "c.png", {});
    EXPECT_EQ(playList(front), (Paths{"c.png", "b.png", "a.png"}));
    EXPECT_EQ(front.m_PageList.back(), a);
    EXPECT_EQ(front.pictureDetails.at(0).record.displayEffect, 1);

    // Identifier 5 each time on an empty list: place 5 is never reached, all append.
    PicturesArea back;
    for (const char *path : {"a.png", "b.png", "c.png"})
        back.addPicture(5, path, {});
    EXPECT_EQ(playList(back), (Paths{"a.png", "b.png", "c.png"}));
    EXPECT_EQ(back.pictureDetails.at(2).picID, 5);
    // An existing place pushes the pictures from there one place back.
    back.addPicture(1, "d.png", {});
    EXPECT_EQ(playList(back), (Paths{"a.png", "d.png", "b.png", "c.png"}));
}

TEST(PicturesArea, TextOperationsKeepStyleAndFontAsTold) {
    PicturesArea area;
    place(area, 0, 0, 64, 32);
    const PageDisplayRecord display;
    TextStyleRecord s = style(MULTILINE, 12);
    area.addText("x", "\xCB\xCE\xCC\xE5", s, display); // "宋体" in GBK, kept in UTF-8
    EXPECT_EQ(area.fontName, "\xE5\xAE\x8B\xE4\xBD\x93");
    EXPECT_EQ(area.fontPixelSize, 16.0);

    // A file clears the family; changing the text keeps the file.
    area.addTextByPath("x", test::kDejaVu, s, display);
    EXPECT_EQ(area.fontName, "");
    s.fontSize = 16;
    area.changeText("yy", s, display);
    EXPECT_EQ(area.fontPath, test::kDejaVu);
    EXPECT_EQ(area.fontPixelSize, 21.0);
    EXPECT_EQ(area._subString, ucs2Lines({"yy"}));
    area.addText("x", "DejaVu Sans", s, display);
    EXPECT_EQ(area.fontPath, "");
}

TEST(PicturesArea, LayoutBreaksLinesAndReportsWhatIsMissing) {
    PicturesArea area;
    place(area, 0, 0, 200, 100);
    const auto layout = [&](const char *text, uint32_t arrMode) {
        test::StdoutCapture out;
        area.addTextByPath(text, test::kDejaVu, style(arrMode, 12), {});
        return out.text();
    };
    EXPECT_EQ(layout("", MULTILINE), "Error:no string has been added.\n");
    EXPECT_TRUE(area._subString.empty());

    // Arrangement 7 is taken, and stored, as MULTILINE.
    EXPECT_EQ(layout("a\r\nb", 7), "Error: no arrMode is specified.Use MULTILINE Mode\n");
    EXPECT_EQ(area.styleRecord.arrMode, MULTILINE);
    EXPECT_EQ(area._subString, ucs2Lines({"a", "", "b"}));
    EXPECT_EQ(area.PageString, std::vector<std::vector<std::string>>{area._subString});

    // SINGLELINE breaks the same way but makes no pages.
    EXPECT_EQ(layout("a\r\nb\n", SINGLELINE), "");
    EXPECT_EQ(area._subString, ucs2Lines({"a", "", "b", ""}));
    EXPECT_TRUE(area.PageString.empty());

    // An area lower than its 16-pixel font still gets every line, each on a page of its own.
    place(area, 0, 0, 200, 5);
    layout("one\ntwo\nthree", MULTILINE);
    EXPECT_EQ(area.PageString.size(), 3u);
    EXPECT_EQ(area.currentLines, ucs2Lines({"three"}));
}

TEST(PicturesArea, FrameTakesItsStripHeightOnEverySide) {
    test::writePng("strip.png", 10, 2, 1, 0, 0);
    PicturesArea area;
    place(area, 3, 4, 64, 32);
    // The strip's width plays no part, and there is no top offset.
    area.frameObject = std::make_unique<PicturesAreaFrame>();
    area.frameObject->load("strip.png");
    ASSERT_NE(area.frameObject->framePixels, nullptr);
    EXPECT_EQ(area.frameObject->frameLength, 10);
    area.frameEnabled = 1;
    area.compute_draw_rect();
    EXPECT_EQ(area.pageLeft, 5u);
    EXPECT_EQ(area.drawWidth, 60);
    EXPECT_EQ(area.drawHeight, 28);

    // A preview recomputes width and height but leaves the left edge alone.
    area.frameEnabled = 0;
    {
        test::StdoutCapture quiet;
        area.getOnePage(0, nullptr, nullptr);
    }
    EXPECT_EQ(area.drawWidth, 64);
    EXPECT_EQ(area.pageLeft, 5u);

    PicturesAreaFrame notPng;
    notPng.load("missing.png");
    EXPECT_EQ(notPng.framePixels, nullptr);
    EXPECT_EQ(notPng.frameThickness, 0);
}

} // namespace
} // namespace zel

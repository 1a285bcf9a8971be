#include <gtest/gtest.h>

#include <iterator>
#include <string>
#include <vector>

#include "render/pictures_area.h"
#include "render_test_support.h"
#include "support/capture.h"

namespace zel {
namespace {

using test::place;
using test::ucs2Lines;

std::vector<std::string> playList(const PicturesArea &area) {
    return {area.m_PageList.begin(), area.m_PageList.end()};
}

TextStyleRecord style(uint32_t arrMode, uint16_t fontSize) {
    TextStyleRecord s;
    s.arrMode = arrMode;
    s.fontSize = fontSize;
    s.fontColor = 7;
    return s;
}

TEST(PicturesArea, PictureIdIsAPlaceInThePlayList) {
    const char *a = "a.png";
    const char *b = "b.png";
    const char *c = "c.png";
    const char *d = "d.png";
    PageDisplayRecord ra, rb, rc;
    ra.displayEffect = 1;
    rb.displayEffect = 2;
    rc.displayEffect = 3;

    // Identifier 0 each time: each goes in front, so they play in reverse order of adding,
    // while the details keep the adding order.
    PicturesArea front;
    front.addPicture(0, a, ra);
    front.addPicture(0, b, rb);
    front.addPicture(0, c, rc);
    EXPECT_EQ(playList(front), (std::vector<std::string>{"c.png", "b.png", "a.png"}));
    ASSERT_EQ(front.pictureDetails.size(), 3u);
    EXPECT_EQ(front.pictureDetails[0].record.displayEffect, 1);
    EXPECT_EQ(front.pictureDetails[2].record.displayEffect, 3);
    // The very pointers are kept, not copies of the strings.
    EXPECT_EQ(front.m_PageList.front(), c);

    // Identifier 5 each time on an empty list: no place 5 is ever reached, all append.
    PicturesArea back;
    back.addPicture(5, a, ra);
    back.addPicture(5, b, rb);
    back.addPicture(5, c, rc);
    EXPECT_EQ(playList(back), (std::vector<std::string>{"a.png", "b.png", "c.png"}));
    EXPECT_EQ(back.pictureDetails[1].picID, 5);

    // An existing place pushes the pictures from there one place back.
    back.addPicture(1, d, ra);
    EXPECT_EQ(playList(back), (std::vector<std::string>{"a.png", "d.png", "b.png", "c.png"}));
}

TEST(PicturesArea, TextOperationsKeepStyleAndFontAsTold) {
    PicturesArea area;
    place(area, 0, 0, 64, 32);
    PageDisplayRecord display;
    display.displayEffect = 9;
    TextStyleRecord s = style(MULTILINE, 12);
    s.fontColor = 0x123456;

    // The family name arrives in GBK and is kept in UTF-8: "宋体".
    area.addText("x", "\xCB\xCE\xCC\xE5", s, display);
    EXPECT_EQ(area.fontName, "\xE5\xAE\x8B\xE4\xBD\x93");
    EXPECT_EQ(area.fontPixelSize, 16.0); // 12 points
    EXPECT_EQ(area.fontColor, 0x123456u);
    EXPECT_EQ(area.displayRecord.displayEffect, 9);

    // A file clears the family; changing the text keeps the file.
    area.addTextByPath("x", test::kDejaVu, s, display);
    EXPECT_EQ(area.fontName, "");
    EXPECT_EQ(area.fontPath, test::kDejaVu);
    s.fontSize = 16;
    area.changeText("yy", s, display);
    EXPECT_EQ(area.fontPath, test::kDejaVu);
    EXPECT_EQ(area.textContent, "yy");
    EXPECT_EQ(area.fontPixelSize, 21.0); // 16 points
    EXPECT_EQ(area._subString, ucs2Lines({"yy"}));

    // A family after a file clears the file again.
    area.addText("x", "DejaVu Sans", s, display);
    EXPECT_EQ(area.fontPath, "");
}

TEST(PicturesArea, LayoutReportsMissingTextAndUnknownArrangement) {
    PicturesArea area;
    place(area, 0, 0, 200, 100);
    {
        test::StdoutCapture out;
        area.addTextByPath("", test::kDejaVu, style(MULTILINE, 12), {});
        EXPECT_EQ(out.text(), "Error:no string has been added.\n");
    }
    EXPECT_TRUE(area._subString.empty());
    EXPECT_TRUE(area.PageString.empty());
    {
        // Arrangement 7 is read as MULTILINE and stored so.
        test::StdoutCapture out;
        area.addTextByPath("a\r\nb", test::kDejaVu, style(7, 12), {});
        EXPECT_EQ(out.text(), "Error: no arrMode is specified.Use MULTILINE Mode\n");
    }
    EXPECT_EQ(area.styleRecord.arrMode, MULTILINE);
    EXPECT_EQ(area._subString, ucs2Lines({"a", "", "b"}));
    ASSERT_EQ(area.PageString.size(), 1u);
    EXPECT_EQ(area.PageString[0], area._subString);

    // SINGLELINE breaks the same way but makes no pages.
    area.addTextByPath("a\r\nb\n", test::kDejaVu, style(SINGLELINE, 12), {});
    EXPECT_EQ(area._subString, ucs2Lines({"a", "", "b", ""}));
    EXPECT_TRUE(area.PageString.empty());
}

TEST(PicturesArea, AreaLowerThanItsFontStillGetsEveryLineOnAPageOfItsOwn) {
    PicturesArea area;
    place(area, 0, 0, 200, 5); // 12 points are 16 pixels
    area.addTextByPath("one\ntwo\nthree", test::kDejaVu, style(MULTILINE, 12), {});
    ASSERT_EQ(area.PageString.size(), 3u);
    EXPECT_EQ(area.PageString[0], ucs2Lines({"one"}));
    EXPECT_EQ(area.PageString[2], ucs2Lines({"three"}));
    EXPECT_EQ(area.currentLines, ucs2Lines({"three"}));

    // The same lines on a page tall enough for all of them share it.
    place(area, 0, 0, 200, 100);
    area.layoutText();
    ASSERT_EQ(area.PageString.size(), 1u);
    EXPECT_EQ(area.PageString[0].size(), 3u);
}

TEST(PicturesArea, FrameTakesItsStripHeightOnEverySide) {
    test::writePng("strip.png", 10, 2, 1, 0, 0);
    PicturesArea area;
    place(area, 3, 4, 64, 32);
    area.computeDrawRect();
    EXPECT_EQ(area.pageLeft, 3u);
    EXPECT_EQ(area.drawWidth, 64);
    EXPECT_EQ(area.drawHeight, 32);

    // The strip's width plays no part; there is no top offset.
    area.frameObject = std::make_unique<PicturesAreaFrame>();
    area.frameObject->load("strip.png");
    ASSERT_NE(area.frameObject->framePixels, nullptr);
    EXPECT_EQ(area.frameObject->frameThickness, 2);
    EXPECT_EQ(area.frameObject->frameLength, 10);
    area.frameEnabled = 1;
    area.computeDrawRect();
    EXPECT_EQ(area.pageLeft, 5u);
    EXPECT_EQ(area.drawWidth, 60);
    EXPECT_EQ(area.drawHeight, 28);

    // A preview recomputes width and height but leaves the left edge alone.
    area.frameEnabled = 0;
    area.getOnePage(0, nullptr, nullptr);
    EXPECT_EQ(area.drawWidth, 64);
    EXPECT_EQ(area.pageLeft, 5u);

    // A file that is no PNG leaves the holder empty.
    PicturesAreaFrame bad;
    bad.load("missing.png");
    EXPECT_EQ(bad.framePixels, nullptr);
    EXPECT_EQ(bad.frameThickness, 0);
}

} // namespace
} // namespace zel

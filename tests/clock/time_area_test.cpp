// The time area's content model, its preparation (units, table bytes, separators) and the
// digital preview.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "clock/clock_fixtures.h"
#include "render/render_test_support.h"

namespace zel {
namespace {

using namespace zel::test;

class TimeAreaTest : public ::testing::Test {
  protected:
    void SetUp() override { clock_screen(1, 0); }
};

// Which font a change keeps is asserted through the exported entries (ClockEntries).
TEST_F(TimeAreaTest, ContentPlacesTheAreaAndChangeStoresTheNewContent) {
    auto area = clock_area(clock_content(1, 0, 0, 0, 0, 0, 0, 12), 100, 20, 7);
    EXPECT_EQ(area->fontPixelSize, 16.0);
    EXPECT_EQ(area->pageLeft, 7u);
    EXPECT_EQ(area->drawWidth, 100);
    EXPECT_EQ(area->drawHeight, 20);

    TimeContent other = clock_content(0, 0, 1, 3, 1, 5, 1, 16);
    other.fontColor = 0x00FF00;
    area->changeContent(other);
    EXPECT_EQ(area->textColor, 0x00FF00u);
    EXPECT_EQ(area->timeContent, other);
}

TEST_F(TimeAreaTest, UnitsAndTableBytesFollowTheFormats) {
    struct Case {
        TimeContent content;
        uint32_t units;
        uint32_t digitCopies;
        bool week, meridiem;
    };
    const Case cases[] = {
        {clock_content(1, 0, 0, 0, 0, 0), 3, 3, false, false},
        {clock_content(1, 5, 0, 0, 0, 0), 2, 2, false, false},
        {clock_content(1, 6, 0, 0, 0, 0), 2, 2, false, false},
        {clock_content(1, 9, 0, 0, 0, 0), 3, 0, false, false}, // unknown: counted, no copies
        {clock_content(0, 0, 1, 1, 0, 0), 1, 0, true, false},
        {clock_content(0, 0, 0, 0, 1, 1), 3, 3, false, false},
        {clock_content(0, 0, 0, 0, 1, 3), 2, 2, false, false},
        {clock_content(0, 0, 0, 0, 1, 5), 3, 2, false, true},
        {clock_content(1, 7, 1, 3, 1, 4, 1), 7, 5, true, true},
        {clock_content(0, 0, 0, 0, 0, 0), 0, 0, false, false},
    };
    for (const Case &c : cases) {
        auto area = clock_area(c.content);
        area->prepareTimeArea();
        EXPECT_EQ(area->unitCount, c.units) << c.content.dateFormat << "/" << c.content.timeFormat;
        const uint32_t expected = c.digitCopies * area->digitTableSize +
                                  (c.week ? area->weekTableSize : 0) +
                                  (c.meridiem ? area->ampmTableSize : 0);
        EXPECT_EQ(area->tableBytes, expected);
    }
    // Nothing enabled: no separators and a dark background of 128 x 32 pixels.
    auto none = clock_area(clock_content(0, 0, 0, 0, 0, 0));
    none->prepareTimeArea();
    EXPECT_TRUE(none->fixedTexts.empty());
    EXPECT_EQ(none->encodedPicture, std::vector<uint8_t>(16 * 32, 0xFF));
}

TEST_F(TimeAreaTest, SeparatorsStandWhereTheirFormatsPutThem) {
    struct Case {
        uint32_t format;
        const char *sign; // measured for s
        std::vector<std::string> texts;
        // x of each separator as a + b·d + c·s, and the group width likewise
        std::vector<std::array<int32_t, 3>> xs;
        std::array<int32_t, 3> width;
    };
    const Case cases[] = {
        {0, "-", {"-", "-"}, {{{0, 4, 0}, {1, 6, 1}}}, {1, 8, 2}},
        {1, "/", {"/", "/"}, {{{1, 4, 0}, {1, 6, 1}}}, {2, 8, 2}},
        {2, "-", {"-", "-"}, {{{1, 2, 0}, {1, 4, 1}}}, {2, 8, 2}},
        {3, "/", {"/", "/"}, {{{1, 2, 0}, {1, 4, 1}}}, {2, 8, 2}},
        {4, "-", {"-"}, {{{1, 2, 0}}}, {1, 4, 1}},
        {5, "/", {"/"}, {{{1, 2, 0}}}, {1, 4, 1}},
    };
    for (const Case &c : cases) {
        auto area = clock_area(clock_content(1, c.format, 0, 0, 0, 0));
        area->prepareTimeArea();
        const int32_t d = static_cast<int32_t>(area->digitCellWidth);
        const int32_t s = area->gapWidth(c.sign);
        const int32_t top = centreOffset(32, 1, area->row_height());
        ASSERT_EQ(area->fixedTexts, c.texts) << c.format;
        for (std::size_t i = 0; i < c.xs.size(); ++i) {
            const auto [a, b, k] = c.xs[i];
            EXPECT_EQ(area->fixedPositions[i], (ClockPoint{a + b * d + k * s, top})) << c.format;
        }
        const auto [a, b, k] = c.width;
        EXPECT_EQ(area->lineWidth, a + b * d + k * s + area->gapWidth(" ")) << c.format;
    }

    // The time of day follows the date on one line: ":" of format 2 at line + 2d + 2, and the
    // blank of format 4 holds its place in the lists.
    auto area = clock_area(clock_content(1, 0, 0, 0, 1, 4));
    area->prepareTimeArea();
    const int32_t d = static_cast<int32_t>(area->digitCellWidth);
    const int32_t space = area->gapWidth(" ");
    const int32_t line = 2 * area->gapWidth("-") + 8 * d + 1 + space;
    const int32_t a = static_cast<int32_t>(area->ampmCellWidth);
    ASSERT_EQ(area->fixedTexts, (std::vector<std::string>{"-", "-", " ", ":"}));
    EXPECT_EQ(area->fixedPositions[2].x, line + a);
    EXPECT_EQ(area->fixedPositions[3].x, line + a + space + 2 * d);
    EXPECT_EQ(area->timeWidth, a + space + 4 * d + area->gapWidth(":"));
    EXPECT_EQ(area->lineWidth, line + area->timeWidth);
    EXPECT_TRUE(std::filesystem::exists("1-2-3.png"));
    EXPECT_TRUE(std::any_of(area->encodedPicture.begin(), area->encodedPicture.end(),
                            [](uint8_t b) { return b != 0xFF; }))
        << "the separators are lit on the background";
}

TEST_F(TimeAreaTest, PreviewLinesOfEveryFormat) {
    std::tm now{};
    now.tm_year = 2026 - 1900;
    now.tm_mon = 10;
    now.tm_mday = 15;
    now.tm_wday = 0; // a Sunday
    now.tm_hour = 13;
    now.tm_min = 45;
    now.tm_sec = 30;
    const char *const dates[] = {"2026-11-15",
                                 "2026/11/15",
                                 "15-11-2026",
                                 "15/11/2026",
                                 "11-15",
                                 "11/15",
                                 "11\xd4\xc2"
                                 "15\xc8\xd5",
                                 "2026\xc4\xea"
                                 "11\xd4\xc2"
                                 "15\xc8\xd5"};
    const char *const times[] = {"13:45:30",
                                 "13\xca\xb1"
                                 "45\xb7\xd6"
                                 "30\xc3\xeb",
                                 "13:45",
                                 "13\xca\xb1"
                                 "45\xb7\xd6",
                                 "PM 01:45",
                                 "01:45 PM"};
    const char *const weeks[] = {"Sunday", "Sun", "\xd0\xc7\xc6\xda\xc8\xd5"};
    uint32_t length = 0;
    uint16_t count = 0;
    for (uint32_t f = 0; f < 8; ++f) {
        auto area = clock_area(clock_content(1, f, 1, f % 3 + 1, 1, f % 6));
        ASSERT_EQ(area->getOnePage(now, 0, &length, &count), 0);
        EXPECT_EQ(area->previewLines,
                  (std::vector<std::string>{dates[f], weeks[f % 3], times[f % 6]}));
        EXPECT_EQ(count, 1);
        EXPECT_EQ(length, area->previewPng.size());
        const DecodedPng png = decodePng(area->previewPng);
        EXPECT_EQ(png.width, 128);
        EXPECT_EQ(png.height, 32);
    }

    // Unknown codes add no line; with no line at all there is no picture.
    auto unknown = clock_area(clock_content(1, 8, 1, 0, 1, 6));
    ASSERT_EQ(unknown->getOnePage(now, 0, &length, &count), 0);
    EXPECT_TRUE(unknown->previewLines.empty());
    EXPECT_EQ(length, 0u);
    EXPECT_EQ(count, 1);
}

TEST_F(TimeAreaTest, PreviewDrawsTheTextInTheFontColour) {
    std::tm now{};
    now.tm_hour = 8;
    auto area = clock_area(clock_content(0, 0, 0, 0, 1, 2, 1, 12));
    area->changeContent([] {
        TimeContent c = clock_content(0, 0, 0, 0, 1, 2, 1, 12);
        c.fontColor = 2;
        c.horizontalAlign = 1;
        return c;
    }());
    uint32_t length = 0;
    uint16_t count = 0;
    ASSERT_EQ(area->getOnePage(now, 0, &length, &count), 0);
    const DecodedPng png = decodePng(area->previewPng);
    int lit = 0, first = png.width, last = -1;
    for (int y = 0; y < png.height; ++y) {
        for (int x = 0; x < png.width; ++x) {
            const uint32_t p = png.at(x, y);
            if (p == 0) continue;
            EXPECT_EQ(p, 0xFF00FF00u) << x << "," << y;
            ++lit;
            first = std::min(first, x);
            last = std::max(last, x);
        }
    }
    EXPECT_GT(lit, 20);
    EXPECT_LE(std::abs((first + last + 1) - 128), 4) << "\"08:00\" centred";
}

} // namespace
} // namespace zel

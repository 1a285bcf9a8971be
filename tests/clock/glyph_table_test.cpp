// Glyph tables: the cell arithmetic, the table layout, the polarity of the two screen classes.
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>

#include "clock/clock_fixtures.h"
#include "clock/glyph_table.h"

namespace zel {
namespace {

using namespace zel::test;

TEST(GlyphTable, CellIsTheMeasuredWidthPaddedToBytesAndClampedToOne) {
    struct Case {
        int32_t width, height;
        uint8_t glyphWidth, rowBytes, glyphHeight;
    };
    for (const Case c : {Case{17, 16, 17, 3, 16}, Case{16, 16, 16, 2, 16}, Case{0, 16, 8, 1, 16},
                         Case{8, 0, 8, 1, 0}, Case{300, 300, 255, 32, 255}}) {
        const GlyphCell cell = glyph_cell(c.width, c.height);
        EXPECT_EQ(cell.glyphWidth, c.glyphWidth) << c.width;
        EXPECT_EQ(cell.rowBytes, c.rowBytes) << c.width;
        EXPECT_EQ(cell.glyphHeight, c.glyphHeight) << c.height;
        EXPECT_EQ(cell.glyph_size(), 3u + c.rowBytes * c.glyphHeight);
    }
}

TEST(GlyphTable, EntriesOfEveryKind) {
    EXPECT_EQ(glyph_table_entries(kTableDigits, 0),
              (std::vector<std::string>{"0", "1", "2", "3", "4", "5", "6", "7", "8", "9"}));
    EXPECT_EQ(glyph_table_entries(kTableDigits, 1).size(), 10u);
    // Stems and branches, and the zodiac: one glyph per GBK byte.
    EXPECT_EQ(glyph_table_entries(kTableDigits, 2).size(), 44u);
    EXPECT_EQ(glyph_table_entries(kTableDigits, 3).size(), 26u);
    EXPECT_EQ(glyph_table_entries(kTableMeridiem, 0), (std::vector<std::string>{"AM", "PM"}));
    EXPECT_EQ(glyph_table_entries(kTableMeridiem, 1),
              (std::vector<std::string>{"\xc9\xcf\xce\xe7", "\xcf\xc2\xce\xe7"}));
    EXPECT_EQ(glyph_table_entries(kTableWeek, 1).front(), "Monday");
    EXPECT_EQ(glyph_table_entries(kTableWeek, 2),
              (std::vector<std::string>{"Mon", "Tue", "Wed", "Thu", "Fri", "Sat", "Sun"}));
    EXPECT_EQ(glyph_table_entries(kTableWeek, 3).back(), "\xd0\xc7\xc6\xda\xc8\xd5");
    EXPECT_TRUE(glyph_table_entries(kTableWeek, 0).empty());
    EXPECT_TRUE(glyph_table_entries(7, 0).empty());
}

TEST(GlyphTable, DigitTableLayoutAndCellHeightBoundedByThePixelSize) {
    clock_screen(1, 0);
    for (const uint16_t points : {9, 12, 16}) {
        const auto area = clock_area(clock_content(0, 0, 0, 0, 1, 0, 0, points));
        std::vector<uint8_t> table;
        uint32_t size = 0;
        uint32_t cellWidth = 0;
        area->buildGlyphTable(table, size, cellWidth, 1, kTableDigits, 0);
        const ParsedTable t = parse_table(table);
        ASSERT_EQ(t.count, 10u);
        const auto &first = t.glyphs.front();
        const uint32_t glyphSize = 3u + first[0] * first[2];
        EXPECT_EQ(t.tableLength, 42 + 10 * glyphSize) << points;
        EXPECT_EQ(size, t.tableLength + 4);
        EXPECT_EQ(table.size(), size);
        for (uint32_t i = 0; i < 10; ++i) {
            EXPECT_EQ(t.offsets[i], i * glyphSize);
            EXPECT_EQ(std::vector<uint8_t>(t.glyphs[i].begin(), t.glyphs[i].begin() + 3),
                      std::vector<uint8_t>(first.begin(), first.begin() + 3));
        }
        EXPECT_EQ(first[1], cellWidth);
        EXPECT_EQ(first[0], (cellWidth + 7) / 8);
        EXPECT_GT(first[2], 0);
        EXPECT_LE(first[2], static_cast<int>(std::trunc(area->fontPixelSize))) << points;
    }
    EXPECT_TRUE(std::filesystem::exists("123.png"));
}

TEST(GlyphTable, ZeroSizedFontGivesEightWideCellsWithoutRows) {
    const auto area = clock_area(clock_content(0, 0, 0, 0, 1, 0, 0, 0));
    std::vector<uint8_t> table;
    uint32_t size = 0;
    uint32_t cellWidth = 99;
    area->buildGlyphTable(table, size, cellWidth, 1, kTableDigits, 0);
    EXPECT_EQ(cellWidth, 0u) << "the layout sees the width as measured";
    const ParsedTable t = parse_table(table);
    EXPECT_EQ(t.tableLength, 42u + 10 * 3);
    EXPECT_EQ(t.glyphs[9], (std::vector<uint8_t>{1, 8, 0}));

    std::vector<uint8_t> empty;
    area->buildGlyphTable(empty, size, cellWidth, 1, kTableWeek, 0);
    EXPECT_EQ(empty, (std::vector<uint8_t>{2, 0, 0, 0, 0, 0}));
    EXPECT_EQ(size, 6u);
}

TEST(GlyphTable, BothPolaritiesAreBitInvertedWithEqualHeaders) {
    const auto area = clock_area(clock_content(0, 0, 1, 2, 1, 4));
    for (const auto [kind, sub] :
         {std::pair{kTableDigits, 0u}, std::pair{kTableWeek, 2u}, std::pair{kTableMeridiem, 0u}}) {
        std::vector<uint8_t> planes, full;
        uint32_t size = 0, width = 0;
        area->buildGlyphTable(planes, size, width, 1, kind, sub);
        area->buildGlyphTable(full, size, width, 4, kind, sub);
        const ParsedTable p = parse_table(planes);
        const ParsedTable f = parse_table(full);
        ASSERT_EQ(p.count, f.count);
        EXPECT_EQ(p.offsets, f.offsets);
        bool inked = false;
        for (std::size_t g = 0; g < p.count; ++g) {
            ASSERT_EQ(p.glyphs[g].size(), f.glyphs[g].size());
            for (std::size_t i = 0; i < p.glyphs[g].size(); ++i) {
                if (i < 3) {
                    EXPECT_EQ(p.glyphs[g][i], f.glyphs[g][i]);
                } else {
                    EXPECT_EQ(p.glyphs[g][i], static_cast<uint8_t>(~f.glyphs[g][i]));
                    inked = inked || f.glyphs[g][i] != 0;
                }
            }
        }
        EXPECT_TRUE(inked) << "kind " << kind << ": some ink in the full-colour table";
    }
}

} // namespace
} // namespace zel

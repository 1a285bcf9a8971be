#include <gtest/gtest.h>

#include <map>
#include <random>
#include <string>
#include <vector>

#include "render/area.h"
#include "render/line_breaking.h"
#include "render/text_painter.h"
#include "render_test_support.h"

namespace zel {
namespace {

using test::kDejaVu;
using test::kWenQuanYi;
using test::ucs2;
using test::ucs2Lines;

// Widths by character: 10 pixels each, "W" 100, a carriage return 7.
class TableMeasurer final : public PrefixMeasurer {
  public:
    explicit TableMeasurer(const std::string &text) : m_text(text) {}
    int32_t prefixWidth(std::size_t start, std::size_t end) override {
        int32_t w = 0;
        for (std::size_t i = start; i < end; i += 2) {
            const char c = m_text[i];
            w += c == 'W' ? 100 : c == '\r' ? 7 : 10;
        }
        ++calls;
        return w;
    }
    int calls = 0;

  private:
    const std::string &m_text;
};

std::vector<std::string> breakAscii(const std::string &ascii, int32_t width) {
    const std::string text = ucs2(ascii);
    TableMeasurer measurer(text);
    return breakLines(text, width, measurer);
}

TEST(LineBreaking, BreaksAtTheCharacterThatNoLongerFits) {
    // A prefix fits while it is not wider than the room; blanks are characters like any other.
    EXPECT_EQ(breakAscii("abcdefg", 30), ucs2Lines({"abc", "def", "g"}));
    EXPECT_EQ(breakAscii("abcdefg", 39), ucs2Lines({"abc", "def", "g"}));
    EXPECT_EQ(breakAscii("ab cd", 30), ucs2Lines({"ab ", "cd"}));
    EXPECT_EQ(breakAscii("abc", 1000), ucs2Lines({"abc"}));
    EXPECT_EQ(breakAscii("", 30), ucs2Lines({""}));
}

TEST(LineBreaking, LineEnds) {
    // CR LF ends a line and then an empty one.
    EXPECT_EQ(breakAscii("a\r\nb", 100), ucs2Lines({"a", "", "b"}));
    // A text that ends in a line feed has an empty last line.
    EXPECT_EQ(breakAscii("ab\n", 100), ucs2Lines({"ab", ""}));
    EXPECT_EQ(breakAscii("\n\n", 100), ucs2Lines({"", "", ""}));
    // A lone CR in last place is a character of the last line: it is measured (7 pixels)...
    EXPECT_EQ(breakAscii("ab\r", 100), ucs2Lines({"ab\r"}));
    EXPECT_EQ(breakAscii("ab\r", 26), ucs2Lines({"ab", "\r"}));
    // ...while anywhere else it ends the line.
    EXPECT_EQ(breakAscii("ab\rc", 100), ucs2Lines({"ab", "c"}));
}

TEST(LineBreaking, FirstCharacterWiderThanTheAreaKeepsTheRestOnOneLine) {
    // Neither width nor line feeds break the text after such a character.
    EXPECT_EQ(breakAscii("Wabc\ndefghij", 50), ucs2Lines({"Wabc\ndefghij"}));
    EXPECT_EQ(breakAscii("abcd\nWxyzxyz", 50), ucs2Lines({"abcd", "Wxyzxyz"}));
    EXPECT_EQ(breakAscii("abcdeWxyz", 50), ucs2Lines({"abcde", "Wxyz"}));
}

TEST(LineBreaking, PaginationKeepsLinesWholeAndStartsANewPageWhenOneDoesNotFit) {
    const auto lines = ucs2Lines({"1", "2", "3", "4", "5"});
    std::vector<std::string> current;
    std::vector<std::vector<std::string>> pages;

    // Rows of 10 on pages of 25: two per page.
    paginateLines(lines, 10.0, 25, current, pages);
    ASSERT_EQ(pages.size(), 3u);
    EXPECT_EQ(pages[0], ucs2Lines({"1", "2"}));
    EXPECT_EQ(pages[2], ucs2Lines({"5"}));
    EXPECT_EQ(current, ucs2Lines({"5"}));

    // A row that exactly fills the page still fits.
    current.clear();
    pages.clear();
    paginateLines(lines, 12.5, 25, current, pages);
    ASSERT_EQ(pages.size(), 3u);
    EXPECT_EQ(pages[1], ucs2Lines({"3", "4"}));

    // Rows taller than the page: each line has a page to itself, none is empty.
    current.clear();
    pages.clear();
    paginateLines(lines, 30.0, 25, current, pages);
    ASSERT_EQ(pages.size(), 5u);
    for (std::size_t i = 0; i < pages.size(); ++i)
        EXPECT_EQ(pages[i], std::vector{lines[i]});
}

// ---- The incremental measurer against the literal one, on real fonts ----

struct FontCase {
    const char *path;
    const char *family;
};

// Random GBK text. Kinds: 0 Latin, 1 Chinese (GB2312 level 1 and full-width punctuation),
// 2 mixed. Line feeds and carriage returns are sprinkled in, also at the very end.
std::string randomGbk(std::mt19937 &rng, int kind, std::size_t characters) {
    std::string out;
    std::uniform_int_distribution<int> percent(0, 99);
    std::uniform_int_distribution<int> ascii(0x20, 0x7E);
    std::uniform_int_distribution<int> lead(0xB0, 0xD6);
    std::uniform_int_distribution<int> trail(0xA1, 0xFE);
    for (std::size_t i = 0; i < characters; ++i) {
        const int p = percent(rng);
        if (p < 2) {
            out += '\n';
        } else if (p < 4) {
            out += '\r';
        } else if (p < 5) {
            out += "\r\n";
        } else if (kind == 0 || (kind == 2 && p < 50)) {
            out += static_cast<char>(ascii(rng));
        } else if (p < 8) {
            out += static_cast<char>(0xA1); // full-width punctuation
            out += static_cast<char>(trail(rng));
        } else {
            out += static_cast<char>(lead(rng));
            out += static_cast<char>(trail(rng));
        }
    }
    if (percent(rng) < 30) out += '\r';
    return out;
}

TEST(LineBreaking, IncrementalMeasuringGivesTheLinesOfTheLiteralOne) {
    const FontCase fonts[] = {{kDejaVu, ""}, {kWenQuanYi, ""}, {"", "DejaVu Sans"}, {"", ""}};
    const double sizes[] = {11.0, 16.0, 21.0, 32.0, 53.0};
    const int32_t widths[] = {1, 7, 64, 100, 203, 480};
    std::mt19937 rng(20240611);
    int multiLine = 0;
    int cases = 0;
    for (const FontCase &font : fonts) {
        TKarea area;
        area.fontPath = font.path;
        area.fontName = font.family;
        for (int kind = 0; kind < 3; ++kind) {
            for (int style = 0; style < 4; ++style) {
                const auto bold = static_cast<uint8_t>(style & 1);
                const auto italic = static_cast<uint8_t>(style >> 1);
                const double size = sizes[rng() % std::size(sizes)];
                const int32_t width = widths[rng() % std::size(widths)];
                std::string text = randomGbk(rng, kind, 200 + rng() % 1300);
                TKarea::convertGbkToUcs2(text);

                TextScratch scratch(area, width, 40, size, bold, italic, true);
                LiteralPrefixMeasurer literal(scratch.context(), text);
                IncrementalPrefixMeasurer incremental(scratch.context(), text);
                ASSERT_FALSE(incremental.fallsBack()) << font.path << font.family;
                const auto expected = breakLines(text, width, literal);
                const auto actual = breakLines(text, width, incremental);
                ASSERT_EQ(actual, expected)
                    << "font " << font.path << font.family << " kind " << kind << " style " << style
                    << " size " << size << " width " << width;
                multiLine += expected.size() > 20 ? 1 : 0;
                ++cases;
            }
        }
    }
    // The texts really were broken, not laid on one line each.
    EXPECT_GT(multiLine, cases / 2);
}

TEST(LineBreaking, IncrementalMeasuringGivesEveryPrefixWidthOfTheLiteralOne) {
    // Stronger than equal breaks: every prefix of a long line measures the same, in a wide
    // area where nothing breaks, for each font, upright and slanted (a slanted glyph's ink
    // can stick out past its neighbours).
    std::mt19937 rng(77);
    for (const char *path : {kDejaVu, kWenQuanYi}) {
        TKarea area;
        area.fontPath = path;
        for (uint8_t italic = 0; italic < 2; ++italic) {
            std::string text = randomGbk(rng, 2, 300);
            TKarea::convertGbkToUcs2(text);
            TextScratch scratch(area, 100000, 40, 19.0, 0, italic, true);
            LiteralPrefixMeasurer literal(scratch.context(), text);
            IncrementalPrefixMeasurer incremental(scratch.context(), text);
            for (std::size_t end = 2; end <= text.size(); end += 2) {
                ASSERT_EQ(incremental.prefixWidth(0, end), literal.prefixWidth(0, end))
                    << path << " italic " << int(italic) << " end " << end;
            }
        }
    }
}

} // namespace
} // namespace zel

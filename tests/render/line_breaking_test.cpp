#include <gtest/gtest.h>

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
    int32_t prefix_width(std::size_t start, std::size_t end) override {
        int32_t w = 0;
        for (std::size_t i = start; i < end; i += 2) {
            const char c = m_text[i];
            w += c == 'W' ? 100 : c == '\r' ? 7 : 10;
        }
        return w;
    }

  private:
    const std::string &m_text;
};

std::vector<std::string> breakAscii(const std::string &ascii, int32_t width) {
    const std::string text = ucs2(ascii);
    TableMeasurer measurer(text);
    return break_lines(text, width, measurer);
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
    const auto sizes = [&](double lineHeight, int32_t pageHeight) {
        std::vector<std::string> current;
        std::vector<std::vector<std::string>> pages;
        paginate_lines(lines, lineHeight, pageHeight, current, pages);
        EXPECT_EQ(current, pages.back()); // the last page stays in currentLines
        std::vector<std::size_t> out;
        for (const auto &page : pages)
            out.push_back(page.size());
        return out;
    };
    EXPECT_EQ(sizes(10.0, 25), (std::vector<std::size_t>{2, 2, 1}));
    EXPECT_EQ(sizes(12.5, 25), (std::vector<std::size_t>{2, 2, 1})); // exactly full still fits
    EXPECT_EQ(sizes(30.0, 25), (std::vector<std::size_t>{1, 1, 1, 1, 1})); // none left empty
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
                const auto expected = break_lines(text, width, literal);
                const auto actual = break_lines(text, width, incremental);
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

TEST(LineBreaking, IncrementalMeasuringFollowsInkThatSticksOutOfTheGuards) {
    // Marks without advance whose ink reaches far beyond their neighbours: U+0488 lies some
    // way left of its position, U+05C1 right of it. At the start or end of a prefix they, not
    // the guard digits, hold the extreme ink edges.
    const uint16_t units[] = {'a', 'm', ' ', 0x0488, 0x05C1, 0x0301, 0x05C1, 'W'};
    std::mt19937 rng(5);
    TKarea area;
    area.fontPath = kDejaVu;
    for (const double size : {13.0, 20.0, 37.0}) {
        std::string text;
        for (int i = 0; i < 400; ++i) {
            const uint16_t u = units[rng() % std::size(units)];
            text.push_back(static_cast<char>(u & 0xFF));
            text.push_back(static_cast<char>(u >> 8));
        }
        TextScratch scratch(area, 30000, 40, size, 0, 0, true);
        LiteralPrefixMeasurer literal(scratch.context(), text);
        IncrementalPrefixMeasurer incremental(scratch.context(), text);
        ASSERT_FALSE(incremental.fallsBack());
        for (std::size_t start = 0; start < text.size(); start += 98) {
            for (std::size_t end = start + 2; end <= text.size(); end += 2) {
                ASSERT_EQ(incremental.prefix_width(start, end), literal.prefix_width(start, end))
                    << "size " << size << " start " << start << " end " << end;
            }
        }
    }
}

} // namespace
} // namespace zel

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "render/area.h"
#include "zel_sdk_dual.h"

namespace zel {
namespace {

// "中" is D6 D0 in GBK, 2D 4E in UCS-2LE and E4 B8 AD in UTF-8.
const std::string kZhongGbk = "\xD6\xD0";
const std::string kZhongUtf8 = "\xE4\xB8\xAD";

TEST(Conversion, GbkToUtf8ExportWritesNoTerminator) {
    std::vector<char> out(16, 'x');
    EXPECT_EQ(GB2312ToUTF8(kZhongGbk.c_str(), out.data(), 0), 3);
    EXPECT_EQ(std::string(out.data(), 4), kZhongUtf8 + "x");

    std::vector<char> mixed(16, 'x');
    EXPECT_EQ(GB2312ToUTF8(("A" + kZhongGbk + "b").c_str(), mixed.data(), 0), 5);
    EXPECT_EQ(std::string(mixed.data(), 6), "A" + kZhongUtf8 + "bx");

    std::vector<char> empty(4, 'x');
    EXPECT_EQ(GB2312ToUTF8("", empty.data(), 0), 0);
    EXPECT_EQ(std::string(empty.data(), 4), "xxxx");
}

TEST(Conversion, InPlaceConversionsKeepWhatConvertedBeforeAFailure) {
    std::string text = "A" + kZhongGbk;
    EXPECT_EQ(TKarea::convertGbkToUcs2(text), 0u);
    EXPECT_EQ(text, std::string("A\0\x2D\x4E", 4));
    EXPECT_EQ(TKarea::convertUcs2ToUtf8(text), 0u);
    EXPECT_EQ(text, "A" + kZhongUtf8);

    std::string invalid = "AB\x81\x20Z"; // 0x81 0x20 is no GBK character
    EXPECT_EQ(TKarea::convertGbkToUtf8(invalid), kConversionFailed);
    EXPECT_EQ(invalid, "AB");
    std::string cut = "A\xD6"; // the first half of a character
    EXPECT_EQ(TKarea::convertGbkToUtf8(cut), kConversionFailed);
    EXPECT_EQ(cut, "A");
    std::string odd("A\0B", 3); // UCS-2LE with a lone last byte
    EXPECT_EQ(TKarea::convertUcs2ToUtf8(odd), kConversionFailed);
    EXPECT_EQ(odd, "A");
    std::string none;
    EXPECT_EQ(TKarea::convertGbkToUcs2(none), 0u);
    EXPECT_EQ(none, "");

    char buffer[4] = {'k', 'e', 'e', 'p'};
    char *in = buffer;
    char *out = buffer;
    std::size_t inLeft = 4;
    std::size_t outLeft = 4;
    EXPECT_EQ(TKarea::convertCharset("NO-SUCH-CODE", "gbk", &in, &inLeft, &out, &outLeft),
              kConversionFailed);
    EXPECT_EQ(inLeft, 4u);
    EXPECT_EQ(outLeft, 4u);
    EXPECT_EQ(std::string(buffer, 4), "keep");
}

TEST(Conversion, UnicodeToUtf8StopsAtTheFirstZeroByte) {
    std::vector<char> out(8, 'x');
    // "A" in UCS-2LE is 41 00: the input is the single byte 41, which converts to nothing.
    EXPECT_EQ(UnicodeToUTF8("A\0\0", out.data(), 0), 0);
    EXPECT_EQ(std::string(out.data(), 8), "xxxxxxxx");
    // No zero byte before the terminator: everything converts.
    EXPECT_EQ(UnicodeToUTF8("\x2D\x4E\x2D\x4E", out.data(), 0), 6);
    EXPECT_EQ(std::string(out.data(), 7), kZhongUtf8 + kZhongUtf8 + "x");
}

TEST(Conversion, UnicodeToUtf8V2ClearsByTheLowByteOfTheOutputCount) {
    const char input[] = {'A', 0, 'B', 0, 0x2D, 0x4E};
    struct Case {
        std::size_t outLeft;
        std::size_t cleared; // bytes after the result that come back as zero
    };
    // Low byte 0x10 clears 16 bytes; 0x05 (in 0x105) clears 5; 0x80 and 0xF0 read as negative
    // and clear nothing.
    const Case cases[] = {{0x10, 16}, {0x105, 5}, {0x180, 0}, {0x1F0, 0}};
    for (const Case &c : cases) {
        std::vector<char> out(std::max<std::size_t>(c.outLeft, 32), 'x');
        std::size_t inLeft = sizeof input;
        std::size_t outLeft = c.outLeft;
        EXPECT_EQ(UnicodeToUTF8_V2(input, &inLeft, out.data(), &outLeft), 0u);
        EXPECT_EQ(inLeft, 0u);
        EXPECT_EQ(outLeft, c.outLeft - 5);
        EXPECT_EQ(std::string(out.data(), 5), "AB" + kZhongUtf8);
        for (std::size_t i = 5; i < 20; ++i) {
            EXPECT_EQ(out[i], i < c.cleared ? '\0' : 'x') << c.outLeft << " at " << i;
        }
    }
    std::size_t inLeft = sizeof input;
    EXPECT_EQ(UnicodeToUTF8_V2(input, &inLeft, nullptr, nullptr), static_cast<size_t>(-1));
    EXPECT_EQ(inLeft, sizeof input);
}

} // namespace
} // namespace zel

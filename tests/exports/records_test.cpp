#include <gtest/gtest.h>

#include <cstddef>

#include <cstring>

#include "exports/records.h"
#include "support/hex.h"

namespace zel {
namespace {

using test::hex;

template <class Record> Record record_of(const std::vector<uint8_t> &bytes) {
    Record r;
    std::memset(&r, 0, sizeof r);
    std::memcpy(&r, bytes.data(), std::min(bytes.size(), sizeof r));
    return r;
}

template <std::size_t N> std::vector<uint8_t> vec(const std::array<uint8_t, N> &a) {
    return {a.begin(), a.end()};
}

TEST(Records, G5TextParamsSplitIntoHeaderAndStyle) {
    const auto record = hex("01 04 02 03 3412 05 7856"     // header part, width 0x5678
                            "01000000 0C00 FF800000 01 00" // MULTILINE, 12 pt, colour, bold
                            "DDCCBBAA 2211 02 03");        // the two carried words, alignment
    ASSERT_EQ(record.size(), sizeof(TextPageParams_G5));
    EXPECT_EQ(offsetof(TextPageParams_G5, arrMode), 9u);
    EXPECT_EQ(offsetof(TextPageParams_G5, verticalAlign), 28u);
    EXPECT_EQ(offsetof(OnePageResult, pngData), 6u);

    const TextPageParams p = exports::unpack(record_of<TextPageParams_G5>(record));
    EXPECT_EQ(p.display.displayEffect, 4);
    EXPECT_EQ(p.display.pageWidth, 0x5678);
    EXPECT_EQ(p.style.arrMode, MULTILINE);
    EXPECT_EQ(p.style.fontSize, 12);
    EXPECT_EQ(p.style.fontColor, 0x80FFu);
    EXPECT_EQ(p.style.styleWord12, 0xAABBCCDDu);
    EXPECT_EQ(p.style.horizontalAlign, 2);
    // Written back: the caller's nine header bytes and four zeros; the caller's style bytes.
    EXPECT_EQ(vec(p.display.bytes()), hex("01 04 02 03 3412 05 7856 00000000"));
    EXPECT_EQ(vec(p.style.bytes()), std::vector<uint8_t>(record.begin() + 9, record.end()));

    // A picture reads only the header part; what follows is neither style nor reserved bytes.
    const auto picture = record_of<TextPageParams_G5>(hex("0A 1A 0B 0C 0D0E 0F 4000 FFFFFFFF"));
    EXPECT_EQ(vec(exports::unpack_picture_page(picture).bytes()),
              hex("0A 1A 0B 0C 0D0E 0F 4000 00000000"));
}

} // namespace
} // namespace zel

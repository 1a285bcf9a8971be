#include <gtest/gtest.h>

#include <cstddef>

#include "render/page_records.h"
#include "support/hex.h"
#include "zel_sdk_dual.h"

namespace zel {
namespace {

using test::hex;

TEST(PageRecords, BoundaryRecordsHaveTheirPackedOffsets) {
    EXPECT_EQ(offsetof(TextPageParams_G5, displayEffect), 1u);
    EXPECT_EQ(offsetof(TextPageParams_G5, pageWord4), 4u);
    EXPECT_EQ(offsetof(TextPageParams_G5, pageWidth), 7u);
    EXPECT_EQ(offsetof(TextPageParams_G5, arrMode), 9u);
    EXPECT_EQ(offsetof(TextPageParams_G5, fontSize), 13u);
    EXPECT_EQ(offsetof(TextPageParams_G5, fontColor), 15u);
    EXPECT_EQ(offsetof(TextPageParams_G5, styleWord12), 21u);
    EXPECT_EQ(offsetof(TextPageParams_G5, styleWord16), 25u);
    EXPECT_EQ(offsetof(TextPageParams_G5, verticalAlign), 28u);
    EXPECT_EQ(offsetof(OnePageResult, pngLength), 2u);
    EXPECT_EQ(offsetof(OnePageResult, pngData), 6u);
}

TEST(PageRecords, G5TextParamsSplitIntoHeaderAndStyle) {
    const auto record = hex("01 04 02 03 3412 05 7856"     // header part, width 0x5678
                            "01000000 0C00 FF800000 01 00" // MULTILINE, 12 pt, colour, bold
                            "DDCCBBAA 2211 02 03");        // the two carried words, alignment
    ASSERT_EQ(record.size(), kTextPageParamsG5Size);
    const TextPageParams p = unpack_text_page_params_g5(record);

    EXPECT_EQ(p.display.displayEffect, 4);
    EXPECT_EQ(p.display.pageWord4, 0x1234);
    EXPECT_EQ(p.display.pageWidth, 0x5678);
    EXPECT_EQ(p.display.reserved, 0u);
    EXPECT_EQ(p.style.arrMode, MULTILINE);
    EXPECT_EQ(p.style.fontSize, 12);
    EXPECT_EQ(p.style.fontColor, 0x80FFu);
    EXPECT_EQ(p.style.fontBold, 1);
    EXPECT_EQ(p.style.styleWord12, 0xAABBCCDDu);
    EXPECT_EQ(p.style.styleWord16, 0x1122);
    EXPECT_EQ(p.style.horizontalAlign, 2);
    EXPECT_EQ(p.style.verticalAlign, 3);

    // Written back, the header is the caller's nine bytes and four zeros, the style the
    // caller's twenty bytes.
    const auto header = p.display.bytes();
    EXPECT_EQ(std::vector<uint8_t>(header.begin(), header.end()),
              hex("01 04 02 03 3412 05 7856 00000000"));
    const auto style = p.style.bytes();
    EXPECT_EQ(std::vector<uint8_t>(style.begin(), style.end()),
              std::vector<uint8_t>(record.begin() + 9, record.end()));
}

TEST(PageRecords, PictureParamsReadOnlyTheHeaderBytes) {
    // Whatever follows byte 8 is not the picture's: neither the style nor reserved bytes.
    const auto record = hex("0A 1A 0B 0C 0D0E 0F 4000 FFFFFFFF");
    const PageDisplayRecord p = unpack_picture_page_params_g5(record);
    const auto bytes = p.bytes();
    EXPECT_EQ(std::vector<uint8_t>(bytes.begin(), bytes.end()),
              hex("0A 1A 0B 0C 0D0E 0F 4000 00000000"));
    // A record that ends early reads as zero beyond its end.
    EXPECT_EQ(unpack_picture_page_params_g5(hex("05 06")).bytes()[1], 0x06);
    EXPECT_EQ(unpack_picture_page_params_g5(hex("05 06")).pageWidth, 0);
}

} // namespace
} // namespace zel

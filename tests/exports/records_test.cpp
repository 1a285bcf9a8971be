#include <gtest/gtest.h>

#include <cstddef>

#include <cstring>

#include "exports/records.h"
#include "support/hex.h"

namespace zel {
namespace {

using test::hex;

template <class Record> Record record_of(const std::vector<uint8_t> &bytes) {
    Record r{};
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

TEST(Records, ClockRecordsAreReadAtTheirUnalignedOffsets) {
    // arrMode 1, colour 0x00FF00, a font pointer, 12 pt, 3 reserved, centre, date on in
    // format 7, time on in format 4, week on in format 3.
    auto content = record_of<TimeContentRecord>(hex("01000000 00FF0000 0000000000000000 0C00"
                                                    "AABBCC 01 01 07000000 01 04000000"
                                                    "01 03000000"));
    EXPECT_EQ(sizeof content, 37u);
    EXPECT_EQ(offsetof(TimeContentRecord, dateFormat), 23u);
    EXPECT_EQ(offsetof(TimeContentRecord, weekFormat), 33u);
    const TimeContent c = exports::unpack(content);
    EXPECT_EQ(c, (TimeContent{1, 0xFF00, 12, 1, 1, 7, 1, 4, 1, 3}));
    EXPECT_STREQ(exports::content_font(content), "") << "a null font reads as empty";

    const auto hands = record_of<AnalogClockRecord>(hex("0102 0304 05 06 07 08090A0B 0C 0D"
                                                        "0E0F1011 12 13 14151617"));
    const AnalogClock a = exports::unpack(hands);
    EXPECT_EQ(a.clockParam1, 0x0201);
    EXPECT_EQ(a.hourHandLength, 7);
    EXPECT_EQ(a.hourHandColor, 0x0B0A0908u);
    EXPECT_EQ(a.minuteHandLength, 0x0D);
    EXPECT_EQ(a.minuteHandColor, 0x11100F0Eu);
    EXPECT_EQ(a.secondHandLength, 0x13);
    EXPECT_EQ(a.secondHandColor, 0x17161514u);
}

} // namespace
} // namespace zel

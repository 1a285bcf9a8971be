// The G6 picture body and its pages in the data file, on plain views of an area.
#include <gtest/gtest.h>

#include "program/program_file_g6.h"
#include "support/hex.h"

namespace zel {
namespace {

using test::hex;

// Pages of one byte each, so that the data file shows which page went where.
const std::vector<uint8_t> kPageA{0xA0}, kPageB{0xB0}, kPageC{0xC0};

PictureAreaImageG6 area_with(uint8_t effect, int32_t textPages,
                             std::vector<PageHeaderG6> pictureHeaders) {
    PictureAreaImageG6 area;
    area.areaHeader = {0, 0, 0, 0, 0, 64, 0, 32, 0};
    area.displayRecord[1] = effect;
    area.drawWidth = 64;
    area.lastPageWidth = 40;
    area.textPageCount = textPages;
    area.pictureHeaders = std::move(pictureHeaders);
    area.pages = {kPageA, kPageB, kPageC};
    return area;
}

PageHeaderG6 picture_header(uint8_t mark) {
    PageHeaderG6 h{};
    h[0] = mark;
    return h;
}

// One page record as the body holds it: length 26, header, offset, length.
struct Record {
    PageHeaderG6 header;
    uint32_t offset;
    uint32_t length;
};
std::vector<Record> records_of(const AreaBodyG6 &body) {
    std::vector<Record> out;
    const std::size_t count = body.bytes[19] | (body.bytes[20] << 8);
    for (std::size_t i = 0, at = 21; i < count; ++i, at += 30) {
        EXPECT_EQ(read_u32_le(body.bytes, at), 26u);
        Record r{};
        std::copy_n(body.bytes.begin() + static_cast<long>(at + 4), 18, r.header.begin());
        r.offset = read_u32_le(body.bytes, at + 22);
        r.length = read_u32_le(body.bytes, at + 26);
        out.push_back(r);
    }
    return out;
}

const FileName kData{'D', '0', '0', '1'};

TEST(ProgramFileG6, PicturePagesTakeTheirOwnHeadersAfterTheTextPages) {
    // One text page, then the two pictures with their headers; the last page of a roll is L
    // wide. G5 would give every page the common header here.
    DataFileWriter data(kData);
    const auto body =
        picture_area_body_g6(area_with(4, 1, {picture_header(0x51), picture_header(0x52)}), data);
    ASSERT_EQ(body.declaredLength, 19u + 3 * 30 + 1 + 1);
    ASSERT_EQ(body.bytes.size(), body.declaredLength);
    const auto records = records_of(body);
    ASSERT_EQ(records.size(), 3u);
    EXPECT_EQ(records[0].header[1], 4);
    EXPECT_EQ(read_u16_le(records[0].header, 7), 64);
    EXPECT_EQ(records[1].header, picture_header(0x51));
    EXPECT_EQ(records[2].header, picture_header(0x52)) << "its own width, not L";
    EXPECT_EQ(records[0].offset, 14u);
    EXPECT_EQ(records[1].offset, 15u);
    EXPECT_EQ(records[2].offset, 16u);
    uint32_t crc = 0;
    const auto file = data.finish(crc);
    EXPECT_EQ(std::vector<uint8_t>(file.begin() + 13, file.end() - 4), hex("A0 B0 C0"));
}

TEST(ProgramFileG6, ReverseOrderWritesPagesTwiceAndRunsOutOfHeaders) {
    struct Case {
        const char *name;
        std::vector<PageHeaderG6> pictures;
        PageHeaderG6 thirdHeader;
    };
    PageHeaderG6 none{};
    const Case cases[] = {
        {"a picture header left", {picture_header(0x51)}, picture_header(0x51)},
        // Pictures that came in through the G5 entry have no G6 header: the record gets none.
        {"headers used up", {}, none},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        // Two text pages and one more: the text backwards, then the first page again.
        DataFileWriter data(kData);
        const auto body = picture_area_body_g6(area_with(0x26, 2, c.pictures), data);
        ASSERT_EQ(body.bytes.size(), body.declaredLength);
        const auto records = records_of(body);
        ASSERT_EQ(records.size(), 3u);
        EXPECT_EQ(read_u16_le(records[0].header, 7), 64) << "page 1";
        EXPECT_EQ(read_u16_le(records[1].header, 7), 40) << "page 0 is L wide";
        EXPECT_EQ(records[2].header, c.thirdHeader);
        EXPECT_EQ(records[2].offset, 16u);
        uint32_t crc = 0;
        const auto file = data.finish(crc);
        EXPECT_EQ(std::vector<uint8_t>(file.begin() + 13, file.end() - 4), hex("B0 A0 A0"))
            << "a page written twice is stored twice";
    }
}

TEST(ProgramFileG6, FrameAndSoundTermsOfTheLength) {
    const std::vector<uint8_t> strip{0x11, 0x22};
    const std::string sound = "abc";
    struct Case {
        FrameCount count;
        uint32_t length;
    };
    // 19 + 30 x 0 pages + (2 + 14, or 2 + 7 for a background) + (3 + 21).
    for (const Case c : {Case{FrameCount::Written, 59}, Case{FrameCount::AsG5, 52}}) {
        PictureAreaImageG6 area;
        area.frameEnabled = true;
        area.frameRecord[0] = 1;
        area.frameData = strip;
        area.frameCount = c.count;
        area.soundEnabled = true;
        area.soundHeader[0] = 1;
        area.soundData = std::span(reinterpret_cast<const uint8_t *>(sound.data()), sound.size());
        DataFileWriter data(kData);
        const auto body = picture_area_body_g6(area, data);
        EXPECT_EQ(body.declaredLength, c.length);
        EXPECT_EQ(body.bytes.size(), 59u) << "the writer writes the 14 bytes in any case";
        EXPECT_EQ(std::vector<uint8_t>(body.bytes.begin() + 23, body.bytes.begin() + 25),
                  hex("11 22"));
        EXPECT_EQ(body.bytes[28], 1) << "the sound header follows the three attribute bytes";
        EXPECT_EQ(read_u32_le(body.bytes, 45), 3u);
    }
}

TEST(ProgramFileG6, HeadWritesTheBackgroundByteAlways) {
    ProgramImageHeadG6 head;
    head.header[1] = 'P';
    head.areaCount = 0x102;
    const auto plain = begin_program_image_g6(head);
    EXPECT_EQ(std::vector<uint8_t>(plain.begin() + 29, plain.end()), hex("00 00 00 02"))
        << "flag, frame byte, background byte, low byte of the count";
    head.hasBackground = true;
    const std::vector<uint8_t> frame{0xEE};
    head.hasFrame = true;
    head.frameHeader[0] = 1;
    head.frameData = frame;
    const auto image = begin_program_image_g6(head);
    ASSERT_EQ(image.size(), 29u + 1 + 14 + 1 + 1 + 1);
    EXPECT_EQ(std::vector<uint8_t>(image.begin() + 44, image.end()), hex("EE 01 02"));
}

} // namespace
} // namespace zel

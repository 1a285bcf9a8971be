#include <gtest/gtest.h>

#include "program/program_file.h"
#include "support/hex.h"

namespace zel {
namespace {

using test::hex;

void append_picture_area_block(std::vector<uint8_t> &image, const PictureAreaImage &area) {
    append_area_block(image, picture_area_body(area));
}

std::string name_of(uint32_t number) {
    const auto name = program_file_name(number);
    return name ? std::string(name->begin(), name->end()) : std::string();
}

ProgramImageHead head_named(const char *name) {
    ProgramImageHead head;
    head.header[0] = 0x00;
    for (int i = 0; i < 4; ++i)
        head.header[1 + i] = static_cast<uint8_t>(name[i]);
    head.header[7] = 1;
    return head;
}

TEST(ProgramFile, PlayPeriodsGiveFlagOneAndTheRecordsWithoutCount) {
    ProgramImageHead head = head_named("P001");
    head.hasPlayPeriods = 1;
    PlayPeriods periods(3);
    uint8_t next = 0xA1;
    for (PlayPeriod &period : periods) {
        for (uint8_t &b : period.bytes)
            b = next++;
    }
    head.playPeriods = periods;
    auto image = begin_program_image(head);
    finish_program_image(image);
    ASSERT_EQ(image.size(), 27u + 18);
    EXPECT_EQ(image[19], 1);
    for (std::size_t i = 0; i < 18; ++i) {
        EXPECT_EQ(image[20 + i], 0xA1 + i) << i;
    }
    EXPECT_EQ(image[38], 0) << "frame mark follows the 18 period bytes";
}

PictureAreaImage area_at(uint16_t x, uint16_t width, uint16_t height) {
    PictureAreaImage area;
    area.areaHeader = {0,
                       static_cast<uint8_t>(x),
                       static_cast<uint8_t>(x >> 8),
                       0,
                       0,
                       static_cast<uint8_t>(width),
                       static_cast<uint8_t>(width >> 8),
                       static_cast<uint8_t>(height),
                       static_cast<uint8_t>(height >> 8)};
    area.drawWidth = width;
    return area;
}

TEST(ProgramFile, AreaWithoutPagesHasATwelveByteBody) {
    std::vector<uint8_t> image;
    append_picture_area_block(image, area_at(0x10, 0x40, 0x20));
    EXPECT_EQ(image, hex("0C 00 00 00  00 10 00 00 00 40 00 20 00  00  00 00"));
}

TEST(ProgramFile, BodyLengthCountsRecordFramePagesAndPixels) {
    const std::vector<uint8_t> a(8, 0x11), b(8, 0x22), strip(5, 0x33);
    PictureAreaImage area = area_at(0, 16, 4);
    area.displayRecord = {0, 1, 2, 3, 4, 5, 6, 0xEE, 0xEE, 0, 0, 0, 0};
    area.pages = {a, b};
    area.textPageCount = 2;
    EXPECT_EQ(picture_body_length(area), 12u + 17 * 2 + 16);

    area.frameEnabled = true;
    area.frameRecord = {1, 9, 8, 7, 6, 0x05, 0x00};
    area.frameData = strip;
    EXPECT_EQ(picture_body_length(area), 18u + 5 + 17 * 2 + 16);

    std::vector<uint8_t> image;
    append_picture_area_block(image, area);
    ASSERT_EQ(image.size(), 4u + 18 + 5 + 34 + 16);
    // Record, frame header and strip, page count 2, then the first page: length 13 + 8 and
    // the common header with the draw width 16 in place of the caller's page width.
    EXPECT_EQ(std::vector<uint8_t>(image.begin() + 4, image.begin() + 4 + 9 + 7 + 5 + 2 + 4 + 13),
              hex("00 00 00 00 00 10 00 04 00  01 09 08 07 06 05 00  33 33 33 33 33  02 00"
                  "  15 00 00 00  00 01 02 03 04 05 06 10 00 00 00 00 00"));
}

// Three pages of distinct contents: two text pages and one picture.
struct ThreePages {
    std::vector<uint8_t> p0 = std::vector<uint8_t>(2, 0xA0);
    std::vector<uint8_t> p1 = std::vector<uint8_t>(2, 0xA1);
    std::vector<uint8_t> p2 = std::vector<uint8_t>(2, 0xA2);
    PictureAreaImage area(uint8_t effect) const {
        PictureAreaImage a = area_at(0, 64, 16);
        a.displayRecord[1] = effect;
        a.drawWidth = 64;
        a.lastPageWidth = 21;
        a.textPageCount = 2;
        a.pictureHeaders = {PageHeader{0x50, 0x51, 0, 0, 0, 0, 0, 0x99, 0x00, 0, 0, 0, 0}};
        a.pages = {p0, p1, p2};
        return a;
    }
};

std::vector<std::pair<uint8_t, uint16_t>> pages_written(const std::vector<uint8_t> &image) {
    // Pixel marker and page width of every record, read from the layout.
    std::vector<std::pair<uint8_t, uint16_t>> out;
    std::size_t p = 4 + 9 + 1;
    const std::size_t count = static_cast<std::size_t>(image[p] | (image[p + 1] << 8));
    p += 2;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t length = image[p] | (image[p + 1] << 8);
        const auto width = static_cast<uint16_t>(image[p + 4 + 7] | (image[p + 4 + 8] << 8));
        out.emplace_back(image[p + 4 + 13], width);
        p += 4 + length;
    }
    return out;
}

TEST(ProgramFile, ReverseEffectsWriteTextPagesBackwardsThenTheFirstPagesAgain) {
    const ThreePages three;
    for (const uint8_t effect : {uint8_t{0x26}, uint8_t{0x28}}) {
        std::vector<uint8_t> image;
        append_picture_area_block(image, three.area(effect));
        // Pages 1, 0, then 0 again: the picture page does not reach the file. The valid width
        // is the last page's on page 0 of the first run and on the last page of the second.
        EXPECT_EQ(pages_written(image),
                  (std::vector<std::pair<uint8_t, uint16_t>>{{0xA1, 64}, {0xA0, 21}, {0xA0, 21}}))
            << int{effect};
    }
}

TEST(ProgramFile, OrdinaryOrderUsesPictureHeadersOnlyWithoutText) {
    const ThreePages three;
    std::vector<uint8_t> image;
    append_picture_area_block(image, three.area(4));
    // With text, every page takes the common header; effect 4 gives the last page width L.
    EXPECT_EQ(pages_written(image),
              (std::vector<std::pair<uint8_t, uint16_t>>{{0xA0, 64}, {0xA1, 64}, {0xA2, 21}}));

    PictureAreaImage pictures = three.area(0);
    pictures.textPageCount = 0;
    pictures.pages = {three.p2, three.p2};
    image.clear();
    append_picture_area_block(image, pictures);
    // The one picture header stands as the caller gave it (width 0x99); the second page has
    // no header of its own left and takes the common one.
    const std::size_t first = 4 + 9 + 1 + 2;
    EXPECT_EQ(std::vector<uint8_t>(image.begin() + static_cast<long>(first) + 4,
                                   image.begin() + static_cast<long>(first) + 4 + 13),
              hex("50 51 00 00 00 00 00 99 00 00 00 00 00"));
    EXPECT_EQ(pages_written(image),
              (std::vector<std::pair<uint8_t, uint16_t>>{{0xA2, 0x99}, {0xA2, 64}}));
}

TEST(ProgramFile, ReverseOrderOverPagesOfDifferentSizesKeepsTheDeclaredLength) {
    ThreePages three;
    three.p2 = std::vector<uint8_t>(10, 0xA2);
    PictureAreaImage area = three.area(0x26);
    std::vector<uint8_t> image;
    append_picture_area_block(image, area);
    const uint32_t declared = 12 + 17 * 3 + 2 + 2 + 10;
    EXPECT_EQ(image.size(), 4u + declared);
    EXPECT_EQ(image[0], declared);
}

TEST(ProgramFile, FileNameRule) {
    EXPECT_EQ(name_of(7), "P007");
    EXPECT_EQ(name_of(0), "P000");
    EXPECT_EQ(name_of(42), "P042");
    EXPECT_EQ(name_of(999), "P999");
    EXPECT_EQ(name_of(1000), "1000");
    EXPECT_EQ(name_of(9999), "9999");
    EXPECT_EQ(name_of(10000), "");
    // Numbers that print as -100 to -999 are four characters and pass as they stand.
    EXPECT_EQ(name_of(0xFFFFFC19u), "-999");
    EXPECT_EQ(name_of(0xFFFFFF9Cu), "-100");
    EXPECT_EQ(name_of(0xFFFFFF9Du), "");
    EXPECT_EQ(name_of(0xFFFFFC18u), "");
}

} // namespace
} // namespace zel

// Analog clocks: dial geometry, painted dials, dial pictures by path and by bytes, the preview.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "clock/analog_clock.h"
#include "clock/clock_fixtures.h"
#include "clock/time_body_g5.h"
#include "render/render_test_support.h"

namespace zel {
namespace {

using namespace zel::test;

// Lit pixels as cairo stores them (B, G, R, A), read little-endian: alpha in the top byte.
constexpr uint32_t kRed = 0xFFFF0000;
constexpr uint32_t kGreen = 0xFF00FF00;

uint32_t pixel(const std::vector<uint8_t> &rgba, int32_t width, int32_t x, int32_t y) {
    const std::size_t at = (static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                            static_cast<std::size_t>(x)) *
                           4;
    return read_u32_le(rgba, at);
}

std::unique_ptr<TimeArea> analog_area(uint16_t width, uint16_t height, uint32_t style,
                                      DialMarkColors marks = {1, 2, 4}) {
    auto area = std::make_unique<TimeArea>();
    area->set_area_header(2, {0, 0, width, height});
    AnalogClock hands;
    hands.hourHandLength = 10;
    hands.minuteHandLength = 12;
    area->addAnalogClock(hands, style, marks);
    return area;
}

class AnalogClockTest : public ::testing::Test {
  protected:
    void SetUp() override { clock_screen(1, 0); }
};

TEST_F(AnalogClockTest, DialGeometryOfEvenAndOddAreas) {
    const DialGeometry even = dial_geometry(0, 64, 32);
    EXPECT_EQ(even.markX, 32.0);
    EXPECT_EQ(even.markY, 16.0);
    EXPECT_EQ(even.radius, 16.0);
    const DialMark twelve = dial_mark(even, 12);
    // Up to the rounding of cos and sin of 12 × 3.1415926 / 6.
    EXPECT_NEAR(twelve.innerX, 44.0, 1e-5);
    EXPECT_NEAR(twelve.outerX, 48.0, 1e-5);
    EXPECT_NEAR(twelve.outerY, 16.0, 1e-5);
    EXPECT_EQ(dial_geometry(1, 64, 32).radius, 15.0);

    // 65 × 33: the circle of style 2 lies around the exact centre, its marks around the
    // integer one, at the exact radius; style 0 stays in integers.
    const DialGeometry circle = dial_geometry(2, 65, 33);
    EXPECT_EQ(circle.circleX, 32.5);
    EXPECT_EQ(circle.circleY, 16.5);
    EXPECT_EQ(circle.markX, 32.0);
    EXPECT_EQ(circle.markY, 16.0);
    EXPECT_EQ(circle.radius, 16.5);
    const DialGeometry strokes = dial_geometry(0, 65, 33);
    EXPECT_EQ(strokes.markX, 32.0);
    EXPECT_EQ(strokes.radius, 16.0);
}

TEST_F(AnalogClockTest, PaintedDialHasItsMarksInTheirColours) {
    const auto area = analog_area(64, 32, 0);
    std::vector<uint8_t> rgba(64 * 32 * 4, 0);
    area->paintDial(rgba);
    // The mark of i = 12 (three o'clock), 2 wide, from x 44 to 48 about y 16.
    EXPECT_EQ(pixel(rgba, 64, 45, 16), kRed);
    EXPECT_EQ(pixel(rgba, 64, 47, 15), kRed);
    EXPECT_EQ(pixel(rgba, 64, 43, 16), 0u);
    EXPECT_EQ(pixel(rgba, 64, 32, 16), 0u) << "no hands in the dial";
    // A minute mark (i = 1, at 30 degrees) in the minute colour, 1 wide.
    const DialMark one = dial_mark(dial_geometry(0, 64, 32), 1);
    EXPECT_EQ(pixel(rgba, 64, static_cast<int32_t>(one.outerX - 1),
                    static_cast<int32_t>(one.outerY - 0.5)),
              kGreen);
    EXPECT_TRUE(std::filesystem::exists("1-2-3.png"));

    // An unknown style paints nothing and still makes one item.
    const auto empty = analog_area(64, 32, 3);
    area->prepareTimeArea();
    empty->prepareTimeArea();
    EXPECT_EQ(empty->encodedPicture, std::vector<uint8_t>(8 * 32, 0xFF));
    EXPECT_NE(area->encodedPicture, empty->encodedPicture);
    EXPECT_EQ(empty->unitCount, 1u);
}

TEST_F(AnalogClockTest, DialPictureByPathStretchesAndAMissingOneLeavesTheDialClear) {
    writePng("dial.png", 16, 8, 1, 0, 0);
    auto area = clock_area(clock_content(1, 0, 0, 0, 1, 0), 64, 32);
    area->changeDialPicture("dial.png");
    EXPECT_EQ(area->analogFlag, 1);
    EXPECT_EQ(area->dialStyle, 0u);
    EXPECT_EQ(area->timeContent.dateEnable, 1) << "the digital record stays, unused";
    area->prepareTimeArea();
    EXPECT_EQ(area->encodedPicture, std::vector<uint8_t>(8 * 32, 0x00)) << "lit all over";

    area->changeDialPicture("missing.png");
    const AreaBodyG5 body = time_area_body_g5(*area);
    EXPECT_EQ(area->encodedPicture, std::vector<uint8_t>(8 * 32, 0xFF));
    EXPECT_EQ(body.bytes.size(), 12 + 256 + 1 + 20u);

    // Back to a painted dial of the last clock given: none, so style 0 in black.
    area->removeDialPicture();
    EXPECT_EQ(area->analogFlag, 1);
    area->prepareTimeArea();
    EXPECT_EQ(area->encodedPicture, std::vector<uint8_t>(8 * 32, 0xFF));
}

TEST_F(AnalogClockTest, DialPictureBytesGoThroughAFileTheAreaOwns) {
    writePng("dial.png", 64, 32, 0, 1, 0);
    std::ifstream in("dial.png", std::ios::binary);
    const std::vector<uint8_t> png{std::istreambuf_iterator<char>(in), {}};
    std::string scratch;
    {
        auto area = analog_area(64, 32, 0);
        area->addDialPictureBytes(png);
        scratch = area->dialPicturePath;
        ASSERT_FALSE(scratch.empty());
        std::ifstream copy(scratch, std::ios::binary);
        EXPECT_EQ(std::vector<uint8_t>(std::istreambuf_iterator<char>(copy), {}), png);
        area->prepareTimeArea();
        EXPECT_EQ(area->encodedPicture, std::vector<uint8_t>(8 * 32, 0x00));

        // A second set of bytes replaces the first file; a path replaces the second.
        area->addDialPictureBytes(png);
        EXPECT_FALSE(std::filesystem::exists(scratch));
        scratch = area->dialPicturePath;
        area->changeDialPicture("dial.png");
        EXPECT_FALSE(std::filesystem::exists(scratch));
        area->addDialPictureBytes(png);
        scratch = area->dialPicturePath;
        EXPECT_TRUE(std::filesystem::exists(scratch));
    }
    EXPECT_FALSE(std::filesystem::exists(scratch)) << "gone with the area";
}

TEST_F(AnalogClockTest, PreviewShowsBlackHandsInTheFixedPose) {
    const auto area = analog_area(64, 64, 0);
    uint32_t length = 0;
    uint16_t count = 0;
    ASSERT_EQ(area->getOnePage(std::tm{}, 0, &length, &count), 0);
    EXPECT_EQ(count, 1);
    ASSERT_EQ(length, area->previewPng.size());
    ASSERT_EQ(area->previewData, reinterpret_cast<const uint8_t *>(area->previewPng.data()));
    const DecodedPng png = decodePng(area->previewPng);
    ASSERT_EQ(png.width, 64);
    ASSERT_EQ(png.height, 64);
    EXPECT_EQ(png.at(32, 27), 0xFF000000u) << "hour hand up, 10 long, black";
    EXPECT_EQ(png.at(32, 21), 0u);
    EXPECT_EQ(png.at(40, 32), 0xFF000000u) << "minute hand right, 12 long";
    EXPECT_EQ(png.at(46, 32), 0u);
    EXPECT_EQ(png.at(5, 5), 0u);

    const auto circle = analog_area(64, 64, 2);
    ASSERT_EQ(circle->getOnePage(std::tm{}, 0, &length, &count), 0);
    const DecodedPng ring = decodePng(circle->previewPng);
    EXPECT_EQ(ring.at(32, 27), 0u) << "no hands with style 2";
    EXPECT_EQ(ring.at(32, 1), 0xFF000000u) << "the circle, radius 31";
}

} // namespace
} // namespace zel

// Dynamic areas pushed to the embedded simulator, G5 and G6, over TCP and a serial line: what
// goes on the wire, what the simulator keeps and what its panel shows.
#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <memory>

#include "program/program_fixtures.h"
#include "program_road.h"
#include "sdk/globals.h"
#include "sim/app/panel_hook.h"
#include "sim/panel/dynamic_decoder.h"
#include "sim/panel/live_areas.h"
#include "sim/protocol/handlers_network.h"
#include "support/capture.h"
#include "support/fake_clock.h"
#include "support/sim_fixture.h"

namespace zel {
namespace {

using namespace zel::test;

constexpr const char *kHost = "127.0.0.1";
constexpr uint8_t kGroupDynamic = 0xA7;
constexpr uint16_t kG5Type = 0x0051;
constexpr uint16_t kG6Type = 0x0063;

ZelTextStyleRecord style(uint16_t size) {
    ZelTextStyleRecord s{};
    s.fontSize = size;
    s.fontColor = 1;
    s.horizontalAlign = 1;
    s.verticalAlign = 1;
    return s;
}

class DynamicRoad : public SimTest {
  protected:
    void start(uint16_t type, bool serial = false) {
        start_sim(type, serial);
        sim::install_panel_output(sim(), panel_in("panel", 128, 32));
    }
    std::vector<sim::Request> dynamic_commands() {
        std::vector<sim::Request> out;
        for (const sim::Request &r : sim().commands()) {
            if (r.group == kGroupDynamic) out.push_back(r);
        }
        return out;
    }
    // Lit pixels of the live panel inside a rectangle.
    static int lit(int x, int y, int w, int h) {
        const auto image = sim::read_png("panel/live-panel.png");
        if (!image) return -1;
        int count = 0;
        for (int py = y; py < y + h; ++py) {
            for (int px = x; px < x + w; ++px) {
                if (image->at(static_cast<uint32_t>(px), static_cast<uint32_t>(py)) != 0) ++count;
            }
        }
        return count;
    }
    int add_text_g5(int8_t area, const char *text) {
        const ZelFrameHeader_G5 frame{1, 2, 3, 4, 5, 6};
        return zelDual_dynamicArea_AddAreaWithTxt_5G(
            kHost, port(), ZEL_SCREEN_ONE_COLOR, static_cast<uint8_t>(area), 0, 5, 1, 0, nullptr, 0,
            32, 0, 64, 32, frame, 1, 1, 1, 300, 1, style(14), test::kDejaVu, text);
    }
};

TEST_F(DynamicRoad, G5TextOverTcpIsShownReplacedAndDeleted) {
    start(kG5Type);
    ASSERT_EQ(add_text_g5(1, "12"), 0);
    auto got = dynamic_commands();
    ASSERT_EQ(got.size(), 1u);
    EXPECT_EQ(got[0].version, 240);
    EXPECT_EQ(got[0].code, 0);
    const auto decoded = sim::decode_dynamic(got[0].data, sim::DynamicFamily::G5);
    ASSERT_TRUE(decoded.ok()) << decoded.error->what << " at " << decoded.error->offset;
    const auto &area = decoded.command->areas.at(0);
    EXPECT_EQ(area.areaID, 1);
    EXPECT_EQ(area.area.x, 32);
    EXPECT_EQ(area.area.width, 64);
    ASSERT_EQ(area.area.pages.size(), 1u);
    // one-colour pixels of a 64 x 32 page at column 32: 8 bytes a row
    EXPECT_EQ(area.area.pages[0].pixels.size(), 256u);
    EXPECT_GT(lit(32, 0, 64, 32), 0);
    EXPECT_EQ(lit(0, 0, 32, 32), 0);

    ASSERT_EQ(zelDual_dynamicArea_DelArea_5G(kHost, port(), 65), -1); // no traffic
    EXPECT_EQ(dynamic_commands().size(), 1u);
    ASSERT_EQ(zelDual_dynamicArea_DelArea_5G(kHost, port(), 1), 0);
    got = dynamic_commands();
    ASSERT_EQ(got.size(), 2u);
    EXPECT_EQ(got[1].data, (std::vector<uint8_t>{1, 0xA7, 1, 0, 0, 1, 1}));
    EXPECT_EQ(lit(32, 0, 64, 32), 0);
    ASSERT_EQ(zelDual_dynamicArea_DelArea_5G(kHost, port(), -1), 0);
    EXPECT_EQ(dynamic_commands().back().data, (std::vector<uint8_t>{1, 0xA7, 1, 0, 0, 0xFF}));
}

TEST_F(DynamicRoad, G6EntriesOverTcp) {
    start(kG6Type);
    ASSERT_EQ(zelDual_dynamicArea_AddAreaTxt_6G(kHost, port(), ZEL_SCREEN_ONE_COLOR, 2, 64, 0, 64,
                                                32, test::kDejaVu, 12, "7"),
              0);
    ZelDynamicAreaParams_G6 params{};
    params.AreaWidth = 32;
    params.AreaHeight = 32;
    params.sound.enable = 1;
    params.sound.text = "hi";
    params.sound.textLength = 2;
    const TextPageParams_G6 page = text_params_g6(1, 1, 12, 1);
    const uint16_t programs[] = {3, 1, 2};
    ASSERT_EQ(zelDual_dynamicArea_AddAreaTxtDetails_WithProgram_6G(
                  kHost, port(), ZEL_SCREEN_ONE_COLOR, 3, &params, &page,
                  "/USR/SHARE/FONTS/TRUETYPE/DEJAVU/DEJAVUSANS.TTF", "8", 3, programs),
              0); // a path that only the lower-case test sees as a file: rendered, still 0
    EXPECT_EQ(zelDual_dynamicArea_AddAreaTxtDetails_WithProgram_6G(
                  kHost, port(), ZEL_SCREEN_ONE_COLOR, 3, &params, &page, test::kDejaVu, "8", 513,
                  programs),
              -1);
    auto got = dynamic_commands();
    ASSERT_EQ(got.size(), 2u);
    auto decoded = sim::decode_dynamic(got[1].data, sim::DynamicFamily::G6);
    ASSERT_TRUE(decoded.ok()) << decoded.error->what << " at " << decoded.error->offset;
    const auto &listed = decoded.command->areas.at(0);
    EXPECT_EQ(listed.g6.allPrograms, 0);
    EXPECT_EQ(listed.g6.programs, (std::vector<uint16_t>{3, 1, 2}));
    EXPECT_EQ(listed.g6.immediate, 0);
    EXPECT_EQ(listed.g6.soundText, std::optional<std::string>("hi"));
    EXPECT_GT(lit(64, 0, 64, 32), 0);

    // A set with a repeated area number sends nothing after its ping.
    ZelDynamicAreaSetItem_G6 items[2]{};
    for (auto &item : items) {
        item.areaID = 5;
        item.area = params;
        item.area.sound.enable = 0;
        item.page = page;
        item.font = test::kDejaVu;
        item.content = "9";
    }
    EXPECT_EQ(zelDual_dynamicAreaS_AddTxtDetails_6G(kHost, port(), ZEL_SCREEN_ONE_COLOR, 2, items),
              -1);
    EXPECT_EQ(dynamic_commands().size(), 2u);
    items[1].areaID = 6;
    items[1].area.AreaX = 32;
    ASSERT_EQ(zelDual_dynamicAreaS_AddTxtDetails_6G(kHost, port(), ZEL_SCREEN_ONE_COLOR, 2, items),
              0);
    got = dynamic_commands();
    decoded = sim::decode_dynamic(got.back().data, sim::DynamicFamily::G6);
    ASSERT_TRUE(decoded.ok()) << decoded.error->what << " at " << decoded.error->offset;
    EXPECT_TRUE(decoded.command->splitLayout);
    EXPECT_EQ(decoded.command->areas.size(), 2u);

    ASSERT_EQ(zelDual_dynamicArea_DelAreas_6G(kHost, port(), 2, std::vector<uint8_t>{5, 6}.data()),
              0);
    EXPECT_EQ(dynamic_commands().back().data, (std::vector<uint8_t>{1, 0xA7, 1, 0, 0, 2, 5, 6}));
}

TEST_F(DynamicRoad, G6ItemListWithFrameTextAndPicture) {
    start(kG6Type);
    test::write_png("white.png", 60, 28, 0xFFFFFF);
    test::write_png("strip.png", 8, 2, 0xFFFFFF); // a frame 2 pixels thick
    DynamicAreaBaseInfo_5G infos[2]{};
    infos[0].kind = 1;
    infos[0].displayEffect = 1;
    infos[0].style = style(12);
    infos[0].fontName = "DejaVu Sans";
    infos[0].text = "6";
    infos[1].kind = 2;
    infos[1].displayEffect = 1;
    infos[1].picturePath = "white.png";
    const DynamicAreaBaseInfo_5G *items[] = {&infos[0], &infos[1]};
    ZelAreaFrmae_Dynamic_G6 frame{};
    frame.frameFlag = 1;
    frame.frameHeader[4] = 2;
    frame.pngPath = "strip.png";
    std::remove("testDemoLog");
    ASSERT_EQ(zelDual_dynamicArea_AddAreaInfos_6G(kHost, port(), ZEL_SCREEN_ONE_COLOR, 4, 7, 9, 1,
                                                  0, nullptr, 1, 0, 0, 64, 32, frame, 2, items),
              0);
    std::ifstream in("testDemoLog");
    const std::string log{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    EXPECT_NE(log.find(" [TEST] [DEBUG   ] # DEMO # uWidth = 64;  uHeight = 32;  fontName = "
                       "DejaVu Sans; \r\n\n"),
              std::string::npos)
        << log;
    const auto got = dynamic_commands();
    ASSERT_EQ(got.size(), 1u);
    const auto decoded = sim::decode_dynamic(got[0].data, sim::DynamicFamily::G6);
    ASSERT_TRUE(decoded.ok()) << decoded.error->what << " at " << decoded.error->offset;
    const auto &area = decoded.command->areas.at(0);
    EXPECT_EQ(area.g6.runMode, 7);
    EXPECT_EQ(area.g6.timeout, 9);
    EXPECT_EQ(area.area.width, 64); // the rectangle as given; pages rendered on 60 x 28
    ASSERT_TRUE(area.area.frame.has_value());
    ASSERT_EQ(area.area.pages.size(), 2u);
    // one-colour rows on the screen's 32-pixel grid: columns 2 to 61 take two words, 28 rows
    EXPECT_EQ(area.area.pages[0].pixels.size(), 28u * 8u);
    EXPECT_EQ(area.area.pages[1].pixels.data(),
              area.area.pages[0].pixels.data() + area.area.pages[0].pixels.size());
    EXPECT_GT(lit(2, 2, 60, 28), 0);
}

TEST_F(DynamicRoad, PingedTypeGoesIntoThePacketOfTheSingleAreaEntriesOnly) {
    // The ping says 0x0064, the probe of the connection 0x0063. Entries that store the ping's
    // type in their peer send it in the packet's device type word; the set and the item list
    // keep the probe's.
    start(kG6Type);
    {
        auto lock = sim().lock();
        auto &state = sim().module_state<sim::NetworkState>();
        state.pingOverride = std::vector<uint8_t>(52, 0);
        (*state.pingOverride)[0] = 0x64;
    }
    ZelDynamicAreaSetItem_G6 item{};
    item.areaID = 1;
    item.area.AreaWidth = 32;
    item.area.AreaHeight = 32;
    item.page = text_params_g6(1, 1, 12, 1);
    item.font = test::kDejaVu;
    item.content = "1";
    DynamicAreaBaseInfo_5G info{};
    info.kind = 1;
    info.style = style(12);
    info.fontName = "DejaVu Sans";
    info.text = "1";
    const DynamicAreaBaseInfo_5G *infos[] = {&info};
    const ZelAreaFrmae_Dynamic_G6 noFrame{};
    struct Case {
        const char *entry;
        std::function<int32_t()> call;
        uint16_t deviceType;
    };
    const Case cases[] = {
        {"AddAreaTxt_6G",
         [&] {
             return zelDual_dynamicArea_AddAreaTxt_6G(kHost, port(), ZEL_SCREEN_ONE_COLOR, 1, 0, 0,
                                                      32, 32, test::kDejaVu, 12, "1");
         },
         0x0064},
        {"dynamicAreaS_AddTxtDetails_6G",
         [&] {
             return zelDual_dynamicAreaS_AddTxtDetails_6G(kHost, port(), ZEL_SCREEN_ONE_COLOR, 1,
                                                          &item);
         },
         kG6Type},
        {"AddAreaInfos_6G",
         [&] {
             return zelDual_dynamicArea_AddAreaInfos_6G(kHost, port(), ZEL_SCREEN_ONE_COLOR, 1, 0,
                                                        5, 1, 0, nullptr, 1, 0, 0, 32, 32, noFrame,
                                                        1, infos);
         },
         kG6Type},
    };
    for (const Case &k : cases) {
        sim().clear_requests();
        auto quiet = std::make_unique<StdoutCapture>();
        const int32_t result = k.call();
        const std::string out = quiet->text();
        quiet.reset();
        EXPECT_EQ(result, 0) << k.entry;
        EXPECT_NE(out.find("oClient.m_DeviceType != retdata.ControllerType \n"), std::string::npos)
            << k.entry;
        const auto got = dynamic_commands();
        ASSERT_EQ(got.size(), 1u) << k.entry;
        EXPECT_EQ(got[0].deviceType, k.deviceType) << k.entry;
    }
}

TEST_F(DynamicRoad, IndependentSoundReachesTheController) {
    start(kG6Type);
    ZelSoundItem_Independ records[3]{};
    for (auto &r : records) {
        r.sound.text = "abcd";
        r.sound.textLength = 4;
    }
    ASSERT_EQ(zelDual_dynamicArea_UpdateSoundIndepend(kHost, port(), records, 3, 9), 0);
    records[0].sound.textLength = 0;
    EXPECT_EQ(zelDual_dynamicArea_InsertSoundIndepend(kHost, port(), &records[0], 1, 2), -1);
    const auto got = dynamic_commands();
    ASSERT_EQ(got.size(), 1u);
    EXPECT_EQ(got[0].code, 2);
    EXPECT_EQ(got[0].data.size(), 7u + 3u * (5u + 20u + 4u));
}

TEST_F(DynamicRoad, MalformedCommandIsReportedWithItsOffset) {
    start(kG5Type);
    sim::LiveAreas live;
    const std::vector<uint8_t> cut = {1, 0xA7, 0, 0, 0, 30, 0, 0, 0, 1};
    const auto error = live.apply(cut, sim::DynamicFamily::G5);
    ASSERT_TRUE(error.has_value());
    EXPECT_EQ(error->offset, 5u); // the data length claims more than follows
    EXPECT_EQ(live.size(), 0u);
}

class DynamicSerial : public DynamicRoad {
  protected:
    FakeClock m_clock{FakeClock::kPaced};
};

TEST_F(DynamicSerial, BothFamiliesOverASerialLine) {
    start(kG6Type, true);
    const char *tty = sim().serial_path().c_str();
    ZelDynamicAreaParams_G6 params{};
    params.AreaWidth = 64;
    params.AreaHeight = 32;
    const TextPageParams_G6 page = text_params_g6(1, 1, 12, 1);
    EXPECT_EQ(zelDual_dynamicArea_AddAreaTxtDetails_6G_Serial(tty, 3, ZEL_SCREEN_ONE_COLOR, 1,
                                                              &params, &page, test::kDejaVu, "4"),
              -1); // this entry knows two speeds only
    ASSERT_EQ(zelDual_dynamicArea_AddAreaTxtDetails_6G_Serial(tty, 2, ZEL_SCREEN_ONE_COLOR, 1,
                                                              &params, &page, test::kDejaVu, "4"),
              0);
    ASSERT_EQ(zelDual_dynamicArea_DelArea_6G_Serial(tty, 2, 1), 0);
    auto got = dynamic_commands();
    ASSERT_EQ(got.size(), 2u);
    EXPECT_EQ(got[0].transport, sim::Transport::Serial);
    EXPECT_EQ(got[1].data, (std::vector<uint8_t>{1, 0xA7, 1, 0, 0, 1, 1}));
    EXPECT_EQ(g_deletePeerKind.load(), kDeletePeerTcp);

    const ZelFrameHeader_G5 frame{0, 0, 0, 0, 0, 0};
    sim().set_controller_type(kG5Type);
    ASSERT_EQ(zelDual_dynamicArea_AddAreaWithTxt_5G_Serial(
                  tty, 2, ZEL_SCREEN_ONE_COLOR, 2, 0, 5, 1, 0, nullptr, 0, 0, 0, 64, 32, frame, 1,
                  1, 1, 300, 1, style(14), test::kDejaVu, "5"),
              0);
    got = dynamic_commands();
    ASSERT_EQ(got.size(), 3u);
    EXPECT_TRUE(sim::decode_dynamic(got[2].data, sim::DynamicFamily::G5).ok());
    EXPECT_GT(lit(0, 0, 64, 32), 0);
}

TEST_F(DynamicSerial, ItemListV2FrameIsEncodedForTheEntrysColour) {
    start(kG6Type, true);
    test::write_png("strip.png", 8, 2, 0xFFFFFF); // 8 lit pixels a row, 2 rows
    // The screen of the call before: one colour, mode 4, plane order 1. The V2 serial form sets
    // the screen only after it has encoded the frame, which takes the entry's two colours with
    // that mode and order.
    auto quiet = std::make_unique<StdoutCapture>();
    zelDual_program_setScreenParams_G56(ZEL_SCREEN_ONE_COLOR, kG6Type, 1);
    DynamicAreaBaseInfo_5G none{};
    none.kind = 3; // adds no page: the command is the area's fields and its frame
    ZelAreaFrmae_Dynamic_G6 frame{};
    frame.frameFlag = 1;
    frame.frameHeader[4] = 2;
    frame.pngPath = "strip.png";
    ASSERT_EQ(zelDual_dynamicArea_AddAreaInfos_6G_V2_Serial(
                  sim().serial_path().c_str(), 2, ZEL_SCREEN_TWO_COLORS, 4, 0, 5, 1, 0, nullptr, 1,
                  0, 0, 64, 32, frame, 1, &none),
              0);
    quiet.reset();
    const auto got = dynamic_commands();
    ASSERT_EQ(got.size(), 1u);
    // itemLen 33 + 13 + 16: the strip is two planes of one 32-bit word a row, 8 lit positions
    // (0 bits) and 24 dark ones, low byte first.
    std::vector<uint8_t> expected = {1, 0xA7, 0, 0, 0, 1, 0}; // head, one area
    const auto add = [&](std::initializer_list<uint8_t> bytes) {
        expected.insert(expected.end(), bytes);
    };
    add({62, 0, 0, 0});              // itemLen
    add({4, 0, 5, 0, 1, 0, 0, 1});   // areaID, runMode, timeout, allPrograms, count, immediate
    add({0, 0, 0, 0, 16});           // reserved word, AreaType
    add({0, 0, 0, 0, 64, 0, 32, 0}); // the rectangle
    add({1, 0, 0, 0, 0, 2});         // hasFrame, the frame header
    expected.insert(expected.end(), 8, 0); // the frame block's zeros
    for (int word = 0; word < 4; ++word) {
        add({0xFF, 0xFF, 0xFF, 0x00}); // plane 1, rows 1 and 2, then plane 2
    }
    expected.insert(expected.end(), 4 + 5 + 2, 0); // tail, reserved, pageCount
    EXPECT_EQ(got[0].data, expected);
}

} // namespace
} // namespace zel

// Device-control commands against the embedded simulator: the exact command data the
// controller received and the result the host got.
#include <gtest/gtest.h>

#include <array>
#include <ctime>
#include <functional>
#include <string>
#include <vector>

#include "commands_fixture.h"
#include "sim/protocol/sim_control.h"
#include "support/capture.h"
#include "support/fake_clock.h"
#include "support/hex.h"
#include "zel_sdk_dual.h"

namespace zel::test {
namespace {

constexpr const char *kHost = "127.0.0.1";
constexpr uint8_t kControl = 0xA2;

class ControlTest : public CommandsTest {};

TEST_F(ControlTest, SettingsSendTheirExactData) {
    const uint8_t timing[] = {23, 59, 0, 7, 12, 30, 1, 99};
    std::array<uint8_t, 49> brightness;
    for (std::size_t i = 0; i < brightness.size(); ++i)
        brightness[i] = static_cast<uint8_t>(i);
    const uint8_t timingReset[11] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11};
    const uint8_t lock[] = {0xAA, 0xBB, 0xCC, 0xDD};
    const char none[6] = {};
    const uint8_t key[] = {'F', 'W', '0', '1'};

    struct Case {
        const char *name;
        std::function<int32_t(uint16_t)> call;
        uint8_t code;
        std::string data;
    };
    const Case cases[] = {
        {"sysReset", [](uint16_t p) { return zelDual_cmd_sysReset(kHost, p); }, 0x01, ""},
        {"firmwareActivate",
         [&](uint16_t p) { return zelDual_cmd_firmwareActivate(kHost, p, key); }, 0x03, "46573031"},
        {"coerceOnOff", [](uint16_t p) { return zelDual_cmd_coerceOnOff(kHost, p, 1); }, 0x05,
         "01"},
        // Two entries: 9 bytes, each entry byte in BCD (23 goes out as 0x23).
        {"timingOnOff", [&](uint16_t p) { return zelDual_cmd_timingOnOff(kHost, p, 2, timing); },
         0x06, "02 23590007 12300199"},
        {"setBrightness",
         [&](uint16_t p) { return zelDual_cmd_setBrightness(kHost, p, brightness.data()); }, 0x07,
         "000102030405060708090A0B0C0D0E0F101112131415161718191A1B1C1D1E1F"
         "202122232425262728292A2B2C2D2E2F30"},
        {"cancelTimingOnOff", [](uint16_t p) { return zelDual_cmd_cancelTimingOnOff(kHost, p); },
         0x08, ""},
        {"screenLock", [](uint16_t p) { return zelDual_cmd_screenLock(kHost, p, 1, 0); }, 0x0D,
         "01 00"},
        {"programLock",
         [&](uint16_t p) { return zelDual_cmd_programLock(kHost, p, 1, 2, lock, 0x11223344); },
         0x0E, "01 02 AABBCCDD 44332211"},
        {"setPassword",
         [&](uint16_t p) { return zelDual_cmd_setPassword(kHost, p, none, "secret"); }, 0x10,
         "000000000000 736563726574"},
        {"deletePassword",
         [](uint16_t p) { return zelDual_cmd_deletePassword(kHost, p, "secret"); }, 0x11,
         "736563726574"},
        {"setDelayTime", [](uint16_t p) { return zelDual_cmd_setDelayTime(kHost, p, 0x1234); },
         0x12, "3412"},
        {"setBtnFunc", [](uint16_t p) { return zelDual_cmd_setBtnFunc(kHost, p, 3); }, 0x13,
         "03 00 00 00 00 00"},
        {"setTimingReset",
         [&](uint16_t p) { return zelDual_cmd_setTimingReset(kHost, p, timingReset); }, 0x14,
         "0102030405060708090A0B"},
        {"setDispMode", [](uint16_t p) { return zelDual_cmd_setDispMode(kHost, p, 2); }, 0x15,
         "02 00 00 00 00 00"},
        {"setSpeedAdjust", [](uint16_t p) { return zelDual_cmd_setSpeedAdjust(kHost, p, 0x0102); },
         0x1A, "0201"},
        {"setScreenAddress", [](uint16_t p) { return zelDual_cmd_setScreenAddress(kHost, p, 7); },
         0x1B, "0700"},
        {"SetExternalRelay", [](uint16_t p) { return zelDual_cmd_SetExternalRelay(kHost, p, 1); },
         0x32, "01 00"},
    };
    for (const Case &c : cases) {
        sim().clear_requests();
        EXPECT_EQ(c.call(port()), 0) << c.name;
        const auto got = received(kControl);
        ASSERT_EQ(got.size(), 1u) << c.name;
        EXPECT_EQ(got[0].code, c.code) << c.name;
        EXPECT_EQ(got[0].data, hex(c.data)) << c.name;
    }
    const auto lockState = sim().lock();
    const sim::ControlState &state = sim::control_state(sim());
    EXPECT_EQ(state.resets, 1);
    EXPECT_EQ(state.settings.at(0x32), hex("01 00"));
    EXPECT_EQ(state.settings.count(0x06), 0u) << "cancelled after it was set";
}

TEST_F(ControlTest, ClockIsSetToTheHostsLocalTimeInBcd) {
    const std::time_t before = std::time(nullptr);
    ASSERT_EQ(zelDual_cmd_check_time(kHost, port()), 0);
    const std::time_t after = std::time(nullptr);
    const auto got = received(kControl);
    ASSERT_EQ(got.size(), 1u);
    EXPECT_EQ(got[0].code, 0x02);
    ASSERT_EQ(got[0].data.size(), 8u);

    auto bcd = [](uint8_t b) { return (b >> 4) * 10 + (b & 15); };
    const auto &d = got[0].data;
    std::tm sent{};
    sent.tm_year = bcd(d[1]) * 100 + bcd(d[0]) - 1900; // the year word, digit by digit
    sent.tm_mon = bcd(d[2]) - 1;
    sent.tm_mday = bcd(d[3]);
    sent.tm_hour = bcd(d[4]);
    sent.tm_min = bcd(d[5]);
    sent.tm_sec = bcd(d[6]);
    sent.tm_isdst = -1;
    const std::time_t t = std::mktime(&sent);
    EXPECT_GE(t, before);
    EXPECT_LE(t, after);
    EXPECT_EQ(bcd(d[7]), sent.tm_wday) << "weekday, Sunday 0";
}

TEST_F(ControlTest, QueriesCopyTheAnswerIntoTheHostsBuffer) {
    std::array<uint8_t, 8> id{};
    EXPECT_EQ(zelDual_cmd_readControllerID(kHost, port(), id.data()), 0);
    // The default identifier holds every byte that the frame must escape.
    EXPECT_EQ(std::vector<uint8_t>(id.begin(), id.end()), hex("01 5A A5 5B A6 06 07 08"));

    std::vector<uint8_t> status(62, 0xEE);
    EXPECT_EQ(zelDual_cmd_check_controllerStatus(kHost, port(), status.data()), 0);
    EXPECT_EQ(status[0], 0x10);
    EXPECT_EQ(status[60], 0x10 + 60);
    EXPECT_EQ(status[61], 0xEE);

    // A status longer than 61 bytes: 61 of them arrive and the result is 1.
    {
        const auto lock = sim().lock();
        sim::control_state(sim()).status.assign(70, 0x42);
    }
    status.assign(62, 0xEE);
    StdoutCapture out;
    EXPECT_EQ(zelDual_cmd_check_controllerStatus(kHost, port(), status.data()), 1);
    EXPECT_EQ(out.text(), "return Data Length too long!!! Control Card Return:cmd_header->datalen "
                          "= 70; but membuff len = 61;\n ");
    EXPECT_EQ(status[60], 0x42);
    EXPECT_EQ(status[61], 0xEE);
}

TEST_F(ControlTest, BattleTimeKeepsTheBcdYearAndDecodesTheRest) {
    std::array<uint8_t, 20> record;
    record.fill(0xEE);
    EXPECT_EQ(zelDual_cmd_battieTime(kHost, port(), 3, record.data()), 0);
    EXPECT_EQ(received(kControl).at(0).data, hex("03"));
    // 0x2026 arrives as 0x2026; 12-31 23:59:58 arrives decoded.
    EXPECT_EQ(std::vector<uint8_t>(record.begin(), record.begin() + 8),
              (std::vector<uint8_t>{0x26, 0x20, 12, 31, 23, 59, 58, 0}));
    EXPECT_EQ(record[19], 0);

    // A shorter answer: bytes behind its length keep what the host had there.
    {
        const auto lock = sim().lock();
        sim::control_state(sim()).battleTime = hex("2620 0307 1405");
    }
    record.fill(0xEE);
    EXPECT_EQ(zelDual_cmd_battieTime(kHost, port(), 0, record.data()), 0);
    EXPECT_EQ(std::vector<uint8_t>(record.begin(), record.begin() + 7),
              (std::vector<uint8_t>{0x26, 0x20, 3, 7, 14, 5, 0xEE}));

    // A refusal still writes the record, from the zeroed answer buffer.
    {
        const auto lock = sim().lock();
        sim::control_state(sim()).battleTime = hex("2620 0307 1405 00");
    }
    sim().on(kControl, 0x17,
             [](sim::Simulator &, const sim::Request &) { return sim::Reply::error(9); });
    record.fill(0xEE);
    EXPECT_EQ(zelDual_cmd_battieTime(kHost, port(), 0, record.data()), 9);
    EXPECT_EQ(record[0], 0);
    EXPECT_EQ(record[1], 0);
}

TEST_F(ControlTest, CapacityZeroCommandsRefuseDataAnswers) {
    std::array<uint8_t, 8> out;
    out.fill(0xEE);
    {
        StdoutCapture capture;
        EXPECT_EQ(zelDual_cmd_getStopwatch(kHost, port(), 5, out.data()), -1);
        EXPECT_EQ(zelDual_cmd_getSensorBrightnessValue(kHost, port(), out.data()), -1);
        EXPECT_EQ(capture.text(), "nCmdDataLen <= 0 \n nCmdDataLen <= 0 \n ");
    }
    EXPECT_EQ(out[0], 0xEE);
    const auto got = received(kControl);
    ASSERT_EQ(got.size(), 2u);
    EXPECT_EQ(got[0].code, 0x18);
    EXPECT_EQ(got[0].data, hex("05"));
    EXPECT_EQ(got[1].code, 0x19);
    EXPECT_TRUE(got[1].data.empty());

    // An acknowledge is a success.
    sim().on(kControl, 0x18,
             [](sim::Simulator &, const sim::Request &) { return sim::Reply::ack(); });
    EXPECT_EQ(zelDual_cmd_getStopwatch(kHost, port(), 1, out.data()), 0);
}

TEST_F(ControlTest, ControllerErrorCodesAndTheEmptyVolumeCommand) {
    // The controller refuses a wrong old password with its own error code.
    EXPECT_EQ(zelDual_cmd_setPassword(kHost, port(), "wrong!", "secret"),
              sim::control_error::kBadPassword);

    // The volume command connects and probes, and sends nothing.
    sim().clear_requests();
    EXPECT_EQ(zelDual_cmd_setGlobalVolume(kHost, port(), 10, 20), 0);
    const auto all = sim().requests();
    ASSERT_EQ(all.size(), 1u);
    EXPECT_TRUE(all[0].is_probe());
}

class ControlSerialTest : public CommandsTest {
  protected:
    void SetUp() override { start_sim(0x0058, true); }
    test::FakeClock m_clock{test::FakeClock::kPaced};
};

TEST_F(ControlSerialTest, ProgramLockFormsDifferInLengthAndValueOffset) {
    const uint8_t lock[] = {0xAA, 0xBB, 0xCC, 0xDD};
    EXPECT_EQ(zelDual_cmd_uart_programLock(tty(), 2, 1, 2, lock, 0x11223344), 0);
    EXPECT_EQ(zelDual_cmd_uart_programLock_6G(tty(), 2, 1, 2, lock, 0x11223344), 0);
    const auto got = received(kControl);
    ASSERT_EQ(got.size(), 2u);
    EXPECT_EQ(got[0].transport, sim::Transport::Serial);
    EXPECT_EQ(got[0].version, 7);
    EXPECT_EQ(got[0].code, 0x0E);
    EXPECT_EQ(got[0].data, hex("01 02 AABBCCDD 44332211")); // the value at offset 6
    EXPECT_EQ(got[1].code, 0x0E);
    EXPECT_EQ(got[1].data, hex("01 02 AABBCCDD 00 44332211")); // at offset 7
}

} // namespace
} // namespace zel::test

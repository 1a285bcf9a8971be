// zelctl as an integrator runs it: the program against the embedded simulator on loopback, its
// exit status, its JSON answer, and its progress bar on a terminal but not in a pipe.
#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <netinet/in.h>
#include <nlohmann/json.hpp>
#include <poll.h>
#include <pty.h>
#include <string>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include "program_road.h"
#include "sim/panel/dynamic_decoder.h"
#include "sim/protocol/sim_control.h"
#include "sim/protocol/sim_files.h"
#include "support/sim_fixture.h"

namespace zel::test {
namespace {

#ifdef ZELCTL_PATH
namespace fs = std::filesystem;
using nlohmann::json;

struct Outcome {
    int status = -1;
    std::string out;
    std::string err;
};

// Runs zelctl with its output in pipes (files here), as a script would.
Outcome zelctl(const std::string &args) {
    const std::string cmd =
        std::string(ZELCTL_PATH) + " " + args + " >out.txt 2>err.txt </dev/null";
    const int raw = std::system(cmd.c_str());
    return {WIFEXITED(raw) ? WEXITSTATUS(raw) : -1, text_file("out.txt"), text_file("err.txt")};
}

// Runs zelctl on a pseudo-terminal, as at a person's terminal: everything it writes, both
// streams together.
Outcome zelctl_on_terminal(const std::vector<std::string> &args) {
    int master = -1;
    const pid_t pid = ::forkpty(&master, nullptr, nullptr, nullptr);
    if (pid == 0) {
        std::vector<char *> argv{const_cast<char *>(ZELCTL_PATH)};
        for (const auto &a : args)
            argv.push_back(const_cast<char *>(a.c_str()));
        argv.push_back(nullptr);
        ::execv(ZELCTL_PATH, argv.data());
        ::_exit(127);
    }
    Outcome run;
    char buffer[4096];
    for (;;) {
        pollfd p{master, POLLIN, 0};
        if (::poll(&p, 1, 30000) <= 0) break;
        const ssize_t n = ::read(master, buffer, sizeof buffer);
        if (n <= 0) break; // EIO once the child has closed the terminal
        run.out.append(buffer, static_cast<std::size_t>(n));
    }
    ::close(master);
    int raw = 0;
    ::waitpid(pid, &raw, 0);
    run.status = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
    return run;
}

int bcd(uint8_t b) {
    return (b >> 4) * 10 + (b & 15);
}

class ZelctlTest : public SimTest {
  protected:
    std::string at() const { return "--host 127.0.0.1 --port " + std::to_string(port()); }
};

TEST_F(ZelctlTest, PingsAndSetsTheClockOfAZone) {
    start_sim(0x0051);
    Outcome r = zelctl(at() + " ping --json");
    ASSERT_EQ(r.status, 0) << r.err;
    json answer = json::parse(r.out);
    EXPECT_EQ(answer["controllerType"], "0x0051");
    EXPECT_EQ(answer["family"], "G5");
    EXPECT_EQ(answer["result"], 0);

    // A zone five and a half hours east of UTC, given as a POSIX rule (no zone files needed).
    const std::time_t before = std::time(nullptr);
    r = zelctl(at() + " time set --tz ZEL-5:30 --json");
    const std::time_t after = std::time(nullptr);
    ASSERT_EQ(r.status, 0) << r.err;
    std::array<uint8_t, 8> d{};
    {
        auto lock = sim().lock();
        ASSERT_TRUE(sim::control_state(sim()).clock.has_value());
        d = *sim::control_state(sim()).clock;
    }
    std::tm sent{};
    sent.tm_year = bcd(d[1]) * 100 + bcd(d[0]) - 1900; // the year word, digit by digit
    sent.tm_mon = bcd(d[2]) - 1;
    sent.tm_mday = bcd(d[3]);
    sent.tm_hour = bcd(d[4]);
    sent.tm_min = bcd(d[5]);
    sent.tm_sec = bcd(d[6]);
    const std::time_t zoned = ::timegm(&sent) - (5 * 3600 + 30 * 60);
    EXPECT_GE(zoned, before);
    EXPECT_LE(zoned, after);
    EXPECT_EQ(bcd(d[7]), sent.tm_wday) << "weekday, Sunday 0";

    // `time get` shows the stamp of the same zone: the clock just set, give or take the seconds
    // between the two runs.
    r = zelctl("time get --tz ZEL-5:30 --json");
    ASSERT_EQ(r.status, 0) << r.err;
    answer = json::parse(r.out);
    std::tm shown{};
    ASSERT_NE(::strptime(answer["time"].get<std::string>().c_str(), "%Y-%m-%d %H:%M:%S", &shown),
              nullptr);
    const std::time_t shownUtc = ::timegm(&shown) - (5 * 3600 + 30 * 60);
    EXPECT_GE(shownUtc, before);
    EXPECT_LE(shownUtc, std::time(nullptr));
}

TEST_F(ZelctlTest, ExitStatusSaysWhatFailed) {
    // Nothing listens: the connection is refused, the library's -1 is status 101.
    Outcome r = zelctl("--host 127.0.0.1 --port " + std::to_string(test::ClosedPort().port()) +
                       " ping --json");
    EXPECT_EQ(r.status, 101);
    const json answer = json::parse(r.out);
    EXPECT_EQ(answer["result"], -1);
    EXPECT_EQ(answer["exit"], 101);

    // A controller error code passes through: the simulator acknowledges with code 9.
    start_sim(0x0051);
    sim().set_faults({.errorCode = 9});
    r = zelctl(at() + " power off");
    EXPECT_EQ(r.status, 9);
    EXPECT_NE(r.err.find("error code 9"), std::string::npos) << r.err;

    // No controller named, and a command the serial line does not carry: 110.
    EXPECT_EQ(zelctl("ping").status, 110);
    EXPECT_EQ(zelctl("--serial /dev/null status").status, 110);
    // A description with a misspelt key stops before any traffic: 111, with the key named.
    std::ofstream("bad.json") << R"({"screen": {"controllerType": "0x0051"},
        "areas": [{"type": "text", "x": 0, "y": 0, "width": 8, "height": 8, "txet": "A"}]})";
    r = zelctl(at() + " send-program bad.json");
    EXPECT_EQ(r.status, 111);
    EXPECT_NE(r.err.find("\"txet\""), std::string::npos) << r.err;
}

// The example description: a text area, a picture area, a digital and an analog clock.
const fs::path kExample = fs::path(ZEL_SOURCE_DIR) / "examples/zelctl/car-park.json";

TEST_F(ZelctlTest, SendsAJsonProgramThatThePanelShows) {
    for (const uint16_t type : {uint16_t{0x0051}, uint16_t{0x0063}}) {
        SCOPED_TRACE(type);
        const std::string folder = "panel-" + std::to_string(type);
        sim::install_panel_output(start_sim(type), panel_in(folder.c_str(), 128, 64, 2));
        const Outcome r = zelctl(at() + " send-program --json " + kExample.string());
        ASSERT_EQ(r.status, 0) << r.out << r.err;
        const json answer = json::parse(r.out);
        const bool g6 = type == 0x0063;
        EXPECT_EQ(answer["family"], g6 ? "G6" : "G5");
        ASSERT_EQ(answer["files"].size(), g6 ? 2u : 1u);
        EXPECT_EQ(answer["files"][0]["name"], "P007"); // program number 7
        if (g6) EXPECT_EQ(answer["files"][1]["name"], "D007");

        const auto landed = sim::file_system(sim()).find(sim::FileSpace::Ofs, {'P', '0', '0', '7'});
        ASSERT_TRUE(landed.has_value());
        EXPECT_EQ(landed->bytes.size(), answer["files"][0]["bytes"].get<std::size_t>());

        ASSERT_TRUE(fs::exists(folder + "/P007-panel.png"));
        const json shown = json::parse(text_file((folder + "/P007.json").c_str()));
        ASSERT_FALSE(shown.contains("error")) << shown.dump();
        // The example's four areas, in its order: two text and picture areas, two clocks.
        ASSERT_EQ(shown["areas"].size(), 4u);
        const int types[] = {0, 0, 2, 2}, xs[] = {0, 96, 0, 96}, ys[] = {0, 0, 32, 32};
        for (int i = 0; i < 4; ++i) {
            EXPECT_EQ(shown["areas"][i]["type"], types[i]) << i;
            EXPECT_EQ(shown["areas"][i]["rect"]["x"], xs[i]) << i;
            EXPECT_EQ(shown["areas"][i]["rect"]["y"], ys[i]) << i;
        }
        for (int i = 0; i < 4; ++i)
            EXPECT_TRUE(fs::exists(folder + "/P007-area" + std::to_string(i) + "-page0.png")) << i;
        // The working folder stays clean: the library's debugging pictures went elsewhere.
        EXPECT_FALSE(fs::exists("dataFantx.bin"));
        EXPECT_FALSE(fs::exists("0.png"));
    }
}

TEST_F(ZelctlTest, ShowsAProgressBarOnATerminalOnly) {
    start_sim(sim::Config(loopback_config(0x0051, true)));
    const std::string line = sim().serial_path();
    const std::vector<std::string> args = {"--serial", line,           "--speed",
                                           "57600",    "send-program", kExample.string()};
    const Outcome tty = zelctl_on_terminal(args);
    ASSERT_EQ(tty.status, 0) << tty.out;
    EXPECT_NE(tty.out.find("P007 ["), std::string::npos) << tty.out;
    EXPECT_NE(tty.out.find("] 100%"), std::string::npos) << tty.out;
    EXPECT_NE(tty.out.find("P007 written"), std::string::npos) << tty.out;

    std::string joined;
    for (const auto &a : args)
        joined += " '" + a + "'";
    const Outcome piped = zelctl(joined);
    ASSERT_EQ(piped.status, 0) << piped.err;
    EXPECT_EQ(piped.err.find('['), std::string::npos) << piped.err;
    EXPECT_EQ(piped.out.find('['), std::string::npos) << piped.out;
    EXPECT_NE(piped.out.find("P007 written"), std::string::npos) << piped.out;
}

// A text in a dynamic area of each family (the family from the ping), then deletes: one area,
// every area, and a delete that names the family so that no ping goes first.
TEST_F(ZelctlTest, SendsAndDeletesADynamicText) {
    for (const uint16_t type : {uint16_t{0x0051}, uint16_t{0x0063}}) {
        SCOPED_TRACE(type);
        const bool g6 = type == 0x0063;
        start_sim(type);
        const auto dynamic = [&] {
            std::vector<sim::Request> out;
            for (const sim::Request &q : sim().commands())
                if (q.group == 0xA7) out.push_back(q);
            return out;
        };
        Outcome r = zelctl(at() + " send-text --json --area 3 --x 32 --y 0 --width 64 --height 32"
                                  " --size 12 --color red --effect 1 'P 42'");
        ASSERT_EQ(r.status, 0) << r.out << r.err;
        const json answer = json::parse(r.out);
        EXPECT_EQ(answer["family"], g6 ? "G6" : "G5");
        EXPECT_EQ(answer["area"], 3);
        auto got = dynamic();
        ASSERT_EQ(got.size(), 1u);
        EXPECT_EQ(got[0].version, 240);
        const auto decoded =
            sim::decode_dynamic(got[0].data, g6 ? sim::DynamicFamily::G6 : sim::DynamicFamily::G5);
        ASSERT_TRUE(decoded.ok()) << decoded.error->what << " at " << decoded.error->offset;
        ASSERT_EQ(decoded.command->areas.size(), 1u);
        const auto &area = decoded.command->areas[0];
        EXPECT_EQ(area.areaID, 3);
        EXPECT_EQ(area.area.x, 32);
        EXPECT_EQ(area.area.y, 0);
        EXPECT_EQ(area.area.width, 64);
        EXPECT_EQ(area.area.height, 32);
        ASSERT_EQ(area.area.pages.size(), 1u);
        EXPECT_EQ(area.area.pages[0].effect(), 1);
        // one-colour pixels of a 64 x 32 page: 8 bytes a row
        EXPECT_EQ(area.area.pages[0].pixels.size(), 256u);
        if (!g6) EXPECT_EQ(area.g5.headByte0, 3);

        r = zelctl(at() + " send-text --delete 3");
        ASSERT_EQ(r.status, 0) << r.err;
        EXPECT_EQ(dynamic().back().data, (std::vector<uint8_t>{1, 0xA7, 1, 0, 0, 1, 3}));
        r = zelctl(at() + " send-text --family " + (g6 ? "G6" : "G5") + " --delete 255");
        ASSERT_EQ(r.status, 0) << r.err;
        EXPECT_EQ(dynamic().size(), 3u);
        if (!g6) EXPECT_EQ(dynamic().back().data, (std::vector<uint8_t>{1, 0xA7, 1, 0, 0, 0xFF}));
    }
    // No text and no --delete: a wrong command line.
    EXPECT_EQ(zelctl(at() + " send-text --family G5 --width 8 --height 8").status, 110);
}

#else
TEST(ZelctlTest, NotBuilt) {
    GTEST_SKIP() << "zelctl is built with the tools (ZEL_TOOLS)";
}
#endif

} // namespace
} // namespace zel::test

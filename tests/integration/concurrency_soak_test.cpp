// Many hosts at once: 64 threads, each driving a simulated controller of its own on a loopback
// port through the C functions, with a mix of control commands, file writes and dynamic-area
// pushes (which queue on the library's rendering lock, one thread at a time). Every command
// must arrive whole and give its defined result, and the process must come out of it with its
// memory flat and the descriptors it had.
#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <barrier>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

#include "program/program_fixtures.h"
#include "sdk/crc.h"
#include "sim/protocol/sim_control.h"
#include "sim/protocol/sim_files.h"
#include "sim/protocol/simulator.h"
#include "support/capture.h"
#include "support/sim_fixture.h"
#include "zel_sdk_dual.h"

namespace zel {
namespace {

constexpr int kHosts = 64;
constexpr int kWarmUpRounds = 2;
constexpr const char *kHost = "127.0.0.1";
constexpr uint8_t kGroupDynamic = 0xA7;
// Rendering is serialised across the process: a host pushes its dynamic area every few rounds
// (the hosts in turn, a sixteenth of them a round), and deletes it after every other push.
constexpr int kPushEvery = 4;
constexpr int kDeleteEvery = 2 * kPushEvery;

// Every command is a connection of its own (a dynamic push two: its ping and its exchange), and
// each closed connection holds its local port for a minute: 64 hosts × 40 rounds × some 6
// connections stay well inside the 28 000 ports of the usual ephemeral range. More rounds run out
// of ports, not out of the library.
int rounds() {
    const char *env = std::getenv("ZEL_SOAK_ROUNDS");
    return env != nullptr ? std::max(kWarmUpRounds + 1, std::atoi(env)) : 40;
}

long resident_kib() {
    long size = 0, resident = 0;
    if (FILE *f = std::fopen("/proc/self/statm", "r")) {
        if (std::fscanf(f, "%ld %ld", &size, &resident) != 2) resident = 0;
        std::fclose(f);
    }
    return resident * (::sysconf(_SC_PAGESIZE) / 1024);
}

int open_descriptors() {
    int count = 0;
    if (DIR *d = ::opendir("/proc/self/fd")) {
        while (const dirent *e = ::readdir(d)) {
            if (e->d_name[0] != '.') ++count;
        }
        ::closedir(d);
    }
    return count - 1; // the directory's own descriptor
}

// One host and its controller. Each has values of its own, so that a command that reached the
// wrong controller, or an answer that went to the wrong host, shows.
struct Host {
    int index = 0;
    std::unique_ptr<sim::Simulator> sim;
    std::vector<std::string> failures;

    uint16_t port() const { return sim->tcp_port(); }
    std::array<uint8_t, 8> id() const {
        return {0x01, 0x5A, 0xA5, 0x5B, 0xA6, static_cast<uint8_t>(index), 0x07, 0x08};
    }

    void fail(int round, const std::string &what) {
        failures.push_back("host " + std::to_string(index) + " round " + std::to_string(round) +
                           ": " + what);
    }
    void expect(bool ok, int round, const std::string &what) {
        if (!ok) fail(round, what);
    }

    // The steps of one round; each checks its result and what the controller received.
    std::vector<std::function<void(int)>> steps() {
        return {[this](int r) { ping(r); },       [this](int r) { brightness(r); },
                [this](int r) { identifier(r); }, [this](int r) { status(r); },
                [this](int r) { write_file(r); }, [this](int r) { dynamic_area(r); }};
    }
    // The host's own dynamic area number (1 to 64) and the column it starts at.
    uint8_t area_number() const { return static_cast<uint8_t>(index + 1); }
    uint16_t area_x() const { return static_cast<uint16_t>(index * 8); }

    // Exactly the commands of one call reach the controller (the probe aside).
    void expect_commands(int round, std::size_t count, const char *what) {
        const std::size_t got = sim->commands().size();
        expect(got == count, round,
               std::string(what) + ": " + std::to_string(got) + " commands arrived");
        sim->clear_requests();
    }

    void ping(int round) {
        ZelPingRecord record{};
        expect(zelDual_cmd_tcpPing(kHost, port(), &record) == 0, round, "ping failed");
        expect(record.ControllerType == 0x0051, round, "ping record has the wrong type");
        expect(std::string(record.address) == kHost, round, "ping record has the wrong address");
        expect_commands(round, 1, "ping");
    }

    void brightness(int round) {
        std::array<uint8_t, 49> table{};
        for (std::size_t i = 0; i < table.size(); ++i)
            table[i] = static_cast<uint8_t>(index + round + i);
        expect(zelDual_cmd_setBrightness(kHost, port(), table.data()) == 0, round,
               "brightness failed");
        {
            auto lock = sim->lock();
            const auto &kept = sim::control_state(*sim).settings[0x07];
            expect(kept == std::vector<uint8_t>(table.begin(), table.end()), round,
                   "brightness table arrived changed");
        }
        expect_commands(round, 1, "brightness");
    }

    void identifier(int round) {
        std::array<uint8_t, 8> got{};
        expect(zelDual_cmd_readControllerID(kHost, port(), got.data()) == 0, round,
               "identifier failed");
        expect(got == id(), round, "identifier is another controller's");
        expect_commands(round, 1, "identifier");
    }

    void status(int round) {
        std::array<uint8_t, 61> got{};
        expect(zelDual_cmd_check_controllerStatus(kHost, port(), got.data()) == 0, round,
               "status failed");
        std::vector<uint8_t> want = sim::ControlState::default_status();
        want[0] = static_cast<uint8_t>(index);
        expect(std::vector<uint8_t>(got.begin(), got.end()) == want, round,
               "status is another controller's");
        expect_commands(round, 1, "status");
    }

    void write_file(int round) {
        // 2500 bytes: a header and three blocks of 1024, the last one short.
        // A program image closes with the CRC-32 of what comes before it.
        std::vector<uint8_t> image(2496);
        for (std::size_t i = 0; i < image.size(); ++i)
            image[i] = static_cast<uint8_t>(i * 7 + index * 13 + round);
        const uint32_t crc = crc32_ieee(image.data(), image.size());
        for (int i = 0; i < 4; ++i)
            image.push_back(static_cast<uint8_t>(crc >> (8 * i)));
        char name[5];
        std::snprintf(name, sizeof name, "P%03d", round % 1000);
        expect(zelDual_cmd_ofsWriteFile(kHost, port(), name, 0, static_cast<uint32_t>(image.size()),
                                        1, image.data()) == 0,
               round, "file write failed");
        const auto file = sim::file_system(*sim).find(sim::FileSpace::Ofs, sim::file_name(name));
        expect(file && file->bytes == image, round, "file arrived changed");
        expect_commands(round, 4, "file write");
    }

    // The dynamic commands that reached this host's controller since the last check.
    std::vector<std::vector<uint8_t>> dynamic_data() {
        std::vector<std::vector<uint8_t>> out;
        for (const sim::Request &r : sim->commands()) {
            if (r.group == kGroupDynamic) out.push_back(r.data);
        }
        return out;
    }

    // A G5 text area of 64 × 32 at the host's own column and number, then, every other time,
    // its deletion.
    void dynamic_area(int round) {
        const int turn = round + index;
        if (turn % kPushEvery != 0) return;
        ZelTextStyleRecord style{};
        style.fontSize = 14;
        style.fontColor = 1;
        style.horizontalAlign = 1;
        style.verticalAlign = 1;
        const ZelFrameHeader_G5 frame{};
        const std::string text = std::to_string(index);
        expect(zelDual_dynamicArea_AddAreaWithTxt_5G(kHost, port(), ZEL_SCREEN_ONE_COLOR,
                                                     area_number(), 0, 5, 1, 0, nullptr, 0,
                                                     area_x(), 0, 64, 32, frame, 1, 1, 1, 300, 1,
                                                     style, test::kDejaVu, text.c_str()) == 0,
               round, "dynamic push failed");
        auto got = dynamic_data();
        if (got.size() != 1) {
            fail(round, "dynamic push: " + std::to_string(got.size()) + " areas arrived");
        } else {
            // One page of one-colour pixels, 8 bytes a row of 64: the head, the area and a page
            // head of 17 bytes ahead of 256 bytes make 9 + 24 + 17 + 256.
            const std::vector<uint8_t> &d = got[0];
            const auto u16 = [&d](std::size_t at) { return d[at] | (d[at + 1] << 8); };
            const bool head = d.size() == 306 && d[0] == 1 && d[1] == kGroupDynamic && d[2] == 0 &&
                              u16(5) == 297 && u16(7) == 0 && d[9] == area_number() &&
                              u16(11) == 5 && d[13] == 1 && d[21] == 16;
            expect(head, round, "dynamic push arrived with another head");
            expect(head && u16(22) == area_x() && u16(24) == 0 && u16(26) == 64 && u16(28) == 32 &&
                       d[30] == 0 && u16(31) == 1,
                   round, "dynamic push arrived with another area");
        }
        expect_commands(round, 2, "dynamic push"); // its ping and the area
        if (turn % kDeleteEvery != 0) return;
        expect(zelDual_dynamicArea_DelArea_5G(kHost, port(), static_cast<int8_t>(area_number())) ==
                   0,
               round, "dynamic delete failed");
        got = dynamic_data();
        expect(got.size() == 1 &&
                   got[0] == std::vector<uint8_t>{1, kGroupDynamic, 1, 0, 0, 1, area_number()},
               round, "dynamic delete arrived changed");
        expect_commands(round, 1, "dynamic delete");
    }
};

TEST(ConcurrencySoak, SixtyFourHostsDriveSixtyFourControllers) {
    ASSERT_EQ(zelDual_InitSdk(), 0);
    const int fdsBefore = open_descriptors();
    const int total = rounds();
    {
        std::vector<Host> hosts(kHosts);
        for (int i = 0; i < kHosts; ++i) {
            hosts[i].index = i;
            hosts[i].sim = std::make_unique<sim::Simulator>(test::loopback_config());
            {
                auto lock = hosts[i].sim->lock();
                auto &control = sim::control_state(*hosts[i].sim);
                const auto id = hosts[i].id();
                control.controllerId.assign(id.begin(), id.end());
                control.status[0] = static_cast<uint8_t>(i);
            }
            hosts[i].sim->start();
        }

        long residentWarm = 0;
        int fdsWarm = 0;
        std::barrier warmedUp(kHosts + 1);
        std::barrier measured(kHosts + 1);
        std::vector<std::thread> threads;
        test::StdoutCapture quiet; // every file write prints its packet length
        for (Host &host : hosts) {
            threads.emplace_back([&host, &warmedUp, &measured, total] {
                const auto steps = host.steps();
                for (int round = 0; round < total; ++round) {
                    if (round == kWarmUpRounds) {
                        warmedUp.arrive_and_wait();
                        measured.arrive_and_wait();
                    }
                    // Each host goes through the mix in an order of its own.
                    for (std::size_t s = 0; s < steps.size(); ++s) {
                        steps[(s + static_cast<std::size_t>(host.index + round)) % steps.size()](
                            round);
                    }
                }
            });
        }
        warmedUp.arrive_and_wait();
        residentWarm = resident_kib();
        fdsWarm = open_descriptors();
        measured.arrive_and_wait();
        for (std::thread &t : threads)
            t.join();
        const long residentEnd = resident_kib();
        const int fdsEnd = open_descriptors();
        const std::string printed = quiet.text();

        for (const Host &host : hosts) {
            for (const std::string &failure : host.failures)
                ADD_FAILURE() << failure;
        }
        // Every write printed its one line and every push its screen's and its connection's,
        // nothing else was printed.
        const std::string line = "g_packetLen ======= 1024 \n";
        const std::string pushLines = "color = 1, ControllerType = 81,  doubleColor = 1; \r\n"
                                      "TK_Client init后，Client.m_DeviceType == 0x51 \n";
        std::size_t pushes = 0;
        for (int i = 0; i < kHosts; ++i) {
            for (int round = 0; round < total; ++round)
                pushes += (round + i) % kPushEvery == 0 ? 1 : 0;
        }
        EXPECT_EQ(printed.size(), line.size() * kHosts * static_cast<std::size_t>(total) +
                                      pushLines.size() * pushes);
        // Flat: what the rounds after the warm-up added is far below what they moved (some
        // 64 × 10 KiB of files and frames a round).
        EXPECT_LT(residentEnd - residentWarm, 16 * 1024)
            << "resident KiB after warm-up " << residentWarm << ", at the end " << residentEnd;
        EXPECT_EQ(fdsEnd, fdsWarm) << "descriptors left open by the commands";
    }
    EXPECT_EQ(open_descriptors(), fdsBefore) << "descriptors left open once all is stopped";
    EXPECT_EQ(zelDual_ReleaseSdk(), 0);
}

} // namespace
} // namespace zel

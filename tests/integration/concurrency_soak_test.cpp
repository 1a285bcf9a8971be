// Many hosts at once: 64 threads, each driving a simulated controller of its own on a loopback
// port through the C functions, with a mix of control commands and file writes. Every command
// must arrive whole and give its defined result, and the process must come out of it with its
// memory flat and the descriptors it had.
#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <barrier>
#include <cstdio>
#include <cstdlib>
#include <dirent.h>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

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

// Every command is a connection of its own, and each closed connection holds its local port
// for a minute: 64 hosts × 40 rounds × 5 steps stay well inside the 28 000 ports of the usual
// ephemeral range. More rounds run out of ports, not out of the library.
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
    // Dynamic areas: when they land, add their step (send an area, check what the controller
    // shows) to the list that steps() returns.
    std::vector<std::function<void(int)>> steps() {
        return {[this](int r) { ping(r); }, [this](int r) { brightness(r); },
                [this](int r) { identifier(r); }, [this](int r) { status(r); },
                [this](int r) { write_file(r); }};
    }

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
        const auto file =
            sim::file_system(*sim).find(sim::FileSpace::Ofs, sim::file_name(name));
        expect(file && file->bytes == image, round, "file arrived changed");
        expect_commands(round, 4, "file write");
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
        // Every write printed its one line, nothing else was printed.
        const std::string line = "g_packetLen ======= 1024 \n";
        EXPECT_EQ(printed.size(), line.size() * kHosts * static_cast<std::size_t>(total));
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

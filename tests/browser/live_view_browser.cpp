// The live view in a real browser: zel-sim runs with --web, headless Chromium opens the page
// and is driven over its DevTools pipe, a G5 program goes to the simulator through the
// library, and the page must follow by itself (no reload) and show the panel pixel for pixel
// as the simulator's own panel picture. Chromium is a large package: without it the test is
// skipped, except under CI, where it must run.
#include <gtest/gtest.h>

#include <cairo.h>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <optional>
#include <poll.h>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include "program/program_fixtures.h"
#include "zel_sdk_dual.h"

namespace zel::test {
namespace {

using Clock = std::chrono::steady_clock;

std::optional<std::string> find_chromium() {
    if (const char *given = std::getenv("ZEL_CHROMIUM")) return std::string(given);
    const char *path = std::getenv("PATH");
    std::string dirs = path ? path : "/usr/bin";
    for (std::size_t start = 0; start <= dirs.size();) {
        const std::size_t end = std::min(dirs.find(':', start), dirs.size());
        for (const char *name : {"chromium", "chromium-browser"}) {
            const std::string candidate = dirs.substr(start, end - start) + "/" + name;
            if (::access(candidate.c_str(), X_OK) == 0) return candidate;
        }
        start = end + 1;
    }
    return std::nullopt;
}

// Starts argv with the given descriptors of the child taken from the parent's (child fd, parent
// fd), in a process group of its own; the rest of its output goes nowhere.
pid_t spawn(const std::vector<std::string> &argv, const std::vector<std::pair<int, int>> &fds) {
    // Everything the child needs is made before the fork: it only calls what is safe there.
    std::vector<char *> args;
    for (const std::string &a : argv)
        args.push_back(const_cast<char *>(a.c_str()));
    args.push_back(nullptr);
    const pid_t pid = ::fork();
    if (pid != 0) return pid;
    ::setpgid(0, 0);
    const int null = ::open("/dev/null", O_RDWR);
    ::dup2(null, 0);
    ::dup2(null, 1);
    ::dup2(null, 2);
    // Move the parent's descriptors out of the way first, then into place.
    int high[8];
    for (std::size_t i = 0; i < fds.size() && i < 8; ++i)
        high[i] = ::fcntl(fds[i].second, F_DUPFD_CLOEXEC, 100);
    for (std::size_t i = 0; i < fds.size() && i < 8; ++i)
        ::dup2(high[i], fds[i].first);
    ::execv(args[0], args.data());
    ::_exit(127);
}

void end_process(pid_t pid) {
    if (pid <= 0) return;
    ::kill(-pid, SIGTERM);
    const auto deadline = Clock::now() + std::chrono::seconds(5);
    int status = 0;
    while (::waitpid(pid, &status, WNOHANG) == 0) {
        if (Clock::now() > deadline) {
            ::kill(-pid, SIGKILL);
            ::waitpid(pid, &status, 0);
            return;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
}

// Reads from `fd` until `done` says the text so far is enough, or the time is up.
bool read_until(int fd, std::string &text, int seconds, const std::function<bool()> &done) {
    const auto deadline = Clock::now() + std::chrono::seconds(seconds);
    while (!done()) {
        const auto left =
            std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
        if (left <= 0) return false;
        pollfd p{fd, POLLIN, 0};
        if (::poll(&p, 1, static_cast<int>(left)) <= 0) continue;
        char buffer[65536];
        const ssize_t n = ::read(fd, buffer, sizeof buffer);
        if (n <= 0) return false;
        text.append(buffer, static_cast<std::size_t>(n));
    }
    return true;
}

// zel-sim from the build tree, on free loopback ports.
class SimProcess {
  public:
    explicit SimProcess(const std::string &panelFolder) {
        int out[2];
        if (::pipe(out) != 0) return;
        ::fcntl(out[0], F_SETFD, FD_CLOEXEC);
        m_pid = spawn({ZEL_SIM_PATH, "--type", "0x0051", "--bind", "127.0.0.1", "--tcp-port", "0",
                       "--no-udp", "--no-at", "--no-serial", "--screen", "128x64", "--color", "2",
                       "--panel-out", panelFolder, "--web", "0", "--quiet"},
                      {{1, out[1]}});
        ::close(out[1]);
        m_out = out[0];
        read_until(m_out, m_text, 10, [this] {
            m_tcp = number_after("tcp: 127.0.0.1:");
            m_web = number_after("web: http://127.0.0.1:");
            return m_tcp != 0 && m_web != 0;
        });
    }
    ~SimProcess() {
        end_process(m_pid);
        if (m_out >= 0) ::close(m_out);
    }
    uint16_t tcp_port() const { return m_tcp; }
    uint16_t web_port() const { return m_web; }
    const std::string &output() const { return m_text; }

  private:
    uint16_t number_after(const std::string &prefix) const {
        const std::size_t at = m_text.find(prefix);
        if (at == std::string::npos || m_text.find('\n', at) == std::string::npos) return 0;
        return static_cast<uint16_t>(std::atoi(m_text.c_str() + at + prefix.size()));
    }
    pid_t m_pid = -1;
    int m_out = -1;
    std::string m_text;
    uint16_t m_tcp = 0, m_web = 0;
};

std::string json_escape(const std::string &s) {
    std::string out;
    for (const char c : s) {
        if (c == '"' || c == '\\') out += '\\';
        if (c == '\n') {
            out += "\\n";
            continue;
        }
        out += c;
    }
    return out;
}

// The string value of the first "key" in a DevTools message (ASCII escapes only).
std::optional<std::string> json_string(const std::string &message, const std::string &key) {
    const std::string start = "\"" + key + "\":\"";
    std::size_t at = message.find(start);
    if (at == std::string::npos) return std::nullopt;
    std::string out;
    for (at += start.size(); at < message.size() && message[at] != '"'; ++at) {
        if (message[at] != '\\' || at + 1 >= message.size()) {
            out += message[at];
            continue;
        }
        const char e = message[++at];
        if (e == 'n') {
            out += '\n';
        } else if (e == 'u' && at + 4 < message.size()) {
            out += static_cast<char>(std::stoi(message.substr(at + 1, 4), nullptr, 16));
            at += 4;
        } else {
            out += e;
        }
    }
    return out;
}

std::vector<uint8_t> base64_decode(const std::string &text) {
    std::vector<uint8_t> out;
    uint32_t bits = 0;
    int count = 0;
    for (const char c : text) {
        int v = -1;
        if (c >= 'A' && c <= 'Z') v = c - 'A';
        if (c >= 'a' && c <= 'z') v = c - 'a' + 26;
        if (c >= '0' && c <= '9') v = c - '0' + 52;
        if (c == '+') v = 62;
        if (c == '/') v = 63;
        if (v < 0) continue;
        bits = (bits << 6) | static_cast<uint32_t>(v);
        if ((count += 6) >= 8) {
            count -= 8;
            out.push_back(static_cast<uint8_t>(bits >> count));
        }
    }
    return out;
}

// Headless Chromium driven over --remote-debugging-pipe: commands as JSON on its fd 3,
// answers and events on its fd 4, each message ending in a zero byte.
class Browser {
  public:
    explicit Browser(const std::string &chromium, const std::string &profile) {
        int toBrowser[2], fromBrowser[2];
        if (::pipe(toBrowser) != 0 || ::pipe(fromBrowser) != 0) return;
        ::fcntl(toBrowser[1], F_SETFD, FD_CLOEXEC);
        ::fcntl(fromBrowser[0], F_SETFD, FD_CLOEXEC);
        // Nothing but loopback: other names do not resolve and other addresses go to a proxy
        // that is not there (loopback never goes through a proxy).
        m_pid = spawn({chromium, "--headless", "--no-sandbox", "--disable-gpu",
                       "--remote-debugging-pipe", "--user-data-dir=" + profile,
                       "--window-size=1100,600", "--force-device-scale-factor=1",
                       "--force-color-profile=srgb", "--hide-scrollbars", "--no-first-run",
                       "--disable-background-networking", "--disable-component-update",
                       "--disable-sync", "--disable-extensions", "--no-pings",
                       "--proxy-server=http://127.0.0.1:9",
                       "--host-resolver-rules=MAP * ~NOTFOUND , EXCLUDE 127.0.0.1", "about:blank"},
                      {{3, toBrowser[0]}, {4, fromBrowser[1]}});
        ::close(toBrowser[0]);
        ::close(fromBrowser[1]);
        m_in = toBrowser[1];
        m_out = fromBrowser[0];
        ::signal(SIGPIPE, SIG_IGN);
    }
    ~Browser() {
        if (m_in >= 0) ::close(m_in);
        end_process(m_pid);
        if (m_out >= 0) ::close(m_out);
    }

    // Sends a command and returns its answer (empty after 20 s without one).
    std::string call(const std::string &method, const std::string &params = "{}") {
        const int id = ++m_id;
        std::string message = "{\"id\":" + std::to_string(id) + ",";
        if (!m_session.empty()) message += "\"sessionId\":\"" + m_session + "\",";
        message += "\"method\":\"" + method + "\",\"params\":" + params + "}";
        message.push_back('\0');
        if (::write(m_in, message.data(), message.size()) != static_cast<ssize_t>(message.size()))
            return "";
        const std::string answer = "{\"id\":" + std::to_string(id) + ",";
        std::string found;
        read_until(m_out, m_pending, 20, [&] {
            for (std::size_t end; (end = m_pending.find('\0')) != std::string::npos;) {
                std::string one = m_pending.substr(0, end);
                m_pending.erase(0, end + 1);
                if (one.rfind(answer, 0) == 0) {
                    found = std::move(one);
                    return true;
                }
            }
            return false;
        });
        return found;
    }

    // Opens `url` in a new page and talks to that page from now on.
    bool open(const std::string &url) {
        const auto target =
            json_string(call("Target.createTarget", "{\"url\":\"" + url + "\"}"), "targetId");
        if (!target) return false;
        const auto session = json_string(
            call("Target.attachToTarget", "{\"targetId\":\"" + *target + "\",\"flatten\":true}"),
            "sessionId");
        if (!session) return false;
        m_session = *session;
        return true;
    }

    // The value of a script expression, as a string.
    std::string eval(const std::string &expression) {
        const std::string answer =
            call("Runtime.evaluate", "{\"expression\":\"String(" + json_escape(expression) +
                                         ")\",\"returnByValue\":true}");
        return json_string(answer, "value").value_or("");
    }

    // Waits until `expression` gives `expected`; the last value seen.
    std::string wait_for(const std::string &expression, const std::string &expected,
                         int seconds = 15) {
        const auto deadline = Clock::now() + std::chrono::seconds(seconds);
        std::string value;
        while ((value = eval(expression)) != expected && Clock::now() < deadline) {
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
        }
        return value;
    }

    std::vector<uint8_t> screenshot() {
        const auto data =
            json_string(call("Page.captureScreenshot", "{\"format\":\"png\"}"), "data");
        return data ? base64_decode(*data) : std::vector<uint8_t>{};
    }

  private:
    pid_t m_pid = -1;
    int m_in = -1, m_out = -1, m_id = 0;
    std::string m_session, m_pending;
};

// A PNG as 0xRRGGBB pixels, read with cairo.
struct Image {
    int width = 0, height = 0;
    std::vector<uint32_t> pixels;
    uint32_t at(int x, int y) const { return pixels[static_cast<std::size_t>(y) * width + x]; }
};

Image image_of(cairo_surface_t *surface) {
    Image image;
    if (cairo_surface_status(surface) == CAIRO_STATUS_SUCCESS) {
        image.width = cairo_image_surface_get_width(surface);
        image.height = cairo_image_surface_get_height(surface);
        const int stride = cairo_image_surface_get_stride(surface);
        const unsigned char *data = cairo_image_surface_get_data(surface);
        for (int y = 0; y < image.height; ++y) {
            const auto *row = reinterpret_cast<const uint32_t *>(data + y * stride);
            for (int x = 0; x < image.width; ++x)
                image.pixels.push_back(row[x] & 0xFFFFFF);
        }
    }
    cairo_surface_destroy(surface);
    return image;
}

Image read_png(const std::string &path) {
    return image_of(cairo_image_surface_create_from_png(path.c_str()));
}

Image read_png(const std::vector<uint8_t> &bytes) {
    struct Reader {
        const std::vector<uint8_t> *bytes;
        std::size_t at = 0;
    } reader{&bytes};
    return image_of(cairo_image_surface_create_from_png_stream(
        [](void *closure, unsigned char *out, unsigned int length) {
            auto *r = static_cast<Reader *>(closure);
            if (r->at + length > r->bytes->size()) return CAIRO_STATUS_READ_ERROR;
            std::memcpy(out, r->bytes->data() + r->at, length);
            r->at += length;
            return CAIRO_STATUS_SUCCESS;
        },
        &reader));
}

// Area 1: "Hi" in red at (0, 0), 64 x 32. Area 2: a green picture at (64, 0), 64 x 32. The
// lower half of the screen stays dark.
void send_program(uint16_t port) {
    zelDual_program_deleteProgram();
    zelDual_program_setScreenParams_G56(static_cast<::E_ScreenColor_G56>(2), 0x0051, 1);
    ZelProgramHeader_G5 h = program_header(1);
    ASSERT_EQ(zelDual_program_addProgram(&h), 0);
    const ZelAreaRecord_G5 text = area_record(0, 0, 0, 64, 32);
    const ZelAreaRecord_G5 picture = area_record(0, 64, 0, 64, 32);
    ASSERT_EQ(zelDual_program_AddArea(1, &text), 0);
    ASSERT_EQ(zelDual_program_AddArea(2, &picture), 0);
    const TextPageParams_G5 p = text_params(0, 1, 16, 1);
    ASSERT_EQ(zelDual_program_fontPath_picturesAreaAddTxt(1, "Hi", kDejaVu, &p), 0);
    write_png("green.png", 64, 32, 0x00FF00);
    ASSERT_EQ(zelDual_program_pictureAreaAddPic(2, 0, &p, "green.png"), 0);
    ZelProgramFile_G5 file{};
    ASSERT_EQ(zelDual_program_IntegrateProgramFile(&file), 0);
    EXPECT_EQ(
        zelDual_cmd_ofsWriteFile("127.0.0.1", port, "P001", 0, file.fileLen, 1, file.fileData), 0);
    zelDual_program_freeBuffer(&file);
    zelDual_program_deleteProgram();
}

TEST(LiveViewInBrowser, FollowsAProgramAndShowsThePanelPixelForPixel) {
    const auto chromium = find_chromium();
    if (!chromium) {
        if (std::getenv("CI") != nullptr) FAIL() << "chromium is not installed";
        GTEST_SKIP() << "chromium is not installed (bash scripts/setup.sh installs it)";
    }
    const std::string work = std::filesystem::current_path().string();
    SimProcess sim(work + "/panel");
    ASSERT_NE(sim.web_port(), 0) << sim.output();
    const std::string url = "http://127.0.0.1:" + std::to_string(sim.web_port()) + "/";

    Browser browser(*chromium, work + "/profile");
    ASSERT_TRUE(browser.open(url)) << "no page from chromium";
    // The page draws the dark screen of the start, then stays open while the program comes.
    EXPECT_EQ(browser.wait_for("document.body.dataset.panelVersion", "0"), "0");
    EXPECT_EQ(browser.eval("document.getElementById('program').textContent"), "no program yet");
    browser.eval("window.sameDocument = 'yes'");

    send_program(sim.tcp_port());
    EXPECT_EQ(browser.wait_for("document.body.dataset.panelVersion", "1"), "1");
    EXPECT_EQ(browser.eval("window.sameDocument"), "yes") << "the page was loaded anew";
    EXPECT_EQ(browser.eval("document.getElementById('program').textContent.slice(0, 4)"), "P001");
    EXPECT_EQ(browser.eval("document.getElementById('programs').rows[0].cells[0].textContent"),
              "P001");

    // The panel image stands at a whole scale at a fixed place.
    EXPECT_EQ(
        browser.eval("[panel.getBoundingClientRect().left, panel.getBoundingClientRect().top, "
                     "panel.dataset.scale].join()"),
        "16,48,6");
    const Image shot = read_png(browser.screenshot());
    const Image panel = read_png(work + "/panel/P001-panel.png");
    ASSERT_EQ(panel.width, 128);
    ASSERT_EQ(panel.height, 64);
    ASSERT_GE(shot.width, 16 + 128 * 6);
    ASSERT_GE(shot.height, 48 + 64 * 6);
    // A two-colour panel lights green for the green picture, and nothing below the areas.
    EXPECT_EQ(panel.at(96, 16), 0x00FF00u);
    EXPECT_EQ(panel.at(10, 50), 0x000000u);
    int mismatches = 0, red = 0;
    for (int y = 0; y < 64 * 6; ++y) {
        for (int x = 0; x < 128 * 6; ++x) {
            const uint32_t want = panel.at(x / 6, y / 6);
            if (shot.at(16 + x, 48 + y) != want && mismatches++ < 5) {
                ADD_FAILURE() << "screen pixel (" << x / 6 << ", " << y / 6 << ") shows "
                              << std::hex << shot.at(16 + x, 48 + y) << ", not " << want;
            }
            red += want == 0xFF0000u;
        }
    }
    EXPECT_EQ(mismatches, 0);
    EXPECT_GT(red, 0) << "the red text is missing from the panel";
}

} // namespace
} // namespace zel::test

#include "sim/web/web_view.h"

#include <httplib.h>

#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <deque>
#include <mutex>
#include <sstream>
#include <stdexcept>
#include <thread>

#include "sim/panel/json_text.h"
#include "sim/panel/live_panel.h"
#include "sim/panel/panel_png.h"
#include "sim/protocol/describe.h"
#include "sim/protocol/sim_control.h"
#include "sim/protocol/sim_files.h"
#include "sim/protocol/simulator.h"

namespace zel::sim {
namespace {

constexpr const char *kAddress = "127.0.0.1";
constexpr std::size_t kLastRequests = 40; // request lines the state keeps
constexpr std::size_t kMaxStreams = 4;    // event streams at once; more get 503 and poll
constexpr auto kEventGap = std::chrono::milliseconds(100); // events come at most this often
constexpr auto kKeepAlive = std::chrono::seconds(15);      // a comment line on a quiet stream

int bcd(uint8_t b) {
    return (b >> 4) * 10 + (b & 15);
}

// The time stamp of the set-time command: the year word little-endian, then month, day, hour,
// minute, second and weekday, all BCD.
std::string clock_text(const std::array<uint8_t, 8> &t) {
    char text[40];
    std::snprintf(text, sizeof text, "%02d%02d-%02d-%02d %02d:%02d:%02d", bcd(t[1]), bcd(t[0]),
                  bcd(t[2]), bcd(t[3]), bcd(t[4]), bcd(t[5]), bcd(t[6]));
    return text;
}

} // namespace

struct WebView::Impl {
    Simulator &sim;
    LivePanel &panel;
    httplib::Server server;
    std::thread thread;
    uint16_t port = 0;

    mutable std::mutex mutex; // guards what follows
    std::condition_variable changed;
    uint64_t version = 0;
    uint64_t requestTotal = 0;
    std::deque<std::string> lastRequests;
    std::size_t streams = 0;
    bool stopping = false;

    Impl(Simulator &s, LivePanel &p) : sim(s), panel(p) {}

    void bump() {
        {
            std::lock_guard<std::mutex> guard(mutex);
            ++version;
        }
        changed.notify_all();
    }

    // Runs on the simulator's thread with its lock held.
    void on_request(const Request &request) {
        {
            std::lock_guard<std::mutex> guard(mutex);
            ++requestTotal;
            lastRequests.push_back(describe_request(request));
            if (lastRequests.size() > kLastRequests) lastRequests.pop_front();
            ++version;
        }
        changed.notify_all();
    }

    std::string state_json() const;
    void routes();
    void serve_events(httplib::Response &res);
};

std::string WebView::Impl::state_json() const {
    std::ostringstream j;
    // The simulator's side first, under its lock, and never while holding ours: its request
    // hook takes ours with its lock held.
    const uint16_t type = sim.controller_type();
    const unsigned headerVersion = answer_version_for(type);
    std::vector<SimFile> files = file_system(sim).files(FileSpace::Ofs);
    ControlState control;
    {
        auto guard = sim.lock();
        control = control_state(sim);
    }
    const LivePanel::Shown shown = panel.shown();
    const Rgb image = panel.current_image();
    uint64_t stateVersion = 0, total = 0;
    std::deque<std::string> requests;
    {
        std::lock_guard<std::mutex> guard(mutex);
        stateVersion = version;
        total = requestTotal;
        requests = lastRequests;
    }

    char typeText[8];
    std::snprintf(typeText, sizeof typeText, "0x%04X", type);
    j << "{\n  \"version\": " << stateVersion << ",\n  \"controller\": {\"type\": \"" << typeText
      << "\", \"family\": \"" << (headerVersion == 7 ? "G6" : "G5")
      << "\", \"headerVersion\": " << headerVersion
      << "},\n  \"screen\": {\"width\": " << image.width << ", \"height\": " << image.height
      << "},\n  \"panel\": {\"version\": " << shown.version << ", \"program\": ";
    if (shown.program.empty()) {
        j << "null, \"decoded\": false, \"summary\": null},\n";
    } else {
        j << quoted(shown.program) << ", \"decoded\": " << (shown.decoded ? "true" : "false")
          << ", \"summary\": " << shown.summary << "},\n";
    }
    j << "  \"programs\": [";
    for (std::size_t i = 0; i < files.size(); ++i) {
        const SimFile &f = files[i];
        j << (i ? ", " : "") << "{\"name\": " << quoted(file_name_text(f.name))
          << ", \"type\": " << int{f.type} << ", \"size\": " << f.bytes.size() << "}";
    }
    j << "],\n  \"requests\": {\"total\": " << total << ", \"last\": [";
    for (std::size_t i = 0; i < requests.size(); ++i) {
        j << (i ? "," : "") << "\n    " << quoted(requests[i]);
    }
    j << "]},\n  \"settings\": {\"clock\": ";
    if (control.clock) {
        j << "{\"time\": " << quoted(clock_text(*control.clock))
          << ", \"weekday\": " << bcd((*control.clock)[7]) << ", \"hex\": \""
          << hex_bytes(*control.clock) << "\"}";
    } else {
        j << "null";
    }
    j << ", \"resets\": " << control.resets
      << ", \"passwordSet\": " << (control.password != std::array<uint8_t, 6>{} ? "true" : "false")
      << ", \"firmwareActivated\": ";
    if (control.firmwareActivated) {
        j << "\"" << hex_bytes(*control.firmwareActivated) << "\"";
    } else {
        j << "null";
    }
    j << ", \"values\": [";
    bool first = true;
    for (const auto &[code, data] : control.settings) {
        char codeText[8];
        std::snprintf(codeText, sizeof codeText, "0x%02X", code);
        j << (first ? "" : ", ") << "\n    {\"code\": \"" << codeText
          << "\", \"name\": " << quoted(command_name(0xA2, code)) << ", \"hex\": \""
          << hex_bytes(data) << "\"}";
        first = false;
    }
    j << "]}\n}\n";
    return j.str();
}

void WebView::Impl::serve_events(httplib::Response &res) {
    {
        std::lock_guard<std::mutex> guard(mutex);
        if (streams >= kMaxStreams || stopping) {
            res.status = 503; // the page falls back to polling
            return;
        }
        ++streams;
    }
    res.set_header("Cache-Control", "no-store");
    auto seen = std::make_shared<uint64_t>(~uint64_t{0});
    res.set_chunked_content_provider(
        "text/event-stream",
        [this, seen](std::size_t, httplib::DataSink &sink) {
            std::unique_lock<std::mutex> lock(mutex);
            // A short pause between events: a file transfer makes a request per block.
            if (*seen != ~uint64_t{0}) changed.wait_for(lock, kEventGap, [&] { return stopping; });
            changed.wait_for(lock, kKeepAlive, [&] { return stopping || version != *seen; });
            if (stopping) return false;
            std::string text;
            if (version != *seen) {
                *seen = version;
                text = "event: changed\ndata: " + std::to_string(version) + "\n\n";
            } else {
                text = ": quiet\n\n"; // finds a page that went away
            }
            lock.unlock();
            return sink.write(text.data(), text.size());
        },
        [this](bool) {
            std::lock_guard<std::mutex> guard(mutex);
            --streams;
        });
}

void WebView::Impl::routes() {
    server.set_payload_max_length(1024);
    server.set_read_timeout(5, 0);
    server.set_write_timeout(5, 0);
    // Only GET, and only for a page that knows us by our loopback name: a page of another site
    // that points a name of its own at 127.0.0.1 is refused.
    server.set_pre_routing_handler([this](const httplib::Request &req, httplib::Response &res) {
        if (req.method != "GET" && req.method != "HEAD") {
            res.status = 405;
            res.set_header("Allow", "GET");
            return httplib::Server::HandlerResponse::Handled;
        }
        const std::string host = req.get_header_value("Host");
        const std::string suffix = ":" + std::to_string(port);
        if (host != kAddress + suffix && host != "localhost" + suffix) {
            res.status = 403;
            return httplib::Server::HandlerResponse::Handled;
        }
        return httplib::Server::HandlerResponse::Unhandled;
    });
    server.Get("/", [](const httplib::Request &, httplib::Response &res) {
        res.set_header("Cache-Control", "no-store");
        res.set_content(web_page(), "text/html; charset=utf-8");
    });
    server.Get("/panel.png", [this](const httplib::Request &, httplib::Response &res) {
        const std::vector<uint8_t> png = png_bytes(panel.current_image());
        if (png.empty()) {
            res.status = 500;
            return;
        }
        res.set_header("Cache-Control", "no-store");
        res.set_content(reinterpret_cast<const char *>(png.data()), png.size(), "image/png");
    });
    server.Get("/state.json", [this](const httplib::Request &, httplib::Response &res) {
        res.set_header("Cache-Control", "no-store");
        res.set_content(state_json(), "application/json");
    });
    server.Get("/events",
               [this](const httplib::Request &, httplib::Response &res) { serve_events(res); });
}

WebView::WebView(Simulator &sim, LivePanel &panel) : m_impl(std::make_shared<Impl>(sim, panel)) {
    Impl *impl = m_impl.get();
    sim.set_request_hook([impl](const Request &request) { impl->on_request(request); });
    // The panel may outlive the view: its listener stays, and finds no view.
    panel.on_change([weak = std::weak_ptr<Impl>(m_impl)] {
        if (const auto view = weak.lock()) view->bump();
    });
}

WebView::~WebView() {
    stop();
    m_impl->sim.set_request_hook(nullptr);
}

void WebView::start(int port) {
    Impl &impl = *m_impl;
    impl.routes();
    int bound = -1;
    if (port == 0) {
        bound = impl.server.bind_to_any_port(kAddress);
    } else if (port > 0 && port <= 65535 && impl.server.bind_to_port(kAddress, port)) {
        bound = port;
    }
    if (bound <= 0) {
        throw std::runtime_error("web view: cannot listen on " + std::string(kAddress) + ":" +
                                 std::to_string(port));
    }
    impl.port = static_cast<uint16_t>(bound);
    impl.thread = std::thread([&impl] { impl.server.listen_after_bind(); });
}

void WebView::stop() {
    Impl &impl = *m_impl;
    {
        std::lock_guard<std::mutex> guard(impl.mutex);
        impl.stopping = true;
    }
    impl.changed.notify_all();
    if (impl.thread.joinable()) {
        impl.server.stop();
        impl.thread.join();
    }
}

uint16_t WebView::port() const {
    return m_impl->port;
}

std::string WebView::state_json() const {
    return m_impl->state_json();
}

} // namespace zel::sim

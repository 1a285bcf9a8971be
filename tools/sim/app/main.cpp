// zel-sim: a simulated controller on this machine, for trying a host program without a panel.
#include <csignal>
#include <iomanip>
#include <iostream>
#include <memory>
#include <unistd.h>

#include "sim/app/command_line.h"
#include "sim/app/panel_hook.h"
#include "sim/protocol/simulator.h"
#include "sim/web/web_view.h"

namespace {

volatile std::sig_atomic_t g_stop = 0;

void on_signal(int) {
    g_stop = 1;
}

} // namespace

int main(int argc, char **argv) {
    zel::sim::SimOptions options;
    if (const auto status = zel::sim::read_command_line(argc, argv, options)) return *status;
    // The command-line simulator may serve for days: it keeps the latest requests only.
    options.config.keepRequests = 1000;
    const zel::sim::Config &config = options.config;
    zel::sim::PanelOptions &panel = options.panel;

    // The live view's screen outlives the simulator, whose file hook draws on it; the view
    // goes before the simulator, whose request hook it holds.
    std::unique_ptr<zel::sim::LivePanel> live;
    if (options.webPort >= 0) {
        live = std::make_unique<zel::sim::LivePanel>(panel.width, panel.height);
        panel.live = live.get();
    }
    zel::sim::Simulator sim(config);
    if (!options.quiet) sim.set_trace(&std::cout);
    panel.log = &std::cout;
    zel::sim::install_panel_output(sim, panel);
    std::unique_ptr<zel::sim::WebView> web;
    if (live) web = std::make_unique<zel::sim::WebView>(sim, *live);
    try {
        sim.start();
        if (web) web->start(options.webPort);
    } catch (const std::exception &e) {
        std::cerr << e.what() << "\n";
        return 1;
    }
    const unsigned version = zel::sim::answer_version_for(config.controllerType);
    std::cout << "zel-sim: controller type 0x" << std::hex << std::setw(4) << std::setfill('0')
              << config.controllerType << std::dec << std::setfill(' ') << " ("
              << (version == 7 ? "G6" : "G5") << ", header version " << version << ")\n";
    if (config.tcpPort >= 0)
        std::cout << "tcp: " << config.bindAddress << ":" << sim.tcp_port() << "\n";
    if (config.udpPort >= 0) std::cout << "udp broadcast: port " << sim.udp_port() << "\n";
    if (config.atPort >= 0) std::cout << "wifi module (AT): port " << sim.at_port() << "\n";
    if (config.serial) std::cout << "serial line: " << sim.serial_path() << "\n";
    if (!panel.folder.empty()) std::cout << "panel: " << panel.folder << "\n";
    if (web) std::cout << "web: http://127.0.0.1:" << web->port() << "/\n";
    std::cout << std::flush;

    struct sigaction sa {};
    sa.sa_handler = on_signal;
    ::sigaction(SIGINT, &sa, nullptr);
    ::sigaction(SIGTERM, &sa, nullptr);
    while (g_stop == 0) {
        ::pause();
    }
    if (web) web->stop();
    sim.stop();
    return 0;
}

// zel-sim: a simulated controller on this machine, for trying a host program without a panel.
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <iomanip>
#include <iostream>
#include <string>
#include <unistd.h>

#include "sim/app/panel_hook.h"
#include "sim/protocol/simulator.h"

namespace {

constexpr const char *kUsage = R"(Usage: zel-sim [options]

A simulated LED panel controller. It answers the device-type probe and the
commands of the protocol on TCP, on UDP broadcast, as a Wi-Fi module's AT
commands, and on a serial line (a pseudo-terminal whose path it prints), and
prints one line per request it receives. Stop it with Ctrl-C.

Controller:
  --type CODE            controller type code, hexadecimal (0x...) or decimal
                         (default 0x0051, a G5 code; G6 codes such as 0x0063 or
                         0x0166 answer with header version 7, others with 5)
  --echo BYTE            byte 5 of every answer header (default 0)

Where it listens:
  --bind ADDRESS         address of the TCP listener (default 0.0.0.0)
  --tcp-port PORT        TCP port (default 5005; 0 picks a free one)
  --udp-port PORT        UDP port of the protocol's broadcasts (default 5007)
  --at-port PORT         UDP port of the Wi-Fi module (default 13769)
  --serial-speed BPS     answer on the serial line only while the host has it at
                         9600 or 57600 bit/s (default: at any speed)
  --no-tcp, --no-udp, --no-at, --no-serial
                         leave that way out

Faults (they touch commands; --fault-scope changes that):
  --fault-scope WHICH    probe, commands or all (default commands)
  --silent               receive and record, never answer
  --split                answer TCP and serial requests in two parts, 200 ms apart
  --error CODE           acknowledge every command with this error code
  --pad INDEX            cover every answer body with the XOR pad at INDEX (0-255)
  --bad-header-check     answer with a wrong header check
  --bad-crc              answer with a wrong body CRC
  --header-version V     put header version V into every answer
  --close-after-blocks N answer N blocks of a file transfer, then drop the
                         connection when the next block comes

  --quiet                do not print a line per request
  --help                 show this text
)";

volatile std::sig_atomic_t g_stop = 0;

void on_signal(int) {
    g_stop = 1;
}

long parse_number(const char *text, const char *option) {
    char *end = nullptr;
    const long value = std::strtol(text, &end, 0);
    if (end == text || *end != '\0') {
        std::cerr << "zel-sim: " << option << " needs a number, not '" << text << "'\n";
        std::exit(2);
    }
    return value;
}

} // namespace

int main(int argc, char **argv) {
    zel::sim::Config config;
    config.bindAddress = "0.0.0.0";
    config.tcpPort = 5005;
    config.udpPort = 5007;
    config.atPort = 13769;
    config.serial = true;
    bool quiet = false;
    zel::sim::PanelOptions panel;

    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        auto value = [&]() -> const char * {
            if (i + 1 >= argc) {
                std::cerr << "zel-sim: " << arg << " needs a value\n";
                std::exit(2);
            }
            return argv[++i];
        };
        auto &f = config.faults;
        if (arg == "--help" || arg == "-h") {
            std::cout << kUsage << "\n" << zel::sim::kPanelUsage;
            return 0;
        } else if (zel::sim::is_panel_option(arg)) {
            std::string error;
            if (!zel::sim::parse_panel_option(arg, value(), panel, error)) {
                std::cerr << "zel-sim: " << error << "\n";
                return 2;
            }
        } else if (arg == "--type") {
            config.controllerType = static_cast<uint16_t>(parse_number(value(), "--type"));
        } else if (arg == "--echo") {
            config.echoByte = static_cast<uint8_t>(parse_number(value(), "--echo"));
        } else if (arg == "--bind") {
            config.bindAddress = value();
        } else if (arg == "--tcp-port") {
            config.tcpPort = static_cast<int>(parse_number(value(), "--tcp-port"));
        } else if (arg == "--udp-port") {
            config.udpPort = static_cast<int>(parse_number(value(), "--udp-port"));
        } else if (arg == "--at-port") {
            config.atPort = static_cast<int>(parse_number(value(), "--at-port"));
        } else if (arg == "--serial-speed") {
            config.serialSpeed = static_cast<uint32_t>(parse_number(value(), "--serial-speed"));
        } else if (arg == "--no-tcp") {
            config.tcpPort = -1;
        } else if (arg == "--no-udp") {
            config.udpPort = -1;
        } else if (arg == "--no-at") {
            config.atPort = -1;
        } else if (arg == "--no-serial") {
            config.serial = false;
        } else if (arg == "--fault-scope") {
            const std::string scope = value();
            if (scope == "probe")
                f.scope = zel::sim::FaultScope::Probe;
            else if (scope == "commands")
                f.scope = zel::sim::FaultScope::Commands;
            else if (scope == "all")
                f.scope = zel::sim::FaultScope::All;
            else {
                std::cerr << "zel-sim: --fault-scope is probe, commands or all\n";
                return 2;
            }
        } else if (arg == "--silent") {
            f.silent = true;
        } else if (arg == "--split") {
            f.splitAnswer = true;
        } else if (arg == "--error") {
            f.errorCode = static_cast<uint16_t>(parse_number(value(), "--error"));
        } else if (arg == "--pad") {
            f.padIndex = static_cast<int>(parse_number(value(), "--pad")) & 0xFF;
        } else if (arg == "--bad-header-check") {
            f.badHeaderCheck = true;
        } else if (arg == "--bad-crc") {
            f.badCrc = true;
        } else if (arg == "--header-version") {
            f.headerVersion = static_cast<int>(parse_number(value(), "--header-version")) & 0xFF;
        } else if (arg == "--close-after-blocks") {
            f.closeAfterBlocks = static_cast<int>(parse_number(value(), "--close-after-blocks"));
        } else if (arg == "--quiet") {
            quiet = true;
        } else {
            std::cerr << "zel-sim: unknown option " << arg << " (see --help)\n";
            return 2;
        }
    }

    if (!panel.folder.empty() && panel.width == 0) {
        std::cerr << "zel-sim: --panel-out needs --screen WxH\n";
        return 2;
    }

    zel::sim::Simulator sim(config);
    if (!quiet) sim.set_trace(&std::cout);
    panel.log = &std::cout;
    zel::sim::install_panel_output(sim, panel);
    try {
        sim.start();
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
    std::cout << std::flush;

    struct sigaction sa {};
    sa.sa_handler = on_signal;
    ::sigaction(SIGINT, &sa, nullptr);
    ::sigaction(SIGTERM, &sa, nullptr);
    while (g_stop == 0) {
        ::pause();
    }
    sim.stop();
    return 0;
}

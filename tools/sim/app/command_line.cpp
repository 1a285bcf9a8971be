#include "sim/app/command_line.h"

#include <CLI/CLI.hpp>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace zel::sim {
namespace {

// The usage is the program's own text, not one generated from the option table, so that it can
// say what the options mean together and keep its layout from one release to the next.
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

What the panel shows (G5 controller types):
  --panel-out DIR        read every program file that lands in the file system
                         and write into DIR, per area and page, a PNG of the
                         screen with the page (or the running clock) at its
                         place, <name>-panel.png with the first page of every
                         area, and <name>.json
  --screen WxH           the screen's size in pixels (needed with --panel-out)
  --color N              1, 2 or 3 single colours, 4 full colour (default 1);
                         the pixel mode follows from --type
  --double-color N       plane order of a two-colour screen (default 1: plane 1
                         red)
  --clock-time "YYYY-MM-DD HH:MM:SS"
                         the moment the clock areas show, as the controller would
                         run them (default: the local time at which each program
                         lands)

Live view:
  --web PORT             serve on 127.0.0.1:PORT (0 picks a free port) a page
                         that shows the panel as it is now and follows every
                         program that lands, with the programs, the last
                         requests and the controller's settings beside it
                         (needs --screen; works with or without --panel-out)
)";

// A wrong command line, in the words printed after "zel-sim: ".
struct BadArgument {
    std::string message;
};

// A number as C reads one with base 0: 0x... hexadecimal, 0... octal, otherwise decimal, with
// nothing after it. Too large a value saturates, as it always has.
std::optional<long long> read_number(const std::string &text) {
    char *end = nullptr;
    const long long value = std::strtoll(text.c_str(), &end, 0);
    if (end == text.c_str() || *end != '\0') return std::nullopt;
    return value;
}

long long number_of(const std::string &option, const std::string &text) {
    const auto value = read_number(text);
    if (!value) throw BadArgument{option + " needs a number, not '" + text + "'"};
    return *value;
}

std::optional<long long> number_in(const std::string &text, long long low, long long high) {
    const auto value = read_number(text);
    if (!value || *value < low || *value > high) return std::nullopt;
    return value;
}

// The options as CLI11 reads them, each acting as it comes: the last of two options on one
// setting wins (`--no-tcp --tcp-port 6000` serves TCP), and the first wrong argument is the
// one reported, an unknown one included.
class Parser {
  public:
    Parser() {
        m_app.set_help_flag(); // --help prints kUsage, never a text generated by CLI11
        m_app.allow_extras();  // unknown arguments are named in our words, see reject_unknown
    }
    Parser(const Parser &) = delete;
    Parser &operator=(const Parser &) = delete;

    void value(const std::string &name, std::function<void(const std::string &)> apply) {
        m_app
            .add_option_function<std::string>(
                name,
                [this, apply = std::move(apply)](const std::string &v) {
                    reject_unknown();
                    apply(v);
                })
            ->trigger_on_parse();
    }
    // A number into `target`, cut to the target's type as a C cast cuts it.
    template <class T> void number(const std::string &name, T &target) {
        value(name, [name, &target](const std::string &v) {
            target = static_cast<T>(number_of(name, v));
        });
    }
    void flag(const std::string &name, std::function<void()> apply) {
        m_app
            .add_flag_callback(name,
                               [this, apply = std::move(apply)] {
                                   reject_unknown();
                                   apply();
                               })
            ->trigger_on_parse();
    }
    void parse(int argc, char **argv) {
        m_app.parse(argc, argv);
        reject_unknown();
    }

  private:
    // CLI11 sets aside what it does not know and goes on; an option that acts after such an
    // argument reports it first, as reading the line from the left would.
    void reject_unknown() const {
        const std::vector<std::string> unknown = m_app.remaining();
        if (!unknown.empty())
            throw BadArgument{"unknown option " + unknown.front() + " (see --help)"};
    }

    CLI::App m_app{"", "zel-sim"};
};

void add_controller_options(Parser &p, Config &c) {
    p.number("--type", c.controllerType);
    p.number("--echo", c.echoByte);
    p.value("--bind", [&c](const std::string &v) { c.bindAddress = v; });
    p.number("--tcp-port", c.tcpPort);
    p.number("--udp-port", c.udpPort);
    p.number("--at-port", c.atPort);
    p.number("--serial-speed", c.serialSpeed);
    p.flag("--no-tcp", [&c] { c.tcpPort = -1; });
    p.flag("--no-udp", [&c] { c.udpPort = -1; });
    p.flag("--no-at", [&c] { c.atPort = -1; });
    p.flag("--no-serial", [&c] { c.serial = false; });
}

void add_fault_options(Parser &p, Faults &f) {
    p.value("--fault-scope", [&f](const std::string &v) {
        if (v == "probe")
            f.scope = FaultScope::Probe;
        else if (v == "commands")
            f.scope = FaultScope::Commands;
        else if (v == "all")
            f.scope = FaultScope::All;
        else
            throw BadArgument{"--fault-scope is probe, commands or all"};
    });
    p.flag("--silent", [&f] { f.silent = true; });
    p.flag("--split", [&f] { f.splitAnswer = true; });
    p.number("--error", f.errorCode);
    // A pad index or header version names one byte: only the low byte of the number counts.
    p.value("--pad", [&f](const std::string &v) {
        f.padIndex = static_cast<int>(number_of("--pad", v)) & 0xFF;
    });
    p.flag("--bad-header-check", [&f] { f.badHeaderCheck = true; });
    p.flag("--bad-crc", [&f] { f.badCrc = true; });
    p.value("--header-version", [&f](const std::string &v) {
        f.headerVersion = static_cast<int>(number_of("--header-version", v)) & 0xFF;
    });
    p.number("--close-after-blocks", f.closeAfterBlocks);
}

void add_panel_options(Parser &p, PanelOptions &o) {
    p.value("--panel-out", [&o](const std::string &v) {
        if (v.empty()) throw BadArgument{"--panel-out wants a folder"};
        o.folder = v;
    });
    p.value("--screen", [&o](const std::string &v) {
        const auto x = v.find('x');
        const auto w = x == std::string::npos ? std::nullopt : number_in(v.substr(0, x), 1, 8192);
        const auto h = x == std::string::npos ? std::nullopt : number_in(v.substr(x + 1), 1, 8192);
        if (!w || !h) throw BadArgument{"--screen wants WIDTHxHEIGHT, each from 1 to 8192"};
        o.width = static_cast<uint32_t>(*w);
        o.height = static_cast<uint32_t>(*h);
    });
    p.value("--color", [&o](const std::string &v) {
        const auto c = number_in(v, 1, 4);
        if (!c) throw BadArgument{"--color wants 1, 2, 3 or 4"};
        o.colorMode = static_cast<int32_t>(*c);
    });
    p.value("--clock-time", [&o](const std::string &v) {
        const auto time = parse_clock_time(v);
        if (!time) throw BadArgument{"--clock-time wants \"YYYY-MM-DD HH:MM:SS\", a real date"};
        o.clockTime = *time;
    });
    p.value("--double-color", [&o](const std::string &v) {
        const auto d = number_in(v, INT32_MIN, INT32_MAX);
        if (!d) throw BadArgument{"--double-color wants a number"};
        o.doubleColor = static_cast<int32_t>(*d);
    });
}

} // namespace

Config SimOptions::program_defaults() {
    Config config;
    config.bindAddress = "0.0.0.0";
    config.tcpPort = 5005;
    config.udpPort = 5007;
    config.atPort = 13769;
    config.serial = true;
    return config;
}

std::optional<int> read_command_line(int argc, char **argv, SimOptions &options) {
    Parser parser;
    add_controller_options(parser, options.config);
    add_fault_options(parser, options.config.faults);
    add_panel_options(parser, options.panel);
    parser.value("--web", [&options](const std::string &v) {
        const auto port = number_in(v, 0, 65535);
        if (!port) throw BadArgument{"--web wants a port from 0 to 65535"};
        options.webPort = static_cast<int>(*port);
    });
    parser.flag("--quiet", [&options] { options.quiet = true; });
    parser.flag("-h,--help", [] { throw CLI::CallForHelp(); });
    try {
        parser.parse(argc, argv);
    } catch (const CLI::CallForHelp &) {
        std::cout << kUsage;
        return 0;
    } catch (const BadArgument &bad) {
        std::cerr << "zel-sim: " << bad.message << "\n";
        return 2;
    } catch (const CLI::ArgumentMismatch &) {
        // CLI11 takes whatever follows an option as its value, so only the last argument can
        // lack one.
        std::cerr << "zel-sim: " << argv[argc - 1] << " needs a value\n";
        return 2;
    } catch (const CLI::ParseError &e) {
        std::cerr << "zel-sim: " << e.what() << " (see --help)\n";
        return 2;
    }
    if (!options.panel.folder.empty() && options.panel.width == 0) {
        std::cerr << "zel-sim: --panel-out needs --screen WxH\n";
        return 2;
    }
    if (options.webPort >= 0 && options.panel.width == 0) {
        std::cerr << "zel-sim: --web needs --screen WxH\n";
        return 2;
    }
    return std::nullopt;
}

} // namespace zel::sim

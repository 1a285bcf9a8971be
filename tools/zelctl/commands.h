// zelctl's commands: one small function each over the library's exported entries, and the table
// that puts them on the command line.
#pragma once

#include <CLI/CLI.hpp>
#include <cstdint>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "session.h"

namespace zelctl {

// A command line that names no controller, or a command the chosen line does not carry.
class UsageError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// Everything the command line can hold, filled by CLI11.
struct Options {
    Target target;
    bool json = false;
    bool trace = false;
    bool noProgress = false;
    uint16_t packetLen = 0; // 0: the library's own (1024)
    // Arguments of the commands.
    std::string tz;
    bool udp = false;
    std::string table;
    std::string tableFile;
    unsigned first = 0;
    unsigned second = 0;
    bool programLock = false;
    std::string lockId = "00 00 00 00";
    uint32_t lockValue = 0;
    bool conf = false;
    unsigned kind = 0;
    std::vector<std::string> names;
    std::string file;
    std::string outFile;
    unsigned fileType = 0;
    unsigned mode = 1;
    // send-text
    unsigned area = 1;
    unsigned x = 0, y = 0, width = 0, height = 0;
    std::string font;
    std::string fontFile;
    unsigned size = 12;
    std::string color = "1";
    unsigned effect = 1;
    int deleteArea = -1; // -1: add a text; otherwise the area to delete (255: all of them)
    std::string family;  // "", "G5" or "G6"
    std::string text;
    unsigned screenColor = 1;
};

struct Context {
    const Options &options;
    Report &report;
    bool progress; // draw progress bars on standard error
};

// The command that was chosen: its name for the report and its function.
struct Chosen {
    std::string name;
    std::function<int32_t(Context &)> run;
};

// Adds every command to `app`; parsing sets `chosen`.
void add_commands(CLI::App &app, Options &options, Chosen &chosen);

} // namespace zelctl

// Readable names of the commands, for the simulator's one line per request.
#include "sim/protocol/describe.h"

#include <cstdio>
#include <map>
#include <utility>

namespace zel::sim {
namespace {

const std::map<std::pair<uint8_t, uint8_t>, const char *> &names() {
    static const std::map<std::pair<uint8_t, uint8_t>, const char *> table = {
        {{0xA1, 0x00}, "format"},
        {{0xA1, 0x01}, "delete files"},
        {{0xA1, 0x02}, "write file: header"},
        {{0xA1, 0x03}, "write file: block"},
        {{0xA1, 0x04}, "read file: start"},
        {{0xA1, 0x05}, "read file: block"},
        {{0xA1, 0x06}, "directory: start"},
        {{0xA1, 0x07}, "directory: block"},
        {{0xA1, 0x08}, "start file transfer"},
        {{0xA1, 0x09}, "end file transfer"},
        {{0xA1, 0x0A}, "delete configuration files"},
        {{0xA1, 0x0B}, "write configuration: header"},
        {{0xA1, 0x0C}, "write configuration: block"},
        {{0xA1, 0x0D}, "read configuration: start"},
        {{0xA1, 0x0E}, "read configuration: block"},
        {{0xA1, 0x12}, "memory volume"},
        {{0xA1, 0x13}, "transfer status"},
        {{0xA2, 0x00}, "ping"},
        {{0xA2, 0x01}, "system reset"},
        {{0xA2, 0x02}, "set time"},
        {{0xA2, 0x03}, "activate firmware"},
        {{0xA2, 0x05}, "power on/off"},
        {{0xA2, 0x06}, "timed on/off"},
        {{0xA2, 0x07}, "brightness"},
        {{0xA2, 0x08}, "cancel timed on/off"},
        {{0xA2, 0x0A}, "read controller id"},
        {{0xA2, 0x0D}, "screen lock"},
        {{0xA2, 0x0E}, "program lock"},
        {{0xA2, 0x0F}, "controller status"},
        {{0xA2, 0x10}, "set password"},
        {{0xA2, 0x11}, "delete password"},
        {{0xA2, 0x12}, "delay time"},
        {{0xA2, 0x13}, "button function"},
        {{0xA2, 0x14}, "timed reset"},
        {{0xA2, 0x15}, "display mode"},
        {{0xA2, 0x17}, "battle time"},
        {{0xA2, 0x18}, "stopwatch"},
        {{0xA2, 0x19}, "sensor brightness"},
        {{0xA2, 0x1A}, "speed adjust"},
        {{0xA2, 0x1B}, "screen address"},
        {{0xA2, 0x32}, "external relay"},
        {{0xA4, 0x00}, "set MAC"},
        {{0xA4, 0x01}, "set IP"},
        {{0xA4, 0x02}, "network search"},
        {{0xA4, 0x03}, "network search (G6)"},
        {{0xA7, 0x00}, "dynamic area: add"},
        {{0xA7, 0x01}, "dynamic area: delete"},
    };
    return table;
}

} // namespace

std::string command_name(uint8_t group, uint8_t code) {
    const auto it = names().find({group, code});
    return it != names().end() ? it->second : "unknown command";
}

std::string describe_request(const Request &r) {
    std::string line = std::string(transport_name(r.transport)) + " " + r.peer + ": ";
    char head[64];
    if (r.is_probe()) {
        std::snprintf(head, sizeof head, "probe, seq %u", r.sequence);
        line += head;
    } else {
        std::snprintf(head, sizeof head, "%02X %02X %s, v%u", r.group, r.code,
                      command_name(r.group, r.code).c_str(), r.version);
        line += head;
        if (r.version != 240) {
            std::snprintf(head, sizeof head, " seq %u", r.sequence);
            line += head;
        }
        std::snprintf(head, sizeof head, ", %zu data bytes", r.data.size());
        line += head;
        const std::size_t shown = r.data.size() < 16 ? r.data.size() : 16;
        if (shown > 0) {
            line += ":";
            for (std::size_t i = 0; i < shown; ++i) {
                std::snprintf(head, sizeof head, " %02X", r.data[i]);
                line += head;
            }
            if (shown < r.data.size()) line += " ...";
        }
    }
    if (!r.valid) line += " (bad frame: not answered)";
    return line;
}

} // namespace zel::sim

#include "sim/app/panel_hook.h"

#include <exception>
#include <filesystem>
#include <optional>
#include <string>

#include "sdk/controller_types.h"
#include "sim/protocol/simulator.h"

namespace zel::sim {

ScreenMode screen_mode_for(const PanelOptions &options, uint16_t controllerType) {
    ScreenMode mode;
    mode.width = options.width;
    mode.height = options.height;
    mode.colorMode = options.colorMode;
    mode.tranPixelMode = tran_pixel_mode_of(controllerType).value_or(0);
    mode.doubleColor = options.doubleColor;
    return mode;
}

const char *const kPanelUsage = R"(What the panel shows (G5 controller types):
  --panel-out DIR        read every program file that lands in the file system
                         and write into DIR, per area and page, a PNG of the
                         screen with the page at its place, <name>-panel.png with
                         the first page of every area, and <name>.json
  --screen WxH           the screen's size in pixels (needed with --panel-out)
  --color N              1, 2 or 3 single colours, 4 full colour (default 1);
                         the pixel mode follows from --type
  --double-color N       plane order of a two-colour screen (default 1: plane 1
                         red)
)";

bool is_panel_option(const std::string &name) {
    return name == "--screen" || name == "--color" || name == "--double-color" ||
           name == "--panel-out";
}

bool parse_panel_option(const std::string &name, const std::string &value, PanelOptions &options,
                        std::string &error) {
    auto number = [](const std::string &text, int64_t low, int64_t high) -> std::optional<int64_t> {
        try {
            std::size_t used = 0;
            const long long v = std::stoll(text, &used, 0);
            if (used == text.size() && v >= low && v <= high) return v;
        } catch (const std::exception &) {
        }
        return std::nullopt;
    };
    if (name == "--screen") {
        const auto x = value.find('x');
        const auto w = x == std::string::npos ? std::nullopt : number(value.substr(0, x), 1, 8192);
        const auto h = x == std::string::npos ? std::nullopt : number(value.substr(x + 1), 1, 8192);
        if (!w || !h) {
            error = "--screen wants WIDTHxHEIGHT, each from 1 to 8192";
            return false;
        }
        options.width = static_cast<uint32_t>(*w);
        options.height = static_cast<uint32_t>(*h);
    } else if (name == "--color") {
        const auto c = number(value, 1, 4);
        if (!c) {
            error = "--color wants 1, 2, 3 or 4";
            return false;
        }
        options.colorMode = static_cast<int32_t>(*c);
    } else if (name == "--double-color") {
        const auto d = number(value, INT32_MIN, INT32_MAX);
        if (!d) {
            error = "--double-color wants a number";
            return false;
        }
        options.doubleColor = static_cast<int32_t>(*d);
    } else if (name == "--panel-out") {
        if (value.empty()) {
            error = "--panel-out wants a folder";
            return false;
        }
        options.folder = value;
    } else {
        error = name + " is not a panel option";
        return false;
    }
    return true;
}

void install_panel_output(Simulator &sim, PanelOptions options) {
    if (options.folder.empty()) return;
    std::error_code ec;
    std::filesystem::create_directories(options.folder, ec);
    sim.set_file_written_hook([&sim, options](uint8_t space, const std::string &name,
                                              const std::vector<uint8_t> &content) {
        const uint16_t type = sim.controller_type();
        // Only the ordinary file space of a G5 controller holds G5 program files.
        if (space != 0 || answer_version_for(type) != 5) return;
        const ScreenMode mode = screen_mode_for(options, type);
        const PanelReport report = write_panel(options.folder, name, content, mode);
        if (options.log != nullptr) {
            *options.log << "panel: " << name << " (" << content.size() << " bytes) "
                         << (report.decoded ? "read" : "could not be read") << "; "
                         << report.pngs.size() << " PNG files and " << report.jsonPath << std::endl;
        }
    });
}

} // namespace zel::sim

#include "panel_hook.h"

#include <exception>
#include <filesystem>
#include <optional>

#include "program/controller_types.h"
#include "simulator.h"

namespace zel::sim {

ScreenMode screen_mode_for(const PanelOptions &options, uint16_t controllerType) {
    ScreenMode mode;
    mode.width = options.width;
    mode.height = options.height;
    mode.colorMode = options.colorMode;
    mode.tranPixelMode = tranPixelModeOf(controllerType).value_or(0);
    mode.doubleColor = options.doubleColor;
    return mode;
}

bool parse_panel_option(const std::string &arg, PanelOptions &options, std::string &error) {
    auto value_of = [&](const char *prefix) -> std::optional<std::string> {
        const std::string p(prefix);
        if (arg.compare(0, p.size(), p) != 0) return std::nullopt;
        return arg.substr(p.size());
    };
    auto number = [&](const std::string &text, int64_t low,
                      int64_t high) -> std::optional<int64_t> {
        try {
            std::size_t used = 0;
            const long long v = std::stoll(text, &used, 0);
            if (used == text.size() && v >= low && v <= high) return v;
        } catch (const std::exception &) {
        }
        return std::nullopt;
    };
    if (auto v = value_of("--screen=")) {
        const auto x = v->find('x');
        const auto w = x == std::string::npos ? std::nullopt : number(v->substr(0, x), 1, 8192);
        const auto h = x == std::string::npos ? std::nullopt : number(v->substr(x + 1), 1, 8192);
        if (!w || !h) {
            error = "--screen wants WIDTHxHEIGHT, each from 1 to 8192";
            return false;
        }
        options.width = static_cast<uint32_t>(*w);
        options.height = static_cast<uint32_t>(*h);
        return true;
    }
    if (auto v = value_of("--color=")) {
        const auto c = number(*v, 1, 4);
        if (!c) {
            error = "--color wants 1, 2, 3 or 4";
            return false;
        }
        options.colorMode = static_cast<int32_t>(*c);
        return true;
    }
    if (auto v = value_of("--double-color=")) {
        const auto d = number(*v, 0, 0xFFFFFFFF);
        if (!d) {
            error = "--double-color wants a number";
            return false;
        }
        options.doubleColor = static_cast<int32_t>(*d);
        return true;
    }
    if (auto v = value_of("--panel-out=")) {
        if (v->empty()) {
            error = "--panel-out wants a folder";
            return false;
        }
        options.folder = *v;
        return true;
    }
    return false;
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

#include "sim/app/panel_hook.h"

#include <ctime>
#include <filesystem>
#include <map>
#include <memory>
#include <mutex>
#include <string>

#include "sdk/controller_types.h"
#include "sim/panel/live_areas.h"
#include "sim/protocol/sim_dynamic.h"
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

ClockTime local_clock_time() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    if (::localtime_r(&now, &local) == nullptr) return {};
    return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
            local.tm_hour,        local.tm_min,     local.tm_sec};
}

namespace {

// The G6 files seen so far, by name, and the program that each data file name belongs to.
struct G6Pairs {
    std::mutex mutex;
    std::map<std::string, std::vector<uint8_t>> programs;
    std::map<std::string, std::vector<uint8_t>> data;
    std::map<std::string, std::string> programOfData;
};

// The live dynamic areas and the panel of the program they are shown over.
struct LiveState {
    std::mutex mutex;
    LiveAreas areas;
    std::string programPanel; // path of the current program's panel PNG; empty: none yet
};

void remember_program_panel(LiveState &live, const PanelReport &report) {
    for (const std::string &png : report.pngs) {
        if (png.size() >= 10 && png.compare(png.size() - 10, 10, "-panel.png") == 0) {
            std::lock_guard<std::mutex> guard(live.mutex);
            live.programPanel = png;
        }
    }
}

void install_live_areas(Simulator &sim, const PanelOptions &options,
                        std::shared_ptr<LiveState> live) {
    set_dynamic_hook(sim, [&sim, options, live](const std::vector<uint8_t> &data) {
        const DynamicFamily family =
            answer_version_for(sim.controller_type()) == 7 ? DynamicFamily::G6 : DynamicFamily::G5;
        std::lock_guard<std::mutex> guard(live->mutex);
        if (const auto error = live->areas.apply(data, family)) {
            if (options.log != nullptr) {
                *options.log << "dynamic: a command of " << data.size()
                             << " bytes could not be read at offset " << error->offset << ": "
                             << error->what << std::endl;
            }
            return;
        }
        const ScreenMode mode = screen_mode_for(options, sim.controller_type());
        if (options.live != nullptr) options.live->show_dynamic(live->areas, mode);
        if (options.folder.empty()) return;
        const std::string path = options.folder + "/" + kLivePanelName;
        std::optional<Rgb> base;
        if (!live->programPanel.empty()) base = read_png(live->programPanel);
        const bool written = write_live_panel(path, base, live->areas, mode);
        if (options.log != nullptr) {
            *options.log << "panel: " << live->areas.size() << " dynamic areas over "
                         << (live->programPanel.empty() ? std::string("no program")
                                                        : live->programPanel)
                         << (written ? "; " + path : std::string("; nothing written")) << std::endl;
        }
    });
}

void log_report(const PanelOptions &options, const std::string &what, const PanelReport &report) {
    if (options.log == nullptr) return;
    *options.log << "panel: " << what << " " << (report.decoded ? "read" : "could not be read")
                 << "; " << report.pngs.size() << " PNG files and " << report.jsonPath << std::endl;
}

} // namespace

void install_panel_output(Simulator &sim, PanelOptions options) {
    auto live = std::make_shared<LiveState>();
    install_live_areas(sim, options, live);
    if (options.folder.empty() && options.live == nullptr) return;
    if (!options.folder.empty()) {
        std::error_code ec;
        std::filesystem::create_directories(options.folder, ec);
    }
    auto pairs = std::make_shared<G6Pairs>();
    sim.set_file_written_hook([&sim, options, pairs, live](uint8_t space, const std::string &name,
                                                           const std::vector<uint8_t> &content) {
        // Only the ordinary file space holds program files.
        if (space != 0) return;
        const uint16_t type = sim.controller_type();
        const ScreenMode mode = screen_mode_for(options, type);
        const ClockTime time = options.clockTime.value_or(local_clock_time());
        if (answer_version_for(type) != 7) {
            if (!options.folder.empty()) {
                const PanelReport report = write_panel(options.folder, name, content, mode, time);
                remember_program_panel(*live, report);
                log_report(options, name + " (" + std::to_string(content.size()) + " bytes)",
                           report);
            }
            if (options.live != nullptr) options.live->show(name, content, mode, time);
            return;
        }
        std::string program;
        std::vector<uint8_t> programBytes, dataBytes;
        {
            std::lock_guard<std::mutex> guard(pairs->mutex);
            if (!name.empty() && name[0] == 'D') {
                pairs->data[name] = content;
            } else {
                pairs->programs[name] = content;
                pairs->programOfData[data_file_name_for(name)] = name;
            }
            const std::string dataName = name[0] == 'D' ? name : data_file_name_for(name);
            const auto owner = pairs->programOfData.find(dataName);
            const auto data = pairs->data.find(dataName);
            if (owner == pairs->programOfData.end() || data == pairs->data.end()) return;
            program = owner->second;
            programBytes = pairs->programs[program];
            dataBytes = data->second;
        }
        if (!options.folder.empty()) {
            const PanelReport report =
                write_panel_g6(options.folder, program, programBytes, dataBytes, mode, time);
            remember_program_panel(*live, report);
            log_report(options,
                       program + " + " + data_file_name_for(program) + " (" +
                           std::to_string(programBytes.size()) + " + " +
                           std::to_string(dataBytes.size()) + " bytes)",
                       report);
        }
        if (options.live != nullptr)
            options.live->show_g6(program, programBytes, dataBytes, mode, time);
    });
}

} // namespace zel::sim

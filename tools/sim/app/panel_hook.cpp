#include "sim/app/panel_hook.h"

#include <ctime>
#include <filesystem>
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

ClockTime local_clock_time() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    if (::localtime_r(&now, &local) == nullptr) return {};
    return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
            local.tm_hour,        local.tm_min,     local.tm_sec};
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
        const ClockTime time = options.clockTime.value_or(local_clock_time());
        const PanelReport report = write_panel(options.folder, name, content, mode, time);
        if (options.log != nullptr) {
            *options.log << "panel: " << name << " (" << content.size() << " bytes) "
                         << (report.decoded ? "read" : "could not be read") << "; "
                         << report.pngs.size() << " PNG files and " << report.jsonPath << std::endl;
        }
    });
}

} // namespace zel::sim

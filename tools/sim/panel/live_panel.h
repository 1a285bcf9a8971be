// What the screen shows now: the program that landed last, drawn as <name>-panel.png draws it
// (panel_png.h, panel_png_g6.h). Front ends that show the panel while the simulator runs (the
// live view of zel-sim --web, a test) read it from any thread and hear of every change.
#pragma once

#include <cstdint>
#include <functional>
#include <mutex>
#include <span>
#include <string>
#include <vector>

#include "sim/panel/clock_painter.h"
#include "sim/panel/live_areas.h"
#include "sim/panel/program_decoder.h"

namespace zel::sim {

class LivePanel {
  public:
    // A dark screen of this size until the first program comes.
    LivePanel(uint32_t width, uint32_t height);

    // Shows a G5 program file, or a G6 program file with its data file. A program that cannot
    // be read becomes the last program all the same (its summary names the error) and leaves
    // the screen as it was. True when it was read.
    bool show(const std::string &name, std::span<const uint8_t> file, const ScreenMode &mode,
              const ClockTime &time);
    bool show_g6(const std::string &name, std::span<const uint8_t> programFile,
                 std::span<const uint8_t> dataFile, const ScreenMode &mode, const ClockTime &time);

    // Shows the live dynamic areas as they now stand over the program (a copy is kept).
    void show_dynamic(const LiveAreas &areas, const ScreenMode &mode);

    // The panel image as it stands now: the program's panel with the dynamic areas over it. Every
    // front end asks here, so that all of them show the same screen, whatever comes to be drawn on
    // it.
    Rgb current_image() const;

    struct Shown {
        uint64_t version = 0; // rises with every change of the screen or of the last program
        std::string program;  // the last program's file name, "" before the first
        bool decoded = false; // whether it could be read
        std::string summary;  // its JSON summary (panel_json, panel_json_g6), "" before the first
    };
    Shown shown() const;

    // `listener` runs after every change, on the thread that made it, outside the panel's lock.
    void on_change(std::function<void()> listener);

  private:
    void changed();

    mutable std::mutex m_mutex;
    Rgb m_image; // the last program's panel
    LiveAreas m_areas;
    ScreenMode m_areasMode{};
    Shown m_shown;
    std::vector<std::function<void()>> m_listeners;
};

} // namespace zel::sim

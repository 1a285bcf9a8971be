#include "sim/panel/live_panel.h"

#include <utility>

#include "sim/panel/panel_png.h"
#include "sim/panel/panel_png_g6.h"

namespace zel::sim {

LivePanel::LivePanel(uint32_t width, uint32_t height)
    : m_image{width, height, std::vector<uint32_t>(std::size_t{width} * height, 0)} {}

bool LivePanel::show(const std::string &name, std::span<const uint8_t> file, const ScreenMode &mode,
                     const ClockTime &time) {
    const DecodeResult decoded = decode_program(file, mode);
    std::optional<Rgb> image = panel_image(file, mode, time);
    std::string summary = panel_json(name, file, mode, decoded, {}, time);
    {
        std::lock_guard<std::mutex> guard(m_mutex);
        if (image) m_image = std::move(*image);
        m_shown.program = name;
        m_shown.decoded = decoded.ok();
        m_shown.summary = std::move(summary);
        ++m_shown.version;
    }
    changed();
    return decoded.ok();
}

bool LivePanel::show_g6(const std::string &name, std::span<const uint8_t> programFile,
                        std::span<const uint8_t> dataFile, const ScreenMode &mode,
                        const ClockTime &time) {
    const DecodeResultG6 decoded = decode_program_g6(programFile, dataFile, mode);
    std::optional<Rgb> image = panel_image_g6(programFile, dataFile, mode, time);
    std::string summary = panel_json_g6(name, programFile, dataFile, mode, decoded, {}, time);
    {
        std::lock_guard<std::mutex> guard(m_mutex);
        if (image) m_image = std::move(*image);
        m_shown.program = name;
        m_shown.decoded = decoded.ok();
        m_shown.summary = std::move(summary);
        ++m_shown.version;
    }
    changed();
    return decoded.ok();
}

void LivePanel::show_dynamic(const LiveAreas &areas, const ScreenMode &mode) {
    {
        std::lock_guard<std::mutex> guard(m_mutex);
        m_areas = areas;
        m_areasMode = mode;
        ++m_shown.version;
    }
    changed();
}

Rgb LivePanel::current_image() const {
    std::lock_guard<std::mutex> guard(m_mutex);
    Rgb image = m_image;
    if (m_areas.size() != 0) m_areas.paint(image, m_areasMode);
    return image;
}

LivePanel::Shown LivePanel::shown() const {
    std::lock_guard<std::mutex> guard(m_mutex);
    return m_shown;
}

void LivePanel::on_change(std::function<void()> listener) {
    std::lock_guard<std::mutex> guard(m_mutex);
    m_listeners.push_back(std::move(listener));
}

void LivePanel::changed() {
    std::vector<std::function<void()>> listeners;
    {
        std::lock_guard<std::mutex> guard(m_mutex);
        listeners = m_listeners;
    }
    for (const auto &listener : listeners)
        listener();
}

} // namespace zel::sim

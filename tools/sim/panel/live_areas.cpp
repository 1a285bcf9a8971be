#include "sim/panel/live_areas.h"

#include <cairo.h>

#include "sim/panel/panel_png.h"

namespace zel::sim {

std::optional<DecodeError> LiveAreas::apply(std::span<const uint8_t> data, DynamicFamily family) {
    auto copy = std::make_shared<const std::vector<uint8_t>>(data.begin(), data.end());
    DynamicDecodeResult decoded = decode_dynamic(*copy, family);
    if (!decoded.ok()) return decoded.error;
    DecodedDynamic &command = *decoded.command;
    switch (command.kind) {
    case DecodedDynamic::Kind::Add:
        for (DecodedDynamicArea &area : command.areas) {
            const uint8_t id = area.areaID;
            m_areas[id] = Live{copy, std::move(area)};
        }
        break;
    case DecodedDynamic::Kind::Delete:
        if (command.deleteAll) {
            m_areas.clear();
        } else {
            for (const uint8_t id : command.deleted)
                m_areas.erase(id);
        }
        break;
    case DecodedDynamic::Kind::SoundUpdate:
    case DecodedDynamic::Kind::SoundInsert:
        break; // a panel shows no sound
    }
    return std::nullopt;
}

std::vector<uint8_t> LiveAreas::numbers() const {
    std::vector<uint8_t> out;
    for (const auto &[id, live] : m_areas)
        out.push_back(id);
    return out;
}

const DecodedDynamicArea *LiveAreas::find(uint8_t areaID) const {
    const auto it = m_areas.find(areaID);
    return it == m_areas.end() ? nullptr : &it->second.area;
}

void LiveAreas::paint(Rgb &canvas, const ScreenMode &mode) const {
    for (const auto &[id, live] : m_areas)
        paint_area_page(canvas, mode, live.area.area, 0);
}

std::optional<Rgb> read_png(const std::string &path) {
    cairo_surface_t *s = cairo_image_surface_create_from_png(path.c_str());
    std::optional<Rgb> out;
    if (cairo_surface_status(s) == CAIRO_STATUS_SUCCESS) {
        cairo_surface_flush(s);
        Rgb image;
        image.width = static_cast<uint32_t>(cairo_image_surface_get_width(s));
        image.height = static_cast<uint32_t>(cairo_image_surface_get_height(s));
        const int stride = cairo_image_surface_get_stride(s);
        const unsigned char *data = cairo_image_surface_get_data(s);
        image.pixels.resize(std::size_t{image.width} * image.height);
        for (uint32_t y = 0; y < image.height; ++y) {
            const auto *row = reinterpret_cast<const uint32_t *>(
                data + std::size_t{y} * static_cast<std::size_t>(stride));
            for (uint32_t x = 0; x < image.width; ++x) {
                image.pixels[std::size_t{y} * image.width + x] = row[x] & 0x00FFFFFFu;
            }
        }
        out = std::move(image);
    }
    cairo_surface_destroy(s);
    return out;
}

bool write_live_panel(const std::string &path, const std::optional<Rgb> &base,
                      const LiveAreas &areas, const ScreenMode &mode) {
    Rgb canvas;
    if (base && base->width == mode.width && base->height == mode.height) {
        canvas = *base;
    } else {
        canvas.width = mode.width;
        canvas.height = mode.height;
        canvas.pixels.assign(std::size_t{mode.width} * mode.height, 0);
    }
    areas.paint(canvas, mode);
    return write_png(path, canvas);
}

} // namespace zel::sim

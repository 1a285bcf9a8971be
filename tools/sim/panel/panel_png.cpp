#include "sim/panel/panel_png.h"

#include "sim/panel/json_text.h"

#include <cairo.h>
#include <cstdio>
#include <sstream>

#include "sim/panel/clock_body.h"

namespace zel::sim {
namespace {

// The encoded strip of a frame as an image: it was encoded at column 0 with the height of the
// frame's thickness, so its row length follows from its size.
std::optional<Rgb> strip_image(const ScreenMode &mode, std::span<const uint8_t> strip,
                               int32_t thickness) {
    if (thickness <= 0 || strip.empty()) return std::nullopt;
    const auto t = static_cast<uint32_t>(thickness);
    std::size_t perPixelRow = 0; // bytes of one pixel column in one row
    uint32_t width = 0;
    if (mode.colorMode >= 1 && mode.colorMode <= 3) {
        const std::size_t rowBytes = strip.size() / t / static_cast<std::size_t>(mode.colorMode);
        width = static_cast<uint32_t>(rowBytes * 8);
    } else if (mode.colorMode == 4) {
        perPixelRow = mode.tranPixelMode == 5 ? 3 : 2;
        width = static_cast<uint32_t>(strip.size() / t / perPixelRow);
    }
    if (width == 0) return std::nullopt;
    return decode_pixels(mode, strip, 0, width, t);
}

void put(Rgb &canvas, int64_t px, int64_t py, uint32_t colour) {
    if (px < 0 || py < 0 || px >= canvas.width || py >= canvas.height) return;
    canvas.pixels[static_cast<std::size_t>(py) * canvas.width + static_cast<std::size_t>(px)] =
        colour;
}

void paint_frame(Rgb &canvas, const ScreenMode &mode, const DecodedArea &area, int32_t t) {
    const auto strip = strip_image(mode, area.frame->strip, t);
    if (!strip) return;
    const int64_t x = area.x, y = area.y, w = area.width, h = area.height;
    for (int64_t i = 0; i < std::max(w, h); ++i) {
        const auto along = static_cast<uint32_t>(i % strip->width);
        for (int64_t r = 0; r < t; ++r) {
            const uint32_t c = strip->at(along, static_cast<uint32_t>(r));
            if (i < w) {
                put(canvas, x + i, y + r, c);         // top
                put(canvas, x + i, y + h - 1 - r, c); // bottom, facing inwards
            }
            if (i < h) {
                put(canvas, x + r, y + i, c);         // left
                put(canvas, x + w - 1 - r, y + i, c); // right
            }
        }
    }
}

} // namespace

void paint_area_page(Rgb &canvas, const ScreenMode &mode, const DecodedArea &area,
                     std::size_t page) {
    const auto rect = draw_rect(mode, area);
    if (!rect || page >= area.pages.size()) return;
    if (area.frame && rect->thickness > 0) {
        paint_frame(canvas, mode, area, rect->thickness);
    }
    const auto image =
        decode_pixels(mode, area.pages[page].pixels, static_cast<uint32_t>(rect->left),
                      static_cast<uint32_t>(rect->width), static_cast<uint32_t>(rect->height));
    if (!image) return;
    for (uint32_t py = 0; py < image->height; ++py) {
        for (uint32_t px = 0; px < image->width; ++px) {
            put(canvas, rect->left + int64_t{px}, rect->top + int64_t{py}, image->at(px, py));
        }
    }
}

void clock_json(std::ostringstream &j, const DecodedArea &area, const std::string &png,
                const ClockTime &time) {
    const DecodedClock &c = *area.clock;
    j << ",\n     \"bytesPastLength\": " << area.end - (area.offset + 4 + area.bodyLength)
      << ",\n     \"clock\": {\"backgroundBytes\": " << c.background.size()
      << ", \"unitCount\": " << int{c.unitCount} << ", \"items\": [";
    for (std::size_t i = 0; i < c.items.size(); ++i) {
        const DecodedClockItem &item = c.items[i];
        j << (i ? "," : "") << "\n       {\"offset\": " << item.offset
          << ", \"type\": " << int{item.type} << ", \"x\": " << item.x << ", \"y\": " << item.y
          << ", \"align\": " << int{item.align};
        if (item.type == 8) {
            j << ", \"hands\": \"" << hex_bytes(item.table) << "\"}";
            continue;
        }
        const auto glyphs = item_glyph_table(item);
        j << ", \"color\": \"" << hex_bytes(item.color)
          << "\", \"glyphs\": " << (glyphs ? glyphs->size() : 0) << ", \"cell\": ";
        if (glyphs && !glyphs->empty()) {
            j << "{\"width\": " << int{glyphs->front().width}
              << ", \"height\": " << int{glyphs->front().height} << "}";
        } else {
            j << "null";
        }
        j << ", \"tableBytes\": " << item.table.size() << "}";
    }
    j << "],\n      \"time\": " << quoted(format_clock_time(time)) << ", \"png\": ";
    png_json(j, png);
    j << "}}";
}

std::string panel_json(const std::string &name, std::span<const uint8_t> file,
                       const ScreenMode &mode, const DecodeResult &decoded,
                       const std::vector<std::string> &pngs, const ClockTime &time) {
    std::ostringstream j;
    j << "{\n  \"file\": " << quoted(name) << ",\n  \"size\": " << file.size() << ",\n";
    j << "  \"screen\": {\"width\": " << mode.width << ", \"height\": " << mode.height
      << ", \"colorMode\": " << mode.colorMode << ", \"tranPixelMode\": " << mode.tranPixelMode
      << ", \"doubleColor\": " << mode.doubleColor << "},\n";
    if (!decoded.ok()) {
        j << "  \"error\": {\"offset\": " << decoded.error->offset
          << ", \"what\": " << quoted(decoded.error->what) << "}\n}\n";
        return j.str();
    }
    const DecodedProgram &p = *decoded.program;
    char crc[16];
    std::snprintf(crc, sizeof crc, "0x%08X", p.crc);
    j << "  \"crc\": \"" << crc << "\",\n";
    j << "  \"header\": {\"hex\": \"" << hex_bytes(p.header)
      << "\", \"fileType\": " << int{p.header[0]} << ", \"programName\": " << quoted(p.name)
      << ", \"playPeriodFlag\": " << int{p.header[6]} << "},\n";
    j << "  \"playPeriods\": [";
    for (std::size_t i = 0; i < p.playPeriods.size(); ++i) {
        j << (i ? ", " : "") << "\"" << hex_bytes(p.playPeriods[i]) << "\"";
    }
    j << "],\n  \"programFrame\": ";
    if (p.frame) {
        j << "{\"offset\": " << p.frame->offset << ", \"header\": \"" << hex_bytes(p.frame->header)
          << "\", \"stripBytes\": " << p.frame->strip.size() << "}";
    } else {
        j << "null";
    }
    j << ",\n  \"areaCount\": " << int{p.areaCount} << ",\n  \"areaBlocks\": " << p.areas.size()
      << ",\n  \"areas\": [";
    std::size_t pngIndex = 0;
    for (std::size_t a = 0; a < p.areas.size(); ++a) {
        const DecodedArea &area = p.areas[a];
        j << (a ? "," : "") << "\n    {\"index\": " << a << ", \"offset\": " << area.offset
          << ", \"bodyLength\": " << area.bodyLength << ", \"type\": " << int{area.type}
          << ", \"rect\": {\"x\": " << area.x << ", \"y\": " << area.y
          << ", \"width\": " << area.width << ", \"height\": " << area.height << "}";
        if (area.type != 0) {
            if (area.clock) {
                clock_json(j, area, pngIndex < pngs.size() ? pngs[pngIndex++] : "", time);
            } else {
                j << "}";
            }
            continue;
        }
        const auto rect = draw_rect(mode, area);
        j << ",\n     \"frame\": ";
        if (area.frame) {
            j << "{\"offset\": " << area.frame->offset << ", \"header\": \""
              << hex_bytes(area.frame->header) << "\", \"stripBytes\": " << area.frame->strip.size()
              << ", \"thickness\": ";
            if (rect) {
                j << rect->thickness;
            } else {
                j << "null";
            }
            j << "}";
        } else {
            j << "null";
        }
        j << ",\n     \"drawRect\": ";
        rect_json(j, rect);
        j << ",\n     \"pages\": [";
        for (std::size_t i = 0; i < area.pages.size(); ++i) {
            const DecodedPage &page = area.pages[i];
            j << (i ? "," : "") << "\n       {\"index\": " << i << ", \"offset\": " << page.offset
              << ", \"effect\": " << int{page.effect()} << ", \"pageWidth\": " << page.pageWidth()
              << ", \"header\": \"" << hex_bytes(page.header)
              << "\", \"pixelBytes\": " << page.pixels.size() << ", \"png\": ";
            png_json(j, rect && pngIndex < pngs.size() ? pngs[pngIndex++] : "");
            j << "}";
        }
        j << "]}";
    }
    j << "\n  ]\n}\n";
    return j.str();
}

namespace {

// The first page of every picture area and every clock at `time`, in the file's order.
Rgb compose_panel(const ScreenMode &mode, const DecodedProgram &p, const ClockTime &time) {
    Rgb panel{mode.width, mode.height,
              std::vector<uint32_t>(static_cast<std::size_t>(mode.width) * mode.height, 0)};
    for (const DecodedArea &area : p.areas) {
        if (area.clock) {
            paint_clock(panel, mode, area, time);
        } else if (area.type == 0 && draw_rect(mode, area)) {
            paint_area_page(panel, mode, area, 0);
        }
    }
    return panel;
}

} // namespace

std::optional<Rgb> panel_image(std::span<const uint8_t> file, const ScreenMode &mode,
                               const ClockTime &time) {
    const DecodeResult decoded = decode_program(file, mode);
    if (!decoded.ok()) return std::nullopt;
    return compose_panel(mode, *decoded.program, time);
}

namespace {

cairo_status_t append_bytes(void *closure, const unsigned char *data, unsigned int length) {
    auto *out = static_cast<std::vector<uint8_t> *>(closure);
    out->insert(out->end(), data, data + length);
    return CAIRO_STATUS_SUCCESS;
}

// The image on a cairo surface of its size, or null.
cairo_surface_t *surface_of(const Rgb &image) {
    if (image.width == 0 || image.height == 0) return nullptr;
    cairo_surface_t *surface = cairo_image_surface_create(
        CAIRO_FORMAT_RGB24, static_cast<int>(image.width), static_cast<int>(image.height));
    if (cairo_surface_status(surface) != CAIRO_STATUS_SUCCESS) {
        cairo_surface_destroy(surface);
        return nullptr;
    }
    cairo_surface_flush(surface);
    unsigned char *data = cairo_image_surface_get_data(surface);
    const int stride = cairo_image_surface_get_stride(surface);
    for (uint32_t py = 0; py < image.height; ++py) {
        auto *row = reinterpret_cast<uint32_t *>(data + static_cast<std::ptrdiff_t>(py) * stride);
        for (uint32_t px = 0; px < image.width; ++px) {
            row[px] = image.at(px, py) | 0xFF000000u;
        }
    }
    cairo_surface_mark_dirty(surface);
    return surface;
}

} // namespace

std::vector<uint8_t> png_bytes(const Rgb &image) {
    std::vector<uint8_t> out;
    cairo_surface_t *surface = surface_of(image);
    if (surface == nullptr) return out;
    if (cairo_surface_write_to_png_stream(surface, append_bytes, &out) != CAIRO_STATUS_SUCCESS) {
        out.clear();
    }
    cairo_surface_destroy(surface);
    return out;
}

bool write_png(const std::string &path, const Rgb &image) {
    cairo_surface_t *surface = surface_of(image);
    if (surface == nullptr) return false;
    const bool ok = cairo_surface_write_to_png(surface, path.c_str()) == CAIRO_STATUS_SUCCESS;
    cairo_surface_destroy(surface);
    return ok;
}

PanelReport write_panel(const std::string &folder, const std::string &name,
                        std::span<const uint8_t> file, const ScreenMode &mode,
                        const ClockTime &time) {
    PanelReport report;
    const DecodeResult decoded = decode_program(file, mode);
    std::vector<std::string> pagePngs; // in the order the summary lists them
    if (decoded.ok()) {
        report.decoded = true;
        const DecodedProgram &p = *decoded.program;
        const Rgb panel = compose_panel(mode, p, time);
        for (std::size_t a = 0; a < p.areas.size(); ++a) {
            const DecodedArea &area = p.areas[a];
            if (area.clock) {
                Rgb canvas{mode.width, mode.height, std::vector<uint32_t>(panel.pixels.size(), 0)};
                paint_clock(canvas, mode, area, time);
                const std::string file_name = name + "-area" + std::to_string(a) + "-page0.png";
                pagePngs.push_back(write_png(folder + "/" + file_name, canvas) ? file_name : "");
                if (!pagePngs.back().empty()) report.pngs.push_back(folder + "/" + file_name);
                continue;
            }
            if (area.type != 0 || !draw_rect(mode, area)) continue;
            for (std::size_t i = 0; i < area.pages.size(); ++i) {
                Rgb canvas{mode.width, mode.height, std::vector<uint32_t>(panel.pixels.size(), 0)};
                paint_area_page(canvas, mode, area, i);
                const std::string file_name =
                    name + "-area" + std::to_string(a) + "-page" + std::to_string(i) + ".png";
                // A page that cannot be written keeps its place in the summary as null.
                pagePngs.push_back(write_png(folder + "/" + file_name, canvas) ? file_name : "");
                if (!pagePngs.back().empty()) report.pngs.push_back(folder + "/" + file_name);
            }
        }
        const std::string panelName = name + "-panel.png";
        if (write_png(folder + "/" + panelName, panel)) {
            report.pngs.push_back(folder + "/" + panelName);
        }
    }
    report.json = panel_json(name, file, mode, decoded, pagePngs, time);
    report.jsonPath = folder + "/" + name + ".json";
    if (FILE *out = std::fopen(report.jsonPath.c_str(), "wb")) {
        std::fwrite(report.json.data(), 1, report.json.size(), out);
        std::fclose(out);
    } else {
        report.jsonPath.clear();
    }
    return report;
}

} // namespace zel::sim

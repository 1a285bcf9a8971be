#include "sim/panel/panel_png_g6.h"

#include <cstdio>
#include <sstream>

#include "sim/panel/json_text.h"

namespace zel::sim {
namespace {

constexpr uint8_t kTypeBackground = 11;

Rgb blank(const ScreenMode &mode) {
    return {mode.width, mode.height,
            std::vector<uint32_t>(static_cast<std::size_t>(mode.width) * mode.height, 0)};
}

void frame_json(std::ostringstream &j, const std::optional<DecodedFrameG6> &frame,
                const std::optional<DrawRect> &rect) {
    if (!frame) {
        j << "null";
        return;
    }
    j << "{\"offset\": " << frame->offset << ", \"header\": \"" << hex_bytes(frame->header)
      << "\", \"stripBytes\": " << frame->strip.size();
    if (rect) {
        j << ", \"thickness\": " << rect->thickness;
    }
    j << "}";
}

} // namespace

std::string panel_json_g6(const std::string &name, std::span<const uint8_t> programFile,
                          std::span<const uint8_t> dataFile, const ScreenMode &mode,
                          const DecodeResultG6 &decoded, const std::vector<std::string> &pngs,
                          const ClockTime &time) {
    std::ostringstream j;
    j << "{\n  \"file\": " << quoted(name) << ",\n  \"size\": " << programFile.size()
      << ",\n  \"dataFile\": " << quoted(data_file_name_for(name))
      << ",\n  \"dataSize\": " << dataFile.size() << ",\n";
    j << "  \"screen\": {\"width\": " << mode.width << ", \"height\": " << mode.height
      << ", \"colorMode\": " << mode.colorMode << ", \"tranPixelMode\": " << mode.tranPixelMode
      << ", \"doubleColor\": " << mode.doubleColor << "},\n";
    if (!decoded.ok()) {
        j << "  \"error\": {\"file\": \"" << (decoded.inDataFile ? "data" : "program")
          << "\", \"offset\": " << decoded.error->offset
          << ", \"what\": " << quoted(decoded.error->what) << "}\n}\n";
        return j.str();
    }
    const DecodedProgramG6 &p = *decoded.program;
    char crc[16], dataCrc[16];
    std::snprintf(crc, sizeof crc, "0x%08X", p.crc);
    std::snprintf(dataCrc, sizeof dataCrc, "0x%08X", p.dataCrc);
    j << "  \"crc\": \"" << crc << "\",\n  \"dataCrc\": \"" << dataCrc << "\",\n";
    j << "  \"header\": {\"hex\": \"" << hex_bytes(p.header)
      << "\", \"fileType\": " << int{p.header[0]} << ", \"programName\": " << quoted(p.name)
      << "},\n  \"dataName\": " << quoted(p.dataName) << ",\n";
    j << "  \"playPeriodFlag\": " << int{p.playPeriodFlag} << ",\n  \"playPeriods\": [";
    for (std::size_t i = 0; i < p.playPeriods.size(); ++i) {
        j << (i ? ", " : "") << "\"" << hex_bytes(p.playPeriods[i]) << "\"";
    }
    j << "],\n  \"programFrame\": ";
    frame_json(j, p.frame, std::nullopt);
    j << ",\n  \"hasBackground\": " << int{p.hasBackground}
      << ",\n  \"areaCount\": " << int{p.areaCount} << ",\n  \"areaBlocks\": " << p.areas.size()
      << ",\n  \"areas\": [";
    std::size_t pngIndex = 0;
    for (std::size_t a = 0; a < p.areas.size(); ++a) {
        const DecodedAreaG6 &area = p.areas[a];
        j << (a ? "," : "") << "\n    {\"index\": " << a << ", \"offset\": " << area.offset
          << ", \"bodyLength\": " << area.bodyLength << ", \"bodyBytes\": " << area.bodyBytes
          << ", \"type\": " << int{area.type} << ", \"rect\": {\"x\": " << area.x
          << ", \"y\": " << area.y << ", \"width\": " << area.width
          << ", \"height\": " << area.height << "}";
        if (area.clock) {
            j << ",\n     \"battleRecord\": \"" << hex_bytes(area.clock->battleRecord) << "\"";
            // clock_json closes the area's object as well as the clock's.
            clock_json(j, panel_area(area), pngIndex < pngs.size() ? pngs[pngIndex++] : "", time);
            continue;
        }
        const auto rect = draw_rect(mode, panel_area(area));
        j << ",\n     \"frame\": ";
        frame_json(j, area.frame, rect);
        j << ",\n     \"attributes\": \"" << hex_bytes(area.extra) << "\",\n     \"sound\": ";
        if (area.sound) {
            j << "{\"header\": \"" << hex_bytes(area.sound->header)
              << "\", \"textBytes\": " << area.sound->text.size()
              << ", \"text\": " << quoted(area.sound->text) << "}";
        } else {
            j << "null";
        }
        j << ",\n     \"drawRect\": ";
        rect_json(j, rect);
        j << ",\n     \"pages\": [";
        for (std::size_t i = 0; i < area.pages.size(); ++i) {
            const DecodedPageG6 &page = area.pages[i];
            j << (i ? "," : "") << "\n       {\"index\": " << i << ", \"offset\": " << page.offset
              << ", \"effect\": " << int{page.effect()} << ", \"pageWidth\": " << page.pageWidth()
              << ", \"header\": \"" << hex_bytes(page.header)
              << "\", \"dataOffset\": " << page.dataOffset
              << ", \"dataLength\": " << page.dataLength << ", \"png\": ";
            png_json(j, rect && pngIndex < pngs.size() ? pngs[pngIndex++] : "");
            j << "}";
        }
        j << "]}";
    }
    j << "\n  ]\n}\n";
    return j.str();
}

namespace {

// The first page of every background, then the first page of every other area and the clocks
// at `time`.
Rgb compose_panel_g6(const ScreenMode &mode, const DecodedProgramG6 &p,
                     const std::vector<DecodedArea> &areas, const Rgb &behind,
                     const ClockTime &time) {
    Rgb panel = behind;
    for (std::size_t a = 0; a < areas.size(); ++a) {
        if (areas[a].clock) {
            paint_clock(panel, mode, areas[a], time);
        } else if (p.areas[a].type != kTypeBackground) {
            paint_area_page(panel, mode, areas[a], 0);
        }
    }
    return panel;
}

std::vector<DecodedArea> panel_areas(const DecodedProgramG6 &p) {
    std::vector<DecodedArea> areas;
    for (const DecodedAreaG6 &area : p.areas) {
        areas.push_back(panel_area(area));
    }
    return areas;
}

Rgb backgrounds(const ScreenMode &mode, const DecodedProgramG6 &p,
                const std::vector<DecodedArea> &areas) {
    Rgb behind = blank(mode);
    for (std::size_t a = 0; a < areas.size(); ++a) {
        if (p.areas[a].type == kTypeBackground) paint_area_page(behind, mode, areas[a], 0);
    }
    return behind;
}

} // namespace

std::optional<Rgb> panel_image_g6(std::span<const uint8_t> programFile,
                                  std::span<const uint8_t> dataFile, const ScreenMode &mode,
                                  const ClockTime &time) {
    const DecodeResultG6 decoded = decode_program_g6(programFile, dataFile, mode);
    if (!decoded.ok()) return std::nullopt;
    const DecodedProgramG6 &p = *decoded.program;
    const std::vector<DecodedArea> areas = panel_areas(p);
    return compose_panel_g6(mode, p, areas, backgrounds(mode, p, areas), time);
}

PanelReport write_panel_g6(const std::string &folder, const std::string &name,
                           std::span<const uint8_t> programFile, std::span<const uint8_t> dataFile,
                           const ScreenMode &mode, const ClockTime &time) {
    PanelReport report;
    const DecodeResultG6 decoded = decode_program_g6(programFile, dataFile, mode);
    std::vector<std::string> pagePngs;
    if (decoded.ok()) {
        report.decoded = true;
        const DecodedProgramG6 &p = *decoded.program;
        const std::vector<DecodedArea> areas = panel_areas(p);
        // The backgrounds' first pages lie behind everything else.
        const Rgb behind = backgrounds(mode, p, areas);
        const Rgb panel = compose_panel_g6(mode, p, areas, behind, time);
        auto keep = [&](const std::string &fileName, const Rgb &canvas) {
            // A page that cannot be written keeps its place in the summary as null.
            pagePngs.push_back(write_png(folder + "/" + fileName, canvas) ? fileName : "");
            if (!pagePngs.back().empty()) report.pngs.push_back(folder + "/" + fileName);
        };
        for (std::size_t a = 0; a < areas.size(); ++a) {
            const DecodedAreaG6 &area = p.areas[a];
            const std::string prefix = name + "-area" + std::to_string(a) + "-page";
            if (areas[a].clock) {
                Rgb canvas = behind;
                paint_clock(canvas, mode, areas[a], time);
                keep(prefix + "0.png", canvas);
                continue;
            }
            if (!draw_rect(mode, areas[a])) continue;
            for (std::size_t i = 0; i < area.pages.size(); ++i) {
                Rgb canvas = area.type == kTypeBackground ? blank(mode) : behind;
                paint_area_page(canvas, mode, areas[a], i);
                keep(prefix + std::to_string(i) + ".png", canvas);
            }
        }
        const std::string panelName = name + "-panel.png";
        if (write_png(folder + "/" + panelName, panel)) {
            report.pngs.push_back(folder + "/" + panelName);
        }
    }
    report.json = panel_json_g6(name, programFile, dataFile, mode, decoded, pagePngs, time);
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

// The dynamic areas that a controller shows at the moment, by area number, over its current
// program: an add command adds or replaces its areas, a delete removes one, several or all.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "sim/panel/dynamic_decoder.h"
#include "sim/panel/program_decoder.h"

namespace zel::sim {

class LiveAreas {
  public:
    // Applies one command. A malformed one changes nothing and gives its error.
    std::optional<DecodeError> apply(std::span<const uint8_t> data, DynamicFamily family);

    std::vector<uint8_t> numbers() const;
    const DecodedDynamicArea *find(uint8_t areaID) const;
    std::size_t size() const { return m_areas.size(); }

    // Paints the first page of every live area, in the order of their numbers, onto `canvas`.
    void paint(Rgb &canvas, const ScreenMode &mode) const;

  private:
    struct Live {
        std::shared_ptr<const std::vector<uint8_t>> command; // the spans of `area` point here
        DecodedDynamicArea area;
    };
    std::map<uint8_t, Live> m_areas;
};

// Reads a PNG (as written by write_png) into an image; empty when it cannot be read.
std::optional<Rgb> read_png(const std::string &path);

// The screen as it stands: `base` (the current program's panel, or a dark screen of the
// mode's size) with the live areas over it, written to `path`. False if it could not be written.
bool write_live_panel(const std::string &path, const std::optional<Rgb> &base,
                      const LiveAreas &areas, const ScreenMode &mode);

} // namespace zel::sim

// Rendering the content of a dynamic area with a local picture area, the same way a program's
// area renders. The callers decide whether the dynamic-area lock is held around it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "dynamic/command_g5.h"
#include "render/area.h"
#include "render/page_records.h"

namespace zel::dynamic {

inline constexpr uint8_t kContentText = 1;
inline constexpr uint8_t kContentPicture = 2;

// One content of a G5 dynamic area: a text with its font and style, or a picture file.
struct ContentG5 {
    uint8_t kind = kContentText; // another kind adds nothing and gives no pages
    PageEffects effects;
    TextStyleRecord style;
    std::string font; // a family name, or a file when it names a .ttf or .ttc
    std::string text;
    const char *picture = nullptr; // read while rendering
};

// Renders `content` on a local PicturesArea of type 16 over `rect`.
RenderedPages render_g5(const AreaRect &rect, const ContentG5 &content);

// One content of a G6 dynamic area.
struct ContentG6 {
    uint8_t kind = kContentText;
    PageDisplayRecord_G6 display;
    TextStyleRecord style;
    std::string font;
    std::string text;
    const char *picture = nullptr;
    bool fontTest = true; // false: the font is always a family name
};

struct RenderedG6 {
    std::vector<std::vector<uint8_t>> pages;
    uint16_t lastPageWidth = 0;
};

// Renders `content` on a local PicturesArea_g6 of type 16 over `rect`, without frame or sound.
RenderedG6 render_g6(const AreaRect &rect, const ContentG6 &content);

} // namespace zel::dynamic

// Small text helpers of the panel summaries (JSON).
#pragma once

#include <cstdint>
#include <cstdio>
#include <optional>
#include <ostream>
#include <span>
#include <string>

namespace zel::sim {

inline std::string hex_bytes(std::span<const uint8_t> bytes) {
    std::string out;
    char two[4];
    for (const uint8_t b : bytes) {
        std::snprintf(two, sizeof two, "%02X", b);
        out += two;
    }
    return out;
}

// A JSON string: quotes and backslashes escaped, bytes outside printable ASCII as \u00XX.
inline std::string quoted(const std::string &s) {
    std::string out = "\"";
    for (const char c : s) {
        const auto u = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            out += '\\';
            out += c;
        } else if (u < 0x20 || u >= 0x7F) {
            char esc[8];
            std::snprintf(esc, sizeof esc, "\\u%04x", u);
            out += esc;
        } else {
            out += c;
        }
    }
    return out + "\"";
}

// An area's drawing rectangle, or null when the area draws nothing.
template <class Rect> void rect_json(std::ostream &j, const std::optional<Rect> &rect) {
    if (!rect) {
        j << "null";
        return;
    }
    j << "{\"x\": " << rect->left << ", \"y\": " << rect->top << ", \"width\": " << rect->width
      << ", \"height\": " << rect->height << "}";
}

// The name of a page's PNG file, or null when none was written.
inline void png_json(std::ostream &j, const std::string &png) {
    if (png.empty()) {
        j << "null";
    } else {
        j << quoted(png);
    }
}

} // namespace zel::sim

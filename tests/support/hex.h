// Byte vectors from hex text, for assertions that spell out frames.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace zel::test {

// "A5 A5 5a" -> {0xA5, 0xA5, 0x5A}; spaces are ignored.
inline std::vector<uint8_t> hex(const std::string &text) {
    std::vector<uint8_t> out;
    int high = -1;
    for (const char c : text) {
        int v;
        if (c >= '0' && c <= '9')
            v = c - '0';
        else if (c >= 'a' && c <= 'f')
            v = c - 'a' + 10;
        else if (c >= 'A' && c <= 'F')
            v = c - 'A' + 10;
        else
            continue;
        if (high < 0) {
            high = v;
        } else {
            out.push_back(static_cast<uint8_t>(high * 16 + v));
            high = -1;
        }
    }
    return out;
}

} // namespace zel::test

// The controllers' pixel formats written the plainest way: every position of every row read,
// thresholded and stored one bit at a time in three fixed bit planes through bitset's checked
// accessors, then packed bit by bit. Slow on purpose and easy to check by eye; the tests compare
// the library's kernels against it and the benchmark measures them against it. Shared by
// tests/ and bench/, so header-only.
#pragma once

#include <bitset>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace zel::test {

class ReferenceEncoder {
  public:
    static constexpr std::size_t kPlaneBits = 4194304;

    ReferenceEncoder() {
        for (auto &plane : m_planes)
            plane = std::make_unique<std::bitset<kPlaneBits>>();
    }

    // Returns the encoded bytes; throws std::out_of_range past the planes.
    std::vector<uint8_t> encode(std::span<const uint8_t> pixels, uint32_t x, uint32_t width,
                                uint32_t height, int32_t colorMode, uint32_t tranPixelMode,
                                int32_t doubleColor, std::span<const uint8_t> gammaRed,
                                std::span<const uint8_t> gammaGreen,
                                std::span<const uint8_t> gammaBlue) {
        std::vector<uint8_t> out;
        for (auto &plane : m_planes)
            plane->reset();
        const uint32_t unit = tranPixelMode == 4 ? 32 : 8;

        if (colorMode >= 1 && colorMode <= 3) {
            const uint32_t padLeft = x % unit;
            const uint32_t padRight = (x + width) % unit == 0 ? 0 : unit - (x + width) % unit;
            const uint32_t rowPixels = padLeft + width + padRight;
            const std::size_t total = std::size_t{rowPixels} * height;

            std::size_t index = 0;
            for (uint32_t row = 0; row < height; ++row) {
                for (uint32_t c = 0; c < rowPixels; ++c, ++index) {
                    uint8_t r = 0, g = 0, b = 0;
                    if (c >= padLeft && c < padLeft + width) {
                        read_pixel(pixels, c - padLeft, row, width, r, g, b);
                    }
                    const bool rl = r >= 97, gl = g >= 97, bl = b >= 97;
                    bool p1 = false, p2 = false, p3 = false;
                    if (colorMode == 1) {
                        p1 = rl || gl || bl;
                    } else if (colorMode == 2 && doubleColor == 1) {
                        p1 = rl || (!rl && !gl && bl);
                        p2 = gl;
                    } else if (colorMode == 2) {
                        p1 = gl;
                        p2 = rl || (!rl && !gl && bl);
                    } else {
                        p1 = rl;
                        p2 = gl;
                        p3 = bl;
                    }
                    // Lit is 0, dark is 1.
                    m_planes[0]->set(index, !p1);
                    m_planes[1]->set(index, !p2);
                    m_planes[2]->set(index, !p3);
                }
            }

            if (tranPixelMode == 0) {
                for (std::size_t group = 0; group < total; group += 8) {
                    const uint8_t b1 = pack_byte(*m_planes[0], group);
                    const uint8_t b2 = pack_byte(*m_planes[1], group);
                    const uint8_t b3 = pack_byte(*m_planes[2], group);
                    if (colorMode == 3) {
                        out.push_back(b1);
                        out.push_back(b2);
                        out.push_back(b3);
                    } else if (colorMode == 2) {
                        out.push_back(b2);
                        out.push_back(b1);
                    } else {
                        out.push_back(b1);
                    }
                }
            } else if (tranPixelMode == 4) {
                const std::size_t planeBytes = total / 8;
                std::vector<std::vector<uint8_t>> buffers(3, std::vector<uint8_t>(planeBytes));
                for (std::size_t p = 0; p < 3; ++p) {
                    for (std::size_t group = 0; group < total; group += 32) {
                        uint32_t word = 0;
                        for (std::size_t k = 0; k < 32; ++k) {
                            word = (word << 1) | (m_planes[p]->test(group + k) ? 1U : 0U);
                        }
                        for (std::size_t k = 0; k < 4; ++k) {
                            buffers[p][group / 8 + k] = static_cast<uint8_t>(word >> (8 * k));
                        }
                    }
                }
                for (int32_t p = 0; p < colorMode; ++p) {
                    const auto &buffer = buffers[static_cast<std::size_t>(p)];
                    out.insert(out.end(), buffer.begin(), buffer.end());
                }
            }
        } else if (colorMode == 4) {
            for (uint32_t row = 0; row < height; ++row) {
                for (uint32_t col = 0; col < width; ++col) {
                    uint8_t r = 0, g = 0, b = 0;
                    read_pixel(pixels, col, row, width, r, g, b);
                    if (tranPixelMode == 3) {
                        const uint32_t rr = gammaRed[r], gg = gammaGreen[g], bb = gammaBlue[b];
                        const uint32_t word =
                            ((bb * 256) & 0xF800) + ((gg * 8) & 0x07E0) + (rr / 8);
                        out.push_back(static_cast<uint8_t>(word & 0xFF));
                        out.push_back(static_cast<uint8_t>(word >> 8));
                    } else if (tranPixelMode == 5) {
                        out.push_back(r);
                        out.push_back(g);
                        out.push_back(b);
                    } else if (tranPixelMode == 1) {
                        out.push_back(0);
                        out.push_back(0);
                    }
                }
            }
        }
        return out;
    }

  private:
    static void read_pixel(std::span<const uint8_t> pixels, uint32_t column, uint32_t row,
                           uint32_t rowLength, uint8_t &r, uint8_t &g, uint8_t &b) {
        const std::size_t index = (std::size_t{row} * rowLength + column) * 4;
        b = pixels[index];
        g = pixels[index + 1];
        r = pixels[index + 2];
    }

    static uint8_t pack_byte(const std::bitset<kPlaneBits> &plane, std::size_t first) {
        uint8_t byte = 0;
        for (std::size_t k = 0; k < 8; ++k) {
            byte = static_cast<uint8_t>((byte << 1) | (plane.test(first + k) ? 1 : 0));
        }
        return byte;
    }

    std::unique_ptr<std::bitset<kPlaneBits>> m_planes[3];
};

} // namespace zel::test

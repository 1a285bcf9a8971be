// Little-endian byte building and reading. Every byte layout of the wire and of the files is
// made and read through these two; nothing casts a struct onto bytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <span>
#include <vector>

namespace zel {

class ByteWriter {
  public:
    ByteWriter() = default;
    explicit ByteWriter(std::size_t reserve) { m_bytes.reserve(reserve); }

    ByteWriter &u8(uint8_t v) {
        m_bytes.push_back(v);
        return *this;
    }
    ByteWriter &u16(uint16_t v) {
        m_bytes.push_back(static_cast<uint8_t>(v));
        m_bytes.push_back(static_cast<uint8_t>(v >> 8));
        return *this;
    }
    ByteWriter &u32(uint32_t v) {
        for (int shift = 0; shift < 32; shift += 8) {
            m_bytes.push_back(static_cast<uint8_t>(v >> shift));
        }
        return *this;
    }
    ByteWriter &i16(int16_t v) { return u16(static_cast<uint16_t>(v)); }
    ByteWriter &i32(int32_t v) { return u32(static_cast<uint32_t>(v)); }
    ByteWriter &bytes(const void *data, std::size_t length) {
        const auto *p = static_cast<const uint8_t *>(data);
        m_bytes.insert(m_bytes.end(), p, p + length);
        return *this;
    }
    ByteWriter &bytes(std::span<const uint8_t> data) { return bytes(data.data(), data.size()); }
    ByteWriter &zeros(std::size_t count) {
        m_bytes.insert(m_bytes.end(), count, 0);
        return *this;
    }
    // Overwrites a value already written, for counts and lengths known only at the end.
    void put_u8_at(std::size_t offset, uint8_t v) { m_bytes.at(offset) = v; }
    void put_u16_at(std::size_t offset, uint16_t v) {
        m_bytes.at(offset) = static_cast<uint8_t>(v);
        m_bytes.at(offset + 1) = static_cast<uint8_t>(v >> 8);
    }
    void put_u32_at(std::size_t offset, uint32_t v) {
        for (std::size_t i = 0; i < 4; ++i) {
            m_bytes.at(offset + i) = static_cast<uint8_t>(v >> (8 * i));
        }
    }

    std::size_t size() const { return m_bytes.size(); }
    const std::vector<uint8_t> &data() const { return m_bytes; }
    std::vector<uint8_t> take() { return std::move(m_bytes); }

  private:
    std::vector<uint8_t> m_bytes;
};

// Reads little-endian values from a span. Every read is bounds-checked: a read past the end
// marks the reader as failed and returns 0, so a parser can read a whole record and test ok()
// once at the end.
class ByteReader {
  public:
    explicit ByteReader(std::span<const uint8_t> data) : m_data(data) {}
    ByteReader(const uint8_t *data, std::size_t length) : m_data(data, length) {}

    uint8_t u8() {
        if (!need(1)) return 0;
        return m_data[m_pos++];
    }
    uint16_t u16() {
        if (!need(2)) return 0;
        const uint16_t v = static_cast<uint16_t>(m_data[m_pos] | (m_data[m_pos + 1] << 8));
        m_pos += 2;
        return v;
    }
    uint32_t u32() {
        if (!need(4)) return 0;
        uint32_t v = 0;
        for (std::size_t i = 0; i < 4; ++i) {
            v |= static_cast<uint32_t>(m_data[m_pos + i]) << (8 * i);
        }
        m_pos += 4;
        return v;
    }
    int16_t i16() { return static_cast<int16_t>(u16()); }
    int32_t i32() { return static_cast<int32_t>(u32()); }
    std::span<const uint8_t> bytes(std::size_t length) {
        if (!need(length)) return {};
        auto out = m_data.subspan(m_pos, length);
        m_pos += length;
        return out;
    }
    void skip(std::size_t length) {
        if (need(length)) m_pos += length;
    }
    void seek(std::size_t pos) {
        if (pos > m_data.size()) {
            m_ok = false;
            return;
        }
        m_pos = pos;
    }

    std::size_t pos() const { return m_pos; }
    std::size_t remaining() const { return m_data.size() - m_pos; }
    bool ok() const { return m_ok; }

  private:
    bool need(std::size_t length) {
        if (!m_ok || length > m_data.size() - m_pos) {
            m_ok = false;
            return false;
        }
        return true;
    }

    std::span<const uint8_t> m_data;
    std::size_t m_pos = 0;
    bool m_ok = true;
};

// Single reads at an offset for fixed layouts; out-of-range reads give 0.
inline uint16_t read_u16_le(std::span<const uint8_t> data, std::size_t offset) {
    if (offset + 2 > data.size()) return 0;
    return static_cast<uint16_t>(data[offset] | (data[offset + 1] << 8));
}
inline uint32_t read_u32_le(std::span<const uint8_t> data, std::size_t offset) {
    if (offset + 4 > data.size()) return 0;
    return static_cast<uint32_t>(data[offset]) | (static_cast<uint32_t>(data[offset + 1]) << 8) |
           (static_cast<uint32_t>(data[offset + 2]) << 16) |
           (static_cast<uint32_t>(data[offset + 3]) << 24);
}
inline void write_u16_le(uint8_t *out, uint16_t v) {
    out[0] = static_cast<uint8_t>(v);
    out[1] = static_cast<uint8_t>(v >> 8);
}
inline void write_u32_le(uint8_t *out, uint32_t v) {
    for (int i = 0; i < 4; ++i)
        out[i] = static_cast<uint8_t>(v >> (8 * i));
}

} // namespace zel

// The data file of a G6 program: the pixel bytes of every page of every area, one after the
// other, which the page records of the program file point into by offset.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "program/program_header.h"

namespace zel {

inline constexpr uint8_t kDataFileType = 9;
// Type, name and eight zero bytes stand before the first pixel byte.
inline constexpr std::size_t kDataFileHeadSize = 13;
// 14, not 13: the offsets that point into the data file are one-based positions. The
// controllers read them so; the value is not to be corrected.
inline constexpr uint32_t kFirstDataOffset = kDataFileHeadSize + 1;

class DataFileWriter {
  public:
    // Starts the file: the type 9, the name, eight zero bytes.
    explicit DataFileWriter(const FileName &name);

    // The running offset: where the next bytes will stand, one-based.
    uint32_t offset() const { return static_cast<uint32_t>(m_bytes.size() + 1); }
    // Appends bytes and returns the offset that points at them; the running offset rises by
    // their length.
    uint32_t append(std::span<const uint8_t> bytes);
    std::size_t size() const { return m_bytes.size(); }

    // Closes the file with the CRC-32 of every byte before it and hands it over with the CRC.
    std::vector<uint8_t> finish(uint32_t &crc);

  private:
    std::vector<uint8_t> m_bytes;
};

} // namespace zel

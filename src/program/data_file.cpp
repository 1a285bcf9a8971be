#include "program/data_file.h"

#include "program/program_file.h"
#include "sdk/bytes.h"

namespace zel {

DataFileWriter::DataFileWriter(const FileName &name) {
    ByteWriter head(kDataFileHeadSize);
    head.u8(kDataFileType).bytes(name.data(), name.size()).zeros(8);
    m_bytes = head.take();
}

uint32_t DataFileWriter::append(std::span<const uint8_t> bytes) {
    const uint32_t at = offset();
    m_bytes.insert(m_bytes.end(), bytes.begin(), bytes.end());
    return at;
}

std::vector<uint8_t> DataFileWriter::finish(uint32_t &crc) {
    crc = finish_program_image(m_bytes);
    return std::move(m_bytes);
}

} // namespace zel

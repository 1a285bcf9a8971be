#include "render/page_records.h"

#include <algorithm>

namespace zel {

namespace {

template <std::size_t N> std::array<uint8_t, N> padded(std::span<const uint8_t> bytes) {
    std::array<uint8_t, N> out{};
    std::copy_n(bytes.begin(), std::min(bytes.size(), N), out.begin());
    return out;
}

template <std::size_t N, class Record> std::array<uint8_t, N> to_array(const Record &record) {
    ByteWriter w(N);
    record.write(w);
    std::array<uint8_t, N> out{};
    std::copy_n(w.data().begin(), N, out.begin());
    return out;
}

} // namespace

PageDisplayRecord PageDisplayRecord::read(std::span<const uint8_t> bytes) {
    const auto raw = padded<kSize>(bytes);
    ByteReader r(raw);
    PageDisplayRecord p;
    p.pageByte0 = r.u8();
    p.displayEffect = r.u8();
    p.pageByte2 = r.u8();
    p.pageByte3 = r.u8();
    p.pageWord4 = r.u16();
    p.pageByte6 = r.u8();
    p.pageWidth = r.u16();
    p.reserved = r.u32();
    return p;
}

void PageDisplayRecord::write(ByteWriter &out) const {
    out.u8(pageByte0).u8(displayEffect).u8(pageByte2).u8(pageByte3).u16(pageWord4);
    out.u8(pageByte6).u16(pageWidth).u32(reserved);
}

std::array<uint8_t, PageDisplayRecord::kSize> PageDisplayRecord::bytes() const {
    return to_array<kSize>(*this);
}

void PageDisplayRecord_G6::write(ByteWriter &out) const {
    out.u8(pageByte0).u8(displayEffect).u8(pageByte2).u8(pageByte3).u16(pageWord4);
    out.u8(pageByte6).u16(pageWidth).u8(0).u8(pageByte10).zeros(7);
}

std::array<uint8_t, PageDisplayRecord_G6::kSize> PageDisplayRecord_G6::bytes() const {
    return to_array<kSize>(*this);
}

PageDisplayRecord PageDisplayRecord_G6::display_record() const {
    PageDisplayRecord p;
    p.pageByte0 = pageByte0;
    p.displayEffect = displayEffect;
    p.pageByte2 = pageByte2;
    p.pageByte3 = pageByte3;
    p.pageWord4 = pageWord4;
    p.pageByte6 = pageByte6;
    p.pageWidth = pageWidth;
    p.reserved = 0;
    return p;
}

TextStyleRecord TextStyleRecord::read(std::span<const uint8_t> bytes) {
    const auto raw = padded<kSize>(bytes);
    ByteReader r(raw);
    TextStyleRecord s;
    s.arrMode = r.u32();
    s.fontSize = r.u16();
    s.fontColor = r.u32();
    s.fontBold = r.u8();
    s.fontItalic = r.u8();
    s.styleWord12 = r.u32();
    s.styleWord16 = r.u16();
    s.horizontalAlign = r.u8();
    s.verticalAlign = r.u8();
    return s;
}

void TextStyleRecord::write(ByteWriter &out) const {
    out.u32(arrMode).u16(fontSize).u32(fontColor).u8(fontBold).u8(fontItalic);
    out.u32(styleWord12).u16(styleWord16).u8(horizontalAlign).u8(verticalAlign);
}

std::array<uint8_t, TextStyleRecord::kSize> TextStyleRecord::bytes() const {
    return to_array<kSize>(*this);
}

} // namespace zel

#include "program/program_file.h"

#include <fstream>

#include "sdk/bytes.h"
#include "sdk/crc.h"

namespace zel {
namespace {

constexpr uint32_t kPageRecordOverhead = 4 + kPageHeaderSize; // length word and header
constexpr uint32_t kBodyFixedNoFrame = kAreaRecordSize + 1 + 2;
constexpr uint32_t kBodyFixedWithFrame = kAreaRecordSize + kFrameHeaderSize + 2;

} // namespace

uint32_t picture_body_length(const PictureAreaImage &area) {
    uint32_t length = area.frameEnabled
                          ? kBodyFixedWithFrame + static_cast<uint32_t>(area.frameData.size())
                          : kBodyFixedNoFrame;
    for (const auto &page : area.pages) {
        length += kPageRecordOverhead + static_cast<uint32_t>(page.size());
    }
    return length;
}

std::vector<PagePlacement> picture_page_order(const PictureAreaImage &area) {
    const std::size_t n = area.pages.size();
    const uint8_t effect = area.displayRecord[1];
    const auto full = static_cast<uint16_t>(area.drawWidth);
    const uint16_t last = area.lastPageWidth;
    std::vector<PagePlacement> order;
    order.reserve(n);

    if (effect == kEffectReverseRoll || effect == kEffectReverseRollAlt) {
        // Text pages backwards, then the first pages of the area again from the front: with
        // text and pictures in one area the picture pages never reach the file. Deliberate.
        const uint16_t s = area.textPageCount < 0 ? 0 : static_cast<uint16_t>(area.textPageCount);
        const auto r = static_cast<uint16_t>(n - s);
        for (std::size_t i = s; i-- > 0;) {
            if (i < n) order.push_back({i, i == 0 ? last : full});
        }
        for (std::size_t i = 0; i < r; ++i) {
            if (i < n) order.push_back({i, i + 1 == r ? last : full});
        }
        return order;
    }

    // Picture headers stand in only when the area has no text page: the position that the
    // text page count is compared with never moves from 0. Deliberate.
    std::size_t nextPicture = 0;
    for (std::size_t i = 0; i < n; ++i) {
        PagePlacement placement{i, (effect == kEffectHorizontalRoll && i + 1 == n) ? last : full};
        if (area.textPageCount <= 0 && nextPicture < area.pictureHeaders.size()) {
            placement.pictureHeader = static_cast<int>(nextPicture++);
        }
        order.push_back(placement);
    }
    return order;
}

void append_area_block(std::vector<uint8_t> &image, std::span<const uint8_t> body) {
    append_area_block(image, static_cast<uint32_t>(body.size()), body);
}

void append_area_block(std::vector<uint8_t> &image, uint32_t declaredLength,
                       std::span<const uint8_t> body) {
    ByteWriter block(4 + body.size());
    block.u32(declaredLength).bytes(body);
    image.insert(image.end(), block.data().begin(), block.data().end());
}

std::vector<uint8_t> picture_area_body(const PictureAreaImage &area) {
    const uint32_t length = picture_body_length(area);
    ByteWriter body(length);
    body.bytes(area.areaHeader);
    if (area.frameEnabled) {
        body.bytes(area.frameRecord).bytes(area.frameData);
    } else {
        body.u8(0);
    }
    body.u16(static_cast<uint16_t>(area.pages.size()));
    PageHeader common = area.displayRecord;
    for (const PagePlacement &placement : picture_page_order(area)) {
        const auto pixels = area.pages[placement.page];
        body.u32(static_cast<uint32_t>(kPageHeaderSize + pixels.size()));
        if (placement.pictureHeader >= 0) {
            body.bytes(area.pictureHeaders[static_cast<std::size_t>(placement.pictureHeader)]);
        } else {
            write_u16_le(common.data() + kPageWidthOffset, placement.width);
            body.bytes(common);
        }
        body.bytes(pixels);
    }
    // The declared length was computed from the real pages; a reverse order over pages of
    // different sizes writes another amount. The block keeps its declared length so that
    // the areas behind it stay where the length says.
    std::vector<uint8_t> bytes = body.take();
    bytes.resize(length, 0);
    return bytes;
}

std::vector<uint8_t> begin_program_image(const ProgramImageHead &head) {
    ByteWriter out;
    out.bytes(head.header);
    const auto flag = static_cast<uint8_t>(head.hasPlayPeriods);
    out.u8(flag);
    if (flag == 1) {
        // The periods without their count: the file does not say how many there are.
        for (const PlayPeriod &period : head.playPeriods) {
            out.bytes(period.bytes);
        }
    }
    if (head.hasFrame) {
        out.bytes(head.frameHeader).bytes(head.frameData);
    } else {
        out.u8(0);
    }
    if (!head.hasBackground) {
        out.u8(0);
    }
    out.u8(static_cast<uint8_t>(head.areaCount));
    return out.take();
}

uint32_t finish_program_image(std::vector<uint8_t> &image) {
    const uint32_t crc = crc32_ieee(image.data(), image.size());
    uint8_t tail[4];
    write_u32_le(tail, crc);
    image.insert(image.end(), tail, tail + 4);
    return crc;
}

void write_program_trace(std::span<const uint8_t> image) {
    std::ofstream out(kProgramTraceFile, std::ios::binary | std::ios::trunc);
    if (out) {
        out.write(reinterpret_cast<const char *>(image.data()),
                  static_cast<std::streamsize>(image.size()));
    }
}

} // namespace zel

#include "program/program_file_g6.h"

#include <algorithm>

#include "sdk/bytes.h"

namespace zel {
namespace {

// Area record, three attribute bytes, five zero bytes, page count.
constexpr uint32_t kBodyFixed = kAreaRecordSize + kAreaExtraSize + 5 + 2;
constexpr uint32_t kFrameHeaderCountedAsG5 = kFrameRecordSize;
constexpr uint32_t kSoundFixed = kSoundHeaderSize + 4;

} // namespace

uint32_t picture_body_length_g6(const PictureAreaImageG6 &area) {
    uint32_t length =
        kBodyFixed + (4 + kPageRecordLengthG6) * static_cast<uint32_t>(area.pages.size());
    if (area.frameEnabled) {
        length += static_cast<uint32_t>(area.frameData.size()) +
                  (area.frameCount == FrameCount::AsG5 ? kFrameHeaderCountedAsG5
                                                       : static_cast<uint32_t>(kFrameRecordSizeG6));
    } else {
        length += 1;
    }
    length += area.soundEnabled ? kSoundFixed + static_cast<uint32_t>(area.soundData.size()) : 1;
    return length;
}

std::vector<PagePlacementG6> picture_page_order_g6(const PictureAreaImageG6 &area) {
    const std::size_t n = area.pages.size();
    const uint8_t effect = area.displayRecord[1];
    const auto full = static_cast<uint16_t>(area.drawWidth);
    const uint16_t last = area.lastPageWidth;
    std::vector<PagePlacementG6> order;
    order.reserve(n);
    std::size_t nextPicture = 0;

    if (effect == kEffectReverseRoll || effect == kEffectReverseRollAlt) {
        const uint16_t s = area.textPageCount < 0 ? 0 : static_cast<uint16_t>(area.textPageCount);
        const auto r = static_cast<uint16_t>(n - s);
        for (std::size_t i = s; i-- > 0;) {
            if (i < n) order.push_back({i, i == 0 ? last : full});
        }
        // The first pages again, as in G5, each with the next picture header; once those are
        // used up a record gets no header at all. Deliberate.
        for (std::size_t i = 0; i < r && i < n; ++i) {
            PagePlacementG6 placement{i, full, PagePlacementG6::kNone};
            if (nextPicture < area.pictureHeaders.size()) {
                placement.header = static_cast<int>(nextPicture++);
            }
            order.push_back(placement);
        }
        return order;
    }

    // Unlike G5, the position moves: text pages take the common header, picture pages their
    // own.
    for (std::size_t c = 0; c < n; ++c) {
        PagePlacementG6 placement{c, (effect == kEffectHorizontalRoll && c + 1 == n) ? last : full};
        if (static_cast<int64_t>(c) >= area.textPageCount &&
            nextPicture < area.pictureHeaders.size()) {
            placement.header = static_cast<int>(nextPicture++);
        }
        order.push_back(placement);
    }
    return order;
}

AreaBodyG6 picture_area_body_g6(const PictureAreaImageG6 &area, DataFileWriter &data) {
    const uint32_t length = picture_body_length_g6(area);
    ByteWriter body(length);
    body.bytes(area.areaHeader);
    if (area.frameEnabled) {
        body.bytes(area.frameRecord).bytes(area.frameData);
    } else {
        body.u8(0);
    }
    body.bytes(area.extra);
    if (area.soundEnabled) {
        body.bytes(area.soundHeader).u32(static_cast<uint32_t>(area.soundData.size()));
        body.bytes(area.soundData);
    } else {
        body.u8(0);
    }
    body.zeros(5).u16(static_cast<uint16_t>(area.pages.size()));
    PageHeaderG6 common = area.displayRecord;
    for (const PagePlacementG6 &placement : picture_page_order_g6(area)) {
        const auto pixels = area.pages[placement.page];
        body.u32(kPageRecordLengthG6);
        if (placement.header >= 0) {
            body.bytes(area.pictureHeaders[static_cast<std::size_t>(placement.header)]);
        } else if (placement.header == PagePlacementG6::kCommon) {
            write_u16_le(common.data() + kPageWidthOffset, placement.width);
            body.bytes(common);
        } else {
            body.zeros(kPageHeaderSizeG6);
        }
        body.u32(data.append(pixels)).u32(static_cast<uint32_t>(pixels.size()));
    }
    return {length, body.take()};
}

AreaBodyG6 write_picture_area_g6(PicturesArea_g6 &area, DataFileWriter &data, FrameCount count) {
    PictureAreaImageG6 image;
    image.areaHeader = area.areaHeader;
    image.frameEnabled = area.frameEnabled != 0;
    image.frameRecord = area.frameRecord_G6;
    image.frameData =
        std::span<const uint8_t>(area.frameData)
            .first(std::min<std::size_t>(area.frameDataLength, area.frameData.size()));
    image.frameCount = count;
    image.extra = {area.areaExtra_G6.backGroundFlag, area.areaExtra_G6.transparency,
                   area.areaExtra_G6.areaEqual};
    image.soundEnabled = area.soundEnabled != 0;
    image.soundHeader = area.soundRecord.bytes();
    // The sound goes in at the length it had when the pages were rendered.
    image.soundData =
        std::span<const uint8_t>(reinterpret_cast<const uint8_t *>(area.soundData.data()),
                                 std::min<std::size_t>(area.soundLength, area.soundData.size()));
    image.displayRecord = area.displayRecord_G6.bytes();
    image.drawWidth = area.drawWidth;
    image.lastPageWidth = area.lastPageWidth;
    image.textPageCount = area.textPageCount;
    for (const PictureDetail_G6 &detail : area.pictureDetails_G6) {
        image.pictureHeaders.push_back(detail.record.bytes());
    }
    for (const auto &page : area.encodedPages) {
        image.pages.emplace_back(page);
    }
    AreaBodyG6 body = picture_area_body_g6(image, data);
    for (const PagePlacementG6 &placement : picture_page_order_g6(image)) {
        if (placement.header == PagePlacementG6::kCommon) {
            area.displayRecord_G6.pageWidth = placement.width;
        }
    }
    return body;
}

std::vector<uint8_t> begin_program_image_g6(const ProgramImageHeadG6 &head) {
    ByteWriter out;
    out.bytes(head.header);
    const auto flag = static_cast<uint8_t>(head.hasPlayPeriods);
    out.u8(flag);
    if (flag == 1) {
        for (const PlayPeriod &period : head.playPeriods) {
            out.bytes(period.bytes);
        }
    }
    if (head.hasFrame) {
        out.bytes(head.frameHeader).bytes(head.frameData);
    } else {
        out.u8(0);
    }
    out.u8(head.hasBackground ? 1 : 0);
    out.u8(static_cast<uint8_t>(head.areaCount));
    return out.take();
}

} // namespace zel

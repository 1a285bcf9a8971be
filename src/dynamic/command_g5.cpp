#include "dynamic/command_g5.h"

#include <algorithm>

#include "sdk/bytes.h"

namespace zel::dynamic {
namespace {

void write_head(ByteWriter &w, uint8_t code) {
    w.u8(kCommandForm).u8(kGroupDynamic).u8(code).u16(0);
}

// The page order of one content: indices as they go on the wire.
std::vector<std::size_t> page_order(std::size_t count, uint8_t effect) {
    std::vector<std::size_t> order(count);
    for (std::size_t i = 0; i < count; ++i) {
        order[i] = effect == kEffectReversedPages ? count - 1 - i : i;
    }
    return order;
}

} // namespace

std::vector<uint8_t> build_add_g5(const AddHeadG5 &head, std::span<const RenderedPages> contents) {
    if (head.listCount > 0 && head.listMissing) return {};
    const bool withList = head.listFlag == 0 && head.listCount != 0;
    ByteWriter w;
    write_head(w, kCodeAddArea);
    const std::size_t lengthAt = w.size();
    w.u32(0);
    w.u8(head.headByte0)
        .u8(head.headByte1)
        .u16(head.headWord)
        .u8(head.listFlag)
        .u16(head.listCount);
    if (withList) {
        for (uint16_t i = 0; i < head.listCount; ++i) {
            w.u16(i < head.listWords.size() ? head.listWords[i] : 0);
        }
    }
    w.u8(head.playByte).u32(0).u8(kDynamicAreaKind);
    w.u16(head.rect.x).u16(head.rect.y).u16(head.rect.width).u16(head.rect.height);
    w.u8(0); // the frame flag: a G5 dynamic area never carries a frame
    uint16_t pageCount = 0;
    for (const RenderedPages &c : contents)
        pageCount = static_cast<uint16_t>(pageCount + c.pages.size());
    w.u16(pageCount);
    for (const RenderedPages &c : contents) {
        const std::size_t n = c.pages.size();
        const bool reversed = c.effects.displayEffect == kEffectReversedPages;
        for (const std::size_t index : page_order(n, c.effects.displayEffect)) {
            const std::vector<uint8_t> &data = c.pages[index];
            const bool showsLast = reversed ? index == 0 : index == n - 1;
            const uint16_t width =
                showsLast ? std::min(head.rect.width, c.lastPageWidth) : head.rect.width;
            w.u32(static_cast<uint32_t>(data.size()) + kPageHeadTail);
            w.u8(0).u8(c.effects.displayEffect).u8(c.effects.pageByte2).u8(c.effects.pageByte3);
            w.u16(c.effects.pageWord4).u8(c.effects.pageByte6).u16(width).u32(0);
            w.bytes(data.data(), data.size());
        }
    }
    w.put_u32_at(lengthAt, static_cast<uint32_t>(w.size() - lengthAt - 4));
    return w.take();
}

std::vector<uint8_t> build_delete(uint8_t count, std::span<const uint8_t> numbers) {
    ByteWriter w;
    write_head(w, kCodeDeleteArea);
    w.u8(count);
    if (count != kAllAreas && count == numbers.size()) w.bytes(numbers);
    return w.take();
}

std::vector<uint8_t> build_delete_one(uint8_t number) {
    if (number == kAllAreas) return build_delete(kAllAreas, {});
    const uint8_t one[] = {number};
    return build_delete(1, one);
}

} // namespace zel::dynamic

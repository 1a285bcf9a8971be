#include "dynamic/command_g6.h"

#include "dynamic/command_g5.h"
#include "sdk/bytes.h"
#include "sdk/console.h"

namespace zel::dynamic {
namespace {

// The text has no number in it: the question marks are what the controller's tools have
// always printed.
constexpr const char *kAreaTaken = " 区域ID??d 已存在！\n";
constexpr const char *kAreaUnknown = " 区域ID??d 不存在！无法增加页面数据！\n";

void write_head(ByteWriter &w, uint8_t code) {
    w.u8(kCommandForm).u8(kGroupDynamic).u8(code).u16(0);
}

bool lists_programs(const DynamicAreaItem_6G &item) {
    return item.allPrograms == 0 && item.programCount != 0;
}

} // namespace

std::vector<uint8_t> sound_block(const DynamicSound &sound) {
    ByteWriter w(kSoundBlockHead + sound.text.size());
    w.bytes(sound.settings.soundSettings1.data(), 4);
    w.u32(sound.settings.soundValue1).u32(sound.settings.soundValue2);
    w.bytes(sound.settings.soundSettings2.data(), 4);
    w.u32(static_cast<uint32_t>(sound.text.size()));
    w.bytes(sound.text.data(), sound.text.size());
    return w.take();
}

uint16_t sound_block_size(const DynamicSound &sound) {
    return static_cast<uint16_t>(kSoundBlockHead + sound.text.size());
}

uint32_t DynamicAreaItem_6G::itemLen() const {
    uint32_t len = kItemFixedLength + kPageRecordSizeG6 * pageCount;
    if (hasFrame == 1) len += kFrameBlockHead + static_cast<uint32_t>(frame.strip.size());
    if (hasSound != 0) len += sound_block_size(sound);
    if (lists_programs(*this)) len += 2u * programCount;
    return len;
}

uint32_t DynamicAreaItem_6G::pixel_total() const {
    uint32_t total = 0;
    for (const auto &p : pixels)
        total += static_cast<uint32_t>(p.size());
    return total;
}

void DynamicAreaItem_6G::write_block(std::vector<uint8_t> &out, bool withFrame) const {
    ByteWriter w;
    w.u32(itemLen()).u8(areaID).u8(runMode).u16(timeout).u8(allPrograms).u16(programCount);
    if (lists_programs(*this)) {
        for (uint16_t i = 0; i < programCount; ++i)
            w.u16(i < programs.size() ? programs[i] : 0);
    }
    w.u8(immediate).u32(0).u8(kDynamicAreaKind);
    w.u16(rect.x).u16(rect.y).u16(rect.width).u16(rect.height);
    w.u8(hasFrame);
    if (withFrame && hasFrame == 1) {
        w.bytes(frame.header.data(), frame.header.size()).zeros(8);
        w.bytes(frame.strip.data(), frame.strip.size());
    }
    w.u8(0).u8(0).u8(0).u8(hasSound);
    if (hasSound != 0) w.bytes(sound_block(sound));
    w.zeros(5).u16(pageCount);
    for (const auto &record : pageRecords)
        w.bytes(record.data(), record.size());
    const std::vector<uint8_t> &bytes = w.data();
    out.insert(out.end(), bytes.begin(), bytes.end());
}

std::array<uint8_t, kPageRecordSizeG6> page_record_g6(const PageDisplayRecord_G6 &header,
                                                      uint32_t offset, uint32_t length) {
    ByteWriter w(kPageRecordSizeG6);
    w.u32(kPageRecordTail);
    const auto h = header.bytes();
    w.bytes(h.data(), 9).zeros(PageDisplayRecord_G6::kSize - 9); // byte 10 stays home
    w.u32(offset).u32(length);
    std::array<uint8_t, kPageRecordSizeG6> record{};
    std::copy(w.data().begin(), w.data().end(), record.begin());
    return record;
}

DynamicAreaItem_6G *DynamicAreaCommand_6G::find_mut(uint8_t areaID) {
    for (auto &item : m_items) {
        if (item->areaID == areaID) return item.get();
    }
    return nullptr;
}

const DynamicAreaItem_6G *DynamicAreaCommand_6G::find(uint8_t areaID) const {
    for (const auto &item : m_items) {
        if (item->areaID == areaID) return item.get();
    }
    return nullptr;
}

int32_t DynamicAreaCommand_6G::add_built_item(DynamicAreaItem_6G item) {
    if (find_mut(item.areaID) != nullptr) {
        console_printf("%s", kAreaTaken);
        return -1;
    }
    m_items.push_back(std::make_unique<DynamicAreaItem_6G>(std::move(item)));
    return 0;
}

int32_t DynamicAreaCommand_6G::add_item(uint8_t areaID, const AreaRect &rect,
                                        const DynamicSound *sound) {
    DynamicAreaItem_6G item;
    item.areaID = areaID;
    item.rect = rect;
    if (sound != nullptr && sound->enabled == 1) {
        item.hasSound = 1;
        item.sound = *sound;
    }
    return add_built_item(std::move(item));
}

int32_t DynamicAreaCommand_6G::add_item_with_programs(uint8_t areaID, const AreaRect &rect,
                                                      const ProgramList &programs,
                                                      const DynamicSound *sound) {
    DynamicAreaItem_6G item;
    item.areaID = areaID;
    item.rect = rect;
    item.allPrograms = programs.count != 0 ? 0 : 1;
    item.programCount = programs.count;
    item.programs = programs.numbers;
    item.immediate = 0;
    if (sound != nullptr && sound->enabled == 1) {
        item.hasSound = 1;
        item.sound = *sound;
    }
    return add_built_item(std::move(item));
}

int32_t DynamicAreaCommand_6G::add_page(uint8_t areaID, const PageDisplayRecord_G6 &header,
                                        std::span<const uint8_t> pixels) {
    uint32_t offset = 0;
    DynamicAreaItem_6G *target = nullptr;
    for (auto &item : m_items) {
        offset += item->pixel_total();
        if (item->areaID == areaID) {
            target = item.get();
            break;
        }
    }
    if (target == nullptr) {
        console_printf("%s", kAreaUnknown);
        return -1;
    }
    target->pageCount = static_cast<uint16_t>(target->pageCount + 1);
    target->pageRecords.push_back(
        page_record_g6(header, offset, static_cast<uint32_t>(pixels.size())));
    target->pixels.emplace_back(pixels.begin(), pixels.end());
    return 0;
}

int32_t DynamicAreaCommand_6G::add_pages(uint8_t areaID, const PageDisplayRecord_G6 &header,
                                         const std::vector<std::vector<uint8_t>> &pages,
                                         uint16_t lastWidth) {
    const std::size_t n = pages.size();
    const bool reversed = header.displayEffect == kEffectReversedPages;
    for (std::size_t i = 0; i < n; ++i) {
        const std::size_t index = reversed ? n - 1 - i : i;
        PageDisplayRecord_G6 h = header;
        if (reversed ? index == 0 : index == n - 1) h.pageWidth = lastWidth;
        const int32_t result = add_page(areaID, h, pages[index]);
        if (result != 0) return result;
    }
    return 0;
}

std::vector<uint8_t> DynamicAreaCommand_6G::serialise_whole() const {
    ByteWriter w;
    write_head(w, kCodeAddArea);
    w.u16(static_cast<uint16_t>(m_items.size()));
    std::vector<uint8_t> out = w.take();
    for (const auto &item : m_items) {
        item->write_block(out, true);
        for (const auto &p : item->pixels)
            out.insert(out.end(), p.begin(), p.end());
    }
    return out;
}

std::vector<uint8_t> DynamicAreaCommand_6G::serialise_split() const {
    ByteWriter w;
    write_head(w, kCodeAddArea);
    w.u16(static_cast<uint16_t>(m_items.size()));
    std::vector<uint8_t> out = w.take();
    for (const auto &item : m_items)
        item->write_block(out, false);
    for (const auto &item : m_items) {
        for (const auto &p : item->pixels)
            out.insert(out.end(), p.begin(), p.end());
    }
    return out;
}

std::vector<uint8_t> build_sound_insert(uint8_t first, uint8_t second, const DynamicSound &sound) {
    const std::vector<uint8_t> block = sound_block(sound);
    if (block.size() != sound_block_size(sound)) {
        console_printf("Error: DataLen != GetSize(); SoundIndepend_Insert_6G \r\n");
    }
    ByteWriter w;
    write_head(w, kCodeSoundInsert);
    w.u8(first).u8(second).zeros(3).u32(static_cast<uint32_t>(block.size())).bytes(block);
    return w.take();
}

std::vector<uint8_t> build_sound_update(uint8_t first, std::span<const SoundUpdateItem> items) {
    ByteWriter w;
    write_head(w, kCodeSoundUpdate);
    w.u8(first).u8(static_cast<uint8_t>(items.size()));
    for (const SoundUpdateItem &item : items) {
        const std::size_t before = w.size();
        const std::vector<uint8_t> block = sound_block(item.sound);
        w.u8(item.itemByte).u32(static_cast<uint32_t>(block.size())).bytes(block);
        if (w.size() - before != 5u + sound_block_size(item.sound)) {
            console_printf("Error! DataLen != GetSize()!!!! \r\n");
        }
    }
    return w.take();
}

} // namespace zel::dynamic

// DynamicAreaCommand_6G: the command that carries one or more G6 dynamic areas, each with its
// page records and pixels, and the two commands of independent sound.
//
// An area block counts its length (itemLen) up to its last page record; the pixels follow it
// (layout A: each area's pixels behind its block) or follow all blocks (layout B: the sets).
// Page records point at their pixels with a zero-based offset into the command's pixel data.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "render/area.h"
#include "render/page_records.h"
#include "render/pictures_area_g6.h"

namespace zel::dynamic {

inline constexpr uint8_t kCodeSoundUpdate = 2;
inline constexpr uint8_t kCodeSoundInsert = 7;
// itemLen of an area without frame, sound, program list and pages.
inline constexpr uint32_t kItemFixedLength = 33;
inline constexpr uint32_t kPageRecordSizeG6 = 30;
// The length word that starts every page record: the 26 bytes behind it.
inline constexpr uint32_t kPageRecordTail = 26;
// The frame block: five header bytes, eight zero bytes, then the encoded strip.
inline constexpr uint32_t kFrameBlockHead = 13;
// The sound block: four settings bytes, two 32-bit settings, four bytes, the text length.
inline constexpr uint32_t kSoundBlockHead = 20;

// The sound of an area or of an independent message, as the host's 29-byte record gives it.
struct DynamicSound {
    uint8_t enabled = 0; // 1 enables the sound of an area
    SoundSettings settings;
    std::string text;
};

// The sound block, 20 + n bytes.
std::vector<uint8_t> sound_block(const DynamicSound &sound);
// Its size as the command computes it: in 16 bits, so a text of 65516 bytes or more wraps.
uint16_t sound_block_size(const DynamicSound &sound);

// An area's frame: header bytes 1 to 5 of the host's record and the encoded strip.
struct DynamicFrame {
    std::array<uint8_t, 5> header{};
    std::vector<uint8_t> strip;
};

struct DynamicAreaItem_6G {
    uint8_t areaID = 0;
    uint8_t runMode = 0;
    uint16_t timeout = 5;
    uint8_t allPrograms = 1;
    uint16_t programCount = 0;
    std::vector<uint16_t> programs;
    uint8_t immediate = 1;
    AreaRect rect{0, 0, 64, 32};
    uint8_t hasFrame = 0;
    DynamicFrame frame;
    uint8_t hasSound = 0;
    DynamicSound sound;
    uint16_t pageCount = 0;
    std::vector<std::array<uint8_t, kPageRecordSizeG6>> pageRecords;
    std::vector<std::vector<uint8_t>> pixels;

    uint32_t itemLen() const;
    uint32_t pixel_total() const;
    // The block up to and including the last page record; the frame block only in layout A.
    void write_block(std::vector<uint8_t> &out, bool withFrame) const;
};

// A list of 16-bit program numbers as the host gives it.
struct ProgramList {
    uint16_t count = 0;
    std::vector<uint16_t> numbers;
};

class DynamicAreaCommand_6G {
  public:
    // Adds an area. Plain items are shown with all programs and at once; items with programs
    // with the programs listed (all when the list is empty) and not at once. With a sound
    // record whose byte 0 is 1 the area carries the sound. 0; -1 with " 区域ID??d 已存在！\n" when
    // the number is taken.
    int32_t add_item(uint8_t areaID, const AreaRect &rect, const DynamicSound *sound = nullptr);
    int32_t add_item_with_programs(uint8_t areaID, const AreaRect &rect,
                                   const ProgramList &programs,
                                   const DynamicSound *sound = nullptr);
    // Adds an item built by the caller (the item-list entries); the same test of the number.
    int32_t add_built_item(DynamicAreaItem_6G item);

    // Adds one page to the area: its data offset is the pixel total of the areas up to and
    // including this one. 0; -1 with " 区域ID??d 不存在！无法增加页面数据！\n" for an unknown area.
    int32_t add_page(uint8_t areaID, const PageDisplayRecord_G6 &header,
                     std::span<const uint8_t> pixels);
    // Adds the pages of one content: in order, or last to first under effect 0x26; the page
    // that shows last takes `lastWidth` as its width, the others the header's.
    int32_t add_pages(uint8_t areaID, const PageDisplayRecord_G6 &header,
                      const std::vector<std::vector<uint8_t>> &pages, uint16_t lastWidth);

    void clear() { m_items.clear(); }
    std::size_t area_count() const { return m_items.size(); }
    const DynamicAreaItem_6G *find(uint8_t areaID) const;

    // Layout A: head, count, then each area's block and pixels.
    std::vector<uint8_t> serialise_whole() const;
    // Layout B: head, count, every block without its frame, then all pixels.
    std::vector<uint8_t> serialise_split() const;

  private:
    DynamicAreaItem_6G *find_mut(uint8_t areaID);
    std::vector<std::unique_ptr<DynamicAreaItem_6G>> m_items;
};

// One page record: the length word 26, header bytes 0 to 8 with bytes 9 to 17 zero, the
// offset and the length.
std::array<uint8_t, kPageRecordSizeG6> page_record_g6(const PageDisplayRecord_G6 &header,
                                                      uint32_t offset, uint32_t length);

// The insert command (code 7): `first` and `second` are the entry's last and fourth
// arguments. Prints "Error: DataLen != GetSize(); SoundIndepend_Insert_6G \r\n" when the block
// is not the size computed from the text.
std::vector<uint8_t> build_sound_insert(uint8_t first, uint8_t second, const DynamicSound &sound);

// One item of the update command.
struct SoundUpdateItem {
    uint8_t itemByte = 0;
    DynamicSound sound;
};
// The update command (code 2): `first`, the low 8 bits of the item count, then each item.
// Prints "Error! DataLen != GetSize()!!!! \r\n" for an item not of its computed size.
std::vector<uint8_t> build_sound_update(uint8_t first, std::span<const SoundUpdateItem> items);

} // namespace zel::dynamic

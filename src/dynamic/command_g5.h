// The G5 dynamic-area commands: one add command that carries an area's rectangle and the pages
// of one or more contents, and the delete command that G5 and G6 controllers share.
//
// Both are the data of a version 240 packet; the body head (form 1, group 0xA7, code, zero
// length word) stands inside them.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "render/area.h"

namespace zel::dynamic {

inline constexpr uint8_t kCommandForm = 1;
inline constexpr uint8_t kGroupDynamic = 0xA7;
inline constexpr uint8_t kCodeAddArea = 0;
inline constexpr uint8_t kCodeDeleteArea = 1;
// The area kind that every dynamic area carries.
inline constexpr uint8_t kDynamicAreaKind = 16;
// Area numbers go up to 64; 0xFF deletes every area.
inline constexpr int8_t kHighestAreaNumber = 64;
inline constexpr uint8_t kAllAreas = 0xFF;
// The display effect whose pages go to the controller last page first.
inline constexpr uint8_t kEffectReversedPages = 0x26;
// pageBytes counts the 13 bytes of the page header that follow it.
inline constexpr uint32_t kPageHeadTail = 13;
inline constexpr std::size_t kPageHeadSizeG5 = 17;
// dataLength of an add command without list words and pages.
inline constexpr uint32_t kAddFixedLength = 24;

// The bytes of the add command's head that the host chooses, with their defaults.
struct AddHeadG5 {
    uint8_t headByte0 = 0;
    uint8_t headByte1 = 0;
    uint16_t headWord = 5;
    uint8_t listFlag = 1; // 0 sends the list words
    uint16_t listCount = 0;
    std::vector<uint16_t> listWords;
    bool listMissing = false; // a count above 0 came without its words: nothing is built
    uint8_t playByte = 0;
    AreaRect rect{0, 0, 64, 32};
    // The caller's frame: kept, never written, since a G5 dynamic area has no frame.
    uint8_t frameFlag = 0;
    std::array<uint8_t, 4> frameBytes{};
    uint16_t frameWord = 0;
};

// The page settings of one content; the page width is the builder's.
struct PageEffects {
    uint8_t displayEffect = 1;
    uint8_t pageByte2 = 1;
    uint8_t pageByte3 = 1;
    uint16_t pageWord4 = 300;
    uint8_t pageByte6 = 1;
};

// The rendered pages of one content and the significant width of its last page.
struct RenderedPages {
    PageEffects effects;
    std::vector<std::vector<uint8_t>> pages;
    uint16_t lastPageWidth = 0;
};

// The add command (code 0). Pages go in order, or last to first under effect 0x26; the page
// that shows last (the last, or the first in reverse) gets the smaller of the area width and
// the content's lastPageWidth. Empty when the list words are missing.
std::vector<uint8_t> build_add_g5(const AddHeadG5 &head, std::span<const RenderedPages> contents);

// The delete command (code 1): the count, then the numbers unless the count is 0xFF. A count
// that disagrees with the numbers goes out as it is, without numbers.
std::vector<uint8_t> build_delete(uint8_t count, std::span<const uint8_t> numbers);

// The delete command for one number: count 1 and the number, or count 0xFF for 0xFF.
std::vector<uint8_t> build_delete_one(uint8_t number);

} // namespace zel::dynamic

// Exported dynamic-area entries of both families and the independent sound entries: the
// parameter tests, the packed records turned into typed values, and the core calls beneath.
#include "zel_sdk_dual.h"

#include <cstring>
#include <vector>

#include "dynamic/area_infos_g6.h"
#include "dynamic/entries_g5.h"
#include "dynamic/entries_g6.h"
#include "exports/records.h"
#include "sdk/console.h"
#include "sdk/globals.h"
#include "sdk/guard.h"
#include "wire/serial_peer.h"

using namespace zel;
using namespace zel::dynamic;
using namespace zel::exports;

namespace {

// The lowest TCP port that the G6 entries accept.
constexpr uint32_t kLowestPort = 1024;
// The G6 entries take at most this many program numbers.
constexpr uint16_t kMostPrograms = 512;

::zel::E_ScreenColor_G56 core_color(::E_ScreenColor_G56 color) {
    return static_cast<::zel::E_ScreenColor_G56>(color);
}

const char *or_empty(const char *text) {
    return text == nullptr ? "" : text;
}

TextStyleRecord unpack_style(const ZelTextStyleRecord &r) {
    return {r.arrMode,     r.fontSize,    r.fontColor,       r.fontBold,     r.fontItalic,
            r.styleWord12, r.styleWord16, r.horizontalAlign, r.verticalAlign};
}

DynamicSound unpack_sound(const ZelDynamicSound_G6 &r) {
    DynamicSound s;
    s.enabled = r.enable;
    std::memcpy(s.settings.soundSettings1.data(), r.soundSettings1, 4);
    s.settings.soundValue1 = r.soundValue1;
    s.settings.soundValue2 = r.soundValue2;
    std::memcpy(s.settings.soundSettings2.data(), r.soundSettings2, 4);
    if (r.text != nullptr) s.text.assign(r.text, r.textLength);
    return s;
}

// A sound record that claims a text it does not point at.
bool sound_is_broken(const ZelDynamicSound_G6 &r) {
    return r.text == nullptr && r.textLength > 0;
}

ProgramList program_list(uint16_t count, const uint16_t *numbers) {
    ProgramList list;
    list.count = count;
    if (numbers != nullptr) list.numbers.assign(numbers, numbers + count);
    return list;
}

// ---- G5 ----

AddHeadG5 head_g5(uint8_t headByte0, uint8_t headByte1, uint16_t headWord, uint8_t listFlag,
                  uint16_t listCount, const uint16_t *listWords, uint8_t playByte, uint16_t x,
                  uint16_t y, uint16_t width, uint16_t height, const ZelFrameHeader_G5 &frame) {
    AddHeadG5 h;
    h.headByte0 = headByte0;
    h.headByte1 = headByte1;
    h.headWord = headWord;
    h.listFlag = listFlag;
    h.listCount = listCount;
    if (listWords != nullptr) h.listWords.assign(listWords, listWords + listCount);
    h.listMissing = listWords == nullptr;
    h.playByte = playByte;
    h.rect = {x, y, width, height};
    h.frameFlag = frame.frameMark;
    h.frameBytes = {frame.frameParam1, frame.frameParam2, frame.frameParam3, frame.frameParam4};
    h.frameWord = frame.frameParam5;
    return h;
}

PageEffects effects(uint8_t displayEffect, uint8_t pageByte2, uint8_t pageByte3, uint16_t pageWord4,
                    uint8_t pageByte6) {
    return {displayEffect, pageByte2, pageByte3, pageWord4, pageByte6};
}

ContentG5 content_g5(const DynamicAreaBaseInfo_5G &r) {
    ContentG5 c;
    c.kind = r.kind;
    c.effects = effects(r.displayEffect, r.pageByte2, r.pageByte3, r.pageWord4, r.pageByte6);
    c.style = unpack_style(r.style);
    c.font = or_empty(r.fontName);
    c.text = or_empty(r.text);
    c.picture = or_empty(r.picturePath);
    return c;
}

Target tcp_target(const char *address, uint32_t port) {
    return Target::tcp(address, static_cast<uint16_t>(port));
}

int32_t add_g5(const Target &target, AddFormG5 form, ::E_ScreenColor_G56 color,
               const AddHeadG5 &head, std::vector<ContentG5> contents) {
    return guarded(-1,
                   [&] { return add_area_g5(target, form, core_color(color), head, contents); });
}

bool target_given(const char *name) {
    return name != nullptr;
}

// The item-list entries print the first item before anything else is looked at.
void print_items_intro(uint8_t count, const DynamicAreaBaseInfo_5G *first) {
    console_printf("===============zelDual_dynamicArea_AddAreaInfos_5G=======================\r\n");
    if (count == 0 || first == nullptr) return;
    if (first->kind == kContentText) {
        console_printf("fontName=%s;\r\nstrAreaTxtContent=%s;\r\n", or_empty(first->fontName),
                       or_empty(first->text));
    } else if (first->kind == kContentPicture) {
        console_printf("fontName=%s;\r\nfilePath=%s; \r\n", or_empty(first->fontName),
                       or_empty(first->picturePath));
    }
}

// ---- G6 ----

bool tcp_ok(const char *address, uint32_t port) {
    return address != nullptr && port >= kLowestPort;
}

bool two_speeds(const char *name, uint8_t speedIndex) {
    return name != nullptr && (speedIndex == kSpeedIndex9600 || speedIndex == kSpeedIndex57600);
}

bool any_speed(const char *name, uint8_t speedIndex) {
    return name != nullptr && speedIndex > 0;
}

AreaRequestG6 text_request(uint8_t areaID, const ZelDynamicAreaParams_G6 &area,
                           const TextPageParams_G6 &page, const char *font, const char *text) {
    AreaRequestG6 r;
    r.areaID = areaID;
    r.rect = {area.AreaX, area.AreaY, area.AreaWidth, area.AreaHeight};
    r.sound = unpack_sound(area.sound);
    const TextPageParamsG6 p = unpack(page);
    r.content.kind = kContentText;
    r.content.display = p.display;
    r.content.style = p.style;
    r.content.font = font;
    r.content.text = text;
    return r;
}

AreaRequestG6 picture_request(uint8_t areaID, const AreaRect &rect, const TextPageParams_G6 &page,
                              const char *path) {
    AreaRequestG6 r;
    r.areaID = areaID;
    r.rect = rect;
    r.content.kind = kContentPicture;
    r.content.display = unpack_picture_page(page);
    r.content.picture = path;
    return r;
}

int32_t details(const Target &target, FormG6 form, ::E_ScreenColor_G56 color, uint8_t areaID,
                const ZelDynamicAreaParams_G6 *area, const TextPageParams_G6 *page,
                const char *font, const char *text, const ProgramList &programs) {
    if (area == nullptr || page == nullptr || font == nullptr || text == nullptr) return -1;
    if (sound_is_broken(area->sound)) return -1;
    return guarded(-1, [&] {
        return add_area_g6(target, form, core_color(color),
                           text_request(areaID, *area, *page, font, text), programs);
    });
}

int32_t picture(const Target &target, FormG6 form, ::E_ScreenColor_G56 color, uint8_t areaID,
                AreaRect rect, const TextPageParams_G6 *page, const char *path,
                const ProgramList &programs) {
    if (page == nullptr || path == nullptr) return -1;
    return guarded(-1, [&] {
        return add_area_g6(target, form, core_color(color),
                           picture_request(areaID, rect, *page, path), programs);
    });
}

bool programs_ok(uint16_t count, const uint16_t *programs) {
    return count <= kMostPrograms && (count == 0 || programs != nullptr);
}

int32_t delete_g6(const Target &target, uint8_t areaID) {
    return guarded(-1, [&] { return delete_area(target, static_cast<int8_t>(areaID)); });
}

int32_t delete_many(const Target &target, uint8_t count, const uint8_t *numbers) {
    if (numbers == nullptr) return -1;
    return guarded(-1,
                   [&] { return delete_areas(target, std::span<const uint8_t>(numbers, count)); });
}

int32_t set(const Target &target, bool pictures, ::E_ScreenColor_G56 color, uint8_t count,
            const ZelDynamicAreaSetItem_G6 *items, const ProgramList *programs) {
    if (count == 0 || items == nullptr) return -1;
    std::vector<AreaRequestG6> areas;
    for (uint8_t i = 0; i < count; ++i) {
        const ZelDynamicAreaSetItem_G6 &item = items[i];
        if (item.content == nullptr || (!pictures && item.font == nullptr)) return -1;
        if (sound_is_broken(item.area.sound)) return -1;
        const AreaRect rect{item.area.AreaX, item.area.AreaY, item.area.AreaWidth,
                            item.area.AreaHeight};
        AreaRequestG6 r =
            pictures ? picture_request(item.areaID, rect, item.page, item.content)
                     : text_request(item.areaID, item.area, item.page, item.font, item.content);
        r.sound = unpack_sound(item.area.sound);
        areas.push_back(std::move(r));
    }
    return guarded(-1, [&] {
        return add_set_g6(target, pictures, programs != nullptr, core_color(color), areas,
                          programs != nullptr ? *programs : ProgramList{});
    });
}

} // namespace

// ==== G5 =====================================================================================

ZEL_API int32_t zelDual_dynamicArea_SetDualPixel(int32_t dualPixel) {
    g_dualPixel = dualPixel;
    return 0;
}

#define ZEL_G5_HEAD_PARAMS                                                                         \
    ::E_ScreenColor_G56 color, uint8_t headByte0, uint8_t headByte1, uint16_t headWord,            \
        uint8_t listFlag, uint16_t listCount, const uint16_t *listWords, uint8_t playByte,         \
        uint16_t x, uint16_t y, uint16_t width, uint16_t height
#define ZEL_G5_HEAD(frame)                                                                         \
    head_g5(headByte0, headByte1, headWord, listFlag, listCount, listWords, playByte, x, y, width, \
            height, frame)

namespace {

int32_t text_g5(const Target &target, ::E_ScreenColor_G56 color, const AddHeadG5 &head,
                PageEffects fx, const ZelTextStyleRecord &style, const char *font,
                const char *text) {
    if (font == nullptr || text == nullptr) return -1;
    ContentG5 c;
    c.kind = kContentText;
    c.effects = fx;
    c.style = unpack_style(style);
    c.font = font;
    c.text = text;
    return add_g5(target, AddFormG5::Text, color, head, {c});
}

int32_t picture_g5(const Target &target, ::E_ScreenColor_G56 color, const AddHeadG5 &head,
                   PageEffects fx, const char *path) {
    if (path == nullptr) return -1;
    ContentG5 c;
    c.kind = kContentPicture;
    c.effects = fx;
    c.picture = path;
    return add_g5(target, AddFormG5::Picture, color, head, {c});
}

int32_t items_g5(const Target &target, ::E_ScreenColor_G56 color, const AddHeadG5 &head,
                 uint8_t count, const DynamicAreaBaseInfo_5G *const *items,
                 const DynamicAreaBaseInfo_5G *packed) {
    const DynamicAreaBaseInfo_5G *first =
        items != nullptr ? items[0] : packed; // read only when count > 0
    print_items_intro(count, count > 0 ? first : nullptr);
    if (count == 0 || (items == nullptr && packed == nullptr)) return -1;
    std::vector<ContentG5> contents;
    for (uint8_t i = 0; i < count; ++i) {
        const DynamicAreaBaseInfo_5G *item = items != nullptr ? items[i] : &packed[i];
        if (item == nullptr) return -1;
        contents.push_back(content_g5(*item));
    }
    return add_g5(target, AddFormG5::Items, color, head, std::move(contents));
}

} // namespace

ZEL_API int32_t zelDual_dynamicArea_AddAreaWithTxt_5G(const char *pIP, uint16_t nPort,
                                                      ZEL_G5_HEAD_PARAMS, ZelFrameHeader_G5 frame,
                                                      uint8_t displayEffect, uint8_t pageByte2,
                                                      uint8_t pageByte3, uint16_t pageWord4,
                                                      uint8_t pageByte6, ZelTextStyleRecord style,
                                                      const char *font, const char *text) {
    if (!target_given(pIP)) return -1;
    return guarded(-1, [&] {
        return text_g5(Target::tcp(pIP, nPort), color, ZEL_G5_HEAD(frame),
                       effects(displayEffect, pageByte2, pageByte3, pageWord4, pageByte6), style,
                       font, text);
    });
}

ZEL_API int32_t zelDual_dynamicArea_AddAreaWithTxt_5G_Serial(
    const char *pSerialName, uint8_t nSpeedIndex, ZEL_G5_HEAD_PARAMS, ZelFrameHeader_G5 frame,
    uint8_t displayEffect, uint8_t pageByte2, uint8_t pageByte3, uint16_t pageWord4,
    uint8_t pageByte6, ZelTextStyleRecord style, const char *font, const char *text) {
    if (!target_given(pSerialName)) return -1;
    return guarded(-1, [&] {
        return text_g5(Target::line(pSerialName, nSpeedIndex), color, ZEL_G5_HEAD(frame),
                       effects(displayEffect, pageByte2, pageByte3, pageWord4, pageByte6), style,
                       font, text);
    });
}

ZEL_API int32_t zelDual_dynamicArea_AddAreaWithTxt_Point_5G(
    const char *pIP, uint16_t nPort, ZEL_G5_HEAD_PARAMS, const ZelFrameHeader_G5 *frame,
    uint8_t displayEffect, uint8_t pageByte2, uint8_t pageByte3, uint16_t pageWord4,
    uint8_t pageByte6, const ZelTextStyleRecord *style, const char *font, const char *text) {
    if (!target_given(pIP) || frame == nullptr || style == nullptr) return -1;
    return guarded(-1, [&] {
        return text_g5(Target::tcp(pIP, nPort), color, ZEL_G5_HEAD(*frame),
                       effects(displayEffect, pageByte2, pageByte3, pageWord4, pageByte6), *style,
                       font, text);
    });
}

ZEL_API int32_t zelDual_dynamicArea_AddAreaWithTxt_Point_5G_Serial(
    const char *pSerialName, uint8_t nSpeedIndex, ZEL_G5_HEAD_PARAMS,
    const ZelFrameHeader_G5 *frame, uint8_t displayEffect, uint8_t pageByte2, uint8_t pageByte3,
    uint16_t pageWord4, uint8_t pageByte6, const ZelTextStyleRecord *style, const char *font,
    const char *text) {
    if (!target_given(pSerialName) || frame == nullptr || style == nullptr) return -1;
    return guarded(-1, [&] {
        return text_g5(Target::line(pSerialName, nSpeedIndex), color, ZEL_G5_HEAD(*frame),
                       effects(displayEffect, pageByte2, pageByte3, pageWord4, pageByte6), *style,
                       font, text);
    });
}

ZEL_API int32_t zelDual_dynamicArea_AddAreaWithPic_5G(const char *pIP, uint16_t nPort,
                                                      ZEL_G5_HEAD_PARAMS, ZelFrameHeader_G5 frame,
                                                      uint8_t displayEffect, uint8_t pageByte2,
                                                      uint8_t pageByte3, uint16_t pageWord4,
                                                      uint8_t pageByte6, const char *path) {
    if (!target_given(pIP)) return -1;
    return guarded(-1, [&] {
        return picture_g5(Target::tcp(pIP, nPort), color, ZEL_G5_HEAD(frame),
                          effects(displayEffect, pageByte2, pageByte3, pageWord4, pageByte6), path);
    });
}

ZEL_API int32_t zelDual_dynamicArea_AddAreaWithPic_5G_Serial(
    const char *pSerialName, uint8_t nSpeedIndex, ZEL_G5_HEAD_PARAMS, ZelFrameHeader_G5 frame,
    uint8_t displayEffect, uint8_t pageByte2, uint8_t pageByte3, uint16_t pageWord4,
    uint8_t pageByte6, const char *path) {
    if (!target_given(pSerialName)) return -1;
    return guarded(-1, [&] {
        return picture_g5(Target::line(pSerialName, nSpeedIndex), color, ZEL_G5_HEAD(frame),
                          effects(displayEffect, pageByte2, pageByte3, pageWord4, pageByte6), path);
    });
}

ZEL_API int32_t zelDual_dynamicArea_AddAreaInfos_5G(const char *pIP, uint16_t nPort,
                                                    ZEL_G5_HEAD_PARAMS, ZelFrameHeader_G5 frame,
                                                    uint8_t count,
                                                    const DynamicAreaBaseInfo_5G *const *items) {
    if (!target_given(pIP)) return -1;
    return guarded(-1, [&] {
        return items_g5(Target::tcp(pIP, nPort), color, ZEL_G5_HEAD(frame), count, items, nullptr);
    });
}

ZEL_API int32_t zelDual_dynamicArea_AddAreaInfos_5G_Serial(
    const char *pSerialName, uint8_t nSpeedIndex, ZEL_G5_HEAD_PARAMS, ZelFrameHeader_G5 frame,
    uint8_t count, const DynamicAreaBaseInfo_5G *const *items) {
    if (!target_given(pSerialName)) return -1;
    return guarded(-1, [&] {
        return items_g5(Target::line(pSerialName, nSpeedIndex), color, ZEL_G5_HEAD(frame), count,
                        items, nullptr);
    });
}

ZEL_API int32_t zelDual_dynamicArea_AddAreaInfos_5G_Point(const char *pIP, uint16_t nPort,
                                                          ZEL_G5_HEAD_PARAMS,
                                                          ZelFrameHeader_G5 frame, uint8_t count,
                                                          const DynamicAreaBaseInfo_5G *items) {
    if (!target_given(pIP)) return -1;
    return guarded(-1, [&] {
        return items_g5(Target::tcp(pIP, nPort), color, ZEL_G5_HEAD(frame), count, nullptr, items);
    });
}

ZEL_API int32_t zelDual_dynamicArea_DelArea_5G(const char *pIP, uint16_t nPort, int8_t areaNumber) {
    if (!target_given(pIP)) return -1;
    return guarded(-1, [&] { return delete_area(Target::tcp(pIP, nPort), areaNumber); });
}

ZEL_API int32_t zelDual_dynamicArea_DelAreaS_5G(const char *pIP, uint16_t nPort, uint8_t count,
                                                const uint8_t *areaNumbers) {
    if (!target_given(pIP)) return -1;
    return delete_many(Target::tcp(pIP, nPort), count, areaNumbers);
}

ZEL_API int32_t zelDual_dynamicArea_DelArea_G5_Serial(const char *pSerialName, uint8_t nSpeedIndex,
                                                      int8_t areaNumber) {
    if (!two_speeds(pSerialName, nSpeedIndex)) return -1;
    return guarded(-1,
                   [&] { return delete_area(Target::line(pSerialName, nSpeedIndex), areaNumber); });
}

ZEL_API int32_t zelDual_dynamicArea_DelAreaS_G5_Serial(const char *pSerialName, uint8_t nSpeedIndex,
                                                       uint8_t count, const uint8_t *areaNumbers) {
    if (!two_speeds(pSerialName, nSpeedIndex)) return -1;
    return delete_many(Target::line(pSerialName, nSpeedIndex), count, areaNumbers);
}

// ==== G6: one area ===========================================================================

namespace {

// The fixed settings of zelDual_dynamicArea_AddAreaTxt_6G around the caller's text.
int32_t add_txt_6g(const char *pIP, uint32_t nPort, ::E_ScreenColor_G56 color, uint8_t areaID,
                   AreaRect rect, const char *font, uint8_t fontSize, const char *text) {
    AreaRequestG6 r;
    r.areaID = areaID;
    r.rect = rect;
    r.content.kind = kContentText;
    // A horizontal roll of one line, colour 1, centred both ways.
    r.content.display.displayEffect = kEffectRoll;
    r.content.display.pageByte3 = 32;
    r.content.display.pageByte6 = 1;
    r.content.display.pageWidth = rect.width;
    r.content.style.arrMode = SINGLELINE;
    r.content.style.fontSize = fontSize;
    r.content.style.fontColor = 1;
    r.content.style.horizontalAlign = 1;
    r.content.style.verticalAlign = 1;
    r.content.font = font;
    r.content.text = text;
    return add_area_g6(tcp_target(pIP, nPort), FormG6::Txt, core_color(color), r, {});
}

} // namespace

ZEL_API int32_t zelDual_dynamicArea_AddAreaTxt_6G(const char *pIP, uint32_t nPort,
                                                  ::E_ScreenColor_G56 color, uint8_t areaID,
                                                  uint16_t x, uint16_t y, uint16_t width,
                                                  uint16_t height, const char *font,
                                                  uint8_t fontSize, const char *text) {
    if (!tcp_ok(pIP, nPort) || font == nullptr || text == nullptr) return -1;
    return guarded(-1, [&] {
        return add_txt_6g(pIP, nPort, color, areaID, {x, y, width, height}, font, fontSize, text);
    });
}

ZEL_API int32_t zelDual_dynamicArea_AddAreaTxtDetails_6G(const char *pIP, uint32_t nPort,
                                                         ::E_ScreenColor_G56 color, uint8_t areaID,
                                                         const ZelDynamicAreaParams_G6 *area,
                                                         const TextPageParams_G6 *page,
                                                         const char *font, const char *text) {
    if (!tcp_ok(pIP, nPort)) return -1;
    return details(tcp_target(pIP, nPort), FormG6::TxtDetails, color, areaID, area, page, font,
                   text, {});
}

ZEL_API int32_t zelDual_dynamicArea_AddAreaTxtDetails_6G_Serial(
    const char *pSerialName, uint8_t nSpeedIndex, ::E_ScreenColor_G56 color, uint8_t areaID,
    const ZelDynamicAreaParams_G6 *area, const TextPageParams_G6 *page, const char *font,
    const char *text) {
    if (!two_speeds(pSerialName, nSpeedIndex)) return -1;
    return details(Target::line(pSerialName, nSpeedIndex), FormG6::TxtDetails, color, areaID, area,
                   page, font, text, {});
}

ZEL_API int32_t zelDual_dynamicArea_AddAreaTxtDetails_WithProgram_6G(
    const char *pIP, uint32_t nPort, ::E_ScreenColor_G56 color, uint8_t areaID,
    const ZelDynamicAreaParams_G6 *area, const TextPageParams_G6 *page, const char *font,
    const char *text, uint16_t programCount, const uint16_t *programs) {
    if (!tcp_ok(pIP, nPort) || !programs_ok(programCount, programs)) return -1;
    return details(tcp_target(pIP, nPort), FormG6::TxtDetailsWithProgram, color, areaID, area, page,
                   font, text, program_list(programCount, programs));
}

ZEL_API int32_t zelDual_dynamicArea_AddAreaTxtDetails_WithProgram_6G_Serial(
    const char *pSerialName, uint8_t nSpeedIndex, ::E_ScreenColor_G56 color, uint8_t areaID,
    const ZelDynamicAreaParams_G6 *area, const TextPageParams_G6 *page, const char *font,
    const char *text, uint16_t programCount, const uint16_t *programs) {
    if (!any_speed(pSerialName, nSpeedIndex) || !programs_ok(programCount, programs)) return -1;
    return details(Target::line(pSerialName, nSpeedIndex), FormG6::TxtDetailsWithProgram, color,
                   areaID, area, page, font, text, program_list(programCount, programs));
}

ZEL_API int32_t zelDual_dynamicArea_AddAreaPic_6G(const char *pIP, uint32_t nPort,
                                                  ::E_ScreenColor_G56 color, uint8_t areaID,
                                                  uint16_t x, uint16_t y, uint16_t width,
                                                  uint16_t height, const TextPageParams_G6 *page,
                                                  const char *path) {
    if (!tcp_ok(pIP, nPort)) return -1;
    return picture(tcp_target(pIP, nPort), FormG6::Pic, color, areaID, {x, y, width, height}, page,
                   path, {});
}

ZEL_API int32_t zelDual_dynamicArea_AddAreaPic_6G_Serial(
    const char *pSerialName, uint8_t nSpeedIndex, ::E_ScreenColor_G56 color, uint8_t areaID,
    uint16_t x, uint16_t y, uint16_t width, uint16_t height, const TextPageParams_G6 *page,
    const char *path) {
    if (!any_speed(pSerialName, nSpeedIndex)) return -1;
    return picture(Target::line(pSerialName, nSpeedIndex), FormG6::Pic, color, areaID,
                   {x, y, width, height}, page, path, {});
}

ZEL_API int32_t zelDual_dynamicArea_AddAreaPic_WithProgram_6G(
    const char *pIP, uint32_t nPort, ::E_ScreenColor_G56 color, uint8_t areaID, uint16_t x,
    uint16_t y, uint16_t width, uint16_t height, const TextPageParams_G6 *page, const char *path,
    uint16_t programCount, const uint16_t *programs) {
    if (!tcp_ok(pIP, nPort) || !programs_ok(programCount, programs)) return -1;
    return picture(tcp_target(pIP, nPort), FormG6::PicWithProgram, color, areaID,
                   {x, y, width, height}, page, path, program_list(programCount, programs));
}

ZEL_API int32_t zelDual_dynamicArea_AddAreaPic_WithProgram_G6_Serial(
    const char *pSerialName, uint8_t nSpeedIndex, ::E_ScreenColor_G56 color, uint8_t areaID,
    uint16_t x, uint16_t y, uint16_t width, uint16_t height, const TextPageParams_G6 *page,
    const char *path, uint16_t programCount, const uint16_t *programs) {
    if (!any_speed(pSerialName, nSpeedIndex) || !programs_ok(programCount, programs)) return -1;
    return picture(Target::line(pSerialName, nSpeedIndex), FormG6::PicWithProgram, color, areaID,
                   {x, y, width, height}, page, path, program_list(programCount, programs));
}

ZEL_API int32_t zelDual_dynamicArea_DelArea_6G(const char *pIP, uint32_t nPort, uint8_t areaID) {
    if (!tcp_ok(pIP, nPort)) return -1;
    return delete_g6(tcp_target(pIP, nPort), areaID);
}

ZEL_API int32_t zelDual_dynamicArea_DelAreas_6G(const char *pIP, uint32_t nPort, uint8_t count,
                                                const uint8_t *areaIDs) {
    if (!tcp_ok(pIP, nPort)) return -1;
    return delete_many(tcp_target(pIP, nPort), count, areaIDs);
}

ZEL_API int32_t zelDual_dynamicArea_DelArea_6G_Serial(const char *pSerialName, uint8_t nSpeedIndex,
                                                      uint8_t areaID) {
    if (!two_speeds(pSerialName, nSpeedIndex)) return -1;
    return delete_g6(Target::line(pSerialName, nSpeedIndex), areaID);
}

ZEL_API int32_t zelDual_dynamicArea_DelAreas_6G_Serial(const char *pSerialName, uint8_t nSpeedIndex,
                                                       uint8_t count, const uint8_t *areaIDs) {
    if (!two_speeds(pSerialName, nSpeedIndex)) return -1;
    return delete_many(Target::line(pSerialName, nSpeedIndex), count, areaIDs);
}

// ==== G6: sets ===============================================================================

ZEL_API int32_t zelDual_dynamicAreaS_AddTxtDetails_6G(const char *pIP, uint32_t nPort,
                                                      ::E_ScreenColor_G56 color, uint8_t count,
                                                      const ZelDynamicAreaSetItem_G6 *items) {
    if (!tcp_ok(pIP, nPort)) return -1;
    return guarded(
        -1, [&] { return set(tcp_target(pIP, nPort), false, color, count, items, nullptr); });
}

ZEL_API int32_t zelDual_dynamicAreaS_AddTxtDetails_6G_Serial(
    const char *pSerialName, uint8_t nSpeedIndex, ::E_ScreenColor_G56 color, uint8_t count,
    const ZelDynamicAreaSetItem_G6 *items) {
    if (!any_speed(pSerialName, nSpeedIndex)) return -1;
    return guarded(-1, [&] {
        return set(Target::line(pSerialName, nSpeedIndex), false, color, count, items, nullptr);
    });
}

ZEL_API int32_t zelDual_dynamicAreaS_AddTxtDetails_WithProgram_6G(
    const char *pIP, uint32_t nPort, ::E_ScreenColor_G56 color, uint8_t count,
    const ZelDynamicAreaSetItem_G6 *items, uint16_t programCount, const uint16_t *programs) {
    if (!tcp_ok(pIP, nPort) || (programCount != 0 && programs == nullptr)) return -1;
    const ProgramList list = program_list(programCount, programs);
    return guarded(-1,
                   [&] { return set(tcp_target(pIP, nPort), false, color, count, items, &list); });
}

ZEL_API int32_t zelDual_dynamicAreaS_AddTxtDetails_WithProgram_G6_Serial(
    const char *pSerialName, uint8_t nSpeedIndex, ::E_ScreenColor_G56 color, uint8_t count,
    const ZelDynamicAreaSetItem_G6 *items, uint16_t programCount, const uint16_t *programs) {
    if (!any_speed(pSerialName, nSpeedIndex) || (programCount != 0 && programs == nullptr)) {
        return -1;
    }
    const ProgramList list = program_list(programCount, programs);
    return guarded(-1, [&] {
        return set(Target::line(pSerialName, nSpeedIndex), false, color, count, items, &list);
    });
}

ZEL_API int32_t zelDual_dynamicAreaS_AddAreaPic_6G(const char *pIP, uint32_t nPort,
                                                   ::E_ScreenColor_G56 color, uint8_t count,
                                                   const ZelDynamicAreaSetItem_G6 *items) {
    if (!tcp_ok(pIP, nPort)) return -1;
    return guarded(-1,
                   [&] { return set(tcp_target(pIP, nPort), true, color, count, items, nullptr); });
}

ZEL_API int32_t zelDual_dynamicAreaS_AddAreaPic_6G_Serial(const char *pSerialName,
                                                          uint8_t nSpeedIndex,
                                                          ::E_ScreenColor_G56 color, uint8_t count,
                                                          const ZelDynamicAreaSetItem_G6 *items) {
    if (!any_speed(pSerialName, nSpeedIndex)) return -1;
    return guarded(-1, [&] {
        return set(Target::line(pSerialName, nSpeedIndex), true, color, count, items, nullptr);
    });
}

ZEL_API int32_t zelDual_dynamicAreaS_AddAreaPic_WithProgram_6G(
    const char *pIP, uint32_t nPort, ::E_ScreenColor_G56 color, uint8_t count,
    const ZelDynamicAreaSetItem_G6 *items, uint16_t programCount, const uint16_t *programs) {
    if (!tcp_ok(pIP, nPort) || (programCount != 0 && programs == nullptr)) return -1;
    const ProgramList list = program_list(programCount, programs);
    return guarded(-1,
                   [&] { return set(tcp_target(pIP, nPort), true, color, count, items, &list); });
}

ZEL_API int32_t zelDual_dynamicAreaS_AddAreaPic_WithProgram_6G_Serial(
    const char *pSerialName, uint8_t nSpeedIndex, ::E_ScreenColor_G56 color, uint8_t count,
    const ZelDynamicAreaSetItem_G6 *items, uint16_t programCount, const uint16_t *programs) {
    if (!any_speed(pSerialName, nSpeedIndex) || (programCount != 0 && programs == nullptr)) {
        return -1;
    }
    const ProgramList list = program_list(programCount, programs);
    return guarded(-1, [&] {
        return set(Target::line(pSerialName, nSpeedIndex), true, color, count, items, &list);
    });
}

// ==== Independent sound ======================================================================

ZEL_API int32_t zelDual_dynamicArea_InsertSoundIndepend(const char *pIP, uint32_t nPort,
                                                        const ZelSoundItem_Independ *record,
                                                        uint8_t second, uint8_t first) {
    if (!tcp_ok(pIP, nPort) || record == nullptr || record->sound.text == nullptr ||
        record->sound.textLength == 0) {
        return -1;
    }
    return guarded(-1, [&] {
        return insert_sound(tcp_target(pIP, nPort), first, second, unpack_sound(record->sound));
    });
}

ZEL_API int32_t zelDual_dynamicArea_UpdateSoundIndepend(const char *pIP, uint32_t nPort,
                                                        const ZelSoundItem_Independ *records,
                                                        uint16_t count, uint8_t first) {
    if (!tcp_ok(pIP, nPort) || records == nullptr || count == 0) return -1;
    return guarded(-1, [&] {
        std::vector<SoundUpdateItem> items;
        for (uint16_t i = 0; i < count; ++i) {
            if (sound_is_broken(records[i].sound)) return -1;
            items.push_back({records[i].itemByte, unpack_sound(records[i].sound)});
        }
        return update_sound(tcp_target(pIP, nPort), first, items);
    });
}

// ==== G6: one area from a list of contents ===================================================

#define ZEL_INFOS_PARAMS                                                                           \
    ::E_ScreenColor_G56 color, uint8_t areaID, uint8_t runMode, uint16_t timeout,                  \
        uint8_t allPrograms, uint16_t programCount, const uint16_t *programs, uint8_t immediate,   \
        uint16_t x, uint16_t y, uint16_t width, uint16_t height, ZelAreaFrmae_Dynamic_G6 frame,    \
        uint8_t count

namespace {

ContentG6 content_g6(const DynamicAreaBaseInfo_5G &r) {
    ContentG6 c;
    c.kind = r.kind;
    c.display.displayEffect = r.displayEffect;
    c.display.pageByte2 = r.pageByte2;
    c.display.pageByte3 = r.pageByte3;
    c.display.pageWord4 = r.pageWord4;
    c.display.pageByte6 = r.pageByte6;
    c.style = unpack_style(r.style);
    c.font = or_empty(r.fontName);
    c.text = or_empty(r.text);
    c.picture = or_empty(r.picturePath);
    return c;
}

int32_t infos_g6(const Target &target, InfosForm form, ::E_ScreenColor_G56 color, uint8_t areaID,
                 uint8_t runMode, uint16_t timeout, uint8_t allPrograms, uint16_t programCount,
                 const uint16_t *programs, uint8_t immediate, AreaRect rect,
                 const ZelAreaFrmae_Dynamic_G6 &frame, uint8_t count,
                 const DynamicAreaBaseInfo_5G *const *items, const DynamicAreaBaseInfo_5G *packed,
                 const ZelDynamicSound_G6 *sound) {
    // No contents is found out after the ping and the frame, as the controller's tools do.
    if (items == nullptr && packed == nullptr) count = 0;
    InfosRequestG6 r;
    r.areaID = areaID;
    r.runMode = runMode;
    r.timeout = timeout;
    r.allPrograms = allPrograms;
    r.programs = program_list(programCount, programs);
    r.programsMissing = programs == nullptr;
    r.immediate = immediate;
    r.rect = rect;
    r.frameFlag = frame.frameFlag;
    std::copy(frame.frameHeader, frame.frameHeader + 5, r.frameHeader.begin());
    r.framePng = or_empty(frame.pngPath);
    for (uint8_t i = 0; i < count; ++i) {
        const DynamicAreaBaseInfo_5G *item = items != nullptr ? items[i] : &packed[i];
        if (item == nullptr) return -1;
        r.contents.push_back(content_g6(*item));
    }
    if (sound != nullptr) {
        if (sound_is_broken(*sound)) return -1;
        r.sound = unpack_sound(*sound);
    }
    return guarded(-1, [&] { return add_area_infos_g6(target, form, core_color(color), r); });
}

} // namespace

ZEL_API int32_t zelDual_dynamicArea_AddAreaInfos_6G(const char *pIP, uint32_t nPort,
                                                    ZEL_INFOS_PARAMS,
                                                    const DynamicAreaBaseInfo_5G *const *items) {
    if (pIP == nullptr) return -1;
    return guarded(-1, [&] {
        return infos_g6(tcp_target(pIP, nPort), InfosForm::Plain, color, areaID, runMode, timeout,
                        allPrograms, programCount, programs, immediate, {x, y, width, height},
                        frame, count, items, nullptr, nullptr);
    });
}

ZEL_API int32_t zelDual_dynamicArea_AddAreaInfos_G6_Serial(
    const char *pSerialName, uint8_t nSpeedIndex, ZEL_INFOS_PARAMS,
    const DynamicAreaBaseInfo_5G *const *items) {
    if (pSerialName == nullptr) return -1;
    return guarded(-1, [&] {
        return infos_g6(Target::line(pSerialName, nSpeedIndex), InfosForm::Serial, color, areaID,
                        runMode, timeout, allPrograms, programCount, programs, immediate,
                        {x, y, width, height}, frame, count, items, nullptr, nullptr);
    });
}

ZEL_API int32_t zelDual_dynamicArea_AddAreaInfos_6G_V2(const char *pIP, uint32_t nPort,
                                                       ZEL_INFOS_PARAMS,
                                                       const DynamicAreaBaseInfo_5G *items,
                                                       const ZelDynamicSound_G6 *sound) {
    if (pIP == nullptr) return -1;
    return guarded(-1, [&] {
        return infos_g6(tcp_target(pIP, nPort), InfosForm::V2, color, areaID, runMode, timeout,
                        allPrograms, programCount, programs, immediate, {x, y, width, height},
                        frame, count, nullptr, items, sound);
    });
}

ZEL_API int32_t zelDual_dynamicArea_AddAreaInfos_6G_V2_Serial(const char *pSerialName,
                                                              uint8_t nSpeedIndex, ZEL_INFOS_PARAMS,
                                                              const DynamicAreaBaseInfo_5G *items) {
    if (pSerialName == nullptr) return -1;
    return guarded(-1, [&] {
        return infos_g6(Target::line(pSerialName, nSpeedIndex), InfosForm::V2Serial, color, areaID,
                        runMode, timeout, allPrograms, programCount, programs, immediate,
                        {x, y, width, height}, frame, count, nullptr, items, nullptr);
    });
}

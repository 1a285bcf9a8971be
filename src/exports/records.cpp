#include "exports/records.h"

#include <algorithm>

namespace zel::exports {

// The fields the G5 and G6 program headers share, and the two display records' shared fields
// (read by value: the records are packed).
template <typename Header, typename Record> void unpack_common(Header &h, const Record &r) {
    h.fileType = r.FileType;
    h.programNumber = r.ProgramName;
    h.programStyle = r.ProgramStyle;
    h.playTimes = r.ProgramPlayTimes;
    h.timeSpan = r.ProgramTimeSpan;
    h.week = r.ProgramWeek;
    h.lifeStart = {r.ProgramLifeSpan_sy, r.ProgramLifeSpan_sm, r.ProgramLifeSpan_sd};
    h.lifeEnd = {r.ProgramLifeSpan_ey, r.ProgramLifeSpan_em, r.ProgramLifeSpan_ed};
}

template <typename Page, typename Record> Page unpack_page_common(const Record &r) {
    Page p;
    p.pageByte0 = r.pageByte0;
    p.displayEffect = r.displayEffect;
    p.pageByte2 = r.pageByte2;
    p.pageByte3 = r.pageByte3;
    p.pageWord4 = r.pageWord4;
    p.pageByte6 = r.pageByte6;
    p.pageWidth = r.pageWidth;
    return p;
}

ProgramHeaderG5 unpack(const ZelProgramHeader_G5 &r) {
    ProgramHeaderG5 h;
    unpack_common(h, r);
    h.playPeriodFlag = r.PlayPeriodFlag;
    return h;
}

PlayPeriods unpack(const ZelPlayPeriods_G5 &r) {
    constexpr std::size_t kPeriodsInBlock = sizeof r.periods / sizeof r.periods[0];
    PlayPeriods periods(r.count);
    for (std::size_t i = 0; i < periods.size() && i < kPeriodsInBlock; ++i) {
        std::copy_n(r.periods[i], kPlayPeriodRecordSize, periods[i].bytes.begin());
    }
    return periods;
}

AreaRect unpack_rect(const ZelAreaRecord_G5 &r) {
    return {r.AreaX, r.AreaY, r.AreaWidth, r.AreaHeight};
}

PageDisplayRecord unpack_picture_page(const TextPageParams_G5 &r) {
    auto p = unpack_page_common<PageDisplayRecord>(r);
    p.reserved = 0;
    return p;
}

// The text style shared by the G5 and G6 text page records.
template <typename Record> TextStyleRecord unpack_style(const Record &r) {
    TextStyleRecord s;
    s.arrMode = r.arrMode;
    s.fontSize = r.fontSize;
    s.fontColor = r.fontColor;
    s.fontBold = r.fontBold;
    s.fontItalic = r.fontItalic;
    s.styleWord12 = r.styleWord12;
    s.styleWord16 = r.styleWord16;
    s.horizontalAlign = r.horizontalAlign;
    s.verticalAlign = r.verticalAlign;
    return s;
}

TextPageParams unpack(const TextPageParams_G5 &r) {
    TextPageParams params;
    params.display = unpack_picture_page(r);
    params.style = unpack_style(r);
    return params;
}

FrameHeaderG5 unpack(const ZelFrameHeader_G5 &r) {
    return {r.frameMark, r.frameParam1, r.frameParam2, r.frameParam3, r.frameParam4, r.frameParam5};
}

ProgramHeaderG6 unpack(const ZelProgramHeader_G6 &r) {
    ProgramHeaderG6 h;
    unpack_common(h, r);
    h.programPriority = r.ProgramPriority;
    h.specialFlag = r.SpecialFlag;
    h.commExtendParaLen = r.CommExtendParaLen;
    h.scheduNum = r.ScheduNum;
    h.loopValue = r.LoopValue;
    h.intergrate = r.Intergrate;
    h.timeAttributeNum = r.TimeAttributeNum;
    h.timeAttribute0Offset = r.TimeAttribute0Offset;
    return h;
}

AreaRect unpack_rect(const ZelAreaRecord_G6 &r) {
    return {r.AreaX, r.AreaY, r.AreaWidth, r.AreaHeight};
}

AreaExtraG6 unpack_extra(const ZelAreaRecord_G6 &r) {
    return {r.BackGroundFlag, r.Transparency, r.AreaEqual};
}

FrameParamsG6 unpack(const ZelFrameParams_G6 &r) {
    return {r.frameParam1,
            r.frameParam2,
            {r.frameParam3[0], r.frameParam3[1], r.frameParam3[2]},
            r.frameParam4};
}

PageDisplayRecord_G6 unpack_picture_page(const TextPageParams_G6 &r) {
    auto p = unpack_page_common<PageDisplayRecord_G6>(r);
    p.pageByte10 = r.pageByte10;
    return p;
}

TextPageParamsG6 unpack(const TextPageParams_G6 &r) {
    TextPageParamsG6 params;
    params.display = unpack_picture_page(r);
    params.style = unpack_style(r);
    return params;
}

SoundRecord unpack_sound(const ZelSoundParams_G6 &r) {
    SoundRecord sound;
    sound.enabled = 1;
    std::copy_n(r.soundSettings1, 4, sound.settings.soundSettings1.begin());
    sound.settings.soundValue1 = r.soundValue1;
    sound.settings.soundValue2 = r.soundValue2;
    std::copy_n(r.soundSettings2, 4, sound.settings.soundSettings2.begin());
    return sound;
}

TimeContent unpack(const TimeContentRecord &r) {
    TimeContent c;
    c.arrMode = r.arrMode;
    c.fontColor = r.fontColor;
    c.fontSize = r.fontSize;
    c.horizontalAlign = r.horizontalAlign;
    c.dateEnable = r.dateEnable;
    c.dateFormat = r.dateFormat;
    c.timeEnable = r.timeEnable;
    c.timeFormat = r.timeFormat;
    c.weekEnable = r.weekEnable;
    c.weekFormat = r.weekFormat;
    return c;
}

const char *content_font(const TimeContentRecord &r) {
    return r.fontName == nullptr ? "" : r.fontName;
}

AnalogClock unpack(const AnalogClockRecord &r) {
    AnalogClock c;
    c.clockParam1 = r.clockParam1;
    c.clockParam2 = r.clockParam2;
    c.clockParam3 = r.clockParam3;
    c.hourHandParam = r.hourHandParam;
    c.hourHandLength = r.hourHandLength;
    c.hourHandColor = r.hourHandColor;
    c.minuteHandParam = r.minuteHandParam;
    c.minuteHandLength = r.minuteHandLength;
    c.minuteHandColor = r.minuteHandColor;
    c.secondHandParam = r.secondHandParam;
    c.secondHandLength = r.secondHandLength;
    c.secondHandColor = r.secondHandColor;
    return c;
}

DialMarkColors unpack(const ZelDialMarkColors &r) {
    return {r.hourMarkColor, r.minuteMarkColor, r.circleColor};
}

BattleTime unpack(const ZelBattleTime_G6 &r) {
    BattleTime t;
    t.battleWord = r.battleWord;
    std::copy_n(r.battleBytes, t.battleBytes.size(), t.battleBytes.begin());
    return t;
}

} // namespace zel::exports

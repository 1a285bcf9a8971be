// TimeArea: an area that shows a clock the controller keeps running by itself.
//
// The library never knows the hour at which a program will play. At integration it prepares,
// once, a static background (the separators of a digital clock, or the dial of an analog one)
// and small 1-bit glyph tables (digits, week days, AM/PM), and tells the controller where each
// changing field goes; every second the controller copies the glyph of the current value to
// its place. An analog clock's hands are drawn by the controller from a record of settings.
//
// A time area holds either a digital clock (date, week day and time of day, each optional, in
// one style) or an analog clock: the analog flag decides, and digital content stays stored
// beside an analog clock, unused. The content operations only record; prepareTimeArea builds
// tables and background from the record of that moment.
//
// Members are public, as in PicturesArea: the file writers read them. The G6 time area
// (TimeArea_G6, which the G6 areas bring) is to derive from this class: it adds its battle
// record and longer hand records beside these members and reuses preparation, tables and
// colours as they are.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <ctime>
#include <span>
#include <string>
#include <vector>

#include "render/area.h"
#include "sdk/bytes.h"

namespace zel {

// What the content entries give, without the font, which comes as a string of its own.
struct TimeContent {
    uint32_t arrMode = 0;   // 1 MULTILINE: date, week day and time on rows of their own
    uint32_t fontColor = 0; // below 8 a colour code (bit 0 red, 1 green, 2 blue), else 0xRRGGBB
    uint16_t fontSize = 0;  // points
    uint8_t horizontalAlign = 0; // 0 left, 1 centre, 2 right
    uint8_t dateEnable = 0;
    uint32_t dateFormat = 0; // 0 to 7
    uint8_t timeEnable = 0;
    uint32_t timeFormat = 0; // 0 to 5
    uint8_t weekEnable = 0;
    uint32_t weekFormat = 0; // 1 to 3

    bool operator==(const TimeContent &) const = default;
};

// The hands of an analog clock, for the controller, which draws them. The library reads only
// the hour and minute lengths (in the preview); everything else passes through.
struct AnalogClock {
    uint16_t clockParam1 = 0;
    uint16_t clockParam2 = 0;
    uint8_t clockParam3 = 0;
    uint8_t hourHandParam = 0;
    uint8_t hourHandLength = 0; // pixels
    uint32_t hourHandColor = 0;
    uint8_t minuteHandParam = 0;
    uint8_t minuteHandLength = 0; // pixels
    uint32_t minuteHandColor = 0;
    uint8_t secondHandParam = 0;
    uint8_t secondHandLength = 0;
    uint32_t secondHandColor = 0;
};

// Colours of a painted dial.
struct DialMarkColors {
    uint32_t hourMarkColor = 0;   // the marks at 3, 6, 9 and 12
    uint32_t minuteMarkColor = 0; // the eight others
    uint32_t circleColor = 0;     // the circle of dial style 2

    bool operator==(const DialMarkColors &) const = default;
};

// Where a separator goes on the background, relative to the area.
struct ClockPoint {
    int32_t x = 0;
    int32_t y = 0;

    bool operator==(const ClockPoint &) const = default;
};

// The short form of the hand record: the G5 body's, with one byte of each colour.
inline constexpr std::size_t kHandRecordSize = 14;

// Glyph table kinds of buildGlyphTable.
inline constexpr uint32_t kTableDigits = 0;   // sub 0 or 1: "0" to "9"
inline constexpr uint32_t kTableMeridiem = 1; // sub 0: "AM", "PM"; sub 1 in Chinese
inline constexpr uint32_t kTableWeek = 2;     // sub: the week format

class TimeArea : public TKarea {
  public:
    TimeArea() = default;
    // Also removes the scratch file of a dial picture given as bytes.
    ~TimeArea() override;

    // ---- Content (time_area.cpp) ----
    // Stores the record and the font family (GBK, kept as UTF-8); clears the font path.
    void addContent(const TimeContent &content, const std::string &fontFamily);
    // The same with a font file path (GBK, kept as UTF-8 for FreeType); clears the family.
    void addContentByPath(const TimeContent &content, const std::string &fontFile);
    // Replaces the record; the font stays as it was.
    void changeContent(const TimeContent &content);
    // Resets the geometry: pageLeft, drawWidth and drawHeight from the area record, with no
    // frame margin. Also run after the area moved.
    void layoutText() override;

    // ---- Analog clock (time_area.cpp) ----
    // Makes the area an analog clock (for good): the hands in the short form, the dial style
    // and the dial colours. Resets the geometry.
    void addAnalogClock(const AnalogClock &clock, uint32_t style, const DialMarkColors &marks);
    // Shows the PNG at `path` as the dial, stretched to the area; makes the area analog. The
    // geometry is not reset.
    void changeDialPicture(const std::string &path);
    // The same with the PNG's bytes, which go through a temporary file that the area owns
    // until it is replaced or the area ends. Resets the geometry.
    void addDialPictureBytes(std::span<const uint8_t> png);
    // Back to a painted dial; the area stays analog.
    void removeDialPicture();

    // ---- Preparation (digital_clock.cpp, analog_clock.cpp) ----
    // Builds the tables, the separators and their places, unitCount, tableBytes, lineWidth
    // and the encoded background, with the screen settings of now.
    void prepareTimeArea();

    // ---- Glyphs and measures (glyph_table.cpp) ----
    // A glyph table of `tableKind` / `subKind`, exactly as long as the returned size; the
    // measured cell width goes to `cellWidth` before any clamping. Bits are 1 for ink on a
    // full-colour screen (screenColor 4) and 1 for no ink on any other.
    void buildGlyphTable(std::vector<uint8_t> &out, uint32_t &size, uint32_t &cellWidth,
                         int32_t screenColor, uint32_t tableKind, uint32_t subKind) const;
    // Paints one table entry (GBK) in red on a cleared `paddedWidth` × `height` ARGB32 buffer
    // and leaves the cell in "123.png".
    void paintClockCell(std::vector<uint8_t> &rgba, const std::string &gbk, int32_t paddedWidth,
                        int32_t cellHeight, double pixelSize) const;
    // The truncated ink width of a GBK text at the area's font and size.
    int32_t measureClockText(std::string gbk) const;
    // One row of the area's font: truncated roundHalfAway(ascent + descent).
    int32_t clockLineHeight() const;
    // The width a GBK text takes between two digits: measure("1" text "1") - measure("11").
    int32_t gapWidth(const std::string &gbk) const;
    // clockLineHeight, lowered to the truncated pixel size when that is smaller: the height of
    // a digit cell and of a row.
    int32_t row_height() const;

    // ---- Colours (clock_color.cpp) ----
    // The colour record of an item for the screen of now: 2, 3 or 5 bytes. Returns the count.
    std::size_t writeClockColor(ByteWriter &out, uint8_t hourFlag) const;

    // ---- Background ----
    // Paints the separators of a digital clock (digital_clock.cpp), or the dial of an analog
    // one (analog_clock.cpp), on a drawWidth × drawHeight ARGB32 buffer, and leaves the
    // picture in "1-2-3.png".
    void paintTimeBackground(std::vector<uint8_t> &rgba, std::vector<std::string> texts,
                             std::vector<ClockPoint> positions) const;
    void paintDial(std::vector<uint8_t> &rgba) const;
    // Stretches the dial picture over the buffer (a missing one leaves it clear).
    void paintDialPicture(std::vector<uint8_t> &rgba) const;

    // ---- Preview (time_preview.cpp) ----
    // Draws the clock as it looks at `now` into previewPng and points previewData at it; the
    // page count is 1. 0. The page number is not used: a clock has one page.
    int32_t getOnePage(const std::tm &now, uint32_t pageNum, uint32_t *pngLength,
                       uint16_t *pageCount);
    // Draws `lines` (a digital clock's texts, GBK), or the analog clock in its fixed pose,
    // and appends the PNG to previewPng.
    void paintTimePreview(std::vector<std::string> lines);

    // ---- Members ----
    uint32_t unitCount = 0; // items in the body; written by preparation
    uint32_t pageLeft = 0;  // left edge handed to the pixel encoder
    TimeContent timeContent;
    double fontPixelSize = 0.0; // roundHalfAway(fontSize * 4 / 3)
    std::string previewPng;     // the last preview
    const uint8_t *previewData = nullptr;
    std::vector<uint8_t> digitTable;
    std::vector<uint8_t> weekTable;
    std::vector<uint8_t> ampmTable;
    uint8_t frameEnabled = 0; // a time area has no frame: nothing sets it
    uint32_t digitTableSize = 0;
    uint32_t digitCellWidth = 0;
    int32_t timeWidth = 0; // width of the time-of-day group
    uint32_t weekTableSize = 0;
    uint32_t weekCellWidth = 0;
    uint32_t ampmTableSize = 0;
    uint32_t ampmCellWidth = 0;
    std::vector<std::string> fixedTexts;    // separators painted on the background (GBK)
    std::vector<ClockPoint> fixedPositions; // one per text
    std::vector<uint8_t> encodedPicture;    // the background, encoded for the screen
    uint32_t encodedPictureLength = 0;
    uint32_t tableBytes = 0; // all table copies of the body together
    std::array<uint8_t, kHandRecordSize> handRecord{};
    uint8_t analogFlag = 0;        // never cleared once set
    uint32_t dialStyle = 0;        // 0 strokes, 1 dots, 2 circle and strokes
    uint32_t previewHandColor = 0; // nothing sets it: previews draw hands in black
    uint32_t textColor = 0;
    uint8_t dialPictureFlag = 0;
    std::string dialPicturePath;
    int32_t lineWidth = 0; // one line of the SINGLELINE arrangement
    DialMarkColors markColors;
    std::vector<std::string> previewLines;

  private:
    // The font string and the record, in the order both add operations share.
    void store_content(const TimeContent &content);
    void replace_dial_scratch(std::string path);
    void paint_digital_background(std::vector<uint8_t> &rgba, std::vector<std::string> texts,
                                  std::vector<ClockPoint> positions) const;
    void paint_analog_preview(std::string &png) const;
    void paint_digital_preview(std::vector<std::string> lines, std::string &png) const;

    std::string m_dialScratch; // the temporary file of addDialPictureBytes, if any
};

} // namespace zel

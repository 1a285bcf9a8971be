// The program under construction: a header, optional play periods, an optional program frame
// and an ordered list of areas. The exported program entries only record what they are given;
// rendering happens when the program is integrated into its file image.
//
// ProgramObj is the G5 program; ProgramObj_g6 derives from it and keeps its areas, frame and
// play periods. Both take their area kinds from the table they are made with.
//
// Invariants:
// - area_count() is never below the number of areas held: replacing an area keeps the count
//   risen, deleting one lowers both, deleting all resets both.
// - The areas are held in order of (last) addition and found by the first equal identifier.
// - has_frame() implies that the frame strip was encoded; a strip that the encoder refuses
//   leaves the frame as it was.
// - file_name() is the name the last header's number gave (of either generation), or empty
//   before the first header; each header keeps the name it was set with.
// - has_background() is set by the first background a G6 program adds and stays set.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "program/area_kinds.h"
#include "program/program_file.h"
#include "program/program_header.h"
#include "render/area.h"
#include "render/pictures_area_frame.h"
#include "sdk/program_access.h"

namespace zel {

// The one result code of the program family besides 0 and -1: an unknown area to move.
inline constexpr int32_t kWrongAreaId = 29;
// delete_area with this identifier empties the program, unless an area carries it.
inline constexpr uint16_t kAllAreas = 0xFFFF;

// A file image handed to the controller: name, type byte, bytes ending in their CRC-32.
struct ProgramFileImage {
    FileName name{};
    uint8_t type = 0; // nothing writes another value into a program file's type
    std::vector<uint8_t> data;
    uint32_t crc = 0;
};

class ProgramObj : public ProgramObject {
  public:
    // The table must outlive the program; the exported entries hand in a process-wide one.
    explicit ProgramObj(const AreaKindTable &kinds);
    ~ProgramObj() override;
    ProgramObj(const ProgramObj &) = delete;
    ProgramObj &operator=(const ProgramObj &) = delete;

    // ---- Header ----
    // Applies the file-name rule to the header's number: 0 with the header and its name
    // stored, or -1 with nothing changed.
    int32_t set_header(const ProgramHeaderG5 &header);
    const ProgramHeaderG5 &header() const { return m_header; }
    const FileName &file_name() const { return m_fileName; }

    // ---- Play periods ----
    // A non-empty list is stored and switches the periods on (and the header's flag to 1); an
    // empty one switches them off (flag 0) and keeps the list that was there.
    void set_play_periods(PlayPeriods periods);
    bool has_play_periods() const { return m_hasPlayPeriods; }
    const PlayPeriods &play_periods() const { return m_playPeriods; }

    // ---- Areas ----
    // Adds an area of the table's kind for `areaType` at `rect`, replacing an area of the same
    // identifier (whose place goes, while the count still rises). The G5 add knows the types
    // 0 and 2 only. 0; -1 for another type or one the table does not know, with nothing
    // changed.
    int32_t add_area(uint16_t areaID, uint8_t areaType, const AreaRect &rect);
    // The G6 add: traces the record, destroys an area of the same identifier and adds one of
    // the G6 kind for `areaType`, keeping `extra` in it; a background marks the program. A type
    // that `kindsG6` does not know makes no area, but the count rises all the same (the file
    // then counts more areas than it holds, as the controllers expect). Always 0. A G5 program
    // takes G6 areas too: what it writes of them is their G5 body, and nothing of a background.
    int32_t add_area_g6(uint16_t areaID, uint8_t areaType, const AreaRect &rect,
                        const AreaExtraG6 &extra, const AreaKindTable &kindsG6);
    // Deletes the area, or all areas for kAllAreas when no area has that identifier; an
    // unknown identifier changes nothing.
    void delete_area(uint16_t areaID);
    // Gives the area a new rectangle and lays its content out again. 0, or kWrongAreaId with
    // its console line when the area does not exist.
    int32_t move_area(uint16_t areaID, const AreaRect &rect);
    // The first area with this identifier, or null.
    TKarea *find_area(uint16_t areaID) const;
    // The same when it is an area of class Area (null otherwise).
    template <class Area> Area *find_area_of(uint16_t areaID) const {
        return dynamic_cast<Area *>(find_area(areaID));
    }
    uint32_t area_count() const { return m_areaCount; }
    bool has_background() const { return m_hasBackground; }
    std::size_t areas_held() const { return m_areas.size(); }

    // ---- Program frame ----
    // The G5 add and change: replaces any frame and never fails. The header stands in any
    // case; a PNG that cannot be read prints "Error:Can't find frame png.\n" and leaves no
    // frame. The strip is encoded now, with the screen settings of this moment.
    void add_frame(const FrameHeaderG5 &header, const std::string &pngPath);
    // Drops the PNG and the mark; the encoded strip stays until the next frame.
    void remove_frame();
    bool has_frame() const { return m_hasFrame; }
    const FrameHeaderG5 &frame_header() const { return m_frameHeader; }
    std::span<const uint8_t> frame_strip() const { return m_frameData; }

    // ---- File image ----
    // Renders every area with the screen settings of now and builds the G5 image, then
    // writes it to the trace file "dataFantx.bin". Throws what rendering throws (a page too
    // large for the controller's bit planes); the previous image is gone then.
    const ProgramFileImage &integrate();
    const ProgramFileImage &image() const { return m_image; }

  protected:
    const AreaKindTable &kinds() const { return *m_kinds; }
    const std::vector<std::unique_ptr<TKarea>> &areas() const { return m_areas; }

    // Puts a made area in the list as add_area does: a same identifier leaves its place, the
    // new area goes to the end, the count rises.
    void place_area(uint16_t areaID, std::unique_ptr<TKarea> area, uint8_t areaType,
                    const AreaRect &rect);
    // Destroys the first area with this identifier, if any, and leaves the count as it is.
    void erase_area(uint16_t areaID);
    // The program's file name, as either generation's header sets it.
    void set_file_name(const FileName &name) { m_fileName = name; }

    // The pieces of the frame operations that the G6 add and change put together otherwise.
    // Loads the PNG into the holder (a new one when `freshHolder` or when there is none); true
    // when it has pixels.
    bool load_frame_picture(const std::string &pngPath, bool freshHolder);
    bool has_frame_picture() const { return m_framePicture != nullptr; }
    // Encodes the held strip and marks the frame present; a strip that the encoder refuses
    // (it throws) leaves the frame as it was.
    void encode_frame();

  private:
    const AreaKindTable *m_kinds;
    ProgramHeaderG5 m_header;
    FileName m_headerName{}; // the name in m_header: a G6 header leaves both alone
    FileName m_fileName{};
    bool m_hasPlayPeriods = false;
    PlayPeriods m_playPeriods;
    uint32_t m_areaCount = 0; // what the file says; see the invariants above
    bool m_hasBackground = false;
    std::vector<std::unique_ptr<TKarea>> m_areas;
    bool m_hasFrame = false;
    FrameHeaderG5 m_frameHeader;
    std::unique_ptr<PicturesAreaFrame> m_framePicture;
    std::vector<uint8_t> m_frameData; // the program frame's encoded strip
    ProgramFileImage m_image;
};

} // namespace zel

// The G6 program under construction. It keeps the areas, the play periods and the frame strip
// of the G5 program it derives from, and adds what differs: the 29-byte header, the data file
// and its name, the G6 area records with their three attribute bytes, backgrounds, the 14-byte
// program frame header with its own add and change rules (a frame is added once and changed
// afterwards), and the integration into a program file and a data file.
//
// The G5 entries work on the same object: what they change of the G5 base (its 19-byte header,
// the frame's G5 header) is what a G6 file does not carry, as the controllers' tools have it.
// The area operations, G6 ones included, are the base's.
//
// Invariant, beyond those of ProgramObj: data_file_name() is the file name with a D in front,
// once a G6 header was set.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "program/program_header_g6.h"
#include "program/program_obj.h"

namespace zel {

// The two files of a G6 program.
struct ProgramFilesG6 {
    ProgramFileImage program;
    ProgramFileImage data; // type kDataFileType
};

class ProgramObj_g6 : public ProgramObj {
  public:
    explicit ProgramObj_g6(const AreaKindTable &kinds) : ProgramObj(kinds) {}
    ~ProgramObj_g6() override = default;

    // ---- Header ----
    // Applies the file-name rule to the header's number: -1 with nothing changed and nothing
    // printed, or 0 with the header, the file name and the data file name stored. With
    // `trace`, prints the header (zelDual_program_addProgram_G6; the change entry does not).
    int32_t set_header_g6(const ProgramHeaderG6 &header, bool trace);
    const ProgramHeaderG6 &header_g6() const { return m_headerG6; }
    const FileName &data_file_name() const { return m_dataFileName; }

    // ---- Program frame ----
    // Refuses (-1, silently) while a frame is present; -1 with "Error:Can't find frame png.\n"
    // for an unreadable PNG. Otherwise the strip is encoded now and the result is 0.
    int32_t add_frame_g6(const FrameParamsG6 &params, const std::string &pngPath);
    // Replaces the frame of a program that has one ("Error:No frame have been added.\n" and -1
    // otherwise). The new header stands even when the PNG cannot be read, beside the old strip.
    int32_t change_frame_g6(const FrameParamsG6 &params, const std::string &pngPath);
    const std::array<uint8_t, kFrameRecordSizeG6> &frame_header_g6() const {
        return m_frameHeaderG6;
    }

    // ---- Files ----
    // Renders every area with the screen settings of now and builds the program file and the
    // data file, each closed by its CRC-32. Throws what rendering throws; the previous files
    // are gone then. Writes no trace file.
    const ProgramFilesG6 &integrate_g6();
    const ProgramFilesG6 &files_g6() const { return m_files; }

  private:
    ProgramHeaderG6 m_headerG6;
    FileName m_headerG6Name{}; // the name in m_headerG6: a G5 header leaves both alone
    FileName m_dataFileName{};
    std::array<uint8_t, kFrameRecordSizeG6> m_frameHeaderG6{};
    ProgramFilesG6 m_files;
};

} // namespace zel

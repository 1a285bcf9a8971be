// The G6 program under construction. It keeps the areas, the play periods and the frame strip
// of the G5 program it derives from, and adds what differs: the 14-byte program frame header
// with its own add and change rules (a frame is added once and changed afterwards).
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "program/program_obj.h"

namespace zel {

class ProgramObj_g6 : public ProgramObj {
  public:
    explicit ProgramObj_g6(const AreaKindTable &kinds) : ProgramObj(kinds) {}
    ~ProgramObj_g6() override = default;

    Generation generation() const override { return Generation::G6; }

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

  private:
    std::array<uint8_t, kFrameRecordSizeG6> m_frameHeaderG6{};
};

} // namespace zel

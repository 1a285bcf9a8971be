// The kinds of area a program can hold, by the area type byte of the add-area record.
//
// A program object knows no area class by name: it asks its table for a kind, which makes the
// area and, at integration, renders it and writes its body. The program layer fills in the
// picture area; the layers above fill in their own kinds (clocks, backgrounds) into the tables
// that the exported entries hand to the program objects they make.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "render/area.h"

namespace zel {

class DataFileWriter;

// Area type bytes of the add-area record.
inline constexpr uint8_t kAreaTypePictures = 0;
inline constexpr uint8_t kAreaTypeTime = 2;
inline constexpr uint8_t kAreaTypeBackground = 11; // G6 only

// An area's body in a program file and the length that its block declares. The two are equal
// but where the controllers' files have always carried more than they declare (clock items on
// full-colour screens, the frame header of a G6 background): the block then holds the declared
// length and every byte.
struct AreaBody {
    uint32_t declaredLength = 0;
    std::vector<uint8_t> bytes;
};
using AreaBodyG5 = AreaBody;
using AreaBodyG6 = AreaBody;

struct AreaKind {
    uint8_t areaType = 0;
    // A new, empty area of this kind.
    std::unique_ptr<TKarea> (*make)() = nullptr;
    // Renders an area of this kind with the screen settings of now and returns its body in a
    // G5 program file (what follows the block's length word). Throws what rendering throws.
    AreaBodyG5 (*bodyG5)(TKarea &area) = nullptr;
    // G6: keeps the three bytes behind the rectangle of the add-area record in the area.
    void (*keepExtraG6)(TKarea &area, const AreaExtraG6 &extra) = nullptr;
    // G6: renders an area of this kind with the screen settings of now, puts its pixels into
    // the data file at the running offset and returns its body in the program file. Throws
    // what rendering throws.
    AreaBodyG6 (*bodyG6)(TKarea &area, DataFileWriter &data) = nullptr;
};

class AreaKindTable {
  public:
    // Adds a kind; a kind of the same type is replaced.
    void add(const AreaKind &kind);
    // The kind of an area type, or null when the table has none.
    const AreaKind *find(uint8_t areaType) const;

  private:
    std::vector<AreaKind> m_kinds;
};

// The kinds that the program layer itself provides: the picture and text area (type 0).
void add_program_area_kinds(AreaKindTable &table);
// The same for a G6 program: PicturesArea_g6 (type 0), which writes the G5 body too, for a
// G5 integration of a G6 program.
void add_program_area_kinds_g6(AreaKindTable &table);

} // namespace zel

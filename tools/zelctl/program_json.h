// send-program's input: a small JSON description of a program (screen, areas with text,
// pictures and clocks), built into the controller's file images with the library's program
// entries.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

#include "session.h"

namespace zelctl {

// A description that cannot be built: a missing or mistyped field, a file that is not there, or
// a program entry that refused it. The message says which.
class ProgramError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

enum class Family { G5, G6 };

// The family a controller type's programs belong to: the low byte that makes the controller
// speak header version 7 means a G6 controller.
Family family_of(uint16_t controllerType);

struct FileImage {
    std::string name; // four characters
    uint8_t type = 0;
    std::vector<uint8_t> data;
};

struct BuiltProgram {
    Family family = Family::G5;
    uint16_t controllerType = 0;
    std::vector<FileImage> files; // G5: the program file; G6: the program file, then the data file
    Json areas = Json::array();   // id and kind of every area, for the report
};

// Reads a description. Relative paths in it are taken from `baseDir`.
Json read_description(const std::string &path);

// The controller type the description names, if it names one ("screen": {"controllerType"}).
bool description_names_type(const Json &description, uint16_t &controllerType);

// Builds the program. Rendering leaves the library's debugging pictures in the working
// directory: the caller runs this in a scratch folder. Paths in the description are made
// absolute against `baseDir` first.
BuiltProgram build_program(const Json &description, const std::string &baseDir,
                           uint16_t controllerType);

} // namespace zelctl

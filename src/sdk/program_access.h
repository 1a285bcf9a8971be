// The one program under construction and the thread that owns it.
//
// A thread that meets no owner sleeps 100 ms once and then owns a new program; any other
// thread polls in steps of 100 ms, without a time limit, until the owner deletes the program.
// That polling is the whole protection of the program: a mutex keeps the program and its owner
// consistent and is never held across a sleep. The G5 and the G6 accessor share the owner and
// the object, and an accessor hands back whatever object exists, of either class.
#pragma once

#include <cstdint>
#include <memory>

namespace zel {

inline constexpr uint32_t kProgramPollMs = 100;

// Base of ProgramObj and ProgramObj_g6; the program layer derives from it.
class ProgramObject {
  public:
    virtual ~ProgramObject() = default;
};

using ProgramFactory = std::unique_ptr<ProgramObject> (*)();

// Runs the access loop for the calling thread; `make` constructs the accessor's class when no
// program exists. Returns the current program (null if construction failed).
ProgramObject *access_program(ProgramFactory make);

// Destroys the current program, if any, and clears its owner. Always 0; any thread may call it.
int32_t delete_program();

// The current program and owner as they stand, without the access loop (for tests and for
// entries that only look).
ProgramObject *current_program();
uint32_t program_owner_thread();

} // namespace zel

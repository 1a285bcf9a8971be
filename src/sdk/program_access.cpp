#include "sdk/program_access.h"

#include <mutex>
#include <new>

#include "platform/thread.h"

namespace zel {
namespace {

// The program and its owner change together, under this mutex, so that no thread can see one
// without the other. It is held only while the pair is read or written: never across a sleep,
// a construction or a destruction, so the polling stays the only wait.
std::mutex g_slotMutex;
uint32_t g_programOwner = 0;
ProgramObject *g_program = nullptr;

} // namespace

ProgramObject *access_program(ProgramFactory make) {
    const uint32_t self = platform::current_thread_id();
    for (;;) {
        {
            std::lock_guard<std::mutex> guard(g_slotMutex);
            if (g_programOwner == self) {
                return g_program;
            }
        }
        platform::sleep_ms(kProgramPollMs);
        {
            std::lock_guard<std::mutex> guard(g_slotMutex);
            if (g_program != nullptr) {
                continue;
            }
        }
        std::unique_ptr<ProgramObject> made;
        try {
            made = make();
        } catch (const std::bad_alloc &) {
            made.reset();
        }
        // Two threads that get here together would both store; only the first one that finds
        // the slot still empty takes it, with its owner, and the other frees its object
        // instead of leaking it, then keeps polling like any thread that meets an owner. A
        // failed construction takes the ownership only of an empty slot, too.
        std::lock_guard<std::mutex> guard(g_slotMutex);
        if (g_program == nullptr) {
            g_program = made.release();
            g_programOwner = self;
        }
    }
}

int32_t delete_program() {
    // The slot is emptied and its owner cleared in one step before the object dies: a
    // current_program() never hands out a program that is being destroyed, and a program that
    // another thread makes meanwhile keeps its owner.
    std::unique_ptr<ProgramObject> program;
    {
        std::lock_guard<std::mutex> guard(g_slotMutex);
        if (g_program == nullptr) {
            return 0;
        }
        program.reset(g_program);
        g_program = nullptr;
        g_programOwner = 0;
    }
    program.reset();
    return 0;
}

ProgramObject *current_program() {
    std::lock_guard<std::mutex> guard(g_slotMutex);
    return g_program;
}

uint32_t program_owner_thread() {
    std::lock_guard<std::mutex> guard(g_slotMutex);
    return g_programOwner;
}

} // namespace zel

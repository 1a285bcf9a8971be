#include "sdk/program_access.h"

#include <atomic>
#include <new>

#include "platform/thread.h"

namespace zel {
namespace {

std::atomic<uint32_t> g_programOwner{0};
std::atomic<ProgramObject *> g_program{nullptr};

} // namespace

ProgramObject *access_program(ProgramFactory make) {
    const uint32_t self = platform::current_thread_id();
    for (;;) {
        if (g_programOwner.load(std::memory_order_acquire) == self) {
            return g_program.load(std::memory_order_acquire);
        }
        platform::sleep_ms(kProgramPollMs);
        if (g_program.load(std::memory_order_acquire) == nullptr) {
            std::unique_ptr<ProgramObject> made;
            try {
                made = make();
            } catch (const std::bad_alloc &) {
                made.reset();
            }
            // Two threads that get here together would both store; the compare-exchange lets
            // the first one win and the other frees its object instead of leaking it, then
            // keeps polling like any thread that meets an owner.
            ProgramObject *expected = nullptr;
            if (made == nullptr) {
                g_programOwner.store(self, std::memory_order_release);
            } else if (g_program.compare_exchange_strong(expected, made.get(),
                                                         std::memory_order_acq_rel)) {
                made.release();
                g_programOwner.store(self, std::memory_order_release);
            }
        }
    }
}

int32_t delete_program() {
    // The slot is emptied before the object dies, so that current_program() never hands out a
    // program that is being destroyed.
    std::unique_ptr<ProgramObject> program(g_program.exchange(nullptr, std::memory_order_acq_rel));
    if (!program) {
        return 0;
    }
    program.reset();
    g_programOwner.store(0, std::memory_order_release);
    return 0;
}

ProgramObject *current_program() {
    return g_program.load(std::memory_order_acquire);
}

uint32_t program_owner_thread() {
    return g_programOwner.load(std::memory_order_acquire);
}

} // namespace zel

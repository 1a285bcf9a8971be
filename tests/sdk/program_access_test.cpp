#include <gtest/gtest.h>

#include <functional>
#include <future>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "exports/program_access.h"
#include "support/fake_clock.h"
#include "zel_sdk_dual.h"

namespace zel {
namespace {

using exports::program_access_g5;
using exports::program_access_g6;

// A program whose destruction runs the test's hook once: the moment inside a delete when the
// old program is going and no new one has been made.
std::function<void()> g_onDestroy;

class HookedProgram final : public ProgramObject {
  public:
    ~HookedProgram() override {
        if (auto hook = std::exchange(g_onDestroy, nullptr)) {
            hook();
        }
    }
};

std::unique_ptr<ProgramObject> make_hooked() {
    return std::make_unique<HookedProgram>();
}

TEST(ProgramAccess, FirstAccessSleepsOnceThenOwns) {
    ASSERT_EQ(zelDual_program_deleteProgram(), 0);
    test::FakeClock clock;
    ProgramObject *first = program_access_g5();
    ASSERT_NE(first, nullptr);
    EXPECT_NE(dynamic_cast<ProgramObj *>(first), nullptr);
    EXPECT_NE(program_owner_thread(), 0u);

    // The G6 accessor hands back the existing object unchanged, and the owner does not sleep.
    EXPECT_EQ(program_access_g6(), first);
    EXPECT_EQ(clock.events(), std::vector<std::string>{"sleep 100"});
    EXPECT_EQ(zelDual_program_deleteProgram_G6(), 0);
    EXPECT_EQ(current_program(), nullptr);
    EXPECT_EQ(program_owner_thread(), 0u);
    EXPECT_EQ(zelDual_program_deleteProgram(), 0) << "no program: still 0";
}

TEST(ProgramAccess, SecondThreadWaitsUntilTheOwnerDeletes) {
    ASSERT_EQ(zelDual_program_deleteProgram(), 0);
    test::FakeClock clock;
    ASSERT_NE(program_access_g5(), nullptr);
    // Deleting does not look at the calling thread: the clock deletes for the owner once the
    // other thread has polled for a second.
    clock.at(1100, [] { zelDual_program_deleteProgram(); });
    ProgramObject *seen = nullptr;
    std::thread other([&] { seen = program_access_g6(); });
    other.join();
    ASSERT_NE(seen, nullptr);
    EXPECT_NE(dynamic_cast<ProgramObj_g6 *>(seen), nullptr) << "made only after the delete";
    // The owner's first access, then ten polls of the other thread.
    EXPECT_EQ(clock.events(), std::vector<std::string>(11, "sleep 100"));
    EXPECT_EQ(zelDual_program_deleteProgram(), 0);
}

TEST(ProgramAccess, AProgramMadeWhileAnotherIsDeletedKeepsItsOwner) {
    ASSERT_EQ(zelDual_program_deleteProgram(), 0);
    test::FakeClock clock;
    ASSERT_NE(access_program(make_hooked), nullptr);

    // While the owner's program is destroyed, another thread makes its first access and so
    // owns a new program; once the delete is over, its next access must find its own program
    // at once. Should the delete take that ownership away, the thread would poll behind its
    // own program for ever: the clock then deletes it after ten seconds, so that the test
    // fails instead of hanging.
    std::promise<ProgramObject *> first;
    std::future<ProgramObject *> firstDone = first.get_future();
    std::promise<void> deleted;
    std::future<void> deleteDone = deleted.get_future();
    ProgramObject *second = nullptr;
    std::thread other;
    g_onDestroy = [&] {
        other = std::thread([&] {
            first.set_value(access_program(make_hooked));
            deleteDone.wait();
            second = access_program(make_hooked);
        });
        firstDone.wait();
    };
    clock.at(10'000, [] { delete_program(); });
    EXPECT_EQ(zelDual_program_deleteProgram(), 0);
    deleted.set_value();
    other.join();

    ProgramObject *made = firstDone.get();
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(second, made);
    EXPECT_EQ(current_program(), made);
    // The owner's first access, then the other thread's; its second access does not sleep.
    EXPECT_EQ(clock.events(), std::vector<std::string>(2, "sleep 100"));
    EXPECT_EQ(zelDual_program_deleteProgram(), 0);
}

} // namespace
} // namespace zel

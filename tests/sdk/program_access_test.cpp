#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "exports/program_access.h"
#include "support/fake_clock.h"
#include "zel_sdk_dual.h"

namespace zel {
namespace {

using exports::program_access_g5;
using exports::program_access_g6;

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

} // namespace
} // namespace zel

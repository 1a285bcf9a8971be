#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>

#include "exports/program_access.h"
#include "zel_sdk_dual.h"

namespace zel {
namespace {

using exports::program_access_g5;
using exports::program_access_g6;

TEST(ProgramAccess, FirstAccessSleepsOnceThenOwns) {
    ASSERT_EQ(zelDual_program_deleteProgram(), 0);
    const auto start = std::chrono::steady_clock::now();
    ProgramObject *first = program_access_g5();
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(100));
    ASSERT_NE(first, nullptr);
    EXPECT_NE(dynamic_cast<ProgramObj *>(first), nullptr);
    EXPECT_NE(program_owner_thread(), 0u);

    // The G6 accessor hands back the existing object unchanged.
    EXPECT_EQ(program_access_g6(), first);
    EXPECT_EQ(zelDual_program_deleteProgram_G6(), 0);
    EXPECT_EQ(current_program(), nullptr);
    EXPECT_EQ(program_owner_thread(), 0u);
    EXPECT_EQ(zelDual_program_deleteProgram(), 0) << "no program: still 0";
}

TEST(ProgramAccess, SecondThreadWaitsUntilTheOwnerDeletes) {
    ASSERT_NE(program_access_g5(), nullptr);
    std::atomic<bool> returned{false};
    ProgramObject *seen = nullptr;
    std::thread other([&] {
        seen = program_access_g6();
        returned = true;
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(450));
    EXPECT_FALSE(returned.load()) << "must poll while another thread owns a program";
    EXPECT_EQ(zelDual_program_deleteProgram(), 0);
    other.join();
    EXPECT_TRUE(returned.load());
    ASSERT_NE(seen, nullptr);
    EXPECT_NE(dynamic_cast<ProgramObj_g6 *>(seen), nullptr);
    EXPECT_EQ(zelDual_program_deleteProgram(), 0);
}

} // namespace
} // namespace zel

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <regex>
#include <sstream>
#include <string>

#include "sdk/log.h"

namespace zel {
namespace {

std::string read_log() {
    std::ifstream in(kLogFileName, std::ios::binary);
    std::stringstream s;
    s << in.rdbuf();
    return s.str();
}

const char *kStamp = R"(\[\d{4}-\d\d-\d\d \d\d:\d\d:\d\d\])";

TEST(Log, LineLayoutForEveryLevelAndAnUnknownOne) {
    EXPECT_EQ(write_log(kLogError, "first"), 0);
    EXPECT_EQ(write_log(kLogDebug, "second"), 0);
    EXPECT_EQ(write_log(7, "third"), 0);
    const std::string expected =
        std::string("^") + kStamp + R"( \[TEST\] \[ERROR   \] # DEMO # first\n)" + kStamp +
        R"( \[TEST\] \[DEBUG   \] # DEMO # second\n)" + kStamp + R"(# DEMO # third\n$)";
    EXPECT_TRUE(std::regex_match(read_log(), std::regex(expected))) << read_log();
}

TEST(Log, LongMessageIsCutAt511BytesWithoutNewline) {
    const std::string message(600, 'x');
    EXPECT_EQ(write_log(kLogInfo, message.c_str()), 0);
    const std::string line = read_log();
    EXPECT_EQ(line.size(), 511u);
    EXPECT_EQ(line.back(), 'x');
    EXPECT_NE(line.find(" [TEST] [INFO    ] # DEMO # xxx"), std::string::npos);
}

TEST(Log, FileThatCannotBeOpenedGivesMinusOne) {
    // A directory in the log file's place cannot be opened, even by root.
    std::filesystem::create_directory(kLogFileName);
    EXPECT_EQ(write_log(kLogError, "lost"), -1);
    std::filesystem::remove(kLogFileName);
}

TEST(Log, LockIsReentrantAndAlwaysAnswersOne) {
    EXPECT_EQ(dynamic_area_lock(), 1);
    EXPECT_EQ(dynamic_area_lock(), 1);
    EXPECT_EQ(dynamic_area_unlock(), 1);
    EXPECT_EQ(dynamic_area_unlock(), 1);
    { DynamicAreaLockGuard guard; }
}

} // namespace
} // namespace zel

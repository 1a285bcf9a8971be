#include <gtest/gtest.h>

#include "support/capture.h"
#include "zel_sdk_dual.h"

namespace {

TEST(Lifecycle, InitPrintsTheVersionLineOnEveryCall) {
    zelDual_ReleaseSdk();
    zel::test::StdoutCapture console;
    EXPECT_EQ(zelDual_InitSdk(), 0);
    EXPECT_EQ(zelDual_InitSdk(), 0);
    EXPECT_EQ(console.text(), "Version:202006121156;\r\nVersion:202006121156;\r\n");
    EXPECT_EQ(zelDual_ReleaseSdk(), 0);
}

TEST(Lifecycle, ReleaseWithoutStartAndSettersReturnZero) {
    zelDual_ReleaseSdk();
    EXPECT_EQ(zelDual_ReleaseSdk(), 0);
    EXPECT_EQ(zelDual_set_packetLen(0), 0);
    EXPECT_EQ(zelDual_set_packetLen(1024), 0);
    EXPECT_EQ(zelDual_set_screenNum_G56(5), 0);
}

} // namespace

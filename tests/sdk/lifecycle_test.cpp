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

} // namespace

// Runs each test process in a fresh temporary directory: the library writes its files
// ("testDemoLog", "0.png", "dataFantx.bin" …) into the working directory.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <unistd.h>

namespace {

class TempDirEnvironment : public ::testing::Environment {
  public:
    void SetUp() override {
        char pattern[] = "/tmp/zel_test_XXXXXX";
        const char *dir = ::mkdtemp(pattern);
        ASSERT_NE(dir, nullptr);
        m_dir = dir;
        ASSERT_EQ(::chdir(dir), 0);
    }
    void TearDown() override {
        std::error_code ec;
        std::filesystem::current_path("/tmp", ec);
        std::filesystem::remove_all(m_dir, ec);
    }

  private:
    std::filesystem::path m_dir;
};

} // namespace

// fontconfig keeps its configuration and pattern caches until the process ends; cairo's toy
// font faces (fonts chosen by family name) reach them. They are not the library's leaks.
extern "C" __attribute__((visibility("default"))) const char *__lsan_default_suppressions() {
    return "leak:libfontconfig.so\n";
}

int main(int argc, char **argv) {
    ::testing::InitGoogleTest(&argc, argv);
    ::testing::AddGlobalTestEnvironment(new TempDirEnvironment);
    return RUN_ALL_TESTS();
}

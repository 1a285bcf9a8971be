// Keeps the library's console trace out of a benchmark's report while it lives.
#pragma once

#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace zel::bench {

class QuietStdout {
  public:
    QuietStdout() : m_saved(dup(STDOUT_FILENO)) {
        std::fflush(stdout);
        const int null = open("/dev/null", O_WRONLY);
        dup2(null, STDOUT_FILENO);
        close(null);
    }
    ~QuietStdout() {
        std::fflush(stdout);
        dup2(m_saved, STDOUT_FILENO);
        close(m_saved);
    }
    QuietStdout(const QuietStdout &) = delete;
    QuietStdout &operator=(const QuietStdout &) = delete;

  private:
    int m_saved;
};

} // namespace zel::bench

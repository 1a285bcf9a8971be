// Captures what the process writes to standard output (the console trace) between
// construction and text().
#pragma once

#include <string>

namespace zel::test {

class StdoutCapture {
  public:
    StdoutCapture();
    ~StdoutCapture();
    StdoutCapture(const StdoutCapture &) = delete;
    StdoutCapture &operator=(const StdoutCapture &) = delete;

    // Stops capturing (once) and returns everything written meanwhile.
    std::string text();

  private:
    void stop();
    int m_savedFd = -1;
    int m_fileFd = -1;
    std::string m_text;
};

} // namespace zel::test

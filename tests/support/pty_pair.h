// A pseudo-terminal pair for serial tests in which the test itself plays the controller: the
// library opens slave_path() as it would open /dev/ttyUSB0, and the test reads and writes the
// master end.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace zel::test {

class PtyPair {
  public:
    PtyPair(); // throws std::runtime_error when no pseudo-terminal can be made
    ~PtyPair();
    PtyPair(const PtyPair &) = delete;
    PtyPair &operator=(const PtyPair &) = delete;

    const std::string &slave_path() const { return m_slavePath; }

    // Writes bytes to the line, as the controller sends them.
    void write(const std::vector<uint8_t> &bytes);
    // Reads what the host sent, waiting up to `timeoutMs` for the first byte and then taking
    // everything that follows within `quietMs`.
    std::vector<uint8_t> read(int timeoutMs, int quietMs = 50);

  private:
    int m_master = -1;
    int m_slave = -1; // held open so that the line survives the library closing its end
    std::string m_slavePath;
};

} // namespace zel::test

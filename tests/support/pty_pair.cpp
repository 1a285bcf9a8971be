#include "support/pty_pair.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <stdexcept>
#include <termios.h>
#include <unistd.h>

namespace zel::test {

PtyPair::PtyPair() {
    m_master = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (m_master < 0 || ::grantpt(m_master) != 0 || ::unlockpt(m_master) != 0) {
        throw std::runtime_error(std::string("no pseudo-terminal: ") + std::strerror(errno));
    }
    char name[128] = {};
    if (::ptsname_r(m_master, name, sizeof name) != 0) {
        throw std::runtime_error("no pseudo-terminal name");
    }
    m_slavePath = name;
    m_slave = ::open(name, O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (m_slave < 0) {
        throw std::runtime_error("cannot open " + m_slavePath);
    }
    // No echo before the library sets its own mode, or the test would read its own bytes.
    termios tio{};
    ::tcgetattr(m_slave, &tio);
    ::cfmakeraw(&tio);
    ::tcsetattr(m_slave, TCSANOW, &tio);
}

PtyPair::~PtyPair() {
    if (m_slave >= 0) ::close(m_slave);
    if (m_master >= 0) ::close(m_master);
}

void PtyPair::write(const std::vector<uint8_t> &bytes) {
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t n = ::write(m_master, bytes.data() + done, bytes.size() - done);
        if (n <= 0) throw std::runtime_error("pty write failed");
        done += static_cast<std::size_t>(n);
    }
}

std::vector<uint8_t> PtyPair::read(int timeoutMs, int quietMs) {
    std::vector<uint8_t> out;
    int wait = timeoutMs;
    for (;;) {
        pollfd p{m_master, POLLIN, 0};
        if (::poll(&p, 1, wait) <= 0) return out;
        uint8_t buf[4096];
        const ssize_t n = ::read(m_master, buf, sizeof buf);
        if (n <= 0) return out;
        out.insert(out.end(), buf, buf + n);
        wait = quietMs;
    }
}

} // namespace zel::test

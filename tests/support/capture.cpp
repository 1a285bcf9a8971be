#include "support/capture.h"

#include <cstdio>
#include <cstdlib>
#include <unistd.h>

namespace zel::test {

StdoutCapture::StdoutCapture() {
    std::fflush(stdout);
    char path[] = "/tmp/zel_stdout_XXXXXX";
    m_fileFd = ::mkstemp(path);
    if (m_fileFd < 0) return;
    ::unlink(path);
    m_savedFd = ::dup(STDOUT_FILENO);
    ::dup2(m_fileFd, STDOUT_FILENO);
}

StdoutCapture::~StdoutCapture() {
    stop();
}

void StdoutCapture::stop() {
    if (m_savedFd < 0) return;
    std::fflush(stdout);
    ::dup2(m_savedFd, STDOUT_FILENO);
    ::close(m_savedFd);
    m_savedFd = -1;
    ::lseek(m_fileFd, 0, SEEK_SET);
    char buf[4096];
    ssize_t n;
    while ((n = ::read(m_fileFd, buf, sizeof buf)) > 0) {
        m_text.append(buf, static_cast<std::size_t>(n));
    }
    ::close(m_fileFd);
    m_fileFd = -1;
}

std::string StdoutCapture::text() {
    stop();
    return m_text;
}

} // namespace zel::test

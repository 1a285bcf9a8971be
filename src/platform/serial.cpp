#include "platform/serial.h"

#include <cerrno>
#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include "platform/clock.h"

namespace zel::platform {

int serial_open(const char *path) {
    if (path == nullptr) {
        return -1;
    }
    const int fd = ::open(path, O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0) {
        return -1;
    }
    if (::ioctl(fd, TIOCEXCL) != 0) {
        ::close(fd);
        return -1;
    }
    return fd;
}

bool serial_speed(int fd, uint32_t &bitsPerSecond) {
    termios tio{};
    if (::tcgetattr(fd, &tio) != 0) {
        return false;
    }
    switch (::cfgetospeed(&tio)) {
    case B9600:
        bitsPerSecond = 9600;
        break;
    case B19200:
        bitsPerSecond = 19200;
        break;
    case B38400:
        bitsPerSecond = 38400;
        break;
    case B57600:
        bitsPerSecond = 57600;
        break;
    case B115200:
        bitsPerSecond = 115200;
        break;
    default:
        bitsPerSecond = 0;
        break;
    }
    return true;
}

bool serial_configure(int fd, uint32_t bitsPerSecond) {
    termios tio{};
    if (::tcgetattr(fd, &tio) != 0) {
        return false;
    }
    // A port is a byte pipe: no line editing, echo, signals or translation of any byte.
    ::cfmakeraw(&tio);
    tio.c_cflag &= ~static_cast<tcflag_t>(CSIZE | PARENB | CSTOPB | CRTSCTS);
    // CLOCAL must be set or writes can block forever waiting for a carrier.
    tio.c_cflag |= CS8 | CREAD | CLOCAL;
    tio.c_cc[VMIN] = 0;
    tio.c_cc[VTIME] = 0;
    const speed_t speed = bitsPerSecond == 57600 ? B57600 : B9600;
    if (::cfsetispeed(&tio, speed) != 0 || ::cfsetospeed(&tio, speed) != 0) {
        return false;
    }
    return ::tcsetattr(fd, TCSANOW, &tio) == 0;
}

bool serial_purge(int fd) {
    return ::tcflush(fd, TCIOFLUSH) == 0;
}

bool serial_check(int fd) {
    int queued = 0;
    return fd >= 0 && ::ioctl(fd, TIOCOUTQ, &queued) == 0;
}

ssize_t serial_write(int fd, const uint8_t *data, std::size_t len, uint32_t timeoutMs) {
    Clock &clock = current_clock();
    const uint32_t start = clock.tick_count_ms();
    std::size_t done = 0;
    while (done < len) {
        const ssize_t n = ::write(fd, data + done, len - done);
        if (n > 0) {
            done += static_cast<std::size_t>(n);
            continue;
        }
        if (n < 0 && errno != EAGAIN && errno != EINTR) {
            return -1;
        }
        const uint32_t elapsed = clock.tick_count_ms() - start; // wraps like the tick count
        if (elapsed >= timeoutMs) {
            break; // the write time-out ends the call with what went out, like a port does
        }
        pollfd p{fd, POLLOUT, 0};
        clock.poll(&p, 1, timeoutMs - elapsed);
    }
    return static_cast<ssize_t>(done);
}

ssize_t serial_read(int fd, uint8_t *buf, std::size_t len) {
    const ssize_t n = ::read(fd, buf, len);
    if (n < 0) {
        return errno == EAGAIN || errno == EINTR ? 0 : -1;
    }
    return n;
}

void serial_close(int fd) {
    if (fd < 0) {
        return;
    }
    ::ioctl(fd, TIOCNXCL);
    ::close(fd);
}

} // namespace zel::platform

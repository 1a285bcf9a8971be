// Terminal devices as serial lines: the only code that calls termios. A line is used in raw
// mode, 8 data bits, no parity, one stop bit, with non-blocking reads.
#pragma once

#include <cstddef>
#include <cstdint>
#include <sys/types.h>

namespace zel::platform {

// Opens an existing terminal for reading and writing, never as the controlling terminal,
// without blocking, and exclusively (TIOCEXCL). -1 on failure.
int serial_open(const char *path);

// The line's current speed in bit/s (0 when the speed has no number); false when the device
// is not a terminal.
bool serial_speed(int fd, uint32_t &bitsPerSecond);

// Raw mode, 8N1, receiver on, modem lines ignored, reads that return at once, at 9600 or
// 57600 bit/s. false on failure.
bool serial_configure(int fd, uint32_t bitsPerSecond);

// Discards what waits in both directions.
bool serial_purge(int fd);

// Whether the line is still usable (the counterpart of clearing a port's error state).
bool serial_check(int fd);

// Writes all bytes, waiting for room up to `timeoutMs`; the count written or -1.
ssize_t serial_write(int fd, const uint8_t *data, std::size_t len, uint32_t timeoutMs);

// One non-blocking read: the count, 0 when nothing is there, -1 on an error.
ssize_t serial_read(int fd, uint8_t *buf, std::size_t len);

// Gives up exclusivity (so that the next open works also for users without privileges) and
// closes.
void serial_close(int fd);

} // namespace zel::platform

// The console trace: the lines a person sees of the library's working. Everything the library
// prints goes through here, to standard output, byte for byte as given.
#pragma once

#include <cstddef>

namespace zel {

// Formats like printf and writes the result to standard output, then flushes, so that the
// trace interleaves with the host's own output in call order.
void console_printf(const char *format, ...) __attribute__((format(printf, 1, 2)));

// Writes exactly `length` bytes to standard output and flushes.
void console_write(const char *bytes, std::size_t length);

} // namespace zel

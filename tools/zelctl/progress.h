// A progress bar for file transfers. The library writes a file in one call, block by block,
// without reporting how far it has come; zelctl runs that call on a worker thread and reads the
// bytes the thread has written to the line so far from the kernel's per-thread I/O counters.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace zelctl {

// The bytes that writing `length` bytes of `data` puts on the line, in blocks of `packetLen`:
// the probe, the header command, and per block its frame, the command and the block header,
// with every escaped byte counted twice. The estimate of the bar's 100 %.
uint64_t wire_bytes_of_write(const uint8_t *data, uint32_t length, uint32_t packetLen);

// Runs `write` on a worker thread. When `show` is set it draws a bar on standard error, named
// `label`, against `expectedBytes`, until `write` returns; its result is returned.
int32_t run_with_progress(const std::string &label, uint64_t expectedBytes, uint32_t fileBytes,
                          bool show, const std::function<int32_t()> &write);

} // namespace zelctl

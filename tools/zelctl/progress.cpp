#include "progress.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <string>
#include <sys/syscall.h>
#include <thread>
#include <unistd.h>

namespace zelctl {
namespace {

constexpr uint32_t kFrameBytes = 9;       // eight start bytes and the end byte
constexpr uint32_t kCommandBytes = 33;    // header and command body of a G6 packet (G5: 32)
constexpr uint32_t kProbeBytes = 9 + 19;  // the device-type probe, framed
constexpr uint32_t kFileHeaderBytes = 14; // the write command's header data
constexpr uint32_t kBlockHeaderBytes = 9; // name, last-block flag and offset before each block
constexpr int kBarWidth = 30;

bool escaped(uint8_t b) {
    return b == 0x5A || b == 0x5B || b == 0xA5 || b == 0xA6;
}

// Bytes the thread `tid` of this process has written so far, or -1 when the kernel keeps no
// count.
int64_t written_by(long tid) {
    std::ifstream io("/proc/self/task/" + std::to_string(tid) + "/io");
    std::string key;
    int64_t value = 0;
    while (io >> key >> value) {
        if (key == "wchar:") return value;
    }
    return -1;
}

void draw(const std::string &label, double fraction, uint32_t fileBytes, double seconds) {
    const int filled = static_cast<int>(fraction * kBarWidth);
    std::string bar(static_cast<std::size_t>(filled), '#');
    bar.resize(kBarWidth, '-');
    std::fprintf(stderr, "\r%s [%s] %3d%%  %.1f/%.1f KiB  %.0f s", label.c_str(), bar.c_str(),
                 static_cast<int>(fraction * 100), fraction * fileBytes / 1024.0,
                 fileBytes / 1024.0, seconds);
    std::fflush(stderr);
}

} // namespace

uint64_t wire_bytes_of_write(const uint8_t *data, uint32_t length, uint32_t packetLen) {
    const uint32_t block = std::max<uint32_t>(packetLen, 1);
    const uint64_t blocks = length == 0 ? 0 : (uint64_t{length} + block - 1) / block;
    uint64_t escapes = 0;
    for (uint32_t i = 0; i < length; ++i)
        escapes += escaped(data[i]) ? 1 : 0;
    return kProbeBytes + kFrameBytes + kCommandBytes + kFileHeaderBytes +
           blocks * (kFrameBytes + kCommandBytes + kBlockHeaderBytes) + length + escapes;
}

int32_t run_with_progress(const std::string &label, uint64_t expectedBytes, uint32_t fileBytes,
                          bool show, const std::function<int32_t()> &write) {
    if (!show) return write();
    std::atomic<long> tid{0};
    std::atomic<bool> done{false};
    int32_t result = -1;
    std::thread worker([&] {
        tid = ::syscall(SYS_gettid);
        result = write();
        done = true;
    });
    while (tid == 0)
        std::this_thread::yield();
    const long workerTid = tid;
    const int64_t start = written_by(workerTid);
    const auto began = std::chrono::steady_clock::now();
    const auto elapsed = [&] {
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - began).count();
    };
    while (!done) {
        const int64_t now = written_by(workerTid);
        double fraction = 0;
        if (start >= 0 && now >= start && expectedBytes > 0) {
            fraction = std::min(0.99, static_cast<double>(now - start) /
                                          static_cast<double>(expectedBytes));
        }
        draw(label, fraction, fileBytes, elapsed());
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
    worker.join();
    if (result == 0) draw(label, 1.0, fileBytes, elapsed());
    std::fputs(result == 0 ? "\n" : "  failed\n", stderr);
    std::fflush(stderr);
    return result;
}

} // namespace zelctl

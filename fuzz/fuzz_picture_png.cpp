// PNG files as a host hands them to the library: the input is written to a file and read by
// every path that takes a picture file: the page painter at pages smaller and larger than
// common pictures, the preview that re-encodes the page, the frame strip (then encoded for the
// screen around an area) and an analog clock's dial picture.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <exception>
#include <string>
#include <unistd.h>
#include <vector>
#include <zlib.h>

#include "clock/time_area.h"
#include "render/area.h"
#include "render/picture.h"
#include "render/pictures_area_frame.h"

namespace {

// One file for the whole run, rewritten for every input.
struct PictureFile {
    PictureFile() {
        char name[] = "/tmp/zel_fuzz_png_XXXXXX";
        fd = ::mkstemp(name);
        path = name;
    }
    ~PictureFile() {
        ::close(fd);
        ::unlink(path.c_str());
    }
    void write(const uint8_t *data, std::size_t size) {
        (void)!::ftruncate(fd, 0);
        (void)!::pwrite(fd, data, size, 0);
    }
    int fd = -1;
    std::string path;
};

// Puts the right CRC behind every whole chunk after the signature, so that the decoder gets
// past its checks to what the chunks say.
std::vector<uint8_t> with_chunk_crcs(const uint8_t *data, std::size_t size) {
    std::vector<uint8_t> png(data, data + size);
    std::size_t at = 8;
    while (at + 12 <= png.size()) {
        const std::size_t length = std::size_t{png[at]} << 24 | std::size_t{png[at + 1]} << 16 |
                                   std::size_t{png[at + 2]} << 8 | png[at + 3];
        if (length > png.size() - at - 12) break;
        const auto crc =
            static_cast<uint32_t>(crc32(0L, png.data() + at + 4, static_cast<uInt>(length + 4)));
        for (std::size_t i = 0; i < 4; ++i)
            png[at + 8 + length + i] = static_cast<uint8_t>(crc >> (24 - 8 * i));
        at += length + 12;
    }
    return png;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size) {
    static PictureFile file;
    const std::vector<uint8_t> png = with_chunk_crcs(data, size);
    file.write(png.data(), png.size());

    for (const auto &[w, h] : {std::pair{1, 1}, std::pair{8, 4}, std::pair{64, 32}}) {
        (void)zel::paintPicture(file.path, w, h);
    }
    std::string preview;
    zel::previewPicture(file.path, 16, 8, preview);

    zel::PicturesAreaFrame frame;
    frame.load(file.path);
    if (frame.framePixels != nullptr && frame.frameLength <= 4096 && frame.frameThickness <= 64) {
        zel::TKarea area;
        try {
            (void)frame.encode(area);
        } catch (const std::exception &) {
            // a strip beyond the bit planes is refused this way, and the caller catches it
        }
    }

    zel::TimeArea clock;
    clock.drawWidth = 24;
    clock.drawHeight = 24;
    clock.dialPicturePath = file.path;
    std::vector<uint8_t> dial(24u * 24u * 4u, 0);
    clock.paintDialPicture(dial);
    return 0;
}

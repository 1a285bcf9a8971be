#include "render/area.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <iconv.h>
#include <vector>

#include "render/font.h"

namespace zel {
namespace {

// The gamma exponent is 28 / 10 in integer arithmetic, thus 2 and not 2.8, with a weight of
// 100 × 0.01. The truncation is deliberate: the 5-6-5 colours of every controller depend on it.
constexpr int kGammaTenths = 28;
constexpr double kGammaWeight = 100 * 0.01;

void fill_gamma(std::array<uint8_t, 256> &table, int index) {
    const double exponent = static_cast<double>(kGammaTenths / 10);
    const double s = (index * kGammaWeight + 0.5) / 256.0;
    const double g = std::pow(s, exponent);
    table[static_cast<std::size_t>(index)] =
        static_cast<uint8_t>(static_cast<int>(g * 256.0 - 0.5));
}

// Output room of the in-place conversions: 3 bytes per input byte, for every direction.
constexpr std::size_t kConversionFactor = 3;

uint64_t convert_in_place(std::string &text, const char *target, const char *source) {
    std::string input = text;
    const std::size_t n = input.size();
    std::vector<char> output(kConversionFactor * n + 1, '\0'); // +1: a valid pointer for n = 0
    char *in = input.data();
    std::size_t inLeft = n;
    char *out = output.data();
    std::size_t outLeft = kConversionFactor * n;
    const uint64_t result = TKarea::convertCharset(target, source, &in, &inLeft, &out, &outLeft);
    text.assign(output.data(), kConversionFactor * n - outLeft);
    return result;
}

} // namespace

TKarea::TKarea() {
    for (int i = 0; i < 256; ++i) {
        fill_gamma(gammaRed, i);
        fill_gamma(gammaGreen, i);
        fill_gamma(gammaBlue, i);
    }
    ensure_free_type_library();
}

TKarea::~TKarea() = default;

void TKarea::layoutText() {}

void TKarea::set_area_header(uint8_t type, const AreaRect &rect) {
    areaHeader[0] = type;
    areaType = type;
    set_rect(rect);
}

void TKarea::set_rect(const AreaRect &rect) {
    x = rect.x;
    y = rect.y;
    width = rect.width;
    height = rect.height;
    const uint16_t words[4] = {rect.x, rect.y, rect.width, rect.height};
    for (std::size_t i = 0; i < 4; ++i) {
        areaHeader[1 + 2 * i] = static_cast<uint8_t>(words[i] & 0xFF);
        areaHeader[2 + 2 * i] = static_cast<uint8_t>(words[i] >> 8);
    }
}

uint64_t TKarea::convertCharset(const char *target, const char *source, char **in,
                                std::size_t *inLeft, char **out, std::size_t *outLeft) {
    iconv_t cd = iconv_open(target, source);
    if (cd == reinterpret_cast<iconv_t>(-1)) {
        return kConversionFailed;
    }
    const std::size_t result = iconv(cd, in, inLeft, out, outLeft);
    iconv_close(cd);
    return static_cast<uint64_t>(result);
}

uint64_t TKarea::convertGbkToUtf8(std::string &text) {
    return convert_in_place(text, "UTF-8", "gbk");
}

uint64_t TKarea::convertGbkToUcs2(std::string &text) {
    return convert_in_place(text, "UCS-2LE", "gbk");
}

uint64_t TKarea::convertUcs2ToUtf8(std::string &text) {
    return convert_in_place(text, "UTF-8", "UCS-2LE");
}

uint64_t TKarea::convertUcs2ToUtf8Buffer(const char *in, std::size_t *inLeft, char *out,
                                         std::size_t *outLeft) {
    if (inLeft == nullptr || outLeft == nullptr || (out == nullptr && *outLeft != 0)) {
        return kConversionFailed;
    }
    // Only the low byte of the output count says how much to clear, read as signed: callers
    // pass counts whose low byte is below 0x80, and a "negative" one clears nothing.
    const auto clear = static_cast<int8_t>(*outLeft & 0xFF);
    if (clear > 0) {
        std::memset(out, 0, static_cast<std::size_t>(clear));
    }
    // iconv does not write through its input pointer; the cast only satisfies its signature.
    char *inCursor = const_cast<char *>(in);
    char *outCursor = out;
    return convertCharset("UTF-8", "UCS-2LE", &inCursor, inLeft, &outCursor, outLeft);
}

int32_t alignOffset(uint8_t align, int32_t total, int32_t used) {
    if (align == 0 || total <= used) {
        return 0;
    }
    const int64_t room = static_cast<int64_t>(total) - used;
    switch (align) {
    case 1:
        return static_cast<int32_t>(room / 2);
    case 2:
        return static_cast<int32_t>(room);
    default:
        return 0;
    }
}

int32_t centreOffset(uint32_t total, int32_t count, int32_t unit) {
    const uint32_t spare = total - static_cast<uint32_t>(count) * static_cast<uint32_t>(unit);
    const double half = static_cast<double>(static_cast<int32_t>(spare)) / 2.0;
    const auto offset = static_cast<int32_t>(half);
    return offset < 0 ? 0 : offset;
}

uint32_t pixelUnit(uint32_t tranPixelMode) {
    return tranPixelMode == 4 ? 32 : 8;
}

double roundHalfAway(double v) {
    return v > 0 ? std::floor(v + 0.5) : std::ceil(v - 0.5);
}

int32_t truncate_to_int32(double v) {
    constexpr double kLow = -2147483649.0; // exclusive bounds of what truncates into int32_t
    constexpr double kHigh = 2147483648.0;
    if (v > kLow && v < kHigh) {
        return static_cast<int32_t>(v);
    }
    return INT32_MIN;
}

} // namespace zel

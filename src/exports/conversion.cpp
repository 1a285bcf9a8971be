// Exported entries of the rendering subsystem: the character conversions.
#include "zel_sdk_dual.h"

#include <cstring>
#include <string>

#include "render/area.h"
#include "sdk/guard.h"

using namespace zel;

namespace {

// Both in-place exports: the input ends at its first zero byte, the result goes to `out`
// without a terminator, and `out` is as large as the caller agreed (the size is not passed on).
int32_t convert_to_out(const char *in, char *out, uint64_t (*convert)(std::string &)) {
    if (in == nullptr || out == nullptr) {
        return 0;
    }
    std::string text(in);
    TKarea area; // a temporary area, as every conversion is a member of one
    convert(text);
    if (!text.empty()) {
        std::memcpy(out, text.data(), text.size());
    }
    return static_cast<int32_t>(text.size());
}

} // namespace

extern "C" {

ZEL_API int32_t GB2312ToUTF8(const char *in, char *out, size_t /*outSize*/) {
    return guarded(0, [&] { return convert_to_out(in, out, &TKarea::convertGbkToUtf8); });
}

ZEL_API int32_t UnicodeToUTF8(const char *in, char *out, size_t /*outSize*/) {
    return guarded(0, [&] { return convert_to_out(in, out, &TKarea::convertUcs2ToUtf8); });
}

ZEL_API size_t UnicodeToUTF8_V2(const char *in, size_t *inLeft, char *out, size_t *outLeft) {
    try {
        TKarea area;
        return static_cast<size_t>(area.convertUcs2ToUtf8Buffer(in, inLeft, out, outLeft));
    } catch (...) {
        return static_cast<size_t>(kConversionFailed);
    }
}

} // extern "C"

#include "render/picture.h"

#include <cairo.h>

#include <memory>

namespace zel {

namespace {

struct SurfaceDeleter {
    void operator()(cairo_surface_t *s) const { cairo_surface_destroy(s); }
};
struct ContextDeleter {
    void operator()(cairo_t *c) const { cairo_destroy(c); }
};
struct PatternDeleter {
    void operator()(cairo_pattern_t *p) const { cairo_pattern_destroy(p); }
};
using Surface = std::unique_ptr<cairo_surface_t, SurfaceDeleter>;
using Context = std::unique_ptr<cairo_t, ContextDeleter>;
using Pattern = std::unique_ptr<cairo_pattern_t, PatternDeleter>;

// Stretches `source` over the W × H page `target`. `source` itself is changed in the larger
// case (the reduced picture is drawn into its own top left corner); the file is not.
void stretch_onto(cairo_surface_t *source, cairo_surface_t *target, int32_t w, int32_t h) {
    const int pw = cairo_image_surface_get_width(source);
    const int ph = cairo_image_surface_get_height(source);
    // A file that is not a PNG comes back as cairo's 0 × 0 error surface. Scaling it up would
    // need an infinite factor, which cairo refuses: the page stays blank either way. A page
    // without pixels has nothing to receive.
    if (pw <= 0 || ph <= 0 || w <= 0 || h <= 0) return;

    Context source_context(cairo_create(source));
    Pattern pattern(cairo_pattern_create_for_surface(source));
    cairo_pattern_set_extend(pattern.get(), CAIRO_EXTEND_NONE);
    Context target_context(cairo_create(target));

    if (pw > w || ph > h) {
        // The fill cannot reach beyond the source's own size, so a picture larger in one
        // direction only loses the part of the stretched picture beyond it. And since the
        // fill reads the surface it writes, an enlarged direction reads rows (or columns)
        // already reduced. Both are deliberate: the pages have always looked so.
        cairo_matrix_t scale;
        cairo_matrix_init_scale(&scale, static_cast<double>(pw) / w, static_cast<double>(ph) / h);
        cairo_pattern_set_matrix(pattern.get(), &scale);
        cairo_set_source(source_context.get(), pattern.get());
        cairo_rectangle(source_context.get(), 0, 0, w, h);
        cairo_fill(source_context.get());
        cairo_set_source_surface(target_context.get(), source, 0, 0);
        cairo_paint(target_context.get());
    } else {
        if (pw < w || ph < h) {
            cairo_scale(target_context.get(), static_cast<double>(w) / pw,
                        static_cast<double>(h) / ph);
        }
        cairo_set_source_surface(target_context.get(), source, 0, 0);
        cairo_paint(target_context.get());
    }
}

cairo_status_t append_png(void *closure, const unsigned char *data, unsigned int length) {
    static_cast<std::string *>(closure)->append(reinterpret_cast<const char *>(data), length);
    return CAIRO_STATUS_SUCCESS;
}

} // namespace

std::vector<uint8_t> paintPicture(const std::string &path, int32_t drawWidth, int32_t drawHeight) {
    std::vector<uint8_t> bitmap;
    if (drawWidth <= 0 || drawHeight <= 0) return bitmap;
    Surface source(cairo_image_surface_create_from_png(path.c_str()));
    const int stride = cairo_format_stride_for_width(CAIRO_FORMAT_ARGB32, drawWidth);
    bitmap.assign(static_cast<std::size_t>(stride) * static_cast<std::size_t>(drawHeight), 0);
    // Unlike a text page, the picture page is not painted black first: it starts all zero.
    Surface target(cairo_image_surface_create_for_data(bitmap.data(), CAIRO_FORMAT_ARGB32,
                                                       drawWidth, drawHeight, stride));
    stretch_onto(source.get(), target.get(), drawWidth, drawHeight);
    cairo_surface_flush(target.get());
    return bitmap;
}

void previewPicture(const std::string &path, int32_t drawWidth, int32_t drawHeight,
                    std::string &pngBytes) {
    Surface source(cairo_image_surface_create_from_png(path.c_str()));
    Surface target(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, drawWidth, drawHeight));
    stretch_onto(source.get(), target.get(), drawWidth, drawHeight);
    cairo_surface_write_to_png_stream(target.get(), append_png, &pngBytes);
}

} // namespace zel

#include "render/text_painter.h"

#include "render/font.h"

namespace zel {
namespace {

// The name of the page file that paintLinesPage leaves in the working directory.
constexpr const char *kLastPageFile = "0.png";

std::size_t bitmap_size(int32_t width, int32_t height) {
    if (width <= 0 || height <= 0) {
        return 0;
    }
    return static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4;
}

void set_up_text(cairo_t *cr, const TKarea &area, const TextPaintStyle &style) {
    area.applyFont(cr, style.fontBold, style.fontItalic);
    TKarea::applyTextColor(cr, style.fontColor);
    cairo_set_font_size(cr, style.fontPixelSize);
}

// The canvas of the bitmap painters: a zeroed buffer of exactly W × H × 4 bytes that cairo paints
// in place and that outlives the surface. A size that is not positive gives an empty buffer and
// cairo's inert error surface, so the painter's calls run through and the page stays blank.
class BitmapCanvas {
  public:
    BitmapCanvas(const TKarea &area, const TextPaintStyle &style)
        : m_buffer(bitmap_size(style.drawWidth, style.drawHeight), 0) {
        if (m_buffer.empty()) {
            m_surface =
                cairo_image_surface_create(CAIRO_FORMAT_ARGB32, style.drawWidth, style.drawHeight);
        } else {
            const int stride = cairo_format_stride_for_width(CAIRO_FORMAT_ARGB32, style.drawWidth);
            m_surface = cairo_image_surface_create_for_data(
                m_buffer.data(), CAIRO_FORMAT_ARGB32, style.drawWidth, style.drawHeight, stride);
        }
        m_cr = cairo_create(m_surface);
        cairo_set_source_rgba(m_cr, 0, 0, 0, 0);
        cairo_paint(m_cr);
        set_up_text(m_cr, area, style);
    }
    ~BitmapCanvas() {
        cairo_destroy(m_cr);
        cairo_surface_destroy(m_surface);
    }
    BitmapCanvas(const BitmapCanvas &) = delete;
    BitmapCanvas &operator=(const BitmapCanvas &) = delete;

    cairo_t *context() const { return m_cr; }
    cairo_surface_t *surface() const { return m_surface; }

    // Hands the painted buffer to the page list; the canvas is done with afterwards.
    void append_to(PageBitmaps &pageBitmaps) {
        cairo_surface_flush(m_surface);
        pageBitmaps.push_back(std::move(m_buffer));
        m_buffer.clear();
    }

  private:
    PageBitmap m_buffer;
    cairo_surface_t *m_surface = nullptr;
    cairo_t *m_cr = nullptr;
};

// The canvas of the preview painters: a surface of cairo's own, written out as PNG.
class PreviewCanvas {
  public:
    PreviewCanvas(const TKarea &area, const TextPaintStyle &style)
        : m_surface(
              cairo_image_surface_create(CAIRO_FORMAT_ARGB32, style.drawWidth, style.drawHeight)),
          m_cr(cairo_create(m_surface)) {
        cairo_set_source_rgba(m_cr, 0, 0, 0, 0);
        cairo_paint(m_cr);
        set_up_text(m_cr, area, style);
    }
    ~PreviewCanvas() {
        cairo_destroy(m_cr);
        cairo_surface_destroy(m_surface);
    }
    PreviewCanvas(const PreviewCanvas &) = delete;
    PreviewCanvas &operator=(const PreviewCanvas &) = delete;

    cairo_t *context() const { return m_cr; }

    void append_png_to(std::string &pngBytes) {
        cairo_surface_write_to_png_stream(m_surface, pngAppend, &pngBytes);
    }

  private:
    cairo_surface_t *m_surface;
    cairo_t *m_cr;
};

cairo_font_extents_t font_extents(cairo_t *cr) {
    cairo_font_extents_t fe{};
    cairo_font_extents(cr, &fe);
    return fe;
}

cairo_text_extents_t text_extents(cairo_t *cr, const std::string &utf8) {
    cairo_text_extents_t te{};
    cairo_text_extents(cr, utf8.c_str(), &te);
    return te;
}

std::string ucs2_to_utf8(std::string text) {
    TKarea::convertUcs2ToUtf8(text);
    return text;
}

// Baseline of line i of n in a page of several lines. Each line is placed by its own ink
// (te.y_bearing), so lines of different ink heights sit a little differently in their rows.
double lines_page_y(uint8_t verticalAlign, double H, double lineH, std::size_t n, std::size_t i,
                    const cairo_font_extents_t &fe, const cairo_text_extents_t &te) {
    const double row = lineH * static_cast<double>(i);
    switch (verticalAlign) {
    case 1:
        return -te.y_bearing + row;
    case 3:
        return H - lineH * (static_cast<double>(n) - 1) - fe.descent + row;
    default:
        return (H - lineH * static_cast<double>(n) + lineH - te.y_bearing) / 2.0 + row;
    }
}

// Pen position of a single line: x and y both integers. Here horizontalAlign 0 means left,
// unlike the pages of several lines where it centres; both stay as they are.
void one_line_position(const TextPaintStyle &style, int32_t textW, const cairo_font_extents_t &fe,
                       const cairo_text_extents_t &te, int32_t &x, int32_t &y) {
    const int32_t W = style.drawWidth;
    const double H = style.drawHeight;
    x = 0;
    if (style.horizontalAlign == 2 && textW < W) {
        x = (W - textW) / 2;
    } else if (style.horizontalAlign == 3 && textW < W) {
        x = W - textW;
    }
    switch (style.verticalAlign) {
    case 0:
    case 2:
        y = truncate_to_int32((H - te.height) / 2.0 - te.y_bearing);
        break;
    case 1:
        y = truncate_to_int32(-te.y_bearing);
        break;
    case 3:
        y = truncate_to_int32(H - fe.descent);
        break;
    default:
        y = truncate_to_int32((H - te.y_bearing) / 2.0);
        break;
    }
}

void draw_one_line(cairo_t *cr, const TKarea &area, const TextPaintStyle &style,
                   const std::string &line) {
    const int32_t textW = measureUcs2Text(area, style, line);
    const std::string utf8 = ucs2_to_utf8(line);
    const cairo_text_extents_t te = text_extents(cr, utf8);
    const cairo_font_extents_t fe = font_extents(cr);
    int32_t x = 0;
    int32_t y = 0;
    one_line_position(style, textW, fe, te, x, y);
    cairo_move_to(cr, x, y);
    cairo_show_text(cr, utf8.c_str());
}

} // namespace

TextScratch::TextScratch(const TKarea &area, int32_t width, int32_t height, double fontPixelSize,
                         uint8_t bold, uint8_t italic, bool antialiasAgain)
    : m_surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height)),
      m_cr(cairo_create(m_surface)) {
    area.applyFont(m_cr, bold, italic);
    cairo_set_font_size(m_cr, fontPixelSize);
    if (antialiasAgain) {
        set_no_antialias(m_cr);
    }
}

TextScratch::~TextScratch() {
    cairo_destroy(m_cr);
    cairo_surface_destroy(m_surface);
}

double guarded_text_width(cairo_t *cr, const std::string &utf8, cairo_text_extents_t *guarded) {
    const cairo_text_extents_t whole = text_extents(cr, "1" + utf8 + "1");
    const cairo_text_extents_t guards = text_extents(cr, "11");
    if (guarded != nullptr) {
        *guarded = whole;
    }
    return whole.width - guards.width;
}

double lineHeight(cairo_t *cr) {
    const cairo_font_extents_t fe = font_extents(cr);
    return fe.ascent + fe.descent;
}

double measureGbkText(const TKarea &area, const TextPaintStyle &style, std::string gbk) {
    TextScratch scratch(area, style.drawWidth, style.drawHeight, style.fontPixelSize,
                        style.fontBold, style.fontItalic);
    TKarea::convertGbkToUtf8(gbk);
    return guarded_text_width(scratch.context(), gbk);
}

int32_t measureUcs2Text(const TKarea &area, const TextPaintStyle &style, std::string ucs2) {
    TextScratch scratch(area, style.drawWidth, style.drawHeight, style.fontPixelSize,
                        style.fontBold, style.fontItalic);
    TKarea::convertUcs2ToUtf8(ucs2);
    return truncate_to_int32(guarded_text_width(scratch.context(), ucs2));
}

void paintLinesPage(const TKarea &area, const TextPaintStyle &style, std::vector<std::string> lines,
                    PageBitmaps &pageBitmaps) {
    BitmapCanvas canvas(area, style);
    cairo_t *cr = canvas.context();
    const cairo_font_extents_t fe = font_extents(cr);
    const double lineH = fe.ascent + fe.descent;
    const double W = style.drawWidth;
    const double H = style.drawHeight;
    const std::size_t n = lines.size();
    for (std::size_t i = 0; i < n; ++i) {
        const std::string utf8 = ucs2_to_utf8(std::move(lines[i]));
        cairo_text_extents_t te{};
        const double textW = guarded_text_width(cr, utf8, &te); // te: the guarded string's
        const double y = lines_page_y(style.verticalAlign, H, lineH, n, i, fe, te);
        double x = 0;
        switch (style.horizontalAlign) {
        case 1:
            x = 0;
            break;
        case 0:
        case 2:
            x = textW < W ? (W - textW) / 2.0 : 0;
            break;
        case 3:
            x = textW < W ? W - textW : 0;
            break;
        default:
            x = (W - textW) / 2.0; // also when negative: the line is clipped on both sides
            break;
        }
        cairo_move_to(cr, x, y);
        cairo_show_text(cr, utf8.c_str());
    }
    // The page file is part of the behaviour hosts see; a read-only directory just gets none.
    cairo_surface_write_to_png(canvas.surface(), kLastPageFile);
    canvas.append_to(pageBitmaps);
}

void previewLinesPage(const TKarea &area, const TextPaintStyle &style,
                      std::vector<std::string> lines, std::string &pngBytes) {
    PreviewCanvas canvas(area, style);
    cairo_t *cr = canvas.context();
    const cairo_font_extents_t fe = font_extents(cr);
    const double lineH = fe.ascent + fe.descent;
    const int32_t W = style.drawWidth;
    const double H = style.drawHeight;
    const std::size_t n = lines.size();
    for (std::size_t i = 0; i < n; ++i) {
        const int32_t textW = measureUcs2Text(area, style, lines[i]);
        const std::string utf8 = ucs2_to_utf8(std::move(lines[i]));
        const cairo_text_extents_t te = text_extents(cr, utf8); // the plain line's, not guarded
        const double y = lines_page_y(style.verticalAlign, H, lineH, n, i, fe, te);
        int32_t x = 0;
        switch (style.horizontalAlign) {
        case 1:
            x = 0;
            break;
        case 0:
        case 2:
            x = textW < W ? (W - textW) / 2 : 0;
            break;
        case 3:
            x = textW < W ? W - textW : 0;
            break;
        default:
            x = (W - textW) / 2;
            break;
        }
        cairo_move_to(cr, x, y);
        cairo_show_text(cr, utf8.c_str());
    }
    canvas.append_png_to(pngBytes);
}

void paintOneLine(const TKarea &area, const TextPaintStyle &style, std::string line,
                  PageBitmaps &pageBitmaps) {
    BitmapCanvas canvas(area, style);
    draw_one_line(canvas.context(), area, style, line);
    canvas.append_to(pageBitmaps);
}

void previewOneLine(const TKarea &area, const TextPaintStyle &style, std::string line,
                    std::string &pngBytes) {
    PreviewCanvas canvas(area, style);
    draw_one_line(canvas.context(), area, style, line);
    canvas.append_png_to(pngBytes);
}

void paintRollSlice(const TKarea &area, const TextPaintStyle &style, std::string gbkText,
                    double offset, PageBitmaps &pageBitmaps) {
    BitmapCanvas canvas(area, style);
    cairo_t *cr = canvas.context();
    set_no_antialias(cr);
    TKarea::convertGbkToUtf8(gbkText);
    const cairo_text_extents_t te = text_extents(cr, gbkText);
    const int32_t y = truncate_to_int32((style.drawHeight - te.height) / 2.0 - te.y_bearing);
    // The whole text is drawn every time; the canvas clips it to this slice.
    cairo_move_to(cr, -offset, y);
    cairo_show_text(cr, gbkText.c_str());
    canvas.append_to(pageBitmaps);
}

void paintLinesAtOffset(const TKarea &area, const TextPaintStyle &style,
                        std::vector<std::string> lines, double startY, PageBitmaps &pageBitmaps) {
    BitmapCanvas canvas(area, style);
    cairo_t *cr = canvas.context();
    const cairo_font_extents_t fe = font_extents(cr);
    double y = startY;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const std::string utf8 = ucs2_to_utf8(std::move(lines[i]));
        y += fe.ascent;
        if (i != 0) {
            y += fe.descent;
        }
        cairo_move_to(cr, 0, y);
        cairo_show_text(cr, utf8.c_str());
    }
    canvas.append_to(pageBitmaps);
}

void paintVerticalRoll(const TKarea &area, const TextPaintStyle &style,
                       std::vector<std::string> lines, int32_t /*unused*/,
                       PageBitmaps &pageBitmaps) {
    const int32_t H = style.drawHeight;
    if (H == 0) {
        return; // no slice height: nothing can be cut (the division below would be by zero)
    }
    double lineH = 0;
    {
        TextScratch scratch(area, style.drawWidth, H, style.fontPixelSize, style.fontBold,
                            style.fontItalic);
        lineH = lineHeight(scratch.context());
    }
    const double column = static_cast<double>(lines.size()) * lineH;
    const int32_t full = truncate_to_int32(column / H);
    double y0 = 0;
    for (int32_t slice = 0; slice < full; ++slice) {
        paintLinesAtOffset(area, style, lines, y0, pageBitmaps);
        y0 -= H;
    }
    const int64_t rest = static_cast<int64_t>(truncate_to_int32(column)) % H;
    if (rest != 0) {
        paintLinesAtOffset(area, style, lines, y0, pageBitmaps);
    }
}

cairo_status_t pngAppend(void *closure, const unsigned char *data, unsigned int length) {
    static_cast<std::string *>(closure)->append(reinterpret_cast<const char *>(data), length);
    return CAIRO_STATUS_SUCCESS;
}

} // namespace zel

#include "render/line_breaking.h"

#include <algorithm>
#include <limits>

#include "render/area.h"
#include "render/text_painter.h"

namespace zel {

namespace {

// Candidates for the extreme ink edges are chosen with approximate edges; anything within this
// many pixels of the extreme is kept, and cairo decides among them exactly. Rounding errors of
// the approximation are some 1e-12 pixels.
constexpr double kEdgeSlack = 1.0 / 64.0;

int32_t truncated(double width) {
    return static_cast<int32_t>(width);
}

} // namespace

int32_t LiteralPrefixMeasurer::prefix_width(std::size_t start, std::size_t end) {
    std::string utf8 = m_text.substr(start, end - start);
    TKarea::convertUcs2ToUtf8(utf8);
    return truncated(guarded_text_width(m_cr, utf8));
}

IncrementalPrefixMeasurer::IncrementalPrefixMeasurer(cairo_t *cr, const std::string &ucs2)
    : m_cr(cr), m_literal(cr, ucs2) {
    m_font = cairo_get_scaled_font(cr);
    std::string utf8 = ucs2;
    TKarea::convertUcs2ToUtf8(utf8);

    cairo_glyph_t *glyphs = nullptr;
    int count = 0;
    const auto laidOut = [&](const std::string &text) {
        glyphs = nullptr;
        count = 0;
        return cairo_scaled_font_text_to_glyphs(m_font, 0.0, 0.0, text.data(),
                                                static_cast<int>(text.size()), &glyphs, &count,
                                                nullptr, nullptr, nullptr) == CAIRO_STATUS_SUCCESS;
    };
    const auto metrics_of = [&](unsigned long index) {
        cairo_glyph_t one{index, 0.0, 0.0};
        cairo_text_extents_t e;
        cairo_scaled_font_glyph_extents(m_font, &one, 1, &e);
        // At position 0 cairo's x_bearing and x_advance come back exactly; the width comes
        // back as (bearing + width) - bearing, close enough for choosing candidates.
        return Glyph{index, e.x_bearing, e.width, e.x_advance, e.width != 0.0 && e.height != 0.0};
    };

    if (ucs2.size() % 2 != 0 || cairo_status(cr) != CAIRO_STATUS_SUCCESS ||
        cairo_scaled_font_status(m_font) != CAIRO_STATUS_SUCCESS) {
        m_fallback = true;
        return;
    }
    if (!laidOut(utf8) || static_cast<std::size_t>(count) != ucs2.size() / 2) {
        cairo_glyph_free(glyphs);
        m_fallback = true;
        return;
    }
    m_glyphs.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        m_glyphs.push_back(metrics_of(glyphs[i].index));
    cairo_glyph_free(glyphs);

    if (!laidOut("1") || count != 1) {
        cairo_glyph_free(glyphs);
        m_fallback = true;
        return;
    }
    m_guard = metrics_of(glyphs[0].index);
    cairo_glyph_free(glyphs);

    cairo_text_extents_t pair;
    cairo_text_extents(cr, "11", &pair);
    m_guardPairWidth = pair.width;
    // cairo lays a measured string out from the current point, when there is one.
    if (cairo_has_current_point(cr)) cairo_get_current_point(cr, &m_originX, &m_originY);
}

void IncrementalPrefixMeasurer::startLine(std::size_t start) {
    m_lineStart = start;
    m_lineEnd = start;
    m_pen = m_originX;
    m_pen += m_guard.advance; // the leading guard
    m_leftmost.clear();
    m_rightmost.clear();
    m_leastLeft = std::numeric_limits<double>::infinity();
    m_mostRight = -std::numeric_limits<double>::infinity();
}

void IncrementalPrefixMeasurer::add_glyph(std::size_t glyph) {
    const Glyph &g = m_glyphs[glyph];
    const double x = m_pen;
    m_pen += g.advance;
    if (!g.visible) return;

    const double left = g.xBearing + x; // exactly cairo's left edge
    const Placed placed{glyph, x, left, left + g.inkWidth};
    if (left <= m_leastLeft + kEdgeSlack) {
        m_leftmost.push_back(placed);
        if (left < m_leastLeft) {
            m_leastLeft = left;
            std::erase_if(m_leftmost,
                          [&](const Placed &p) { return p.left > m_leastLeft + kEdgeSlack; });
        }
    }
    if (placed.right >= m_mostRight - kEdgeSlack) {
        m_rightmost.push_back(placed);
        if (placed.right > m_mostRight) {
            m_mostRight = placed.right;
            std::erase_if(m_rightmost,
                          [&](const Placed &p) { return p.right < m_mostRight - kEdgeSlack; });
        }
    }
}

int32_t IncrementalPrefixMeasurer::prefix_width(std::size_t start, std::size_t end) {
    if (m_fallback) return m_literal.prefix_width(start, end);
    if (start != m_lineStart || end < m_lineEnd) startLine(start);
    for (; m_lineEnd < end; m_lineEnd += 2)
        add_glyph(m_lineEnd / 2);

    // The guarded string reduced to what can decide its ink extents: both guards and the
    // glyphs nearest to the extreme edges, each at its exact position.
    m_run.clear();
    m_run.push_back({m_guard.index, m_originX, m_originY});
    for (const Placed &p : m_leftmost)
        m_run.push_back({m_glyphs[p.glyph].index, p.x, m_originY});
    for (const Placed &p : m_rightmost)
        m_run.push_back({m_glyphs[p.glyph].index, p.x, m_originY});
    m_run.push_back({m_guard.index, m_pen, m_originY});

    cairo_text_extents_t e;
    cairo_scaled_font_glyph_extents(m_font, m_run.data(), static_cast<int>(m_run.size()), &e);
    return truncated(e.width - m_guardPairWidth);
}

std::vector<std::string> break_lines(const std::string &ucs2, int32_t width,
                                     PrefixMeasurer &measurer) {
    std::vector<std::string> lines;
    const std::size_t size = ucs2.size();
    std::size_t start = 0; // where the rest of the text begins
    std::size_t i = 0;     // byte index into the rest, in steps of one code unit
    for (;;) {
        if (start + i >= size) {
            lines.push_back(ucs2.substr(start)); // even when empty
            return lines;
        }
        const auto low = static_cast<uint8_t>(ucs2[start + i]);
        const auto high = start + i + 1 < size ? static_cast<uint8_t>(ucs2[start + i + 1]) : 0;
        const bool lineFeed = low == 0x0A && high == 0;
        // A carriage return in last place is an ordinary character. The LF of a CR LF pair is
        // not consumed with the CR, so the pair yields an extra empty line; hosts have come to
        // expect that blank line.
        const bool carriageReturn = low == 0x0D && high == 0 && start + i + 2 < size;
        if (lineFeed || carriageReturn) {
            lines.push_back(ucs2.substr(start, i));
            start += i + 2;
            i = 0;
            continue;
        }
        i += 2;
        if (measurer.prefix_width(start, start + i) <= width) continue;
        if (i == 2) {
            // Not even the first character fits: the rest stays on one line, unbroken.
            lines.push_back(ucs2.substr(start));
            return lines;
        }
        lines.push_back(ucs2.substr(start, i - 2));
        start += i - 2;
        i = 0;
    }
}

void paginate_lines(const std::vector<std::string> &lines, double lineHeight, int32_t pageHeight,
                    std::vector<std::string> &currentLines,
                    std::vector<std::vector<std::string>> &pages) {
    double height = 0.0;
    for (const std::string &line : lines) {
        height += lineHeight;
        if (height > pageHeight) {
            if (!currentLines.empty()) pages.push_back(currentLines);
            currentLines.clear();
            height = lineHeight;
        }
        currentLines.push_back(line);
    }
    if (!currentLines.empty()) pages.push_back(currentLines);
}

} // namespace zel

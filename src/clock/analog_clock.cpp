// The analog clock: its dial, painted or given as a picture, and its preview in a fixed pose.
#include "clock/analog_clock.h"

#include <cairo.h>

#include <algorithm>
#include <cmath>
#include <memory>

#include "clock/clock_canvas.h"
#include "clock/time_area.h"
#include "render/picture.h"

namespace zel {
namespace {

constexpr uint32_t kDialStrokes = 0;
constexpr uint32_t kDialDots = 1;
constexpr uint32_t kDialCircle = 2;
constexpr double kHourMarkWidth = 2.0;
constexpr double kMinuteMarkWidth = 1.0;
constexpr double kHandWidth = 2.0;
constexpr double kAxisTick = 2.0; // the preview's short strokes

bool is_hour_mark(int i) {
    return i % 3 == 0;
}

// The strokes of dial styles 0 and 2: the four hour marks, then the eight others.
void stroke_marks(cairo_t *cr, const DialGeometry &dial, const DialMarkColors &colors) {
    for (const bool hours : {true, false}) {
        cairo_set_line_width(cr, hours ? kHourMarkWidth : kMinuteMarkWidth);
        TKarea::applyTextColor(cr, hours ? colors.hourMarkColor : colors.minuteMarkColor);
        for (int i = 1; i <= 12; ++i) {
            if (is_hour_mark(i) != hours) continue;
            const DialMark m = dial_mark(dial, i);
            cairo_move_to(cr, m.innerX, m.innerY);
            cairo_line_to(cr, m.outerX, m.outerY);
        }
        cairo_stroke(cr);
    }
}

void dot_marks(cairo_t *cr, const DialGeometry &dial, const DialMarkColors &colors) {
    for (const bool hours : {true, false}) {
        TKarea::applyTextColor(cr, hours ? colors.hourMarkColor : colors.minuteMarkColor);
        cairo_set_line_width(cr, hours ? kHourMarkWidth : kMinuteMarkWidth);
        for (int i = 1; i <= 12; ++i) {
            if (is_hour_mark(i) != hours) continue;
            const DialMark m = dial_mark(dial, i);
            cairo_move_to(cr, m.outerX, m.outerY);
            cairo_rectangle(cr, m.outerX, m.outerY, 1.0, 1.0);
        }
        cairo_stroke(cr);
    }
}

void segment(cairo_t *cr, double x0, double y0, double x1, double y1) {
    cairo_move_to(cr, x0, y0);
    cairo_line_to(cr, x1, y1);
}

// The preview's four short strokes at the ends of the axes, by the shape of the area.
void axis_ticks(cairo_t *cr, const DialGeometry &dial, double w, double h) {
    const double cx = dial.markX;
    const double cy = dial.markY;
    const double r = dial.radius;
    const double t = kAxisTick;
    if (w > h) {
        segment(cr, cx, 0, cx, t);
        segment(cr, cx, h - t, cx, h);
        segment(cr, cx + r - t, cy, cx + r, cy);
        segment(cr, cx - r - t, cy, cx - r, cy);
    } else if (w == h) {
        segment(cr, cx, 0, cx, t);
        segment(cr, w - t, cy, w, cy);
        segment(cr, cx, cy + r - t, cx, cy + r);
        segment(cr, 0, cy, t, cy);
    } else {
        segment(cr, cx, cy - r - t, cx, cy - r);
        segment(cr, cx, cy + r - t, cx, cy + r);
        segment(cr, w - t, cy, w, cy);
        segment(cr, 0, cy, t, cy);
    }
}

struct SurfaceDeleter {
    void operator()(cairo_surface_t *s) const { cairo_surface_destroy(s); }
};

} // namespace

DialGeometry dial_geometry(uint32_t style, int32_t width, int32_t height) {
    const int32_t smaller = std::min(width, height);
    DialGeometry g;
    g.markX = width / 2;
    g.markY = height / 2;
    g.circleX = g.markX;
    g.circleY = g.markY;
    g.radius = smaller / 2;
    if (style == kDialDots) {
        g.radius = smaller / 2 - 1;
    } else if (style == kDialCircle) {
        g.circleX = width / 2.0;
        g.circleY = height / 2.0;
        g.radius = smaller / 2.0;
    }
    return g;
}

DialMark dial_mark(const DialGeometry &dial, int i) {
    const double a = i * kHalfTurn / 6.0;
    const double c = std::cos(a);
    const double s = std::sin(a);
    return {dial.markX + c * (dial.radius - kMarkLength),
            dial.markY + s * (dial.radius - kMarkLength), dial.markX + c * dial.radius,
            dial.markY + s * dial.radius};
}

void TimeArea::paintDial(std::vector<uint8_t> &rgba) const {
    ClockCanvas canvas(rgba, drawWidth, drawHeight);
    cairo_t *cr = canvas.cr();
    canvas.clear();
    const DialGeometry dial = dial_geometry(dialStyle, drawWidth, drawHeight);
    if (dialStyle == kDialStrokes) {
        set_shapes_antialias_none(cr);
        stroke_marks(cr, dial, markColors);
    } else if (dialStyle == kDialDots) {
        set_shapes_antialias_none(cr);
        dot_marks(cr, dial, markColors);
    } else if (dialStyle == kDialCircle) {
        set_shapes_antialias_none(cr);
        cairo_set_line_width(cr, kMinuteMarkWidth);
        applyTextColor(cr, markColors.circleColor);
        cairo_arc(cr, dial.circleX, dial.circleY, dial.radius, 0, kFullTurn);
        cairo_stroke(cr);
        stroke_marks(cr, dial, markColors);
    }
    // Any other style: an empty dial; the clock is still written with its item.
    canvas.write_png_file("1-2-3.png");
}

void TimeArea::paintDialPicture(std::vector<uint8_t> &rgba) const {
    std::unique_ptr<cairo_surface_t, SurfaceDeleter> image(
        cairo_image_surface_create_from_png(dialPicturePath.c_str()));
    const int iw = cairo_image_surface_get_width(image.get());
    const int ih = cairo_image_surface_get_height(image.get());
    // A missing or unreadable PNG is cairo's 0 × 0 error surface; scaling it would take an
    // infinite factor, which paints nothing: the dial stays clear, without a message.
    if (iw <= 0 || ih <= 0) return;
    ClockCanvas canvas(rgba, drawWidth, drawHeight);
    cairo_t *cr = canvas.cr();
    if (iw != drawWidth || ih != drawHeight) {
        // Stretched to the area, proportions ignored.
        cairo_scale(cr, static_cast<double>(drawWidth) / iw, static_cast<double>(drawHeight) / ih);
    }
    cairo_set_source_surface(cr, image.get(), 0, 0);
    cairo_paint(cr);
}

void TimeArea::paint_analog_preview(std::string &png) const {
    if (dialPictureFlag != 0) {
        previewPicture(dialPicturePath, drawWidth, drawHeight, png);
        return;
    }
    ClockCanvas canvas(drawWidth, drawHeight);
    cairo_t *cr = canvas.cr();
    canvas.clear();
    // Nothing sets the preview's colour: the preview is black on transparent, whatever the
    // hands' colours are.
    applyTextColor(cr, previewHandColor);
    const double w = drawWidth;
    const double h = drawHeight;
    if (dialStyle == kDialStrokes || dialStyle == kDialDots) {
        const DialGeometry dial = dial_geometry(dialStyle, drawWidth, drawHeight);
        set_shapes_antialias_none(cr);
        cairo_set_line_width(cr, kMinuteMarkWidth);
        if (dialStyle == kDialStrokes) {
            axis_ticks(cr, dial, w, h);
            for (int i = 1; i <= 12; ++i) {
                if (is_hour_mark(i)) continue;
                const DialMark m = dial_mark(dial, i);
                segment(cr, m.outerX - kAxisTick, m.outerY - kAxisTick, m.outerX, m.outerY);
            }
        } else {
            for (int i = 1; i <= 12; ++i) {
                const DialMark m = dial_mark(dial, i);
                cairo_rectangle(cr, m.outerX, m.outerY, 1.0, 1.0);
            }
        }
        cairo_stroke(cr);
        // The hands in their fixed pose, their lengths read from the short record (a G6 area
        // in the medium or long form has zeros there and shows zero lengths).
        const double hourLength = handRecord[6];
        const double minuteLength = handRecord[9];
        const double cx = dial.markX;
        const double cy = dial.markY;
        cairo_set_line_width(cr, kHandWidth);
        segment(cr, cx, cy, cx, cy - hourLength);
        cairo_stroke(cr);
        segment(cr, cx, cy, cx + minuteLength, cy);
        cairo_stroke(cr);
        segment(cr, cx, cy, cx + std::cos(kPreviewThirdHandAngle) * dial.radius,
                cy + std::sin(kPreviewThirdHandAngle) * dial.radius);
        cairo_stroke(cr);
    } else if (dialStyle == kDialCircle) {
        // The preview's circle lies around the integer centre, a pixel inside; no hands.
        const DialGeometry dial = dial_geometry(kDialDots, drawWidth, drawHeight);
        set_shapes_antialias_none(cr);
        cairo_set_line_width(cr, kMinuteMarkWidth);
        cairo_arc(cr, dial.markX, dial.markY, dial.radius, 0, kFullTurn);
        cairo_stroke(cr);
    }
    canvas.append_png(png);
}

} // namespace zel

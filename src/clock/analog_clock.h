// The geometry of a painted dial. The dial is a bitmap that never changes; the controller draws
// the hands over it. The constants are the literals the dials have always been drawn with.
#pragma once

#include <cstdint>

namespace zel {

inline constexpr double kHalfTurn = 3.1415926;
inline constexpr double kFullTurn = 6.2831852;
inline constexpr double kMarkLength = 4.0; // the stroke of a mark, inwards from the radius
// The third hand of the preview's fixed pose.
inline constexpr double kPreviewThirdHandAngle = 2.6179938333333332;

// Centre and radius of a dial of `style` on a width × height area. Style 0 works in integer
// halves, style 1 one pixel inside them; style 2 draws its circle around the exact centre
// (halves in double) but places its marks around the integer one, with the exact radius.
struct DialGeometry {
    double circleX = 0; // style 2: the circle's centre
    double circleY = 0;
    double markX = 0; // the centre of the marks
    double markY = 0;
    double radius = 0;
};
DialGeometry dial_geometry(uint32_t style, int32_t width, int32_t height);

// Mark `i` (1 to 12, clockwise from three o'clock, since y grows downwards): a stroke from
// `inner` to `outer` for dial styles 0 and 2, a dot at `outer` for style 1.
struct DialMark {
    double innerX = 0;
    double innerY = 0;
    double outerX = 0;
    double outerY = 0;
};
DialMark dial_mark(const DialGeometry &dial, int i);

} // namespace zel

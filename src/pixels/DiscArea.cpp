#include "pixels/DiscArea.h"

#include <algorithm>
#include <cmath>

namespace thermopix {

namespace {

/// The integral of √(radius² − t²) from 0 to x.
double areaUnderArc(double radius, double x) {
    return (x * std::sqrt(std::max(0.0, radius * radius - x * x)) + radius * radius * std::asin(x / radius)) / 2;
}

/// The area shared with the rectangle between the origin and (x, y); negative where exactly one of them is.
double cornerArea(double radius, double x, double y) {
    const double width = std::min(std::abs(x), radius);
    const double height = std::min(std::abs(y), radius);
    // Left of this column the rectangle's far edge lies inside the disc, right of it the arc is the limit.
    const double arcStart = std::min(width, std::sqrt(radius * radius - height * height));
    const double area = arcStart * height + areaUnderArc(radius, width) - areaUnderArc(radius, arcStart);
    return std::signbit(x) == std::signbit(y) ? area : -area;
}

}  // namespace

double discArea(double radius, double left, double top, double right, double bottom) {
    return cornerArea(radius, right, bottom) - cornerArea(radius, left, bottom) - cornerArea(radius, right, top) +
           cornerArea(radius, left, top);
}

}  // namespace thermopix

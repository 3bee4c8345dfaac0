#pragma once

namespace thermopix {

/// The area that a disc around the origin shares with the rectangle from (left, top) to (right, bottom); exact, by
/// the closed form of the integral.
[[nodiscard]] double discArea(double radius, double left, double top, double right, double bottom);

}  // namespace thermopix

#pragma once

#include <span>

namespace verenwick {

/// Value of a table at x: on a straight line between two of its rows, and beyond the table on the
/// line of the outermost two.
/// @param xs     ascending, two rows or more
/// @param values as many
double interpolate(std::span<const double> xs, std::span<const double> values, double x);

}  // namespace verenwick

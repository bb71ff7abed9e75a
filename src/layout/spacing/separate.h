#pragma once

#include <vector>

namespace norvelis::layout {

/// Moves wishes, ascending, as little as possible in all (least squares) so that each keeps its distance from
/// the one before; distance[0] is not looked at. Pool adjacent violators: Barlow, Bartholomew, Bremner,
/// Brunk: Statistical inference under order restrictions (1972).
std::vector<double> Separate(const std::vector<double>& wishes, const std::vector<double>& distance);

/// The same with one distance for all, made smaller when need be, within lo to hi.
std::vector<double> SeparateWithin(const std::vector<double>& wishes, double distance, double lo, double hi);

}  // namespace norvelis::layout

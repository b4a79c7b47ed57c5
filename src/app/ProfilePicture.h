// The picture of a reduction, drawn by gnuplot.
#pragma once

#include <string>
#include <vector>

#include "search/decide/ReductionProfile.h"

namespace starsift {

/// Fatal if gnuplot can't be run.
void requireGnuplot();

/// What gnuplot reads to draw the curves, and beside them all but the first one again.
std::string profileScript(const std::vector<ProfileCurve>& curves);

/// Draws the curves into an SVG file, whole or not at all. Fatal if that fails.
void drawProfile(const std::vector<ProfileCurve>& curves, const std::string& path);

}  // namespace starsift

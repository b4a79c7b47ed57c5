// The job of the command starsift: to check a solution file against its problem.
#pragma once

#include <functional>
#include <iosfwd>
#include <string>

#include "files/StarLines.h"
#include "lattice/YLattice.h"

namespace starsift {

/// Checks the stars of solFile against the problem beside it, removes wrong and duplicate stars,
/// rewrites the file in canonical form or removes it, and writes
/// the report of the solutions without a final line end.
///
/// A file that can't be read, has a wrong form or can't be written is fatal
/// (see system/Failure.h), and a number without its integer part throws; solFile is
/// then unchanged. `lattice` is fresh; it is used if the stars can't be held as lines. `watch` is
/// called now and then while stars are checked.
void siftStars(
    YLattice<long double>& lattice, const std::string& solFile, std::ostream& report,
    const std::function<void(const ReadProgress&)>& watch = [](const ReadProgress&) {});

/// Sorts the stars, which must be right, keeps one for each point, and writes their report;
/// `stars` is a YLattice or a YSolutionFile.
template <class Stars>
void reportStars(Stars& stars, std::ostream& report) {
  // The file keeps stars that differ in their parameters; the report doesn't.
  stars.sortStars();
  stars.removeDuplicates(Duplicates::ofPoint);
  stars.writeSolutions(report);
}

/// Sorts the stars and removes duplicates. Stars that differ in their parameters are not
/// duplicates.
template <class Stars>
void tidyStars(Stars& stars) {
  stars.sortStars();
  stars.removeDuplicates(Duplicates::ofPointAndParams);
}

}  // namespace starsift

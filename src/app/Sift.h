// The job of the command starsift: a solution file against its problem.
#pragma once

#include <iosfwd>
#include <string>

#include "lattice/YLattice.h"

namespace starsift {

/// Re-validates the stars of solFile against the problem beside it, drops what
/// fails or repeats, rewrites the file in canonical form or removes it, and writes
/// the report of the solutions without a final line end.
///
/// A file that can't be read, has a wrong form or can't be written ends the process
/// (see system/Failure.h), and a number without its integer part throws; solFile is
/// then unchanged. `lattice` is fresh and holds problem and stars in the end.
void siftStars(YLattice<long double>& lattice, const std::string& solFile, std::ostream& report);

/// The report of stars that are right and sorted; `stars` is a YLattice or a YSolutionFile. Of
/// those that differ in their parameters only one is left.
template <class Stars>
void reportStars(Stars& stars, std::ostream& report) {
  // The file keeps stars that differ in their parameters; the report doesn't.
  stars.sortStars();
  stars.removeDuplicates(Duplicates::ofPoint);
  stars.writeSolutions(report);
}

/// Sorts the stars and drops those that repeat. Stars that differ in their parameters are no
/// repetition.
template <class Stars>
void tidyStars(Stars& stars) {
  stars.sortStars();
  stars.removeDuplicates(Duplicates::ofPointAndParams);
}

}  // namespace starsift

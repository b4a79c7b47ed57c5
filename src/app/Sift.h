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
/// (see core/Failure.h), and a number without its integer part throws; solFile is
/// then unchanged. `lattice` is fresh and holds problem and stars in the end.
void siftStars(YLattice<long double>& lattice, const std::string& solFile, std::ostream& report);

/// The part of siftStars() behind the reading, on a lattice that is in the standard
/// precision if problem and stars allow it.
void saveStars(YLattice<long double>& lattice, std::ostream& report);

/// Writes the stars to their file, or removes it where there is none.
void writeStars(YLattice<long double>& lattice);

/// Drops the stars that fail or repeat, and sorts the others. Stars that differ in their
/// parameters are no repetition.
void cleanStars(YLattice<long double>& lattice);

}  // namespace starsift

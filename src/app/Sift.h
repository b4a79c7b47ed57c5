// The job of the command: a solution file against its problem.
#pragma once

#include <iosfwd>
#include <string>

namespace starsift {

/// Re-validates the stars of solFile against the problem beside it, drops what
/// fails or repeats, rewrites the file in canonical form or removes it, and
/// prints the report of the solutions without a final line end.
///
/// Throws Exception when a file can't be read, has a wrong form or can't be
/// written; the file is then unchanged.
void siftStars(const std::string& solFile, std::ostream& report);

}  // namespace starsift

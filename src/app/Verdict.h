// What the result of a search proves, in words and for scripts.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>

#include "core/Index.h"
#include "search/decide/Decider.h"

namespace starsift {

/// The end of a search.
struct SearchResult {
  /// The complete search; a default one if there was none.
  Decided decided;
  /// Every point within the tolerance of the equations satisfies them exactly.
  bool equationsAreExact = true;
  bool hasTargets = false;
  /// There are stars, known or found.
  bool hasStars = false;
  /// Solutions that this search has found.
  Index solutions = 0;
  /// Target norm of the first star, if there are targets and stars.
  std::optional<QQ> best;
  Index passes = 0;
  double seconds = 0;
  /// Of the random changes.
  std::uint64_t seed = 0;
};

/// Writes the lines below the report of the stars: what was proved, or that nothing was.
void writeVerdict(std::ostream& stream, const SearchResult& result);

/// The line for scripts, a JSON object without line feed.
std::string jsonLine(const SearchResult& result);

}  // namespace starsift

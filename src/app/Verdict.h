// What the result of a search proves, in words and for scripts.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/ProofRemark.h"
#include "app/SolutionSink.h"
#include "core/Index.h"
#include "search/decide/Decider.h"

namespace starsift {

/// How far a part of a complete search is.
struct PartResult {
  unsigned part = 1;
  unsigned parts = 1;
  std::size_t subtrees = 0;
  std::size_t done = 0;
  /// All its subtrees are done.
  bool isComplete = false;
};

/// The end of a search.
struct SearchResult {
  /// Those that there are if that is proved, else those that were found, kept or only counted.
  std::uint64_t count() const;
  /// What is proved leaves open whether equations hold within their tolerance elsewhere.
  bool isExactOnly() const { return decided.isComplete() && !scope.equationsAreExact; }
  /// What is proved concerns multiples of the steps of variables with decimals.
  bool isStepsOnly() const { return decided.isComplete() && scope.hasSteps; }
  bool isUnbounded() const { return decided.undecided == Undecided::unbounded; }

  /// The complete search; a default one if there was none.
  Decided decided;
  /// Of the problem.
  ProofScope scope{.equationsAreExact = true};
  bool hasTargets = false;
  /// Solutions were counted without being compared or kept: nothing is known of the best one.
  bool isCount = false;
  /// There are stars, known or found.
  bool hasStars = false;
  /// There are stars at points that searches don't look at: see SearchedPoints.h.
  bool hasOtherStars = false;
  /// Solutions that this search has found.
  Index solutions = 0;
  /// Least target norm of the stars, if there are targets and stars; if something is proved, of
  /// those at points that searches look at.
  std::optional<QQ> best;
  Index passes = 0;
  double seconds = 0;
  /// Only of the search of a part, or of the whole as the only one.
  std::optional<PartResult> part;
  /// Parts that were not there, or not complete, when parts were joined.
  std::vector<unsigned> missing{};
  /// Of the random changes.
  std::uint64_t seed = 0;
};

/// Sets what is known of the stars of `sink`; what was decided is there.
void takeStars(const SolutionSink& sink, SearchResult& result);

/// The end of a search by a fatal report that proves that there is no solution.
SearchResult provedBy(std::string_view message, SearchResult found);

/// Writes the lines below the report of the stars: what was proved, or that nothing was.
void writeVerdict(std::ostream& stream, const SearchResult& result);

/// The line for scripts, a JSON object without line feed.
std::string jsonLine(const SearchResult& result);

}  // namespace starsift

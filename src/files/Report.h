// Console reports of solutions: texts only, the caller prints them.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

#include "stars/PackedStars.h"
#include "stars/Star.h"
#include "stars/StarLine.h"

namespace starsift {

/// A duration in the largest unit that it reaches, with a suffix that names the
/// fields shown: "1:05 min(s):sec(s)".
std::string timeText(std::uint64_t seconds);

/// One star with its target values, each followed by its goal in `goals` (one per
/// target row): an arrow up or down, or an arrow and the wanted value. A star
/// with the slack norm -1 shows only its vector.
template <class T>
std::string starReport(const Star<T>& star, const Vector<T>& goals);

/// A line feed, then all stars, "---" between two of them.
template <class T>
std::string solutionsText(const Array<Star<T>>& stars, const Vector<T>& goals);

/// Writes solutionsText() piece by piece.
template <class T>
void writeSolutions(std::ostream& stream, const Array<Star<T>>& stars, const Vector<T>& goals);

/// The same for packed stars, whose numbers T must hold.
template <class T>
void writeSolutions(std::ostream& stream, const PackedStars& stars, const Vector<T>& goals);

/// The same for stars that are held as lines, of which the first one of each point is shown;
/// composed by a second thread.
template <class T>
void writeSolutions(std::ostream& stream, const std::vector<StarLine>& lines,
                    const Vector<T>& goals);

/// The state of a running search that statusText() reports.
template <class T>
struct SearchStatus {
  /// The search has an aggregated target.
  bool hasTarget = false;
  /// Of the best target vector: +inf while there is none.
  T bestTargetNorm = NumberTraits<T>::infinity();
  T bestSlackNorm = T();
  std::int64_t bestTime = 0;
  /// A benchmark run doesn't count its solutions.
  bool benchmark = false;
  /// Discovery times in seconds, in the order of discovery.
  Array<std::int64_t> solutionTimes;
  /// Solutions without a discovery time here, found after the others.
  Index furtherSolutions = 0;
};

/// The best target and the first three solutions of a search; solutions of the same second share
/// one time.
template <class T>
std::string statusText(const SearchStatus<T>& status);

extern template std::string starReport(const Star<long double>&, const Vector<long double>&);
extern template std::string solutionsText(const Array<Star<long double>>&,
                                          const Vector<long double>&);
extern template void writeSolutions(std::ostream&, const Array<Star<long double>>&,
                                    const Vector<long double>&);
extern template void writeSolutions(std::ostream&, const std::vector<StarLine>&,
                                    const Vector<long double>&);
extern template std::string statusText(const SearchStatus<long double>&);

}  // namespace starsift

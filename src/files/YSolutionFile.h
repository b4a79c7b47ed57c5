// A solution file in two precisions: long double while that holds every number, exact rationals
// otherwise. TwoPrecisions.h describes how it moves from one to the other.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>

#include "files/SolutionFile.h"
#include "numbers/QQ.h"
#include "numbers/TwoPrecisions.h"

namespace starsift {

/// The operations of SolutionFile on the live form.
class YSolutionFile {
 public:
  /// Copies problem and paths; the stars stay.
  template <class T>
  void takeProblem(const SolutionFile<T>& source) {
    files_.useExtended();
    files_.exact().convertProblemFrom(source);
    files_.tryStandard();
  }

  /// The number of the problem, the same in both forms.
  std::uint64_t problemNumber() const;
  const std::string& path() const;

  bool hasStars() const { return starCount() > 0; }
  Index starCount() const;
  /// Empty without stars.
  std::optional<QQ> leastTargetNorm() const;
  /// Adds the right stars of the file; see SolutionFile::mergeFile().
  void mergeFile();
  void sortStars();
  void removeDuplicates(Duplicates duplicates);
  /// Appends stars that were judged to solve the problem with the number `problem`; they aren't
  /// checked again. Fatal if this record has another problem: "The stars solve another problem".
  void addStars(Array<Star<QQ>> judged, std::uint64_t problem);

  /// See SolutionFile.
  Commit writeIfCurrent();
  /// The text that write() would write in exact numbers.
  std::string text() const;
  /// Console report of the stars.
  void writeSolutions(std::ostream& stream) const;

 private:
  TwoPrecisions<SolutionFile<long double>, SolutionFile<QQ>> files_;
};

}  // namespace starsift

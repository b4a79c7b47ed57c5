// A solution file in two precisions: long double as long as that holds every number, exact
// rationals otherwise. How it moves from one to the other is in TwoPrecisions.h.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>

#include "files/SolutionFile.h"
#include "numbers/QQ.h"
#include "numbers/TwoPrecisions.h"

namespace starsift {

/// The verbs of SolutionFile on the live form.
class YSolutionFile {
 public:
  /// Takes problem and paths; the stars stay.
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
  /// Appends the stars of the file, each number read as a rational. True if there was one.
  bool readStarsExactly();
  /// From the star at index `first` on.
  bool checkStars(Index first = 1);
  void sortStars();
  void removeDuplicates(Duplicates duplicates);
  /// Appends stars that solve the problem with the number `problem`, which isn't checked again.
  /// Fatal if this isn't that problem: "The stars solve another problem".
  void addStars(Array<Star<QQ>> judged, std::uint64_t problem);

  /// Writes the stars to the path. Returns what is there then.
  WrittenFile write();
  /// The text that write() would write in exact numbers.
  std::string text() const;
  /// What the console shows of the stars.
  void writeSolutions(std::ostream& stream) const;

 private:
  TwoPrecisions<SolutionFile<long double>, SolutionFile<QQ>> files_;
};

}  // namespace starsift

// The stars of a search and their problem, in few bytes a star. Numbers are written as long double
// while that holds every number, as exact rationals otherwise.
#pragma once

#include <cstdint>
#include <functional>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>

#include "files/SolutionFile.h"
#include "numbers/QQ.h"
#include "problem/Exactness.h"
#include "problem/SearchedPoints.h"
#include "stars/PackedStars.h"

namespace starsift {

/// The operations of SolutionFile on packed stars.
class YSolutionFile {
 public:
  YSolutionFile() = default;
  // A part of it looks at the problem of another part.
  YSolutionFile(const YSolutionFile&) = delete;
  YSolutionFile& operator=(const YSolutionFile&) = delete;
  ~YSolutionFile() = default;

  /// Copies problem and paths; the stars stay.
  template <class T>
  void takeProblem(const SolutionFile<T>& source) {
    file_.convertProblemFrom(source);
    problemFits_ = fitsLongDouble(file_.problem());
    searched_.emplace(file_.problem());
  }

  /// The number of the problem, the same as in its source.
  std::uint64_t problemNumber() const { return file_.problemNumber(); }
  const std::string& path() const { return file_.path(); }

  bool hasStars() const { return !stars_.isEmpty(); }
  Index starCount() const { return static_cast<Index>(stars_.size()); }
  /// Empty without stars.
  std::optional<QQ> leastTargetNorm() const;
  /// The same among the stars at points that searches look at.
  const std::optional<QQ>& leastSearchedNorm() const { return leastSearchedNorm_; }
  /// There are stars at other points.
  bool hasOtherStars() const { return hasOtherStars_; }
  /// Adds the right stars of the file; see SolutionFile::mergeFile().
  void mergeFile();
  void sortStars();
  void removeDuplicates(Duplicates duplicates);
  /// Appends a star that was judged to solve the problem; it isn't checked again.
  void addStar(const Star<QQ>& judged);
  /// Appends stars that were judged to solve the problem with the number `problem`. Fatal if this
  /// record has another problem: "The stars solve another problem".
  void addStars(const Array<Star<QQ>>& judged, std::uint64_t problem);

  /// Writes the stars if the file was read or written here, and not by others since.
  Commit writeIfCurrent();
  /// Hands the text of the file in exact numbers to `write`, piece by piece, until that returns
  /// false; returns whether it never did.
  bool writeText(const std::function<bool(std::string_view)>& write) const;
  /// Console report of the stars.
  void writeSolutions(std::ostream& stream) const;

 private:
  /// Long double holds all numbers of problem and stars.
  bool fitsStandard() const { return problemFits_ && stars_.fitLongDouble(); }
  template <class T>
  Commit writeAs();
  /// The stars include those of the file with this identity; nothing: there is no file.
  void noteFile(const std::optional<FileIdentity>& identity);

  /// The problem and the paths, without stars.
  SolutionFile<QQ> file_;
  bool problemFits_ = true;
  std::optional<SearchedPoints> searched_;
  PackedStars stars_;
  std::optional<QQ> leastSearchedNorm_;
  bool hasOtherStars_ = false;
  /// The file was read or written, and its identity then; nothing if there was none.
  bool isFileKnown_ = false;
  std::optional<FileIdentity> identity_;
};

}  // namespace starsift

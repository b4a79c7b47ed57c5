// A problem as read and its stars, the content of a .sol file, as one record with the operations
// read, check, sort, write and report. None of them needs a lattice.
#pragma once

#include <concepts>
#include <cstdint>
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>

#include "files/FileNames.h"
#include "files/SolWriter.h"
#include "numbers/QQ.h"
#include "problem/Vanu.h"
#include "stars/Star.h"
#include "stars/StarCheck.h"

namespace starsift {

/// What is done with the stars of a file.
enum class StarReading {
  /// They are appended.
  append,
  /// None is stored; the result says whether there is one.
  peek,
};

/// Which stars count as duplicates.
enum class Duplicates {
  /// The same point.
  ofPoint,
  /// The same point found with the same parameters.
  ofPointAndParams,
};

/// How often a file that others write all the time is merged before it is given up.
constexpr int mergeLimit = 10;

/// Copies share the problem and its form prepared for checks until one of them changes its
/// problem; the stars are copied.
template <class T>
class SolutionFile {
 public:
  SolutionFile();

  /// The paths of the problem and of its solutions.
  void setPaths(const FileNames& names);
  const std::string& path() const { return problem().solFile; }

  /// The problem as read, which stars have to satisfy.
  const Vanu<T>& problem() const { return read_->problem; }
  /// The problem, to be changed: from now on it counts as another one, with another number.
  Vanu<T>& editProblem();
  /// Equal for two records, even over different number types, only if they hold the same
  /// problem; each change gives a number that no other problem of the process has.
  std::uint64_t problemNumber() const { return read_->number; }
  /// Reads the problem at its path; see OptReader.h. The numbers of a file are rationals.
  void readProblem() requires std::same_as<T, QQ>;

  /// readStars() of SolReader.h. Returns whether there was a star.
  bool readStars(StarReading reading);
  /// The same, each number read as a rational.
  bool readStarsExactly(StarReading reading);

  /// The verdict on a point; see StarChecker. The problem is prepared for checks on first use.
  StarVerdict<T> judge(const Star<T>& star) const { return checker().judge(star); }
  /// checkStars() of StarCheck.h from the star at index `first` on.
  bool checkStars(Index first = 1);
  void sortStars();
  void removeDuplicates(Duplicates duplicates);
  void appendStars(Array<Star<T>> added);
  /// Adds the stars that lines stand for. PrecisionException, and nothing has changed, if T can't
  /// hold one.
  void appendLines(const std::vector<StarLine>& lines);

  /// Adds the right stars of the file as it is now, sorts, and removes duplicates. Throws and
  /// fails as readStarsExactly() and checkStars(); nothing has changed then.
  void mergeFile();
  /// Writes the stars to the path if its file was read or written here, and not by others since;
  /// see writeStars().
  Commit writeIfCurrent();
  /// The same, but merges a file that was changed by others, at most mergeLimit times. A file that
  /// was never read is replaced.
  Commit write();

  /// Console reports of the stars; see Report.h.
  std::string solutionsText() const;
  void writeSolutions(std::ostream& stream) const;
  /// 1 <= i <= stars.dimension().
  std::string starReport(Index i) const;

  /// Copies problem and stars, every number converted strictly. PrecisionException if T can't
  /// hold one; this record may have the new problem and a part of the stars then.
  template <class U>
  void convertFrom(const SolutionFile<U>& other);
  /// Copies problem and paths only. Unchanged after an exception.
  template <class U>
  void convertProblemFrom(const SolutionFile<U>& other);
  /// Frees problem and stars.
  void release();

  Array<Star<T>> stars;

 private:
  template <class>
  friend class SolutionFile;

  /// Shared by copies; not changed while it is shared.
  struct ReadProblem {
    Vanu<T> problem;
    std::uint64_t number = 0;
    /// Prepared on first use.
    std::optional<StarChecker<T>> checker;
  };

  StarChecker<T>& checker() const;
  /// The stars include those of the file with this identity; nothing: there is no file.
  void noteFile(const std::optional<FileIdentity>& identity);
  Commit noteWritten(const WrittenFile& written);

  std::shared_ptr<ReadProblem> read_;
  /// The file was read or written, and its identity then; nothing if there was none.
  bool isFileKnown_ = false;
  std::optional<FileIdentity> identity_;
};

extern template class SolutionFile<long double>;

}  // namespace starsift

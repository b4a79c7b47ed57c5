// A solution file whose right stars are held as lines: read, checked, sorted, written and reported.
#pragma once

#include <functional>
#include <iosfwd>
#include <optional>
#include <string>

#include "files/SolWriter.h"
#include "files/StarLines.h"

namespace starsift {

class LineFile {
 public:
  using Watch = std::function<void(const ReadProgress&)>;

  /// Reads the file at `path`, checks its stars on all cores, sorts them and removes duplicates. Of
  /// `problem` only what the check needs stays in memory.
  /// Stars that differ in their parameters are not duplicates. Without a file there are no stars.
  /// Nothing if the stars can't be held as lines (see readRightStars() and sortLines()), or the
  /// path leads to something else than a file. A file that can't be read is fatal.
  static std::optional<LineFile> read(const std::string& path, Vanu<QQ> problem,
                                      const Watch& watch);

  /// Writes the lines to `path`, or removes the file if there are none, unless the file has changed
  /// since it was read. Throws as writeStars().
  Commit write(const std::string& path) const;

  /// Reports one star for each point.
  void report(std::ostream& stream) const;

  const std::vector<StarLine>& lines() const { return stars_.lines; }

 private:
  /// How numbers are written.
  enum class Form {
    /// As those of long double.
    standard,
    /// As rationals, because a star needs them.
    exactForStars,
    /// As rationals, because the problem needs them.
    exact,
  };

  LineFile(InputText input, std::optional<FileIdentity> identity, Vector<QQ> goals)
      : input_(std::move(input)), identity_(identity), goals_(std::move(goals)) {}

  /// False if the stars can't be held as lines. `fits`: long double holds the problem.
  bool check(const StarChecker<QQ>& checker, bool fits, const Watch& watch);
  /// Sorts the lines and removes duplicates; false as above.
  bool tidy();
  template <class T>
  bool checkAs(const StarChecker<QQ>& checker, const Watch& watch);

  InputText input_;
  std::optional<FileIdentity> identity_;
  /// Those of the problem.
  Vector<QQ> goals_;
  StarLines stars_;
  Form form_ = Form::exact;
};

}  // namespace starsift

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
  /// Reads the file at `path`, checks its stars on all cores, sorts them and removes duplicates.
  /// Stars that differ in their parameters are not duplicates. Nothing if the stars can't be held
  /// as lines (see readRightStars() and sortLines()), or there is no file. A file that can't be
  /// read is fatal.
  static std::optional<LineFile> read(const std::string& path, const Vanu<QQ>& problem,
                                      const std::function<void(const ReadProgress&)>& watch);

  /// Writes the lines to `path`, or removes the file if there are none, unless the file has changed
  /// since it was read. Throws as writeStars().
  Commit write(const std::string& path) const;

  /// Reports one star for each point; the others are gone then. `goals` are those of the problem.
  void report(std::ostream& stream, const Vector<QQ>& goals);

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

  LineFile(InputText input, std::optional<FileIdentity> identity)
      : input_(std::move(input)), identity_(identity) {}

  /// False if the stars can't be held as lines.
  bool check(const Vanu<QQ>& problem, const std::function<void(const ReadProgress&)>& watch);
  /// Sorts the lines and removes duplicates; false as above.
  bool tidy();
  template <class T>
  bool checkAs(const Vanu<QQ>& problem, const std::function<void(const ReadProgress&)>& watch);

  InputText input_;
  std::optional<FileIdentity> identity_;
  StarLines stars_;
  Form form_ = Form::exact;
};

}  // namespace starsift

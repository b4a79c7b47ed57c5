// The solution file of a search: the stars that are known, and those that it finds.
#pragma once

#include <functional>
#include <iosfwd>
#include <optional>
#include <string>

#include "app/SavePace.h"
#include "files/YSolutionFile.h"
#include "lattice/YLattice.h"
#include "system/FileIdentity.h"

namespace starsift {

/// Keeps the stars apart from the lattice that is searched. There, every step would copy
/// all of them, and a star found again would drop those that differ from it in their
/// parameters only. What the lattice has filed was judged by the same problem and isn't checked
/// again; what stood in the file is.
///
/// Others may write the file meanwhile: another search, starsift, a user. What they left is
/// read again, checked and joined ahead of the next writing. Should it have a form that is
/// fatal, the file stays as it is, and the stars are in a file beside it (see RescueFile.h).
///
/// What it writes is what starsift would make of it: the stars go the same way.
class StarStore {
 public:
  using Clock = SavePace::Clock;

  /// Reads the file beside the problem of `search`, and drops wrong stars. `now` tells the time.
  /// In a benchmark run (bench > 0) the file is first read and joined by save().
  explicit StarStore(const YLattice<long double>& search,
                     std::function<Clock::time_point()> now = Clock::now);

  /// The search has filed solutions that were not taken.
  bool hasNews(const YLattice<long double>& search) const;
  /// The same, and since the last writing enough time has passed that a search with many
  /// solutions doesn't spend it on files.
  bool isDue(const YLattice<long double>& search) const;

  /// Takes the solutions of the search and writes the file.
  void save(const YLattice<long double>& search);

  /// Reports all stars, one for each point. Returns whether there are any.
  bool report(std::ostream& stream);

 private:
  void take(const YLattice<long double>& search);
  void replaceFile();
  /// Adds the right stars of the file.
  void readFile();

  std::function<Clock::time_point()> now_;
  YSolutionFile stars_;
  /// The file as it was last read or written here; nothing before that, or without a file.
  std::optional<FileIdentity> known_;
  /// The last number that a solution of the search had when they were last taken.
  Index taken_ = 0;
  SavePace pace_;
};

}  // namespace starsift

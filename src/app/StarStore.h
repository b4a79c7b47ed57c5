// The solution file of a search: the stars that were known before, and the stars that it finds.
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

/// Keeps the stars apart from the lattice that is searched. In the lattice, every step would copy
/// all of them, and a star found again would remove the stars that differ from it in their
/// parameters only. Solutions filed by the lattice were judged by the same problem and aren't
/// checked again; stars from the file are.
///
/// Others may write the file during the search: another search, starsift, a user. Before the
/// next write such a file is read again, checked and merged. If its form is fatal, it stays
/// unchanged, and the stars are in a file beside it (see RescueFile.h).
///
/// The written file is in the canonical form of starsift, by the same steps.
class StarStore {
 public:
  using Clock = SavePace::Clock;

  /// Reads the file beside the problem of `search`, and removes wrong stars. `now` returns the
  /// time. In a benchmark run (bench > 0) the file is first read and merged by save().
  explicit StarStore(const YLattice<long double>& search,
                     std::function<Clock::time_point()> now = Clock::now);

  /// The search has filed solutions that are not in the store yet.
  bool hasNews(const YLattice<long double>& search) const;
  /// The same, and the pause after the last write is over (see SavePace.h).
  bool isDue(const YLattice<long double>& search) const;

  /// Adds the new solutions of the search and writes the file.
  void save(const YLattice<long double>& search);

  /// Adds a judged star, found without the lattice, to the news.
  void add(const Star<QQ>& star);
  /// The least target norm of the stars that were saved or read; empty without stars.
  std::optional<QQ> leastTargetNorm() const { return stars_.leastTargetNorm(); }

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
  /// The number of the last solution that was added from the search.
  Index taken_ = 0;
  /// Stars by add() that aren't among stars_ yet.
  Array<Star<QQ>> added_;
  SavePace pace_;
};

}  // namespace starsift

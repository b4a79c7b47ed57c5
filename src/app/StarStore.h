// The solution file of a search: the stars that were known before, and the stars that it finds.
#pragma once

#include <functional>
#include <iosfwd>
#include <optional>
#include <string>

#include "app/RescueFile.h"
#include "app/SavePace.h"
#include "app/SolutionLock.h"
#include "app/SolutionSink.h"
#include "files/YSolutionFile.h"
#include "lattice/YLattice.h"

namespace starsift {

/// Keeps the stars apart from the lattice that is searched. In the lattice, every step would copy
/// all of them, and a star found again would remove the stars that differ from it in their
/// parameters only. Solutions filed by the lattice were judged by the same problem and aren't
/// checked again; stars from the file are.
///
/// Others may write the file during the search: another search, starsift, a user. Before the
/// next write such a file is read again, checked and merged, under a lock (see SolutionLock.h). If
/// its form is fatal, it stays unchanged, and the stars are in a file beside it (see RescueFile.h).
///
/// The written file is in the canonical form of starsift, by the same steps.
class StarStore : public SolutionSink {
 public:
  using Clock = SavePace::Clock;

  /// Reads the file beside the problem of `search`, and removes wrong stars. `now` returns the
  /// time. In a benchmark run (bench > 0) the file is first read and merged by save().
  explicit StarStore(const YLattice<long double>& search,
                     std::function<Clock::time_point()> now = Clock::now);
  StarStore(const StarStore&) = delete;
  StarStore& operator=(const StarStore&) = delete;
  ~StarStore() override;

  /// The search has filed solutions that are not in the file yet.
  bool hasNews(const YLattice<long double>& search) const override;
  /// The same, and the pause after the last write is over (see SavePace.h), and a write isn't
  /// expected to last beyond the end of the search, at which save() writes all.
  bool isDue(const YLattice<long double>& search) const override;

  /// In seconds of a kind that holds centuries too.
  using End = std::chrono::time_point<Clock, std::chrono::duration<double>>;
  /// The search ends then at the latest.
  void setEnd(End end) { end_ = end; }

  /// Says on the error stream that the file can't be written, if that shows before the search.
  void tellIfReadOnly() const;

  /// Adds the new solutions of the search and writes the file, unless others hold its lock or it
  /// can't be written: a word about that comes once, and the solutions stay unsaved for now.
  void trySave(const YLattice<long double>& search) override;
  /// Adds the new solutions of the search and writes the file; waits for its lock. If the file
  /// can't be had or written, solutions of this search that aren't in it go to a file of their
  /// own (see RescueFile.h), or stay in memory for the report, with a word. Returns whether all
  /// are in the file.
  bool save(const YLattice<long double>& search);

  /// Leaves what the present store has not saved in a rescue file: for a fatal report, which ends
  /// the process. Nothing without a store.
  static void secureUnsaved();

  /// Adds a judged star, found without the lattice, to the news.
  void add(const Star<QQ>& star) override;
  /// The least target norm of the stars that were saved, read or added; empty without stars.
  std::optional<QQ> leastTargetNorm() const override { return stars_.leastTargetNorm(); }
  std::optional<QQ> leastSearchedNorm() const override { return stars_.leastSearchedNorm(); }
  bool hasOtherStars() const override { return stars_.hasOtherStars(); }
  bool keepsLattices() const override { return true; }

  /// Stars that were saved, read or added.
  Index starCount() const { return stars_.starCount(); }

  /// Reports all stars, one for each point. Returns whether there are any.
  bool report(std::ostream& stream);

 private:
  /// The one whose stars a fatal report would lose; null if there is none.
  static StarStore* present;

  /// Stars of the search since the last take().
  Index newCount(const YLattice<long double>& search) const;
  void take(const YLattice<long double>& search);
  /// Writes all stars under the lock. Makes a rescue file before anything that may end the process
  /// or takes long. False if the file isn't written.
  bool replaceFile(Patience patience, std::optional<RescueFile>& rescue);
  /// Writes all stars; merges the file first if others have written it, and again if they do so
  /// meanwhile. Throws as writeStars().
  Commit mergeAndWrite(std::optional<RescueFile>& rescue);
  void secure(std::optional<RescueFile>& rescue) const;
  void tellOnce(const std::string& message);

  const YLattice<long double>& search_;
  std::function<Clock::time_point()> now_;
  YSolutionFile stars_;
  /// The number of the last solution that was added from the search.
  Index taken_ = 0;
  /// Stars by add() since the last take().
  Index added_ = 0;
  /// Stars of the file when it was written last.
  Index written_ = 0;
  SavePace pace_;
  std::optional<End> end_;
  /// Stars of this search are in the store and not in the file.
  bool isAhead_ = false;
  /// The last word about a file that can't be written.
  std::string told_;
};

}  // namespace starsift

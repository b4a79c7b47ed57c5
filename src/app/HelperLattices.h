// The lattices of helper threads beside that of a command.
#pragma once

#include <optional>

#include "app/DirectStars.h"
#include "app/SearchWatch.h"
#include "lattice/YLattice.h"
#include "search/LatticeThreads.h"

namespace starsift {

class HelperLattices {
 public:
  /// `problem` as read. `wantsBest`: the best solution is looked for, else one. `threads`, at least
  /// 1, includes the calling one.
  HelperLattices(const YLattice<long double>& lattice, const Vanu<QQ>& problem,
                 const SearchWatch& watch, DirectStars& stars, bool wantsBest, unsigned threads)
      : lattice_(lattice),
        problem_(problem),
        watch_(watch),
        stars_(stars),
        wantsBest_(wantsBest),
        helperCount_(threads - 1) {}

  /// To be called at the steps of the lattice. Starts the threads once a search has taken long
  /// enough, if they are of use and memory is there for lattices of the size of this process, and
  /// takes what they find. True if the search is over: what was asked for was found.
  bool look();

  /// Ends the threads and takes what is left.
  void end();

  /// During its lifetime the threads wait: the calling one needs the cores.
  class Pause {
   public:
    explicit Pause(HelperLattices& lattices) : lattices_(lattices) {
      if (lattices_.threads_) lattices_.threads_->pause();
    }
    Pause(const Pause&) = delete;
    Pause& operator=(const Pause&) = delete;
    ~Pause() {
      if (lattices_.threads_) lattices_.threads_->resume();
    }

   private:
    HelperLattices& lattices_;
  };

 private:
  bool isDue() const;
  LatticeSource source() const;
  bool takeNews();
  /// Takes a solution if it is still of use; true if the search is over.
  bool take(const Star<QQ>& star);

  const YLattice<long double>& lattice_;
  const Vanu<QQ>& problem_;
  const SearchWatch& watch_;
  DirectStars& stars_;
  bool wantsBest_;
  unsigned helperCount_;
  std::optional<LatticeThreads> threads_;
};

}  // namespace starsift

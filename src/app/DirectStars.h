// Solutions that a search finds without the lattice.
#pragma once

#include <cstddef>
#include <string>
#include <unordered_set>
#include <vector>

#include "app/SolutionSink.h"
#include "lattice/YLattice.h"

namespace starsift {

/// Solutions go to the sink with the data of the run, as those of the lattice do.
class DirectStars {
 public:
  /// The parameters of the lattice are those of the run, from now on.
  DirectStars(const YLattice<long double>& lattice, SolutionSink& sink)
      : lattice_(lattice), sink_(sink), paramsText_(lattice.paramsText()) {}

  /// A judged solution; `isBest` if it is better than all before it. Returns whether it reaches
  /// the norms that end the search.
  bool add(const Star<QQ>& judged, bool isBest);

  /// Least target norm of the solutions known so far at points that searches look at: those of
  /// the file, of the lattice and of these.
  std::optional<QQ> leastKnownNorm() const;

  /// The first ones, as many as a status shows, and all that were best.
  const Array<Star<QQ>>& first() const { return first_; }
  Index count() const { return first_.dimension() + furtherCount_; }

  /// Compares the solutions that the lattice has filed since the last call. None of these is found
  /// after the lattice has filed it.
  void findRepeats();
  /// These that the lattice had found again by then: their points have equal hashes of 64 bits.
  Index repeatCount() const { return static_cast<Index>(repeats_.size()); }

 private:
  const YLattice<long double>& lattice_;
  SolutionSink& sink_;
  std::string paramsText_;
  Array<Star<QQ>> first_;
  Index furtherCount_ = 0;
  /// Of all their points, those up to sorted_ in ascending order.
  std::vector<std::size_t> hashes_;
  std::size_t sorted_ = 0;
  std::unordered_set<std::size_t> repeats_;
  /// The number of the last solution of the lattice that was compared.
  Index compared_ = 0;
};

}  // namespace starsift

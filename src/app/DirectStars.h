// Solutions that a search finds without the lattice.
#pragma once

#include <string>

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

  /// Least target norm of the solutions known so far: those of the file, of the lattice and of
  /// these.
  std::optional<QQ> leastKnownNorm() const;

  /// The first ones, as many as a status shows, all that were best, and the number of further
  /// ones.
  const Array<Star<QQ>>& first() const { return first_; }
  Index furtherCount() const { return furtherCount_; }
  Index count() const { return first_.dimension() + furtherCount_; }

 private:
  const YLattice<long double>& lattice_;
  SolutionSink& sink_;
  std::string paramsText_;
  Array<Star<QQ>> first_;
  Index furtherCount_ = 0;
};

}  // namespace starsift

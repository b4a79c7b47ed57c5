// Where the solutions of a search go: a file, or the memory of a host.
#pragma once

#include <optional>

#include "lattice/YLattice.h"

namespace starsift {

/// Takes the solutions that a search finds, those of its lattice and others.
class SolutionSink {
 public:
  virtual ~SolutionSink() = default;

  /// The search has filed solutions that weren't taken yet.
  virtual bool hasNews(const YLattice<long double>& search) const = 0;
  /// The same, and it is time to take them.
  virtual bool isDue(const YLattice<long double>& search) const = 0;
  /// Takes the new solutions of the search, or leaves them for later.
  virtual void trySave(const YLattice<long double>& search) = 0;
  /// Takes a judged star, found without the lattice.
  virtual void add(const Star<QQ>& star) = 0;
  /// The least target norm of the stars that were taken; empty without stars.
  virtual std::optional<QQ> leastTargetNorm() const = 0;
  /// The same among those at points that searches look at (see SearchedPoints.h), and whether
  /// there are others.
  virtual std::optional<QQ> leastSearchedNorm() const = 0;
  virtual bool hasOtherStars() const = 0;
  /// The lattices of the search are saved too, in files beside its problem.
  virtual bool keepsLattices() const = 0;

 protected:
  SolutionSink() = default;
  SolutionSink(const SolutionSink&) = default;
  SolutionSink& operator=(const SolutionSink&) = default;
};

}  // namespace starsift

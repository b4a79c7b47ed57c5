// The stored vectors of a lattice while it is being changed.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "core/Set.h"
#include "lattice/state/FiledSolution.h"
#include "lattice/state/VectorScore.h"
#include "stars/Star.h"

namespace starsift {

/// The form in which a vector is kept while the lattice changes.
enum class BackupMode : std::uint8_t {
  /// The vector itself, with the new length.
  vectors = 0,
  /// The vector without the removed coordinates.
  columns = 1,
  /// Its coordinates in the basis.
  coordinates = 2,
  /// The point of the problem that it stands for.
  points = 3,
};

/// Which columns are removed from the lattice.
enum class ColumnsOf : std::uint8_t { equations = 0, moduli = 1 };

/// Where a vector was stored.
enum class BackupOrigin : std::uint8_t { best = 1, target = 2, store = 3 };

template <class T, class R>
struct VectorBackup {
  struct Entry {
    BackupOrigin origin;
    BackupVector<T> vector;
    /// The verdict on the point, null if unknown.
    std::shared_ptr<const JudgedStar> judged;
  };

  Array<Star<T>> stars;
  /// In the order best vector, best target, solutions.
  std::vector<Entry> entries;
  SortedSet<HeuristicVector<T, R>> collected;
  SortedSet<HeuristicVector<T, R>> chosen;
};

}  // namespace starsift

// The coordinates of a lattice: the blocks that they form, and the bounds of the vectors of
// solutions.
#pragma once

#include <cstdint>
#include <iterator>

#include "core/Matrix.h"
#include "problem/Vanu.h"

namespace starsift {

/// Stage of the lattice.
enum class LatticeKind : std::uint8_t {
  /// No check vectors yet.
  none = 0,
  /// The equation lattice of the Aardal reduction.
  equations = 1,
  /// The full lattice.
  full = 2,
};

/// Consecutive coordinates: `for (Index j : block)`.
struct CoordinateBlock {
  class Iterator {
   public:
    using iterator_category = std::input_iterator_tag;
    using value_type = Index;
    using difference_type = Index;
    using pointer = const Index*;
    using reference = Index;

    explicit Iterator(Index at) : at_(at) {}
    Index operator*() const { return at_; }
    Iterator& operator++() {
      ++at_;
      return *this;
    }
    Iterator operator++(int) { return Iterator(at_++); }
    bool operator==(const Iterator& other) const = default;

   private:
    Index at_;
  };

  /// First coordinate, 1-based.
  Index first = 1;
  Index count = 0;

  Index last() const { return first + count - 1; }
  /// Coordinate of element i, 1 <= i <= count.
  Index at(Index i) const { return first + i - 1; }
  Iterator begin() const { return Iterator(first); }
  Iterator end() const { return Iterator(first + count); }
};

/// The blocks in their order; the last coordinate, that of h, follows all of them.
struct CoordinateBlocks {
  /// One per equation, in the equation lattice only.
  CoordinateBlock equations;
  /// All targets together, 0 or 1.
  CoordinateBlock target;
  CoordinateBlock inequations;
  /// One per variable: originals, slacks and deviations.
  CoordinateBlock variables;
  /// The last of the variables, in pairs.
  CoordinateBlock deviations;
  /// One per congruence, while they are in the lattice.
  CoordinateBlock moduli;
};

/// How coordinates are computed from variables, and the box of the vectors of solutions. With R
/// the half width of the box and h the last coordinate over homValue:
///
///     equation      Ag z - h bg                    0
///     target        c (2 atu z - h (rtu + ltu))
///     inequation    c (2 Au z - h (lu + ru))       from -R to R
///     variable      2 c z - h R                    from -R to R
template <class T>
class CoordinateFrame {
 public:
  /// Stage of the generation.
  LatticeKind latticeKind = LatticeKind::none;
  /// The lattice has no equation columns.
  bool equationsRemoved = true;
  /// The lattice has the modulus columns of the congruences.
  bool modsInLattice = false;
  /// Common multiple of the bound ranges, 0 before generation.
  T rangeMultiple = T();
  /// Scale factor per coordinate, m entries.
  Vector<T> c;
  /// Lower bounds of the coordinates, with r the check vectors, m entries.
  Vector<T> l;
  /// Upper bounds of the coordinates, m entries.
  Vector<T> r;

  // Kept for hosts of the library; nothing in it reads them.

  /// l as generated, m entries.
  Vector<T> lSave;
  /// r as generated, m entries.
  Vector<T> rSave;
  /// l and r were equal when generated.
  bool lEqualsR = false;
  /// 3 times the larger squared length of l and r, 0 before generation.
  long double supLimit = 0;

  /// Resets all members; the vectors get m zeros each.
  void clear(Index m);
  /// m entries each; new ones are 0.
  void resize(Index m);
  template <class U>
  void convertFrom(const CoordinateFrame<U>& other);
  /// Stores the values derived from l and r: lSave, rSave, lEqualsR, supLimit.
  void recordBounds();
  /// Removes `count` coordinates from `position` on.
  void remove(Index position, Index count);

  /// The blocks of a lattice of the problem, which is in normal form, with m coordinates.
  CoordinateBlocks blocks(const Vanu<T>& problem, Index m) const;
  /// The blocks of the lattice that is about to be generated, moduli included; the equation
  /// lattice if `kind` is LatticeKind::equations.
  static CoordinateBlocks generated(const Vanu<T>& problem, LatticeKind kind);

  /// The first coordinate whose bounds are checked: the one after the target.
  Index firstChecked(const Vanu<T>& problem) const;
  /// `last`, the last coordinate of a raw vector, lies between its check bounds.
  bool hasLastInBox(const T& last) const;
  /// The amount by which coordinate j of a raw vector leaves the check vectors, 0 inside.
  T distanceFromBox(const Vector<T>& vector, Index j) const {
    if (vector[j] < l[j]) return l[j] - vector[j];
    return vector[j] > r[j] ? T(vector[j] - r[j]) : T();
  }
  /// A raw vector lies between the check vectors; free sides of variables are not checked.
  bool liesInBox(const Vanu<T>& problem, const Vector<T>& vector) const;

 private:
  void recordLimit();
};

extern template class CoordinateFrame<long double>;

}  // namespace starsift

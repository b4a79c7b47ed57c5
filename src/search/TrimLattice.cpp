#include "search/TrimLattice.h"

#include <algorithm>

#include "numbers/ExactArithmetic.h"
#include "numbers/VectorQQ.h"
#include "search/Candidate.h"
#include "search/NearbySearch.h"

namespace starsift {

namespace trimlattice {

constexpr int maxRounds = 16;

/// The greatest weight of a coordinate, a power of 2: numbers divided by it don't round.
constexpr int maxScale = 64;

template <class T, class R>
class Trimmer {
 public:
  explicit Trimmer(Lattice<T, R>& lattice) : lattice_(lattice), centre_(lattice.basis.m) {}

  /// Trims by a raw inhomogeneous vector with the last coordinate of a solution; false if nothing
  /// changed.
  bool trim(const Vector<T>& vector) {
    const auto deviations = lattice_.deviationsOf(vector);
    bool changed = false;
    for (const auto& deviation : deviations) {
      if (lattice_.params.scale) changed = enlarge(deviation.left) || changed;
      if (lattice_.params.translate) changed = moveCentre(vector, deviation.left) || changed;
    }
    if (changed && lattice_.params.translate) lattice_.basis.setCentre(centre_, lattice_.homValue);
    return changed;
  }

 private:
  bool enlarge(Index j) {
    const T twice = lattice_.basis.scale[j] * T(2);
    if (twice > T(maxScale)) return false;
    lattice_.setScale(j, twice);
    return true;
  }

  /// Moves the centre of coordinate j away from the side on which the vector leaves the box, by
  /// half of the amount, but not out of the box.
  bool moveCentre(const Vector<T>& vector, Index j) {
    const auto& frame = lattice_.frame;
    const T amount = frame.distanceFromBox(vector, j);
    const T half = ExactArithmetic<T>::roundedUp(T(amount / T(2)));
    const T next = vector[j] > frame.r[j] ? T(centre_[j] - half) : T(centre_[j] + half);
    if (next < frame.l[j] || next > frame.r[j]) return false;
    centre_[j] = next;
    return true;
  }

  Lattice<T, R>& lattice_;
  /// In raw space.
  Vector<T> centre_;
};

/// The first inhomogeneous row in raw space, oriented like a solution; empty if there is none that
/// has its last coordinate.
template <class T, class R>
Vector<T> inhomogeneousVector(const Lattice<T, R>& lattice) {
  const Index row = inhomogeneousRow(lattice.basis.B(), lattice.basis.n);
  if (row == 0) return {};
  Vector<T> vector = lattice.oriented(lattice.basis.B()[row], Space::working);
  return vector[lattice.basis.m] == lattice.homValue ? vector : Vector<T>();
}

}  // namespace trimlattice

template <class T, class R>
void trimLattice(Lattice<T, R>& lattice) {
  trimlattice::Trimmer<T, R> trimmer(lattice);
  for (int round = 0; round < trimlattice::maxRounds && notifyStep(lattice); ++round) {
    const Vector<T> vector = trimlattice::inhomogeneousVector(lattice);
    if (!vector.isSet() || !trimmer.trim(vector)) break;
    lattice.reduce(0);
    if (!lattice.stopped()) NearbySearch(lattice).run();
  }
  lattice.basis.clearScale(lattice.homValue);
  lattice.basis.clearTranslation(lattice.homValue);
  if (!lattice.stopped()) lattice.reduce(0);
}

template void trimLattice(Lattice<long double, long double>&);
template void trimLattice(Lattice<QQ, long double>&);

}  // namespace starsift

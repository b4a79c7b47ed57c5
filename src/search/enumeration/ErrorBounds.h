// Proven bounds of the rounding errors of an enumeration: docs/enumeration.md derives them.
#pragma once

#include <functional>
#include <vector>

#include "search/enumeration/TreeGeometry.h"

namespace starsift {

/// Fills what a geometry needs to be a proof. Bounds are sums of terms that aren't negative; each
/// is computed in double and enlarged by a part in 500, far more than its own rounding error.
template <class Real>
class ErrorBounds {
 public:
  /// `directions` are those of the geometry, then the rest, d + 1 rows. Rows, directions, start,
  /// rest, half ranges, weights and squared lengths of the geometry are set. `mayGoOn` is called
  /// before every row; false ends a function, which returns false then.
  ErrorBounds(const BoxCoset& coset, const CosetDirections& data, TreeGeometry<Real>& geometry,
              const std::vector<std::vector<Real>>& directions,
              const std::function<bool()>& mayGoOn);

  /// Sets `least`, `most` and `magnitudes` by the rounded dual basis, d rows. False if it isn't
  /// close to a dual basis, or a coefficient too large.
  bool boundCoefficients(const std::vector<std::vector<Real>>& duals);
  /// Sets the slacks; false if one exceeds a hundredth of the squared radius.
  bool boundCuts();

 private:
  /// Sets leaks_ and restLeak_; false if it was ended.
  bool findLeaks();
  /// Sets nonOrthogonality_ and mismatch_; false if it was ended.
  bool compareDirections();
  /// Sum over j of |row_j| h_j.
  double spread(const std::vector<Real>& row) const;
  /// Bounds of the errors that the centre of each level has but for the one of its reach, d
  /// entries.
  std::vector<double> centreErrors() const;

  const BoxCoset& coset_;
  const CosetDirections& data_;
  TreeGeometry<Real>& geometry_;
  const std::vector<std::vector<Real>>& directions_;
  const std::function<bool()>& mayGoOn_;
  /// Squared radius of the box, at least 1/4.
  double radius_ = 0;
  /// P_k = sum over i < k of C_i |<v_k, b_i>|, d entries, and the same over all i for the rest.
  std::vector<double> leaks_;
  double restLeak_ = 0;
  /// Greatest row sum of the Gram matrix of the normalised directions without its diagonal.
  double nonOrthogonality_ = 0;
  /// Greatest |1 - <v_k, b_k> / |D^-1 v_k|^2|, D the scale, and the same for the rest.
  double mismatch_ = 0;
};

}  // namespace starsift

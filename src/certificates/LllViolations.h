// Where a basis isn't LLL-reduced, decided in exact arithmetic and independently of the
// Gram-Schmidt data that a reduction computes.
//
// A. K. Lenstra, H. W. Lenstra, L. Lovasz, Math. Ann. 261 (1982).
#pragma once

#include <optional>
#include <vector>

#include "core/Matrix.h"
#include "numbers/QQ.h"

namespace starsift {

struct LllViolation {
  enum class Kind {
    dependent,  ///< row k is a combination of the rows above; j is 0
    size,       ///< |mu[k][j]| > eta
    exchange    ///< the Lovasz test fails for row k and row j, the next independent row
                ///< above
  };
  Kind kind;
  Index k;
  Index j;

  bool operator==(const LllViolation&) const = default;
};

/// All violations, row by row from the top: that the row is dependent, or else by
/// ascending j the coefficients that are too large and then a failed Lovasz test. A
/// dependent row is not tested further, and the rows below are tested as if it weren't there.
///
/// Entries are converted to rationals exactly; an infinite one is fatal.
///
/// Intervals that contain the Gram-Schmidt data decide as long as no bound lies in one; n rows
/// of m columns take O(n^3) operations on floats of 128 + 4 n bits and O(n^2 m) on
/// entries. From the first undecided row on, which is dependent or attains a bound exactly,
/// Gram-Schmidt data in integers decide: B. M. M. de Weger, J. Number Theory 26 (1987).
/// These are minors of the Gram matrix, up to twice as long as all rows together, and take
/// O(n^3) operations.
template <class T>
std::vector<LllViolation> lllViolations(const Matrix<T>& basis, const QQ& delta, const QQ& eta);

/// The first of lllViolations(); rows below it are not tested.
template <class T>
std::optional<LllViolation> firstLllViolation(const Matrix<T>& basis, const QQ& delta,
                                              const QQ& eta);

extern template std::vector<LllViolation> lllViolations(const Matrix<long double>&, const QQ&,
                                                        const QQ&);
extern template std::vector<LllViolation> lllViolations(const Matrix<QQ>&, const QQ&, const QQ&);
extern template std::optional<LllViolation> firstLllViolation(const Matrix<long double>&, const QQ&,
                                                              const QQ&);
extern template std::optional<LllViolation> firstLllViolation(const Matrix<QQ>&, const QQ&,
                                                              const QQ&);

}  // namespace starsift

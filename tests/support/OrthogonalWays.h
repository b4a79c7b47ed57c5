// The ways to orthogonalise a lattice, and what must hold behind each.
#pragma once

#include <gtest/gtest.h>

#include <array>

#include "lattice/Lattice.h"
#include "support/OrthogonalCertificate.h"

namespace starsift::test {

template <class T>
using LatticeOver = Lattice<T, long double>;

/// The three ways, the reduced one without and with its cache.
enum class Way { classic, modified, cached, full };

constexpr std::array allWays{Way::classic, Way::modified, Way::cached, Way::full};

/// 0 or the first dependent row.
template <class T>
Index orthogonalise(LatticeOver<T>& lattice, Way way, Index from = 1, Index to = 0) {
  if (way == Way::full) return lattice.fullOrthogonalise(from, to, false);
  if (way != Way::classic)
    return lattice.modifiedOrthogonalise(from, to, false, way == Way::cached);
  if (lattice.classicOrthogonalise(from, to)) return 0;
  Index k = from;
  while (lattice.vecStatus[k] != ST_DEPENDENT) ++k;
  return k;
}

inline StatusWord wordOf(Way way) {
  if (way == Way::full) return 0x0e;
  return way == Way::cached ? 0x16 : 0x02;
}

/// Changes row k as the reduction does: it and all behind it lose their status.
template <class T>
void change(LatticeOver<T>& lattice, Index k, const Vector<T>& row) {
  lattice.B[k] = row;
  lattice.rowImages.forget(k);
  for (Index i = k; i <= lattice.n; ++i) lattice.vecStatus[i] = 0;
}

/// Rows 1..count of mu, cLen and bSq belong to those of the basis.
template <class T>
void expectDone(const LatticeOver<T>& lattice, Index count, const mpq_class& bound) {
  const ExactRows rows = firstRows(exactRows(lattice.B), count);
  EXPECT_TRUE(isOrthogonalisation(rows, lattice.mu, lattice.cLen, bound));
  for (Index k = 1; k <= count; ++k) {
    long double length = 0;
    for (const mpq_class& entry : rows[static_cast<std::size_t>(k - 1)])
      length += static_cast<long double>(entry.get_d()) * static_cast<long double>(entry.get_d());
    EXPECT_NEAR(static_cast<double>(lattice.bSq[k] / length), 1, 1e-12);
  }
}

/// The rows of Q that are valid are the Gram-Schmidt vectors.
template <class T>
void expectVectors(const LatticeOver<T>& lattice, const mpq_class& bound) {
  Index count = 0;
  while (count < lattice.n && carries(lattice.vecStatus[count + 1], ST_Q)) ++count;
  ASSERT_LE(count, lattice.Q.rowCount());
  const ExactRows vectors = firstRows(exactRows(lattice.Q), count);
  EXPECT_TRUE(areOrthogonal(vectors, bound));
  const Matrix<long double>& mu = lattice.mu;
  EXPECT_TRUE(isProduct(firstRows(exactRows(mu), count), vectors,
                        firstRows(exactRows(lattice.B), count), bound));
}

}  // namespace starsift::test

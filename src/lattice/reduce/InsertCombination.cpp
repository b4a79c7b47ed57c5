#include "lattice/reduce/InsertCombination.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "algorithms/reduction/SizeReduce.h"
#include "numbers/Conversion.h"
#include "numbers/VectorQQ.h"
#include "system/Exceptions.h"

namespace starsift {

namespace {

/// b_k += q * b_j for j < k.
template <class T, class R>
void addMultiple(Basis<T, R>& basis, Index k, Index j, const R& q) {
  if constexpr (!NumberTraits<T>::exact) {
    const T sum = supNorm(basis.B()[k]) + std::fabs(q) * supNorm(basis.B()[j]);
    if (!(sum <= T(fatalBound))) throw PrecisionException("insertion overflow");
  }
  basis.subtract(k, {{j, -q}});
}

}  // namespace

/// Euclid's scheme on the coefficients: the rows of multiples that are left become fewer until one
/// row, with the factor 1, is the vector.
template <class T, class R>
void insertCombination(Basis<T, R>& basis, Index first, std::vector<R> coefficients) {
  const auto isUsed = [](const R& x) { return x != R(); };
  const auto at = [&coefficients](Index i) -> R& {
    return coefficients[static_cast<std::size_t>(i)];
  };
  Index last = static_cast<Index>(coefficients.size()) - 1;
  while (!isUsed(at(last))) --last;
  for (Index i = first; i <= first + last; ++i) basis.forgetProducts(i);
  basis.forgetFrom(first);
  while (std::count_if(coefficients.begin(), coefficients.end(), isUsed) > 1) {
    Index least = last;
    for (Index i = last; i >= 0; --i)
      if (isUsed(at(i)) && std::fabs(at(i)) < std::fabs(at(least))) least = i;
    for (Index i = least; i < last; ++i) {
      basis.swap(first + i, first + i + 1, RowStatus::keep);
      std::swap(at(i), at(i + 1));
    }
    for (Index i = 0; i < last; ++i) {
      const R quotient = std::round(at(i) / at(last));
      if (!isUsed(quotient)) continue;
      addMultiple(basis, first + last, first + i, quotient);
      at(i) -= quotient * at(last);
    }
  }
  Index only = last;
  while (!isUsed(at(only))) --only;
  for (Index i = only; i > 0; --i) basis.swap(first + i, first + i - 1, RowStatus::keep);
}

template void insertCombination(Basis<long double, long double>&, Index, std::vector<long double>);
template void insertCombination(Basis<QQ, long double>&, Index, std::vector<long double>);

}  // namespace starsift

#include "algorithms/LllConditions.h"

#include "algorithms/IntegerMatrix.h"
#include "algorithms/LllJudge.h"
#include "numbers/VectorQQ.h"

namespace starsift {

namespace {

template <class T>
LllJudge judgeOf(const Matrix<T>& basis, const QQ& delta, const QQ& eta) {
  return {scaledIntegers(basis).rows, delta, eta};
}

}  // namespace

template <class R>
bool sizeReduced(Index k, Index j, const Matrix<R>& mu, const R& eta) {
  return NumberTraits<R>::absolute(mu[k][j]) <= eta;
}

template <class R>
bool lovaszHolds(Index k, const Matrix<R>& mu, const Vector<R>& cLen, const R& delta) {
  const R& coefficient = mu[k][k - 1];
  return cLen[k] + coefficient * coefficient * cLen[k - 1] >= delta * cLen[k - 1];
}

template <class T>
std::vector<LllViolation> lllViolations(const Matrix<T>& basis, const QQ& delta, const QQ& eta) {
  LllJudge judge = judgeOf(basis, delta, eta);
  std::vector<LllViolation> result;
  while (judge.hasNext()) {
    const std::vector<LllViolation> found = judge.next();
    result.insert(result.end(), found.begin(), found.end());
  }
  return result;
}

template <class T>
std::optional<LllViolation> firstLllViolation(const Matrix<T>& basis, const QQ& delta,
                                              const QQ& eta) {
  LllJudge judge = judgeOf(basis, delta, eta);
  while (judge.hasNext()) {
    const std::vector<LllViolation> found = judge.next();
    if (!found.empty()) return found.front();
  }
  return std::nullopt;
}

template bool sizeReduced(Index, Index, const Matrix<long double>&, const long double&);
template bool lovaszHolds(Index, const Matrix<long double>&, const Vector<long double>&,
                          const long double&);
template std::vector<LllViolation> lllViolations(const Matrix<long double>&, const QQ&, const QQ&);
template std::vector<LllViolation> lllViolations(const Matrix<QQ>&, const QQ&, const QQ&);
template std::optional<LllViolation> firstLllViolation(const Matrix<long double>&, const QQ&,
                                                       const QQ&);
template std::optional<LllViolation> firstLllViolation(const Matrix<QQ>&, const QQ&, const QQ&);

}  // namespace starsift

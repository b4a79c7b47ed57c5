#include "certificates/LllViolations.h"

#include "algorithms/exact/IntegerMatrix.h"
#include "certificates/LllJudge.h"
#include "numbers/VectorQQ.h"

namespace starsift {

namespace {

template <class T>
LllJudge judgeOf(const Matrix<T>& basis, const QQ& delta, const QQ& eta) {
  return {scaledIntegers(basis).rows, delta, eta};
}

}  // namespace

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

template std::vector<LllViolation> lllViolations(const Matrix<long double>&, const QQ&, const QQ&);
template std::vector<LllViolation> lllViolations(const Matrix<QQ>&, const QQ&, const QQ&);
template std::optional<LllViolation> firstLllViolation(const Matrix<long double>&, const QQ&,
                                                       const QQ&);
template std::optional<LllViolation> firstLllViolation(const Matrix<QQ>&, const QQ&, const QQ&);

}  // namespace starsift

#include "search/decide/SolutionCoset.h"

#include <algorithm>
#include <utility>

namespace starsift {

namespace {

/// The basis is reduced whenever its longest entry has grown by this many bits.
constexpr std::size_t bitsBetweenReductions = 24;

void subtractMultiple(std::vector<ZZ>& row, const ZZ& factor, const std::vector<ZZ>& other) {
  for (std::size_t j = 0; j < row.size(); ++j)
    mpz_submul(row[j].get(), factor.get(), other[j].get());
}

/// The integer nearest to a / b, b not 0.
ZZ nearestQuotient(const ZZ& a, const ZZ& b) {
  ZZ quotient;
  const ZZ twice = b + b;
  mpz_fdiv_q(quotient.get(), ZZ(a + a + b).get(), twice.get());
  return quotient;
}

std::size_t longestEntry(const std::vector<std::vector<ZZ>>& rows) {
  std::size_t bits = 0;
  for (const std::vector<ZZ>& row : rows)
    for (const ZZ& entry : row) bits = std::max(bits, mpz_sizeinbase(entry.get(), 2));
  return bits;
}

/// A vector with the value of a form, not 0.
struct ValuedRow {
  std::vector<ZZ> row;
  ZZ value;

  bool operator<(const ValuedRow& other) const {
    return mpz_cmpabs(value.get(), other.value.get()) < 0;
  }
};

/// Vectors with the values of a form.
class ValuedRows {
 public:
  void add(std::vector<ZZ> row, ZZ value) {
    if (value.isZero()) {
      kernel_.push_back(std::move(row));
    } else {
      heap_.push_back({std::move(row), std::move(value)});
      std::push_heap(heap_.begin(), heap_.end());
    }
  }

  /// Subtracts vectors from each other until at most one has a value other than 0.
  void reduceToDivisor() {
    while (heap_.size() > 1) {
      ValuedRow largest = takeLargest();
      const ValuedRow& next = heap_.front();
      const ZZ quotient = nearestQuotient(largest.value, next.value);
      subtractMultiple(largest.row, quotient, next.row);
      mpz_submul(largest.value.get(), quotient.get(), next.value.get());
      add(std::move(largest.row), std::move(largest.value));
    }
  }

  bool hasDivisor() const { return !heap_.empty(); }
  /// Of the vector that is left; only if hasDivisor().
  const std::vector<ZZ>& divisorRow() const { return heap_.front().row; }
  const ZZ& divisor() const { return heap_.front().value; }
  /// The vectors of value 0.
  std::vector<std::vector<ZZ>> takeKernel() { return std::move(kernel_); }

 private:
  ValuedRow takeLargest() {
    std::pop_heap(heap_.begin(), heap_.end());
    ValuedRow largest = std::move(heap_.back());
    heap_.pop_back();
    return largest;
  }

  /// A heap by magnitude of the values.
  std::vector<ValuedRow> heap_;
  std::vector<std::vector<ZZ>> kernel_;
};

/// False if no point of the coset satisfies the equation.
bool intersect(BoxCoset& coset, const IntegerEquation& equation) {
  ValuedRows rows;
  std::vector<ZZ> values = equation.form.along(coset.basis);
  for (std::size_t i = 0; i < values.size(); ++i)
    rows.add(std::move(coset.basis[i]), std::move(values[i]));
  coset.basis.clear();
  if (!equation.modulus.isZero()) rows.add(std::vector<ZZ>(coset.point.size()), equation.modulus);
  rows.reduceToDivisor();
  const ZZ residual = equation.form.at(coset.point);
  if (rows.hasDivisor()) {
    if (mpz_divisible_p(residual.get(), rows.divisor().get()) == 0) return false;
    subtractMultiple(coset.point, exactQuotient(residual, rows.divisor()), rows.divisorRow());
  } else if (!residual.isZero()) {
    return false;
  }
  coset.basis = rows.takeKernel();
  return true;
}

}  // namespace

CosetEnd intersect(BoxCoset& coset, std::span<const IntegerEquation> equations,
                   const CosetReducer& reduce, const std::function<bool()>& mayGoOn) {
  std::size_t reducedBits = longestEntry(coset.basis);
  for (const IntegerEquation& equation : equations) {
    if (!mayGoOn()) return CosetEnd::stopped;
    if (!intersect(coset, equation)) return CosetEnd::noPoint;
    if (longestEntry(coset.basis) < reducedBits + bitsBetweenReductions) continue;
    if (!reduce(coset)) return CosetEnd::stopped;
    reducedBits = longestEntry(coset.basis);
  }
  return CosetEnd::made;
}

}  // namespace starsift

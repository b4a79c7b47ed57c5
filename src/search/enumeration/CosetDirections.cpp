#include "search/enumeration/CosetDirections.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "system/Exceptions.h"

namespace starsift {

namespace {

using Row = CosetDirections::Row;

/// sum := <a, b>.
void setInner(BigFloat& sum, const Row& a, const Row& b, BigFloat& product) {
  sum = 0.0;
  for (std::size_t j = 0; j < a.size(); ++j) {
    if (a[j].isZero() || b[j].isZero()) continue;
    product.setProduct(a[j], b[j]);
    sum += product;
  }
}

/// a -= factor * b.
void subtractMultiple(Row& a, const BigFloat& factor, const Row& b, BigFloat& product) {
  if (factor.isZero()) return;
  for (std::size_t j = 0; j < a.size(); ++j) {
    if (b[j].isZero()) continue;
    product.setProduct(factor, b[j]);
    a[j] -= product;
  }
}

/// p - m.
Row fromMiddle(const BoxCoset& coset, mp_bitcnt_t precision) {
  Row result(coset.point.size(), BigFloat(precision));
  for (std::size_t j = 0; j < result.size(); ++j) {
    result[j] = coset.point[j] + coset.point[j] - coset.lower[j] - coset.upper[j];
    result[j].divideByPowerOfTwo(1);
  }
  return result;
}

/// About 1 over the range of each coordinate; more for a range close to the greatest double or
/// beyond it.
std::vector<double> scaleOf(const BoxCoset& coset) {
  const std::size_t n = coset.point.size();
  std::vector<double> scale(n);
  constexpr double least = 0x1p-1000;
  BigFloat range(64);
  for (std::size_t j = 0; j < n; ++j) {
    range = coset.upper[j] - coset.lower[j];
    scale[j] = range.isZero() ? static_cast<double>(n) + 1 : std::max(1 / range.toDouble(), least);
  }
  return scale;
}

/// Modified Gram-Schmidt process over numbers of one precision.
class Process {
 public:
  Process(const BoxCoset& coset, const std::vector<double>& scale, mp_bitcnt_t precision,
          const std::function<bool()>& mayGoOn)
      : coset_(coset),
        mayGoOn_(mayGoOn),
        precision_(precision),
        zero_(coset.point.size(), BigFloat(precision)),
        scale_(zero_),
        product_(precision),
        sum_(precision) {
    for (std::size_t j = 0; j < scale.size(); ++j) scale_[j] = scale[j];
  }

  /// False if the precision doesn't suffice, or if it was ended.
  bool orthogonalise() {
    for (const std::vector<ZZ>& row : coset_.basis) {
      if (isEnded()) return false;
      stars_.push_back(scaled(row));
      setInner(sum_, stars_.back(), stars_.back(), product_);
      const BigFloat whole(sum_);
      mu_.emplace_back(removeSpan(stars_.back()));
      setInner(sum_, stars_.back(), stars_.back(), product_);
      lengths_.push_back(sum_);
      BigFloat least(whole);
      least.divideByPowerOfTwo(precision_);
      if (!(least < sum_)) return false;
    }
    return true;
  }

  /// None if it was ended.
  std::optional<CosetDirections> result(const std::vector<double>& scale) {
    CosetDirections data{scale, {}, duals(), rest(), lengths_, precision_};
    if (ended_) return std::nullopt;
    data.directions = std::move(stars_);
    for (std::vector<Row>* rows : {&data.directions, &data.duals})
      for (Row& row : *rows) multiply(row);
    multiply(data.rest);
    return data;
  }

  bool isEnded() {
    ended_ = ended_ || !mayGoOn_();
    return ended_;
  }

 private:
  /// D row.
  Row scaled(const std::vector<ZZ>& row) const {
    Row result(zero_);
    for (std::size_t j = 0; j < row.size(); ++j) {
      result[j] = row[j];
      result[j] *= scale_[j];
    }
    return result;
  }

  /// row := D row.
  void multiply(Row& row) const {
    for (std::size_t j = 0; j < row.size(); ++j) row[j] *= scale_[j];
  }

  /// Subtracts from `row` its part along the b*_k known so far; returns the coefficients.
  Row removeSpan(Row& row) {
    Row coefficients;
    for (std::size_t i = 0; i < lengths_.size(); ++i) {
      setInner(sum_, row, stars_[i], product_);
      sum_ /= lengths_[i];
      coefficients.push_back(sum_);
      subtractMultiple(row, sum_, stars_[i], product_);
    }
    return coefficients;
  }

  /// The dual basis of the rows D b_k, by back substitution; not whole if it was ended.
  std::vector<Row> duals() {
    std::vector<Row> result(stars_);
    for (std::size_t k = stars_.size(); k-- > 0 && !isEnded();) {
      for (BigFloat& entry : result[k]) entry /= lengths_[k];
      for (std::size_t i = k + 1; i < stars_.size(); ++i)
        subtractMultiple(result[k], mu_[i][k], result[i], product_);
    }
    return result;
  }

  /// The part of D (p - m) orthogonal to all rows.
  Row rest() {
    Row result = fromMiddle(coset_, precision_);
    multiply(result);
    removeSpan(result);
    return result;
  }

  const BoxCoset& coset_;
  const std::function<bool()>& mayGoOn_;
  bool ended_ = false;
  mp_bitcnt_t precision_;
  Row zero_;
  Row scale_;
  std::vector<Row> stars_;
  std::vector<Row> mu_;
  std::vector<BigFloat> lengths_;
  BigFloat product_;
  BigFloat sum_;
};

/// Bits beyond which independent rows can't need more precision: |b*_k| / |b_k| of integer rows is
/// at least the inverse of the product of all lengths, by Hadamard's inequality.
mp_bitcnt_t greatestPrecision(const BoxCoset& coset) {
  std::size_t bits = 64;
  for (const std::vector<ZZ>& row : coset.basis)
    for (const ZZ& entry : row) bits = std::max(bits, mpz_sizeinbase(entry.get(), 2));
  for (std::size_t j = 0; j < coset.point.size(); ++j)
    for (const ZZ* entry : {&coset.point[j], &coset.lower[j], &coset.upper[j]})
      bits = std::max(bits, mpz_sizeinbase(entry->get(), 2));
  return 8 * (coset.basis.size() + 2) * (bits + coset.point.size());
}

}  // namespace

std::optional<CosetDirections> cosetDirections(const BoxCoset& coset,
                                               const std::function<bool()>& mayGoOn) {
  const std::vector<double> scale = scaleOf(coset);
  const mp_bitcnt_t greatest = greatestPrecision(coset);
  for (mp_bitcnt_t precision = 192;; precision *= 2) {
    Process process(coset, scale, precision, mayGoOn);
    if (process.orthogonalise()) return process.result(scale);
    if (process.isEnded()) return std::nullopt;
    if (precision > greatest)
      throw FatalPrecisionException("enumeration of a basis of dependent rows");
  }
}

CosetDirections cosetDirections(const BoxCoset& coset) {
  return *cosetDirections(coset, [] { return true; });
}

void movePointToMiddle(BoxCoset& coset, CosetDirections& data) {
  const std::size_t n = coset.point.size();
  const mp_bitcnt_t precision = data.precision;
  Row parts;
  BigFloat product(precision);
  for (std::size_t k = data.directions.size(); k-- > 0;) {
    BigFloat part(precision);
    setInner(part, data.directions[k], fromMiddle(coset, precision), product);
    part /= data.squaredLengths[k];
    const ZZ factor = part.nearestInteger();
    product = factor;
    part -= product;
    parts.push_back(std::move(part));
    if (factor.isZero()) continue;
    for (std::size_t j = 0; j < n; ++j) coset.point[j] -= factor * coset.basis[k][j];
  }
  data.rest = fromMiddle(coset, precision);
  for (std::size_t j = 0; j < n; ++j) {
    product = data.scale[j];
    data.rest[j] *= product;
    data.rest[j] *= product;
  }
  for (std::size_t i = 0; i < parts.size(); ++i)
    subtractMultiple(data.rest, parts[i], data.directions[parts.size() - 1 - i], product);
}

}  // namespace starsift

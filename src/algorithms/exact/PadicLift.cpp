#include "algorithms/exact/PadicLift.h"

#include <utility>

#include "algorithms/exact/IntegerMatrix.h"
#include "numbers/QQStorage.h"

namespace starsift {

namespace {

/// A random residue is mistaken for a short rational once in 2^spareBits.
constexpr std::size_t spareBits = 20;

std::size_t bits(const ZZ& value) {
  return mpz_sizeinbase(value.get(), 2);
}

void subtract(ZZ& target, Int128 value) {
  const bool isNegative = value < 0;
  const auto magnitude = isNegative ? -static_cast<UInt128>(value) : static_cast<UInt128>(value);
  const auto low = static_cast<unsigned long>(magnitude);
  const auto high = static_cast<unsigned long>(magnitude >> 64U);
  if (high == 0) {
    (isNegative ? mpz_add_ui : mpz_sub_ui)(target.get(), target.get(), low);
    return;
  }
  ZZ number(high);
  mpz_mul_2exp(number.get(), number.get(), 64);
  mpz_add_ui(number.get(), number.get(), low);
  (isNegative ? mpz_add : mpz_sub)(target.get(), target.get(), number.get());
}

/// Never overflows: a digit is below 2^30, an entry at most 2^63 in magnitude, and no
/// machine holds 2^34 rows.
Int128 dot(std::span<const std::uint32_t> digits, std::span<const std::int64_t> entries) {
  Int128 sum = 0;
  for (std::size_t i = 0; i < digits.size(); ++i)
    sum += static_cast<Int128>(entries[i]) * static_cast<std::int64_t>(digits[i]);
  return sum;
}

/// The integer of least magnitude that is `residue` modulo `modulus`.
ZZ symmetricRest(const ZZ& residue, const ZZ& modulus) {
  ZZ result;
  mpz_fdiv_r(result.get(), residue.get(), modulus.get());
  const ZZ complement = modulus - result;
  return complement < result ? -complement : result;
}

/// Positive denominator of the fraction that is `residue` modulo `modulus` and whose
/// numerator is within `bound`. P. S. Wang, SYMSAC '81.
ZZ reconstructedDenominator(const ZZ& residue, const ZZ& modulus, const ZZ& bound) {
  ZZ upper = modulus;
  ZZ lower = residue.sign() ? residue : residue + modulus;
  ZZ before = ZZ::zero();
  ZZ result = ZZ::one();
  ZZ quotient;
  while (lower > bound) {
    divMod(upper, lower, quotient, upper);
    upper.swap(lower);
    mpz_submul(before.get(), quotient.get(), result.get());
    before.swap(result);
  }
  return abs(result);
}

}  // namespace

PivotBlock::PivotBlock(std::span<const IntegerRow> rows, const ModularSplit& split,
                       const PrimeField& field)
    : field_(field), pivots_(split.pivots) {
  kept_.reserve(split.kept.size());
  for (const std::size_t i : split.kept) kept_.push_back(&rows[i]);
  for (const IntegerRow* row : kept_) {
    std::vector<std::uint32_t>& residues = inverse_.emplace_back();
    residues.reserve(order());
    for (const std::size_t column : pivots_) residues.push_back(field_.residue(*row, column));
    determinantBits_ += normBits(pivotEntries(*row));
  }
  invert(inverse_, field_);
  keepBlock();
}

void PivotBlock::keepBlock() {
  smallColumns_.assign(order(), std::vector<std::int64_t>(order()));
  for (std::size_t i = 0; i < order(); ++i) {
    if (!row(i).isSmall()) {
      bigRows_.push_back(i);
      bigEntries_.push_back(pivotEntries(row(i)));
      continue;
    }
    for (std::size_t j = 0; j < order(); ++j) smallColumns_[j][i] = row(i).small(pivots_[j]);
  }
}

std::vector<ZZ> PivotBlock::pivotEntries(const IntegerRow& row) const {
  std::vector<ZZ> entries;
  entries.reserve(order());
  for (const std::size_t column : pivots_) entries.push_back(row.entry(column));
  return entries;
}

std::size_t PivotBlock::sufficientDigits(const IntegerRow& row) const {
  // Cramer: the denominator is at most det A, a numerator a determinant in which
  // `row` replaces a row of A, whose norm is at least 1.
  const std::size_t length = determinantBits_ + normBits(pivotEntries(row));
  return (2 * length + spareBits + 4) / field_.digitBits() + 1;
}

std::vector<std::uint32_t> PivotBlock::solveModulo(std::span<const ZZ> b) const {
  LazySum sum(field_, order());
  for (std::size_t i = 0; i < order(); ++i) {
    const std::uint32_t factor = field_.residue(b[i]);
    if (factor != 0) sum.addMultiple(factor, inverse_[i], 0);
  }
  std::vector<std::uint32_t> result(order());
  for (std::size_t i = 0; i < order(); ++i) result[i] = sum[i];
  return result;
}

void PivotBlock::divideOut(std::vector<ZZ>& b, std::span<const std::uint32_t> c) const {
  for (std::size_t j = 0; j < order(); ++j) subtract(b[j], dot(c, smallColumns_[j]));
  // The entries of a big row are contiguous in memory, those of a column are not.
  for (std::size_t i = 0; i < bigRows_.size(); ++i)
    for (std::size_t j = 0; j < order(); ++j)
      mpz_submul_ui(b[j].get(), bigEntries_[i][j].get(), c[bigRows_[i]]);
  for (ZZ& entry : b) mpz_divexact_ui(entry.get(), entry.get(), field_.prime());
}

PadicLift::PadicLift(const PivotBlock& block, const IntegerRow& row)
    : block_(&block), residual_(block.pivotEntries(row)) {}

void PadicLift::liftTo(std::size_t digits) {
  while (digits_.size() < digits) {
    digits_.push_back(block_->solveModulo(residual_));
    block_->divideOut(residual_, digits_.back());
  }
}

ZZ PadicLift::value(std::size_t i) const {
  ZZ value;
  for (std::size_t k = digits_.size(); k-- > 0;) {
    mpz_mul_ui(value.get(), value.get(), block_->field().prime());
    mpz_add_ui(value.get(), value.get(), digits_[k][i]);
  }
  return value;
}

ZZ PadicLift::modulus() const {
  ZZ modulus;
  mpz_ui_pow_ui(modulus.get(), block_->field().prime(), digits_.size());
  return modulus;
}

std::optional<ZZ> PadicLift::denominator() const {
  const ZZ modulus = this->modulus();
  // 2 * bound^2 < modulus: no two fractions with numerators and denominators up to the bound
  // have the same residue.
  ZZ bound;
  mpz_fdiv_q_2exp(bound.get(), modulus.get(), spareBits + 2);
  mpz_sqrt(bound.get(), bound.get());
  ZZ result = ZZ::one();
  for (std::size_t i = 0; i < block_->order(); ++i) {
    const ZZ numerator = symmetricRest(value(i) * result, modulus);
    if (abs(numerator) > bound) result *= reconstructedDenominator(numerator, modulus, bound);
    if (result > bound) return std::nullopt;
  }
  return result;
}

std::optional<Coefficients> PadicLift::over(const ZZ& denominator) const {
  const ZZ modulus = this->modulus();
  Coefficients result{{}, denominator};
  result.numerators.reserve(block_->order());
  for (std::size_t i = 0; i < block_->order(); ++i) {
    ZZ& numerator = result.numerators.emplace_back(value(i) * denominator);
    numerator = symmetricRest(numerator, modulus);
    if (bits(numerator) + spareBits > bits(modulus)) return std::nullopt;
  }
  return result;
}

}  // namespace starsift

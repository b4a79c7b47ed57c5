#include "search/enumeration/CosetReduction.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>

#include "lattice/reduce/BlockReduction.h"
#include "lattice/reduce/LllReduction.h"
#include "numbers/Conversion.h"
#include "numbers/VectorQQ.h"
#include "search/enumeration/CosetDirections.h"
#include "system/Exceptions.h"

namespace starsift {

namespace {

/// Steps with deep insertions, per row. A reduced basis needs about a hundred; they are not bounded
/// by a polynomial, though, and rounding errors may repeat them.
constexpr std::uint64_t maxDeepSteps = 1000;
constexpr std::uint64_t unlimited = std::numeric_limits<std::uint64_t>::max();

/// Passes that may gain nothing.
constexpr int maxFruitlessPasses = 20;

/// Steps of a pass, per row. Gram-Schmidt data of one row are made from kept data of others, and
/// the errors grow from row to row: ten times in a thousand steps with deep insertions. A pass
/// begins with new ones.
constexpr std::uint64_t maxPassSteps = 20;

using MayGoOn = std::function<bool()>;

/// Ends a reduction when it is told to, or after a number of steps, and pauses it.
class Stopper : public RowVisitor {
 public:
  Stopper(const MayGoOn& mayGoOn, std::uint64_t steps) : mayGoOn_(mayGoOn), steps_(steps) {}

  /// A pause is due after so many steps.
  void beginPass(std::uint64_t steps) { untilPause_ = steps; }
  void onRow(Index) override {}
  bool mayStep(const PassStatus&) override {
    wasEnded_ = wasEnded_ || !mayGoOn_();
    if (hasStopped() || hasPaused()) return false;
    --steps_;
    --untilPause_;
    return true;
  }
  void onStepped(const PassStatus&) override {}
  /// By the caller of the reduction.
  bool wasEnded() const { return wasEnded_; }
  bool hasStopped() const { return wasEnded_ || steps_ == 0; }
  bool hasPaused() const { return untilPause_ == 0; }

 private:
  const MayGoOn& mayGoOn_;
  std::uint64_t steps_;
  std::uint64_t untilPause_ = 0;
  bool wasEnded_ = false;
};

/// Integer weights of the coordinates, close to a multiple of 1 over their ranges.
std::vector<ZZ> weightsOf(const BoxCoset& coset) {
  const std::size_t n = coset.point.size();
  std::vector<ZZ> ranges;
  ZZ greatest(1);
  for (std::size_t j = 0; j < n; ++j) {
    ranges.push_back(std::max(coset.upper[j] - coset.lower[j], ZZ()));
    greatest = std::max(greatest, ranges[j]);
  }
  // Ranges that don't divide the greatest one have weights with an error of a part in 128.
  const bool allDivide = std::all_of(ranges.begin(), ranges.end(), [&](const ZZ& range) {
    return range.isZero() || mpz_divisible_p(greatest.get(), range.get()) != 0;
  });
  if (!allDivide) greatest *= ZZ(64);
  std::vector<ZZ> weights(n);
  for (std::size_t j = 0; j < n; ++j) {
    if (ranges[j].isZero())
      weights[j] = greatest * ZZ(static_cast<long>(n) + 1);
    else
      mpz_tdiv_q(weights[j].get(), greatest.get(), ranges[j].get());
  }
  return weights;
}

/// The rows of the basis times the weights.
Matrix<QQ> weightedRows(const BoxCoset& coset, const std::vector<ZZ>& weights) {
  const auto d = static_cast<Index>(coset.basis.size());
  Matrix<QQ> rows(d, static_cast<Index>(weights.size()));
  for (Index k = 1; k <= d; ++k)
    for (Index j = 1; j <= rows.columnCount(); ++j)
      rows[k][j] =
          QQ(coset.basis[static_cast<std::size_t>(k - 1)][static_cast<std::size_t>(j - 1)] *
             weights[static_cast<std::size_t>(j - 1)]);
  return rows;
}

void storeRows(const Matrix<QQ>& rows, const std::vector<ZZ>& weights, BoxCoset& coset) {
  for (std::size_t k = 0; k < coset.basis.size(); ++k)
    for (std::size_t j = 0; j < weights.size(); ++j)
      coset.basis[k][j] = exactQuotient(
          rows[static_cast<Index>(k + 1)][static_cast<Index>(j + 1)].numerator(), weights[j]);
}

/// Passes until the basis is reduced; false if the reduction was ended or gave up.
template <class T>
bool reduceFully(Basis<T, dbl_t>& basis, Stopper& stopper, bool deep) {
  const Index d = basis.n;
  GramSchmidtData<dbl_t> data;
  data.resize(d);
  LllSettings<dbl_t> settings;
  settings.deep = deep;
  LllReduction<T, dbl_t> reduction(basis, data, stopper, settings);
  dbl_t before = std::numeric_limits<dbl_t>::infinity();
  for (int fruitless = 0; fruitless < maxFruitlessPasses;) {
    PassStatus status{1, d, d, std::numeric_limits<Index>::max()};
    stopper.beginPass(maxPassSteps * static_cast<std::uint64_t>(d));
    reduction.pass(status);
    if (stopper.hasStopped()) return false;
    if (stopper.hasPaused()) {
      basis.forgetAll();
      continue;
    }
    if (reduction.allTested(d) && reduction.renewLongData(d) && reduction.isReduced(d)) return true;
    const dbl_t after = reduction.potential(d);
    if (status.counts.swaps == 0 || !(after < before)) ++fruitless;
    before = after;
    reduction.unmarkUnreduced(d);
  }
  return false;
}

/// LLL reduction, then deep insertions; as reduceFully(). `rows` stay a basis of their lattice.
template <class T>
bool reduceRows(Matrix<T>& rows, const MayGoOn& mayGoOn, bool& wasEnded) {
  Basis<T, dbl_t> basis;
  basis.reset(&rows, T(1));
  Stopper stopper(mayGoOn, unlimited);
  bool isReduced = reduceFully(basis, stopper, false);
  if (isReduced) {
    Stopper deepStopper(mayGoOn, maxDeepSteps * static_cast<std::uint64_t>(rows.rowCount()));
    basis.forgetAll();
    isReduced = reduceFully(basis, deepStopper, true);
    if (!isReduced && !deepStopper.wasEnded()) {
      basis.forgetAll();
      isReduced = reduceFully(basis, stopper, false);
    }
    wasEnded = deepStopper.wasEnded();
  }
  wasEnded = wasEnded || stopper.wasEnded();
  rows = basis.B();
  return isReduced;
}

/// Block reduction of LLL-reduced rows; as reduceFully().
template <class T>
bool reduceRowsInBlocks(Matrix<T>& rows, Index size, const BlockSettings& settings,
                        const MayGoOn& mayGoOn, bool& wasEnded) {
  Basis<T, dbl_t> basis;
  basis.reset(&rows, T(1));
  GramSchmidtData<dbl_t> data;
  data.resize(basis.n);
  Stopper stopper(mayGoOn, unlimited);
  stopper.beginPass(unlimited);
  LllReduction<T, dbl_t> lll(basis, data, stopper, {});
  BlockReduction<T, dbl_t>(basis, data, stopper, lll, settings).run(basis.n, size);
  basis.forgetAll();
  const bool isReduced = !stopper.hasStopped() && reduceFully(basis, stopper, false);
  wasEnded = stopper.wasEnded();
  rows = basis.B();
  return isReduced;
}

/// Makes `reduce` reduce the rows in long double, which is faster; empty if that can't hold the
/// numbers or gave up.
template <class Reduce>
std::optional<bool> reduceShortRows(Matrix<QQ>& rows, const Reduce& reduce) {
  try {
    Matrix<dbl_t> shortRows;
    shortRows.convertFrom(rows, false);
    bool wasEnded = false;
    const bool isReduced = reduce(shortRows, wasEnded);
    rows.convertFrom(shortRows, false);
    if (isReduced || wasEnded) return isReduced;
  } catch (const PrecisionException&) {
    // The rows of this try are lost; the given ones are a basis as well.
  }
  return std::nullopt;
}

}  // namespace

bool reduceBasis(BoxCoset& coset, const std::function<bool()>& mayGoOn) {
  if (coset.basis.empty()) return true;
  const std::vector<ZZ> weights = weightsOf(coset);
  Matrix<QQ> rows = weightedRows(coset, weights);
  const auto reduce = [&mayGoOn](auto& any, bool& ended) {
    return reduceRows(any, mayGoOn, ended);
  };
  std::optional<bool> isReduced = reduceShortRows(rows, reduce);
  bool wasEnded = false;
  if (!isReduced) isReduced = reduce(rows, wasEnded);
  storeRows(rows, weights, coset);
  return *isReduced;
}

bool reduceBlocks(BoxCoset& coset, Index size, const BlockSettings& settings,
                  const std::function<bool()>& mayGoOn) {
  if (coset.basis.empty()) return true;
  const std::vector<ZZ> weights = weightsOf(coset);
  Matrix<QQ> rows = weightedRows(coset, weights);
  const std::optional<bool> isReduced =
      reduceShortRows(rows, [&](Matrix<dbl_t>& shortRows, bool& ended) {
        return reduceRowsInBlocks(shortRows, size, settings, mayGoOn, ended);
      });
  if (!isReduced) return false;
  storeRows(rows, weights, coset);
  return *isReduced;
}

bool reduceCoset(BoxCoset& coset, const std::function<bool()>& mayGoOn) {
  const bool isReduced = reduceBasis(coset, mayGoOn);
  if (isEmptyBox(coset)) return isReduced;
  std::optional<CosetDirections> data = cosetDirections(coset, mayGoOn);
  if (!data) return false;
  movePointToMiddle(coset, *data);
  return isReduced;
}

}  // namespace starsift

#include "search/SampleVectors.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <random>

#include "search/Candidate.h"
#include "search/RowCombination.h"

namespace starsift {

namespace samplevectors {

/// Draws vectors of working space near row `start` of the first `count` rows of a basis.
template <class T, class R>
class Sampler {
 public:
  /// The second nearest planes are an equal choice at `choices` rows.
  Sampler(const Lattice<T, R>& lattice, Index count, Index start, Index choices)
      : rows_(lattice.basis.B()),
        mu_(lattice.gramSchmidt.mu),
        count_(count),
        start_(start),
        firstChoice_(count - choices + 1) {}

  Vector<T> draw(std::mt19937_64& random) const {
    RowCombination<T> sum(rows_, rows_[start_], "sample overflow");
    Vector<R> centres(count_);
    std::copy_n(mu_[start_].begin(), start_ - 1, centres.begin());
    for (Index i = count_; i >= 1; --i) {
      if (i == start_) continue;
      const R factor = multiple(centres[i], i, random);
      if (factor == R()) continue;
      for (Index j = 1; j < i; ++j) centres[j] -= factor * mu_[i][j];
      sum.subtract(i, factor);
    }
    return sum.vector();
  }

 private:
  /// The multiple of row i to be subtracted.
  R multiple(const R& centre, Index i, std::mt19937_64& random) const {
    const R nearest = std::round(centre);
    if (i < firstChoice_ || random() % 2 == 0) return nearest;
    return nearest + (centre < nearest ? R(-1) : R(1));
  }

  const Matrix<T>& rows_;
  const Matrix<R>& mu_;
  Index count_;
  Index start_;
  Index firstChoice_;
};

}  // namespace samplevectors

template <class T, class R>
void sampleVectors(Lattice<T, R>& lattice) {
  const std::uint64_t limit = lattice.params.sampleLimit;
  const Index count = lattice.gramSchmidt.validUpTo(lattice.basis);
  const Index start = inhomogeneousRow(lattice.basis.B(), count);
  if (start == 0) return;
  // Twice as many vectors as are drawn, so that most are drawn once.
  const auto choices = std::min(count, static_cast<Index>(std::bit_width(limit)) + 1);
  const samplevectors::Sampler<T, R> sampler(lattice, count, start, choices);
  std::mt19937_64 random(lattice.run.seed + static_cast<std::uint64_t>(lattice.run.restarts));
  for (std::uint64_t i = 0; i < limit && notifyStep(lattice); ++i) {
    const Vector<T> vector = lattice.backMap(sampler.draw(random));
    checkCandidate(lattice, vector);
    lattice.found.shortVectors.offer(vector);
  }
}

template void sampleVectors(Lattice<long double, long double>&);
template void sampleVectors(Lattice<QQ, long double>&);

}  // namespace starsift

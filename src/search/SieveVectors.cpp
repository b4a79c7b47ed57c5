#include "search/SieveVectors.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>
#include <vector>

#include "algorithms/reduction/SizeReduce.h"
#include "numbers/Conversion.h"
#include "numbers/VectorQQ.h"
#include "search/Candidate.h"

namespace starsift {

namespace sievevectors {

/// A vector with its rounded image.
template <class T, class R>
struct Sieved {
  explicit Sieved(Vector<T> given) : vector(std::move(given)) { renew(); }

  void renew() {
    image.resize(vector.dimension(), false);
    std::transform(vector.begin(), vector.end(), image.begin(), NumberConversion<R, T>::nearest);
    squaredLength = image * image;
  }
  bool isZero() const { return squaredLength == R(); }

  Vector<T> vector;
  Vector<R> image;
  R squaredLength;
};

/// Subtracts the multiple of `other`, not 0, that makes `v` shortest; false if that is 0, or if
/// rounding keeps `v` from getting shorter.
template <class T, class R>
bool shorten(Sieved<T, R>& v, const Sieved<T, R>& other) {
  const R factor = (v.image * other.image) / other.squaredLength;
  // One half is left alone: the two results are equally long.
  if (!(std::fabs(factor) > R(1) / R(2) + NumberTraits<R>::tolerance())) return false;
  Sieved<T, R> shorter = v;
  subtractMultiple(shorter.vector, other.vector,
                   NumberConversion<T, R>::ofInteger(std::round(factor)));
  shorter.renew();
  // Long coordinates cancel: the factor is then an error of their images, and another each time.
  if (!(shorter.squaredLength < v.squaredLength)) return false;
  v = std::move(shorter);
  return true;
}

/// Shortens `v` by the vectors until none can; true if it changed.
template <class T, class R>
bool shortenByAll(Sieved<T, R>& v, const std::vector<Sieved<T, R>>& vectors) {
  bool anyChange = false;
  for (std::size_t unchanged = 0, i = 0; unchanged < vectors.size() && !v.isZero();
       i = (i + 1) % vectors.size()) {
    const bool changed = shorten(v, vectors[i]);
    unchanged = changed ? 0 : unchanged + 1;
    anyChange = anyChange || changed;
  }
  return anyChange;
}

/// Moves the vectors that `v` shortens from `kept` to `waiting`, shortened.
template <class T, class R>
void moveShortened(const Sieved<T, R>& v, std::vector<Sieved<T, R>>& kept,
                   std::vector<Sieved<T, R>>& waiting) {
  const auto stays = [&](Sieved<T, R>& w) { return !shorten(w, v); };
  const auto moved = std::stable_partition(kept.begin(), kept.end(), stays);
  std::move(moved, kept.end(), std::back_inserter(waiting));
  kept.erase(moved, kept.end());
}

}  // namespace sievevectors

template <class T, class R>
void sieveVectors(Lattice<T, R>& lattice) {
  using List = std::vector<sievevectors::Sieved<T, R>>;
  ShortVectors<T>& collection = lattice.found.shortVectors;
  List waiting;
  List kept;
  for (const auto& entry : collection.entries()) waiting.emplace_back(*entry.vector);
  // The shortest one is taken first.
  std::reverse(waiting.begin(), waiting.end());
  while (!waiting.empty() && notifyStep(lattice)) {
    auto next = std::move(waiting.back());
    waiting.pop_back();
    sievevectors::shortenByAll(next, kept);
    if (next.isZero()) continue;
    checkCandidate(lattice, next.vector);
    collection.offer(next.vector);
    sievevectors::moveShortened(next, kept, waiting);
    kept.push_back(std::move(next));
  }
}

template void sieveVectors(Lattice<long double, long double>&);
template void sieveVectors(Lattice<QQ, long double>&);

}  // namespace starsift

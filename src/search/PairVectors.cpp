#include "search/PairVectors.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "numbers/VectorQQ.h"
#include "search/Candidate.h"

namespace starsift {

namespace pairvectors {

/// The vectors with a mark among the first `limit`.
template <class T>
std::vector<typename ShortVectors<T>::Entry> markedPartners(const ShortVectors<T>& collection,
                                                            std::size_t limit) {
  std::vector<typename ShortVectors<T>::Entry> partners;
  const auto& entries = collection.entries();
  for (std::size_t i = 0; i < std::min(limit, entries.size()); ++i)
    if (entries[i].isPaired) partners.push_back(entries[i]);
  return partners;
}

/// The first of these vectors without a mark; `limit` if there is none.
template <class T>
std::size_t firstUnmarked(const ShortVectors<T>& collection, std::size_t limit) {
  const auto& entries = collection.entries();
  for (std::size_t i = 0; i < std::min(limit, entries.size()); ++i)
    if (!entries[i].isPaired) return i;
  return limit;
}

template <class T, class R>
void takePair(Lattice<T, R>& lattice, const Vector<T>& pair, const T& bound) {
  ShortVectors<T>& collection = lattice.found.shortVectors;
  if (collection.supNormOf(pair) > bound) return;
  checkCandidate(lattice, pair);
  collection.offer(pair);
}

}  // namespace pairvectors

template <class T, class R>
void pairVectors(Lattice<T, R>& lattice) {
  ShortVectors<T>& collection = lattice.found.shortVectors;
  const std::size_t limit = lattice.params.pairLimit;
  for (std::size_t turn = 0; turn < limit; ++turn) {
    const std::size_t i = pairvectors::firstUnmarked(collection, limit);
    if (i == limit) return;
    // Copies: the collection changes while pairs are made.
    const auto next = collection.entries()[i];
    const auto partners = pairvectors::markedPartners(collection, limit);
    collection.markPaired(i);
    for (const auto& partner : partners) {
      const T bound = std::max(next.supNorm, partner.supNorm);
      for (const Vector<T>& pair :
           {*next.vector + *partner.vector, *next.vector - *partner.vector}) {
        if (!notifyStep(lattice)) return;
        pairvectors::takePair(lattice, pair, bound);
      }
    }
  }
}

template void pairVectors(Lattice<long double, long double>&);
template void pairVectors(Lattice<QQ, long double>&);

}  // namespace starsift

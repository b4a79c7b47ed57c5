#include "stars/StarOrder.h"

#include <algorithm>
#include <compare>
#include <string_view>
#include <utility>
#include <vector>

#include "core/HashedIndices.h"
#include "core/VectorHash.h"
#include "numbers/Conversion.h"
#include "numbers/QQ.h"
#include "stars/VersionOrder.h"

namespace starsift {

namespace {

std::strong_ordering compareBytes(std::string_view a, std::string_view b) {
  return a.compare(b) <=> 0;
}

/// Compares the texts of two vectors with `digits`, byte-wise, without writing
/// them completely: only the first components that differ matter.
template <class T>
std::strong_ordering compareTexts(const Vector<T>& a, const Vector<T>& b, int digits) {
  const Index common = std::min(a.dimension(), b.dimension());
  for (Index i = 1; i <= common; ++i) {
    if (a[i] == b[i]) continue;
    std::string left;
    std::string right;
    NumberTraits<T>::append(left, a[i], digits);
    NumberTraits<T>::append(right, b[i], digits);
    const auto order = compareBytes(left += ' ', right += ' ');
    if (order != 0) return order;
  }
  if (a.dimension() == b.dimension()) return std::strong_ordering::equal;
  // The shorter text continues with "]", which sorts after every first character
  // of a number except "i".
  std::string next;
  const bool aLonger = a.dimension() > common;
  NumberTraits<T>::append(next, (aLonger ? a : b)[common + 1], digits);
  const auto order = compareBytes(next, "]");
  return aLonger ? order : 0 <=> order;
}

/// The order of the texts in the file. Long double carries one digit more, which breaks
/// ties: if it matters the file is written from the exact lattice, and without the tie
/// break the order would depend on the previous one.
template <class T>
std::strong_ordering compareVectorTexts(const Vector<T>& a, const Vector<T>& b) {
  const auto order = compareTexts(a, b, fileDigits);
  return order != 0 ? order : compareTexts(a, b, dblDigits);
}

/// The data of one star that the order uses, computed once.
template <class T>
struct StarKey {
  const Star<T>* star;
  T targetNorm;
  T slackNorm;
  /// As unsigned, so that unknownTime comes last.
  std::uint64_t time;
  /// Position of the version among all that occur: higher is a higher version.
  std::size_t version;
};

/// Compares up to the time: negative, 0 or positive if a is before, equal to or after b.
template <class T>
std::weak_ordering compareValues(const StarKey<T>& a, const StarKey<T>& b) {
  if (!(a.targetNorm == b.targetNorm))
    return a.targetNorm < b.targetNorm ? std::weak_ordering::less : std::weak_ordering::greater;
  if (!(a.slackNorm == b.slackNorm))
    return a.slackNorm < b.slackNorm ? std::weak_ordering::less : std::weak_ordering::greater;
  return a.time <=> b.time;
}

/// Compares two stars with equal values and versions.
template <class T>
std::weak_ordering compareRest(const Star<T>& a, const Star<T>& b) {
  const auto order = compareVectorTexts(a.x(), b.x());
  return order != 0 ? order : compareBytes(a.paramsText, b.paramsText);
}

/// The order used for sorting: starLess, but if two stars are less than each other
/// the higher version comes first. So the result doesn't depend on the previous
/// order, and sorting a sorted file changes nothing.
template <class T>
bool comesBefore(const StarKey<T>& a, const StarKey<T>& b) {
  const auto values = compareValues(a, b);
  if (values != 0) return values < 0;
  if (a.version != b.version) return a.version > b.version;
  return compareRest(*a.star, *b.star) < 0;
}

template <class T>
StarKey<T> keyOf(const Star<T>& star, std::size_t version) {
  return {&star, star.targetNorm, star.slackNorm, static_cast<std::uint64_t>(star.time), version};
}

template <class T>
std::vector<StarKey<T>> keysOf(const Array<Star<T>>& stars) {
  std::vector<std::string_view> texts;
  texts.reserve(static_cast<std::size_t>(stars.dimension()));
  for (const Star<T>& star : stars) texts.emplace_back(star.versionText);
  const std::vector<std::size_t> versions = versionRanks(texts);
  std::vector<StarKey<T>> keys;
  keys.reserve(versions.size());
  auto version = versions.begin();
  for (const Star<T>& star : stars) keys.push_back(keyOf(star, *version++));
  return keys;
}

/// Moves heap[top] down until no child of it has a greater key; the heap is
/// heap[0..size-1], children of i at 2i + 1 and 2i + 2.
template <class T>
void siftDown(std::vector<StarKey<T>>& heap, std::size_t top, std::size_t size) {
  while (2 * top + 1 < size) {
    std::size_t child = 2 * top + 1;
    if (child + 1 < size && comesBefore(heap[child], heap[child + 1])) ++child;
    if (!comesBefore(heap[top], heap[child])) return;
    std::swap(heap[top], heap[child]);
    top = child;
  }
}

/// True if each star comes before the next: then no two are equal, and every sorting
/// algorithm leaves them unchanged.
template <class T>
bool isStrictlySorted(const std::vector<StarKey<T>>& keys) {
  return std::adjacent_find(keys.begin(), keys.end(), [](const auto& a, const auto& b) {
           return !comesBefore(a, b);
         }) == keys.end();
}

template <class T>
void heapSort(std::vector<StarKey<T>>& keys) {
  for (std::size_t top = keys.size() / 2; top-- > 0;) siftDown(keys, top, keys.size());
  for (std::size_t size = keys.size(); size > 1; --size) {
    std::swap(keys[0], keys[size - 1]);
    siftDown(keys, 0, size - 1);
  }
}

/// Finds, among the stars kept so far, the one that equals a given star.
///
/// Most stars already differ in a few components, so a sample of them is hashed
/// first: the rest of a long vector need not be read from memory. Stars with the
/// same sample are distinguished by the hash of all components.
template <class T>
class StarTable {
 public:
  StarTable(const Array<Star<T>>& stars, bool compareParams)
      : stars_(stars), compareParams_(compareParams) {
    bySample_.reserve(stars.dimension());
  }

  /// The index of an equal star that was entered before; if there is none `index` is
  /// entered and returned.
  Index findOrEnter(Index index) {
    const std::size_t sample = hash(stars_[index], sampleStep());
    const Index first = bySample_.findOrEnter(sample, index, [](Index) { return true; });
    if (first == index) return index;
    findOrEnterByAll(first);
    return findOrEnterByAll(index);
  }

 private:
  /// Number of components in a sample.
  static constexpr Index sampleSize = 8;

  Index findOrEnterByAll(Index index) {
    const auto isEqual = [&](Index other) { return other == index || equal(other, index); };
    return byAll_.findOrEnter(hash(stars_[index], 1), index, isEqual);
  }

  Index sampleStep() const { return stars_[1].dimension() / sampleSize + 1; }

  bool equal(Index a, Index b) const {
    return identical(stars_[a].x(), stars_[b].x()) &&
           (!compareParams_ || stars_[a].paramsText == stars_[b].paramsText);
  }

  std::size_t hash(const Star<T>& star, Index step) const {
    const std::size_t hash = hashOf(star.x(), step);
    return compareParams_ ? hash ^ std::hash<std::string>()(star.paramsText) : hash;
  }

  const Array<Star<T>>& stars_;
  bool compareParams_;
  /// The first star with each sample.
  HashedIndices bySample_;
  /// All stars whose sample is that of another star.
  HashedIndices byAll_;
};

/// Permutes the stars into the order of the keys, which point to them.
template <class T>
void arrange(Array<Star<T>>& stars, const std::vector<StarKey<T>>& keys) {
  std::vector<std::size_t> source;
  source.reserve(keys.size());
  for (const StarKey<T>& key : keys)
    source.push_back(static_cast<std::size_t>(key.star - stars.begin()));
  // One cycle of the permutation at a time, so that no second array is needed.
  for (std::size_t start = 0; start < source.size(); ++start) {
    if (source[start] == start) continue;
    Star<T> first = std::move(stars.begin()[start]);
    std::size_t to = start;
    while (source[to] != start) {
      const std::size_t from = std::exchange(source[to], to);
      stars.begin()[to] = std::move(stars.begin()[from]);
      to = from;
    }
    stars.begin()[to] = std::move(first);
    source[to] = to;
  }
}

}  // namespace

template <class T>
bool starLess(const Star<T>& a, const Star<T>& b) {
  const auto left = versionNumbers(a.versionText);
  const auto right = versionNumbers(b.versionText);
  const auto values = compareValues(keyOf(a, 0), keyOf(b, 0));
  if (values != 0) return values < 0;
  if (left > right) return true;
  return left == right ? compareRest(a, b) < 0 : a.paramsText < b.paramsText;
}

template <class T>
void sortStars(Array<Star<T>>& stars) {
  std::vector<StarKey<T>> keys = keysOf(stars);
  if (isStrictlySorted(keys)) return;
  heapSort(keys);
  arrange(stars, keys);
}

template <class T>
void removeDuplicates(Array<Star<T>>& stars, bool compareParams) {
  for (const Star<T>& star : stars)
    if (star.dimension() != stars[1].dimension()) fail("Vector: dimension mismatch9");
  StarTable<T> table(stars, compareParams);
  std::vector<Index> kept;
  kept.reserve(static_cast<std::size_t>(stars.dimension()));
  for (Index i = 1; i <= stars.dimension(); ++i) {
    const Index first = table.findOrEnter(i);
    if (first == i)
      kept.push_back(i);
    else
      stars[first].fresh = stars[first].fresh && stars[i].fresh;
  }
  keepOnly(stars, kept);
}

template bool starLess(const Star<long double>&, const Star<long double>&);
template void sortStars(Array<Star<long double>>&);
template void removeDuplicates(Array<Star<long double>>&, bool);
template bool starLess(const Star<QQ>&, const Star<QQ>&);
template void sortStars(Array<Star<QQ>>&);
template void removeDuplicates(Array<Star<QQ>>&, bool);

}  // namespace starsift

#include "files/StarOrder.h"

#include <compare>
#include <map>
#include <string_view>
#include <vector>

#include "numbers/Conversion.h"
#include "numbers/QQ.h"

namespace starsift {

namespace {

/// The numbers of a dotted version. Digits are accumulated without a check, so
/// other characters give whatever the arithmetic gives; overflow wraps. Missing
/// numbers count as 0: trailing zeros are dropped.
std::vector<std::uint64_t> versionNumbers(std::string_view text) {
  std::vector<std::uint64_t> numbers{0};
  for (const char c : text) {
    if (c == '.')
      numbers.push_back(0);
    else
      numbers.back() = numbers.back() * 10 + static_cast<std::uint64_t>(c - '0');
  }
  while (!numbers.empty() && numbers.back() == 0) numbers.pop_back();
  return numbers;
}

std::strong_ordering compareBytes(std::string_view a, std::string_view b) {
  return a.compare(b) <=> 0;
}

/// Compares the texts of two vectors with `digits`, byte-wise, without writing
/// them out: only the first components that differ decide.
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
  // The shorter text goes on with "]", which stands behind every first character
  // of a number but "i".
  std::string next;
  const bool aLonger = a.dimension() > common;
  NumberTraits<T>::append(next, (aLonger ? a : b)[common + 1], digits);
  const auto order = compareBytes(next, "]");
  return aLonger ? order : 0 <=> order;
}

/// The order of the texts that the file shows. Long double carries one digit more:
/// where that makes the difference the file is written from the exact lattice, and
/// without it the order would depend on the one before.
template <class T>
std::strong_ordering compareVectorTexts(const Vector<T>& a, const Vector<T>& b) {
  const auto order = compareTexts(a, b, fileDigits);
  return order != 0 ? order : compareTexts(a, b, dblDigits);
}

/// What the order asks of one star, worked out once.
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

/// Up to the time: negative, 0 or positive as a is before, beside or behind b.
template <class T>
std::weak_ordering compareValues(const StarKey<T>& a, const StarKey<T>& b) {
  if (!(a.targetNorm == b.targetNorm))
    return a.targetNorm < b.targetNorm ? std::weak_ordering::less : std::weak_ordering::greater;
  if (!(a.slackNorm == b.slackNorm))
    return a.slackNorm < b.slackNorm ? std::weak_ordering::less : std::weak_ordering::greater;
  return a.time <=> b.time;
}

/// Of two stars with equal values and versions.
template <class T>
std::weak_ordering compareRest(const Star<T>& a, const Star<T>& b) {
  const auto order = compareVectorTexts(a.x(), b.x());
  return order != 0 ? order : compareBytes(a.paramsText, b.paramsText);
}

/// The order that sorts: starLess, but where two stars are less than each other
/// the higher version comes first. So the result doesn't depend on the order
/// before, and sorting a sorted file changes nothing.
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
  std::map<std::string_view, std::vector<std::uint64_t>> versions;
  for (const Star<T>& star : stars) {
    const auto [entry, isNew] = versions.try_emplace(star.versionText);
    if (isNew) entry->second = versionNumbers(star.versionText);
  }
  std::map<std::vector<std::uint64_t>, std::size_t> ranks;
  for (const auto& [text, numbers] : versions) ranks.emplace(numbers, 0);
  std::size_t next = 0;
  for (auto& [numbers, rank] : ranks) rank = next++;
  std::vector<StarKey<T>> keys;
  keys.reserve(static_cast<std::size_t>(stars.dimension()));
  for (const Star<T>& star : stars)
    keys.push_back(keyOf(star, ranks.at(versions.at(star.versionText))));
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

template <class T>
void heapSort(std::vector<StarKey<T>>& keys) {
  for (std::size_t top = keys.size() / 2; top-- > 0;) siftDown(keys, top, keys.size());
  for (std::size_t size = keys.size(); size > 1; --size) {
    std::swap(keys[0], keys[size - 1]);
    siftDown(keys, 0, size - 1);
  }
}

/// Finds, among the stars kept so far, the one that equals a given star.
template <class T>
class StarTable {
 public:
  StarTable(const Array<Star<T>>& stars, bool compareParams)
      : stars_(stars), compareParams_(compareParams) {
    std::size_t size = 16;
    while (size < 2 * static_cast<std::size_t>(stars.dimension())) size *= 2;
    slots_.resize(size, 0);
  }

  /// The index of an equal star that was entered before, else `index`, which is
  /// entered then.
  Index findOrEnter(Index index) {
    const std::size_t mask = slots_.size() - 1;
    for (std::size_t k = hash(stars_[index]) & mask;; k = (k + 1) & mask) {
      if (slots_[k] == 0) return slots_[k] = index;
      if (equal(stars_[slots_[k]], stars_[index])) return slots_[k];
    }
  }

 private:
  bool equal(const Star<T>& a, const Star<T>& b) const {
    return identical(a.x(), b.x()) && (!compareParams_ || a.paramsText == b.paramsText);
  }

  std::size_t hash(const Star<T>& star) const {
    std::size_t hash = compareParams_ ? std::hash<std::string>()(star.paramsText) : 0;
    for (const T& component : star.x())
      hash = (hash ^ NumberTraits<T>::hash(component)) * 0x9E3779B97F4A7C15U + (hash >> 47U);
    return hash ^ (hash >> 32U);
  }

  const Array<Star<T>>& stars_;
  bool compareParams_;
  /// Open addressing, 0 for a free slot; twice the stars, so a free one is near.
  std::vector<Index> slots_;
};

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
  heapSort(keys);
  Array<Star<T>> sorted(stars.dimension());
  Index next = 0;
  for (const StarKey<T>& key : keys) sorted[++next] = std::move(stars[key.star - stars.data()]);
  stars.exchange(sorted);
}

template <class T>
void removeDuplicates(Array<Star<T>>& stars, bool compareParams) {
  for (const Star<T>& star : stars)
    if (star.dimension() != stars[1].dimension()) fail("Vector: dimension mismatch9");
  StarTable<T> table(stars, compareParams);
  Index kept = 0;
  for (Index i = 1; i <= stars.dimension(); ++i) {
    if (i != kept + 1) std::swap(stars[kept + 1], stars[i]);
    const Index first = table.findOrEnter(kept + 1);
    if (first == kept + 1)
      ++kept;
    else
      stars[first].fresh = stars[first].fresh && stars[kept + 1].fresh;
  }
  stars.resize(kept, false);
}

template bool starLess(const Star<long double>&, const Star<long double>&);
template void sortStars(Array<Star<long double>>&);
template void removeDuplicates(Array<Star<long double>>&, bool);
template bool starLess(const Star<QQ>&, const Star<QQ>&);
template void sortStars(Array<Star<QQ>>&);
template void removeDuplicates(Array<Star<QQ>>&, bool);

}  // namespace starsift

#include "lattice/state/ShortVectors.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <type_traits>
#include <utility>

#include "algorithms/reduction/SizeReduce.h"
#include "numbers/Conversion.h"
#include "numbers/VectorQQ.h"
#include "problem/Rows.h"

namespace starsift {

namespace {

template <class T>
using Entry = typename ShortVectors<T>::Entry;

/// The vector or its negative, so that the last entry other than 0 is positive.
template <class T>
Vector<T> withPositiveEnd(Vector<T> vector) {
  Index last = vector.dimension();
  while (last > 0 && vector[last] == T()) --last;
  if (last > 0 && vector[last] < T())
    for (T& entry : vector) entry = negated(entry);
  return vector;
}

template <class T>
bool isShorter(const Entry<T>& a, const Entry<T>& b) {
  if (!(a.supNorm == b.supNorm)) return a.supNorm < b.supNorm;
  return a.squaredLength < b.squaredLength;
}

/// A total order: vectors of equal norms are in lexicographic order.
template <class T>
bool precedes(const Entry<T>& a, const Entry<T>& b) {
  if (isShorter<T>(a, b)) return true;
  if (isShorter<T>(b, a)) return false;
  return std::lexicographical_compare(a.vector->begin(), a.vector->end(), b.vector->begin(),
                                      b.vector->end());
}

template <class T>
bool isSafe(const Vector<T>& vector) {
  return NumberTraits<T>::exact || supNorm(vector) <= T(safeBound);
}

}  // namespace

template <class T>
void ShortVectors<T>::open(std::size_t limit, Index first) {
  if (first != first_) entries_.clear();
  limit_ = limit;
  first_ = first;
  if (entries_.size() > limit) entries_.resize(limit);
}

template <class T>
bool ShortVectors<T>::offer(const Vector<T>& vector) {
  if (!mayTake(vector) || !isSafe(vector)) return false;
  Entry entry;
  entry.supNorm = supNormOf(vector);
  entry.squaredLength = squaredNorm<long double>(vector);
  if (entry.supNorm == T() || (isFull() && !isShorter<T>(entry, entries_.back()))) return false;
  entry.vector = std::make_shared<const Vector<T>>(withPositiveEnd(vector));
  const auto place = std::lower_bound(entries_.begin(), entries_.end(), entry, precedes<T>);
  if (place != entries_.end() && identical(*place->vector, *entry.vector)) return false;
  const auto position = std::distance(entries_.begin(), place);
  if (isFull()) entries_.pop_back();
  entries_.insert(std::next(entries_.begin(), position), std::move(entry));
  return true;
}

template <class T>
bool ShortVectors<T>::mayTake(const Vector<T>& vector) const {
  if (!isFull()) return true;
  if (limit_ == 0) return false;
  const T& greatest = entries_.back().supNorm;
  for (Index j = first_; j <= vector.dimension(); ++j)
    if (NumberTraits<T>::absolute(vector[j]) > greatest) return false;
  return true;
}

template <class T>
T ShortVectors<T>::supNormOf(const Vector<T>& vector) const {
  T norm = T();
  for (Index j = first_; j <= vector.dimension(); ++j)
    norm = std::max(norm, NumberTraits<T>::absolute(vector[j]));
  return norm;
}

template <class T>
template <class U>
void ShortVectors<T>::convertFrom(const ShortVectors<U>& other) {
  if constexpr (std::is_same_v<T, U>) {
    *this = other;
    return;
  }
  std::vector<Entry> entries;
  entries.reserve(other.entries_.size());
  for (const auto& from : other.entries_) {
    Entry& entry = entries.emplace_back();
    Vector<T> vector;
    vector.convertFrom(*from.vector, false);
    entry.vector = std::make_shared<const Vector<T>>(std::move(vector));
    entry.supNorm = NumberConversion<T, U>::convert(from.supNorm);
    entry.squaredLength = from.squaredLength;
    entry.isPaired = from.isPaired;
  }
  entries_ = std::move(entries);
  limit_ = other.limit_;
  first_ = other.first_;
}

template class ShortVectors<long double>;
template class ShortVectors<QQ>;
template void ShortVectors<long double>::convertFrom(const ShortVectors<long double>&);
template void ShortVectors<long double>::convertFrom(const ShortVectors<QQ>&);
template void ShortVectors<QQ>::convertFrom(const ShortVectors<QQ>&);
template void ShortVectors<QQ>::convertFrom(const ShortVectors<long double>&);

}  // namespace starsift

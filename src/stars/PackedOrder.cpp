// The order of packed stars and the removal of duplicates among them.

#include <algorithm>
#include <array>
#include <compare>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/HashedIndices.h"
#include "numbers/Conversion.h"
#include "stars/PackedStars.h"
#include "stars/StarLine.h"
#include "stars/StarOrder.h"
#include "stars/VersionOrder.h"
#include "system/Failure.h"
#include "text/IntegerText.h"

namespace starsift {

namespace {

/// What decides about most pairs without a look at the stars.
struct PackedKey {
  std::int64_t targetNorm = 0;
  /// Slack norm, time and rank of the version; see valuesOf().
  std::uint64_t values = 0;
  /// The first components if those of all stars are bits, otherwise 0.
  std::uint64_t bits = 0;
  /// Index of the star before the sort.
  std::size_t star = 0;
};

/// Bits of the fields of PackedKey::values, from the highest on.
constexpr std::array<unsigned, 3> fieldSizes{16, 32, 16};

/// Joins fields. One that is too long is the greatest of its size, and those behind it are 0, so
/// that the order stays right as far as it is decided.
std::uint64_t joined(const std::array<std::uint64_t, 3>& fields, bool& isWhole) {
  std::uint64_t result = 0;
  isWhole = true;
  for (std::size_t k = 0; k < fields.size(); ++k) {
    const std::uint64_t greatest = (std::uint64_t{1} << fieldSizes[k]) - 1;
    const std::uint64_t field = isWhole ? std::min(fields[k], greatest) : 0;
    isWhole = isWhole && field < greatest;
    result = result << fieldSizes[k] | field;
  }
  return result;
}

/// The first eight bytes of a text as a number; zeros behind a shorter one.
std::uint64_t headOf(std::string_view bytes) {
  std::uint64_t head = 0;
  for (std::size_t i = 0; i < sizeof head; ++i)
    head = head << 8U | (i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0U);
  return head;
}

std::strong_ordering compareIntegerTexts(std::int64_t a, std::int64_t b) {
  std::string left;
  std::string right;
  appendInteger(left, a);
  appendInteger(right, b);
  return (left += ' ').compare(right += ' ') <=> 0;
}

/// Compares the texts of two points of one dimension.
std::strong_ordering comparePoints(const PackedStar& a, const PackedStar& b) {
  if (a.form == b.form && a.x == b.x) return std::strong_ordering::equal;
  if (a.form == PointForm::bits && b.form == PointForm::bits) return a.x.compare(b.x) <=> 0;
  for (Index i = 1; i <= a.dimension; ++i) {
    const std::int64_t left = a.component(i);
    const std::int64_t right = b.component(i);
    if (left != right) return compareIntegerTexts(left, right);
  }
  return std::strong_ordering::equal;
}

/// The order of plain stars of one dimension.
class PackedOrder {
 public:
  /// The keys of the stars, unless some aren't plain, or differ in dimension.
  explicit PackedOrder(const PackedStars& stars) : stars_(stars) {
    rankVersions();
    keys_.reserve(stars.size());
    bool areBits = true;
    for (std::size_t i = 0; i < stars.size() && isPossible_; ++i) {
      const PackedStar star = stars[i];
      areBits = areBits && star.form == PointForm::bits;
      keys_.push_back(keyOf(star, i));
      isPossible_ =
          star.isPlain && star.dimension == stars[0].dimension && star.slackNorm.integer >= -1;
    }
    if (areBits) return;
    for (PackedKey& key : keys_) key.bits = 0;
  }

  bool isPossible() const { return isPossible_; }

  /// Sorts the keys; those that are in order already, as after an earlier sort, take no time.
  void sort() {
    const auto less = [this](const PackedKey& a, const PackedKey& b) { return compare(a, b) < 0; };
    const auto rest = std::is_sorted_until(keys_.begin(), keys_.end(), less);
    std::sort(rest, keys_.end(), less);
    std::inplace_merge(keys_.begin(), rest, keys_.end(), less);
  }

  /// Two stars that the order doesn't tell apart differ nevertheless.
  bool isOpen() const {
    return std::adjacent_find(keys_.begin(), keys_.end(),
                              [this](const PackedKey& a, const PackedKey& b) {
                                return compare(a, b) == 0 && differ(a, b);
                              }) != keys_.end();
  }

  const std::vector<PackedKey>& keys() const { return keys_; }

 private:
  void rankVersions() {
    std::vector<std::string_view> texts;
    for (std::uint32_t i = 0; i < stars_.textCount(); ++i) texts.emplace_back(stars_.text(i));
    ranks_ = versionRanks(texts);
  }

  PackedKey keyOf(const PackedStar& star, std::size_t i) const {
    bool isWhole = false;
    return {star.targetNorm.integer, joined(fieldsOf(star), isWhole), headOf(star.x), i};
  }

  /// The fields of the order between the target norm and the point; each ascends.
  std::array<std::uint64_t, 3> fieldsOf(const PackedStar& star) const {
    return {static_cast<std::uint64_t>(star.slackNorm.integer + 1),
            static_cast<std::uint64_t>(star.time), ranks_.size() - ranks_[star.version]};
  }

  std::strong_ordering compare(const PackedKey& a, const PackedKey& b) const {
    if (a.targetNorm != b.targetNorm) return a.targetNorm <=> b.targetNorm;
    if (a.values != b.values) return a.values <=> b.values;
    if (a.bits != b.bits && isWhole(a)) return a.bits <=> b.bits;
    const PackedStar left = stars_[a.star];
    const PackedStar right = stars_[b.star];
    auto order = fieldsOf(left) <=> fieldsOf(right);
    if (order == 0) order = comparePoints(left, right);
    if (order == 0 && left.params != right.params)
      order = stars_.text(left.params).compare(stars_.text(right.params)) <=> 0;
    return order;
  }

  /// The fields of a key decide about its values; so do those of a key with the same values.
  bool isWhole(const PackedKey& key) const {
    std::uint64_t rest = key.values;
    for (std::size_t k = fieldSizes.size(); k-- > 0; rest >>= fieldSizes[k]) {
      const std::uint64_t greatest = (std::uint64_t{1} << fieldSizes[k]) - 1;
      if ((rest & greatest) == greatest) return false;
    }
    return true;
  }

  bool differ(const PackedKey& a, const PackedKey& b) const {
    const PackedStar left = stars_[a.star];
    const PackedStar right = stars_[b.star];
    return left.version != right.version || left.values != right.values;
  }

  const PackedStars& stars_;
  /// By the index of a text; only those of versions are used.
  std::vector<std::size_t> ranks_;
  std::vector<PackedKey> keys_;
  bool isPossible_ = true;
};

}  // namespace

template <class T>
void PackedStars::sort() {
  PackedOrder order(*this);
  if (order.isPossible()) order.sort();
  if (!order.isPossible() || order.isOpen()) return sortUnpacked<T>();
  std::vector<unsigned char*> sorted;
  sorted.reserve(records_.size());
  for (const PackedKey& key : order.keys()) sorted.push_back(records_[key.star]);
  records_ = std::move(sorted);
}

template <class T>
void PackedStars::sortUnpacked() {
  Array<Star<T>> stars(static_cast<Index>(size()));
  for (std::size_t i = 0; i < size(); ++i)
    stars[static_cast<Index>(i) + 1].convertFrom(star(i), false);
  sortStars(stars);
  PackedStars sorted;
  for (const Star<T>& star : stars) {
    Star<QQ> exact;
    exact.convertFrom(star, false);
    sorted.append(exact);
  }
  *this = std::move(sorted);
}

void PackedStars::removeDuplicates(bool compareParams) {
  HashedIndices table;
  table.reserve(static_cast<Index>(size()));
  std::vector<bool> isKept(size());
  const auto at = [this](Index index) { return (*this)[static_cast<std::size_t>(index - 1)]; };
  for (std::size_t i = 0; i < size(); ++i) {
    const PackedStar star = (*this)[i];
    if (star.dimension != at(1).dimension) fail("Vector: dimension mismatch9");
    const auto isEqual = [&](Index other) {
      const PackedStar known = at(other);
      return known.form == star.form && known.x == star.x &&
             (!compareParams || known.params == star.params);
    };
    const std::uint64_t hash = hashOfText(star.x) ^ (compareParams ? star.params : 0);
    const auto index = static_cast<Index>(i) + 1;
    const Index first = table.findOrEnter(hash, index, isEqual);
    isKept[i] = first == index;
    if (!isKept[i] && !star.fresh) setStale(static_cast<std::size_t>(first - 1));
  }
  keepOnly(isKept);
}

template void PackedStars::sort<long double>();
template void PackedStars::sort<QQ>();

}  // namespace starsift

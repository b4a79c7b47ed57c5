#include "search/sieve/LatticeSieve.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <cmath>
#include <limits>
#include <numbers>
#include <numeric>
#include <utility>

#include "algorithms/reduction/LogGamma.h"
#include "search/sieve/SieveKernels.h"

namespace starsift {

namespace {

/// Vectors of a list over the power of 4/3, and those that it has at least.
constexpr double listFactor = 3.2;
constexpr std::size_t smallestList = 200;

/// Rows of the first lattice that is sieved.
constexpr std::size_t firstSize = 30;

/// Short vectors that are expected up to sign over the power of 4/3, and the share of these that is
/// enough.
constexpr double expectedFactor = 0.5;
constexpr double enoughShare = 0.5;

/// Share of the list that is replaced at a time.
constexpr double replacedShare = 0.15;

/// Vectors near the centre of a bucket: the least cosine of the angle between them, and the Hamming
/// distance of their hashes that nearly all of these have.
constexpr float bucketCosine = 0.31F;
constexpr unsigned bucketDistance = 104;

/// Vectors of a bucket, and buckets for one replacement of long vectors.
constexpr std::size_t mostInBucket = 4096;
constexpr int mostBuckets = 4000;

/// A replacement is shorter by more than the share that rounding may take: vectors of one length
/// would replace each other for ever.
constexpr float leastGain = 1e-5F;

/// Random vectors that are drawn for one that is new.
constexpr int drawsPerVector = 50;

/// A rounded multiple of a row. One that is too large, by a basis far from reduced, becomes one
/// that makes a long vector of the lattice.
std::int16_t asCoefficient(double rounded) {
  constexpr double most = std::numeric_limits<std::int16_t>::max();
  return static_cast<std::int16_t>(std::clamp(rounded, -most, most));
}

/// Exact divisions by it make the list the same on every processor.
double powerOfTwoNear(double logarithm) {
  return std::ldexp(1.0, static_cast<int>(std::lround(logarithm / std::numbers::ln2)));
}

}  // namespace

double logGaussianLength(const SieveBasis& basis, std::size_t count) {
  double volume = 0;
  for (std::size_t i = 0; i < count; ++i) volume += std::log(basis[i][i]);
  const auto d = static_cast<double>(count);
  return (volume - logBallVolume(d)) / d;
}

std::size_t LatticeSieve::listSize(std::size_t dimension) {
  const double power = std::pow(4.0 / 3, static_cast<double>(dimension) / 2);
  return std::max(static_cast<std::size_t>(listFactor * power), smallestList);
}

LatticeSieve::LatticeSieve(const SieveBasis& basis, std::uint64_t seed)
    : unit_(powerOfTwoNear(logGaussianLength(basis, basis.size()))), basis_(basis), random_(seed) {
  const std::size_t d = basis.size();
  for (std::vector<double>& row : basis_)
    for (double& entry : row) entry /= unit_;
  for (std::size_t i = 0; i < d; ++i) nameFactors_.push_back(random_() | 1U);
  vectors_ = BlockRows<float>(listSize(d), d);
  coefficients_.reserve(listSize(d));
  names_.reserve(listSize(d));
  lengths_.reserve(listSize(d));
  hashes_.reserve(listSize(d));
}

bool LatticeSieve::grow(const std::function<bool()>& mayGoOn) {
  assert(size_ < basis_.size());
  const std::size_t first = std::min(firstSize, basis_.size());
  do extend();
  while (size_ < first);
  fill();
  return shorten(mayGoOn);
}

void LatticeSieve::extend() {
  const std::size_t p = size_++;
  shortLength_ = static_cast<float>(4.0 / 3 * std::exp(2 * logGaussianLength(basis_, size_)));
  hasher_.emplace(size_, random_);
  known_.clear();
  for (std::size_t i = 0; i < count(); ++i) {
    double entry = 0;
    for (std::size_t k = 0; k < p; ++k) entry += coefficients_[i][k] * basis_[k][p];
    coefficients_[i][p] = asCoefficient(-std::round(entry / basis_[p][p]));
    renew(i);
  }
  Coefficients row(basis_.size());
  row[p] = 1;
  add(std::move(row));
}

void LatticeSieve::fill() {
  const std::size_t wanted = listSize(size_);
  for (int draws = 0; count() < wanted && draws < drawsPerVector; ++draws)
    if (addRandom()) draws = 0;
}

/// A vector near 0 by the nearest planes, but in the first directions by the second nearest ones
/// as often: there the rows are shortest.
bool LatticeSieve::addRandom() {
  const auto choices = std::min<std::size_t>(size_, std::bit_width(listSize(size_)) + 2U);
  Coefficients coefficients(basis_.size());
  std::vector<double> entries(size_);
  for (std::size_t i = 0; i < size_; ++i) {
    const double centre = -entries[i] / basis_[i][i];
    double nearest = std::round(centre);
    if (i < choices && random_() % 2 == 0) nearest += centre < nearest ? -1 : 1;
    coefficients[i] = asCoefficient(nearest);
    for (std::size_t p = i; p < size_; ++p) entries[p] += coefficients[i] * basis_[i][p];
  }
  return add(std::move(coefficients));
}

bool LatticeSieve::add(Coefficients coefficients) {
  const std::uint64_t name = nameOf(coefficients);
  if (name == 0 || known_.contains(name) || count() >= listSize(basis_.size())) return false;
  const std::size_t i = count();
  coefficients_.push_back(std::move(coefficients));
  names_.push_back(name);
  lengths_.push_back(0);
  hashes_.emplace_back();
  renew(i);
  return true;
}

void LatticeSieve::renew(std::size_t i) {
  std::vector<double> entries(size_);
  for (std::size_t k = 0; k < size_; ++k) {
    const double c = coefficients_[i][k];
    if (c == 0) continue;
    for (std::size_t p = k; p < size_; ++p) entries[p] += c * basis_[k][p];
  }
  for (std::size_t p = 0; p < size_; ++p) vectors_.at(i, p) = static_cast<float>(entries[p]);
  renewKeys(i);
}

void LatticeSieve::renewKeys(std::size_t i) {
  lengths_[i] = innerProduct(vectors_[i], vectors_[i], blocksInUse());
  hashes_[i] = (*hasher_)(vectors_[i]->lane);
  names_[i] = nameOf(coefficients_[i]);
  known_.insert(names_[i]);
}

bool LatticeSieve::shorten(const std::function<bool()>& mayGoOn) {
  while (!isSaturated()) {
    chooseLongest();
    if (!findReplacements(mayGoOn)) return false;
    const bool isStuck = replacements_.size() < longest_.size();
    replaceLongest();
    if (isStuck) break;
  }
  return true;
}

bool LatticeSieve::isSaturated() const {
  const auto isShort = [this](float length) { return length <= shortLength_; };
  const auto found = std::count_if(lengths_.begin(), lengths_.end(), isShort);
  const double expected = expectedFactor * std::pow(4.0 / 3, static_cast<double>(size_) / 2);
  return static_cast<double>(found) >= enoughShare * expected;
}

void LatticeSieve::chooseLongest() {
  std::vector<std::uint32_t> order(count());
  std::iota(order.begin(), order.end(), 0U);
  const auto replaced =
      std::max<std::ptrdiff_t>(std::lround(replacedShare * static_cast<double>(count())), 1);
  const auto isLonger = [this](std::uint32_t a, std::uint32_t b) {
    return lengths_[a] != lengths_[b] ? lengths_[a] > lengths_[b] : a < b;
  };
  std::partial_sort(order.begin(), order.begin() + replaced, order.end(), isLonger);
  longest_.assign(order.begin(), order.begin() + replaced);
  longestBound_ = lengths_[longest_.back()] * (1 - leastGain);
}

bool LatticeSieve::findReplacements(const std::function<bool()>& mayGoOn) {
  replacements_.clear();
  replacementRows_ = BlockRows<float>(longest_.size(), size_);
  for (int i = 0; i < mostBuckets && replacements_.size() < longest_.size(); ++i) {
    if (!mayGoOn()) return false;
    fillBucket();
    searchBucket();
  }
  return true;
}

void LatticeSieve::fillBucket() {
  const std::size_t centre = random_() % count();
  near_.resize(count());
  const std::size_t nearCount =
      selectNear(hashes_.data(), count(), hashes_[centre], bucketDistance, near_.data());
  bucket_.clear(std::min(nearCount, mostInBucket), size_);
  for (std::size_t k = 0; k < nearCount && bucket_.size() < mostInBucket; ++k) {
    const std::uint32_t i = near_[k];
    const float product = innerProduct(vectors_[centre], vectors_[i], blocksInUse());
    if (product * product >= bucketCosine * bucketCosine * lengths_[centre] * lengths_[i])
      bucket_.add({i, product < 0}, vectors_[i], lengths_[i]);
  }
}

void LatticeSieve::searchBucket() {
  const auto offer = [this](std::size_t a, std::size_t b) { offerDifference(a, b); };
  bucket_.visitClosePairs(longestBound_, offer);
}

/// Offers the difference of two vectors of the bucket, which is shorter than the longest ones.
void LatticeSieve::offerDifference(std::size_t a, std::size_t b) {
  if (replacements_.size() == longest_.size()) return;
  const SieveBucket::Member& first = bucket_.member(a);
  const SieveBucket::Member& second = bucket_.member(b);
  const Coefficients& left = coefficients_[first.index];
  const Coefficients& right = coefficients_[second.index];
  const int sign = first.isOpposite == second.isOpposite ? -1 : 1;
  Coefficients difference(basis_.size());
  for (std::size_t k = 0; k < size_; ++k) {
    const int c = left[k] + sign * right[k];
    if (std::abs(c) > std::numeric_limits<std::int16_t>::max()) return;
    difference[k] = static_cast<std::int16_t>(c);
  }
  const std::uint64_t name = nameOf(difference);
  if (name == 0 || !known_.insert(name).second) return;
  // Like the coefficients: the first vector, or the opposite of its row.
  const float side = first.isOpposite ? -1.0F : 1.0F;
  Block<float>* const row = replacementRows_[replacements_.size()];
  for (std::size_t i = 0; i < blocksInUse(); ++i)
    for (std::size_t lane = 0; lane < blockSize; ++lane)
      row[i].lane[lane] = side * (bucket_.row(a)[i].lane[lane] - bucket_.row(b)[i].lane[lane]);
  replacements_.push_back(std::move(difference));
}

void LatticeSieve::replaceLongest() {
  for (std::size_t k = 0; k < replacements_.size(); ++k) {
    const std::uint32_t i = longest_[k];
    known_.erase(names_[i]);
    coefficients_[i] = std::move(replacements_[k]);
    std::copy_n(replacementRows_[k], blocksInUse(), vectors_[i]);
    renewKeys(i);
  }
  replacements_.clear();
}

std::uint64_t LatticeSieve::nameOf(const Coefficients& coefficients) const {
  std::uint64_t name = 0;
  for (std::size_t k = 0; k < size_; ++k)
    name += nameFactors_[k] * static_cast<std::uint64_t>(std::int64_t{coefficients[k]});
  return std::min(name, -name);
}

}  // namespace starsift

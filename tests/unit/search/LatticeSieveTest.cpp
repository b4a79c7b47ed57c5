#include "search/sieve/LatticeSieve.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numeric>
#include <random>
#include <set>
#include <vector>

#include "search/sieve/SieveKernels.h"

namespace starsift {
namespace {

const auto goOn = [] { return true; };

/// A size-reduced basis whose Gram-Schmidt lengths grow by a factor from row to row.
SieveBasis randomBasis(std::size_t dimension, double growth, std::uint64_t seed) {
  std::mt19937_64 random(seed);
  std::uniform_real_distribution<double> half(-0.5, 0.5);
  SieveBasis basis(dimension, std::vector<double>(dimension));
  for (std::size_t i = 0; i < dimension; ++i)
    for (std::size_t p = i; p < dimension; ++p) {
      const double length = std::pow(growth, static_cast<double>(p));
      basis[i][p] = p == i ? length : half(random) * length;
    }
  return basis;
}

double squaredLength(const SieveBasis& basis, const LatticeSieve::Coefficients& coefficients) {
  std::vector<double> vector(basis.size());
  for (std::size_t i = 0; i < basis.size(); ++i)
    for (std::size_t p = 0; p < basis.size(); ++p) vector[p] += coefficients[i] * basis[i][p];
  double sum = 0;
  for (const double entry : vector) sum += entry * entry;
  return sum;
}

std::vector<LatticeSieve::Coefficients> sieved(const SieveBasis& basis, std::uint64_t seed) {
  LatticeSieve sieve(basis, seed);
  while (sieve.dimension() < basis.size()) EXPECT_TRUE(sieve.grow(goOn));
  std::vector<LatticeSieve::Coefficients> list;
  for (std::size_t i = 0; i < sieve.count(); ++i) list.push_back(sieve.coefficients(i));
  return list;
}

TEST(LatticeSieve, GaussianLengthOfTheIntegersIsThatOfABallOfVolumeOne) {
  EXPECT_NEAR(std::exp(logGaussianLength({{1}}, 1)), 0.5, 1e-12);
  EXPECT_NEAR(std::exp(logGaussianLength({{1, 0}, {0, 1}}, 2)), 1 / std::sqrt(3.14159265358979),
              1e-12);
}

TEST(LatticeSieve, GaussianLengthIsThatOfTheFirstRows) {
  const SieveBasis basis = {{3, 1}, {0, 100}};
  EXPECT_NEAR(std::exp(logGaussianLength(basis, 1)), 1.5, 1e-12);
}

TEST(LatticeSieve, OneRowIsItsOwnList) {
  const auto list = sieved({{2.5}}, 1);
  const LatticeSieve::Coefficients row = {1};
  EXPECT_NE(std::find(list.begin(), list.end(), row), list.end());
}

TEST(LatticeSieve, ListHoldsHalfOfTheShortVectorsThatAreExpected) {
  const SieveBasis basis = randomBasis(44, 1.03, 5);
  const double bound = 4.0 / 3 * std::exp(2 * logGaussianLength(basis, basis.size()));
  const auto list = sieved(basis, 1);
  const auto found = std::count_if(list.begin(), list.end(), [&](const auto& coefficients) {
    return squaredLength(basis, coefficients) <= bound * 1.001;
  });
  EXPECT_GE(static_cast<double>(found), 0.5 * 0.5 * std::pow(4.0 / 3, 22));
}

TEST(LatticeSieve, VectorsAreDistinctUpToSignAndNotZero) {
  const auto list = sieved(randomBasis(36, 1.03, 6), 1);
  std::set<LatticeSieve::Coefficients> seen;
  for (const auto& vector : list) {
    LatticeSieve::Coefficients opposite = vector;
    for (std::int16_t& c : opposite) c = static_cast<std::int16_t>(-c);
    EXPECT_NE(vector, opposite);
    EXPECT_FALSE(seen.contains(opposite));
    EXPECT_TRUE(seen.insert(vector).second);
  }
  EXPECT_EQ(seen.size(), LatticeSieve::listSize(36));
}

TEST(LatticeSieve, ShortestVectorsOfTheIntegersAreFound) {
  const std::size_t d = 40;
  SieveBasis basis = randomBasis(d, 1, 0);
  for (std::size_t i = 0; i < d; ++i)
    for (std::size_t p = i + 1; p < d; ++p) basis[i][p] = 0;
  // Rows 1 and 2 become longer ones of the same lattice.
  basis[0][1] = 1;
  basis[1][2] = 1;
  const auto list = sieved(basis, 1);
  const auto units = std::count_if(list.begin(), list.end(), [&](const auto& coefficients) {
    return squaredLength(basis, coefficients) < 1.5;
  });
  EXPECT_EQ(units, 40);
}

TEST(LatticeSieve, SameSeedGivesTheSameList) {
  const SieveBasis basis = randomBasis(34, 1.03, 7);
  EXPECT_EQ(sieved(basis, 3), sieved(basis, 3));
  EXPECT_NE(sieved(basis, 3), sieved(basis, 4));
}

TEST(LatticeSieve, UnitOfTheBasisMakesNoDifference) {
  SieveBasis basis = randomBasis(32, 1.03, 8);
  const auto list = sieved(basis, 1);
  for (auto& row : basis)
    for (double& entry : row) entry *= std::ldexp(1.0, 900);
  EXPECT_EQ(sieved(basis, 1), list);
}

/// The basis of these rows, the last one first.
SieveBasis basisOf(const std::vector<std::vector<double>>& rows) {
  const std::size_t d = rows.size();
  std::vector<std::vector<double>> directions = rows;
  SieveBasis basis(d, std::vector<double>(d));
  const auto dot = [](const std::vector<double>& a, const std::vector<double>& b) {
    return std::inner_product(a.begin(), a.end(), b.begin(), 0.0);
  };
  for (std::size_t i = 0; i < d; ++i) {
    for (std::size_t k = 0; k < i; ++k) {
      const double mu = dot(rows[i], directions[k]) / dot(directions[k], directions[k]);
      for (std::size_t j = 0; j < rows[i].size(); ++j) directions[i][j] -= mu * directions[k][j];
      basis[d - 1 - i][d - 1 - k] = mu * std::sqrt(dot(directions[k], directions[k]));
    }
    basis[d - 1 - i][d - 1 - i] = std::sqrt(dot(directions[i], directions[i]));
  }
  return basis;
}

TEST(LatticeSieve, EndsWhereAllShortVectorsHaveOneLength) {
  for (const std::size_t d : {3, 4, 6})
    for (const std::uint64_t seed : {1, 2, 3}) {
      // The differences of neighbouring unit vectors, rounded in their Gram-Schmidt directions.
      std::vector<std::vector<double>> rows(d, std::vector<double>(d + 1));
      for (std::size_t i = 0; i < d; ++i) {
        rows[i][i] = 1;
        rows[i][i + 1] = -1;
      }
      LatticeSieve sieve(basisOf(rows), seed);
      int calls = 0;
      EXPECT_TRUE(sieve.grow([&calls] { return ++calls < 20'000; })) << d << ' ' << seed;
    }
}

TEST(LatticeSieve, EndsWhenItIsToldTo) {
  LatticeSieve sieve(randomBasis(50, 1.05, 9), 1);
  int calls = 0;
  const auto twice = [&calls] { return ++calls <= 2; };
  bool goesOn = true;
  while (goesOn && sieve.dimension() < 50) goesOn = sieve.grow(twice);
  EXPECT_FALSE(goesOn);
  EXPECT_EQ(calls, 3);
}

TEST(SieveKernels, NearHashesAreThoseOfSmallAndLargeDistance) {
  std::mt19937_64 random(1);
  std::vector<SimHash> hashes(500);
  for (SimHash& hash : hashes)
    for (std::uint64_t& word : hash.word) word = random();
  hashes[7] = hashes[3];
  for (std::size_t k = 0; k < SimHash::words; ++k) hashes[9].word[k] = ~hashes[3].word[k];
  std::vector<std::uint32_t> expected;
  for (std::uint32_t i = 0; i < hashes.size(); ++i) {
    int distance = 0;
    for (int bit = 0; bit < 256; ++bit)
      distance += (hashes[i].word[bit / 64] >> (bit % 64) & 1) !=
                  (hashes[3].word[bit / 64] >> (bit % 64) & 1);
    if (distance < 120 || distance > 136) expected.push_back(i);
  }
  std::vector<std::uint32_t> indices(hashes.size());
  indices.resize(selectNear(hashes.data(), hashes.size(), hashes[3], 120, indices.data()));
  EXPECT_EQ(indices, expected);
  EXPECT_GT(expected.size(), 3U);
  EXPECT_LT(expected.size(), hashes.size());
}

/// Rows of small integers, whose products are exact.
BlockRows<float> integerRows(std::size_t count, std::size_t length) {
  std::mt19937_64 random(2);
  BlockRows<float> rows(count, length);
  for (std::size_t r = 0; r < count; ++r)
    for (std::size_t j = 0; j < length; ++j)
      rows.at(r, j) = static_cast<float>(static_cast<int>(random() % 7) - 3);
  return rows;
}

float product(const BlockRows<float>& rows, std::size_t a, std::size_t b, std::size_t length) {
  float sum = 0;
  for (std::size_t j = 0; j < length; ++j) sum += rows.at(a, j) * rows.at(b, j);
  return sum;
}

TEST(SieveKernels, InnerProductIsTheSumOverAllBlocks) {
  const BlockRows<float> rows = integerRows(9, 21);
  for (std::size_t r = 0; r < 9; ++r)
    EXPECT_EQ(innerProduct(rows[0], rows[r], rows.blocksPerRow()), product(rows, 0, r, 21));
}

TEST(SieveBucket, ClosePairsAreThoseOfTheRows) {
  const std::size_t length = 13;
  const float bound = 70;
  for (const std::size_t count : {0, 1, 2, 31, 32, 33, 80}) {
    const BlockRows<float> rows = integerRows(count, length);
    std::set<std::pair<std::size_t, std::size_t>> expected;
    SieveBucket bucket;
    bucket.clear(count, length);
    // Every third one is turned round.
    const auto side = [](std::size_t i) { return i % 3 == 0 ? -1.0F : 1.0F; };
    for (std::size_t b = 0; b < count; ++b) {
      bucket.add({static_cast<std::uint32_t>(b), side(b) < 0}, rows[b],
                 product(rows, b, b, length));
      for (std::size_t a = 0; a < b; ++a)
        if (product(rows, a, a, length) + product(rows, b, b, length) -
                2 * side(a) * side(b) * product(rows, a, b, length) <
            bound)
          expected.emplace(a, b);
    }
    std::set<std::pair<std::size_t, std::size_t>> found;
    bucket.visitClosePairs(
        bound, [&found](std::size_t a, std::size_t b) { EXPECT_TRUE(found.emplace(a, b).second); });
    EXPECT_EQ(found, expected);
    EXPECT_TRUE(count < 31 || !expected.empty());
  }
}

TEST(LatticeSieve, LengthsAreThoseOfTheVectors) {
  const SieveBasis basis = randomBasis(40, 1.03, 5);
  LatticeSieve sieve(basis, 1);
  while (sieve.dimension() < basis.size()) sieve.grow(goOn);
  for (std::size_t i = 0; i < sieve.count(); ++i) {
    const double length = squaredLength(basis, sieve.coefficients(i));
    EXPECT_NEAR(sieve.squaredLength(i), length, 1e-5 * length);
  }
}

TEST(SimHash, HashOfTheOppositeIsTheComplement) {
  std::mt19937_64 random(1);
  const SimHasher hasher(40, random);
  std::vector<float> vector(40);
  for (float& entry : vector) entry = static_cast<float>(random() % 2001) - 1000.5F;
  const SimHash hash = hasher(vector.data());
  for (float& entry : vector) entry = -entry;
  const SimHash opposite = hasher(vector.data());
  int equal = 0;
  for (std::size_t k = 0; k < SimHash::words; ++k)
    equal += __builtin_popcountll(~(hash.word[k] ^ opposite.word[k]));
  // Planes that the vector lies on, by the same entry on both sides.
  EXPECT_LE(equal, 12);
}

}  // namespace
}  // namespace starsift

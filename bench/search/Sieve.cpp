// Sieves of random bases as blocks of 40 rows leave them. An item is a vector of the last list.
#include "Benchmarks.h"
#include "search/sieve/LatticeSieve.h"
#include "support/Register.h"

#include <cmath>
#include <random>

namespace starsift::bench {

namespace {

/// Gram-Schmidt lengths that grow by a factor from the last row to the first.
SieveBasis randomBasis(std::size_t dimension) {
  constexpr double growth = 1.025;
  std::mt19937_64 random(1);
  std::uniform_real_distribution<double> half(-0.5, 0.5);
  SieveBasis basis(dimension, std::vector<double>(dimension));
  for (std::size_t i = 0; i < dimension; ++i)
    for (std::size_t p = i; p < dimension; ++p)
      basis[i][p] = (p == i ? 1 : half(random)) * std::pow(growth, static_cast<double>(p));
  return basis;
}

}  // namespace

void registerSieve() {
  for (const std::size_t dimension : {50, 60, 66})
    add("sieve", "of_" + std::to_string(dimension), "short_vectors",
        [dimension](benchmark::State& state) {
          const SieveBasis basis = randomBasis(dimension);
          for (auto _ : state) {
            LatticeSieve sieve(basis, 1);
            while (sieve.dimension() < dimension) sieve.grow([] { return true; });
            benchmark::DoNotOptimize(sieve.count());
          }
          count(state, LatticeSieve::listSize(dimension));
        })
        ->Unit(benchmark::kMillisecond);
}

}  // namespace starsift::bench

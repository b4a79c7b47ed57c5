// The three ways to Gram-Schmidt data, of square bases of growing dimension in both lattices. An
// item is an entry of the basis, so that items per second fall like 1 / dimension where the cost
// grows with the cube.
#include <algorithm>
#include <numeric>
#include <vector>

#include "Benchmarks.h"
#include "lattice/Lattice.h"
#include "support/Register.h"
#include "support/Samples.h"

namespace starsift::bench {

namespace {

using benchmark::State;

template <class T>
Matrix<T> squareBasis(Index dimension) {
  Random random(1);
  Matrix<T> basis(dimension, dimension);
  for (Vector<T>& row : basis)
    for (T& entry : row) entry = fromText<T>(shortInteger(random));
  return basis;
}

using PlainRows = std::vector<std::vector<dbl_t>>;

/// The modified Gram-Schmidt process as a textbook has it: the sum of the pivots' lengths.
dbl_t textbook(PlainRows rows) {
  dbl_t sum = 0;
  for (std::size_t k = 0; k < rows.size(); ++k) {
    const auto& pivot = rows[k];
    const dbl_t length = std::inner_product(pivot.begin(), pivot.end(), pivot.begin(), dbl_t(0));
    for (std::size_t j = k + 1; j < rows.size(); ++j) {
      auto& row = rows[j];
      const dbl_t mu =
          std::inner_product(pivot.begin(), pivot.end(), row.begin(), dbl_t(0)) / length;
      for (std::size_t c = 0; c < row.size(); ++c) row[c] -= mu * pivot[c];
    }
    sum += length;
  }
  return sum;
}

void addPeer(const std::string& operation, const std::string& input, Index dimension,
             Index entries) {
  add(operation, input, "peer_textbook", [dimension, entries](State& state) {
    PlainRows rows;
    for (const Vector<dbl_t>& row : squareBasis<dbl_t>(dimension))
      rows.emplace_back(row.begin(), row.end());
    for (auto _ : state) benchmark::DoNotOptimize(textbook(rows));
    count(state, static_cast<std::size_t>(entries));
  })->Unit(benchmark::kMillisecond);
}

/// Runs run(lattice) on rows that nothing is known of but, in the exact lattice, their images.
template <class T>
void addWay(Index dimension, const std::string& way, const std::string& type, auto run) {
  const std::string input = std::to_string(dimension) + "_rows_" + type;
  add("orthogonalise", input, way, [dimension, run](State& state) {
    const Matrix<T> basis = squareBasis<T>(dimension);
    Lattice<T, dbl_t> lattice(&basis);
    run(lattice);
    for (auto _ : state) {
      std::fill(lattice.basis.vecStatus.begin(), lattice.basis.vecStatus.end(), StatusWord());
      lattice.basis.forgetAllProducts();
      run(lattice);
    }
    count(state, static_cast<std::size_t>(dimension * dimension));
  })->Unit(benchmark::kMillisecond);
}

template <class T>
void addWays(Index dimension, const std::string& type) {
  addWay<T>(dimension, "classic", type, [](auto& lattice) { lattice.classicOrthogonalise(1, 0); });
  addWay<T>(dimension, "modified", type, [](auto& lattice) {
    lattice.modifiedOrthogonalise(1, 0, OnDependency::report, LqCache::bypass);
  });
  addWay<T>(dimension, "cached", type, [](auto& lattice) {
    lattice.modifiedOrthogonalise(1, 0, OnDependency::report, LqCache::use);
  });
  addWay<T>(dimension, "full", type,
            [](auto& lattice) { lattice.fullOrthogonalise(1, 0, OnDependency::report); });
  addPeer("orthogonalise", std::to_string(dimension) + "_rows_" + type, dimension,
          dimension * dimension);
}

/// A change of the last row: what the cache is for. The peer makes all rows again.
void addRestart(Index dimension) {
  const std::string input = std::to_string(dimension) + "_rows_long_double";
  add("orthogonalise_last_row", input, "cached", [dimension](State& state) {
    const Matrix<dbl_t> basis = squareBasis<dbl_t>(dimension);
    Lattice<dbl_t, dbl_t> lattice(&basis);
    lattice.modifiedOrthogonalise(1, 0, OnDependency::report, LqCache::use);
    for (auto _ : state) {
      // The last row changes.
      lattice.basis.subtract(dimension, {{1, -1}});
      lattice.basis.vecStatus[dimension] = 0;
      lattice.modifiedOrthogonalise(1, 0, OnDependency::report, LqCache::use);
    }
    count(state, static_cast<std::size_t>(dimension));
  })->Unit(benchmark::kMillisecond);
  addPeer("orthogonalise_last_row", input, dimension, dimension);
}

}  // namespace

void registerOrthogonalise() {
  for (const Index dimension : {10, 20, 50, 100, 200, 400}) {
    addWays<dbl_t>(dimension, "long_double");
    addWays<QQ>(dimension, "QQ");
    addRestart(dimension);
  }
}

}  // namespace starsift::bench

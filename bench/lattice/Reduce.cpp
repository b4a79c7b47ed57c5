// The reduction of bases of growing dimension in both lattices: those of knapsacks, a unit matrix
// beside a column of weights. An item is a vector. With `checked` each vector touched is held
// against its box, as in a search, with `unchecked` turned away by its last coordinate.
#include <algorithm>

#include "Benchmarks.h"
#include "lattice/Lattice.h"
#include "support/Register.h"
#include "support/Samples.h"

namespace starsift::bench {

namespace {

using benchmark::State;

/// 2 on the diagonal, weights behind it, and a last coordinate that is 1 in the first row.
template <class T>
Matrix<T> knapsack(Index dimension) {
  Random random(1);
  constexpr long factor = 1000;
  Matrix<T> basis(dimension, dimension + 2);
  for (Index i = 1; i <= dimension; ++i) {
    basis[i][i] = T(2);
    basis[i][dimension + 1] = T(factor) * fromText<T>(shortInteger(random));
  }
  basis[1][dimension + 2] = T(1);
  return basis;
}

/// Check vectors from 0 to 1; the last coordinate is that of a point, or with none.
template <class T>
void setCheckVectors(Lattice<T, dbl_t>& lattice, bool checked) {
  lattice.frame.latticeKind = LatticeKind::full;
  std::fill(lattice.frame.r.begin(), lattice.frame.r.end(), T(1));
  const T last = checked ? T(1) : T(1) / T(2);
  lattice.frame.l[lattice.basis.m] = last;
  lattice.frame.r[lattice.basis.m] = last;
  lattice.params.pair = checked;
}

template <class T>
void addReduction(Index dimension, const std::string& type, bool checked) {
  const std::string subject = type + (checked ? "_checked" : "_unchecked");
  add("reduce", std::to_string(dimension) + "_vectors", subject, [=](State& state) {
    const Matrix<T> basis = knapsack<T>(dimension);
    Lattice<T, dbl_t> lattice;
    for (auto _ : state) {
      lattice.reset(&basis, LatPath::keep);
      setCheckVectors(lattice, checked);
      benchmark::DoNotOptimize(lattice.reduce(0));
    }
    count(state, static_cast<std::size_t>(dimension));
  })->Unit(benchmark::kMillisecond);
}

}  // namespace

void registerReduce() {
  for (const Index dimension : {20, 40, 60, 80, 100}) {
    for (const bool checked : {false, true}) {
      addReduction<dbl_t>(dimension, "long_double", checked);
      addReduction<QQ>(dimension, "QQ", checked);
    }
  }
}

}  // namespace starsift::bench

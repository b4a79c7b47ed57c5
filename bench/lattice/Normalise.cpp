// From a problem to its normal form, with every kind of row and variable, twice as many variables
// as rows. An item is an entry of the three matrices as read.
#include <iostream>

#include "Benchmarks.h"
#include "lattice/Lattice.h"
#include "numbers/VectorQQ.h"
#include "support/Register.h"
#include "support/Samples.h"
#include "system/Console.h"

namespace starsift::bench {

namespace {

using benchmark::State;

Matrix<QQ> randomRows(Random& random, Index rows, Index columns, MakeText make) {
  Matrix<QQ> matrix(rows, columns);
  for (Vector<QQ>& row : matrix)
    for (QQ& entry : row) entry = fromText<QQ>(make(random));
  return matrix;
}

/// Every tenth variable is fixed, one has no lower and some have no upper bound.
void addVariables(Vanu<QQ>& problem, Random& random, Index n) {
  for (Index j = 1; j <= n; ++j) {
    const QQ lower(static_cast<long>(below(random, 9)));
    const QQ range(static_cast<long>(j % 10 == 0 ? 0 : 1 + below(random, 40)));
    problem.addVariable(j == 1 ? -QQ::infinity() : lower,
                        j % 10 == 1 && j > 1 ? QQ::infinity() : lower + range, QQ(0));
  }
}

/// True at a point within the bounds of the variables: a quarter of the rows are equations, every
/// tenth of which is the sum of the two before, a quarter has one bound, and half have two.
Vanu<QQ> makeProblem(Index n, MakeText make) {
  Random random(1);
  Vanu<QQ> problem;
  addVariables(problem, random, n);
  Vector<QQ> point(problem.lx);
  point[1] = problem.rx[1];
  problem.At = randomRows(random, 2, n, make);
  problem.dt = Vector<QQ>{QQ::infinity(), QQ(100)};
  problem.kt = problem.dt;
  problem.Ag = randomRows(random, n / 8, n, make);
  for (Index i = 10; i <= problem.Ag.rowCount(); i += 10)
    problem.Ag[i] = problem.Ag[i - 1] + problem.Ag[i - 2];
  problem.bg = problem.Ag * point;
  problem.Au = randomRows(random, n / 2 - n / 8, n, make);
  const Vector<QQ> values = problem.Au * point;
  problem.lu = values;
  problem.ru = values;
  for (Index i = 1; i <= values.dimension(); ++i) {
    problem.lu[i] -= QQ(50);
    if (i % 3 == 0)
      problem.ru[i] = QQ::infinity();
    else
      problem.ru[i] += QQ(50);
  }
  return problem;
}

template <class T>
void addNormalise(Index n, const std::string& kind, MakeText make, const std::string& type) {
  const std::string input = std::to_string(n) + "_variables_" + kind;
  add("normalise", input, type, [n, make](State& state) {
    const Vanu<QQ> problem = makeProblem(n, make);
    Lattice<T, dbl_t> lattice;
    // The lines about single variables and rows.
    std::cout.setstate(std::ios::badbit);
    for (auto _ : state) {
      Vanu<T> converted;
      converted.convertFrom(problem);
      lattice.setProblem(std::move(converted));
      lattice.normalise(TargetRange::find, From::lifted);
    }
    std::cout.clear();
    count(state, static_cast<std::size_t>(n * (2 + n / 2)));
  })->Unit(benchmark::kMillisecond);
}

}  // namespace

void registerNormalise() {
  for (const Index n : {250, 500, 1000}) {
    addNormalise<dbl_t>(n, "integers", &shortInteger, "long_double");
    addNormalise<QQ>(n, "integers", &shortInteger, "QQ");
    addNormalise<QQ>(n, "18_digits", &longInteger, "QQ");
    addNormalise<QQ>(n, "decimals", &decimal, "QQ");
  }
}

}  // namespace starsift::bench

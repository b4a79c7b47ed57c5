// The searches on short vectors: what they collect belongs to the lattice, what they change spans
// it, and what was found stays found.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "certificates/LatticeEquality.h"
#include "lattice/Lattice.h"
#include "numbers/VectorQQ.h"
#include "search/PairVectors.h"
#include "search/ReinsertBest.h"
#include "search/SampleVectors.h"
#include "search/SieveVectors.h"
#include "search/TrimLattice.h"
#include "support/fixtures/Problem.h"

namespace starsift {
namespace {

std::string vectorText(const std::vector<int>& entries) {
  std::ostringstream text;
  text << "[ ";
  for (const int entry : entries) text << entry << ' ';
  text << ']';
  return text.str();
}

/// One equation with a solution, and variables up to 3.
std::string arbitraryProblem() {
  const auto n = *rc::gen::inRange<std::size_t>(3, 8);
  std::vector<int> row;
  int value = 0;
  for (std::size_t i = 0; i < n; ++i) {
    row.push_back(*rc::gen::inRange(1, 500));
    value += row.back() * *rc::gen::inRange(0, 4);
  }
  const std::vector<int> zeros(n);
  return "[ ] [ ] [ " + vectorText(row) + " ] [ " + std::to_string(value) + " ] [ ] [ ] [ ] [ ] " +
         vectorText(zeros) + vectorText(zeros) + vectorText(std::vector<int>(n, 3));
}

/// The lattice behind all searches.
template <class T>
void search(Lattice<T, long double>& lattice, const std::string& problem, std::uint64_t seed) {
  lattice.setProblem(test::problemFrom<T>(problem));
  lattice.normalise(TargetRange::find, From::lifted);
  lattice.prepareLattice();
  lattice.params.sol = 0;
  lattice.params.sampleLimit = 20UL;
  lattice.params.scale = true;
  lattice.params.translate = true;
  lattice.run.seed = seed;
  lattice.found.shortVectors.open(30, lattice.frame.firstChecked(lattice));
  lattice.reduce(0);
  const Index before = lattice.found.solutions.dimension();
  sampleVectors(lattice);
  sieveVectors(lattice);
  pairVectors(lattice);
  reinsertBest(lattice);
  trimLattice(lattice);
  RC_ASSERT(lattice.found.solutions.dimension() >= before);
}

template <class T>
void checkSearch(const std::string& problem, std::uint64_t seed) {
  Lattice<T, long double> first;
  search(first, problem, seed);
  RC_ASSERT(sameLattice(first.basis.untransformed(), first.basis.B_save));
  const auto& entries = first.found.shortVectors.entries();
  Matrix<T> rows = first.basis.B_save;
  const Index n = rows.rowCount();
  rows.resize(n + static_cast<Index>(entries.size()), rows.columnCount(), false);
  for (std::size_t i = 0; i < entries.size(); ++i)
    rows[n + 1 + static_cast<Index>(i)] = *entries[i].vector;
  RC_ASSERT(sameLattice(rows, first.basis.B_save));
  Lattice<T, long double> second;
  search(second, problem, seed);
  RC_ASSERT(second.found.shortVectors.entries().size() == entries.size());
  for (std::size_t i = 0; i < entries.size(); ++i)
    RC_ASSERT(identical(*second.found.shortVectors.entries()[i].vector, *entries[i].vector));
}

RC_GTEST_PROP(ShortVectors, BelongToTheLatticeAndDependOnTheSeedAlone, ()) {
  const std::string problem = arbitraryProblem();
  const auto seed = *rc::gen::inRange<std::uint64_t>(1, 1000);
  checkSearch<long double>(problem, seed);
  checkSearch<QQ>(problem, seed);
}

}  // namespace
}  // namespace starsift

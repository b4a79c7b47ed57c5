// Laws over prepared lattices of small problems, in each of the ways in which a problem gets
// its lattice.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "LatticePoints.h"
#include "lattice/YLattice.h"

namespace starsift::test {

/// What normalising and preparing ended with: empty, or the fatal report.
template <class Steps>
std::string reportOf(const Steps& steps) {
  const Silence silence;
  try {
    steps();
  } catch (const FatalReport& report) {
    return report.what();
  }
  return "";
}

/// A lattice of one number type. `carry` prepares the lattice of a problem, hands it to
/// law(lattice, small), and returns the report where there is no lattice.
template <class T>
struct LatticeOver {
  template <class Law>
  static std::string carry(const SmallProblem& small, const Law& law) {
    Lattice<T, long double> lattice;
    lattice.file.editProblem().convertFrom(small.record());
    std::string report = reportOf([&] {
      lattice.normalise(TargetRange::find, From::lifted);
      lattice.prepareLattice();
    });
    if (report.empty()) law(lattice, small);
    return report;
  }
};

/// The lattice of two precisions.
struct LatticeOfBoth {
  static void read(YLattice<long double>& lattice, const SmallProblem& small) {
    lattice.useExtendedPrecision();
    lattice.exact().setProblem(small.record());
    lattice.tryStandardPrecision();
  }

  static std::string prepare(YLattice<long double>& lattice) {
    return reportOf([&] {
      lattice.normalise(TargetRange::find, From::lifted);
      lattice.runStep([](auto& live) { return live.prepareLattice(); });
    });
  }

  template <class Law>
  static std::string carry(const SmallProblem& small, const Law& law) {
    YLattice<long double> lattice;
    read(lattice, small);
    std::string report = prepare(lattice);
    if (report.empty()) lattice.runStep([&](auto& live) { law(live, small); });
    return report;
  }
};

/// The law over problemCount problems, those that long double refuses left out. Returns how
/// many had a lattice and how many were left out.
template <class Way, class Law>
Tally checkOverPrepared(const Law& law) {
  Tally tally;
  checkOverProblems([&](const SmallProblem& small) {
    try {
      if (Way::carry(small, law).empty()) ++tally.carried;
    } catch (const PrecisionException&) {
      if (!std::is_same_v<Way, LatticeOver<long double>>) throw;
      ++tally.refused;
    }
  });
  return tally;
}

/// Some solutions that the check of stars accepts too: a modulus below its tolerance is none
/// of its congruences.
inline std::vector<oracle::Point> someStars(const oracle::Problem& problem) {
  std::vector<oracle::Point> points = solutionsOf(problem);
  std::erase_if(points, [&](const oracle::Point& x) { return !oracle::judge(problem, x); });
  return someOf(points, 4);
}

/// Files the images of solutions; of worse ones than those filed only the check is asked.
template <class T>
void fileAll(Lattice<T, long double>& lattice, const std::vector<oracle::Point>& points) {
  for (const oracle::Point& x : points) {
    Vector<T> vector;
    lattice.opt2lat(vectorOf<T>(x), vector, Space::raw);
    RC_ASSERT((lattice.checkSolution(vector, Space::raw, 7, Announce::silent) & CHECK_SOLUTION) !=
              0);
  }
}

}  // namespace starsift::test

#include "search/enumeration/TreeKernels.h"

#include <cmath>

#include "search/enumeration/VectorVersions.h"

namespace starsift {

namespace {

template <class Real>
[[gnu::always_inline]] inline Real total(const Block<Real>& sums) {
  const Real(&s)[blockSize] = sums.lane;
  return ((s[0] + s[4]) + (s[2] + s[6])) + ((s[1] + s[5]) + (s[3] + s[7]));
}

template <class Real>
[[gnu::always_inline]] inline Real cube(Block<Real>* to, const Block<Real>* from,
                                        const Block<Real>* row, Real factor,
                                        const Block<Real>* weights, std::size_t blocks) {
  Block<Real> sums{};
  for (std::size_t i = 0; i < blocks; ++i) {
    for (std::size_t k = 0; k < blockSize; ++k) {
      const Real value = from[i].lane[k] + factor * row[i].lane[k];
      to[i].lane[k] = value;
      sums.lane[k] += weights[i].lane[k] * std::fabs(value);
    }
  }
  return total(sums);
}

template <class Real>
[[gnu::always_inline]] inline Real box(Block<Real>* to, const Block<Real>* from,
                                       const Block<Real>* row, Real factor,
                                       const Block<Real>* lower, const Block<Real>* upper,
                                       std::size_t blocks) {
  Block<Real> sums{};
  for (std::size_t i = 0; i < blocks; ++i) {
    for (std::size_t k = 0; k < blockSize; ++k) {
      const Real value = from[i].lane[k] + factor * row[i].lane[k];
      to[i].lane[k] = value;
      const Real below = lower[i].lane[k] * value;
      const Real above = upper[i].lane[k] * value;
      sums.lane[k] += below < above ? above : below;
    }
  }
  return total(sums);
}

template <class Real>
[[gnu::always_inline]] inline Real project(Block<Real>* to, const Block<Real>* from,
                                           const Block<Real>* row, Real factor,
                                           const Block<Real>* other, std::size_t blocks) {
  Block<Real> sums{};
  for (std::size_t i = 0; i < blocks; ++i) {
    for (std::size_t k = 0; k < blockSize; ++k) {
      const Real value = from[i].lane[k] + factor * row[i].lane[k];
      to[i].lane[k] = value;
      sums.lane[k] += other[i].lane[k] * value;
    }
  }
  return total(sums);
}

}  // namespace

STARSIFT_VECTOR_VERSIONS
double stepInCube(Block<double>* to, const Block<double>* from, const Block<double>* row,
                  double factor, const Block<double>* weights, std::size_t blocks) {
  return cube(to, from, row, factor, weights, blocks);
}

STARSIFT_VECTOR_VERSIONS
double stepInBox(Block<double>* to, const Block<double>* from, const Block<double>* row,
                 double factor, const Block<double>* lower, const Block<double>* upper,
                 std::size_t blocks) {
  return box(to, from, row, factor, lower, upper, blocks);
}

STARSIFT_VECTOR_VERSIONS
double moveAndProject(Block<double>* to, const Block<double>* from, const Block<double>* row,
                      double factor, const Block<double>* other, std::size_t blocks) {
  return project(to, from, row, factor, other, blocks);
}

long double stepInCube(Block<long double>* to, const Block<long double>* from,
                       const Block<long double>* row, long double factor,
                       const Block<long double>* weights, std::size_t blocks) {
  return cube(to, from, row, factor, weights, blocks);
}

long double stepInBox(Block<long double>* to, const Block<long double>* from,
                      const Block<long double>* row, long double factor,
                      const Block<long double>* lower, const Block<long double>* upper,
                      std::size_t blocks) {
  return box(to, from, row, factor, lower, upper, blocks);
}

long double moveAndProject(Block<long double>* to, const Block<long double>* from,
                           const Block<long double>* row, long double factor,
                           const Block<long double>* other, std::size_t blocks) {
  return project(to, from, row, factor, other, blocks);
}

}  // namespace starsift

// The loops over coordinates that an enumeration spends its time in.
//
// Each is compiled for the vector instructions of the processor too, where the compiler can choose
// at run time. Every sum is made in the same blockSize parts and without fused operations, so that
// results don't depend on the processor.
#pragma once

#include "search/enumeration/Blocks.h"

namespace starsift {

/// to := from + factor * row; returns the sum of weights * |to|.
double stepInCube(Block<double>* to, const Block<double>* from, const Block<double>* row,
                  double factor, const Block<double>* weights, std::size_t blocks);
long double stepInCube(Block<long double>* to, const Block<long double>* from,
                       const Block<long double>* row, long double factor,
                       const Block<long double>* weights, std::size_t blocks);

/// to := from + factor * row; returns the sum of max(lower * to, upper * to).
double stepInBox(Block<double>* to, const Block<double>* from, const Block<double>* row,
                 double factor, const Block<double>* lower, const Block<double>* upper,
                 std::size_t blocks);
long double stepInBox(Block<long double>* to, const Block<long double>* from,
                      const Block<long double>* row, long double factor,
                      const Block<long double>* lower, const Block<long double>* upper,
                      std::size_t blocks);

/// to := from + factor * row; returns the inner product of `to` and `other`.
double moveAndProject(Block<double>* to, const Block<double>* from, const Block<double>* row,
                      double factor, const Block<double>* other, std::size_t blocks);
long double moveAndProject(Block<long double>* to, const Block<long double>* from,
                           const Block<long double>* row, long double factor,
                           const Block<long double>* other, std::size_t blocks);

}  // namespace starsift

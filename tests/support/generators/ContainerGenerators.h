// Arbitrary contents of vectors and matrices. They are made as plain lists of
// integers, which RapidCheck can show and shrink, and turned into containers.
#pragma once

#include <rapidcheck.h>

#include <cstdint>
#include <string>
#include <vector>

#include "core/Matrix.h"

namespace starsift::test {

using Rows = std::vector<std::vector<std::int64_t>>;

/// Entries of magnitude up to `bound`, rows of equal length.
inline rc::Gen<Rows> arbitraryRows(Index rows, Index columns, std::int64_t bound) {
  return rc::gen::container<Rows>(
      static_cast<std::size_t>(rows),
      rc::gen::container<std::vector<std::int64_t>>(static_cast<std::size_t>(columns),
                                                    rc::gen::inRange(-bound, bound + 1)));
}

/// Rows of rank at most `rank`: the product of a thin and a flat matrix.
inline rc::Gen<Rows> arbitraryDependentRows(Index rows, Index columns, Index rank) {
  return rc::gen::apply(
      [columns](const Rows& thin, const Rows& flat) {
        Rows product(thin.size(), std::vector<std::int64_t>(static_cast<std::size_t>(columns)));
        for (std::size_t i = 0; i < thin.size(); ++i)
          for (std::size_t k = 0; k < flat.size(); ++k)
            for (std::size_t j = 0; j < product[i].size(); ++j)
              product[i][j] += thin[i][k] * flat[k][j];
        return product;
      },
      arbitraryRows(rows, rank, 2), arbitraryRows(rank, columns, 2));
}

template <class T>
Vector<T> vectorFrom(const std::vector<std::int64_t>& components) {
  Vector<T> vector(static_cast<Index>(components.size()));
  Index i = 0;
  for (const std::int64_t component : components) vector[++i] = T(static_cast<long>(component));
  return vector;
}

/// `columns` counts where there are no rows.
template <class T>
Matrix<T> matrixFrom(const Rows& rows, Index columns) {
  Matrix<T> matrix(static_cast<Index>(rows.size()), columns);
  Index i = 0;
  for (const auto& row : rows) matrix[++i] = vectorFrom<T>(row);
  return matrix;
}

/// White space and comments, not empty, as they may stand between two numbers.
inline rc::Gen<std::string> arbitraryGap() {
  return rc::gen::map(
      rc::gen::nonEmpty(rc::gen::container<std::vector<std::string>>(rc::gen::element<std::string>(
          " ", "\t", "\r\n", "\n", "/**/", "/* ] 7 * / */", "// [ 1\n", "/***/", "//\n"))),
      [](const std::vector<std::string>& pieces) {
        std::string gap;
        for (const std::string& piece : pieces) gap += piece;
        return gap;
      });
}

}  // namespace starsift::test

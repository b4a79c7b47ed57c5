// Sums of multiples of the rows of a basis.
#pragma once

#include <cmath>
#include <utility>

#include "algorithms/reduction/SizeReduce.h"
#include "core/Matrix.h"
#include "numbers/Conversion.h"
#include "numbers/VectorQQ.h"
#include "system/Exceptions.h"

namespace starsift {

/// A vector that multiples of rows are subtracted from, exactly.
template <class T>
class RowCombination {
 public:
  /// `overflow` is the text of the exception if T can't be sure to hold the vector.
  RowCombination(const Matrix<T>& rows, Vector<T> start, const char* overflow)
      : rows_(rows), vector_(std::move(start)), bound_(supNorm(vector_)), overflow_(overflow) {}

  /// Subtracts `factor`, an integer, times row i. PrecisionException as above.
  template <class R>
  void subtract(Index i, const R& factor) {
    if (factor == R()) return;
    const T whole = NumberConversion<T, R>::ofInteger(factor);
    if constexpr (!NumberTraits<T>::exact) {
      bound_ += std::fabs(whole) * supNorm(rows_[i]);
      if (!(bound_ <= T(fatalBound))) throw PrecisionException(overflow_);
    }
    subtractMultiple(vector_, rows_[i], whole);
  }
  const Vector<T>& vector() const { return vector_; }

 private:
  const Matrix<T>& rows_;
  Vector<T> vector_;
  /// Of all entries so far.
  T bound_;
  const char* overflow_;
};

}  // namespace starsift

// Arrays whose elements convert between number types.
#pragma once

#include <type_traits>

#include "core/Array.h"
#include "core/Exceptions.h"
#include "core/NumberConversion.h"

namespace starsift {

/// The text of a conversion whose result doesn't convert back to the source.
constexpr const char* conversionLossText = "Precision lost during conversion";

/// An array that can be filled from one over another element type. New elements
/// of an arithmetic type are zero.
template <class T>
class ConversionArray : public Array<T> {
 public:
  ConversionArray() = default;
  explicit ConversionArray(Index dimension) { ConversionArray::resize(dimension, false); }

  void resize(Index dimension, bool reserve) override {
    const Index before = this->dimension();
    Array<T>::resize(dimension, reserve);
    if constexpr (std::is_arithmetic_v<T>) {
      if (dimension > before) std::fill(this->data() + before + 1, this->data() + dimension + 1, T());
    }
  }

  /// Takes the dimension of `source` and converts every element (strictly: see
  /// NumberConversion). With `check` the result is converted back and compared
  /// with the source exactly; a difference throws PrecisionException. This array
  /// is unchanged after an exception.
  template <class U>
  void convertFrom(const ConversionArray<U>& source, bool check) {
    ConversionArray result(source.dimension());
    for (Index i = 1; i <= source.dimension(); ++i)
      result[i] = NumberConversion<T, U>::convert(source[i]);
    if (check) {
      for (Index i = 1; i <= source.dimension(); ++i)
        if (!(NumberConversion<U, T>::convert(result[i]) == source[i]))
          throw PrecisionException(conversionLossText);
    }
    this->exchange(result);
  }
};

}  // namespace starsift

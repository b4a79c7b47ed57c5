// Arrays whose elements convert between number types.
#pragma once

#include <type_traits>

#include "core/Array.h"
#include "core/NumberConversion.h"
#include "system/Exceptions.h"

namespace starsift {

/// The text of a conversion whose result doesn't convert back to the source.
constexpr const char* conversionLossText = "Precision lost during conversion";

/// Converts the value to another type (strictly: see NumberConversion). With `check` the
/// result is converted back; a difference throws PrecisionException.
template <class T, class U>
T convertNumber(const U& value, bool check) {
  T result = NumberConversion<T, U>::convert(value);
  if (check && !(NumberConversion<U, T>::convert(result) == value))
    throw PrecisionException(conversionLossText);
  return result;
}

/// An array that can be filled from an array over another element type. New elements
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
      if (dimension > before)
        std::fill(this->data() + before + 1, this->data() + dimension + 1, T());
    }
  }

  /// Copies the dimension of `source` and stores every element as convertNumber() returns
  /// it: with `check` any loss throws. Unchanged after an exception.
  template <class U>
  void convertFrom(const ConversionArray<U>& source, bool check) {
    ConversionArray result(source.dimension());
    for (Index i = 1; i <= source.dimension(); ++i) result[i] = convertNumber<T>(source[i], check);
    this->exchange(result);
  }
};

}  // namespace starsift

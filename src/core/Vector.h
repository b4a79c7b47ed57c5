// Numeric vectors, 1-based with a live slot 0 that is not used in arithmetic or
// text. Bodies: Vector.inl, instantiated in Vector.cpp for the built-in number types
// and in the folder of each further number type.
#pragma once

#include "core/NumberTraits.h"
#include "core/SerializableArray.h"

namespace starsift {

/// A vector over T. A dimension mismatch is a programming error or bad input, so
/// every check below is fatal, with a text of its own that names the operation.
template <class T>
class Vector : public SerializableArray<T> {
 public:
  Vector() : SerializableArray<T>(blankStyle()) {}
  /// `dimension` components, all zero.
  explicit Vector(Index dimension) : Vector() { Vector::resize(dimension, false); }
  Vector(std::initializer_list<T> components);

  /// New components are zero, even if the storage held an element before.
  void resize(Index dimension, bool reserve) override;

  // Component-wise, "Vector: dimension mismatch1" to "...4".
  Vector& operator+=(const Vector& other);
  Vector& operator-=(const Vector& other);
  Vector& operator*=(const Vector& other);
  Vector& operator/=(const Vector& other);

  /// Moves the components from `index` on up by one and stores `value` at `index`.
  /// 0 <= index <= dimension() + 1, else fatal.
  Vector& insertComponent(Index index, const T& value);
  /// Moves the components above `index` down by one. 0 <= index <= dimension(), else fatal.
  Vector& removeComponent(Index index);

  /// Writes "[ a b c ]", each component in the stream's number format.
  std::ostream& write(std::ostream& stream) const override;
  /// See readVector in VectorText.h. A stream in fail or bad state throws
  /// ReadException "Vector: bad stream".
  std::istream& read(std::istream& stream) override;
};

/// "Vector: dimension mismatch5" and "...6".
template <class T>
Vector<T> operator+(const Vector<T>& a, const Vector<T>& b);
template <class T>
Vector<T> operator-(const Vector<T>& a, const Vector<T>& b);

/// Dot product, summed from zero in index order. "Vector: dimension mismatch8".
template <class T>
T operator*(const Vector<T>& a, const Vector<T>& b);

/// Equal within the tolerance of T in every component. "Vector: dimension mismatch9".
template <class T>
bool operator==(const Vector<T>& a, const Vector<T>& b);

/// Equal in every component without tolerance. "Vector: dimension mismatch9".
template <class T>
bool identical(const Vector<T>& a, const Vector<T>& b);

/// True if the comparison holds for every component, exactly. "Vector: dimension
/// mismatch10" and "...11".
template <class T>
bool operator>=(const Vector<T>& a, const Vector<T>& b);
template <class T>
bool operator<=(const Vector<T>& a, const Vector<T>& b);

/// Removes one element of an integer array; the error text is that of removeComponent.
template <class T>
void removeElement(Array<T>& array, Index index);

extern template class Vector<long double>;
extern template class Vector<long>;
extern template class Vector<short>;

}  // namespace starsift

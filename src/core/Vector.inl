// Bodies of Vector.h. Included by the files that instantiate them.
#pragma once

#include "core/Vector.h"
#include "core/VectorText.h"

namespace starsift {

namespace vectorcheck {

template <class T>
void sameDimension(const Vector<T>& a, const Vector<T>& b, const char* message) {
  if (a.dimension() != b.dimension()) fail(message);
}

}  // namespace vectorcheck

template <class T>
Vector<T>::Vector(std::initializer_list<T> components) : Vector() {
  resize(static_cast<Index>(components.size()), false);
  std::copy(components.begin(), components.end(), this->begin());
}

template <class T>
void Vector<T>::resize(Index dimension, bool reserve) {
  const Index before = this->dimension();
  const Index constructed = this->capacity();
  // ConversionArray::resize() would fill with zeros too.
  Array<T>::resize(dimension, reserve);  // NOLINT(bugprone-parent-virtual-call)
  // Elements of a class are zero when they are new.
  if (!std::is_arithmetic_v<T> && this->capacity() > constructed) return;
  if (dimension > before) std::fill(this->data() + before + 1, this->data() + dimension + 1, T());
}

template <class T>
Vector<T>& Vector<T>::operator+=(const Vector& other) {
  vectorcheck::sameDimension(*this, other, "Vector: dimension mismatch1");
  for (Index i = 1; i <= this->dimension(); ++i) (*this)[i] += other[i];
  return *this;
}

template <class T>
Vector<T>& Vector<T>::operator-=(const Vector& other) {
  vectorcheck::sameDimension(*this, other, "Vector: dimension mismatch2");
  for (Index i = 1; i <= this->dimension(); ++i) (*this)[i] -= other[i];
  return *this;
}

template <class T>
Vector<T>& Vector<T>::operator*=(const Vector& other) {
  vectorcheck::sameDimension(*this, other, "Vector: dimension mismatch3");
  for (Index i = 1; i <= this->dimension(); ++i) (*this)[i] *= other[i];
  return *this;
}

template <class T>
Vector<T>& Vector<T>::operator/=(const Vector& other) {
  vectorcheck::sameDimension(*this, other, "Vector: dimension mismatch4");
  for (Index i = 1; i <= this->dimension(); ++i) (*this)[i] /= other[i];
  return *this;
}

template <class T>
Vector<T>& Vector<T>::insertComponent(Index index, const T& value) {
  const Index last = this->dimension() + 1;
  if (index < 0 || index > last) fail("insertComponent: invalid index");
  T inserted = value;
  resize(last, false);
  std::move_backward(this->data() + index, this->data() + last, this->data() + last + 1);
  (*this)[index] = std::move(inserted);
  return *this;
}

template <class T>
Vector<T>& Vector<T>::removeComponent(Index index) {
  removeElement(*this, index);
  return *this;
}

template <class T>
void removeElement(Array<T>& array, Index index) {
  const Index last = array.dimension();
  if (index < 0 || index > last) fail("removeComponent: invalid index");
  if (last == 0) fail("array: dimension < 0");
  std::move(array.data() + index + 1, array.data() + last + 1, array.data() + index);
  array.resize(last - 1, false);
}

template <class T>
std::ostream& Vector<T>::write(std::ostream& stream) const {
  stream << "[ ";
  for (const T& component : *this) stream << component << ' ';
  return stream << ']';
}

template <class T>
std::istream& Vector<T>::read(std::istream& stream) {
  this->resize(0, true);
  if (stream.fail()) throw ReadException("Vector: bad stream");
  StreamCursor source(stream);
  readVector(source, *this);
  return stream;
}

template <class T>
Vector<T> operator+(const Vector<T>& a, const Vector<T>& b) {
  vectorcheck::sameDimension(a, b, "Vector: dimension mismatch5");
  Vector<T> sum(a);
  sum += b;
  return sum;
}

template <class T>
Vector<T> operator-(const Vector<T>& a, const Vector<T>& b) {
  vectorcheck::sameDimension(a, b, "Vector: dimension mismatch6");
  Vector<T> difference(a);
  difference -= b;
  return difference;
}

template <class T>
T operator*(const Vector<T>& a, const Vector<T>& b) {
  vectorcheck::sameDimension(a, b, "Vector: dimension mismatch8");
  T sum = T();
  for (Index i = 1; i <= a.dimension(); ++i) NumberTraits<T>::addProduct(sum, a[i], b[i]);
  return sum;
}

template <class T>
bool operator==(const Vector<T>& a, const Vector<T>& b) {
  vectorcheck::sameDimension(a, b, "Vector: dimension mismatch9");
  return &a == &b || std::equal(a.begin(), a.end(), b.begin(), &NumberTraits<T>::equal);
}

template <class T>
bool identical(const Vector<T>& a, const Vector<T>& b) {
  vectorcheck::sameDimension(a, b, "Vector: dimension mismatch9");
  return &a == &b || std::equal(a.begin(), a.end(), b.begin());
}

template <class T>
bool operator>=(const Vector<T>& a, const Vector<T>& b) {
  vectorcheck::sameDimension(a, b, "Vector: dimension mismatch10");
  return std::equal(a.begin(), a.end(), b.begin(), [](const T& x, const T& y) { return x >= y; });
}

template <class T>
bool operator<=(const Vector<T>& a, const Vector<T>& b) {
  vectorcheck::sameDimension(a, b, "Vector: dimension mismatch11");
  return std::equal(a.begin(), a.end(), b.begin(), [](const T& x, const T& y) { return x <= y; });
}

/// Instantiates everything of Vector.h over T.
#define STARSIFT_INSTANTIATE_VECTOR(T)                              \
  template class Vector<T>;                                         \
  template Vector<T> operator+(const Vector<T>&, const Vector<T>&); \
  template Vector<T> operator-(const Vector<T>&, const Vector<T>&); \
  template T operator*(const Vector<T>&, const Vector<T>&);         \
  template bool operator==(const Vector<T>&, const Vector<T>&);     \
  template bool identical(const Vector<T>&, const Vector<T>&);      \
  template bool operator>=(const Vector<T>&, const Vector<T>&);     \
  template bool operator<=(const Vector<T>&, const Vector<T>&);     \
  template void removeElement(Array<T>&, Index);                    \
  template void readVector(TextCursor&, Vector<T>&);                \
  template void readVector(StreamCursor&, Vector<T>&);              \
  template void appendText(std::string&, const Vector<T>&, int)

}  // namespace starsift

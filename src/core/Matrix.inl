// Bodies of Matrix.h. Included by the files that instantiate them.
#pragma once

#include <algorithm>

#include "core/Elimination.h"
#include "core/Matrix.h"
#include "core/VectorText.h"

namespace starsift {

template <class T>
Matrix<T>::Matrix(std::initializer_list<std::initializer_list<T>> rows) : Matrix() {
  Index columns = 0;
  for (const auto& row : rows) columns = std::max(columns, static_cast<Index>(row.size()));
  resize(static_cast<Index>(rows.size()), columns, false);
  Index i = 0;
  for (const auto& row : rows) std::copy(row.begin(), row.end(), (*this)[++i].begin());
}

template <class T>
Matrix<T> Matrix<T>::identity(Index order) {
  Matrix result(order, order);
  for (Index i = 1; i <= order; ++i) result[i][i] = T(1);
  return result;
}

template <class T>
void Matrix<T>::destroy() {
  ConversionArray<Vector<T>>::destroy();
  columnCount_ = 0;
}

template <class T>
void Matrix<T>::resize(Index rows, bool reserve) {
  resize(rows, columnCount_, reserve);
}

template <class T>
void Matrix<T>::resize(Index rows, Index columns, bool reserve) {
  if (rows < 0 || columns < 0) fail("Matrix: invalid size");
  ConversionArray<Vector<T>>::resize(rows, reserve);
  if (this->data() != nullptr)
    for (Index i = 0; i <= rows; ++i) (*this)[i].resize(columns, reserve);
  columnCount_ = columns;
}

template <class T>
bool Matrix<T>::isSet() const {
  return rowCount() > 0 && columnCount_ > 0;
}

template <class T>
void Matrix<T>::swapRows(Index i, Index j) {
  if (i < 0 || i > rowCount() || j < 0 || j > rowCount())
    fail("Matrix: row swap index out of range");
  if (i != j) (*this)[i].exchange((*this)[j]);
}

template <class T>
void Matrix<T>::removeRow(Index i) {
  if (i < 0) fail("Invalid row index!");
  for (Index r = i; r < rowCount(); ++r) swapRows(r, r + 1);
  resize(rowCount() - 1, columnCount_, true);
}

template <class T>
Matrix<T>& Matrix<T>::operator*=(const Matrix& other) {
  if (columnCount_ != other.rowCount()) fail("Matrix: dimension mismatch3");
  Matrix product = *this * other;
  exchange(product);
  return *this;
}

template <class T>
T Matrix<T>::determinant() const {
  return eliminationDeterminant(*this);
}

template <class T>
std::ostream& Matrix<T>::write(std::ostream& stream) const {
  stream << "[\n" << std::flush;
  for (const Vector<T>& row : *this) stream << row << '\n' << std::flush;
  return stream << ']';
}

template <class T>
std::istream& Matrix<T>::read(std::istream& stream) {
  resize(0, 0, false);
  if (stream.fail()) fail("Matrix: bad stream");
  StreamCursor source(stream);
  readMatrix(source, *this);
  return stream;
}

template <class T>
Vector<T> operator*(const Matrix<T>& matrix, const Vector<T>& vector) {
  if (matrix.columnCount() != vector.dimension())
    fail("Matrix: mat-vec multiplication dimension mismatch");
  Vector<T> result(matrix.rowCount());
  for (Index i = 1; i <= matrix.rowCount(); ++i) result[i] = matrix[i] * vector;
  return result;
}

template <class T>
Vector<T> operator*(const Vector<T>& vector, const Matrix<T>& matrix) {
  if (vector.dimension() != matrix.rowCount()) fail("vector-matrix dimension mismatch");
  Vector<T> result(matrix.columnCount());
  for (Index i = 1; i <= matrix.rowCount(); ++i)
    for (Index j = 1; j <= matrix.columnCount(); ++j)
      NumberTraits<T>::addProduct(result[j], vector[i], matrix[i][j]);
  return result;
}

template <class T>
Matrix<T> operator*(const Matrix<T>& a, const Matrix<T>& b) {
  if (a.columnCount() != b.rowCount()) fail("Matrix: dimension mismatch6");
  Matrix<T> result(a.rowCount(), b.columnCount());
  for (Index i = 1; i <= a.rowCount(); ++i)
    for (Index k = 1; k <= a.columnCount(); ++k)
      for (Index j = 1; j <= b.columnCount(); ++j)
        NumberTraits<T>::addProduct(result[i][j], a[i][k], b[k][j]);
  return result;
}

/// Padding multiplies the rows by the columns, so a small text could request any amount
/// of memory: beyond a certain number of entries, one in 64 must have been written.
inline void checkPadding(Index rows, Index columns, Index written) {
  constexpr Index unlimitedEntries = Index{1} << 22;
  constexpr Index entriesPerWritten = 64;
  // The product of rows and columns might overflow.
  if (rows > std::max(unlimitedEntries, entriesPerWritten * written) / columns)
    fail("Matrix: too many short rows");
}

template <class T, class Source>
void readMatrix(Source& source, Matrix<T>& matrix) {
  matrix.resize(0, 0, false);
  skipWithComments(source);
  if (source.peek() != '[') return;
  source.take();
  skipWithComments(source);
  std::vector<Vector<T>> rows;
  Index columns = 0;
  Index written = 0;
  while (source.peek() != ']') {
    if (source.peek() != '[') fail("Matrix: bad input");
    readVector(source, rows.emplace_back());
    const Index length = rows.back().dimension();
    if (length > columns && columns != 0) fail("Matrix row dimension mismatch");
    columns = std::max(columns, length);
    written += length;
    skipWithComments(source);
  }
  source.take();
  if (columns == 0) return;
  checkPadding(static_cast<Index>(rows.size()), columns, written);
  matrix.resize(static_cast<Index>(rows.size()), 0, false);
  for (Index i = 1; i <= matrix.rowCount(); ++i)
    matrix[i].exchange(rows[static_cast<std::size_t>(i - 1)]);
  matrix.resize(matrix.rowCount(), columns, false);
}

/// Instantiates everything of Matrix.h over T.
#define STARSIFT_INSTANTIATE_MATRIX(T)                              \
  template class Matrix<T>;                                         \
  template Vector<T> operator*(const Matrix<T>&, const Vector<T>&); \
  template Vector<T> operator*(const Vector<T>&, const Matrix<T>&); \
  template Matrix<T> operator*(const Matrix<T>&, const Matrix<T>&); \
  template void readMatrix(TextCursor&, Matrix<T>&);                \
  template void readMatrix(StreamCursor&, Matrix<T>&)

}  // namespace starsift

// Numeric matrices: arrays of rows, 1-based with a live row 0 and column 0.
// Bodies: Matrix.inl, instantiated in Matrix.cpp for the built-in number types and in the
// folder of each further number type.
#pragma once

#include <algorithm>

#include "core/Vector.h"

namespace starsift {

/// A matrix over T. A mismatch of dimensions is a programming error or bad input: every
/// check is fatal with a text of its own.
template <class T>
class Matrix : public ConversionArray<Vector<T>>, public Serializable {
 public:
  Matrix() : Serializable(commaStyle()) {}
  /// All entries zero.
  Matrix(Index rows, Index columns) : Matrix() { resize(rows, columns, false); }
  Matrix(std::initializer_list<std::initializer_list<T>> rows);
  Matrix(const Matrix&) = default;
  Matrix(Matrix&& other) noexcept : Matrix() { exchange(other); }
  Matrix& operator=(const Matrix&) = default;
  /// Leaves `other` with this matrix's former content.
  Matrix& operator=(Matrix&& other) noexcept {
    exchange(other);
    return *this;
  }
  ~Matrix() override = default;
  static Matrix identity(Index order);

  Index rowCount() const { return this->dimension(); }
  Index columnCount() const { return columnCount_; }

  /// Also resets the column count.
  void destroy() override;
  /// Keeps the columns.
  void resize(Index rows, bool reserve) override;
  /// New columns are zero, and so are rows that did not exist before; rows beyond the new
  /// size stay in storage and reappear unchanged. A negative count is fatal,
  /// "Matrix: invalid size".
  void resize(Index rows, Index columns, bool reserve);
  /// True if there are rows and columns.
  bool isSet() const override;

  /// Swaps the contents of two matrices; no entry is touched.
  void exchange(Matrix& other) noexcept {
    ConversionArray<Vector<T>>::exchange(other);
    std::swap(columnCount_, other.columnCount_);
  }

  /// Swaps two rows without touching entries; 0 <= i, j <= rowCount().
  void swapRows(Index i, Index j);
  /// Moves row i to the end and removes it. An index at or beyond rowCount()
  /// removes the last row; a negative one is fatal, "Invalid row index!".
  void removeRow(Index i);

  /// "Matrix: dimension mismatch3".
  Matrix& operator*=(const Matrix& other);

  /// Product of the diagonal after elimination; 0 for rank 0, so also without rows.
  /// Below full rank the last factor is a value that counts as zero within the tolerance.
  /// A matrix that isn't square is fatal. Throws what eliminate() throws.
  T determinant() const;

  /// Copies the shape and converts every entry; with `check` a result that doesn't
  /// convert back to the source throws PrecisionException. Unchanged after an
  /// exception.
  template <class U>
  void convertFrom(const Matrix<U>& source, bool check);

  /// Writes "[" and a line feed, one line per row, "]".
  std::ostream& write(std::ostream& stream) const override;
  /// See readMatrix. A stream in fail or bad state is fatal, "Matrix: bad stream".
  std::istream& read(std::istream& stream) override;

 private:
  Index columnCount_ = 0;
};

/// "Matrix: mat-vec multiplication dimension mismatch".
template <class T>
Vector<T> operator*(const Matrix<T>& matrix, const Vector<T>& vector);
/// "vector-matrix dimension mismatch".
template <class T>
Vector<T> operator*(const Vector<T>& vector, const Matrix<T>& matrix);
/// "Matrix: dimension mismatch6".
template <class T>
Matrix<T> operator*(const Matrix<T>& a, const Matrix<T>& b);

/// True if the shapes are equal and every entry is, without tolerance.
template <class T>
bool identical(const Matrix<T>& a, const Matrix<T>& b) {
  return a.rowCount() == b.rowCount() && a.columnCount() == b.columnCount() &&
         std::equal(
             a.begin(), a.end(), b.begin(),
             [](const Vector<T>& left, const Vector<T>& right) { return identical(left, right); });
}

/// Reads "[ [ 1 2 ] [ 3 4 ] ]": rows in vector form, white space and comments
/// between them. Leaves the matrix empty if the source doesn't stand at "[".
/// The first row with components sets the column count; shorter rows are padded
/// with zeros, a longer one is fatal ("Matrix row dimension mismatch"), and so is
/// anything but "[" or "]" at the start of a row ("Matrix: bad input"). If all rows
/// are empty, there are no columns and the matrix stays empty. Fatal, "Matrix:
/// too many short rows": more than 2^22 entries of which less than one in 64 was
/// written.
/// written.
template <class T, class Source>
void readMatrix(Source& source, Matrix<T>& matrix);

template <class T>
template <class U>
void Matrix<T>::convertFrom(const Matrix<U>& source, bool check) {
  Matrix result(source.rowCount(), source.columnCount());
  for (Index i = 1; i <= source.rowCount(); ++i) result[i].convertFrom(source[i], check);
  exchange(result);
}

extern template class Matrix<long double>;

}  // namespace starsift

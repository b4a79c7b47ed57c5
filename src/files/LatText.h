// The .lat file: a lattice and its check vectors as text.
#pragma once

#include <cstdint>
#include <string>

#include "core/Matrix.h"
#include "numbers/QQ.h"

namespace starsift {

/// The content of the file.
template <class T>
struct LatticeData {
  /// Basis in raw coordinates.
  Matrix<T> basis;
  /// Check vectors and scale factors per coordinate.
  Vector<T> l;
  Vector<T> r;
  Vector<T> c;
  T rangeMultiple = T();
  /// Bounds of the variables in normal form.
  Vector<T> lx;
  Vector<T> rx;
  /// The first coordinate is that of the target row, whose values are searched in ltu..rtu.
  bool hasTarget = false;
  T ltu = T();
  T rtu = T();
  /// Seconds since the start of the process.
  std::int64_t seconds = 0;
};

/// The whole text, numbers with fileDigits; see docs/file-formats.md.
template <class T>
std::string latText(const LatticeData<T>& data);

/// Writes `text` to `path`. SIGINT and SIGTERM are deferred until the file is complete. A file
/// that can't be opened is left unchanged. Throws WriteException and LinkException as ResultFile.
void writeLat(const std::string& path, const std::string& text);

extern template std::string latText(const LatticeData<long double>&);
extern template std::string latText(const LatticeData<QQ>&);

}  // namespace starsift

// Internals of QQ, for the .cpp files of this folder: read access to any finite number
// as a GMP rational, and storing results of GMP or of 128-bit arithmetic.
#pragma once

#include "numbers/QQ.h"
#include "numbers/WideInt.h"

namespace starsift {

/// A finite number as a read-only GMP rational, without allocation. The number must not
/// change while the view is in use.
class QQView {
 public:
  explicit QQView(const QQ& value) noexcept;
  QQView(const QQView&) = delete;
  QQView& operator=(const QQView&) = delete;
  ~QQView() = default;

  mpq_srcptr get() const noexcept { return rational_; }
  mpz_srcptr numerator() const noexcept { return mpq_numref(rational_); }
  mpz_srcptr denominator() const noexcept { return mpq_denref(rational_); }

 private:
  mp_limb_t numeratorLimb_ = 0;
  mp_limb_t denominatorLimb_ = 0;
  mpq_t small_;
  mpq_srcptr rational_;
};

/// Reads and sets the shape of a number.
class QQStorage {
 public:
  static bool isSmall(const QQ& value) noexcept { return value.tag_ - 1 < QQ::infiniteTag - 1; }
  static bool isBig(const QQ& value) noexcept { return value.isBig(); }
  /// Of a small number.
  static std::int64_t numerator(const QQ& value) noexcept { return value.word_; }
  static std::uint64_t denominator(const QQ& value) noexcept { return value.tag_; }

  /// A GMP rational in which to compute the new value of `target`: that of `target` if
  /// it is big, otherwise an object of the thread. Use only one at a time.
  static mpq_ptr workplace(QQ& target) noexcept;
  /// Stores `result`, the workplace of `target`, which must be in lowest terms.
  static void finish(QQ& target, mpq_ptr result);

  /// Stores numerator / denominator, which must be in lowest terms, denominator > 0.
  static void set(QQ& target, Int128 numerator, UInt128 denominator);
  /// Reduces numerator / denominator to lowest terms and stores it; denominator > 0.
  static void setReduced(QQ& target, Int128 numerator, std::uint64_t denominator);
  /// The same for positive integers of any two words.
  static void setWide(QQ& target, UInt128 numerator, UInt128 denominator);
};

}  // namespace starsift

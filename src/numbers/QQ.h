// The exact number of the system: a rational, or one of the two infinities.
//
// Nearly every number of a problem is a small integer, so the header defines the
// operations on machine words inline. All else is out of line: arithmetic in
// QQArithmetic.cpp, construction and parts in QQ.cpp, text in QQText.h, powers and
// logarithms in QQFunctions.h, conversion to long double in Conversion.h.
#pragma once

#include <gmp.h>

#include <bit>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <string>
#include <string_view>

#include "core/NumberTraits.h"
#include "numbers/ZZ.h"

namespace starsift {

/// A number in lowest terms, stored in one of three shapes; `tag_` says which:
///
///   small     a numerator of magnitude below 2^62; the tag is the denominator,
///             at least 1 and below 2^32
///   big       an owned GMP rational on the heap; the tag is 0
///   infinity  the sign as +1 or -1; the tag is 2^32
///
/// A value that fits is stored small, so equal values have equal shapes. There is
/// no negative zero. An undefined operation (INF - INF, 0 * INF, 0 / 0, oo / oo)
/// is a programming error and fatal. The only exception thrown is std::bad_alloc.
class QQ {
 public:
  QQ() noexcept = default;
  // Implicit: every machine integer is converted exactly.
  QQ(int value) noexcept : word_(value) {}  // NOLINT(google-explicit-constructor)
  QQ(long value) : word_(value) {           // NOLINT(google-explicit-constructor)
    if (!fitsSmall(value)) makeBig(value);
  }
  explicit QQ(const ZZ& value);
  /// Signs are allowed; a zero denominator is fatal, "QQ: division by zero".
  QQ(const ZZ& numerator, const ZZ& denominator);
  QQ(long numerator, long denominator);
  /// fromDbl() of Conversion.h.
  explicit QQ(long double value);

  QQ(const QQ& other) : word_(other.word_), tag_(other.tag_) {
    if (isBig()) copyBig(other);
  }
  /// Sets `other` to 0.
  QQ(QQ&& other) noexcept : word_(other.word_), tag_(other.tag_) {
    other.word_ = 0;
    other.tag_ = 1;
  }
  QQ& operator=(const QQ& other) {
    if (isBig() || other.isBig()) {
      assignGeneral(other);
    } else {
      word_ = other.word_;
      tag_ = other.tag_;
    }
    return *this;
  }
  /// Gives `other` the former value of this number.
  QQ& operator=(QQ&& other) noexcept {
    swap(other);
    return *this;
  }
  ~QQ() {
    if (isBig()) freeBig();
  }

  /// Returns ganze + zaehler / nenner, negated if `sign` is false, in lowest terms.
  /// Fatal, in this order: a negative part ("A ganze / zaehler / nenner sign has been
  /// set, ..."), nenner 0 if zaehler isn't 0 ("QQ: division by zero"). The sign of
  /// zero is dropped.
  static QQ canonicalise(bool sign, const ZZ& ganze, const ZZ& zaehler, const ZZ& nenner);

  /// Returns the number that `text` is the text of: see QQText.h.
  static QQ parse(std::string_view text);

  static const QQ& zero();
  static const QQ& one();
  static const QQ& minusOne();
  static const QQ& infinity();
  static const QQ& ten();

  void setInf(bool sign) {
    if (isBig()) freeBig();
    word_ = sign ? 1 : -1;
    tag_ = infiniteTag;
  }

  bool isInf() const noexcept { return tag_ == infiniteTag; }
  bool isZero() const noexcept { return tag_ == 1 && word_ == 0; }
  /// False for the infinities.
  bool isInteger() const noexcept { return tag_ == 1 || (isBig() && bigIsInteger()); }
  /// True for 0, positive numbers and +infinity.
  bool sign() const noexcept { return isBig() ? bigSign() >= 0 : word_ >= 0; }
  /// Stores an integer of magnitude below 2^62 and returns true; else returns false.
  bool toInt64(std::int64_t& value) const noexcept {
    if (tag_ != 1) return false;
    value = word_;
    return true;
  }
  /// Stores a numerator of magnitude below 2^62 and a denominator below 2^32 and
  /// returns true; returns false if they are larger.
  bool toSmall(std::int64_t& numerator, std::uint32_t& denominator) const noexcept {
    if (isBig() || isInf()) return false;
    numerator = word_;
    denominator = static_cast<std::uint32_t>(tag_);
    return true;
  }

  // The parts of |value| as a mixed number, 0 <= zaehler < nenner. They are 1, 0 and 1
  // for an infinity.
  ZZ ganze() const;
  ZZ zaehler() const;
  ZZ nenner() const;
  /// Of the improper fraction over nenner(), with the sign of the value.
  ZZ numerator() const;
  /// nenner() as a number.
  QQ denominator() const;

  QQ& operator+=(const QQ& other) {
    if (tag_ == 1 && other.tag_ == 1) {
      const std::int64_t sum = word_ + other.word_;
      if (fitsSmall(sum)) {
        word_ = sum;
        return *this;
      }
    }
    return addGeneral(other);
  }
  QQ& operator-=(const QQ& other) {
    if (tag_ == 1 && other.tag_ == 1) {
      const std::int64_t difference = word_ - other.word_;
      if (fitsSmall(difference)) {
        word_ = difference;
        return *this;
      }
    }
    return subtractGeneral(other);
  }
  QQ& operator*=(const QQ& other) {
    std::int64_t product = 0;
    if (tag_ == 1 && other.tag_ == 1 && !__builtin_mul_overflow(word_, other.word_, &product) &&
        fitsSmall(product)) {
      word_ = product;
      return *this;
    }
    return multiplyGeneral(other);
  }
  /// A finite value divided by an infinity is 0; a value other than 0 divided by 0 is
  /// the infinity with the sign of the dividend.
  QQ& operator/=(const QQ& other);

  void negate() noexcept {
    if (isBig())
      mpq_neg(big(), big());
    else
      word_ = -word_;
  }
  QQ operator-() const {
    QQ result(*this);
    result.negate();
    return result;
  }

  void swap(QQ& other) noexcept {
    std::swap(word_, other.word_);
    std::swap(tag_, other.tag_);
  }

  /// Negative if a < b, 0 if a == b, positive if a > b.
  friend int compare(const QQ& a, const QQ& b) {
    if (a.tag_ == b.tag_ && !a.isBig())
      return static_cast<int>(a.word_ > b.word_) - static_cast<int>(a.word_ < b.word_);
    return compareGeneral(a, b);
  }
  friend bool operator==(const QQ& a, const QQ& b) {
    return a.tag_ == b.tag_ && (a.isBig() ? bigEqual(a, b) : a.word_ == b.word_);
  }
  friend std::strong_ordering operator<=>(const QQ& a, const QQ& b) { return compare(a, b) <=> 0; }

  /// sum += a * b; the three may be one object. No heap traffic for small values.
  friend void addProduct(QQ& sum, const QQ& a, const QQ& b) {
    std::int64_t product = 0;
    if (sum.tag_ == 1 && productFits(a, b, product)) {
      product += sum.word_;
      if (fitsSmall(product)) {
        sum.word_ = product;
        return;
      }
    }
    addProductGeneral(sum, a, b);
  }
  /// sum -= a * b; the three may be one object. No heap traffic for small values.
  friend void subtractProduct(QQ& sum, const QQ& a, const QQ& b) {
    std::int64_t product = 0;
    if (sum.tag_ == 1 && productFits(a, b, product)) {
      product = sum.word_ - product;
      if (fitsSmall(product)) {
        sum.word_ = product;
        return;
      }
    }
    subtractProductGeneral(sum, a, b);
  }

 private:
  friend class QQView;
  friend class QQStorage;

  static constexpr std::uint64_t bigTag = 0;
  static constexpr std::uint64_t infiniteTag = std::uint64_t{1} << 32;

  /// Magnitude below 2^62: the sum and difference of two such values don't overflow.
  static constexpr bool fitsSmall(std::int64_t value) noexcept {
    constexpr std::int64_t bound = std::int64_t{1} << 62;
    return value > -bound && value < bound;
  }
  static bool productFits(const QQ& a, const QQ& b, std::int64_t& product) noexcept {
    return a.tag_ == 1 && b.tag_ == 1 && !__builtin_mul_overflow(a.word_, b.word_, &product) &&
           fitsSmall(product);
  }

  bool isBig() const noexcept { return tag_ == bigTag; }
  mpq_ptr big() const noexcept { return std::bit_cast<mpq_ptr>(word_); }
  void makeBig(long value);
  void copyBig(const QQ& other);
  void freeBig() noexcept;
  // The analyzer doesn't understand bit_cast.
  int bigSign() const noexcept { return mpq_sgn(big()); }  // NOLINT(clang-analyzer-core.*)
  bool bigIsInteger() const noexcept;
  void assignGeneral(const QQ& other);
  QQ& addGeneral(const QQ& other);
  QQ& subtractGeneral(const QQ& other);
  QQ& multiplyGeneral(const QQ& other);
  static int compareGeneral(const QQ& a, const QQ& b);
  static bool bigEqual(const QQ& a, const QQ& b);
  static void addProductGeneral(QQ& sum, const QQ& a, const QQ& b);
  static void subtractProductGeneral(QQ& sum, const QQ& a, const QQ& b);

  std::int64_t word_ = 0;  // numerator, sign of an infinity, or the bits of a mpq_ptr
  std::uint64_t tag_ = 1;  // shape and denominator, see above
};

// Friends above; declared here so that qualified calls find them.
void addProduct(QQ& sum, const QQ& a, const QQ& b);
void subtractProduct(QQ& sum, const QQ& a, const QQ& b);

inline void swap(QQ& a, QQ& b) noexcept {
  a.swap(b);
}

inline QQ operator+(const QQ& a, const QQ& b) {
  QQ result(a);
  result += b;
  return result;
}
inline QQ operator-(const QQ& a, const QQ& b) {
  QQ result(a);
  result -= b;
  return result;
}
inline QQ operator*(const QQ& a, const QQ& b) {
  QQ result(a);
  result *= b;
  return result;
}
inline QQ operator/(const QQ& a, const QQ& b) {
  QQ result(a);
  result /= b;
  return result;
}

inline QQ abs(const QQ& value) {
  return value.sign() ? value : -value;
}

/// Returns a if a > b, otherwise b.
inline QQ max(const QQ& a, const QQ& b) {
  return compare(a, b) > 0 ? a : b;
}

// Rounded to an integer: towards -infinity, towards +infinity, towards 0. Infinities
// and integers are returned unchanged.
QQ floor(const QQ& value);
QQ ceil(const QQ& value);
QQ trunc(const QQ& value);

/// Sets `common` to the least common multiple of the two denominators, `aScaled` and
/// `bScaled` to the numerators of the fractional parts of |a| and |b| over it. Fatal
/// if two of the results are one object ("QQ: The ZZs have the same address") or an
/// operand is infinite ("a_z, b_z can not be set to ZZ::INF -- ...").
void commonDenominator(const QQ& a, const QQ& b, ZZ& aScaled, ZZ& bScaled, ZZ& common);

/// See QQText.h.
std::ostream& operator<<(std::ostream& stream, const QQ& value);
std::istream& operator>>(std::istream& stream, QQ& value);

/// Exact arithmetic: no overflow, no rounding. A vector component is one number
/// token of QQText.h. An empty token is fatal, so read() always returns true.
template <>
struct NumberTraits<QQ> {
  static QQ infinity() { return QQ::infinity(); }
  static bool isInfinite(const QQ& v) { return v.isInf(); }
  static QQ absolute(const QQ& v) { return abs(v); }
  static const QQ& tolerance();
  static bool isZero(const QQ& v) {
    std::int64_t integer = 0;
    return v.toInt64(integer) ? integer == 0 : fractionIsZero(v);
  }
  static bool equal(const QQ& a, const QQ& b) { return a == b || fractionsEqual(a, b); }
  static void addProduct(QQ& sum, const QQ& a, const QQ& b) { starsift::addProduct(sum, a, b); }
  static void subtractProduct(QQ& sum, const QQ& a, const QQ& b) {
    starsift::subtractProduct(sum, a, b);
  }
  static void divide(QQ& value, const QQ& divisor) { value /= divisor; }
  static QQ remainder(const QQ& a, const QQ& b);
  static bool overflowCheck(const QQ&) { return false; }
  template <class Source>
  static bool read(Source& source, QQ& value);
  static void append(std::string& out, const QQ& value, int /*digits*/);
  static bool toInteger(const QQ& value, std::int64_t& integer) { return value.toInt64(integer); }
  static bool writtenAsInteger(const QQ& value, int /*digits*/, std::int64_t& integer) {
    return value.toInt64(integer);
  }
  static std::size_t hash(const QQ& value) {
    std::int64_t integer = 0;
    return value.toInt64(integer) ? static_cast<std::size_t>(integer) : fractionHash(value);
  }
  static constexpr bool exact = true;
  static constexpr int wholeDigits = 18;

 private:
  static bool fractionIsZero(const QQ& v);
  static bool fractionsEqual(const QQ& a, const QQ& b);
  static std::size_t fractionHash(const QQ& value);
};

}  // namespace starsift

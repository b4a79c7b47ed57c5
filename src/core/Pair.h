// Two values, with a text form and with an order by the right value.
#pragma once

#include <istream>
#include <ostream>
#include <utility>

#include "core/ConversionArray.h"
#include "text/Serializable.h"

namespace starsift {

template <class A, class B>
class Pair {
 public:
  Pair() = default;
  Pair(A leftValue, B rightValue) : left(std::move(leftValue)), right(std::move(rightValue)) {}
  Pair(const Pair&) = default;
  Pair(Pair&&) noexcept = default;
  Pair& operator=(const Pair&) = default;
  Pair& operator=(Pair&&) noexcept = default;
  virtual ~Pair() = default;

  /// Converts both values (strictly: see NumberConversion). With `check` the result
  /// is converted back and compared; a difference throws PrecisionException. This
  /// pair is unchanged after an exception.
  template <class C, class D>
  void convertFrom(const Pair<C, D>& source, bool check) {
    A newLeft = NumberConversion<A, C>::convert(source.left);
    B newRight = NumberConversion<B, D>::convert(source.right);
    if (check && !(NumberConversion<C, A>::convert(newLeft) == source.left &&
                   NumberConversion<D, B>::convert(newRight) == source.right))
      throw PrecisionException(conversionLossText);
    left = std::move(newLeft);
    right = std::move(newRight);
  }

  A left{};
  B right{};
};

/// Text form "(left, right)".
template <class A, class B>
class SerializablePair : public Pair<A, B>, public Serializable {
 public:
  SerializablePair() : Serializable(commaStyle()) {}
  SerializablePair(A leftValue, B rightValue)
      : Pair<A, B>(std::move(leftValue), std::move(rightValue)), Serializable(commaStyle()) {}

  std::ostream& write(std::ostream& stream) const override {
    return stream << '(' << this->left << ", " << this->right << ')';
  }

  /// Reads one delimiter character before, between and after the two values,
  /// whatever it is; white space before each is skipped.
  std::istream& read(std::istream& stream) override {
    char delimiter = 0;
    return stream >> delimiter >> this->left >> delimiter >> this->right >> delimiter;
  }
};

/// Ordered by the right value alone.
template <class A, class B>
class RightOrderPair : public SerializablePair<A, B> {
 public:
  using SerializablePair<A, B>::SerializablePair;
};

template <class A, class B>
bool operator==(const RightOrderPair<A, B>& a, const RightOrderPair<A, B>& b) {
  return a.right == b.right;
}
template <class A, class B>
bool operator<(const RightOrderPair<A, B>& a, const RightOrderPair<A, B>& b) {
  return a.right < b.right;
}
template <class A, class B>
bool operator>(const RightOrderPair<A, B>& a, const RightOrderPair<A, B>& b) {
  return b < a;
}
template <class A, class B>
bool operator<=(const RightOrderPair<A, B>& a, const RightOrderPair<A, B>& b) {
  return !(b < a);
}
template <class A, class B>
bool operator>=(const RightOrderPair<A, B>& a, const RightOrderPair<A, B>& b) {
  return !(a < b);
}

}  // namespace starsift

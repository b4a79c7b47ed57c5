#include "stars/SmallBox.h"

#include "numbers/Conversion.h"
#include "stars/ProductLimit.h"

namespace starsift {

template <class T>
SmallBox::SmallBox(const Vector<T>& lower, const Vector<T>& upper) {
  using Exact = NumberConversion<QQ, T>;
  lower_.reserve(static_cast<std::size_t>(lower.dimension()));
  upper_.reserve(static_cast<std::size_t>(upper.dimension()));
  for (const T& bound : lower) lower_.push_back(cutUp(Exact::convert(bound)));
  for (const T& bound : upper) upper_.push_back(cutDown(Exact::convert(bound)));
}

template SmallBox::SmallBox(const Vector<long double>&, const Vector<long double>&);
template SmallBox::SmallBox(const Vector<QQ>&, const Vector<QQ>&);

}  // namespace starsift

#include "problem/Vanu.h"

#include <algorithm>

#include "numbers/Conversion.h"
#include "numbers/QQ.h"

namespace starsift {

template <class T>
Vanu<T>::Vanu() = default;

template <class T>
Vanu<T>::Vanu(const Vanu&) = default;

template <class T>
Vanu<T>::Vanu(Vanu&&) noexcept = default;

template <class T>
Vanu<T>& Vanu<T>::operator=(const Vanu&) = default;

template <class T>
Vanu<T>& Vanu<T>::operator=(Vanu&&) noexcept = default;

template <class T>
Vanu<T>::~Vanu() = default;

template <class T>
void Vanu<T>::clear(bool keepPaths) {
  Vanu empty;
  if (keepPaths) {
    empty.optFile = std::move(optFile);
    empty.solFile = std::move(solFile);
  }
  empty.fixedTargets = fixedTargets;
  *this = std::move(empty);
}

template <class T>
void Vanu<T>::addVariable(const T& lower, const T& upper, const T& decimals) {
  const Index n = rx.dimension() + 1;
  fd.resize(n, true);
  lx.resize(n, true);
  rx.resize(n, true);
  dx.resize(n, true);
  fd[n] = freedomDegree(lower, upper);
  lx[n] = lower;
  rx[n] = upper;
  dx[n] = decimals;
}

template <class T>
T Vanu<T>::targetSign(Index i) const {
  return T(dt.element(i) == NumberTraits<T>::infinity() ? 1 : -1);
}

template <class T>
void Vanu<T>::updateFixedTargets() {
  fixedTargets = std::none_of(dt.begin(), dt.end(), NumberTraits<T>::isInfinite);
}

template <class T>
Index Vanu<T>::modulusCount() const {
  return std::count_if(qg.begin(), qg.end(), [](const T& modulus) { return !(modulus == T()); });
}

template class Vanu<long double>;
template class Vanu<QQ>;

}  // namespace starsift

// Lattice: Gram-Schmidt data of the working basis, by GramSchmidtData.
#pragma once

#include "lattice/Lattice.h"

namespace starsift {

template <class T, class R>
bool Lattice<T, R>::classicOrthogonalise(Index from, Index to) {
  return gramSchmidt.orthogonaliseClassic(basis, from, to);
}

template <class T, class R>
Index Lattice<T, R>::modifiedOrthogonalise(Index from, Index to, OnDependency reaction,
                                           LqCache cache) {
  return gramSchmidt.orthogonaliseModified(basis, from, to, reaction, cache);
}

template <class T, class R>
Index Lattice<T, R>::fullOrthogonalise(Index from, Index to, OnDependency reaction) {
  return gramSchmidt.orthogonaliseFull(basis, from, to, reaction);
}

}  // namespace starsift

// A lattice as it stands after generation, made by hand from the normal form of its problem.
#pragma once

#include "lattice/Lattice.h"

namespace starsift::test {

/// The lattices that a problem goes through, in their order.
enum class LatticeStage {
  /// A coordinate per equation, then one per variable and modulus.
  equations,
  /// The same without those of the equations.
  equationsGone,
  /// One for the target row, one per inequation, then one per variable and modulus.
  fullWithModuli,
  /// The same without those of the moduli.
  full,
};

/// Gives a lattice that was normalised the basis and the check vectors of the stage: B_save
/// and B, n, m, c, l, r, rangeMultiple, latticeKind, equationsRemoved, modsInLattice. Row 1
/// of the basis is the inhomogeneous one, with homValue at its end. PrecisionException where
/// T isn't safe with rangeMultiple.
template <class T>
void generateByHand(Lattice<T, long double>& lattice, LatticeStage stage);

}  // namespace starsift::test

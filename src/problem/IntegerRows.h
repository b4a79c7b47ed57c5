// Transforms rational rows to normal form: every row holds integers, and a congruence is an
// equation with the modulus as the coefficient of one more, free variable.
#pragma once

#include "problem/Vanu.h"

namespace starsift {

/// If there are moduli, appends a column per equation to Ag, qg in its own row and 0
/// elsewhere, and as many columns of 0 to Au. No variable is added.
template <class T>
void addModulusColumns(Vanu<T>& problem);

/// Removes the modulus columns of plain equations: the k-th remaining column belongs to the
/// k-th equation with a modulus.
template <class T>
void dropZeroModulusColumns(Vanu<T>& problem);

/// Multiplies rows by the least factors that make them integers: equations together with
/// bg, inequations without their bounds, which are then rounded inwards, and all targets
/// by one common factor, together with finite dt and kt and with ltu and rtu, so that their
/// weights stay.
///
/// The slack and deviations of a lifted equation keep their coefficients of 1 and -1:
/// they count in units of 1 / factor, which slackUnit records, and the coefficients of the
/// deviations in the target are divided by it first.
///
/// PrecisionException if a factor leaves the safe range of T ("iMFFT overflow" for targets,
/// "iMF overflow2" for equations, "iMF overflow3" for inequations) or a product, "Ag iMF
/// overflow", "dt iMFFT overflow" and so on.
template <class T>
void toIntegerRows(Vanu<T>& problem);

}  // namespace starsift

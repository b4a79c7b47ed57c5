// The check of a star by its definition, in the arithmetic of its number type, for
// stars with infinite components: over QQ an undefined operation is fatal, in
// long double it gives a nan, for which every comparison is false.
#pragma once

#include "problem/Vanu.h"
#include "stars/StarNorms.h"

namespace starsift {

/// The verdict on a point with one component per variable.
template <class T>
StarVerdict<T> judgeByDefinition(const Vanu<T>& problem, const Vector<T>& x);

}  // namespace starsift

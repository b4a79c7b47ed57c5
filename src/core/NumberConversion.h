// The one road from a number type to another. What may be lost on it is said
// where a pair of types is specialised; a type converts to itself by copying.
#pragma once

namespace starsift {

/// Specialisations give `static Target convert(const Source&)`, which throws a
/// PrecisionException where the target can't hold the value. Where Gram-Schmidt data
/// of type Target is made from numbers of type Source there is also
/// `static Target nearest(const Source&)`, which rounds and never throws, and the way
/// back for multipliers, `static Source ofInteger(const Target&)` of
/// NumberConversion<Source, Target>: the same integer, of any size.
template <class Target, class Source>
struct NumberConversion;

template <class T>
struct NumberConversion<T, T> {
  static const T& convert(const T& value) { return value; }
  static const T& nearest(const T& value) { return value; }
  static const T& ofInteger(const T& value) { return value; }
};

}  // namespace starsift

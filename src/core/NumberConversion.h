// The only conversion from one number type to another. What may be lost is stated
// where a pair of types is specialised; a type converts to itself by copying.
#pragma once

namespace starsift {

/// Specialisations define `static Target convert(const Source&)`, which throws a
/// PrecisionException if Target can't hold the value. If Gram-Schmidt data of type
/// Target are computed from numbers of type Source, they also define
/// `static Target nearest(const Source&)`, which rounds and never throws, and for the
/// multipliers of size reduction `static Source ofInteger(const Target&)` of
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

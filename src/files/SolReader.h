// The .sol file, read: one star a record.
//
//   x | target norm | target values | slack norm | seconds | parameters | version
//
// The version may be missing, and so may everything behind x. White space and
// comments may stand before the fields 1 to 5 and behind field 5.
#pragma once

#include <string>

#include "problem/Vanu.h"
#include "stars/Star.h"
#include "text/TextCursor.h"

namespace starsift {

/// Parses one record into a fresh `star`; the source stands behind white space
/// and comments. False: the record had field 1 only. True: it was complete, or it
/// was malformed; then the star is empty and the source at the next line.
/// Malformed is a time that is no 64-bit integer, or what throws a
/// GeneralException; the reports of bad numbers and brackets are fatal.
template <class T>
bool readStar(Star<T>& star, TextCursor& source);

/// Appends the stars of the file at `path`; bare records are completed by the
/// check against `problem`, whose verdict is left to the later check of all.
/// Records without components are no stars. A file that can't be read has no
/// stars. With `peek` stops at the first star and stores none.
/// Returns whether there was a star. `stars` is unchanged after an exception.
template <class T>
bool readStars(const std::string& path, const Vanu<T>& problem, Array<Star<T>>& stars, bool peek);

/// The same, each number read as a rational: PrecisionException where T can't hold
/// one, or where only exact arithmetic can complete a bare record.
template <class T>
bool readStarsExactly(const std::string& path, const Vanu<T>& problem, Array<Star<T>>& stars,
                      bool peek);

extern template bool readStar(Star<long double>&, TextCursor&);
extern template bool readStars(const std::string&, const Vanu<long double>&,
                               Array<Star<long double>>&, bool);
extern template bool readStarsExactly(const std::string&, const Vanu<long double>&,
                                      Array<Star<long double>>&, bool);

}  // namespace starsift

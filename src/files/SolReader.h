// Reading the .sol file: one record per star.
//
//   x | target norm | target values | slack norm | seconds | parameters | version
//
// The version may be missing, and so may everything after x. White space and
// comments may precede the fields 1 to 5 and follow field 5.
#pragma once

#include <optional>
#include <string>

#include "numbers/QQ.h"
#include "problem/Vanu.h"
#include "stars/PackedStars.h"
#include "stars/Star.h"
#include "text/InputText.h"
#include "text/TextCursor.h"

namespace starsift {

/// The text of the file, nothing without a regular file. A file that can't be read is fatal: it
/// would be rewritten without its stars. So is one that doesn't fit into memory (MemoryNeed.h).
std::optional<InputText> readSolText(const std::string& path);

/// Parses one record into a fresh `star`; white space and comments before it must have been
/// skipped. Returns false if the record has field 1 only, true if it is complete or malformed.
/// After a malformed record the star is empty and the source at the next line. A record is
/// malformed if its time isn't a 64-bit integer or if reading it throws a GeneralException;
/// bad numbers and brackets are fatal.
template <class T>
bool readStar(Star<T>& star, TextCursor& source);

/// Appends the stars of the file at `path`; bare records are completed by the
/// check against `problem`, whose verdict is left to the later check of all stars.
/// Records without components are not stars. Without a regular file at
/// `path` there are none; a file that can't be read is fatal. With `peek` stops at the first star
/// and stores none. Returns whether there was a star. `stars` is unchanged after an exception.
template <class T>
bool readStars(const std::string& path, const Vanu<T>& problem, Array<Star<T>>& stars, bool peek);

/// The same, each number read as a rational: PrecisionException if T can't hold
/// one, or if only exact arithmetic can complete a bare record.
template <class T>
bool readStarsExactly(const std::string& path, const Vanu<T>& problem, Array<Star<T>>& stars,
                      bool peek);

/// The stars of the file at `path`, each number a rational; as readStars() without `peek`.
PackedStars readPackedStars(const std::string& path, const Vanu<QQ>& problem);

/// The stars of a text, each number a rational; as readStars() without `peek`.
Array<Star<QQ>> readStarsOf(const std::string& text, const Vanu<QQ>& problem);

extern template bool readStar(Star<long double>&, TextCursor&);
extern template bool readStars(const std::string&, const Vanu<long double>&,
                               Array<Star<long double>>&, bool);
extern template bool readStarsExactly(const std::string&, const Vanu<long double>&,
                                      Array<Star<long double>>&, bool);

}  // namespace starsift

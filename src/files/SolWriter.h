// Writing the .sol file: one line per star, the fields joined by " | ".
#pragma once

#include <optional>
#include <string>

#include "files/ResultFile.h"
#include "stars/Star.h"
#include "system/FileIdentity.h"

namespace starsift {

/// One record without line end: x with fileDigits, target norm, target values
/// and slack norm with defaultDigits, time, parameters and, unless it is empty,
/// the version.
template <class T>
std::string starText(const Star<T>& star);

/// Throws PrecisionException "Precision lost during write" if the text of a component of some x
/// wouldn't read back as the same value.
template <class T>
void requireExactText(const Array<Star<T>>& stars);

/// The result of writing a file.
struct WrittenFile {
  Commit commit;
  /// The identity of the file at the path afterwards; if it had changed, the expected one.
  std::optional<FileIdentity> identity;
};

/// Writes the stars to `path`, or removes the file if there are none. SIGINT
/// and SIGTERM are deferred until the file is complete. Throws as requireExactText() before the
/// file is changed. A file that can't be opened is left unchanged. WriteException and LinkException
/// as ResultFile.
template <class T>
WrittenFile writeStars(const std::string& path, const Array<Star<T>>& stars);
/// The same, if the file is still the one that had the identity `expected` when it was read;
/// nothing: there was none.
template <class T>
WrittenFile writeStars(const std::string& path, const Array<Star<T>>& stars,
                       const std::optional<FileIdentity>& expected);

extern template std::string starText(const Star<long double>&);
extern template void requireExactText(const Array<Star<long double>>&);
extern template WrittenFile writeStars(const std::string&, const Array<Star<long double>>&);
extern template WrittenFile writeStars(const std::string&, const Array<Star<long double>>&,
                                       const std::optional<FileIdentity>&);

}  // namespace starsift

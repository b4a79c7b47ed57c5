// Writing the .sol file: one line per star, the fields joined by " | ".
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "files/ResultFile.h"
#include "stars/PackedStars.h"
#include "stars/Star.h"
#include "stars/StarLine.h"
#include "stars/StarNorms.h"
#include "system/FileIdentity.h"

namespace starsift {

/// One record without line end: x with fileDigits, target norm, target values
/// and slack norm with defaultDigits, time, parameters and, unless it is empty,
/// the version.
template <class T>
std::string starText(const Star<T>& star);

/// Appends the record of a packed star and a line feed, with the numbers of T. PrecisionException
/// if T can't hold one, or as requireExactText().
template <class T>
void appendLine(std::string& out, const PackedStars& stars, std::size_t i);

/// Stands between two fields of a record.
constexpr std::string_view fieldSeparator = " | ";

/// What stands between x and the time in a record, both separators included.
template <class T>
void appendResults(std::string& out, const Vector<T>& targetValues, const Norms<T>& norms);

/// What stands from the time on.
void appendOrigin(std::string& out, std::int64_t time, std::string_view params,
                  std::string_view version);

/// True if the texts of the components of x read back as the same values.
template <class T>
bool hasExactText(const Vector<T>& x);
/// Throws PrecisionException "Precision lost during write" if x of a star has no exact text.
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

/// The same for packed stars, with the numbers of T. PrecisionException also if T can't hold one.
template <class T>
WrittenFile writeStars(const std::string& path, const PackedStars& stars,
                       const std::optional<FileIdentity>& expected);

/// The same for stars that are held as lines, composed by a second thread.
WrittenFile writeLines(const std::string& path, const std::vector<StarLine>& lines,
                       const std::optional<FileIdentity>& expected);

extern template std::string starText(const Star<long double>&);
extern template void appendResults(std::string&, const Vector<long double>&,
                                   const Norms<long double>&);
extern template bool hasExactText(const Vector<long double>&);
extern template void requireExactText(const Array<Star<long double>>&);
extern template WrittenFile writeStars(const std::string&, const Array<Star<long double>>&);
extern template WrittenFile writeStars(const std::string&, const Array<Star<long double>>&,
                                       const std::optional<FileIdentity>&);

}  // namespace starsift

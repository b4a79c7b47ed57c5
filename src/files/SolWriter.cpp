#include "files/SolWriter.h"

#include <algorithm>

#include "core/VectorText.h"
#include "files/ResultFile.h"
#include "numbers/Conversion.h"
#include "numbers/QQ.h"
#include "system/Signals.h"

namespace starsift {

namespace {

constexpr std::string_view fieldSeparator = " | ";

template <class T>
void appendRecord(std::string& out, const Star<T>& star) {
  appendText(out, star.x(), fileDigits);
  out += fieldSeparator;
  NumberTraits<T>::append(out, star.targetNorm, defaultDigits);
  out += fieldSeparator;
  appendText(out, star.targetValues, defaultDigits);
  out += fieldSeparator;
  NumberTraits<T>::append(out, star.slackNorm, defaultDigits);
  out += fieldSeparator;
  out += std::to_string(star.time);
  out += fieldSeparator;
  out += star.paramsText;
  if (star.versionText.empty()) return;
  out += fieldSeparator;
  out += star.versionText;
}

/// True if the text of `value` with fileDigits reads back as `value`.
template <class T>
bool textKeeps(const T& value) {
  std::int64_t integer = 0;
  if (NumberTraits<T>::writtenAsInteger(value, fileDigits, integer)) return true;
  std::string text;
  NumberTraits<T>::append(text, value, fileDigits);
  return QQ::parse(text) == NumberConversion<QQ, T>::convert(value);
}

template <class T>
void checkText(const Vector<T>& x) {
  if constexpr (NumberTraits<T>::exact) return;
  if (!std::all_of(x.begin(), x.end(), textKeeps<T>))
    throw PrecisionException("Precision lost during write");
}

}  // namespace

template <class T>
std::string starText(const Star<T>& star) {
  std::string text;
  appendRecord(text, star);
  return text;
}

template <class T>
void requireExactText(const Array<Star<T>>& stars) {
  for (const Star<T>& star : stars) checkText(star.x());
}

template <class T>
WrittenFile writeStars(const std::string& path, const Array<Star<T>>& stars) {
  return writeStars(path, stars, fileIdentity(path));
}

template <class T>
WrittenFile writeStars(const std::string& path, const Array<Star<T>>& stars,
                       const std::optional<FileIdentity>& expected) {
  const DeferredSignals deferred;
  ResultFile file(path, expected);
  std::string line;
  for (const Star<T>& star : stars) {
    // Until commit() the old file is unchanged.
    checkText(star.x());
    line.clear();
    appendRecord(line, star);
    line += '\n';
    file.write(line);
  }
  const Commit commit = file.commit();
  return {commit, file.identity()};
}

template std::string starText(const Star<long double>&);
template std::string starText(const Star<QQ>&);
template void requireExactText(const Array<Star<long double>>&);
template void requireExactText(const Array<Star<QQ>>&);
template WrittenFile writeStars(const std::string&, const Array<Star<long double>>&);
template WrittenFile writeStars(const std::string&, const Array<Star<QQ>>&);
template WrittenFile writeStars(const std::string&, const Array<Star<long double>>&,
                                const std::optional<FileIdentity>&);
template WrittenFile writeStars(const std::string&, const Array<Star<QQ>>&,
                                const std::optional<FileIdentity>&);

}  // namespace starsift

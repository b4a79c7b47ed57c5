#include "files/SolWriter.h"

#include <algorithm>

#include "core/VectorText.h"
#include "files/ComposedText.h"
#include "files/ResultFile.h"
#include "numbers/Conversion.h"
#include "numbers/QQ.h"
#include "system/Signals.h"
#include "text/IntegerText.h"

namespace starsift {

namespace {

/// True if the text of `value` with fileDigits reads back as `value`.
template <class T>
bool textKeeps(const T& value) {
  std::int64_t integer = 0;
  if (NumberTraits<T>::writtenAsInteger(value, fileDigits, integer)) return true;
  std::string text;
  NumberTraits<T>::append(text, value, fileDigits);
  return QQ::parse(text) == NumberConversion<QQ, T>::convert(value);
}

}  // namespace

template <class T>
void appendResults(std::string& out, const Vector<T>& targetValues, const Norms<T>& norms) {
  out += fieldSeparator;
  NumberTraits<T>::append(out, norms.target, defaultDigits);
  out += fieldSeparator;
  appendText(out, targetValues, defaultDigits);
  out += fieldSeparator;
  NumberTraits<T>::append(out, norms.slack, defaultDigits);
  out += fieldSeparator;
}

void appendOrigin(std::string& out, std::int64_t time, std::string_view params,
                  std::string_view version) {
  appendInteger(out, time);
  out += fieldSeparator;
  out += params;
  if (version.empty()) return;
  out += fieldSeparator;
  out += version;
}

template <class T>
bool hasExactText(const Vector<T>& x) {
  return NumberTraits<T>::exact || std::all_of(x.begin(), x.end(), textKeeps<T>);
}

namespace {

template <class T>
void requireExactText(const Star<T>& star) {
  if (!hasExactText(star.x())) throw PrecisionException("Precision lost during write");
}

template <class T>
void appendRecord(std::string& out, const Star<T>& star) {
  appendText(out, star.x(), fileDigits);
  appendResults<T>(out, star.targetValues, {star.targetNorm, star.slackNorm});
  appendOrigin(out, star.time, star.paramsText, star.versionText);
}

}  // namespace

namespace {

/// The text of a packed point of small integers, the same in both number types.
void appendPoint(std::string& out, const PackedStar& star) {
  out += "[ ";
  for (Index i = 1; i <= star.dimension; ++i) {
    appendInteger(out, star.component(i));
    out += ' ';
  }
  out += ']';
}

}  // namespace

template <class T>
void appendLine(std::string& out, const PackedStars& stars, std::size_t i) {
  const PackedStar packed = stars[i];
  if (packed.isPlain) {
    appendPoint(out, packed);
    Vector<T> values;
    values.convertFrom(packed.targetValues(), false);
    appendResults<T>(out, values, {T(packed.targetNorm.integer), T(packed.slackNorm.integer)});
    appendOrigin(out, packed.time, stars.text(packed.params), stars.text(packed.version));
  } else {
    Star<T> star;
    star.convertFrom(stars.star(i), false);
    requireExactText(star);
    appendRecord(out, star);
  }
  out += '\n';
}

template <class T>
std::string starText(const Star<T>& star) {
  std::string text;
  appendRecord(text, star);
  return text;
}

template <class T>
void requireExactText(const Array<Star<T>>& stars) {
  for (const Star<T>& star : stars) requireExactText(star);
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
    requireExactText(star);
    line.clear();
    appendRecord(line, star);
    line += '\n';
    file.write(line);
  }
  const Commit commit = file.commit();
  return {commit, file.identity()};
}

template <class T>
WrittenFile writeStars(const std::string& path, const PackedStars& stars,
                       const std::optional<FileIdentity>& expected) {
  const DeferredSignals deferred;
  ResultFile file(path, expected);
  std::string line;
  for (std::size_t i = 0; i < stars.size(); ++i) {
    line.clear();
    // Until commit() the old file is unchanged.
    appendLine<T>(line, stars, i);
    file.write(line);
  }
  const Commit commit = file.commit();
  return {commit, file.identity()};
}

WrittenFile writeLines(const std::string& path, const std::vector<StarLine>& lines,
                       const std::optional<FileIdentity>& expected) {
  const DeferredSignals deferred;
  ResultFile file(path, expected);
  const auto append = [](std::string& out, const StarLine& line) {
    out += line.x();
    out += line.rest();
    out += '\n';
  };
  writeElements(lines, prefetch, append, [&file](std::string_view piece) { file.write(piece); });
  const Commit commit = file.commit();
  return {commit, file.identity()};
}

template std::string starText(const Star<long double>&);
template std::string starText(const Star<QQ>&);
template void appendResults(std::string&, const Vector<long double>&, const Norms<long double>&);
template void appendResults(std::string&, const Vector<QQ>&, const Norms<QQ>&);
template bool hasExactText(const Vector<long double>&);
template bool hasExactText(const Vector<QQ>&);
template void requireExactText(const Array<Star<long double>>&);
template void requireExactText(const Array<Star<QQ>>&);
template WrittenFile writeStars(const std::string&, const Array<Star<long double>>&);
template WrittenFile writeStars(const std::string&, const Array<Star<QQ>>&);
template WrittenFile writeStars(const std::string&, const Array<Star<long double>>&,
                                const std::optional<FileIdentity>&);
template WrittenFile writeStars(const std::string&, const Array<Star<QQ>>&,
                                const std::optional<FileIdentity>&);
template void appendLine<long double>(std::string&, const PackedStars&, std::size_t);
template void appendLine<QQ>(std::string&, const PackedStars&, std::size_t);
template WrittenFile writeStars<long double>(const std::string&, const PackedStars&,
                                             const std::optional<FileIdentity>&);
template WrittenFile writeStars<QQ>(const std::string&, const PackedStars&,
                                    const std::optional<FileIdentity>&);

}  // namespace starsift

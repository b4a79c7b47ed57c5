#include "core/HostTools.h"

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <fstream>
#include <limits>
#include <regex>

#include "core/NumberTraits.h"
#include "text/Serializable.h"
#include "text/TextStreams.h"

namespace starsift {

namespace {

/// Applies a mapping of <cctype>, which is defined on unsigned char only.
std::string mapped(std::string_view text, int (*mapping)(int)) {
  std::string result(text);
  std::transform(result.begin(), result.end(), result.begin(), [mapping](char c) {
    return static_cast<char>(mapping(static_cast<unsigned char>(c)));
  });
  return result;
}

/// The number behind a label at the head of a line; 0 if there is none.
Index figureOf(const std::string& path, std::string_view label) {
  std::ifstream file(path);
  std::string line;
  while (std::getline(file, line)) {
    if (!line.starts_with(label)) continue;
    Index figure = 0;
    TextReader(line.substr(label.size())) >> figure;
    return figure;
  }
  return 0;
}

}  // namespace

Array<std::string> split(std::string_view text, char separator) {
  // Counted first: an array that grows piece by piece is copied again and again.
  auto count = std::count(text.begin(), text.end(), separator);
  if (!text.empty() && text.back() != separator) ++count;
  Array<std::string> pieces(count);
  for (std::string& piece : pieces) {
    const auto end = std::min(text.find(separator), text.size());
    piece = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return pieces;
}

std::string toLower(std::string_view text) {
  return mapped(text, std::tolower);
}

std::string toUpper(std::string_view text) {
  return mapped(text, std::toupper);
}

std::string regexReplace(const std::string& text, const std::string& pattern,
                         const std::string& replacement) {
  return std::regex_replace(text, std::regex(pattern), replacement);
}

std::string limitedText(const Serializable& object, Index limit) {
  TextWriter stream;
  stream.precision(fileDigits);
  stream << object;
  std::string text = stream.str();
  if (limit == 0 || static_cast<Index>(text.size()) <= limit) return text;
  const auto half = static_cast<std::size_t>(limit / 2);
  return text.substr(0, half) + " ... " + text.substr(text.size() - half);
}

Index residentGibibytes(const std::string& statm) {
  std::ifstream file(statm);
  long double totalPages = 0;
  long double residentPages = 0;
  if (!(file >> totalPages >> residentPages)) return 0;
  const auto bytes = residentPages * static_cast<long double>(sysconf(_SC_PAGESIZE));
  return std::lround(std::ldexp(bytes, -30));
}

Index availableKibibytes(const std::string& meminfo) {
  return figureOf(meminfo, "MemAvailable:");
}

Index freeSwapKibibytes(const std::string& meminfo) {
  return figureOf(meminfo, "SwapFree:");
}

Index addressSpace(const std::string& statm) {
  std::ifstream file(statm);
  Index pages = 0;
  return file >> pages ? pages * sysconf(_SC_PAGESIZE) : 0;
}

double availableBytes() {
  double available = std::numeric_limits<double>::infinity();
  const Index kibibytes = availableKibibytes();
  if (kibibytes > 0) available = 1024 * static_cast<double>(kibibytes + freeSwapKibibytes());
  rlimit limit{};
  if (getrlimit(RLIMIT_AS, &limit) != 0 || limit.rlim_cur == RLIM_INFINITY) return available;
  const auto granted = static_cast<double>(limit.rlim_cur);
  return std::min(available, std::max(granted - static_cast<double>(addressSpace()), 0.0));
}

double peakResidentBytes() {
  rusage usage{};
  return getrusage(RUSAGE_SELF, &usage) == 0 ? 1024 * static_cast<double>(usage.ru_maxrss) : 0;
}

}  // namespace starsift

#include "models/jobs/OptionText.h"

#include <string>

#include "models/text/ModelError.h"
#include "models/text/ModelNumber.h"
#include "models/text/Words.h"

namespace starsift {

namespace {

constexpr std::int64_t mostDecimals = 18;

[[noreturn]] void refuse(std::string_view name, std::string_view value) {
  throw ModelError(0, inQuotes(value) + " is no value of --" + std::string(name));
}

QQ numberOf(std::string_view name, std::string_view value) {
  const std::optional<QQ> number = parseNumber(value);
  if (!number || !number->sign()) refuse(name, value);
  return *number;
}

/// A number, or infinity for `word` or a word for infinity.
QQ limitOf(std::string_view name, std::string_view value, std::string_view word) {
  bool isPositive = true;
  if (value == word || (isInfinityWord(value, isPositive) && isPositive)) return QQ::infinity();
  return numberOf(name, value);
}

int decimalsOf(std::string_view name, std::string_view value) {
  std::int64_t decimals = 0;
  if (!numberOf(name, value).toInt64(decimals) || decimals > mostDecimals) refuse(name, value);
  return static_cast<int>(decimals);
}

/// A number of bytes, with K, M or G behind it for thousands, millions and so on.
std::uint64_t sizeOf(std::string_view name, std::string_view value) {
  std::string_view digits = value;
  std::int64_t factor = 1;
  constexpr std::string_view units = "KMG";
  const std::size_t unit = value.empty() ? std::string::npos : units.find(value.back());
  if (unit != std::string::npos) {
    digits.remove_suffix(1);
    for (std::size_t i = 0; i <= unit; ++i) factor *= 1000;
  }
  std::int64_t size = 0;
  if (!(numberOf(name, digits) * QQ(static_cast<long>(factor))).toInt64(size)) refuse(name, value);
  return static_cast<std::uint64_t>(size);
}

}  // namespace

bool setNumberOption(ImportOptions& options, std::string_view name, std::string_view value) {
  if (name == "format") {
    options.format = formatOfName(value);
    if (!options.format) refuse(name, value);
  } else if (name == "infinity") {
    options.read.infinity = limitOf(name, value, "none");
  } else if (name == "integer-upper") {
    options.read.integerUpper = limitOf(name, value, "inf");
  } else if (name == "decimals") {
    options.opt.decimals = decimalsOf(name, value);
  } else if (name == "integrality") {
    options.rounding.integrality = numberOf(name, value);
  } else if (name == "snap") {
    options.rounding.snap = numberOf(name, value);
  } else if (name == "max-size") {
    options.maxSize = sizeOf(name, value);
  } else {
    return false;
  }
  return true;
}

}  // namespace starsift

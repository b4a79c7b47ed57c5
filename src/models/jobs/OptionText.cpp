#include "models/jobs/OptionText.h"

#include <algorithm>
#include <array>
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

struct NumberOption {
  std::string_view name;
  void (*set)(ImportOptions& options, std::string_view name, std::string_view value);
};

constexpr std::array<NumberOption, 7> numberOptions{{
    {"format",
     [](ImportOptions& options, std::string_view name, std::string_view value) {
       options.format = formatOfName(value);
       if (!options.format) refuse(name, value);
     }},
    {"infinity",
     [](ImportOptions& options, std::string_view name, std::string_view value) {
       options.read.infinity = limitOf(name, value, "none");
     }},
    {"integer-upper",
     [](ImportOptions& options, std::string_view name, std::string_view value) {
       options.read.integerUpper = limitOf(name, value, "inf");
     }},
    {"decimals", [](ImportOptions& options, std::string_view name,
                    std::string_view value) { options.opt.decimals = decimalsOf(name, value); }},
    {"integrality",
     [](ImportOptions& options, std::string_view name, std::string_view value) {
       options.rounding.integrality = numberOf(name, value);
     }},
    {"snap", [](ImportOptions& options, std::string_view name,
                std::string_view value) { options.rounding.snap = numberOf(name, value); }},
    {"max-size", [](ImportOptions& options, std::string_view name,
                    std::string_view value) { options.maxSize = sizeOf(name, value); }},
}};

const NumberOption* numberOption(std::string_view name) {
  const auto* const found = std::ranges::find(numberOptions, name, &NumberOption::name);
  return found == numberOptions.end() ? nullptr : found;
}

}  // namespace

void setNumberOption(ImportOptions& options, std::string_view name, std::string_view value) {
  numberOption(name)->set(options, name, value);
}

}  // namespace starsift

#include "models/solutions/DefaultNames.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

#include "models/text/ModelError.h"
#include "models/text/Words.h"

namespace starsift {

namespace {

/// What CBC 2.10 takes as a name in an .lp file, but for its keywords.
bool isNameForCbc(std::string_view name) {
  constexpr std::size_t mostBytes = 100;
  constexpr std::string_view marks = "!\"#$%&'(),.;?@_`{}~";
  return name.size() <= mostBytes && std::all_of(name.begin(), name.end(), [&](char c) {
           return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
                  marks.find(c) != std::string_view::npos;
         });
}

bool hasDefaultName(const WrittenValue& value) {
  return value.index && value.column == "x" + std::to_string(*value.index);
}

}  // namespace

std::optional<WrittenPoint> pointByNumber(const NameTable& names, bool isLp,
                                          const WrittenPoint& point) {
  if (!std::all_of(point.values.begin(), point.values.end(), hasDefaultName)) return std::nullopt;
  const auto elsewhere = std::find_if(
      point.values.begin(), point.values.end(),
      [&](const WrittenValue& value) { return names.find(value.column) != value.index; });
  if (elsewhere == point.values.end()) return std::nullopt;
  bool isEachForCbc = true;
  for (std::size_t j = 0; j < names.size(); ++j)
    isEachForCbc = isEachForCbc && isNameForCbc(names[j]);
  if (!isLp || isEachForCbc)
    throw ModelError(elsewhere->line,
                     inQuotes(elsewhere->column) +
                         " may be a name that CBC made up for the column of that index: the file "
                         "that it solved is needed as the model");
  WrittenPoint numbered = point;
  for (WrittenValue& value : numbered.values)
    value.column = std::to_string(std::uint64_t{*value.index} + 1);
  return numbered;
}

}  // namespace starsift

#include "models/write/FittingNames.h"

#include <algorithm>
#include <string>

namespace starsift {

namespace {

std::string fitted(std::string_view name, const std::function<bool(std::string_view)>& fits) {
  std::string text(name);
  for (char& c : text)
    if (!fits("x" + std::string(1, c))) c = '_';
  while (!fits(text)) text.insert(0, 1, '_');
  return text;
}

}  // namespace

NameTable fittingNames(const NameTable& names, const std::function<bool(std::string_view)>& fits,
                       std::size_t& changed) {
  NameTable result;
  for (std::size_t i = 0; i < names.size(); ++i) {
    const bool isFitting = fits(names[i]);
    std::string name = isFitting ? std::string(names[i]) : fitted(names[i], fits);
    const auto isTaken = [&](const std::string& candidate) {
      return result.find(candidate).has_value() ||
             (!isFitting && names.find(candidate).has_value());
    };
    while (isTaken(name)) name += '_';
    result.add(name);
    if (!isFitting) ++changed;
  }
  return result;
}

bool isMpsName(std::string_view name) {
  // A dollar sign might open a comment, and quotation marks a marker.
  return !name.empty() && name.front() != '$' && name.front() != '\'' &&
         std::all_of(name.begin(), name.end(), [](char c) {
           const auto byte = static_cast<unsigned char>(c);
           return byte > 0x20 && byte != 0x7F;
         });
}

}  // namespace starsift

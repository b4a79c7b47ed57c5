// The order of the dotted version numbers of solvers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace starsift {

/// The numbers of a dotted version. Digits are accumulated without a check, so
/// other characters give whatever the arithmetic gives; overflow wraps. Missing
/// numbers count as 0, so trailing zeros are dropped.
std::vector<std::uint64_t> versionNumbers(std::string_view text);

/// For each text the position of its numbers among all that occur: higher is a higher version.
std::vector<std::size_t> versionRanks(std::span<const std::string_view> texts);

}  // namespace starsift

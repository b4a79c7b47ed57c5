#include "app/TreeStatus.h"

#include <array>
#include <cmath>
#include <string_view>

#include "text/TextStreams.h"

namespace starsift {

namespace {

struct Unit {
  double seconds;
  std::string_view one;
  std::string_view many;
};

constexpr std::array<Unit, 5> units = {{
    {31'556'952, "year", "years"},
    {86'400, "day", "days"},
    {3'600, "hour", "hours"},
    {60, "minute", "minutes"},
    {1, "second", "seconds"},
}};

constexpr double mostYears = 1000;

/// At most one digit behind the point, and none from 10 on.
std::string shortNumber(double value) {
  TextWriter text;
  text << (value < 9.95 ? std::round(value * 10) / 10 : std::round(value));
  return text.str();
}

std::string withUnit(double seconds, const Unit& unit) {
  const std::string number = shortNumber(seconds / unit.seconds);
  return number + ' ' + std::string(number == "1" ? unit.one : unit.many);
}

}  // namespace

std::string roughDuration(double seconds) {
  if (seconds > mostYears * units.front().seconds) return "more than 1000 years";
  for (const Unit& unit : units)
    if (seconds >= unit.seconds) return "about " + withUnit(seconds, unit);
  return "about " + withUnit(seconds, units.back());
}

std::string treeStatus(const TreeProgress& progress) {
  std::string text = shortNumber(100 * progress.share) + " % of the tree";
  if (progress.seconds <= 0) return text;
  text += ", " + shortNumber(static_cast<double>(progress.nodes) / progress.seconds / 1e6) +
          " million nodes a second";
  if (progress.share > 0)
    text += ", " + roughDuration(progress.seconds * (1 / progress.share - 1)) + " left";
  return text;
}

}  // namespace starsift

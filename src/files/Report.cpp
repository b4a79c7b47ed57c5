#include "files/Report.h"

#include <algorithm>
#include <ostream>
#include <sstream>
#include <utility>

#include "core/VectorText.h"
#include "numbers/QQ.h"

namespace starsift {

namespace {

constexpr std::uint64_t minute = 60;
constexpr std::uint64_t hour = 60 * minute;
constexpr std::uint64_t day = 24 * hour;

/// Characters that are written to a stream at once.
constexpr std::size_t pieceSize = std::size_t{1} << 16U;

/// Solutions whose time the status shows.
constexpr Index firstSolutions = 3;

std::string twoDigits(std::uint64_t value) {
  std::string text = std::to_string(value);
  if (value < 10) text.insert(text.begin(), '0');
  return text;
}

template <class T>
void appendNumber(std::string& out, const T& value) {
  NumberTraits<T>::append(out, value, defaultDigits);
}

template <class T>
void appendGoal(std::string& out, const T& goal) {
  if (goal == NumberTraits<T>::infinity()) {
    out += "↑";
  } else if (NumberTraits<T>::isInfinite(goal)) {
    out += "↓";
  } else {
    out += "→";
    appendNumber(out, goal);
  }
}

template <class T>
void appendReport(std::string& out, const Star<T>& star, const Vector<T>& goals) {
  out += "x = ";
  appendText(out, star.x(), defaultDigits);
  out += "\n\n";
  if (star.slackNorm == T(-1)) return;
  out += "Target values: [ ";
  for (Index k = 1; k <= goals.dimension(); ++k) {
    appendNumber(out, star.targetValues.element(k));
    appendGoal(out, goals[k]);
    out += ' ';
  }
  out += "]\nTarget Norm: ";
  appendNumber(out, star.targetNorm);
  out += "\nSlack Norm: ";
  appendNumber(out, star.slackNorm);
  out += '\n';
  if (star.time == unknownTime) return;
  out += "Found after: ";
  out += timeText(static_cast<std::uint64_t>(star.time));
  out += '\n';
}

}  // namespace

std::string timeText(std::uint64_t seconds) {
  const std::string hours = std::to_string(seconds / hour);
  const std::string inDay = twoDigits(seconds % day / hour);
  const std::string minutes = twoDigits(seconds % hour / minute);
  const std::string secs = twoDigits(seconds % minute);
  if (seconds >= day)
    return std::to_string(seconds / day) + ':' + inDay + ':' + minutes + ':' + secs +
           " day(s):hour(s):min(s):sec(s)";
  if (seconds >= hour) return hours + ':' + minutes + ':' + secs + " hour(s):min(s):sec(s)";
  if (seconds >= minute) return std::to_string(seconds / minute) + ':' + secs + " min(s):sec(s)";
  return std::to_string(seconds) + " sec(s)";
}

template <class T>
std::string starReport(const Star<T>& star, const Vector<T>& goals) {
  std::string text;
  appendReport(text, star, goals);
  return text;
}

template <class T>
void writeSolutions(std::ostream& stream, const Array<Star<T>>& stars, const Vector<T>& goals) {
  std::string text = "\n";
  for (Index i = 1; i <= stars.dimension(); ++i) {
    if (i > 1) text += "\n---\n\n";
    appendReport(text, stars[i], goals);
    if (text.size() < pieceSize) continue;
    stream << text;
    text.clear();
  }
  stream << text;
}

template <class T>
std::string solutionsText(const Array<Star<T>>& stars, const Vector<T>& goals) {
  std::ostringstream text;
  writeSolutions(text, stars, goals);
  return std::move(text).str();
}

template <class T>
std::string statusText(const SearchStatus<T>& status) {
  std::string text;
  if (status.hasTarget) {
    text += "\nT(bestTarget) = ";
    appendNumber(text, status.bestTargetNorm);
    text += ", S(bestTarget) = ";
    appendNumber(text, status.bestSlackNorm);
    if (!(status.bestTargetNorm == NumberTraits<T>::infinity()))
      text += " -- { " + timeText(static_cast<std::uint64_t>(status.bestTime)) + " }";
    text += '\n';
  }
  const Array<std::int64_t>& times = status.solutionTimes;
  if (times.dimension() == 0) return text;
  if (!status.benchmark)
    text +=
        "\nSolutions found: " + std::to_string(times.dimension() + status.furtherSolutions) + '\n';
  text += "\n{ The first solution/s was/were found after: ";
  for (Index i = 1; i <= std::min(times.dimension(), firstSolutions); ++i)
    if (i == 1 || times[i] != times[i - 1])
      text += timeText(static_cast<std::uint64_t>(times[i])) + ' ';
  return text + "}\n";
}

template std::string starReport(const Star<long double>&, const Vector<long double>&);
template std::string starReport(const Star<QQ>&, const Vector<QQ>&);
template std::string solutionsText(const Array<Star<long double>>&, const Vector<long double>&);
template std::string solutionsText(const Array<Star<QQ>>&, const Vector<QQ>&);
template void writeSolutions(std::ostream&, const Array<Star<long double>>&,
                             const Vector<long double>&);
template void writeSolutions(std::ostream&, const Array<Star<QQ>>&, const Vector<QQ>&);
template std::string statusText(const SearchStatus<long double>&);
template std::string statusText(const SearchStatus<QQ>&);

}  // namespace starsift

#include "files/Report.h"

#include <algorithm>
#include <ostream>
#include <string_view>
#include <utility>

#include "core/VectorText.h"
#include "files/ComposedText.h"
#include "files/SolWriter.h"
#include "numbers/Conversion.h"
#include "numbers/QQ.h"
#include "text/TextStreams.h"

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

/// The texts of one star in a report.
struct StarTexts {
  /// One per target, a blank behind each.
  std::string_view targetValues;
  std::string_view targetNorm;
  std::string_view slackNorm;
  std::int64_t time;
};

/// The goals of the targets as arrows, a blank behind each.
template <class T>
std::vector<std::string> goalTexts(const Vector<T>& goals) {
  std::vector<std::string> texts;
  for (const T& goal : goals) {
    appendGoal(texts.emplace_back(), goal);
    texts.back() += ' ';
  }
  return texts;
}

void appendTargets(std::string& out, const StarTexts& star, const std::vector<std::string>& goals) {
  out += "Target values: [ ";
  std::string_view values = star.targetValues;
  for (const std::string& goal : goals) {
    const std::size_t blank = values.find(' ');
    out += values.substr(0, blank);
    out += goal;
    values.remove_prefix(blank + 1);
  }
  out += "]\nTarget Norm: ";
  out += star.targetNorm;
  out += "\nSlack Norm: ";
  out += star.slackNorm;
  out += '\n';
  if (star.time == unknownTime) return;
  out += "Found after: ";
  out += timeText(static_cast<std::uint64_t>(star.time));
  out += '\n';
}

template <class T>
void appendReport(std::string& out, const Star<T>& star, const std::vector<std::string>& goals) {
  out += "x = ";
  appendText(out, star.x(), defaultDigits);
  out += "\n\n";
  if (star.slackNorm == T(-1)) return;
  std::string values;
  for (std::size_t k = 1; k <= goals.size(); ++k) {
    appendNumber(values, star.targetValues.element(static_cast<Index>(k)));
    values += ' ';
  }
  std::string targetNorm;
  std::string slackNorm;
  appendNumber(targetNorm, star.targetNorm);
  appendNumber(slackNorm, star.slackNorm);
  appendTargets(out, {values, targetNorm, slackNorm, star.time}, goals);
}

/// x of a file as long double shows it in a report: each number that may be too long is rounded.
void appendRounded(std::string& out, std::string_view x) {
  for (std::size_t end = x.find(' '); end != std::string_view::npos; end = x.find(' ')) {
    const std::string_view token = x.substr(0, end);
    if (token.size() <= static_cast<std::size_t>(defaultDigits))
      out += token;
    else
      appendNumber(out, NumberConversion<long double, QQ>::convert(QQ::parse(token)));
    out += ' ';
    x.remove_prefix(end + 1);
  }
  out += x;
}

/// Takes the text before `mark` off `rest`, and the mark.
std::string_view takeField(std::string_view& rest, std::string_view mark) {
  const std::size_t size = rest.find(mark);
  const std::string_view field = rest.substr(0, size);
  rest.remove_prefix(size + mark.size());
  return field;
}

void appendReport(std::string& out, const StarLine& line, const std::vector<std::string>& goals) {
  out += "x = ";
  if (line.hasLongNumbers)
    appendRounded(out, line.x());
  else
    out += line.x();
  out += "\n\n";
  if (line.slackNorm == QQ::minusOne()) return;
  std::string_view rest = line.rest();
  takeField(rest, fieldSeparator);
  const std::string_view targetNorm = takeField(rest, " | [ ");
  const std::string_view values = takeField(rest, "] | ");
  const std::string_view slackNorm = takeField(rest, fieldSeparator);
  appendTargets(out, {values, targetNorm, slackNorm, static_cast<std::int64_t>(line.time)}, goals);
}

/// The reports of several stars, "---" between two of them.
class Reports {
 public:
  explicit Reports(std::vector<std::string> goals) : goals_(std::move(goals)) {}

  template <class Element>
  void appendNext(std::string& out, const Element& star) {
    if (!std::exchange(isFirst_, false)) out += "\n---\n\n";
    appendReport(out, star, goals_);
  }

 private:
  std::vector<std::string> goals_;
  bool isFirst_ = true;
};

/// Writes reports to a stream in pieces.
class ReportWriter {
 public:
  ReportWriter(std::ostream& stream, std::vector<std::string> goals)
      : stream_(stream), reports_(std::move(goals)) {}
  ReportWriter(const ReportWriter&) = delete;
  ReportWriter& operator=(const ReportWriter&) = delete;
  ~ReportWriter() { stream_ << text_; }

  template <class Element>
  void add(const Element& star) {
    reports_.appendNext(text_, star);
    if (text_.size() < pieceSize) return;
    stream_ << text_;
    text_.clear();
  }

 private:
  std::ostream& stream_;
  Reports reports_;
  std::string text_ = "\n";
};

void writeReports(std::ostream& stream, const std::vector<StarLine>& lines,
                  std::vector<std::string> goals) {
  Reports reports(std::move(goals));
  const auto append = [&reports](std::string& out, const StarLine& line) {
    if (line.isFirstOfPoint) reports.appendNext(out, line);
  };
  stream << '\n';
  writeElements(lines, prefetch, append, [&stream](std::string_view piece) { stream << piece; });
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
  appendReport(text, star, goalTexts(goals));
  return text;
}

template <class T>
void writeSolutions(std::ostream& stream, const Array<Star<T>>& stars, const Vector<T>& goals) {
  ReportWriter writer(stream, goalTexts(goals));
  for (const Star<T>& star : stars) writer.add(star);
}

template <class T>
void writeSolutions(std::ostream& stream, const PackedStars& stars, const Vector<T>& goals) {
  ReportWriter writer(stream, goalTexts(goals));
  for (std::size_t i = 0; i < stars.size(); ++i) {
    Star<T> star;
    star.convertFrom(stars.star(i), false);
    writer.add(star);
  }
}

template <class T>
void writeSolutions(std::ostream& stream, const std::vector<StarLine>& lines,
                    const Vector<T>& goals) {
  writeReports(stream, lines, goalTexts(goals));
}

template <class T>
std::string solutionsText(const Array<Star<T>>& stars, const Vector<T>& goals) {
  TextWriter text;
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
template void writeSolutions(std::ostream&, const PackedStars&, const Vector<long double>&);
template void writeSolutions(std::ostream&, const PackedStars&, const Vector<QQ>&);
template void writeSolutions(std::ostream&, const std::vector<StarLine>&,
                             const Vector<long double>&);
template void writeSolutions(std::ostream&, const std::vector<StarLine>&, const Vector<QQ>&);
template std::string statusText(const SearchStatus<long double>&);
template std::string statusText(const SearchStatus<QQ>&);

}  // namespace starsift

// The formats of CBC, of CPLEX and of solvers of pseudo-Boolean problems.
#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "models/solutions/Formats.h"
#include "models/solutions/Lines.h"
#include "models/text/ModelError.h"
#include "models/text/ModelNumber.h"
#include "text/IntegerText.h"

namespace starsift::solverformats {

namespace {

constexpr std::string_view objectiveMark = " - objective value";

/// "[**] INDEX NAME VALUE REDUCED-COST", the name perhaps with blanks inside.
WrittenValue cbcValue(std::string_view text, std::size_t line) {
  text = trimmed(text);
  if (text.starts_with("**")) text.remove_prefix(2);
  const auto index = parseInteger<std::uint32_t>(takeWord(text));
  text = trimmed(text);
  const auto takeLast = [&text]() {
    const std::size_t blank = text.find_last_of(" \t");
    if (blank == std::string_view::npos) return std::string_view();
    const std::string_view last = text.substr(blank + 1);
    text = trimmed(text.substr(0, blank));
    return last;
  };
  const std::string_view cost = takeLast();
  const std::string_view value = takeLast();
  if (value.empty() || cost.empty()) throw ModelError(line, "the line is cut");
  return {std::string(text), std::string(value), line, index};
}

}  // namespace

bool isCbc(std::string_view text) {
  const std::string_view first = takeLine(text);
  return first.find(objectiveMark) != std::string_view::npos;
}

SolverFile readCbc(std::string_view text) {
  SolverFile file{{"CBC", 8, true}, {}, {}, {}};
  Lines lines(text);
  const std::string_view first = lines.take();
  const std::string status(trimmed(first.substr(0, first.find(objectiveMark))));
  const bool isRelaxation = status.find("no integer solution") != std::string::npos;
  if (isRelaxation || (!status.starts_with("Optimal") && !status.starts_with("Stopped"))) {
    // The values of the last relaxation stand there all the same.
    file.noSolution = status;
    if (!lines.atEnd())
      file.remarks.push_back({2, "the values below " + inQuotes(status) + " are no solution"});
    return file;
  }
  file.points.push_back({status, {}, 1});
  while (!lines.atEnd()) {
    const std::string_view line = lines.take();
    if (!trimmed(line).empty()) file.points.back().values.push_back(cbcValue(line, lines.number()));
  }
  if (!text.ends_with('\n')) throw ModelError(lines.number(), "the file is cut");
  return file;
}

namespace {

struct Entity {
  std::string_view text;
  char character;
};
constexpr std::array<Entity, 5> entities{
    {{"&lt;", '<'}, {"&gt;", '>'}, {"&amp;", '&'}, {"&quot;", '"'}, {"&apos;", '\''}}};

std::string unescaped(std::string_view text) {
  std::string result;
  while (!text.empty()) {
    std::size_t length = 1;
    char character = text.front();
    for (const Entity& entity : entities) {
      if (!text.starts_with(entity.text)) continue;
      length = entity.text.size();
      character = entity.character;
    }
    result += character;
    text.remove_prefix(length);
  }
  return result;
}

/// The value of an attribute of a tag, in either kind of quotation marks.
std::optional<std::string> attributeOf(std::string_view tag, std::string_view name) {
  for (std::size_t at = tag.find(name); at != std::string_view::npos; at = tag.find(name, at + 1)) {
    const bool isWhole =
        at > 0 && std::string_view(" \t\r\n").find(tag[at - 1]) != std::string_view::npos;
    std::string_view rest = trimmed(tag.substr(at + name.size()));
    if (!isWhole || !rest.starts_with('=')) continue;
    rest = trimmed(rest.substr(1));
    if (rest.empty() || (rest.front() != '"' && rest.front() != '\'')) return std::nullopt;
    const std::size_t end = rest.find(rest.front(), 1);
    if (end == std::string_view::npos) return std::nullopt;
    return unescaped(rest.substr(1, end - 1));
  }
  return std::nullopt;
}

/// The tags of an XML text, in which quotation marks hide ">".
class Tags {
 public:
  explicit Tags(std::string_view text) : rest_(text) {}

  /// The content of the next tag between "<" and ">"; nothing at the end.
  std::optional<std::string_view> take() {
    const std::size_t begin = skip(rest_.find('<'));
    if (begin == std::string_view::npos) return std::nullopt;
    char quote = '\0';
    for (std::size_t i = 1; i < rest_.size(); ++i) {
      const char c = rest_[i];
      if (quote != '\0') {
        if (c == quote) quote = '\0';
      } else if (c == '"' || c == '\'') {
        quote = c;
      } else if (c == '>') {
        const std::string_view tag = rest_.substr(1, i - 1);
        skip(i + 1);
        return tag;
      }
    }
    throw ModelError(line_, "the file is cut");
  }

  std::size_t line() const { return line_; }

 private:
  std::size_t skip(std::size_t length) {
    if (length == std::string_view::npos) return length;
    for (std::size_t i = 0; i < length; ++i)
      if (rest_[i] == '\n') ++line_;
    rest_.remove_prefix(length);
    return length;
  }

  std::string_view rest_;
  std::size_t line_ = 1;
};

bool isTag(std::string_view tag, std::string_view name) {
  return tag.starts_with(name) && tag.substr(name.size()).find_first_not_of(" \t\r\n/") != 0;
}

WrittenValue cplexValue(std::string_view tag, std::size_t line) {
  const std::optional<std::string> name = attributeOf(tag, "name");
  const std::optional<std::string> value = attributeOf(tag, "value");
  if (!name || !value) throw ModelError(line, "the variable has no name or no value");
  return {*name, *value, line};
}

}  // namespace

bool isCplex(std::string_view text) {
  text = trimmed(text.substr(0, 4096));
  return text.starts_with("<?xml") || text.starts_with("<CPLEXSolution");
}

SolverFile readCplex(std::string_view text) {
  SolverFile file{{"CPLEX", 15, true}, {}, {}, {}};
  Tags tags(text);
  std::string status;
  bool isComplete = false;
  bool isWithin = false;
  while (const auto tag = tags.take()) {
    if (isTag(*tag, "header")) {
      status = attributeOf(*tag, "solutionStatusString").value_or("");
    } else if (isTag(*tag, "variables")) {
      isWithin = true;
      file.points.push_back({status, {}, tags.line()});
    } else if (*tag == "/variables") {
      isWithin = false;
    } else if (isTag(*tag, "variable") && isWithin) {
      file.points.back().values.push_back(cplexValue(*tag, tags.line()));
    } else if (*tag == "/CPLEXSolution") {
      isComplete = true;
    }
  }
  if (!isComplete) throw ModelError(tags.line(), "the file is cut: it has no </CPLEXSolution>");
  if (file.points.empty()) file.noSolution = status.empty() ? "no variables" : status;
  return file;
}

namespace {

/// What the solvers say behind "s".
constexpr std::array<std::string_view, 5> opbStatuses{"SATISFIABLE", "OPTIMUM FOUND",
                                                      "UNSATISFIABLE", "UNKNOWN", "UNSUPPORTED"};

}  // namespace

bool isOpbOutput(std::string_view text) {
  Lines lines(text);
  while (!lines.atEnd()) {
    std::string_view line = lines.take();
    const std::string_view mark = takeWord(line);
    if (mark == "s")
      return std::find(opbStatuses.begin(), opbStatuses.end(), trimmed(line)) != opbStatuses.end();
    if (!mark.empty() && mark != "c" && mark != "o" && mark != "v") return false;
  }
  return false;
}

SolverFile readOpbOutput(std::string_view text) {
  SolverFile file{{"OPB solver", 0, false, false, true}, {}, {}, {}};
  Lines lines(text);
  WrittenPoint point;
  while (!lines.atEnd()) {
    std::string_view line = lines.take();
    const std::string_view mark = takeWord(line);
    if (mark == "s") {
      point.status = std::string(trimmed(line));
    } else if (mark == "v") {
      for (std::string_view word = takeWord(line); !word.empty(); word = takeWord(line)) {
        const bool isNegated = word.starts_with('-');
        point.values.push_back(
            {std::string(word.substr(isNegated ? 1 : 0)), isNegated ? "0" : "1", lines.number()});
      }
    }
  }
  if (point.status != "SATISFIABLE" && point.status != "OPTIMUM FOUND")
    file.noSolution = point.status;
  else
    file.points.push_back(std::move(point));
  return file;
}

}  // namespace starsift::solverformats

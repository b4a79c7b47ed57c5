// Formats whose values stand in lines "NAME VALUE": HiGHS, SCIP, esolver, and plain lists.
#include <algorithm>
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

/// The first line that isn't empty.
std::string_view firstLine(std::string_view text) {
  Lines lines(text);
  while (!lines.atEnd()) {
    const std::string_view line = trimmed(lines.take());
    if (!line.empty()) return line;
  }
  return {};
}

/// "NAME VALUE": the name may have blanks inside.
WrittenValue namedValue(std::string_view text, std::size_t line) {
  text = trimmed(text);
  const std::size_t blank = text.find_last_of(" \t");
  if (blank == std::string_view::npos)
    throw ModelError(line, "the line has no name and value: " + inQuotes(text));
  return {std::string(trimmed(text.substr(0, blank))), std::string(text.substr(blank + 1)), line};
}

/// The lines of HiGHS behind "# Columns COUNT". A negative count: columns with the value 0 are
/// left out.
void readHighsColumns(Lines& lines, std::string_view count, SolverFile& file) {
  file.format.leavesZerosOut = count.starts_with('-');
  const std::string_view digits = count.substr(file.format.leavesZerosOut ? 1 : 0);
  const auto columns = parseInteger<std::uint64_t>(digits);
  if (!columns) throw ModelError(lines.number(), inQuotes(count) + " is no number of columns");
  for (std::uint64_t i = 0; i < *columns; ++i) {
    if (lines.atEnd()) throw ModelError(lines.number(), "the file is cut");
    const std::string_view line = lines.take();
    if (trimmed(line).empty() || line.starts_with('#'))
      throw ModelError(lines.number(), "the file has fewer columns than it says");
    file.points.back().values.push_back(namedValue(line, lines.number()));
  }
}

bool isPrimalHeader(std::string_view line) {
  return line == "# Primal solution values";
}

bool isColumnsHeader(std::string_view line) {
  return line.starts_with("# Columns ");
}

}  // namespace

bool isHighs(std::string_view text) {
  const std::string_view first = firstLine(text);
  return first == "Model status" || isPrimalHeader(first);
}

SolverFile readHighs(std::string_view text) {
  SolverFile file{{"HiGHS", 15}, {}, {}, {}};
  Lines lines(text);
  std::string status;
  while (!lines.atEnd()) {
    const std::string_view line = trimmed(lines.take());
    if (line == "Model status") {
      status = std::string(trimmed(lines.take()));
    } else if (isPrimalHeader(line)) {
      if (lines.peek() == "None") {
        file.noSolution = status.empty() ? "None" : status;
        return file;
      }
    } else if (isColumnsHeader(line)) {
      file.points.push_back({status, {}, lines.number()});
      readHighsColumns(lines, line.substr(std::string_view("# Columns ").size()), file);
      // The dual values, which may follow, have columns too.
      return file;
    }
  }
  throw ModelError(lines.number(), "the file is cut");
}

bool isScip(std::string_view text) {
  const std::string_view first = firstLine(text);
  return first.starts_with("solution status:") || first == "no solution available" ||
         first.starts_with("objective value:");
}

SolverFile readScip(std::string_view text) {
  SolverFile file{{"SCIP", 15, true}, {}, {}, {}};
  Lines lines(text);
  std::string status;
  bool hasObjective = false;
  while (!lines.atEnd()) {
    std::string_view line = trimmed(lines.take());
    constexpr std::string_view statusMark = "solution status:";
    if (line.starts_with(statusMark)) {
      status = std::string(trimmed(line.substr(statusMark.size())));
    } else if (line == "no solution available") {
      file.noSolution = status.empty() ? std::string(line) : status;
      file.points.clear();
      return file;
    } else if (line.starts_with("objective value:")) {
      hasObjective = true;
      file.points.push_back({status, {}, lines.number()});
    } else if (!line.empty()) {
      if (!hasObjective) throw ModelError(lines.number(), "the objective value is missing");
      const std::size_t objective = line.rfind("(obj:");
      if (objective == std::string_view::npos)
        throw ModelError(lines.number(), "the line has no name, value and objective");
      file.points.back().values.push_back(namedValue(line.substr(0, objective), lines.number()));
    }
  }
  if (file.points.empty()) throw ModelError(lines.number(), "the file is cut");
  return file;
}

bool isEsolver(std::string_view text) {
  std::string_view line = firstLine(text);
  if (takeWord(line) != "status") return false;
  line = trimmed(line);
  if (line.starts_with('=')) line = trimmed(line.substr(1));
  return !line.empty() && !parseNumber(line);
}

SolverFile readEsolver(std::string_view text) {
  SolverFile file{{"esolver", 0, true}, {}, {}, {}};
  Lines lines(text);
  std::string status;
  bool isWithin = false;
  while (!lines.atEnd()) {
    const std::string_view line = trimmed(lines.take());
    const std::size_t equals = line.find('=');
    if (line.starts_with("status") && !isWithin) {
      const std::string_view word = line.substr(std::string_view("status").size());
      status =
          std::string(trimmed(equals == std::string_view::npos ? word : line.substr(equals + 1)));
      if (status != "OPTIMAL") {
        file.noSolution = status;
        return file;
      }
    } else if (line == "VARS:") {
      isWithin = true;
      file.points.push_back({status, {}, lines.number()});
    } else if (line.ends_with(':')) {
      // The other sections are about rows and reduced costs.
      if (isWithin) return file;
    } else if (isWithin && !line.empty()) {
      if (equals == std::string_view::npos)
        throw ModelError(lines.number(), "the line has no name and value: " + inQuotes(line));
      file.points.back().values.push_back({std::string(trimmed(line.substr(0, equals))),
                                           std::string(trimmed(line.substr(equals + 1))),
                                           lines.number()});
    }
  }
  throw ModelError(lines.number(), "the file is cut");
}

namespace {

/// The words of a comment behind "#", or nothing.
std::optional<std::string_view> commentOf(std::string_view line) {
  if (!line.starts_with('#')) return std::nullopt;
  return trimmed(line.substr(1));
}

}  // namespace

bool isList(std::string_view text) {
  Lines lines(text);
  while (!lines.atEnd()) {
    std::string_view line = trimmed(lines.take());
    if (line.empty() || commentOf(line)) continue;
    if (line.starts_with('=')) return true;
    const std::size_t blank = line.find_last_of(" \t");
    return blank != std::string_view::npos && parseNumber(line.substr(blank + 1)).has_value();
  }
  return commentOf(firstLine(text)).has_value();
}

SolverFile readList(std::string_view text) {
  SolverFile file{{"list", 15, true}, {}, {}, {}};
  Lines lines(text);
  while (!lines.atEnd()) {
    const std::string_view line = trimmed(lines.take());
    if (line.empty()) continue;
    if (const auto comment = commentOf(line)) {
      const bool isObjective = comment->starts_with("Objective value");
      // A pool has one such line before each point.
      if (isObjective && (file.points.empty() || !file.points.back().values.empty()))
        file.points.push_back({"", {}, lines.number()});
      if (isObjective) file.format.name = "Gurobi";
      continue;
    }
    if (line == "=infeas=" || line == "=unbd=" || line == "=unkn=") {
      file.noSolution = std::string(line);
      file.points.clear();
      return file;
    }
    if (file.points.empty()) file.points.push_back({"", {}, lines.number()});
    const WrittenValue value = namedValue(line, lines.number());
    if (value.column == "=obj=") {
      file.format.name = "MIPLIB";
      if (!file.points.back().values.empty()) file.points.push_back({"", {}, lines.number()});
    } else {
      file.points.back().values.push_back(value);
    }
  }
  return file;
}

}  // namespace starsift::solverformats

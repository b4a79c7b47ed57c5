// The two formats of GLPK.
#include <string>

#include "models/solutions/Formats.h"
#include "models/solutions/Lines.h"
#include "models/text/ModelError.h"
#include "models/text/ModelNumber.h"
#include "text/IntegerText.h"

namespace starsift::solverformats {

namespace {

/// Where a name begins in a line of the table, and where the next column begins.
constexpr std::size_t nameBegin = 7;
constexpr std::size_t nameEnd = 19;

/// Reads the line of a column, and the next one if its name is too long for the table.
WrittenValue tableValue(std::string_view line, Lines& lines) {
  const std::size_t number = lines.number();
  const std::string_view name = trimmed(line.substr(std::min(nameBegin, line.size())));
  std::string_view rest;
  std::string column(name);
  if (line.size() > nameEnd && line[nameEnd] == ' ') {
    column = std::string(trimmed(line.substr(nameBegin, nameEnd - nameBegin)));
    rest = line.substr(nameEnd);
  } else {
    if (lines.atEnd()) throw ModelError(number, "the file is cut");
    rest = lines.take();
  }
  std::string_view word = takeWord(rest);
  // The status of the column, or the mark of an integer one.
  if (!parseNumber(word)) word = takeWord(rest);
  return {column, std::string(word), number};
}

bool isWrittenByGlpk(std::string_view text) {
  Lines lines(text);
  while (!lines.atEnd()) {
    std::string_view line = lines.take();
    const std::string_view first = takeWord(line);
    if (first == "c") continue;
    const std::string_view second = takeWord(line);
    return first == "s" && (second == "mip" || second == "bas" || second == "ipt");
  }
  return false;
}

}  // namespace

bool isGlpkTable(std::string_view text) {
  return text.starts_with("Problem:");
}

SolverFile readGlpkTable(std::string_view text) {
  SolverFile file{{"GLPK", 6}, {}, {}, {}};
  Lines lines(text);
  std::string status;
  bool isWithin = false;
  while (!lines.atEnd()) {
    const std::string_view line = lines.take();
    constexpr std::string_view statusMark = "Status:";
    if (line.starts_with(statusMark)) {
      status = std::string(trimmed(line.substr(statusMark.size())));
    } else if (line.find("Column name") != std::string_view::npos && !isWithin) {
      isWithin = true;
      file.points.push_back({status, {}, lines.number()});
      if (!lines.atEnd()) lines.take();
      while (!lines.atEnd() && !lines.peek().empty())
        file.points.back().values.push_back(tableValue(lines.take(), lines));
    } else if (trimmed(line) == "End of output") {
      if (status.find("OPTIMAL") == std::string::npos && !status.starts_with("FEASIBLE")) {
        file.noSolution = status;
        file.points.clear();
      }
      return file;
    }
  }
  throw ModelError(lines.number(), "the file is cut: it has no line \"End of output\"");
}

bool isGlpkRaw(std::string_view text) {
  return (text.starts_with("c ") || text.starts_with("s ") || text.starts_with("c\n")) &&
         isWrittenByGlpk(text);
}

namespace {

std::size_t countOf(std::string_view word, std::size_t line) {
  const auto count = parseInteger<std::size_t>(word);
  if (!count) throw ModelError(line, inQuotes(word) + " is no number of rows or columns");
  return *count;
}

/// "s mip ROWS COLUMNS STATUS OBJECTIVE", or "s bas ROWS COLUMNS PRIMAL DUAL OBJECTIVE". Returns
/// true if there is a point.
bool hasRawPoint(std::string_view line, std::size_t number, SolverFile& file) {
  takeWord(line);
  const std::string kind(takeWord(line));
  const ModelSize size{countOf(takeWord(line), number), countOf(takeWord(line), number)};
  const std::string_view status = takeWord(line);
  const bool isFound = status == "o" || status == "f";
  const std::string words = status == "o" || kind == "bas" ? "optimal" : "feasible";
  if (!isFound) {
    file.noSolution = "status " + std::string(status);
    return false;
  }
  file.points.push_back({words, {}, number, size});
  return true;
}

}  // namespace

SolverFile readGlpkRaw(std::string_view text) {
  SolverFile file{{"GLPK", 15, false, true}, {}, {}, {}};
  Lines lines(text);
  bool isBasis = false;
  bool isFound = false;
  while (!lines.atEnd()) {
    std::string_view line = lines.take();
    const std::string_view whole = trimmed(line);
    const std::string_view mark = takeWord(line);
    if (mark == "s") {
      if (isFound || !file.noSolution.empty())
        throw ModelError(lines.number(), "the status comes a second time");
      isFound = hasRawPoint(whole, lines.number(), file);
      isBasis = whole.starts_with("s bas");
    } else if (mark == "j" && isFound) {
      const std::string column(takeWord(line));
      if (isBasis) takeWord(line);
      file.points.back().values.push_back({column, std::string(takeWord(line)), lines.number()});
    } else if (whole == "e o f") {
      return file;
    }
  }
  throw ModelError(lines.number(), "the file is cut: it has no line \"e o f\"");
}

}  // namespace starsift::solverformats

// The whole job on a problem and stars that the bytes spell, judged star by star
// over GMP's rationals.
#include <algorithm>
#include <map>
#include <sstream>

#include "Scenario.h"
#include "Target.h"
#include "WorkFolder.h"
#include "support/fixtures/StarRun.h"

namespace starsift::fuzz {

namespace {

using oracle::Record;

/// What makes two records one star, and the earliest time it was found.
using Stars = std::map<std::pair<oracle::Point, std::string>, unsigned long>;

void add(Stars& stars, const Record& record) {
  const auto time = static_cast<unsigned long>(record.time);
  const auto [star, isNew] = stars.try_emplace({record.x, record.params}, time);
  if (!isNew) star->second = std::min(star->second, time);
}

std::vector<Record> recordsOf(const std::string& text) {
  std::vector<Record> records;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    const std::optional<Record> record = oracle::parseRecord(line);
    require(record.has_value(), "each line is a record");
    records.push_back(*record);
  }
  return records;
}

/// `shown` is what a file holds for `value`.
bool isShownFor(const mpq_class& shown, const mpq_class& value) {
  const std::optional<std::string> rounded = oracle::sixDigits(value);
  return shown == value || (rounded && shown == oracle::parseNumber(*rounded));
}

/// Digits of the texts that long double is sorted by; integers that have more are "1.4e+17" there.
constexpr std::ptrdiff_t sortedDigits = 17;

bool hasLongInteger(const std::string& text) {
  const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
  for (auto at = text.begin(); (at = std::find_if(at, text.end(), isDigit)) != text.end();) {
    const auto end = std::find_if_not(at, text.end(), isDigit);
    if (end - at > sortedDigits) return true;
    at = end;
  }
  return false;
}

/// The stars may have been sorted by the texts of long double, "-0.5" or "1.44e+17", before one
/// of them made the file exact, "-1/2": texts say nothing of the order then.
bool textsOrder(const std::vector<Record>& records) {
  return std::none_of(records.begin(), records.end(), [](const Record& record) {
    return record.xText.find('/') != std::string::npos || hasLongInteger(record.xText);
  });
}

void checkOrder(std::vector<Record> records) {
  if (!textsOrder(records)) {
    for (Record& record : records) {
      record.xText.clear();
      record.params.clear();
    }
  }
  for (std::size_t i = 1; i < records.size(); ++i) {
    const bool equal = records[i - 1].xText.empty() && !oracle::inOrder(records[i], records[i - 1]);
    require(equal || oracle::inOrder(records[i - 1], records[i]), "stars are in order");
  }
}

void checkValues(const oracle::Problem& problem, std::vector<Record>& records) {
  for (Record& record : records) {
    const auto verdict = oracle::judge(problem, record.x);
    require(verdict.has_value(), "a star that stays is right");
    require(isShownFor(record.targetNorm, verdict->targetNorm), "target norm");
    require(isShownFor(record.slackNorm, verdict->slackNorm), "slack norm");
    require(record.targetValues.size() == verdict->targetValues.size(), "a value per target");
    for (std::size_t i = 0; i < record.targetValues.size(); ++i)
      require(isShownFor(record.targetValues[i], verdict->targetValues[i]), "target value");
    record.targetNorm = verdict->targetNorm;
    record.slackNorm = verdict->slackNorm;
  }
  checkOrder(records);
}

}  // namespace

void runTarget(std::string_view bytes) {
  const Scenario scenario = scenarioOf(bytes);
  const std::filesystem::path file = workFile("p.sol");
  writeFile(workFile("p.opt"), oracle::problemText(scenario.problem));
  writeFile(file, scenario.starsText());
  Stars right;
  for (const Record& record : scenario.records)
    if (oracle::judge(scenario.problem, record.x)) add(right, record);

  require(outcomeOf([&] {
            test::siftedReport(file.string());
            return std::string();
          }).empty(),
          "a well-formed problem and its stars are never refused");
  require(std::filesystem::exists(file) == !right.empty(), "only right stars leave a file");
  if (right.empty()) return;
  const std::string text = readFile(file);
  std::vector<Record> records = recordsOf(text);
  Stars found;
  for (const Record& record : records) add(found, record);
  require(found.size() == records.size(), "no star stands there twice");
  require(found == right, "the right stars stay, and no others");
  checkValues(scenario.problem, records);
  test::siftedReport(file.string());
  require(readFile(file) == text, "a second run changes nothing");
}

}  // namespace starsift::fuzz

// The run of the command against exact arithmetic of another make.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <map>
#include <set>
#include <sstream>

#include "support/fixtures/ScratchDir.h"
#include "support/fixtures/StarRun.h"
#include "support/generators/ProblemGenerators.h"

namespace starsift {
namespace {

using oracle::Point;
using oracle::Record;
using test::arbitraryScenario;
using test::Scenario;
using test::ScratchDir;

/// What makes two records one star.
using Identity = std::pair<Point, std::string>;

/// A scenario written to files, and the records of its solution file.
class Files {
 public:
  explicit Files(const Scenario& scenario) {
    scratch_.write("p.opt", oracle::problemText(scenario.problem));
    scratch_.write("p.sol", scenario.starsText());
  }

  std::string solFile() const { return scratch_.file("p.sol"); }
  std::string text() const { return scratch_.read("p.sol"); }
  bool isThere() const { return scratch_.names().size() == 2; }

  std::vector<Record> records() const {
    std::vector<Record> result;
    if (!isThere()) return result;
    std::istringstream lines(text());
    for (std::string line; std::getline(lines, line);) {
      const std::optional<Record> record = oracle::parseRecord(line);
      RC_ASSERT(record.has_value());
      result.push_back(*record);
    }
    return result;
  }

 private:
  ScratchDir scratch_;
};

/// The stars that must be left, each with its earliest time.
std::map<Identity, unsigned long> rightStars(const Scenario& scenario) {
  std::map<Identity, unsigned long> stars;
  for (const Record& record : scenario.records) {
    if (!oracle::judge(scenario.problem, record.x)) continue;
    const auto time = static_cast<unsigned long>(record.time);
    const auto [star, isNew] = stars.try_emplace({record.x, record.params}, time);
    if (!isNew) star->second = std::min(star->second, time);
  }
  return stars;
}

std::map<Identity, unsigned long> identities(const std::vector<Record>& records) {
  std::map<Identity, unsigned long> stars;
  for (const Record& record : records) {
    const auto time = static_cast<unsigned long>(record.time);
    RC_ASSERT(stars.try_emplace({record.x, record.params}, time).second);
  }
  return stars;
}

/// The record with values and norms of the oracle, which the file may show with
/// six digits.
Record withExactNorms(const Scenario& scenario, Record record) {
  const auto verdict = oracle::judge(scenario.problem, record.x);
  RC_ASSERT(verdict.has_value());
  record.targetNorm = verdict->targetNorm;
  record.targetValues = verdict->targetValues;
  record.slackNorm = verdict->slackNorm;
  return record;
}

/// `shown` is what a file holds for `value`.
bool isShownFor(const mpq_class& shown, const mpq_class& value) {
  const std::optional<std::string> rounded = oracle::sixDigits(value);
  return shown == value || (rounded && shown == oracle::parseNumber(*rounded));
}

RC_GTEST_PROP(StarRun, KeepsTheRightStarsAndNoOthers, ()) {
  const Scenario scenario = *arbitraryScenario();
  const Files files(scenario);
  test::siftedReport(files.solFile());
  const auto right = rightStars(scenario);
  RC_ASSERT(identities(files.records()) == right);
  RC_ASSERT(files.isThere() == !right.empty());
}

RC_GTEST_PROP(StarRun, WritesTheValuesOfExactArithmetic, ()) {
  const Scenario scenario = *arbitraryScenario();
  const Files files(scenario);
  test::siftedReport(files.solFile());
  for (const Record& record : files.records()) {
    const Record exact = withExactNorms(scenario, record);
    RC_ASSERT(isShownFor(record.targetNorm, exact.targetNorm));
    RC_ASSERT(isShownFor(record.slackNorm, exact.slackNorm));
    RC_ASSERT(record.targetValues.size() == exact.targetValues.size());
    for (std::size_t i = 0; i < record.targetValues.size(); ++i)
      RC_ASSERT(isShownFor(record.targetValues[i], exact.targetValues[i]));
  }
}

RC_GTEST_PROP(StarRun, OrdersStarsAsExactArithmeticDoes, ()) {
  const Scenario scenario = *arbitraryScenario();
  const Files files(scenario);
  test::siftedReport(files.solFile());
  const std::vector<Record> records = files.records();
  for (std::size_t i = 1; i < records.size(); ++i)
    RC_ASSERT(oracle::inOrder(withExactNorms(scenario, records[i - 1]),
                              withExactNorms(scenario, records[i])));
}

RC_GTEST_PROP(StarRun, ChangesNothingTheSecondTime, ()) {
  const Scenario scenario = *arbitraryScenario();
  const Files files(scenario);
  test::siftedReport(files.solFile());
  RC_PRE(files.isThere());
  const std::string text = files.text();
  const std::string again = test::siftedReport(files.solFile());
  RC_ASSERT(files.text() == text);
  RC_ASSERT(test::siftedReport(files.solFile()) == again);
}

RC_GTEST_PROP(StarRun, KeepsTheSameStarsOverRationals, ()) {
  const Scenario scenario = *arbitraryScenario();
  const Files files(scenario);
  const Files exactFiles(scenario);
  test::siftedReport(files.solFile());
  test::siftStarsExactly(exactFiles.solFile());
  RC_ASSERT(identities(files.records()) == identities(exactFiles.records()));
}

RC_GTEST_PROP(StarRun, ShowsEachPointOnce, ()) {
  const Scenario scenario = *arbitraryScenario();
  const Files files(scenario);
  const std::string console = test::siftedReport(files.solFile());
  std::set<Point> points;
  for (const Record& record : files.records()) points.insert(record.x);
  std::size_t shown = 0;
  for (auto hit = console.find("x = "); hit != std::string::npos;
       hit = console.find("x = ", hit + 1))
    ++shown;
  RC_ASSERT(shown == points.size());
}

RC_GTEST_PROP(StarRun, ReadsBareRecordsLikeCompleteOnes, ()) {
  const Scenario scenario = *arbitraryScenario();
  const Files files(scenario);
  std::string bare;
  for (const Record& record : scenario.records) bare += oracle::pointText(record.x) + "\n";
  const ScratchDir scratch;
  scratch.write("p.opt", oracle::problemText(scenario.problem));
  test::siftedReport(scratch.write("p.sol", bare));
  std::set<Point> expected;
  for (const Record& record : scenario.records)
    if (oracle::judge(scenario.problem, record.x)) expected.insert(record.x);
  std::set<Point> found;
  std::istringstream lines(expected.empty() ? "" : scratch.read("p.sol"));
  for (std::string line; std::getline(lines, line);) found.insert(oracle::parseRecord(line)->x);
  RC_ASSERT(found == expected);
}

}  // namespace
}  // namespace starsift

// The check of a solution file as lines against the check of its stars one by one.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "ThrowingFailure.h"
#include "support/fixtures/ScratchDir.h"
#include "support/fixtures/StarRun.h"
#include "system/Exceptions.h"

namespace starsift {
namespace {

using test::FatalReport;
using test::ScratchDir;

constexpr std::size_t variables = 3;

/// Problems of three variables: machine integers, no targets, decimals, fractions, long numbers.
const std::array<std::string, 6> problems{
    "[ inf -inf 5 ] [ [ 1 2 0 ] [ 0 0 1 ] [ 1 1 1 ] ] [ [ 1 1 1 ] ] [ 0 ] [ 2 ]"
    " [ [ 1 -1 0 ] ] [ -5 ] [ 5 ] [ 1 1 1 ] [ -9 -9 -9 ] [ 9 9 9 ]",
    "[ ] [ ] [ ] [ ] [ ] [ [ 1 1 1 ] ] [ -inf ] [ 9 ] [ 1 1 1 ] [ -inf -inf -9 ] [ inf inf 99 ]",
    "[ -inf 0.5 ] [ [ 0.1 0.25 1 ] [ 1 0 0 ] ] [ [ 1 0.5 0 ] ] [ 1 ] [ 0.5 ]"
    " [ ] [ ] [ ] [ 0.5 0.5 1 ] [ -2 -2 -2 ] [ 7 7 7 ]",
    "[ -inf 1/3 ] [ [ 1/3 2 1 ] [ 1 0 5/7 ] ] [ [ 1 1/3 0 ] ] [ 1/3 ] [ 1/3 ]"
    " [ [ 1 1 1 ] ] [ -99 ] [ inf ] [ 1 1 1 ] [ -9 -9 -inf ] [ 9 9 inf ]",
    "[ -inf ] [ [ 1000003 999999937 1 ] ] [ ] [ ] [ ] [ [ 1 1 1 ] ] [ -inf ] [ inf ]"
    " [ 1 1 1 ] [ -inf -inf -inf ] [ inf inf inf ]",
    "[ inf 7 ] [ [ 1 123456789012345678901234567890 1 ] [ 1 1 2/3 ] ] [ ] [ ] [ ]"
    " [ [ 1 1 1/3 ] ] [ -inf ] [ inf ] [ 1 1 1 ] [ -inf -inf -5/3 ] [ inf inf inf ]"};

rc::Gen<std::string> oneOf(std::vector<std::string> texts) {
  return rc::gen::elementOf(std::move(texts));
}

rc::Gen<std::string> plainNumber() {
  return rc::gen::map(rc::gen::inRange(-9, 10), [](int value) { return std::to_string(value); });
}

rc::Gen<std::string> oddNumber() {
  return oneOf({"07", "+3", "-0", "1e1", "0.5", "1/2", "1:1/2", "2/4", "4/2", "0:1/3", "-1/3", "inf",
                "-inf", "--2", "- 2", "999999", "1000000", "-1000000", "9999999999999999",
                "99999999999999999", "999999999999999999", "9999999999999999999",
                "12345678901234567890123456789012345678", "1234567890123456789012345678901234567:1/3",
                "123456789012345678901234567890123456789012", "1.25e-3", "0x1f", "1,5", "/* c */ 4",
                "5/1152921504606846976", "1/999999999999999999", "1/7"});
}

rc::Gen<std::string> number() {
  return rc::gen::weightedOneOf<std::string>({{12, plainNumber()}, {1, oddNumber()}});
}

std::string joined(const std::vector<std::string>& numbers) {
  std::string text = "[ ";
  for (const std::string& part : numbers) text += part + ' ';
  return text + ']';
}

rc::Gen<std::string> point() {
  return rc::gen::map(rc::gen::container<std::vector<std::string>>(variables, number()), joined);
}

rc::Gen<std::string> oddPoint() {
  return oneOf({"[1 2 3]", "[ 1  2 3 ]", "[ 1 2 ]", "[ 1 2 3 4 ]", "[ ]", "[\n1 2 3 ]",
                "[ 1 2 3 // c\n]", " [ 1 2 3 ]", "1 2 3", "[ 1 2 3", "[ 1 x 3 ]"});
}

rc::Gen<std::string> fields() {
  const auto results = oneOf({" | 0 | [ ] | 0 | ", " | 5 | [ 1 2 ] | 3 | ", " | 1e6 | [ 1/3 ] | 0 | ",
                              "|1|[1]|2|", " | 1.5 | [ 1 2 3 ] | -1 | ", " | -1 | [ ] | -1 | ",
                              " |\n1 | [ 2 ] | 1 | ", " | x | [ ] | 0 | ", " | 1 | 2 | 3 | "});
  const auto time = oneOf({"0", "7", "-1", "-5", "+3", "007", "12345678901234567890", "x", ""});
  const auto texts = oneOf({" | ", " | p", " | p | 2.4", " | p | 2.4.0", " |  | 2.3.10", " | q | 2.4",
                            " | p |2.4 ", " | p | 2.4 | x", " | p | ", " | // c", " | /* c */ p",
                            " | p\r", " p", "", " | p x  y | v", " | /* c"});
  return rc::gen::map(rc::gen::tuple(results, time, texts), [](const auto& parts) {
    return std::get<0>(parts) + std::get<1>(parts) + std::get<2>(parts);
  });
}

rc::Gen<std::string> record() {
  const auto x = rc::gen::weightedOneOf<std::string>({{15, point()}, {1, oddPoint()}});
  const auto rest = rc::gen::weightedOneOf<std::string>(
      {{8, fields()}, {4, rc::gen::just(std::string(" | 0 | [ ] | 0 | 5 | p | 2.4"))},
       {2, rc::gen::just(std::string())}});
  return rc::gen::map(rc::gen::pair(x, rest),
                      [](const auto& parts) { return parts.first + parts.second; });
}

rc::Gen<std::string> solText() {
  const auto end = rc::gen::weightedOneOf<std::string>(
      {{20, rc::gen::just(std::string("\n"))}, {1, oneOf({"", "\r\n", "\n\n", "\n// c\n", "\n/* [ 1 2 3 ]\n[ 1 1 1 ] */\n"})}});
  const auto line = rc::gen::map(rc::gen::pair(record(), end),
                                 [](const auto& parts) { return parts.first + parts.second; });
  return rc::gen::map(rc::gen::container<std::vector<std::string>>(line), [](const auto& lines) {
    std::string text;
    for (const std::string& part : lines) text += part;
    return text;
  });
}

/// What a run leaves and says.
struct Outcome {
  std::string report;
  std::string file;

  friend bool operator==(const Outcome&, const Outcome&) = default;
  friend std::ostream& operator<<(std::ostream& stream, const Outcome& outcome) {
    return stream << "report:" << outcome.report << "\nfile:\n" << outcome.file;
  }
};

template <class Sift>
Outcome outcomeOf(const Sift& sift, const std::string& problem, const std::string& text) {
  const ScratchDir scratch;
  scratch.write("p.opt", problem);
  const std::string file = scratch.write("p.sol", text);
  Outcome outcome;
  try {
    outcome.report = sift(file);
  } catch (const FatalReport& report) {
    outcome.report = std::string("fatal: ") + report.what();
  } catch (const GeneralException& exception) {
    outcome.report = "exception: " + exception.message();
  }
  outcome.file = scratch.names().size() == 2 ? scratch.read("p.sol") : "none";
  return outcome;
}

RC_GTEST_PROP(SiftWays, AgreeOnAnyText, ()) {
  const std::string problem = *rc::gen::elementOf(problems);
  const std::string text = *solText();
  RC_ASSERT(outcomeOf(test::siftedReport, problem, text) ==
            outcomeOf(test::siftedReportByStars, problem, text));
}

RC_GTEST_PROP(SiftWays, AgreeOnTidyLinesAmongOthers, ()) {
  const std::string problem = *rc::gen::elementOf(problems);
  const Outcome tidy = outcomeOf(test::siftedReportByStars, problem, *solText());
  const std::string text = tidy.file == "none" ? "" : tidy.file;
  const std::string mixed = *oneOf({"", *solText()}) + text + *oneOf({"", text, *solText()});
  RC_ASSERT(outcomeOf(test::siftedReport, problem, mixed) ==
            outcomeOf(test::siftedReportByStars, problem, mixed));
}

}  // namespace
}  // namespace starsift

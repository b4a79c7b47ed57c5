// The check of a solution file as lines against the check of its stars one by one.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <array>
#include <stdexcept>
#include <string>
#include <vector>

#include "support/fixtures/ScratchDir.h"
#include "support/fixtures/StarRun.h"
#include "system/Exceptions.h"
#include "system/HostedCall.h"
#include "text/Text.h"

namespace starsift {
namespace {

using test::ScratchDir;

constexpr std::size_t variables = 3;
/// Its products with long rows reach 2^127.
constexpr const char* largePoint =
    "[ 9200000000000000000 9200000000000000000 9200000000000000000 ]";

/// Problems of three variables: machine integers, no targets, decimals, fractions, long numbers.
const std::array<std::string, 7> problems{
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
    " [ [ 1 1 1/3 ] ] [ -inf ] [ inf ] [ 1 1 1 ] [ -inf -inf -5/3 ] [ inf inf inf ]",
    "[ -inf 1/3 ] [ [ 9000000000000000000 9000000000000000000 9000000000000000000 ] [ 1 0 0 ] ]"
    " [ ] [ ] [ ] [ [ 1 1 1 ] ] [ -inf ] [ inf ] [ 1 1 1 ] [ -inf -inf -inf ] [ inf inf inf ]"};

rc::Gen<std::string> oneOf(std::vector<std::string> texts) {
  return rc::gen::elementOf(std::move(texts));
}

rc::Gen<std::string> plainNumber() {
  return rc::gen::map(rc::gen::inRange(-9, 10), [](int value) { return std::to_string(value); });
}

/// Numbers that every reader takes, in canonical form or not.
rc::Gen<std::string> longNumber() {
  return oneOf({"+3",
                "-0",
                "0.5",
                "1/2",
                "1:1/2",
                "2/4",
                "4/2",
                "-1/3",
                "2:4/6",
                "999999",
                "1000000",
                "-999999",
                "-1000000",
                "9999999999999999",
                "-99999999999999999",
                "123456789012345678",
                "999999999999999999",
                "9999999999999999999",
                "9200000000000000000",
                "12345678901234567890123456789012345678",
                "-1234567890123456789012345678901234567:1/3",
                "123456789012345678901234567890123456789012",
                "5/1152921504606846976",
                "1/999999999999999999",
                "1/7",
                "-5/3",
                "-2:1/3",
                "1.25"});
}

rc::Gen<std::string> oddNumber() {
  return oneOf({"07", "1e1", "0:1/3", "inf", "-inf", "--2", "- 2", "1.25e-3", "0x1f", "1,5",
                "/* c */ 4", "x", "3/2", "1:3/2", "-0:1/3"});
}

/// How far from canonical form the records of a file are.
enum class Form { plain, readable, any };

rc::Gen<std::string> number(Form form) {
  const std::size_t odd = form == Form::any ? 1 : 0;
  const std::size_t longOnes = form == Form::plain ? 0 : 4;
  return rc::gen::weightedOneOf<std::string>(
      {{12, plainNumber()}, {longOnes, longNumber()}, {odd, oddNumber()}});
}

std::string joined(const std::vector<std::string>& numbers) {
  std::string text = "[ ";
  for (const std::string& part : numbers) text += part + ' ';
  return text + ']';
}

rc::Gen<std::string> oddPoint() {
  return oneOf({"[1 2 3]", "[ 1  2 3 ]", "[ 1 2 ]", "[ 1 2 3 4 ]", "[ ]", "[\n1 2 3 ]",
                "[ 1 2 3 // c\n]", " [ 1 2 3 ]", "1 2 3", "[ 1 2 3", "[ 1 x 3 ]"});
}

rc::Gen<std::string> point(Form form) {
  const auto regular =
      rc::gen::map(rc::gen::container<std::vector<std::string>>(variables, number(form)), joined);
  const std::size_t odd = form == Form::any ? 1 : 0;
  return rc::gen::weightedOneOf<std::string>({{9, regular}, {odd, oddPoint()}});
}

rc::Gen<std::string> readableFields() {
  const auto results = oneOf({" | 0 | [ ] | 0 | ", " | 5 | [ 1 2 ] | 3 | ",
                              " | 1e6 | [ 1/3 ] | 0 | ", " | -1 | [ ] | -1 | "});
  const auto time = oneOf({"0", "7", "-1", "12"});
  const auto texts = oneOf({" | ", " | p", " | p | 2.4", " | p | 2.4.0", " |  | 2.3.10",
                            " | q | 2.4", " | p | 2.10", " | pq | 2.4", " | p |2.4 ",
                            " | p | 2.4 | x", " | p | ", " | /* c */ p", " | // c", " | p\r"});
  return rc::gen::map(rc::gen::tuple(results, time, texts), [](const auto& parts) {
    return std::get<0>(parts) + std::get<1>(parts) + std::get<2>(parts);
  });
}

rc::Gen<std::string> oddFields() {
  const auto results = oneOf({"|1|[1]|2|", " | 1.5 | [ 1 2 3 ] | -1 | ", " |\n1 | [ 2 ] | 1 | ",
                              " | x | [ ] | 0 | ", " | 1 | 2 | 3 | ", " | 0 | [ ] | 0 | "});
  const auto time = oneOf({"7", "-5", "+3", "007", "12345678901234567890", "x", ""});
  const auto texts = oneOf({" p", "", " | p x  y | v", " | /* c", " | p"});
  return rc::gen::map(rc::gen::tuple(results, time, texts), [](const auto& parts) {
    return std::get<0>(parts) + std::get<1>(parts) + std::get<2>(parts);
  });
}

rc::Gen<std::string> record(Form form, std::vector<std::string> points) {
  const std::size_t odd = form == Form::any ? 1 : 0;
  // Points that come again and again make duplicates.
  const auto rest = rc::gen::weightedOneOf<std::string>(
      {{8, readableFields()}, {odd, oddFields()}, {1, rc::gen::just(std::string())}});
  const auto end = rc::gen::weightedOneOf<std::string>(
      {{20, rc::gen::just(std::string("\n"))},
       {odd, oneOf({"", "\r\n", "\n\n", "\n// c\n", "\n/* [ 1 2 3 ]\n[ 1 1 1 ] */\n"})}});
  const auto x = rc::gen::oneOf(point(form), rc::gen::elementOf(std::move(points)));
  return rc::gen::map(rc::gen::tuple(x, rest, end), [](const auto& parts) {
    return std::get<0>(parts) + std::get<1>(parts) + std::get<2>(parts);
  });
}

std::string solText() {
  const Form form = *rc::gen::element(Form::plain, Form::readable, Form::any);
  const auto points = *rc::gen::container<std::vector<std::string>>(
      2, rc::gen::oneOf(point(form), rc::gen::just(std::string(largePoint))));
  std::string text;
  for (const std::string& part :
       *rc::gen::container<std::vector<std::string>>(record(form, points)))
    text += part;
  return text;
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
  } catch (const std::invalid_argument& exception) {
    outcome.report = std::string("terminate: ") + exception.what();
  }
  outcome.file = scratch.names().size() == 2 ? scratch.read("p.sol") : "none";
  return outcome;
}

RC_GTEST_PROP(SiftWays, AgreeOnAnyText, ()) {
  const std::string problem = *rc::gen::elementOf(problems);
  const std::string text = solText();
  RC_ASSERT(outcomeOf(test::siftedReport, problem, text) ==
            outcomeOf(test::siftedReportByStars, problem, text));
}

RC_GTEST_PROP(SiftWays, AgreeOnTidyLinesAmongOthers, ()) {
  const std::string problem = *rc::gen::elementOf(problems);
  const Outcome tidy = outcomeOf(test::siftedReportByStars, problem, solText());
  const std::string lines = tidy.file == "none" ? "" : tidy.file;
  using Change = std::pair<std::string, std::string>;
  const Change change = *rc::gen::elementOf(std::vector<Change>{
      {"\n", "\n"}, {"\n", " \n"}, {"\n", "\r\n"}, {" | p", " |  p"}, {" ] | ", " ] |  "}});
  const std::string text = replaceAll(lines, change.first, change.second);
  const std::string mixed = *oneOf({"", solText()}) + text + *oneOf({"", text, solText()});
  RC_ASSERT(outcomeOf(test::siftedReport, problem, mixed) ==
            outcomeOf(test::siftedReportByStars, problem, mixed));
}

/// A text with a few characters that were exchanged, put in or taken out.
std::string mutated(std::string text) {
  const std::string characters("0123456789 -+.:/|[]\n\r\t*einf,#\0", 30);
  const int count = *rc::gen::inRange(1, 4);
  for (int i = 0; i < count && !text.empty(); ++i) {
    const auto place = *rc::gen::inRange<std::size_t>(0, text.size());
    const char character = *rc::gen::elementOf(characters);
    switch (*rc::gen::inRange(0, 3)) {
      case 0:
        text[place] = character;
        break;
      case 1:
        text.insert(place, 1, character);
        break;
      default:
        text.erase(place, 1);
    }
  }
  return text;
}

RC_GTEST_PROP(SiftWays, AgreeOnTidyLinesWithMutations, ()) {
  const std::string problem = *rc::gen::elementOf(problems);
  const Outcome tidy = outcomeOf(test::siftedReportByStars, problem, solText());
  RC_PRE(tidy.file != "none");
  const std::string text = mutated(tidy.file);
  RC_ASSERT(outcomeOf(test::siftedReport, problem, text) ==
            outcomeOf(test::siftedReportByStars, problem, text));
}

}  // namespace
}  // namespace starsift

// Hosts whose locales write numbers and letters in ways of their own.
#include <gtest/gtest.h>
#include <langinfo.h>
#include <starsift/starsift.h>

#include <clocale>
#include <string>
#include <vector>

#include "support/fixtures/GroupedDigits.h"

namespace starsift {
namespace {

/// Numbers of each kind, as texts.
std::string texts() {
  Problem problem = Problem::fromOpt(
      "[ inf ] [ [ 1234567 1.5 ] ] [ [ 1000 2000 ] ] [ 123456000 ] [ ] [ [ 1 1/3 ] ] [ 0 ] "
      "[ 99999.5 ] [ 0 0 ] [ 0 0 ] [ 200000 200000 ]");
  problem.addRange({"12345.5", "1e4"}, "-1e12", "inf");
  std::string text = problem.toOpt();
  const Search::Result result =
      Search(problem).set("seed", 12345).set("iters", 12345).set("tnorm", "-1e12").run();
  text += result.verdict + problem.toSol(result.solutions);
  for (const Solution& read : problem.fromSol("[ 1e4 0 ] | -1.5 | [ 1 ] | 0 | 12345 | --beta=20"))
    text += std::to_string(read.seconds) + read.parameters + read.x.at(0).text();
  for (const Violation& broken : check(problem, std::vector<Number>{"1234.5", 1}).violations)
    text += broken.name + broken.amount.text();
  return text;
}

TEST(LibraryLocale, OfCppHasNoPartInTexts) {
  const std::string expected = texts();
  const test::GroupedDigits grouped;
  EXPECT_EQ(texts(), expected);
}

/// The calling thread has other letters than the locale "C" during its lifetime.
class Utf8Thread {
 public:
  Utf8Thread() : utf8_(newlocale(LC_ALL_MASK, "C.UTF-8", nullptr)), before_(uselocale(utf8_)) {}
  Utf8Thread(const Utf8Thread&) = delete;
  Utf8Thread& operator=(const Utf8Thread&) = delete;
  ~Utf8Thread() {
    uselocale(before_);
    if (utf8_ != nullptr) freelocale(utf8_);
  }

 private:
  locale_t utf8_;
  locale_t before_;
};

TEST(LibraryLocale, OfThreadIsItsOwnInCallsAndAfterwards) {
  const Utf8Thread utf8;
  Problem problem;
  problem.addVariable(0, 9);
  problem.addEquation({2}, 8);
  std::vector<std::string> codes;
  const auto note = [&codes] { codes.emplace_back(nl_langinfo(CODESET)); };
  static_cast<void>(Search(problem).onSolution([&note](const Solution&) { note(); }).run());
  note();
  EXPECT_EQ(codes, (std::vector<std::string>{"UTF-8", "UTF-8"}));
}

}  // namespace
}  // namespace starsift

// What laws over small problems share: their number, their normal forms, and silence.
#pragma once

#include <gtest/gtest.h>

#include <iostream>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "lattice/Lattice.h"
#include "numbers/VectorQQ.h"
#include "support/generators/NormalFormGenerators.h"
#include "support/oracles/PlainRecord.h"
#include "system/Console.h"
#include "system/HostedCall.h"

namespace starsift::test {

/// Problems that a law is checked over.
constexpr int problemCount = STARSIFT_PROBLEM_COUNT;

/// Keeps both streams of the process quiet while it lives.
class Silence {
 public:
  Silence() = default;
  Silence(const Silence&) = delete;
  Silence& operator=(const Silence&) = delete;
  ~Silence() {
    std::cout.rdbuf(out_);
    std::cerr.rdbuf(err_);
    consoleState() = {};
  }

 private:
  std::ostringstream swallowed_;
  std::streambuf* out_ = std::cout.rdbuf(swallowed_.rdbuf());
  std::streambuf* err_ = std::cerr.rdbuf(swallowed_.rdbuf());
};

template <class T>
oracle::PlainRecord plain(const Vanu<T>& problem) {
  Vanu<QQ> exact;
  exact.convertFrom(problem);
  return oracle::plainRecord(exact);
}

/// A normal form, or the report that there is none.
struct Outcome {
  std::optional<oracle::PlainRecord> normal;
  std::string report;
};

template <class T>
Outcome normalised(Lattice<T, long double>& lattice, bool generate, bool force) {
  const Silence silence;
  try {
    lattice.normalise(generate ? TargetRange::find : TargetRange::omit,
                      force ? From::read : From::lifted);
  } catch (const FatalReport& report) {
    return {std::nullopt, report.what()};
  }
  return {plain<T>(lattice), ""};
}

/// The report of a property that fails over problemCount cases; empty if it holds.
template <class Property>
std::string failureOver(const Property& property) {
  // Values that belong to a host have no locks; making these takes as long as many a law.
  const HostedCall call;
  rc::detail::TestParams params = rc::detail::configuration().testParams;
  params.maxSuccess = problemCount;
  const auto result = rc::detail::checkTestable(property, rc::detail::TestMetadata(), params);
  if (result.template is<rc::detail::SuccessResult>()) return "";
  std::ostringstream text;
  rc::detail::printResultMessage(result, text);
  return text.str() + "\nseed=" + std::to_string(params.seed);
}

/// The problems of all laws of the process: every law has the same seed, and making them takes as
/// long as many a law.
inline const std::vector<SmallProblem>& commonProblems() {
  static const std::vector<SmallProblem> problems = [] {
    std::vector<SmallProblem> made;
    failureOver([&made] { made.push_back(*arbitrarySmallProblem()); });
    return made;
  }();
  return problems;
}

/// The law as a property over problemCount problems. One that fails is repeated with problems of
/// its own, which can shrink.
template <class Law>
void checkOverProblems(const Law& law) {
  std::size_t number = 0;
  // A law may discard cases, which are made up for.
  const std::string failure = failureOver([&] {
    const bool isCommon = number < commonProblems().size();
    law(isCommon ? commonProblems()[number++] : *arbitrarySmallProblem());
  });
  if (failure.empty()) return;
  const std::string shrunk = failureOver([&law] { law(*arbitrarySmallProblem()); });
  FAIL() << (shrunk.empty() ? failure : shrunk);
}

inline void failWith(const std::string& claim, const oracle::PlainRecord& normal) {
  RC_FAIL(claim + "\nin normal form:\n" + oracle::recordText(normal));
}

}  // namespace starsift::test

#include <algorithm>
#include <array>
#include <chrono>
#include <utility>

#include "app/ProofRemark.h"
#include "app/SearchProfile.h"
#include "app/Seek.h"
#include "app/SeekArguments.h"
#include "app/Sift.h"
#include "app/Verdict.h"
#include "files/SolutionFile.h"
#include "library/GivenPoint.h"
#include "library/Hosted.h"
#include "library/Inside.h"
#include "library/MemorySink.h"
#include "params/ExtendedParams.h"
#include "params/ParamArguments.h"
#include "system/Exceptions.h"
#include "system/Failure.h"
#include "text/TextStreams.h"

namespace starsift {
inline namespace v1 {

struct Search::Settings {
  Problem problem;
  /// "--name=value".
  std::vector<std::string> options;
  std::vector<Solution> known;
  SearchCalls calls;
};

namespace {

using Result = Search::Result;

/// Those that concern files and consoles.
constexpr std::array<std::string_view, 8> otherOptions{"help",  "version", "json", "verb",
                                                       "bench", "part",    "join", "profile"};

/// A fatal report of numbers beyond the greatest long double, in the exact lattice too.
constexpr std::string_view overflowReport = "numbers too large for the reduction";

SeekArguments splitOptions(std::vector<std::string> options) {
  std::vector<char*> arguments;
  arguments.reserve(options.size());
  for (std::string& option : options) arguments.push_back(option.data());
  return splitArguments(arguments);
}

void prepare(YLattice<long double>& lattice, const Vanu<QQ>& problem, const SeekArguments& given) {
  applyArguments(lattice, given);
  lattice.takeProblem(problem);
}

Search::End endOf(SearchEnd end) {
  switch (end) {
    case SearchEnd::goal:
      return Search::End::goal;
    case SearchEnd::passes:
      return Search::End::passes;
    case SearchEnd::time:
      return Search::End::time;
    case SearchEnd::fruitless:
      return Search::End::fruitless;
    case SearchEnd::interrupt:
      return Search::End::stopped;
    case SearchEnd::decided:
      return Search::End::decided;
    case SearchEnd::overflow:
      break;
  }
  return Search::End::overflow;
}

Search::Proof proofOf(Proof proof) {
  switch (proof) {
    case Proof::noSolution:
      return Search::Proof::infeasible;
    case Proof::allFound:
      return Search::Proof::allFound;
    case Proof::optimum:
      return Search::Proof::optimum;
    case Proof::none:
      break;
  }
  return Search::Proof::none;
}

std::optional<Number> numberOf(const std::optional<QQ>& value) {
  return value ? std::optional(Inside::number(*value)) : std::nullopt;
}

std::string withoutLineEnd(std::string text) {
  while (text.ends_with('\n')) text.pop_back();
  return text;
}

std::vector<Solution> ordered(const MemorySink& sink) {
  SolutionFile<QQ> file;
  file.appendStars(sink.stars());
  file.sortStars();
  std::vector<Solution> solutions;
  for (const Star<QQ>& star : file.stars) solutions.push_back(Inside::solution(star));
  return solutions;
}

Result resultOf(SearchEnd end, const SearchResult& found) {
  Result result;
  TextWriter verdict;
  writeVerdict(verdict, found);
  result.end = endOf(end);
  result.proof = proofOf(found.decided.proof);
  result.isExactOnly = found.isExactOnly();
  result.isStepsOnly = found.isStepsOnly();
  result.isUnbounded = found.isUnbounded();
  result.verdict = withoutLineEnd(std::move(verdict).str());
  result.count = found.count();
  result.best = numberOf(found.best);
  result.bound = numberOf(found.decided.bound);
  result.nodes = found.decided.nodes;
  result.passes = static_cast<std::uint64_t>(found.passes);
  result.seed = found.seed;
  return result;
}

/// The result of a search that a report has ended, if that is no fault of the input: there is no
/// solution, or a number is too large. Else throws the report.
Result ended(const std::string& message, const SearchResult& found) {
  if (message == overflowReport) {
    Result result = resultOf(SearchEnd::overflow, found);
    result.verdict = message;
    return result;
  }
  if (fatalProof(message) == FatalProof::nothing) throw FatalReport(message);
  Result result = resultOf(SearchEnd::decided, provedBy(message, found));
  result.verdict = message + '\n' + proofRemark(message);
  return result;
}

/// After a report in the middle of a step.
void takeRest(MemorySink& sink, const YLattice<long double>& lattice) {
  try {
    sink.trySave(lattice);
  } catch (const FatalReport&) {
    // The lattice is broken; what was taken before is in the sink.
  } catch (const GeneralException&) {
    // The same.
  }
}

/// Each point that is right, judged anew, once.
Array<Star<QQ>> rightStars(SolutionFile<QQ> file) {
  file.checkStars();
  tidyStars(file);
  return std::move(file.stars);
}

Result search(const Vanu<QQ>& problem, const SeekArguments& given, MemorySink& sink) {
  const auto start = StatusLine::Clock::now();
  YLattice<long double> lattice;
  prepare(lattice, problem, given);
  StatusLine line(nullptr, start);
  SearchWatch watch(lattice, line, start);
  watch.setListener(sink);
  Seek seek(lattice, watch, given.options, reportStream());
  Result result;
  try {
    const SearchEnd end = seek.search(sink);
    sink.trySave(lattice);
    result = resultOf(end, seek.result(sink, sink.stars().isSet()));
  } catch (const FatalReport& report) {
    takeRest(sink, lattice);
    result = ended(report.what(), seek.result(sink, sink.stars().isSet()));
  }
  lattice.endSearch();
  result.solutions = ordered(sink);
  // Known ones too, of which the search doesn't know.
  if (result.proof != Search::Proof::allFound)
    result.count = std::max(result.count, static_cast<std::uint64_t>(result.solutions.size()));
  result.seconds = std::chrono::duration<double>(StatusLine::Clock::now() - start).count();
  return result;
}

std::vector<Search::BasisProfile> profileOf(const Vanu<QQ>& problem, const SeekArguments& given,
                                            MemorySink& sink) {
  const auto start = StatusLine::Clock::now();
  YLattice<long double> lattice;
  prepare(lattice, problem, given);
  StatusLine line(nullptr, start);
  SearchWatch watch(lattice, line, start);
  const auto curves =
      searchProfile(lattice, given.options, [&] { return sink.looked(watch) == Step::goOn; });
  std::vector<Search::BasisProfile> result;
  for (const ProfileCurve& curve : curves.value_or(std::vector<ProfileCurve>{}))
    result.push_back({curve.name, curve.lengths});
  return result;
}

}  // namespace

Search::Search(Problem problem)
    : settings_(std::make_unique<Settings>(Settings{std::move(problem), {}, {}, {}})) {}
Search::Search(const Search& other) : settings_(std::make_unique<Settings>(*other.settings_)) {}
Search::Search(Search&& other) noexcept = default;
Search& Search::operator=(const Search& other) {
  *this = Search(other);
  return *this;
}
Search& Search::operator=(Search&& other) noexcept = default;
Search::~Search() = default;

Search& Search::set(std::string_view name, std::string_view value) {
  hosted([&] {
    if (std::find(otherOptions.begin(), otherOptions.end(), name) != otherOptions.end())
      fail("not an option of a search: " + std::string(name));
    if (value.find('\0') != std::string_view::npos)
      fail("Malformed parameter: " + std::string(name));
    std::string option = "--" + std::string(name) + '=' + std::string(value);
    ExtendedParams<QQ> params;
    readArguments(params, splitOptions({option}).parameters);
    settings_->options.push_back(std::move(option));
  });
  return *this;
}

Search& Search::know(std::span<const Solution> solutions) {
  hosted([&] {
    const std::size_t variables = settings_->problem.variableCount();
    for (const Solution& solution : solutions) requirePoint(solution.x, variables);
  });
  settings_->known.insert(settings_->known.end(), solutions.begin(), solutions.end());
  return *this;
}

Search& Search::onSolution(std::function<void(const Solution&)> call) {
  settings_->calls.onSolution = std::move(call);
  return *this;
}

Search& Search::onProgress(std::function<void(const Progress&)> call) {
  settings_->calls.onProgress = std::move(call);
  return *this;
}

Search::Result Search::run(const std::stop_token& stop) const {
  MemorySink sink(settings_->calls, stop);
  Result result = hosted([&] {
    const ProblemRecord& record = Inside::record(settings_->problem);
    const Vanu<QQ> problem = vanuOf(record);
    sink.know(rightStars(Inside::file(record, settings_->known)), problem);
    return search(problem, splitOptions(settings_->options), sink);
  });
  sink.rethrow();
  return result;
}

std::vector<Search::BasisProfile> Search::profile(const std::stop_token& stop) const {
  MemorySink sink(settings_->calls, stop);
  std::vector<BasisProfile> result = hosted([&] {
    const Vanu<QQ> problem = vanuOf(Inside::record(settings_->problem));
    return profileOf(problem, splitOptions(settings_->options), sink);
  });
  sink.rethrow();
  return result;
}

}  // namespace v1
}  // namespace starsift

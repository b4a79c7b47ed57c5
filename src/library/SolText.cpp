// Records of .sol files and solutions of a host.
#include <algorithm>
#include <utility>

#include "app/Sift.h"
#include "files/SolReader.h"
#include "files/SolWriter.h"
#include "files/SolutionFile.h"
#include "library/GivenPoint.h"
#include "library/Hosted.h"
#include "library/Inside.h"
#include "system/Exceptions.h"

namespace starsift {
inline namespace v1 {

namespace {

/// What starsift writes for the stars of `given`, in numbers of T. PrecisionException if T can't
/// hold one.
template <class T>
std::string siftedText(const SolutionFile<QQ>& given) {
  SolutionFile<T> file;
  file.convertFrom(given);
  file.checkStars();
  tidyStars(file);
  requireExactText(file.stars);
  std::string text;
  for (const Star<T>& star : file.stars) text += starText(star) + '\n';
  return text;
}

std::string siftedText(const SolutionFile<QQ>& given) {
  try {
    return siftedText<long double>(given);
  } catch (const PrecisionException&) {
    return siftedText<QQ>(given);
  }
}

Vector<QQ> vectorOf(std::span<const Number> numbers) {
  Vector<QQ> result(static_cast<Index>(numbers.size()));
  std::transform(numbers.begin(), numbers.end(), result.begin(), Inside::exact);
  return result;
}

/// One line without the character that ends a field.
std::string fieldText(std::string text) {
  std::replace_if(
      text.begin(), text.end(), [](char c) { return c == '\n' || c == '\r' || c == '|'; }, ' ');
  return text;
}

}  // namespace

Solution Inside::solution(const Star<QQ>& star) {
  return {numbers(star.x()),
          numbers(star.targetValues),
          number(star.targetNorm),
          number(star.slackNorm),
          star.time,
          star.paramsText,
          star.versionText};
}

Star<QQ> Inside::star(const Solution& solution) {
  Star<QQ> star(static_cast<Index>(solution.x.size()));
  std::transform(solution.x.begin(), solution.x.end(), star.begin(), exact);
  star.targetValues = vectorOf(solution.targetValues);
  star.targetNorm = exact(solution.targetNorm);
  star.slackNorm = exact(solution.slackNorm);
  star.time = solution.seconds;
  star.paramsText = fieldText(solution.parameters);
  star.versionText = fieldText(solution.version);
  return star;
}

std::vector<Solution> Problem::fromSol(std::string_view text) const {
  return hosted([&] {
    std::vector<Solution> solutions;
    for (const Star<QQ>& star : readStarsOf(std::string(text), vanuOf(*record_)))
      solutions.push_back(Inside::solution(star));
    return solutions;
  });
}

SolutionFile<QQ> Inside::file(const ProblemRecord& problem, std::span<const Solution> solutions) {
  SolutionFile<QQ> file;
  file.editProblem() = vanuOf(problem);
  for (const Solution& solution : solutions) {
    requirePoint(solution.x, problem.variables.size());
    append(file.stars, star(solution));
  }
  return file;
}

std::string Problem::toSol(std::span<const Solution> solutions) const {
  return hosted([&] { return siftedText(Inside::file(*record_, solutions)); });
}

}  // namespace v1
}  // namespace starsift

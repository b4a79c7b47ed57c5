#include "support/StarSamples.h"

#include <cstdlib>
#include <iostream>
#include <sstream>

#include "files/SolWriter.h"
#include "numbers/VectorQQ.h"
#include "problem/OptReader.h"
#include "stars/StarCheck.h"

namespace starsift::bench {

namespace {

constexpr Index equations = 5;

/// "[ 1 1 1 ]"
std::string repeated(const std::string& item, Index count) {
  std::string text = "[ ";
  for (Index i = 1; i <= count; ++i) text += item + ' ';
  return text + ']';
}

}  // namespace

StarSample::StarSample(Index variables, Index stars, NumberKind kind) : kind_(kind) {
  makeProblem(variables);
  makeStars(stars);
}

QQ StarSample::number() {
  const QQ integer(static_cast<long>(1 + below(random_, 99)));
  return kind_ == NumberKind::integers ? integer : integer / QQ(3);
}

void StarSample::makeProblem(Index variables) {
  Matrix<QQ> rows(equations, variables);
  Matrix<QQ> targets(1, variables);
  // Column i closes row i; the rows share out the others.
  for (Index j = 1; j <= variables; ++j) {
    rows[(j - 1) % equations + 1][j] = j <= equations ? QQ(1) : number();
    targets[1][j] = j <= equations ? QQ(0) : number();
  }
  std::ostringstream text;
  text << "[ inf ]\n"
       << targets << '\n'
       << rows << '\n'
       << repeated("1000", equations) << "\n[ ]\n"
       << targets << "\n[ 0 ]\n[ inf ]\n"
       << repeated("0", variables) << '\n'
       << repeated("-inf", variables) << '\n'
       << repeated("1000", variables) << '\n';
  problemText_ = text.str();
  TextCursor source(problemText_);
  parseOpt(source, problem_);
}

Star<QQ> StarSample::makeStar() {
  Star<QQ> star(problem_.rx.dimension());
  for (Index j = equations + 1; j <= star.dimension(); ++j)
    if (below(random_, 3) > 0) star[j] = number();
  const Vector<QQ> sums = problem_.Ag * star.x();
  for (Index i = 1; i <= equations; ++i) star[i] = problem_.bg[i] - sums[i];
  star.time = static_cast<std::int64_t>(below(random_, 100000));
  star.paramsText = "--beta=20 --run=";
  star.versionText = "2.4." + std::to_string(below(random_, 5));
  return star;
}

void StarSample::makeStars(Index count) {
  StarChecker<QQ> checker(problem_);
  stars_.resize(count, false);
  for (Star<QQ>& star : stars_) {
    star = makeStar();
    if (checker.check(star)) continue;
    std::cerr << "bench: a star of the sample is wrong\n";
    std::exit(EXIT_FAILURE);
  }
}

std::string StarSample::starsText(bool bare) const {
  std::string text;
  for (const Star<QQ>& star : stars_) {
    const std::string record = starText(star);
    text += bare ? record.substr(0, record.find(" |")) : record;
    text += '\n';
  }
  return text;
}

std::vector<peer::Star> StarSample::peerStars(Index copies) const {
  std::vector<peer::Star> result;
  for (Index copy = 0; copy < copies; ++copy) {
    for (peer::Star& star : peer::parseStars(starsText(false))) {
      star.parameters += std::to_string(copy);
      result.push_back(std::move(star));
    }
  }
  return result;
}

}  // namespace starsift::bench

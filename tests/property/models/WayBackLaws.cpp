// Points of problems that are exported as models for solvers come back as they were.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "models/check/PointCheck.h"
#include "models/solutions/ExportedColumns.h"
#include "models/text/ModelError.h"
#include "models/text/NumberText.h"
#include "models/write/ModelWriter.h"
#include "models/write/PlainModel.h"
#include "numbers/QQFunctions.h"
#include "support/fixtures/ModelDescription.h"
#include "support/generators/ModelGenerators.h"

namespace starsift {
namespace {

using test::arbitraryModel;
using test::arbitraryNumber;
using test::ModelUse;

/// Up to `end` - 1, whatever the size of the case.
int below(int end) {
  return *rc::gen::resize(rc::kNominalSize, rc::gen::inRange(0, end));
}

/// A problem and one of its points, with the values of the columns that are added on export: those
/// of moduli, then two deviations for each finite goal.
struct ProblemAtPoint {
  Problem problem;
  std::vector<QQ> x;
  std::vector<QQ> added;
};

QQ valueAt(const Target& target, const std::vector<QQ>& x) {
  QQ value;
  for (std::size_t k = 0; k < target.columns.size(); ++k)
    value += target.coefficients[k] * x[target.columns[k]];
  return value;
}

/// Places as a .opt file has them: none for integer columns. The bounds move near to the point.
void addColumns(ProblemAtPoint& made) {
  Model& model = made.problem.model;
  for (std::size_t j = 0; j < model.columnCount(); ++j) {
    const int places = below(4);
    made.problem.decimals.emplace_back(places);
    model.kinds[j] = places == 0 ? ColumnKind::integer : ColumnKind::continuous;
    made.x.push_back(QQ(below(2001) - 1000) / pow(QQ::ten(), QQ(places)));
    if (below(8) == 0) continue;
    model.lower[j] = below(3) == 0 ? -QQ::infinity() : made.x[j] - QQ(below(3));
    model.upper[j] = below(3) == 0 ? QQ::infinity() : made.x[j] + QQ(below(3));
  }
}

/// Equations hold, but for some; those with a modulus are congruences.
void moveRows(ProblemAtPoint& made) {
  Model& model = made.problem.model;
  const std::vector<QQ> activities = PointCheck(made.problem).check(made.x).activities;
  for (std::size_t i = 0; i < model.rowCount(); ++i) {
    QQ& modulus = made.problem.moduli.emplace_back();
    if (model.senses[i] != RowSense::equal) continue;
    const bool isCongruence = below(2) == 0;
    QQ side = below(8) == 0 ? model.rowLower[i] : activities[i];
    if (isCongruence) {
      modulus = QQ(2 + below(20)) / QQ(1 + below(3));
      const QQ quotient(below(9) - 4);
      made.added.push_back(quotient);
      side = activities[i] - quotient * modulus;
    }
    model.rowLower[i] = model.rowUpper[i] = side;
  }
}

void addTargets(ProblemAtPoint& made) {
  for (int count = below(4); count > 0; --count) {
    Target target;
    for (std::uint32_t j = 0; j < made.x.size(); ++j) {
      if (below(2) == 0) continue;
      target.columns.push_back(j);
      target.coefficients.emplace_back(1 + below(9));
    }
    const QQ value = valueAt(target, made.x);
    const int kind = below(3);
    target.goal = kind == 0 ? -QQ::infinity() : kind == 1 ? QQ::infinity() : QQ(below(9));
    target.threshold = below(2) == 0 ? target.goal : value;
    if (!target.goal.isInf()) {
      const QQ miss = value - target.goal;
      made.added.push_back(miss.sign() ? miss : QQ());
      made.added.push_back(miss.sign() ? QQ() : -miss);
    }
    made.problem.targets.push_back(std::move(target));
  }
}

ProblemAtPoint arbitraryProblemAtPoint() {
  ProblemAtPoint made;
  made.problem.model = *arbitraryModel(ModelUse::opt);
  addColumns(made);
  moveRows(made);
  addTargets(made);
  return made;
}

/// The point in the columns of the exported model.
std::vector<QQ> exportedPoint(const ProblemAtPoint& made) {
  std::vector<QQ> y;
  for (std::size_t j = 0; j < made.x.size(); ++j)
    y.push_back(made.x[j] * pow(QQ::ten(), made.problem.decimals[j]));
  y.insert(y.end(), made.added.begin(), made.added.end());
  return y;
}

RC_GTEST_PROP(WayBack, ExportedPointsAreRightIfThoseOfTheProblemAre, ()) {
  const ProblemAtPoint made = arbitraryProblemAtPoint();
  const Problem plain = problemOf(plainModel(made.problem));
  const std::vector<QQ> y = exportedPoint(made);
  RC_ASSERT(y.size() == plain.model.columnCount());
  const bool isRight = PointCheck(made.problem).check(made.x).isRight();
  RC_CLASSIFY(isRight);
  RC_ASSERT(PointCheck(plain).check(y).isRight() == isRight);
}

/// What a solver writes of the model, which it has read from a file of that format.
WrittenPoint pointOfSolver(const Problem& problem, const std::vector<QQ>& y, ModelFormat format,
                           bool isByNumber) {
  const Model solved = test::readBytes(writeModel(plainModel(problem), format).text, format);
  WrittenPoint point;
  for (std::size_t j = 0; j < y.size(); ++j)
    point.values.push_back({isByNumber ? std::to_string(j + 1) : std::string(solved.columnNames[j]),
                            numberText(y[j]), j + 1});
  return point;
}

RC_GTEST_PROP(WayBack, PointsOfSolversComeBack, (bool isLp, bool isByNumber)) {
  const ProblemAtPoint made = arbitraryProblemAtPoint();
  const ModelFormat format = isLp ? ModelFormat::lp : ModelFormat::mps;
  const WrittenPoint point = pointOfSolver(made.problem, exportedPoint(made), format, isByNumber);
  const SolverFormat solver{"solver", 0, false, isByNumber, false};
  RC_ASSERT(ExportedColumns(made.problem, format).read(solver, point, {}).x == made.x);
  try {
    RC_ASSERT(ExportedColumns(made.problem, std::nullopt).read(solver, point, {}).x == made.x);
  } catch (const ModelError& error) {
    // A name that was changed for one format is that of another column in the other one.
    RC_ASSERT(error.sentence().find("--format") != std::string::npos);
    RC_TAG("refused");
  }
}

}  // namespace
}  // namespace starsift

// Models that are written in some form and read again stay the same.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <sstream>
#include <string>

#include "models/check/PointCheck.h"
#include "models/read/ModelReader.h"
#include "models/read/ProblemReader.h"
#include "models/text/Words.h"
#include "models/write/ModelWriter.h"
#include "models/write/NamesFile.h"
#include "models/write/OptWriter.h"
#include "models/write/PlainModel.h"
#include "problem/OptReader.h"
#include "stars/StarCheck.h"
#include "support/fixtures/ModelDescription.h"
#include "support/generators/ModelGenerators.h"

namespace starsift {
namespace {

using test::arbitraryModel;
using test::modelTextWithoutRemarks;
using test::ModelUse;
using test::readBytes;

/// Names differ after the first writing only where the format can't hold them.
void expectSameNumbers(const Model& a, const Model& b) {
  RC_ASSERT(a.columnCount() == b.columnCount());
  RC_ASSERT(a.rowCount() == b.rowCount());
  Model renamed = a;
  renamed.columnNames = b.columnNames;
  renamed.rowNames = b.rowNames;
  renamed.objective.name = b.objective.name;
  renamed.name = b.name;
  RC_ASSERT(modelTextWithoutRemarks(renamed) == modelTextWithoutRemarks(b));
}

/// Written, read, written and read again.
void expectRoundTrip(const Model& model, ModelFormat format) {
  const Model once = readBytes(writeModel(model, format).text, format);
  expectSameNumbers(model, once);
  const WrittenModel written = writeModel(once, format);
  RC_ASSERT(modelTextWithoutRemarks(readBytes(written.text, format)) ==
            modelTextWithoutRemarks(once));
}

RC_GTEST_PROP(ModelLaws, MpsTextReadsAsTheModel, ()) {
  expectRoundTrip(*arbitraryModel(ModelUse::mps), ModelFormat::mps);
}

RC_GTEST_PROP(ModelLaws, LpTextReadsAsTheModel, ()) {
  expectRoundTrip(*arbitraryModel(ModelUse::lp), ModelFormat::lp);
}

/// The text of a .opt file as a problem.
Vanu<QQ> problemOfText(const std::string& text) {
  Vanu<QQ> problem;
  TextCursor source(text);
  parseOpt(source, problem);
  problem.updateFixedTargets();
  return problem;
}

std::string optTextOf(const Model& model, const OptOptions& options) {
  std::string text;
  writeOpt(model, optRows(model), options, [&text](std::string_view piece) { text += piece; });
  return text;
}

RC_GTEST_PROP(ModelLaws, OptTextAndNamesReadAsTheModel, (bool addConstant)) {
  const Model model = *arbitraryModel(ModelUse::opt);
  OptOptions options;
  options.addConstant = addConstant;
  NamesFile names = readNames(namesText(namesOf(model)));
  names.hasConstantColumn = addConstant;
  const Problem problem = problemOf(problemOfText(optTextOf(model, options)), names);
  RC_ASSERT(modelTextWithoutRemarks(problem.model) == modelTextWithoutRemarks(model));
  RC_ASSERT(modelTextWithoutRemarks(plainModel(problem)) == modelTextWithoutRemarks(model));
}

/// A point near the bounds of the columns and the right sides of the rows.
std::vector<QQ> pointNear(const Model& model) {
  std::vector<QQ> x;
  for (std::size_t j = 0; j < model.columnCount(); ++j) {
    QQ value = *rc::gen::element(model.lower[j], model.upper[j], QQ(*rc::gen::inRange(-3, 4)));
    if (value.isInf()) value = QQ();
    if (*rc::gen::inRange(0, 4) == 0) value += QQ(1, 1'000'000'000) * QQ(*rc::gen::inRange(-2, 3));
    x.push_back(std::move(value));
  }
  return x;
}

/// True if something other than a step is broken.
bool breaksMoreThanSteps(const PointReport& report) {
  return std::any_of(
      report.violations.begin(), report.violations.end(),
      [](const Violation& violation) { return violation.kind != ViolationKind::step; });
}

RC_GTEST_PROP(ModelLaws, PointsAreRightIfStarsiftSaysSo, ()) {
  Model model = *arbitraryModel(ModelUse::opt);
  const std::vector<QQ> x = pointNear(model);
  // Rows move so that the point lies on them, or beside them by about the tolerance.
  const PointReport before = PointCheck(problemOf(model)).check(x);
  const RowView view(model);
  for (std::size_t i = 0; i < model.rowCount(); ++i) {
    if (view.start[i] == view.start[i + 1]) continue;
    const QQ miss = QQ(1, 2'000'000'000) * QQ(*rc::gen::inRange(-3, 4));
    if (!model.rowLower[i].isInf()) model.rowLower[i] = before.activities[i] + miss;
    if (!model.rowUpper[i].isInf())
      model.rowUpper[i] = model.senses[i] == RowSense::ranged ? model.rowLower[i] + QQ(1)
                                                              : before.activities[i] + miss;
  }
  const Vanu<QQ> problem = problemOfText(optTextOf(model, {}));
  Star<QQ> star(problem.rx.dimension());
  std::copy(x.begin(), x.end(), star.begin());
  StarChecker<QQ> checker(problem);
  const bool isSolution = checker.check(star);
  const PointReport report = PointCheck(problemOf(model)).check(x);
  RC_CLASSIFY(isSolution);
  RC_ASSERT(breaksMoreThanSteps(report) == !isSolution);
  if (isSolution && !report.targetValues.empty())
    RC_ASSERT(star.targetValues[1] == report.targetValues[0]);
}

/// A text in another dialect of the free MPS form.
std::string inDialect(const std::string& text, int dialect) {
  std::string result = dialect == 0 ? "\xEF\xBB\xBF" : "";
  std::string_view rest = text;
  bool isFirst = true;
  while (!rest.empty()) {
    std::string line(takeLine(rest));
    const bool isData = line.starts_with(' ');
    if (dialect == 1) line += '\r';
    if (dialect == 2 && isData) std::replace(line.begin(), line.end(), ' ', '\t');
    if (dialect == 3 && !isData && !isFirst)
      std::transform(line.begin(), line.end(), line.begin(), lowered);
    if (dialect == 4) line = "* a comment\n\n" + line;
    if (dialect == 5 && line.starts_with("ENDATA")) line += "\nanything";
    result += line + '\n';
    isFirst = false;
  }
  return result;
}

RC_GTEST_PROP(ModelLaws, DialectsOfMpsReadTheSame, ()) {
  const std::string text = writeModel(*arbitraryModel(ModelUse::mps), ModelFormat::mps).text;
  const std::string model = modelTextWithoutRemarks(readBytes(text, ModelFormat::mps));
  for (int dialect = 0; dialect < 6; ++dialect)
    RC_ASSERT(modelTextWithoutRemarks(readBytes(inDialect(text, dialect), ModelFormat::mps)) ==
              model);
}

}  // namespace
}  // namespace starsift

#include "models/check/PointCheck.h"

#include <algorithm>
#include <array>
#include <utility>

#include "core/NumberTraits.h"
#include "models/text/Words.h"

namespace starsift {

namespace {

QQ distanceToInteger(const QQ& value) {
  const QQ below = value - floor(value);
  const QQ above = QQ::one() - below;
  return below < above ? below : above;
}

/// Decimal places beyond which no step is looked at: they are more than a point has digits.
constexpr long mostPlaces = 100'000;

/// 10^places of a column.
QQ powerOfTen(const QQ& places) {
  QQ power(1);
  for (QQ i(1); i <= places; i += QQ::one()) power *= QQ::ten();
  return power;
}

}  // namespace

PointReport PointCheck::check(const std::vector<QQ>& x) const {
  PointReport report;
  computeActivities(x, report);
  for (std::uint32_t i = 0; i < problem_.model.rowCount(); ++i) checkRow(i, report);
  for (std::uint32_t j = 0; j < x.size(); ++j) checkColumn(j, x[j], report);
  std::stable_sort(report.violations.begin(), report.violations.end(),
                   [](const Violation& a, const Violation& b) { return a.amount > b.amount; });
  for (const Target& target : problem_.targets) {
    QQ& value = report.targetValues.emplace_back();
    for (std::size_t k = 0; k < target.columns.size(); ++k)
      addProduct(value, target.coefficients[k], x[target.columns[k]]);
  }
  return report;
}

void PointCheck::computeActivities(const std::vector<QQ>& x, PointReport& report) const {
  const Model& model = problem_.model;
  report.activities.resize(model.rowCount());
  for (std::size_t j = 0; j < x.size(); ++j) {
    if (x[j].isZero()) continue;
    for (std::size_t k = model.columnStart[j]; k < model.columnStart[j + 1]; ++k)
      addProduct(report.activities[model.entryRows[k]], model.entryValues[k], x[j]);
  }
}

void PointCheck::checkEquation(std::uint32_t row, const QQ& distance, const QQ& test,
                               PointReport& report) const {
  if (abs(test) > NumberTraits<QQ>::tolerance()) {
    report.violations.push_back({ViolationKind::row, row, distance});
  } else if (!distance.isZero()) {
    ++report.nearlyMet;
    report.largestNearMiss = max(report.largestNearMiss, distance);
  }
}

void PointCheck::checkRow(std::uint32_t row, PointReport& report) const {
  const Model& model = problem_.model;
  const QQ& activity = report.activities[row];
  if (model.senses[row] == RowSense::equal) {
    const QQ miss = activity - model.rowLower[row];
    const bool hasModulus =
        !problem_.moduli.empty() && !NumberTraits<QQ>::isZero(problem_.moduli[row]);
    if (!hasModulus) return checkEquation(row, abs(miss), miss, report);
    const QQ& modulus = problem_.moduli[row];
    return checkEquation(row, distanceToInteger(miss / modulus) * abs(modulus),
                         NumberTraits<QQ>::remainder(miss, modulus), report);
  }
  if (activity < model.rowLower[row])
    report.violations.push_back({ViolationKind::row, row, model.rowLower[row] - activity});
  else if (activity > model.rowUpper[row])
    report.violations.push_back({ViolationKind::row, row, activity - model.rowUpper[row]});
}

QQ PointCheck::distanceToStep(std::uint32_t column, const QQ& value) const {
  if (value.isInteger()) return {};
  if (problem_.model.kinds[column] != ColumnKind::continuous) return distanceToInteger(value);
  if (problem_.decimals.empty() || problem_.decimals[column] > QQ(mostPlaces)) return {};
  const QQ power = powerOfTen(problem_.decimals[column]);
  return distanceToInteger(value * power) / power;
}

void PointCheck::checkColumn(std::uint32_t column, const QQ& value, PointReport& report) const {
  const Model& model = problem_.model;
  if (value < model.lower[column])
    report.violations.push_back({ViolationKind::lowerBound, column, model.lower[column] - value});
  if (value > model.upper[column])
    report.violations.push_back({ViolationKind::upperBound, column, value - model.upper[column]});
  QQ distance = distanceToStep(column, value);
  if (!distance.isZero())
    report.violations.push_back({ViolationKind::step, column, std::move(distance)});
}

std::string violationName(const Model& model, const Violation& violation) {
  constexpr std::array<std::string_view, 4> kinds{"row ", "lower bound of ", "upper bound of ",
                                                  "step of "};
  std::string name(kinds[static_cast<std::size_t>(violation.kind)]);
  return name +
         escaped((violation.kind == ViolationKind::row ? model.rowNames
                                                       : model.columnNames)[violation.index]);
}

}  // namespace starsift

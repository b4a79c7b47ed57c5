#include "support/oracles/PlainRecord.h"

#include <algorithm>
#include <sstream>

#include "support/oracles/GmpRational.h"

namespace starsift::oracle {

namespace {

std::size_t offset(Index index) {
  return static_cast<std::size_t>(index - 1);
}

Bound plainBound(const QQ& value) {
  if (value.isInf()) return {value.sign() ? 1 : -1, 0};
  return {0, test::gmpRational(value)};
}

Point plainPoint(const Vector<QQ>& vector) {
  Point point;
  for (const QQ& component : vector) point.push_back(test::gmpRational(component));
  return point;
}

std::vector<Bound> plainBounds(const Vector<QQ>& vector) {
  std::vector<Bound> bounds;
  for (const QQ& component : vector) bounds.push_back(plainBound(component));
  return bounds;
}

void takeRows(const Vanu<QQ>& problem, PlainRecord& record) {
  for (Index i = 1; i <= problem.At.rowCount(); ++i)
    record.targets.push_back({plainBound(problem.dt[i]), plainPoint(problem.At[i])});
  for (Index i = 1; i <= problem.Ag.rowCount(); ++i)
    record.equations.push_back(
        {plainPoint(problem.Ag[i]), test::gmpRational(problem.bg[i]),
         problem.qg.isSet() ? test::gmpRational(problem.qg[i]) : mpq_class(0)});
  for (Index i = 1; i <= problem.Au.rowCount(); ++i)
    record.inequations.push_back(
        {plainPoint(problem.Au[i]), plainBound(problem.lu[i]), plainBound(problem.ru[i])});
  record.targetColumns = problem.At.columnCount();
  record.equationColumns = problem.Ag.columnCount();
  record.inequationColumns = problem.Au.columnCount();
}

void takeVariables(const Vanu<QQ>& problem, PlainRecord& record) {
  record.decimals = plainPoint(problem.dx);
  record.lower = plainBounds(problem.lx);
  record.upper = plainBounds(problem.rx);
  record.kinds.assign(problem.fd.begin(), problem.fd.end());
  record.shift = plainPoint(problem.shift);
  record.units = plainPoint(problem.slackUnit);
  for (const auto& pair : problem.fixedVars)
    record.fixed.emplace_back(offset(pair.left), test::gmpRational(pair.right));
  for (const Index index : problem.swappedVars) record.swapped.push_back(offset(index));
}

std::string boundText(const Bound& bound) {
  if (bound.infinite != 0) return bound.infinite > 0 ? "inf" : "-inf";
  return fractionText(bound.value);
}

}  // namespace

PlainRecord plainRecord(const Vanu<QQ>& problem) {
  PlainRecord record;
  takeRows(problem, record);
  takeVariables(problem, record);
  record.thresholds = plainBounds(problem.kt);
  record.hasTargetRange = problem.atuValid;
  record.least = test::gmpRational(problem.ltu);
  record.greatest = test::gmpRational(problem.rtu);
  record.aggregate = plainPoint(problem.atu);
  record.slacks = static_cast<std::size_t>(problem.slackCount);
  record.deviations = static_cast<std::size_t>(problem.deviationCount);
  record.fixedTargets = problem.fixedTargets;
  record.lifted = problem.lifted;
  return record;
}

std::string recordText(const PlainRecord& record) {
  std::ostringstream text;
  for (const Target& target : record.targets)
    text << "target " << pointText(target.row) << " to " << boundText(target.goal) << "\n";
  for (const Equation& row : record.equations)
    text << pointText(row.row) << " = " << fractionText(row.value) << " modulo "
         << fractionText(row.modulus) << "\n";
  for (const Inequation& row : record.inequations)
    text << boundText(row.lower) << " <= " << pointText(row.row) << " <= " << boundText(row.upper)
         << "\n";
  for (std::size_t j = 0; j < record.variables(); ++j)
    text << boundText(record.lower[j]) << " <= x" << j << " <= " << boundText(record.upper[j])
         << "\n";
  text << "slacks " << record.slacks << ", deviations " << record.deviations << "\nshift "
       << pointText(record.shift) << "\nunits " << pointText(record.units) << "\ndecimals "
       << pointText(record.decimals) << "\naggregate " << pointText(record.aggregate)
       << (record.hasTargetRange ? " within " : " without ") << fractionText(record.least) << " .. "
       << fractionText(record.greatest) << "\n";
  for (const auto& [index, value] : record.fixed)
    text << "fixed x" << index << " = " << fractionText(value) << "\n";
  for (const std::size_t index : record.swapped) text << "swapped " << index << "\n";
  return text.str();
}

}  // namespace starsift::oracle

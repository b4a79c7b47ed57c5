#include "models/record/RowBuilder.h"

#include <algorithm>
#include <numeric>

namespace starsift {

std::uint32_t RowBuilder::column(std::string_view name) {
  const NameTable::Added added = model.columnNames.add(name);
  if (added.isNew) {
    model.kinds.push_back(ColumnKind::continuous);
    model.lower.emplace_back();
    model.upper.push_back(QQ::infinity());
    positions_.push_back(0);
  }
  return added.index;
}

void RowBuilder::addTerm(LinearTerms& terms, std::uint32_t column, const QQ& factor) {
  std::size_t& position = positions_[column];
  if (position == 0) {
    terms.columns.push_back(column);
    terms.coefficients.push_back(factor);
    position = terms.columns.size();
  } else {
    terms.coefficients[position - 1] += factor;
  }
}

void RowBuilder::endTerms(const LinearTerms& terms) {
  for (const std::uint32_t column : terms.columns) positions_[column] = 0;
}

void RowBuilder::setObjective(LinearTerms terms) {
  std::vector<std::size_t> order(terms.columns.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::sort(order.begin(), order.end(),
            [&terms](std::size_t a, std::size_t b) { return terms.columns[a] < terms.columns[b]; });
  for (const std::size_t k : order) {
    if (terms.coefficients[k].isZero()) continue;
    model.objective.columns.push_back(terms.columns[k]);
    model.objective.coefficients.push_back(std::move(terms.coefficients[k]));
  }
}

void RowBuilder::addRow(LinearTerms terms, RowSense sense, QQ lower, QQ upper) {
  for (std::size_t k = 0; k < terms.columns.size(); ++k) {
    if (terms.coefficients[k].isZero()) continue;
    entryColumns_.push_back(terms.columns[k]);
    entryValues_.append(terms.coefficients[k]);
  }
  rowEnds_.push_back(entryColumns_.size());
  model.senses.push_back(sense);
  model.rowLower.push_back(std::move(lower));
  model.rowUpper.push_back(std::move(upper));
}

bool RowBuilder::hasTermsOfLastRow(const LinearTerms& terms) const {
  std::size_t entry = rowEnds_.size() < 2 ? 0 : rowEnds_[rowEnds_.size() - 2];
  for (std::size_t k = 0; k < terms.columns.size(); ++k) {
    if (terms.coefficients[k].isZero()) continue;
    if (entry == entryColumns_.size() || entryColumns_[entry] != terms.columns[k] ||
        entryValues_[entry] != terms.coefficients[k])
      return false;
    ++entry;
  }
  return entry == entryColumns_.size();
}

bool RowBuilder::addLowerBound(const LinearTerms& terms, const QQ& lower) {
  if (lower > model.rowUpper.back() || !hasTermsOfLastRow(terms)) return false;
  model.senses.back() = RowSense::ranged;
  model.rowLower.back() = lower;
  return true;
}

void RowBuilder::finish(NameTable rowNames) {
  model.rowNames = std::move(rowNames);
  model.columnStart.assign(model.columnCount() + 1, 0);
  for (const std::uint32_t column : entryColumns_) ++model.columnStart[column + 1];
  std::partial_sum(model.columnStart.begin(), model.columnStart.end(), model.columnStart.begin());
  std::vector<std::size_t> next(model.columnStart.begin(), model.columnStart.end() - 1);
  model.entryRows.resize(entryColumns_.size());
  model.entryValues.resize(entryColumns_.size());
  std::size_t k = 0;
  for (std::size_t row = 0; row < rowEnds_.size(); ++row) {
    for (; k < rowEnds_[row]; ++k) {
      const std::size_t place = next[entryColumns_[k]]++;
      model.entryRows[place] = static_cast<std::uint32_t>(row);
      model.entryValues.set(place, entryValues_[k]);
    }
  }
  entryColumns_ = {};
  entryValues_ = {};
  rowEnds_ = {};
}

}  // namespace starsift

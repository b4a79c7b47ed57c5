#include "models/read/MpsRows.h"

#include <limits>
#include <utility>

#include "models/text/ModelError.h"
#include "models/text/NumberText.h"
#include "models/text/Words.h"

namespace starsift {

namespace {

constexpr std::uint32_t noRow = std::numeric_limits<std::uint32_t>::max();

}  // namespace

void MpsRows::append(std::string_view kind, std::string_view name, std::size_t line) {
  Kind known = Kind::free;
  if (equalsInAnyCase(kind, "E"))
    known = Kind::equal;
  else if (equalsInAnyCase(kind, "L"))
    known = Kind::less;
  else if (equalsInAnyCase(kind, "G"))
    known = Kind::greater;
  else if (!equalsInAnyCase(kind, "N"))
    throw ModelError(line, inQuotes(kind) + " is no kind of row, which is N, E, L or G");
  if (!model_.rowNames.add(name).isNew)
    throw ModelError(line, "the row " + inQuotes(name) + " comes a second time");
  kinds_.push_back(known);
  if (known == Kind::free) freeRowLines_.push_back(line);
  rightSides_.emplace_back();
  hasRightSide_.push_back(false);
  hasRange_.push_back(false);
}

void MpsRows::setObjective(std::string_view name, std::size_t line) {
  if (isObjectiveNamed_) throw ModelError(line, "the objective is named a second time");
  isObjectiveNamed_ = true;
  objectiveName_ = std::string(name);
  objectiveNameLine_ = line;
}

void MpsRows::setRightSide(std::uint32_t row, std::string_view value, std::size_t line) {
  if (hasRightSide_[row])
    throw ModelError(line, "the row " + inQuotes(model_.rowNames[row]) + " has two right sides");
  hasRightSide_[row] = true;
  rightSides_[row] = numbers_.read(value, line);
  if (kinds_[row] == Kind::free && objectiveSideLine_ == 0) objectiveSideLine_ = line;
}

void MpsRows::setRange(std::uint32_t row, std::string_view value, std::size_t line) {
  if (hasRange_[row])
    throw ModelError(line, "the row " + inQuotes(model_.rowNames[row]) + " has two ranges");
  hasRange_[row] = true;
  QQ range = numbers_.read(value, line);
  if (kinds_[row] == Kind::free)
    model_.remarks.push_back({line, "the range of " + inQuotes(model_.rowNames[row]) +
                                        ", a row of kind N, has no effect"});
  else
    ranges_.push_back({row, std::move(range)});
}

std::optional<std::uint32_t> MpsRows::objectiveRow() const {
  if (isObjectiveNamed_) {
    const auto row = model_.rowNames.find(objectiveName_);
    if (!row || kinds_[*row] != Kind::free)
      throw ModelError(objectiveNameLine_, "there is no row of kind N " + inQuotes(objectiveName_));
    return row;
  }
  for (std::uint32_t row = 0; row < kinds_.size(); ++row)
    if (kinds_[row] == Kind::free) return row;
  return std::nullopt;
}

void MpsRows::computeBounds() {
  for (std::uint32_t row = 0; row < kinds_.size(); ++row) {
    const QQ& side = rightSides_[row];
    const Kind kind = kinds_[row];
    model_.senses.push_back(kind == Kind::equal  ? RowSense::equal
                            : kind == Kind::less ? RowSense::less
                                                 : RowSense::greater);
    model_.rowLower.push_back(kind == Kind::less ? -QQ::infinity() : side);
    model_.rowUpper.push_back(kind == Kind::greater ? QQ::infinity() : side);
  }
  rightSides_ = {};
  for (const Range& range : ranges_) applyRange(range);
}

void MpsRows::applyRange(const Range& range) {
  QQ& lower = model_.rowLower[range.row];
  QQ& upper = model_.rowUpper[range.row];
  const Kind kind = kinds_[range.row];
  const bool isDownwards = kind == Kind::less || (kind == Kind::equal && !range.value.sign());
  if (isDownwards)
    lower = upper - abs(range.value);
  else
    upper = lower + abs(range.value);
  if (kind != Kind::equal || !range.value.isZero()) model_.senses[range.row] = RowSense::ranged;
}

void MpsRows::takeObjective(std::uint32_t row) {
  Objective& objective = model_.objective;
  objective.exists = true;
  objective.name = std::string(model_.rowNames[row]);
  objective.constant = -model_.rowUpper[row];
  if (!objective.constant.isZero())
    model_.remarks.push_back(
        {objectiveSideLine_, "the right side of the objective row " + inQuotes(objective.name) +
                                 " makes the constant " + numberText(objective.constant)});
}

void MpsRows::finish() {
  const std::optional<std::uint32_t> objective = objectiveRow();
  computeBounds();
  if (objective) takeObjective(*objective);
  if (!freeRowLines_.empty()) removeFreeRows(objective);
}

void MpsRows::removeFreeRows(std::optional<std::uint32_t> objective) {
  // New indices of the rows that stay.
  std::vector<std::uint32_t> moved(kinds_.size(), noRow);
  NameTable names;
  std::size_t freeRows = 0;
  for (std::uint32_t row = 0; row < kinds_.size(); ++row) {
    if (kinds_[row] == Kind::free) {
      if (row != *objective)
        model_.remarks.push_back(
            {freeRowLines_[freeRows], "the row " + inQuotes(model_.rowNames[row]) +
                                          " of kind N is not the objective and has no effect"});
      ++freeRows;
      continue;
    }
    const std::uint32_t place = moved[row] = names.add(model_.rowNames[row]).index;
    model_.senses[place] = model_.senses[row];
    if (place == row) continue;
    model_.rowLower[place] = std::move(model_.rowLower[row]);
    model_.rowUpper[place] = std::move(model_.rowUpper[row]);
  }
  model_.rowNames = std::move(names);
  model_.senses.resize(model_.rowCount());
  model_.rowLower.resize(model_.rowCount());
  model_.rowUpper.resize(model_.rowCount());

  std::size_t kept = 0;
  std::size_t k = 0;
  for (std::uint32_t j = 0; j < model_.columnCount(); ++j) {
    for (; k < model_.columnStart[j + 1]; ++k) {
      const std::uint32_t row = model_.entryRows[k];
      if (objective && row == *objective) {
        model_.objective.columns.push_back(j);
        model_.objective.coefficients.push_back(model_.entryValues[k]);
      } else if (moved[row] != noRow) {
        model_.entryRows[kept] = moved[row];
        model_.entryValues.copy(k, kept);
        ++kept;
      }
    }
    model_.columnStart[j + 1] = kept;
  }
  model_.entryRows.resize(kept);
  model_.entryValues.resize(kept);
}

}  // namespace starsift

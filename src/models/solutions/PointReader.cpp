#include "models/solutions/PointReader.h"

#include <algorithm>
#include <limits>
#include <numeric>
#include <utility>

#include "models/solutions/DefaultNames.h"
#include "models/text/ModelError.h"
#include "models/text/ModelNumber.h"
#include "models/text/Words.h"

namespace starsift {

namespace {

/// `name` with each blank replaced, or removed for '\0'.
std::string withoutBlanks(std::string_view name, char replacement) {
  std::string result;
  for (const char c : name) {
    if (c != ' ')
      result += c;
    else if (replacement != '\0')
      result += replacement;
  }
  return result;
}

/// Insertions, deletions and replacements that lead from a to b (V. I. Levenshtein, 1966).
std::size_t editDistance(std::string_view a, std::string_view b) {
  std::vector<std::size_t> row(b.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 1; i <= a.size(); ++i) {
    std::size_t diagonal = std::exchange(row[0], i);
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const std::size_t replaced = diagonal + (a[i - 1] == b[j - 1] ? 0 : 1);
      diagonal = row[j];
      row[j] = std::min({row[j] + 1, row[j - 1] + 1, replaced});
    }
  }
  return row.back();
}

/// Names that are compared when a name is unknown, and the bytes of each.
constexpr std::size_t mostCompared = 100'000;
constexpr std::size_t mostComparedBytes = 64;
constexpr std::uint32_t noColumn = std::numeric_limits<std::uint32_t>::max();

class PointReader {
 public:
  PointReader(const Model& model, const SolverFormat& format, const RoundingOptions& options)
      : model_(model), format_(format), options_(options), match_(model) {}

  ReadPoint read(const WrittenPoint& point);

 private:
  std::optional<std::uint32_t> columnOf(const WrittenValue& value) const;
  void take(const WrittenValue& value);
  void requireAll(const WrittenPoint& point) const;
  void requireDetermined(std::uint32_t column, const WrittenValue& value) const;
  void roundInteger(std::uint32_t column);
  void snap(std::uint32_t column);

  const Model& model_;
  const SolverFormat& format_;
  const RoundingOptions& options_;
  ColumnMatch match_;
  NumberReader numbers_;
  ReadPoint point_;
  std::vector<bool> isSet_;
};

std::optional<std::uint32_t> PointReader::columnOf(const WrittenValue& value) const {
  if (format_.isByNumber) {
    const auto index = indexOfNumber(value.column, model_.columnCount());
    if (!index)
      throw ModelError(value.line, "the model has no column number " + excerpt(value.column));
    return index;
  }
  if (const auto column = match_.find(value.column)) return column;
  if (format_.namesUnusedColumns) return std::nullopt;
  const std::string nearest = match_.nearest(value.column);
  throw ModelError(value.line,
                   "the model has no column " + inQuotes(value.column) +
                       (nearest.empty() ? "" : "; the nearest is " + inQuotes(nearest)));
}

void PointReader::requireDetermined(std::uint32_t column, const WrittenValue& value) const {
  if (options_.keepRounded || format_.digits == 0 || model_.kinds[column] == ColumnKind::continuous)
    return;
  const std::optional<NumberForm> form = scanNumber(value.number);
  if (!form || !form->hasExponent) return;
  std::string_view digits = form->integer;
  digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size()));
  const auto wholeDigits = static_cast<std::int64_t>(digits.size()) + form->exponent;
  if (digits.empty() || wholeDigits <= static_cast<std::int64_t>(format_.digits)) return;
  throw ModelError(value.line, "the integer " + excerpt(value.number) + " of " +
                                   inQuotes(model_.columnNames[column]) +
                                   " is not determined by the " + std::to_string(format_.digits) +
                                   " digits of the format (see --keep-rounded)");
}

void PointReader::take(const WrittenValue& value) {
  const std::optional<std::uint32_t> column = columnOf(value);
  if (!column) {
    ++point_.unused;
    return;
  }
  if (isSet_[*column])
    throw ModelError(value.line, "the column " + inQuotes(value.column) + " has two values");
  isSet_[*column] = true;
  requireDetermined(*column, value);
  point_.x[*column] = numbers_.read(value.number, value.line);
}

void PointReader::requireAll(const WrittenPoint& point) const {
  if (format_.leavesZerosOut) return;
  const auto missing = std::find(isSet_.begin(), isSet_.end(), false);
  if (missing == isSet_.end()) return;
  const auto column = static_cast<std::size_t>(missing - isSet_.begin());
  throw ModelError(point.line, "the column " + inQuotes(model_.columnNames[column]) +
                                   " has no value, and the format leaves none out");
}

void PointReader::roundInteger(std::uint32_t column) {
  ++point_.integerCount;
  QQ& value = point_.x[column];
  if (value.isInteger()) return;
  const QQ nearest = floor(value + QQ(1, 2));
  const QQ change = abs(value - nearest);
  if (change > options_.integrality) {
    point_.fractional.push_back(column);
  } else {
    point_.rounded.add(column, change);
    value = nearest;
  }
}

void PointReader::snap(std::uint32_t column) {
  QQ& value = point_.x[column];
  const QQ& lower = model_.lower[column];
  const QQ& upper = model_.upper[column];
  const bool isBelow = value < lower;
  if (!isBelow && value <= upper) return;
  const QQ& bound = isBelow ? lower : upper;
  const QQ change = abs(value - bound);
  if (change > options_.snap) return;
  point_.snapped.add(column, change);
  value = bound;
}

ReadPoint PointReader::read(const WrittenPoint& point) {
  point_.x.resize(model_.columnCount());
  isSet_.resize(model_.columnCount());
  for (const WrittenValue& value : point.values) take(value);
  requireAll(point);
  for (std::uint32_t j = 0; j < model_.columnCount(); ++j) {
    if (model_.kinds[j] == ColumnKind::continuous)
      snap(j);
    else
      roundInteger(j);
  }
  return std::move(point_);
}

}  // namespace

void ValueChanges::add(std::uint32_t changed, const QQ& change) {
  ++count;
  if (change <= largest) return;
  largest = change;
  column = changed;
}

void ColumnMatch::addVariant(const std::string& name, std::uint32_t column) const {
  const NameTable::Added added = variants_.add(name);
  if (added.isNew)
    variantColumns_.push_back(column);
  else if (variantColumns_[added.index] != column)
    variantColumns_[added.index] = noColumn;
}

void ColumnMatch::addVariants() const {
  hasVariants_ = true;
  for (std::uint32_t j = 0; j < model_.columnCount(); ++j) {
    const std::string_view name = model_.columnNames[j];
    if (name.find(' ') == std::string_view::npos) continue;
    addVariant(withoutBlanks(name, '\0'), j);
    addVariant(withoutBlanks(name, '_'), j);
  }
}

std::optional<std::uint32_t> ColumnMatch::find(std::string_view name) const {
  if (const auto column = model_.columnNames.find(name)) return column;
  if (!hasVariants_) addVariants();
  const auto variant = variants_.find(name);
  if (!variant || variantColumns_[*variant] == noColumn) return std::nullopt;
  return variantColumns_[*variant];
}

std::string ColumnMatch::nearest(std::string_view name) const {
  std::size_t least = std::numeric_limits<std::size_t>::max();
  std::string nearest;
  for (std::size_t j = 0; j < std::min(model_.columnCount(), mostCompared); ++j) {
    const std::string_view candidate = model_.columnNames[j];
    const std::size_t distance =
        editDistance(name.substr(0, mostComparedBytes), candidate.substr(0, mostComparedBytes));
    if (distance >= least) continue;
    least = distance;
    nearest = std::string(candidate);
  }
  return nearest;
}

void requireSize(const Model& model, const WrittenPoint& point) {
  if (!point.size) return;
  const std::size_t rows = model.rowCount();
  // In an .lp file a row with two bounds is two rows.
  const auto ranged = static_cast<std::size_t>(
      std::count(model.senses.begin(), model.senses.end(), RowSense::ranged));
  const bool hasRows = point.size->rows == rows || point.size->rows == rows + ranged;
  if (hasRows && point.size->columns == model.columnCount()) return;
  throw ModelError(point.line, "the file is about " + counted(point.size->rows, "row") + " and " +
                                   counted(point.size->columns, "column") + ", the model has " +
                                   std::to_string(rows) + " and " +
                                   std::to_string(model.columnCount()));
}

ReadPoint readPoint(const Model& model, const SolverFormat& format, const WrittenPoint& point,
                    const RoundingOptions& options) {
  requireSize(model, point);
  const auto numbered = pointByNumber(model.columnNames, model.isFromLp, point);
  if (!numbered) return PointReader(model, format, options).read(point);
  SolverFormat byNumber = format;
  byNumber.isByNumber = true;
  ReadPoint result = PointReader(model, byNumber, options).read(*numbered);
  result.isByIndex = true;
  return result;
}

}  // namespace starsift

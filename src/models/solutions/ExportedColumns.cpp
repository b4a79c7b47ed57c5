#include "models/solutions/ExportedColumns.h"

#include <string>
#include <utility>

#include "models/solutions/DefaultNames.h"
#include "models/text/ModelError.h"
#include "models/text/Words.h"
#include "models/write/ModelWriter.h"
#include "models/write/PlainModel.h"

namespace starsift {

ExportedColumns::ExportedColumns(const Problem& problem, std::optional<ModelFormat> format)
    : mayBeLp_(!format || *format == ModelFormat::lp), steps_(columnSteps(problem)) {
  Model plain = plainModel(problem);
  for (const ModelFormat written : {ModelFormat::mps, ModelFormat::lp})
    if (!format || *format == written) names_.push_back(writtenNames(plain.columnNames, written));
  const std::size_t count = problem.model.columnCount();
  for (std::size_t j = 0; j < count; ++j) columns_.columnNames.add(plain.columnNames[j]);
  columns_.kinds.assign(plain.kinds.begin(), plain.kinds.begin() + static_cast<long>(count));
  columns_.lower.assign(plain.lower.begin(), plain.lower.begin() + static_cast<long>(count));
  columns_.upper.assign(plain.upper.begin(), plain.upper.begin() + static_cast<long>(count));
  plain_.columnNames = std::move(plain.columnNames);
  plain_.rowNames = std::move(plain.rowNames);
  plain_.senses = std::move(plain.senses);
}

std::optional<std::uint32_t> ExportedColumns::find(const SolverFormat& format,
                                                   const WrittenValue& value) const {
  if (format.isByNumber) return indexOfNumber(value.column, names_.front().size());
  std::optional<std::uint32_t> found;
  for (const NameTable& names : names_) {
    const std::optional<std::uint32_t> column = names.find(value.column);
    if (found && column && *found != *column)
      throw ModelError(value.line, inQuotes(value.column) +
                                       " is another column in a .lp file than in a .mps file "
                                       "(--format says which was solved)");
    if (column) found = column;
  }
  return found;
}

ReadPoint ExportedColumns::read(const SolverFormat& format, const WrittenPoint& point,
                                const RoundingOptions& options) const {
  requireSize(plain_, point);
  const auto numbered = pointByNumber(names_.back(), mayBeLp_, point);
  SolverFormat written = format;
  written.isByNumber = format.isByNumber || numbered;
  SolverFormat named = format;
  named.isByNumber = false;
  WrittenPoint own{point.status, {}, point.line};
  for (const WrittenValue& value : numbered ? numbered->values : point.values) {
    const std::optional<std::uint32_t> column = find(written, value);
    if (!column && written.isByNumber)
      throw ModelError(value.line, "the model has no column number " + excerpt(value.column));
    if (column && *column >= columns_.columnCount()) continue;
    const std::string name(column ? columns_.columnNames[*column] : value.column);
    own.values.push_back({name, value.number, value.line});
  }
  ReadPoint result = readPoint(columns_, named, own, options);
  result.isByIndex = numbered.has_value();
  for (std::size_t j = 0; j < steps_.size(); ++j) result.x[j] *= steps_[j];
  return result;
}

}  // namespace starsift

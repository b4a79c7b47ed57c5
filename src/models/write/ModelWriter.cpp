#include "models/write/ModelWriter.h"

#include <string_view>

#include "models/read/LpLexer.h"
#include "models/text/NumberText.h"
#include "models/write/FittingNames.h"
#include "models/write/LpWriter.h"
#include "models/write/MpsWriter.h"

namespace starsift {

namespace {

/// Numbers by what other programs can read of them.
struct NumberCounts {
  void add(const QQ& value) {
    if (isDouble(value)) return;
    ++beyondDouble;
    if (numberText(value).find('/') != std::string::npos) ++fractions;
  }

  std::size_t beyondDouble = 0;
  std::size_t fractions = 0;
};

NumberCounts countNumbers(const Model& model) {
  NumberCounts counts;
  for (const auto* values : {&model.lower, &model.upper, &model.rowLower, &model.rowUpper,
                             &model.objective.coefficients})
    for (const QQ& value : *values) counts.add(value);
  for (std::size_t k = 0; k < model.entryCount(); ++k) counts.add(model.entryValues[k]);
  counts.add(model.objective.constant);
  return counts;
}

using NameFits = bool (*)(std::string_view);

NameFits nameFits(ModelFormat format) {
  return format == ModelFormat::mps ? isMpsName : isLpName;
}

void tell(WrittenModel& written, std::size_t count, const std::string& text) {
  if (count > 0) written.remarks.push_back({0, text + ": " + std::to_string(count)});
}

}  // namespace

NameTable writtenNames(const NameTable& names, ModelFormat format) {
  std::size_t changed = 0;
  return fittingNames(names, nameFits(format), changed);
}

WrittenModel writeModel(const Model& model, ModelFormat format) {
  WrittenModel written;
  const NameFits fits = nameFits(format);
  WritableNames names;
  std::size_t changed = 0;
  names.columns = fittingNames(model.columnNames, fits, changed);
  names.rows = fittingNames(model.rowNames, fits, changed);
  names.objective = model.objective.name.empty() ? "obj" : model.objective.name;
  if (!fits(names.objective)) {
    names.objective = "obj";
    ++changed;
  }
  while (names.rows.find(names.objective)) names.objective += '_';
  tell(written, changed, "names that the format can't hold and that were changed");
  const NumberCounts counts = countNumbers(model);
  tell(written, counts.beyondDouble, "numbers that no double holds, which other programs round");
  tell(written, counts.fractions,
       "numbers without a decimal, written as fractions, which few programs read");
  written.text = format == ModelFormat::mps ? mpsText(model, names) : lpText(model, names);
  return written;
}

}  // namespace starsift

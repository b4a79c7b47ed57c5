#include "models/record/ColumnChecks.h"

#include <string>

#include "models/text/ModelError.h"
#include "models/text/NumberText.h"
#include "models/text/Words.h"

namespace starsift {

void requireSomeValue(const Model& model, std::uint32_t column, std::size_t line) {
  const QQ& lower = model.lower[column];
  const QQ& upper = model.upper[column];
  const std::string name = escaped(model.columnNames[column]);
  if (lower > upper)
    throw ModelError(
        line, name + " has no value: lower " + numberText(lower) + " > upper " + numberText(upper));
  if (lower == upper && lower.isInf()) throw ModelError(line, name + " has no finite value");
}

}  // namespace starsift

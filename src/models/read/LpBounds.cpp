#include "models/read/LpBounds.h"

#include <string>
#include <utility>

#include "models/record/ColumnChecks.h"
#include "models/text/ModelError.h"

namespace starsift {

void LpBounds::touch(std::uint32_t column, unsigned flags, std::size_t line) {
  if (flags_.size() < model_.columnCount()) {
    flags_.resize(model_.columnCount());
    lines_.resize(model_.columnCount());
  }
  flags_[column] = static_cast<std::uint8_t>(flags_[column] | flags);
  lines_[column] = line;
}

void LpBounds::setFree(std::uint32_t column, std::size_t line) {
  touch(column, lowerIsSet | upperIsSet, line);
  model_.lower[column] = -QQ::infinity();
  model_.upper[column] = QQ::infinity();
}

void LpBounds::setBound(std::uint32_t column, LpTokenKind relation, QQ value, std::size_t line) {
  if (!value.isInf() && !options_.infinity.isInf() && abs(value) >= options_.infinity) {
    if (infiniteBounds_++ == 0) firstInfinite_ = line;
    value.setInf(value.sign());
  }
  const bool setsLower = relation != LpTokenKind::less;
  const bool setsUpper = relation != LpTokenKind::greater;
  touch(column, (setsLower ? unsigned{lowerIsSet} : 0U) | (setsUpper ? unsigned{upperIsSet} : 0U),
        line);
  if (setsLower) model_.lower[column] = value;
  if (setsUpper) model_.upper[column] = std::move(value);
}

void LpBounds::setKind(std::uint32_t column, ColumnKind kind, std::size_t line) {
  touch(column, 0, line);
  if (model_.kinds[column] != ColumnKind::binary) model_.kinds[column] = kind;
}

void LpBounds::restrictBinary(std::uint32_t column) {
  QQ& lower = model_.lower[column];
  QQ& upper = model_.upper[column];
  if ((flags_[column] & lowerIsSet) == 0) lower = QQ::zero();
  if ((flags_[column] & upperIsSet) == 0) upper = QQ::one();
  if (lower < QQ::zero() || upper > QQ::one())
    throw ModelError(lines_[column], std::string(model_.columnNames[column]) +
                                         " is binary but has bounds beyond 0 and 1");
}

void LpBounds::finish() {
  flags_.resize(model_.columnCount());
  lines_.resize(model_.columnCount());
  for (std::uint32_t j = 0; j < model_.columnCount(); ++j) {
    if (model_.kinds[j] == ColumnKind::binary) restrictBinary(j);
    requireSomeValue(model_, j, lines_[j]);
  }
  if (infiniteBounds_ > 0)
    model_.remarks.push_back(
        {firstInfinite_, "bounds of large magnitude that count as infinite (see --infinity): " +
                             std::to_string(infiniteBounds_)});
}

}  // namespace starsift

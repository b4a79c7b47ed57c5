#include "models/read/MpsColumns.h"

#include <array>
#include <string>

#include "models/record/ColumnChecks.h"
#include "models/text/ModelError.h"
#include "models/text/NumberText.h"
#include "models/text/Words.h"

namespace starsift {

namespace {

enum class BoundKind {
  upper,
  lower,
  fixed,
  free,
  minusInfinity,
  plusInfinity,
  binary,
  lowerInteger,
  upperInteger
};

struct BoundCode {
  std::string_view code;
  BoundKind kind;
};
constexpr std::array<BoundCode, 9> boundCodes{{{"UP", BoundKind::upper},
                                               {"LO", BoundKind::lower},
                                               {"FX", BoundKind::fixed},
                                               {"FR", BoundKind::free},
                                               {"MI", BoundKind::minusInfinity},
                                               {"PL", BoundKind::plusInfinity},
                                               {"BV", BoundKind::binary},
                                               {"LI", BoundKind::lowerInteger},
                                               {"UI", BoundKind::upperInteger}}};

BoundKind boundKind(std::string_view code, std::size_t line) {
  for (const BoundCode& known : boundCodes)
    if (equalsInAnyCase(code, known.code)) return known.kind;
  if (equalsInAnyCase(code, "SC") || equalsInAnyCase(code, "SI"))
    throw ModelError(line, "semi-continuous columns (" + std::string(code) + ") are not supported");
  throw ModelError(line, inQuotes(code) + " is no kind of bound");
}

}  // namespace

void MpsColumns::append(bool isBetweenMarkers) {
  model_.kinds.push_back(isBetweenMarkers ? ColumnKind::integer : ColumnKind::continuous);
  model_.lower.emplace_back();
  model_.upper.push_back(QQ::infinity());
  flags_.push_back(isBetweenMarkers ? isMarked : 0);
}

QQ MpsColumns::boundOf(std::string_view value, std::uint32_t column, std::size_t line) {
  bool isPositive = true;
  if (isInfinityWord(value, isPositive)) return isPositive ? QQ::infinity() : -QQ::infinity();
  QQ bound = numbers_.read(value, line);
  if (options_.infinity.isInf() || abs(bound) < options_.infinity) return bound;
  infinite_.add(line, column);
  return bound.sign() ? QQ::infinity() : -QQ::infinity();
}

void MpsColumns::setSides(std::uint32_t column, unsigned sides, std::size_t line) {
  if ((flags_[column] & sides) != 0)
    throw ModelError(line, "a bound of " + inQuotes(model_.columnNames[column]) + " is set twice");
  flags_[column] = static_cast<std::uint8_t>(flags_[column] | sides);
  if (lines_.empty()) lines_.resize(model_.columnCount());
  lines_[column] = line;
}

void MpsColumns::setBound(std::string_view code, std::uint32_t column, std::string_view value,
                          std::size_t line) {
  const BoundKind kind = boundKind(code, line);
  QQ& lower = model_.lower[column];
  QQ& upper = model_.upper[column];
  switch (kind) {
    case BoundKind::upper:
    case BoundKind::upperInteger:
      setSides(column, upperIsSet, line);
      upper = boundOf(value, column, line);
      break;
    case BoundKind::lower:
    case BoundKind::lowerInteger:
      setSides(column, lowerIsSet, line);
      lower = boundOf(value, column, line);
      break;
    case BoundKind::fixed:
      setSides(column, lowerIsSet | upperIsSet, line);
      lower = upper = boundOf(value, column, line);
      break;
    case BoundKind::free:
      setSides(column, lowerIsSet | upperIsSet, line);
      lower = -QQ::infinity();
      break;
    case BoundKind::minusInfinity:
      setSides(column, lowerIsSet, line);
      lower = -QQ::infinity();
      break;
    case BoundKind::plusInfinity:
      setSides(column, upperIsSet, line);
      break;
    case BoundKind::binary:
      setSides(column, lowerIsSet | upperIsSet, line);
      upper = QQ(1);
      model_.kinds[column] = ColumnKind::binary;
  }
  if (kind == BoundKind::lowerInteger || kind == BoundKind::upperInteger)
    model_.kinds[column] = ColumnKind::integer;
}

void MpsColumns::applyDefaults(std::uint32_t column) {
  const std::uint8_t flags = flags_[column];
  if (flags == isMarked) {
    model_.upper[column] = options_.integerUpper;
    unbounded_.add(0, column);
  }
  const bool isBelowZero = model_.upper[column] < QQ::zero();
  if (isBelowZero && (flags & upperIsSet) != 0 && (flags & lowerIsSet) == 0) {
    model_.lower[column] = -QQ::infinity();
    belowZero_.add(lines_[column], column);
  }
}

void MpsColumns::finish() {
  for (std::uint32_t j = 0; j < model_.columnCount(); ++j) {
    applyDefaults(j);
    requireSomeValue(model_, j, lines_.empty() ? 0 : lines_[j]);
  }
  remark(infinite_, "bounds of large magnitude that count as infinite (see --infinity)");
  remark(belowZero_, "upper bounds below 0 without a lower bound, which then is -inf");
  remark(unbounded_, "integer columns without any bound, which get the upper bound " +
                         numberText(options_.integerUpper) + " (see --integer-upper)");
}

void MpsColumns::remark(const ColumnTally& tally, const std::string& text) {
  if (tally.count == 0) return;
  model_.remarks.push_back({tally.firstLine, text + ": " + std::to_string(tally.count) +
                                                 ", the first of " +
                                                 inQuotes(model_.columnNames[tally.firstColumn])});
}

}  // namespace starsift

// Building a model from rows, as LP and OPB files have them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "models/record/Model.h"

namespace starsift {

/// The terms of one linear expression: columns and coefficients, a repeated column added to its
/// first term.
struct LinearTerms {
  std::vector<std::uint32_t> columns;
  std::vector<QQ> coefficients;
  QQ constant;
};

/// Collects columns in the order of their first use, and rows. The model is complete after
/// finish().
class RowBuilder {
 public:
  /// The column of that name, which is made if it isn't there: continuous, from 0 on.
  std::uint32_t column(std::string_view name);

  /// terms += factor * column.
  void addTerm(LinearTerms& terms, std::uint32_t column, const QQ& factor);
  /// To be called when an expression is complete, before the terms of the next one.
  void endTerms(const LinearTerms& terms);

  /// Terms with the coefficient 0 and the constant are dropped.
  void setObjective(LinearTerms terms);
  /// Adds a row with these terms, whose constant is dropped; its name is given in finish().
  void addRow(LinearTerms terms, RowSense sense, QQ lower, QQ upper);
  /// Gives the last row, whose sense is `less`, a lower bound too if these are its terms in their
  /// order. False if they aren't, or if no value would be left; nothing has changed then.
  bool addLowerBound(const LinearTerms& terms, const QQ& lower);

  /// Sorts the entries by columns. `rowNames` has one name per row.
  void finish(NameTable rowNames);

  Model model;

 private:
  bool hasTermsOfLastRow(const LinearTerms& terms) const;

  /// Position + 1 of each column in the terms that are being collected, 0 if it isn't there.
  std::vector<std::size_t> positions_;
  std::vector<std::size_t> rowEnds_;
  std::vector<std::uint32_t> entryColumns_;
  NumberList entryValues_;
};

}  // namespace starsift

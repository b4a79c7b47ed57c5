// From the values that a solver wrote to a point of the model: names are matched, integers rounded.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "models/record/Model.h"
#include "models/solutions/SolverFile.h"

namespace starsift {

struct RoundingOptions {
  /// A value of an integer column at most this far from an integer is that integer.
  QQ integrality = QQ(1, 100'000);
  /// A value of a continuous column at most this far beyond a bound is that bound.
  QQ snap = QQ(1, 1'000'000'000);
  /// Takes integers that the format can't hold as they were written, instead of refusing them.
  bool keepRounded = false;
};

/// How many values were changed, and which one by the most.
struct ValueChanges {
  void add(std::uint32_t changed, const QQ& change);

  std::size_t count = 0;
  QQ largest;
  std::uint32_t column = 0;
};

/// A point and what was changed of its written values.
struct ReadPoint {
  std::vector<QQ> x;
  std::size_t integerCount = 0;
  ValueChanges rounded;
  ValueChanges snapped;
  /// Integer columns whose values are too far from an integer; they are kept.
  std::vector<std::uint32_t> fractional;
  /// True if the file has names that CBC made up, so that the columns were taken by their indices.
  bool isByIndex = false;
  /// Values of columns that the model doesn't have.
  std::size_t unused = 0;
};

/// Finds columns by the names in solution files, where blanks may be missing or be underscores.
class ColumnMatch {
 public:
  /// `model` must outlive the match.
  explicit ColumnMatch(const Model& model) : model_(model) {}

  /// The column, if there is exactly one that fits.
  std::optional<std::uint32_t> find(std::string_view name) const;
  /// The name of the model that is most like this one; empty if it has no columns.
  std::string nearest(std::string_view name) const;

 private:
  void addVariant(const std::string& name, std::uint32_t column) const;
  void addVariants() const;

  const Model& model_;
  /// The names with blanks in other spellings and their columns, noColumn where several have one;
  /// made on first use.
  mutable NameTable variants_;
  mutable std::vector<std::uint32_t> variantColumns_;
  mutable bool hasVariants_ = false;
};

/// ModelError if the file says another size than the model has for GLPK.
void requireSize(const Model& model, const WrittenPoint& point);

/// ModelError for another size, unknown columns, columns that are missing or come twice, malformed
/// values.
ReadPoint readPoint(const Model& model, const SolverFormat& format, const WrittenPoint& point,
                    const RoundingOptions& options);

}  // namespace starsift

#include "support/generators/ModelGenerators.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "models/record/RowBuilder.h"
#include "models/text/ModelNumber.h"

namespace starsift::test {

namespace {

/// From `least` up to `end` - 1, whatever the size of the case.
int between(int least, int end) {
  return *rc::gen::resize(rc::kNominalSize, rc::gen::inRange(least, end));
}

/// Names that look like words of the formats, and others.
rc::Gen<std::string> arbitraryName() {
  return rc::gen::element<std::string>(
      "x", "y", "z", "x1", "x(1,2)", "x[1]", "RHS", "ROWS", "ENDATA", "end", "free", "inf", "e1",
      "st", "max", "bin", "12", "1x", ".a", "a b", "a_b", "'MARKER'", "$x", "a+b", "a-b", "a:b",
      "a<b",
      "gr\xC3\xB6\xC3\x9F"
      "e",
      "\xF6", "obj", "R1", "R2", "a*b", "2^3", "Bounds", "*c", std::string(70, 'n'));
}

template <class Table>
void addNames(Table& table, std::size_t count) {
  while (table.size() < count) {
    std::string name = *arbitraryName();
    while (table.find(name)) name += *rc::gen::element('a', '1', '_', '.');
    table.add(name);
  }
}

struct Bounds {
  QQ lower;
  QQ upper;
};

Bounds arbitraryBounds() {
  QQ a = *arbitraryNumber();
  QQ b = *arbitraryNumber();
  if (a > b) std::swap(a, b);
  switch (between(0, 7)) {
    case 0:
      return {QQ(0), QQ::infinity()};
    case 1:
      return {-QQ::infinity(), QQ::infinity()};
    case 2:
      return {-QQ::infinity(), b};
    case 3:
      return {a, QQ::infinity()};
    case 4:
      return {a, a};
    case 5:
      return {QQ(0), abs(b)};
    default:
      return {a, b};
  }
}

void addColumns(RowBuilder& builder, std::size_t count) {
  NameTable names;
  addNames(names, count);
  for (std::size_t j = 0; j < count; ++j) {
    builder.column(names[j]);
    Bounds bounds = arbitraryBounds();
    auto kind = static_cast<ColumnKind>(between(0, 3));
    if (kind == ColumnKind::binary) bounds = {QQ(0), QQ(1)};
    builder.model.kinds[j] = kind;
    builder.model.lower[j] = bounds.lower;
    builder.model.upper[j] = bounds.upper;
  }
}

LinearTerms arbitraryTerms(RowBuilder& builder) {
  LinearTerms terms;
  for (std::uint32_t j = 0; j < builder.model.columnCount(); ++j)
    if (between(0, 3) > 0) builder.addTerm(terms, j, *arbitraryNumber());
  builder.endTerms(terms);
  return terms;
}

bool hasEntries(const LinearTerms& terms) {
  return std::any_of(terms.coefficients.begin(), terms.coefficients.end(),
                     [](const QQ& value) { return !value.isZero(); });
}

/// A row without entries admits 0.
void addRow(RowBuilder& builder) {
  const auto sense = static_cast<RowSense>(between(0, 4));
  LinearTerms terms = arbitraryTerms(builder);
  const QQ side = hasEntries(terms) ? *arbitraryNumber() : QQ();
  const QQ other = sense == RowSense::ranged ? side + abs(*arbitraryNumber()) : side;
  builder.addRow(std::move(terms), sense, sense == RowSense::less ? -QQ::infinity() : side,
                 sense == RowSense::greater ? QQ::infinity() : other);
}

Model makeModel(ModelUse use) {
  RowBuilder builder;
  addColumns(builder, static_cast<std::size_t>(between(1, 7)));
  NameTable rowNames;
  addNames(rowNames, static_cast<std::size_t>(between(use == ModelUse::opt ? 1 : 0, 6)));
  for (std::size_t i = 0; i < rowNames.size(); ++i) addRow(builder);
  Objective& objective = builder.model.objective;
  // An LP file has an objective, and an MPS file without rows needs one for its columns.
  const bool mayMiss = use == ModelUse::opt || (use == ModelUse::mps && rowNames.size() > 0);
  objective.exists = !mayMiss || between(0, 4) > 0;
  if (objective.exists) {
    objective.name = "cost of all";
    objective.sense = static_cast<ObjectiveSense>(between(0, 2));
    objective.constant = *rc::gen::element(QQ(0), QQ(5), QQ(-7, 2));
    LinearTerms terms = arbitraryTerms(builder);
    builder.setObjective(std::move(terms));
  }
  if (use != ModelUse::lp) builder.model.name = *rc::gen::element<std::string>("", "m", "a model");
  builder.finish(std::move(rowNames));
  return std::move(builder.model);
}

}  // namespace

rc::Gen<QQ> arbitraryNumber() {
  return rc::gen::exec([] {
    const long n = between(-50, 50);
    switch (between(0, 5)) {
      case 0:
        return QQ(n, 1000);
      case 1:
        return QQ(n, 7);
      case 2:
        return parseNumber("-123456789012345678901234567890.25").value() * QQ(n);
      case 3:
        return QQ(n, 1L << 40);
      default:
        return QQ(n);
    }
  });
}

rc::Gen<Model> arbitraryModel(ModelUse use) {
  return rc::gen::exec([use] { return makeModel(use); });
}

}  // namespace starsift::test

// Products of a row with a point, by the share of entries that are not 0.
#include <algorithm>
#include <numeric>

#include "Benchmarks.h"
#include "numbers/VectorQQ.h"
#include "stars/ScaledRow.h"
#include "support/Register.h"
#include "support/Samples.h"

namespace starsift::bench {

namespace {

using benchmark::State;

constexpr std::size_t columns = 1000;

/// Texts of a row: "0" but for `percent` of the entries.
std::vector<std::string> rowTexts(unsigned percent, MakeText make) {
  Random random(percent);
  std::vector<std::string> row(columns, "0");
  for (std::size_t j = 0; j < columns; ++j)
    if (below(random, 100) < percent) row[j] = make(random);
  return row;
}

template <class Number>
Vector<Number> vectorOf(const std::vector<std::string>& texts) {
  Vector<Number> vector(static_cast<Index>(texts.size()));
  std::transform(texts.begin(), texts.end(), vector.begin(), fromText<Number>);
  return vector;
}

void addLoop(const std::string& input, const std::string& subject, auto product) {
  add("dot_product", input, subject, [product](State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(product());
    count(state, columns);
  });
}

template <class Number>
void addDense(const std::string& input, const std::string& subject,
              const std::vector<std::string>& row, const std::vector<std::string>& point) {
  addLoop(input, subject,
          [a = vectorOf<Number>(row), b = vectorOf<Number>(point)] { return a * b; });
}

template <class Number>
void addPeer(const std::string& input, const std::string& subject,
             const std::vector<std::string>& row, const std::vector<std::string>& point) {
  addLoop(input, subject, [a = numbers<Number>(row), b = numbers<Number>(point)] {
    return std::inner_product(a.begin(), a.end(), b.begin(), Number(0));
  });
}

void addScaled(const std::string& input, const std::vector<std::string>& row,
               const std::vector<std::string>& components) {
  ExactPoint point;
  point.assign(vectorOf<QQ>(components));
  addLoop(input, "ScaledRow", [scaled = ScaledRow(vectorOf<QQ>(row), ZZ::one()), point] {
    return scaled.product(point);
  });
}

void addDensity(unsigned percent, const std::string& kind, MakeText make) {
  const std::string input = kind + "_" + std::to_string(percent) + "_percent";
  const std::vector<std::string> row = rowTexts(percent, make);
  const std::vector<std::string> point = rowTexts(100, make);
  addDense<QQ>(input, "Vector_QQ", row, point);
  addScaled(input, row, point);
  addPeer<mpq_class>(input, "peer_mpq", row, point);
  if (make != shortInteger) return;
  addDense<dbl_t>(input, "Vector_long_double", row, point);
  addPeer<long>(input, "peer_machine", row, point);
}

}  // namespace

void registerDotProducts() {
  for (const unsigned percent : {1U, 10U, 100U}) {
    addDensity(percent, "integers", shortInteger);
    addDensity(percent, "fractions", fraction);
    addDensity(percent, "thirty_digits", thirtyDigits);
  }
}

}  // namespace starsift::bench

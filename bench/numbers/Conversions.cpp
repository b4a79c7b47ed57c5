// From exact numbers to long double and back.
#include "Benchmarks.h"
#include "support/Register.h"
#include "support/Samples.h"

namespace starsift::bench {

namespace {

using benchmark::State;

template <class From>
void addConversion(const std::string& operation, const std::string& form,
                   const std::string& subject, MakeText make, auto convert) {
  add(operation, form, subject, [values = numbers<From>(texts(make)), convert](State& state) {
    for (auto _ : state)
      for (const From& value : values) benchmark::DoNotOptimize(convert(value));
    count(state, values.size());
  });
}

/// The nearest one: fractions have no exact one.
dbl_t nearest(const QQ& value) {
  return toDbl(value, false);
}

double peerNearest(const mpq_class& value) {
  return value.get_d();
}

/// Exact binary fractions, where fromDbl() takes the decimal text.
mpq_class peerExactly(dbl_t value) {
  return mpq_class(static_cast<double>(value));
}

void addToStandard(const std::string& form, MakeText make) {
  addConversion<QQ>("to_long_double", form, "QQ", make, nearest);
  addConversion<mpq_class>("to_long_double", form, "peer_mpq", make, peerNearest);
}

void addToExact(const std::string& form, MakeText make) {
  addConversion<dbl_t>("from_long_double", form, "QQ", make, fromDbl);
  addConversion<dbl_t>("from_long_double", form, "peer_mpq", make, peerExactly);
}

}  // namespace

void registerConversions() {
  addToStandard("integer_3_digits", shortInteger);
  addToStandard("integer_18_digits", longInteger);
  addToStandard("fraction", fraction);
  addToStandard("fraction_30_digits", longFraction);
  addToExact("integer_3_digits", shortInteger);
  addToExact("integer_18_digits", longInteger);
  addToExact("decimal", decimal);
  addToExact("exponent", exponent);
}

}  // namespace starsift::bench

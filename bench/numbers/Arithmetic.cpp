// Exact arithmetic by the size of the numbers.
#include "Benchmarks.h"
#include "support/Register.h"
#include "support/Samples.h"

namespace starsift::bench {

namespace {

using benchmark::State;

/// `operation(result, a, b)` over neighbours of a sample; the result of one pair is kept.
template <class Number>
void addOperation(const std::string& operation, const std::string& size, const std::string& subject,
                  MakeText make, auto combine) {
  add(operation, size, subject, [values = numbers<Number>(texts(make)), combine](State& state) {
    Number result(0);
    for (auto _ : state) {
      for (std::size_t i = 1; i < values.size(); ++i) {
        combine(result, values[i - 1], values[i]);
        benchmark::DoNotOptimize(result);
      }
    }
    count(state, values.size() - 1);
  });
}

void addProductOf(QQ& sum, const QQ& a, const QQ& b) {
  addProduct(sum, a, b);
}

template <class Number>
void addProductOf(Number& sum, const Number& a, const Number& b) {
  sum += a * b;
}

/// All operations, each as this number type writes it.
template <class Number>
void addAll(const std::string& size, const std::string& subject, MakeText make) {
  using N = Number;
  addOperation<N>("add", size, subject, make, [](N& result, const N& a, const N& b) {
    result = a;
    result += b;
  });
  addOperation<N>("multiply", size, subject, make, [](N& result, const N& a, const N& b) {
    result = a;
    result *= b;
  });
  addOperation<N>("add_product", size, subject, make, [](N& result, const N& a, const N& b) {
    // From the same sum each time, as else its size would grow.
    result = a;
    addProductOf(result, a, b);
  });
  addOperation<N>("divide", size, subject, make, [](N& result, const N& a, const N& b) {
    result = a;
    result /= b;
  });
  addOperation<N>("compare", size, subject, make,
                  [](N& result, const N& a, const N& b) { result = a < b ? 1 : 0; });
}

void addExact(const std::string& size, MakeText make) {
  addAll<QQ>(size, "QQ", make);
  addAll<mpq_class>(size, "peer_mpq", make);
}

}  // namespace

void registerArithmetic() {
  addExact("integer_3_digits", shortInteger);
  addAll<long>("integer_3_digits", "peer_machine", shortInteger);
  addExact("fraction", fraction);
  addExact("word_edge", edgeInteger);
  addExact("integer_30_digits", thirtyDigits);
  addExact("integer_300_digits", hugeInteger);
  addExact("fraction_30_digits", longFraction);
}

}  // namespace starsift::bench

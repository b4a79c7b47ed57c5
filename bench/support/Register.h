// Registration of benchmarks under operation/case/subject.
#pragma once

#include <benchmark/benchmark.h>

#include <string>
#include <utility>

namespace starsift::bench {

/// `body(state)` runs the loop.
template <class Body>
benchmark::internal::Benchmark* add(const std::string& operation, const std::string& input,
                                    const std::string& subject, Body body) {
  return benchmark::RegisterBenchmark((operation + '/' + input + '/' + subject).c_str(),
                                      std::move(body));
}

/// Says how much one pass of the loop does.
inline void count(benchmark::State& state, std::size_t items, std::size_t bytes = 0) {
  const auto passes = static_cast<std::int64_t>(state.iterations());
  state.SetItemsProcessed(passes * static_cast<std::int64_t>(items));
  if (bytes > 0) state.SetBytesProcessed(passes * static_cast<std::int64_t>(bytes));
}

}  // namespace starsift::bench

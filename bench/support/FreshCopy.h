// The loop of a benchmark that changes its input.
#pragma once

#include <benchmark/benchmark.h>

namespace starsift::bench {

/// change(copy) on a fresh copy of `input` in each pass; copying isn't timed.
void onFreshCopies(benchmark::State& state, const auto& input, auto change) {
  for (auto _ : state) {
    state.PauseTiming();
    {
      auto copy = input;
      state.ResumeTiming();
      change(copy);
      state.PauseTiming();
    }
    state.ResumeTiming();
  }
}

}  // namespace starsift::bench

// The benchmarks of the library's functions, one group per file of the folders beside this one.
#include <benchmark/benchmark.h>

#include <cstdlib>

#include "Benchmarks.h"

namespace starsift::bench {
namespace {

void registerAll() {
  registerNumberText();
  registerArithmetic();
  registerConversions();
  registerDotProducts();
  registerIndependentRows();
  registerCertificates();
  registerOrthogonalise();
  registerReduce();
  registerNormalise();
  registerEnumerate();
  registerSieve();
  registerCheckStars();
  registerReadStars();
  registerWriteStars();
  registerSortStars();
  registerRemoveDuplicates();
}

}  // namespace
}  // namespace starsift::bench

int main(int count, char** arguments) {
  starsift::bench::registerAll();
  benchmark::Initialize(&count, arguments);
  if (benchmark::ReportUnrecognizedArguments(count, arguments)) return EXIT_FAILURE;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return EXIT_SUCCESS;
}

// Measures the reduction of one basis:
//
//   reduce FILE [-m standard|exact] [-b SIZE [-e PRUNING]] [-p] [-u] [-r RUNS] [-o OUT]
//
// FILE holds a matrix of integers, rows are basis vectors. The processor time of a call in
// seconds, from a new lattice to the reduced one, and the number of calls go to standard
// output; OUT takes the reduced rows. The lattice is that of a problem of which nothing but
// the variables is known, so that every vector is checked up to its box. -b adds a reduction of
// blocks of SIZE vectors, pruned as the parameter eprune says, 3 without -e. -p offers the vectors
// to the collection too, -u turns all of them away at the first look. Status 1 with a line on
// standard error where long double can't hold a number, 3 for a basis that isn't reduced.
#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <string>
#include <vector>

#include "lattice/Lattice.h"
#include "numbers/Conversion.h"
#include "numbers/VectorQQ.h"
#include "system/Exceptions.h"

namespace starsift::bench {

namespace {

struct Settings {
  std::string input;
  std::string output;
  bool isExact = false;
  long blockSize = 0;
  long pruning = 3;
  bool pair = false;
  bool checks = true;
  std::size_t runs = 5;
};

Settings settingsOf(const std::vector<std::string>& words) {
  Settings settings;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const bool hasValue = i + 1 < words.size();
    if (words[i] == "-p")
      settings.pair = true;
    else if (words[i] == "-u")
      settings.checks = false;
    else if (words[i] == "-m" && hasValue)
      settings.isExact = words[++i] == "exact";
    else if (words[i] == "-b" && hasValue)
      settings.blockSize = std::strtol(words[++i].c_str(), nullptr, 10);
    else if (words[i] == "-e" && hasValue)
      settings.pruning = std::strtol(words[++i].c_str(), nullptr, 10);
    else if (words[i] == "-r" && hasValue)
      settings.runs = std::strtoul(words[++i].c_str(), nullptr, 10);
    else if (words[i] == "-o" && hasValue)
      settings.output = words[++i];
    else
      settings.input = words[i];
  }
  return settings;
}

/// Processor time in seconds.
double processorTime() {
  std::timespec time{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

/// Calls make a batch of 60 ms at least; the median of the batches, up to a second.
void measure(std::size_t runs, auto call) {
  const auto batch = [&call](std::size_t calls) {
    const double begin = processorTime();
    for (std::size_t i = 0; i < calls; ++i) call();
    return processorTime() - begin;
  };
  constexpr double least = 0.06;
  std::size_t calls = 1;
  double time = batch(calls);
  while (time < least) {
    calls = time < least / 16
                ? calls * 8
                : static_cast<std::size_t>(static_cast<double>(calls) * 1.3 * least / time) + 1;
    time = batch(calls);
  }
  std::vector<double> times{time / static_cast<double>(calls)};
  double sum = time;
  while (times.size() < runs && sum < 1) {
    time = batch(calls);
    sum += time;
    times.push_back(time / static_cast<double>(calls));
  }
  std::sort(times.begin(), times.end());
  std::cout << std::fixed << std::setprecision(7) << times[times.size() / 2] << ' '
            << calls * times.size() << '\n';
}

/// The check vectors of a full lattice whose last coordinate is the homogenising one. Without
/// `checks` no vector fits them, so that the check ends at the first look.
template <class T>
void setCheckVectors(Lattice<T, dbl_t>& lattice, bool checks) {
  lattice.frame.latticeKind = LatticeKind::full;
  const Index m = lattice.basis.m;
  const T last = checks ? T(1) : T(1) / T(2);
  for (Index j = 1; j < m; ++j) lattice.frame.r[j] = T(1);
  lattice.frame.l[m] = last;
  lattice.frame.r[m] = last;
  lattice.frame.lSave = lattice.frame.l;
  lattice.frame.rSave = lattice.frame.r;
}

/// A reduction gives up after some passes, which small bases with many exchanges need more of.
template <class T>
bool reduceFully(Lattice<T, dbl_t>& lattice) {
  constexpr int most = 100;
  for (int i = 0; i < most; ++i)
    if (lattice.reduce(0)) return true;
  return false;
}

template <class T>
int run(const Settings& settings, const Matrix<QQ>& rows) {
  Matrix<T> basis;
  basis.convertFrom(rows, false);
  Lattice<T, dbl_t> lattice;
  lattice.params.pair = settings.pair;
  lattice.params.eprune = settings.pruning;
  bool isReduced = true;
  measure(settings.runs, [&]() {
    lattice.reset(&basis, LatPath::keep);
    setCheckVectors(lattice, settings.checks);
    isReduced = reduceFully(lattice);
    if (settings.blockSize > 0) isReduced = lattice.reduceBlocks(settings.blockSize);
  });
  if (!settings.output.empty()) {
    std::ofstream file(settings.output);
    file << std::setprecision(21) << '[';
    for (const Vector<T>& row : lattice.basis.B()) {
      file << '[';
      for (const T& entry : row) file << ' ' << entry;
      file << "]\n";
    }
    file << "]\n";
  }
  return isReduced ? 0 : 3;
}

}  // namespace

}  // namespace starsift::bench

int main(int count, char** words) {
  using namespace starsift;
  const bench::Settings settings = bench::settingsOf({words + 1, words + count});
  std::ifstream file(settings.input);
  Matrix<QQ> rows;
  rows.read(file);
  try {
    return settings.isExact ? bench::run<QQ>(settings, rows) : bench::run<dbl_t>(settings, rows);
  } catch (const PrecisionException& exception) {
    std::cerr << "reduce: " << exception.message() << '\n';
    return EXIT_FAILURE;
  }
}

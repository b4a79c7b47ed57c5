// Reading a file of stars.
#include "Benchmarks.h"
#include "files/SolReader.h"
#include "support/Growth.h"
#include "support/Register.h"
#include "support/ScratchFile.h"
#include "support/StarSamples.h"

namespace starsift::bench {

namespace {

using benchmark::State;

/// A file to read and its problem.
struct Input {
  Input(Index stars, bool bare)
      : sample(growthVariables, stars, NumberKind::integers),
        text(sample.starsText(bare)),
        file(text) {}
  StarSample sample;
  std::string text;
  ScratchFile file;
};

template <class T>
void readExactly(State& state, const Input& input) {
  const auto problem = input.sample.problem<T>();
  Index stars = 0;
  for (auto _ : state) {
    Array<Star<T>> read;
    readStarsExactly(input.file.path(), problem, read, false);
    stars = read.dimension();
  }
  count(state, static_cast<std::size_t>(stars), input.text.size());
}

void readPeer(State& state, const Input& input) {
  std::size_t stars = 0;
  for (auto _ : state) stars = peer::readStars(input.file.path()).size();
  count(state, stars, input.text.size());
}

void addCount(Index stars, const std::string& operation, bool bare) {
  const std::string name = starsName(stars);
  add(operation, name, "QQ", [=](State& state) { readExactly<QQ>(state, Input(stars, bare)); });
  add(operation, name, "long_double",
      [=](State& state) { readExactly<dbl_t>(state, Input(stars, bare)); });
  add(operation, name, "peer_mpq", [=](State& state) { readPeer(state, Input(stars, bare)); });
}

}  // namespace

void registerReadStars() {
  for (const Index stars : starCounts) addCount(stars, "read_records", false);
  for (const Index stars : starCounts) addCount(stars, "read_bare", true);
}

}  // namespace starsift::bench

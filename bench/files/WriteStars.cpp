// The text of stars, and writing them to a file.
#include <filesystem>

#include "Benchmarks.h"
#include "files/SolWriter.h"
#include "support/Growth.h"
#include "support/Register.h"
#include "support/ScratchFile.h"
#include "support/StarSamples.h"

namespace starsift::bench {

namespace {

using benchmark::State;

StarSample sampleOf(Index stars, NumberKind kind) {
  return StarSample(growthVariables, stars, kind);
}

template <class T>
void makeText(State& state, NumberKind kind) {
  const auto stars = sampleOf(starCounts[0], kind).stars<T>();
  std::size_t bytes = 0;
  for (auto _ : state) {
    bytes = 0;
    for (const Star<T>& star : stars) bytes += starText(star).size();
  }
  count(state, static_cast<std::size_t>(stars.dimension()), bytes);
}

void makePeerText(State& state, NumberKind kind) {
  const auto stars = sampleOf(starCounts[0], kind).peerStars();
  std::size_t bytes = 0;
  for (auto _ : state) {
    bytes = 0;
    for (const peer::Star& star : stars)
      bytes += peer::vectorText(star.x).size() + peer::recordTail(star).size();
  }
  count(state, stars.size(), bytes);
}

template <class T>
void write(State& state, Index starCount) {
  const auto stars = sampleOf(starCount, NumberKind::integers).stars<T>();
  const ScratchFile file;
  for (auto _ : state) writeStars(file.path(), stars);
  count(state, static_cast<std::size_t>(starCount), std::filesystem::file_size(file.path()));
}

void writePeer(State& state, Index starCount) {
  const auto stars = sampleOf(starCount, NumberKind::integers).peerStars();
  const ScratchFile file;
  for (auto _ : state) peer::writeStars(file.path(), stars);
  count(state, stars.size(), std::filesystem::file_size(file.path()));
}

void addTexts(const std::string& input, NumberKind kind) {
  add("star_text", input, "QQ", [kind](State& state) { makeText<QQ>(state, kind); });
  add("star_text", input, "peer_mpq", [kind](State& state) { makePeerText(state, kind); });
  if (kind != NumberKind::integers) return;
  add("star_text", input, "long_double", [kind](State& state) { makeText<dbl_t>(state, kind); });
}

}  // namespace

void registerWriteStars() {
  addTexts("integers", NumberKind::integers);
  addTexts("fractions", NumberKind::fractions);
  for (const Index stars : starCounts) {
    const std::string input = starsName(stars);
    add("write_stars", input, "QQ", [stars](State& state) { write<QQ>(state, stars); });
    add("write_stars", input, "long_double", [stars](State& state) { write<dbl_t>(state, stars); });
    add("write_stars", input, "peer_mpq", [stars](State& state) { writePeer(state, stars); });
  }
}

}  // namespace starsift::bench

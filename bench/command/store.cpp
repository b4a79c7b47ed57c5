// What a search pays for its store: stars of 97 components that are 0 or 1 are appended, and saved
// as they come, as often as a search would.
//
// usage: store [STARS]
//
// Prints what was written, and the processor seconds and the peak of memory behind it. The time of
// the search itself, which a pause between two saves follows, is that of making and appending
// stars.
#include <sys/resource.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <random>
#include <string>

#include "app/SavePace.h"
#include "files/YSolutionFile.h"
#include "support/ScratchFile.h"

namespace starsift::bench {
namespace {

constexpr Index components = 97;
constexpr Index usualCount = 5'000'000;
/// Stars between two looks at the clock.
constexpr Index starsPerLook = 1000;
/// Every so manieth star was found before.
constexpr Index repetition = 50;

double processorSeconds() {
  return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

double peakMegabytes() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return static_cast<double>(usage.ru_maxrss) * 1024 / 1e6;
}

std::string vectorText(const std::string& entry) {
  std::string text = "[ ";
  for (Index i = 0; i < components; ++i) text += entry + ' ';
  return text + "]\n";
}

/// Stars with random components, their sum as target.
class Stars {
 public:
  Star<QQ> next() {
    if (++count_ % repetition == 0) return last_;
    Star<QQ> star;
    star.resize(components, false);
    int sum = 0;
    for (QQ& component : star) {
      const int bit = static_cast<int>(random_() & 1U);
      component = QQ(bit);
      sum += bit;
    }
    star.targetValues = Vector<QQ>{QQ(sum)};
    star.targetNorm = QQ(-sum);
    star.time = count_ / 100'000;
    star.paramsText = "--verb=1,--sol=0,--lll=1";
    star.versionText = "2.4.2";
    star.fresh = true;
    return last_ = star;
  }

 private:
  std::mt19937_64 random_{1};
  Index count_ = 0;
  Star<QQ> last_;
};

/// A solution file that is written as that of a search is.
class SavedStars {
 public:
  explicit SavedStars(const ScratchFile& place) {
    const std::string stem = place.path().substr(0, place.path().rfind('.'));
    SolutionFile<QQ> problem;
    problem.setPaths({stem + ".opt", stem + ".sol", ""});
    std::FILE* const file = std::fopen((stem + ".opt").c_str(), "w");
    if (file == nullptr) std::abort();
    const std::string text = "[ inf ] [ " + vectorText("1") + " ] [ ] [ ] [ ] [ ] [ ] [ ]\n" +
                             vectorText("0") + vectorText("0") + vectorText("1");
    std::fputs(text.c_str(), file);
    std::fclose(file);
    problem.readProblem();
    stars_.takeProblem(problem);
    stars_.mergeFile();
  }

  void add(const Star<QQ>& star) {
    stars_.addStar(star);
    ++added_;
  }

  bool isDue() const { return pace_.isDue(SavePace::Clock::now(), written_, added_); }

  /// Returns the processor seconds that it takes.
  double save() {
    const double before = processorSeconds();
    const auto start = SavePace::Clock::now();
    stars_.sortStars();
    stars_.removeDuplicates(Duplicates::ofPointAndParams);
    if (stars_.writeIfCurrent() != Commit::written) std::abort();
    pace_.saved(start, SavePace::Clock::now());
    written_ = stars_.starCount();
    added_ = 0;
    return processorSeconds() - before;
  }

  Index written() const { return written_; }
  double megabytes() const {
    return static_cast<double>(std::filesystem::file_size(stars_.path())) / 1e6;
  }

 private:
  YSolutionFile stars_;
  SavePace pace_;
  Index written_ = 0;
  Index added_ = 0;
};

void run(Index count) {
  const ScratchFile place;
  SavedStars stars(place);
  Stars source;
  const double start = processorSeconds();
  double early = 0;
  Index earlyStars = 0;
  int saves = 0;
  for (Index i = 1; i <= count; ++i) {
    stars.add(source.next());
    if (i % starsPerLook != 0 || !stars.isDue()) continue;
    early += stars.save();
    earlyStars += stars.written();
    ++saves;
  }
  const double search = processorSeconds() - start - early;
  const double last = stars.save();
  std::printf("stars %lld, file %.1f MB, peak memory %.1f MB\n",
              static_cast<long long>(stars.written()), stars.megabytes(), peakMegabytes());
  std::printf("made and appended in %.2f s, %d saves of %lld stars in %.2f s, the last in %.2f s\n",
              search, saves, static_cast<long long>(earlyStars), early, last);
}

}  // namespace
}  // namespace starsift::bench

int main(int count, char** arguments) {
  starsift::bench::run(count > 1 ? std::atoll(arguments[1]) : starsift::bench::usualCount);
}

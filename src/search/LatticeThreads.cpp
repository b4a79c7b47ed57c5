#include "search/LatticeThreads.h"

#include <cstdlib>
#include <exception>
#include <utility>

#include "lattice/YLattice.h"
#include "search/SearchPass.h"
#include "system/Console.h"
#include "system/Exceptions.h"
#include "system/HostedCall.h"

namespace starsift {

namespace {

/// Between the seeds of threads: a lattice adds the number of its restarts to its seed.
constexpr std::uint64_t seedStride = std::uint64_t{1} << 32U;

/// Ends a thread in the middle of a step.
class ThreadEnded : public GeneralException {
 public:
  ThreadEnded() : GeneralException("Thread ended") {}
};

/// Those of a command, at most one; null while there are none.
std::atomic<LatticeThreads*> runningThreads = nullptr;
thread_local bool isLatticeThread = false;

/// Static objects live longer than the threads of a process that ends by a fatal report.
void endAtExit() {
  LatticeThreads* const threads = runningThreads;
  if (threads != nullptr && !isLatticeThread) threads->end();
}

/// The search of one thread.
class ThreadSearch : private ReductionObserver {
 public:
  ThreadSearch(const LatticeSource& source, std::uint64_t seed, SolutionExchange& exchange,
               Gate& gate)
      : exchange_(exchange), gate_(gate) {
    lattice_.useExtendedPrecision();
    lattice_.exact().params = source.params;
    lattice_.exact().followParams();
    lattice_.takeProblem(source.problem);
    lattice_.setSeed(seed);
    if (source.seeksBest) lattice_.seekBest();
  }

  void run(std::chrono::steady_clock::duration elapsed, std::atomic<std::uint64_t>& latticeCount) {
    lattice_.beginSearch(*this, elapsed);
    prepare();
    // The first lattice is that of every seed.
    while (!isOver()) {
      makeLattice();
      ++latticeCount;
    }
  }

 private:
  void prepare() {
    lattice_.tightenBounds();
    lattice_.tryStandardPrecision();
    lattice_.normalise(TargetRange::find, From::lifted);
    lattice_.prepareLattice();
    postNews();
  }

  void makeLattice() {
    makeNextLattice(lattice_);
    try {
      searchPass(lattice_);
      if (!isOver()) searchBlocks(lattice_);
      if (!isOver()) searchTrimmed(lattice_);
    } catch (const PrecisionException&) {
      // A random change was too wild.
      setConsoleDepth(0);
    }
    postNews();
  }

  bool isOver() const { return lattice_.stopped() || lattice_.isSatisfied(); }

  void onStep(const PassCounts& /*counts*/) override { look(); }
  void onPreparation() override { look(); }

  void look() {
    if (!gate_.pass()) throw ThreadEnded();
    postNews();
  }

  void postNews() {
    const Index last = lattice_.lastFiled();
    if (last == posted_) return;
    for (const Star<QQ>& star : lattice_.starsFiledAfter(posted_)) exchange_.post(star);
    posted_ = last;
  }

  YLattice<long double> lattice_;
  SolutionExchange& exchange_;
  Gate& gate_;
  /// The number of the last solution that was posted.
  Index posted_ = 0;
};

}  // namespace

void LatticeThreads::start(unsigned count, std::chrono::steady_clock::duration elapsed) {
  if (!HostedCall::isUnderWay()) {
    [[maybe_unused]] static const int registered = std::atexit(endAtExit);
    runningThreads = this;
  }
  threads_.start(count, [this, elapsed](unsigned number) { work(number, elapsed); });
}

void LatticeThreads::work(unsigned number, std::chrono::steady_clock::duration elapsed) {
  isLatticeThread = true;
  // Without reports or a fatal end.
  const HostedCall call;
  try {
    ThreadSearch search(source_, source_.seed + number * seedStride, exchange_, gate_);
    search.run(elapsed, latticeCount_);
  } catch (const ThreadEnded&) {
    // What was found has been posted.
  } catch (const PrecisionException&) {
    // The calling thread meets the same numbers.
  } catch (const FatalReport&) {
    // And the same proof.
  } catch (...) {
    exchange_.fail(std::current_exception());
  }
}

std::vector<Star<QQ>> LatticeThreads::takeNews() {
  if (exchange_.isEnded()) {
    end();
    exchange_.rethrow();
  }
  return exchange_.takeNews();
}

void LatticeThreads::end() {
  gate_.shut();
  threads_.join();
  LatticeThreads* self = this;
  runningThreads.compare_exchange_strong(self, nullptr);
}

}  // namespace starsift

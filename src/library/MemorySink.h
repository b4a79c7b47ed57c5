// The solutions of a search in memory, and the calls of its host.
#pragma once

#include <starsift/starsift.h>

#include <chrono>
#include <exception>
#include <functional>
#include <optional>
#include <stop_token>
#include <string>
#include <unordered_set>
#include <utility>

#include "app/SearchWatch.h"
#include "app/SolutionSink.h"
#include "system/ThreadLocale.h"

namespace starsift {

/// What a host wants to be told; either may be empty.
struct SearchCalls {
  std::function<void(const Solution&)> onSolution;
  std::function<void(const Search::Progress&)> onProgress;
};

/// Keeps each point once and tells the host of it. An exception of a call is kept, and ends the
/// search at the next look: nothing may be thrown in the middle of a step.
class MemorySink : public SolutionSink, public SearchListener {
 public:
  /// Made in the locale of the host, in which the calls will run. They must outlive the sink.
  MemorySink(const SearchCalls& calls, std::stop_token stop)
      : calls_(calls), stop_(std::move(stop)) {}

  /// Keeps right stars of a problem that the host knows.
  void know(const Array<Star<QQ>>& stars, const Vanu<QQ>& problem);

  bool hasNews(const YLattice<long double>& search) const override;
  bool isDue(const YLattice<long double>& search) const override { return hasNews(search); }
  void trySave(const YLattice<long double>& search) override;
  void add(const Star<QQ>& star) override;
  std::optional<QQ> leastTargetNorm() const override { return leastNorm_; }
  std::optional<QQ> leastSearchedNorm() const override { return leastSearchedNorm_; }
  bool hasOtherStars() const override { return hasOtherStars_; }
  bool keepsLattices() const override { return false; }

  Step looked(const SearchWatch& watch) override;

  const Array<Star<QQ>>& stars() const { return stars_; }
  /// Throws what a call has thrown.
  void rethrow() const;

 private:
  /// False if its point is there. `isSearched`: searches look at it.
  bool keep(const Star<QQ>& star, bool isSearched);
  template <class Call, class Argument>
  void tell(const Call& call, const Argument& argument);

  const SearchCalls& calls_;
  std::stop_token stop_;
  locale_t hostLocale_ = ThreadLocale::current();
  Array<Star<QQ>> stars_;
  /// The texts of their points.
  std::unordered_set<std::string> known_;
  std::optional<QQ> leastNorm_;
  std::optional<QQ> leastSearchedNorm_;
  bool hasOtherStars_ = false;
  /// The number of the last solution that was taken from the search.
  Index taken_ = 0;
  std::chrono::steady_clock::time_point nextProgress_;
  std::exception_ptr error_;
};

}  // namespace starsift

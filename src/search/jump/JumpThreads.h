// Walks of several threads, each from a seed of its own.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "search/jump/JumpSearch.h"

namespace starsift {

/// A JumpSearch for each thread. They share nothing but the least target norm found.
class JumpThreads {
 public:
  /// `threads` is at least 1; the others as for JumpSearch.
  JumpThreads(const Vanu<QQ>& problem, std::uint64_t seed, unsigned threads);

  /// See JumpSearch::isReady().
  bool isReady() const { return searches_.front()->isReady(); }
  void setKnown(const QQ& norm);

  /// As JumpSearch::run(). The listener is called in the calling thread only. An exception of any
  /// thread ends all walks and is thrown here.
  void run(JumpListener& listener);

 private:
  /// Of the thread that calls run() first.
  std::vector<std::unique_ptr<JumpSearch>> searches_;
};

}  // namespace starsift

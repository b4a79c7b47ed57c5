// A walk over an enumeration tree in several threads.
#pragma once

#include <cstdint>
#include <vector>

#include "search/enumeration/EnumerationWalk.h"
#include "search/enumeration/WalkExchange.h"

namespace starsift {

/// One run over subtrees of the tree of a walk, or over all of it. Each thread has a walk of its
/// own over the same geometry; one that has nothing to do takes a subtree that another has split
/// off from what was left to it. Cuts don't depend on what was walked before, so that the points
/// are those of one thread.
///
/// The visitor is called in the calling thread, which walks too and passes on what the others have
/// found whenever its own progress is due. The others receive no signals. They begin with the first
/// report of progress, or after the first of several subtrees; if the system grants fewer threads,
/// there are fewer.
class ThreadedWalk {
 public:
  /// The arguments must live as long as this object; settings.threads >= 1.
  ThreadedWalk(EnumerationWalk& walk, EnumerationVisitor& visitor,
               const EnumerationSettings& settings, std::vector<Subtree> subtrees);

  /// As Enumeration::run(). To be called once.
  EnumerationEnd run();
  /// Nodes of the other threads' walks, which `walk` doesn't count.
  std::uint64_t otherNodes() const { return exchange_.otherNodes(); }

 private:
  class Helpers;
  class Caller;
  class Helper;

  EnumerationWalk& walk_;
  EnumerationVisitor& visitor_;
  const EnumerationSettings& settings_;
  bool hasSeveral_;
  WalkExchange exchange_;
};

}  // namespace starsift

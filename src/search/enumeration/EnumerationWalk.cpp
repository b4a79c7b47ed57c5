#include "search/enumeration/EnumerationWalk.h"

#include <utility>

#include "search/enumeration/ThreadedWalk.h"

namespace starsift {

EnumerationEnd EnumerationWalk::run(EnumerationVisitor& visitor,
                                    const EnumerationSettings& settings) {
  if (settings.threads <= 1) return runSubtree(visitor, settings, {});
  return run(visitor, settings, {Subtree{}});
}

EnumerationEnd EnumerationWalk::run(EnumerationVisitor& visitor,
                                    const EnumerationSettings& settings,
                                    std::vector<Subtree> subtrees) {
  ThreadedWalk walk(*this, visitor, settings, std::move(subtrees));
  const EnumerationEnd end = walk.run();
  otherNodes_ += walk.otherNodes();
  return end;
}

}  // namespace starsift

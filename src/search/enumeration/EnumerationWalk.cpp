#include "search/enumeration/EnumerationWalk.h"

#include "search/enumeration/ThreadedWalk.h"

namespace starsift {

EnumerationEnd EnumerationWalk::run(EnumerationVisitor& visitor,
                                    const EnumerationSettings& settings) {
  if (settings.threads <= 1) return runSubtree(visitor, settings, {});
  ThreadedWalk walk(*this, visitor, settings);
  const EnumerationEnd end = walk.run();
  otherNodes_ += walk.otherNodes();
  return end;
}

}  // namespace starsift

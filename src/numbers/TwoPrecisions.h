// One state in two precisions. The code above sees one of them: a step runs on the fast
// standard form as long as that can hold every number, and is repeated on the exact form
// where a PrecisionException ends it.
#pragma once

#include <cstdint>
#include <type_traits>

#include "system/Console.h"
#include "system/Exceptions.h"
#include "system/Failure.h"

namespace starsift {

/// What a step leaves of the state if it throws.
enum class OnFailure {
  /// Anything: the wrapper takes a snapshot before the step and restores it.
  restore,
  /// The state from before the step: a snapshot would only cost time and memory.
  unchanged,
};

/// Reports of a wrapper that changes the precision without a word.
struct SilentSwitches {
  /// Before the state goes to the exact form.
  static void toExact(const auto& /*standard*/) {}
  /// After it has come back.
  static void toStandard(const auto& /*standard*/) {}
  /// After a step that lost precision, before the state goes to the exact form.
  static void stepFailed(const auto& /*exact*/) {}
};

/// The two forms and the flag that says which of them is live. Each form has
///
///   target.convertFrom(source)  takes the whole state of either form, every number
///                               converted strictly: PrecisionException if a number is lost,
///                               the target is half converted then
///   release()                   frees the memory of a form that isn't live
///
/// Reports has the functions of SilentSwitches.
template <class Standard, class Exact, class Reports = SilentSwitches>
class TwoPrecisions {
 public:
  TwoPrecisions() = default;
  TwoPrecisions(const TwoPrecisions&) = delete;
  TwoPrecisions& operator=(const TwoPrecisions&) = delete;

  /// Makes the exact form the live one. Nothing if it is already.
  void useExtended() {
    if (useExact_) return;
    Reports::toExact(standard_);
    exact_.convertFrom(standard_);
    useExact_ = true;
    standard_.release();
  }

  /// Makes the standard form the live one. PrecisionException if that can't hold a number;
  /// the exact form stays live then. Nothing if it is live already.
  void useStandard() {
    if (!useExact_) return;
    standard_.convertFrom(exact_);
    useExact_ = false;
    exact_.release();
    Reports::toStandard(standard_);
  }

  /// The same, but stays in the exact form without a word if it has to.
  void tryStandard() {
    try {
      useStandard();
    } catch (const PrecisionException&) {
      // A number needs more than the standard form has: the exact one stays live.
      standard_.release();
    }
  }

  /// Runs `step(form)`, a generic callable, on the live form and returns its result. After a
  /// run on the exact form tries to come back.
  ///
  /// A PrecisionException on the standard form repeats the step on the exact one, on the
  /// restored state; what the first run printed stays printed. All other exceptions, and those
  /// of the exact form, pass through.
  template <class Step>
  auto runStep(Step step, OnFailure onFailure = OnFailure::restore);

  /// Runs `use(form)` on the live form; no failover.
  template <class Use>
  auto withLive(Use use) {
    return useExact_ ? use(exact_) : use(standard_);
  }
  template <class Use>
  auto withLive(Use use) const {
    return useExact_ ? use(exact_) : use(standard_);
  }
  /// Runs `use(form)` on either form, for what isn't part of the state.
  template <class Use>
  void withBoth(Use use) {
    use(standard_);
    use(exact_);
  }

  bool usesExact() const { return useExact_; }
  /// The forms to be changed. Fatal unless the form is live, as the change would be lost: "The
  /// standard precision is not in use", "The exact precision is not in use".
  Standard& standard() {
    if (useExact_) fail("The standard precision is not in use");
    return standard_;
  }
  Exact& exact() {
    if (!useExact_) fail("The exact precision is not in use");
    return exact_;
  }
  /// The forms to be looked at, live or not.
  const Standard& standard() const { return standard_; }
  const Exact& exact() const { return exact_; }

 private:
  /// Closes the console block that the failed step left open and makes the exact form live.
  void failOver(std::int64_t depth) {
    Reports::stepFailed(exact_);
    useExtended();
    setConsoleDepth(depth);
  }

  /// Live while useExact_ is false.
  Standard standard_;
  /// Snapshot of standard_ from before a step.
  Standard backup_;
  /// Live while useExact_ is true.
  Exact exact_;
  bool useExact_ = false;
};

template <class Standard, class Exact, class Reports>
template <class Step>
auto TwoPrecisions<Standard, Exact, Reports>::runStep(Step step, OnFailure onFailure) {
  if (!useExact_) {
    const std::int64_t depth = consoleDepth();
    if (onFailure == OnFailure::restore) backup_.convertFrom(standard_);
    try {
      return step(standard_);
    } catch (const PrecisionException&) {
      if (onFailure == OnFailure::restore) standard_.convertFrom(backup_);
      failOver(depth);
    }
  }
  if constexpr (std::is_void_v<std::invoke_result_t<Step, Exact&>>) {
    step(exact_);
    tryStandard();
  } else {
    auto result = step(exact_);
    tryStandard();
    return result;
  }
}

}  // namespace starsift

#include "search/decide/PartWalk.h"

#include <algorithm>
#include <numeric>
#include <random>
#include <utility>

#include "text/Digest.h"

namespace starsift {

namespace {

/// Subtrees of a tree, and of each part at least: they differ in size, and a part has the average
/// of many.
constexpr std::size_t usualSubtrees = 16384;
constexpr std::size_t fewestPerPart = 128;

/// Steps of the linear programs for one tree, some seconds with a hundred variables.
constexpr std::uint64_t programSteps = 2000;

void add(Digest& digest, const std::vector<ZZ>& numbers) {
  for (const ZZ& number : numbers) digest.add(number.toString() + ' ');
  digest.add("\n");
}

/// 0 ... count - 1 in an order that looks random and is always the same: where siblings alternate
/// between two sides, each second subtree in sequence would be a large one.
std::vector<std::size_t> mixedOrder(std::size_t count) {
  std::vector<std::size_t> order(count);
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::mt19937_64 generator(1);
  // std::shuffle() isn't the same in every library.
  for (std::size_t i = count; i > 1; --i) std::swap(order[i - 1], order[generator() % i]);
  return order;
}

}  // namespace

PartWalk::PartWalk(Decision& decision, DecisionListener& listener, Aim aim, TreeState part)
    : decision_(decision), listener_(listener), aim_(aim), state_(std::move(part)) {}

Preparation PartWalk::prepare(const Decision::MayGoOn& mayGoOn) {
  state_.best = state_.known;
  const Preparation made = decision_.prepare(aim_, state_.known, mayGoOn, StageLimit::steps);
  if (made == Preparation::noSolution) state_.tree = treeDigest({});
  if (made != Preparation::ready) return made;
  if (!raiseBound(mayGoOn)) return Preparation::stopped;
  state_.bound = decision_.leastNorm();
  const std::size_t wanted = std::max(usualSubtrees, fewestPerPart * state_.parts);
  const auto subtrees = decision_.cut(wanted, mayGoOn);
  if (!subtrees) return Preparation::stopped;
  state_.tree = treeDigest(*subtrees);
  const std::vector<std::size_t> order = mixedOrder(subtrees->size());
  for (std::size_t i = state_.part - 1; i < order.size(); i += state_.parts)
    subtrees_.push_back((*subtrees)[order[i]]);
  for (std::size_t i = 0; i < subtrees_.size(); ++i) {
    subtrees_[i].piece = i;
    subtrees_[i].share = 1 / static_cast<double>(subtrees_.size());
  }
  state_.done.assign(subtrees_.size(), false);
  return Preparation::ready;
}

bool PartWalk::raiseBound(const Decision::MayGoOn& mayGoOn) {
  if (aim_ != Aim::best) return true;
  std::uint64_t steps = 0;
  return decision_.raiseBound([&] { return ++steps <= programSteps && mayGoOn(); }, mayGoOn);
}

std::string PartWalk::treeDigest(const std::vector<Subtree>& subtrees) const {
  Digest digest;
  const BoxCoset& coset = decision_.coset();
  for (const auto& row : coset.basis) add(digest, row);
  for (const auto* row : {&coset.point, &coset.lower, &coset.upper}) add(digest, *row);
  for (const Subtree& subtree : subtrees) {
    for (const QQ& coefficient : subtree.path) digest.add(coefficient.numerator().toString() + ' ');
    digest.add("\n");
  }
  return digest.text();
}

bool PartWalk::goOn(const TreeState& saved) {
  if (saved.tree != state_.tree || saved.done.size() != state_.done.size()) return false;
  state_.done = saved.done;
  state_.solutions = saved.solutions;
  state_.nodes = saved.nodes;
  state_.best = saved.best;
  doneBefore_ = state_.doneCount();
  return true;
}

EnumerationEnd PartWalk::run(const std::optional<QQ>& known, unsigned threads) {
  if (aim_ == Aim::best) {
    if (known && (!state_.best || *known < *state_.best)) state_.best = known;
    if (state_.best) decision_.narrowBelow(*state_.best);
  }
  std::vector<Subtree> rest;
  for (const Subtree& subtree : subtrees_)
    if (!state_.done[subtree.piece]) rest.push_back(subtree);
  if (rest.empty()) return EnumerationEnd::complete;
  EnumerationSettings settings;
  settings.threads = threads;
  const EnumerationEnd end = decision_.run(*this, settings, std::move(rest));
  // A walk is complete before its end if no subtree can have a better solution than the last one.
  if (end == EnumerationEnd::complete) std::fill(state_.done.begin(), state_.done.end(), true);
  return end;
}

Step PartWalk::found(const Star<QQ>& star) {
  if (aim_ == Aim::best) state_.best = star.targetNorm;
  return listener_.found(star);
}

Step PartWalk::progress(double share, std::uint64_t nodes) {
  const auto all = static_cast<double>(std::max<std::size_t>(subtrees_.size(), 1));
  const double before = static_cast<double>(doneBefore_) / all;
  return listener_.progress(std::min(before + share * (1 - before), 1.0), nodes);
}

void PartWalk::finished(const FinishedPiece& piece) {
  state_.done[piece.piece] = true;
  state_.nodes += piece.nodes;
  if (aim_ == Aim::all) state_.solutions += piece.points;
  listener_.finished(piece);
}

Decided joinParts(Aim aim, std::span<const TreeState> parts) {
  Decided result;
  std::vector<bool> isComplete(parts.empty() ? 1 : parts.front().parts);
  for (const TreeState& state : parts) {
    isComplete[state.part - 1] = state.isComplete();
    result.count += state.solutions;
    result.nodes += state.nodes;
    if (state.best && (!result.best || *state.best < *result.best)) result.best = state.best;
    result.bound = state.bound;
    if (state.isEnough) result.undecided = Undecided::enough;
  }
  if (!std::all_of(isComplete.begin(), isComplete.end(), [](bool is) { return is; })) {
    if (result.undecided != Undecided::enough) result.undecided = Undecided::stopped;
    return result;
  }
  result.undecided = Undecided::no;
  if (aim == Aim::best) {
    result.proof = result.best ? Proof::optimum : Proof::noSolution;
    result.bound = result.best;
  } else {
    result.proof = result.count == 0 ? Proof::noSolution : Proof::allFound;
  }
  return result;
}

}  // namespace starsift

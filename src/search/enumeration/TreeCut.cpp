#include "search/enumeration/TreeCut.h"

#include <deque>
#include <iterator>
#include <utility>

namespace starsift {

namespace {

/// A node with more children stays whole: a list of all of them would take long, and need much
/// memory.
constexpr std::size_t mostChildren = 1 << 14;

Subtree childOf(const Subtree& parent, const QQ& choice) {
  Subtree child(parent);
  child.path.push_back(choice);
  return child;
}

}  // namespace

std::optional<std::vector<Subtree>> cutTree(EnumerationWalk& walk, std::size_t wanted,
                                            const std::function<bool()>& mayGoOn) {
  const std::size_t d = walk.coset().basis.size();
  std::deque<Subtree> open{Subtree{}};
  std::vector<Subtree> whole;
  while (!open.empty() && open.size() + whole.size() < wanted) {
    if (!mayGoOn()) return std::nullopt;
    const Subtree parent = std::move(open.front());
    open.pop_front();
    std::vector<QQ> choices;
    const bool canBeCut = parent.path.size() + 1 < d;
    if (canBeCut) choices = walk.choicesBelow(parent.path, mostChildren);
    if (!canBeCut || choices.size() > mostChildren) {
      whole.push_back(parent);
      continue;
    }
    for (const QQ& choice : choices) open.push_back(childOf(parent, choice));
  }
  std::vector<Subtree> result(std::make_move_iterator(open.begin()),
                              std::make_move_iterator(open.end()));
  std::move(whole.begin(), whole.end(), std::back_inserter(result));
  for (std::size_t i = 0; i < result.size(); ++i) {
    result[i].piece = i;
    result[i].share = 1 / static_cast<double>(result.size());
  }
  return result;
}

}  // namespace starsift

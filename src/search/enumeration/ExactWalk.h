// A complete enumeration in rational arithmetic: plain, slow, without rounding.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "numbers/QQ.h"
#include "search/enumeration/EnumerationWalk.h"
#include "search/enumeration/TreeShare.h"

namespace starsift {

/// For cosets that floating point can't hold, and a second implementation beside FloatingWalk. Cuts
/// by length, by Hölder's inequality, and by final coordinates.
class ExactWalk : public EnumerationWalk {
 public:
  /// O(d^2 n) operations on rationals of the size of the Gram determinants. `mayGoOn` is called
  /// before every row; false ends the preparation.
  explicit ExactWalk(
      BoxCoset coset, const std::function<bool()>& mayGoOn = [] { return true; });

  /// False if the preparation was ended; nothing else may be called then.
  bool isPrepared() const { return isPrepared_; }

  std::unique_ptr<EnumerationWalk> twin() const override;
  EnumerationEnd runSubtree(EnumerationVisitor& visitor, const EnumerationSettings& settings,
                            const Subtree& subtree) override;
  std::optional<Subtree> splitOff() override;
  std::vector<QQ> choicesBelow(const std::vector<QQ>& path, std::size_t most) override;
  std::uint64_t ownNodes() const override { return nodes_; }
  /// There are no probes in rationals.
  TreeEstimate probe(const ProbeSettings&) const override { return {}; }

 private:
  using Row = std::vector<QQ>;
  struct Interval {
    QQ least;
    QQ most;
  };
  /// A node: the squared length of the projected vector, that vector as a direction, and the
  /// point, relative to the middle of the box.
  struct Node {
    QQ length;
    Row direction;
    Row point;
  };

  /// The choice of a coefficient on the current path; what it points to lives on the stack.
  struct Choice {
    const Node* node;
    Interval* range;
    const QQ* offset;
    const QQ* coefficient;
    /// The side of the centre; the upper one comes first.
    bool isUp;
  };

  void onNarrowed(std::size_t j) override;
  /// Orthogonalises the rows and the start, unless it is ended.
  void prepare(const std::function<bool()>& mayGoOn);
  /// Walks the subtree of a node whose next coefficient is k - 1. False ends the run.
  bool visit(std::size_t k, const Node& node);
  /// Walks the children of a node on one side of the centre, from coefficient c on.
  bool visitSide(std::size_t k, const Node& node, const QQ& offset, QQ c, const QQ& step,
                 Interval& range);
  /// The child with coefficient c of row k - 1; none if it is cut, with all further out.
  std::optional<Node> childOf(std::size_t k, const Node& node, const QQ& offset, const QQ& c);
  bool report(const Node& node);
  /// Counts a node with the coefficients from `k` on chosen, and reports progress. Nodes above the
  /// subtree don't count.
  bool pace(std::size_t k);
  /// The choices of coefficient `k` for shareDone().
  LevelChoices choicesAt(std::size_t k);
  /// The choices of the coefficients from that of the current node on, the last one first.
  std::vector<LevelChoices> choices();
  /// The part of the interval of coefficient k - 1 that its final coordinates and the subtree
  /// leave.
  Interval interval(std::size_t k, const Node& node) const;
  /// The choice c of coefficient k - 1 gives the Gram-Schmidt coefficient c + offset.
  QQ offsetOf(std::size_t k, const Node& node) const;
  /// No point of the box has this projected vector, or one further out in its direction.
  bool isCut(const Node& node) const;
  QQ radius(std::size_t k);

  /// Middle and half ranges of the box at construction, and bounds relative to the middle.
  Row middle_;
  Row lower_;
  Row upper_;
  /// Squared scale of the coordinates.
  Row weights_;
  /// Rows as rationals, their Gram-Schmidt vectors as directions, and the squared lengths of these.
  std::vector<Row> rows_;
  std::vector<Row> directions_;
  Row squaredLengths_;
  Node root_;
  /// firstRow_[j] is the first row that changes coordinate j, d if none does.
  std::vector<std::size_t> firstRow_;
  /// What prepare() makes is complete.
  bool isPrepared_ = false;

  // Of the current run
  EnumerationVisitor* visitor_ = nullptr;
  EnumerationSettings settings_;
  Subtree subtree_;
  EnumerationEnd end_ = EnumerationEnd::complete;
  bool hasPruned_ = false;
  std::uint64_t nodes_ = 0;
  std::uint64_t before_ = 0;
  /// The choices of all coefficients; valid from that of the current node on.
  std::vector<Choice> path_;
  /// Of the node that was counted last.
  std::size_t level_ = 0;
};

}  // namespace starsift

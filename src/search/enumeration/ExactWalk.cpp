#include "search/enumeration/ExactWalk.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "numbers/Conversion.h"

namespace starsift {

namespace {

/// Nodes in floating point that take as long as one in rationals.
constexpr std::uint64_t nodesPerNode = 32;

QQ inner(const std::vector<QQ>& a, const std::vector<QQ>& b) {
  QQ sum;
  for (std::size_t j = 0; j < a.size(); ++j) addProduct(sum, a[j], b[j]);
  return sum;
}

void addMultiple(std::vector<QQ>& a, const QQ& factor, const std::vector<QQ>& b) {
  for (std::size_t j = 0; j < a.size(); ++j) addProduct(a[j], factor, b[j]);
}

double nearest(const QQ& value) {
  return static_cast<double>(NumberConversion<long double, QQ>::nearest(value));
}

}  // namespace

ExactWalk::ExactWalk(BoxCoset coset, const std::function<bool()>& mayGoOn)
    : EnumerationWalk(std::move(coset)) {
  const BoxCoset& given = this->coset();
  const std::size_t n = given.point.size();
  for (std::size_t j = 0; j < n; ++j) {
    const QQ lower(given.lower[j]);
    const QQ upper(given.upper[j]);
    middle_.push_back((lower + upper) / QQ(2));
    lower_.push_back(lower - middle_[j]);
    upper_.push_back(upper - middle_[j]);
    const QQ range = max(upper - lower, QQ(1, static_cast<long>(n) + 1));
    weights_.push_back(QQ(1) / (range * range));
    root_.point.push_back(QQ(given.point[j]) - middle_[j]);
  }
  for (const std::vector<ZZ>& row : given.basis) {
    rows_.emplace_back();
    for (const ZZ& entry : row) rows_.back().emplace_back(entry);
  }
  prepare(mayGoOn);
}

void ExactWalk::prepare(const std::function<bool()>& mayGoOn) {
  const std::size_t n = root_.point.size();
  // b*_k in unscaled coordinates, orthogonal by the weights.
  std::vector<Row> stars;
  const auto orthogonalise = [&](const Row& row) {
    Row result(row);
    for (std::size_t i = 0; i < stars.size(); ++i)
      addMultiple(result, -(inner(row, directions_[i]) / squaredLengths_[i]), stars[i]);
    return result;
  };
  const auto weighted = [&](Row row) {
    for (std::size_t j = 0; j < n; ++j) row[j] *= weights_[j];
    return row;
  };
  for (const Row& row : rows_) {
    if (!mayGoOn()) return;
    Row star = orthogonalise(row);
    Row direction = weighted(star);
    squaredLengths_.push_back(inner(star, direction));
    directions_.push_back(std::move(direction));
    stars.push_back(std::move(star));
  }
  const Row rest = orthogonalise(root_.point);
  root_.direction = weighted(rest);
  root_.length = inner(rest, root_.direction);
  firstRow_.assign(n, 0);
  for (std::size_t j = 0; j < n; ++j)
    while (firstRow_[j] < rows_.size() && rows_[firstRow_[j]][j].isZero()) ++firstRow_[j];
  isPrepared_ = true;
}

std::unique_ptr<EnumerationWalk> ExactWalk::twin() const {
  auto result = std::make_unique<ExactWalk>(*this);
  result->nodes_ = 0;
  return result;
}

void ExactWalk::onNarrowed(std::size_t j) {
  lower_[j] = QQ(coset().lower[j]) - middle_[j];
  upper_[j] = QQ(coset().upper[j]) - middle_[j];
}

QQ ExactWalk::radius(std::size_t k) {
  QQ full;
  for (std::size_t j = 0; j < weights_.size(); ++j) {
    const QQ side = max(abs(lower_[j]), abs(upper_[j]));
    addProduct(full, weights_[j], side * side);
  }
  const std::size_t d = rows_.size();
  if (!settings_.pruning || k == d) return full;
  const double share = static_cast<double>(d - k) / static_cast<double>(d);
  const double factor =
      share + 2 * *settings_.pruning * share * (1 - share) + *settings_.pruning / 10;
  if (factor >= 1) return full;
  return root_.length + fromDbl(factor) * (full - root_.length);
}

bool ExactWalk::isCut(const Node& node) const {
  QQ most;
  for (std::size_t j = 0; j < lower_.size(); ++j)
    addProduct(most, node.direction[j], node.direction[j].sign() ? upper_[j] : lower_[j]);
  return node.length > most;
}

ExactWalk::Interval ExactWalk::interval(std::size_t k, const Node& node) const {
  Interval result{-QQ::infinity(), QQ::infinity()};
  for (std::size_t j = 0; j < firstRow_.size(); ++j) {
    if (firstRow_[j] != k - 1) continue;
    const QQ& step = rows_[k - 1][j];
    QQ low = (lower_[j] - node.point[j]) / step;
    QQ high = (upper_[j] - node.point[j]) / step;
    if (high < low) low.swap(high);
    result.least = max(result.least, ceil(low));
    if (floor(high) < result.most) result.most = floor(high);
  }
  const std::size_t depth = rows_.size() - k;
  if (depth > subtree_.path.size()) return result;
  const bool isAbove = depth < subtree_.path.size();
  result.least = max(result.least, isAbove ? subtree_.path[depth] : subtree_.least);
  const QQ& most = isAbove ? subtree_.path[depth] : subtree_.most;
  if (most < result.most) result.most = most;
  return result;
}

QQ ExactWalk::offsetOf(std::size_t k, const Node& node) const {
  return inner(node.point, directions_[k - 1]) / squaredLengths_[k - 1];
}

LevelChoices ExactWalk::choicesAt(std::size_t k) {
  const Choice& choice = path_[k];
  const QQ& chosen = *choice.coefficient;
  const auto relative = [&chosen](const QQ& c) { return nearest(c - chosen); };
  constexpr double endless = std::numeric_limits<double>::infinity();
  const QQ room = radius(k) - choice.node->length;
  const QQ first = ceil(-*choice.offset);
  return {k,
          room.isZero() ? endless : nearest(squaredLengths_[k] / room),
          nearest(chosen + *choice.offset),
          relative(choice.range->least),
          relative(choice.range->most),
          choice.isUp ? relative(first) - 1 : -1,
          choice.isUp ? 1 : endless};
}

std::vector<LevelChoices> ExactWalk::choices() {
  std::vector<LevelChoices> path;
  for (std::size_t i = rows_.size(); i-- > level_;) path.push_back(choicesAt(i));
  return path;
}

std::optional<Subtree> ExactWalk::splitOff() {
  const std::optional<OpenChoices> open = largestOpenChoices(choices());
  if (!open) return std::nullopt;
  const std::size_t k = rows_.size() - 1 - open->depth;
  Subtree result;
  for (std::size_t i = rows_.size(); --i > k;) result.path.push_back(*path_[i].coefficient);
  Interval& range = *path_[k].range;
  result.least = range.least;
  result.most = range.most;
  // Large relative numbers are rounded, so that `first` may lie outside; it is no earlier choice.
  const QQ first = *path_[k].coefficient + exactInteger(open->first);
  if (open->isUp) {
    result.least = first;
    if (first <= range.most) range.most = first - QQ(1);
  } else {
    result.most = first;
    if (first >= range.least) range.least = first + QQ(1);
  }
  result.share = open->share;
  return result;
}

bool ExactWalk::pace(std::size_t k) {
  if (rows_.size() - k <= subtree_.path.size()) return true;
  level_ = k;
  ++nodes_;
  const std::uint64_t count = nodes_ - before_;
  if (settings_.nodeLimit && count > *settings_.nodeLimit)
    end_ = EnumerationEnd::limit;
  else if (count % std::max(settings_.nodesPerReport / nodesPerNode, std::uint64_t{1}) == 0 &&
           visitor_->progress(shareDone(choices()), count) == Step::stop)
    end_ = EnumerationEnd::stopped;
  return end_ == EnumerationEnd::complete;
}

bool ExactWalk::report(const Node& node) {
  std::vector<ZZ> point;
  for (std::size_t j = 0; j < node.point.size(); ++j)
    point.push_back((node.point[j] + middle_[j]).numerator());
  if (!isInBox(coset(), point)) return true;
  if (visitor_->found(point) == Step::stop) end_ = EnumerationEnd::stopped;
  return end_ == EnumerationEnd::complete;
}

bool ExactWalk::visit(std::size_t k, const Node& node) {
  if (k == 0) return report(node);
  Interval range = interval(k, node);
  if (range.least > range.most) return true;
  const QQ offset = offsetOf(k, node);
  const QQ nearest = ceil(-offset);
  const QQ below = nearest - QQ(1);
  return visitSide(k, node, offset, max(nearest, range.least), QQ(1), range) &&
         visitSide(k, node, offset, below < range.most ? below : range.most, QQ(-1), range);
}

bool ExactWalk::visitSide(std::size_t k, const Node& node, const QQ& offset, QQ c, const QQ& step,
                          Interval& range) {
  path_[k - 1] = {&node, &range, &offset, &c, step.sign()};
  for (; c >= range.least && c <= range.most; c += step) {
    const std::optional<Node> child = childOf(k, node, offset, c);
    if (!child) return true;
    if (!pace(k - 1)) return false;
    if (!visit(k - 1, *child)) return false;
  }
  return true;
}

std::optional<ExactWalk::Node> ExactWalk::childOf(std::size_t k, const Node& node, const QQ& offset,
                                                  const QQ& c) {
  const QQ factor = c + offset;
  Node child{node.length + factor * factor * squaredLengths_[k - 1], node.direction, node.point};
  if (child.length > radius(k - 1)) {
    if (settings_.pruning && child.length <= radius(rows_.size())) hasPruned_ = true;
    return std::nullopt;
  }
  addMultiple(child.direction, factor, directions_[k - 1]);
  if (isCut(child)) return std::nullopt;
  addMultiple(child.point, c, rows_[k - 1]);
  return child;
}

std::vector<QQ> ExactWalk::choicesBelow(const std::vector<QQ>& path, std::size_t most) {
  settings_ = {};
  subtree_ = {};
  if (isEmptyBox(coset()) || isCut(root_)) return {};
  std::size_t k = rows_.size();
  Node node = root_;
  for (const QQ& c : path) {
    std::optional<Node> child = childOf(k, node, offsetOf(k, node), c);
    if (!child) return {};
    node = *std::move(child);
    --k;
  }
  const Interval range = interval(k, node);
  const QQ offset = offsetOf(k, node);
  std::vector<QQ> choices;
  const auto list = [&](QQ c, const QQ& step) {
    for (; c >= range.least && c <= range.most && choices.size() <= most; c += step) {
      if (!childOf(k, node, offset, c)) return;
      choices.push_back(c);
    }
  };
  const QQ nearest = ceil(-offset);
  const QQ below = nearest - QQ(1);
  list(max(nearest, range.least), QQ(1));
  list(below < range.most ? below : range.most, QQ(-1));
  return choices;
}

EnumerationEnd ExactWalk::runSubtree(EnumerationVisitor& visitor,
                                     const EnumerationSettings& settings, const Subtree& subtree) {
  visitor_ = &visitor;
  settings_ = settings;
  subtree_ = subtree;
  path_.resize(rows_.size());
  end_ = EnumerationEnd::complete;
  hasPruned_ = false;
  before_ = nodes_;
  if (isEmptyBox(coset()) || isCut(root_)) return end_;
  visit(rows_.size(), root_);
  return end_ == EnumerationEnd::complete && hasPruned_ ? EnumerationEnd::pruned : end_;
}

}  // namespace starsift

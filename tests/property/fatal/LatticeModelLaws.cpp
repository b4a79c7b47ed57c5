// Random sequences of operations on a prepared lattice against a slow model: the lattice that
// is spanned, the scale, the settings. After each of them the lattice knows only what is so.
#include <gtest/gtest.h>
#include <rapidcheck/state.h>

#include <algorithm>
#include <ostream>
#include <set>
#include <string>

#include "PreparedProblems.h"
#include "certificates/LatticeEquality.h"
#include "support/oracles/LatticeInvariants.h"

namespace starsift {
namespace {

using test::LatticeOfBoth;
using test::pointOf;
using test::Silence;
using test::SmallProblem;

/// What the lattice must be.
struct Model {
  /// Any basis, in raw coordinates.
  Matrix<QQ> basis;
  Vector<QQ> scale;
  /// The parameters consistency and scale.
  bool tracks = false;
  bool scales = false;
  bool isExact = false;
};

using Subject = YLattice<long double>;

template <class T>
Matrix<QQ> exactRows(const Matrix<T>& rows) {
  Matrix<QQ> result;
  result.convertFrom(rows, false);
  return result;
}

/// The points of all solutions and stars.
template <class T>
std::multiset<std::string> storedPoints(const Lattice<T, long double>& lattice) {
  std::multiset<std::string> points;
  for (const FiledSolution<T>& solution : lattice.found.solutions) {
    Vector<T> x;
    RC_ASSERT(lattice.lat2opt(solution, x, Constants::insert, Slacks::omit, Orientation::either) ==
              T(1));
    points.insert(oracle::pointText(pointOf(x)));
  }
  for (const Star<T>& star : lattice.file.stars) points.insert(oracle::pointText(pointOf<T>(star)));
  return points;
}

std::multiset<std::string> storedPoints(const Subject& subject) {
  return subject.withLive([](const auto& live) { return storedPoints(live); });
}

template <class T>
void checkAgainst(Lattice<T, long double>& lattice, const Model& model) {
  const std::string faults = test::sizeFaults(lattice) + test::knowledgeFaults(lattice);
  if (!faults.empty()) RC_FAIL(faults);
  Vector<QQ> scale;
  scale.convertFrom(lattice.basis.scale, false);
  RC_ASSERT(identical(scale, model.scale));
  RC_ASSERT(lattice.params.consistency == model.tracks);
  RC_ASSERT(sameLattice(exactRows(lattice.backMapAll(lattice.basis.B())), model.basis));
  RC_ASSERT(sameLattice(exactRows(lattice.basis.B_save), model.basis));
}

using Command = rc::state::Command<Model, Subject>;

/// A command with its checks. `act` is what it does to the live lattice.
template <class Self>
class Move : public Command {
 public:
  void run(const Model& model, Subject& subject) const override {
    const auto& self = static_cast<const Self&>(*this);
    const Silence silence;
    const std::multiset<std::string> before = storedPoints(subject);
    self.act(subject);
    const std::multiset<std::string> after = storedPoints(subject);
    RC_ASSERT(std::includes(after.begin(), after.end(), before.begin(), before.end()));
    const Model next = this->nextState(model);
    RC_ASSERT(subject.usesExact() == next.isExact);
    subject.withLive([&](auto& live) { checkAgainst(live, next); });
  }
  void show(std::ostream& stream) const override {
    stream << Self::name << '(' << i << ", " << j << ')';
  }

 protected:
  /// Any numbers; of the lattice they choose one of `count`.
  static Index chosen(Index number, Index count) { return number % count + 1; }

  const Index i = *rc::gen::inRange<Index>(0, 60);
  const Index j = *rc::gen::inRange<Index>(0, 60);
};

/// A move whose work is told for either number type by `on`.
template <class Self>
class LatticeMove : public Move<Self> {
 public:
  void act(Subject& subject) const {
    subject.withLive([this](auto& live) { static_cast<const Self&>(*this).on(live); });
  }
};

Vector<QQ> ones(Index count) {
  Vector<QQ> result(count);
  std::fill(result.begin(), result.end(), QQ(1));
  return result;
}

struct SetScale : LatticeMove<SetScale> {
  static constexpr const char* name = "setScale";
  QQ value() const { return QQ(j % 6 + 1); }
  void apply(Model& model) const override {
    model.scale[chosen(i, model.scale.dimension())] = value();
  }
  template <class T>
  void on(Lattice<T, long double>& lattice) const {
    lattice.setScale(chosen(i, lattice.basis.m), NumberConversion<T, QQ>::convert(value()));
  }
};

struct Swap : LatticeMove<Swap> {
  static constexpr const char* name = "swapBasisVectors";
  void on(auto& lattice) const {
    lattice.swapBasisVectors(chosen(i, lattice.basis.n), chosen(j, lattice.basis.n),
                             RowStatus::forget);
  }
};

struct Sort : LatticeMove<Sort> {
  static constexpr const char* name = "sortBasis";
  void on(auto& lattice) const { lattice.sortBasis(i % (lattice.basis.n + 1)); }
};

struct SizeReduce : LatticeMove<SizeReduce> {
  static constexpr const char* name = "sizeReduce";
  void on(auto& lattice) const {
    const Index k = chosen(i, lattice.basis.n);
    if (k > 1) RC_ASSERT(lattice.classicOrthogonalise(1, k - 1));
    lattice.sizeReduce(k, false);
  }
};

struct Exchange : LatticeMove<Exchange> {
  static constexpr const char* name = "swapStep";
  void on(auto& lattice) const {
    const Index k = chosen(i, lattice.basis.n);
    RC_ASSERT(lattice.classicOrthogonalise(1, k));
    if (j % 2 == 0)
      lattice.swapStep(k);
    else
      lattice.deepInsertStep(k);
  }
};

struct Orthogonalise : LatticeMove<Orthogonalise> {
  static constexpr const char* name = "orthogonalise";
  void on(auto& lattice) const {
    const Index to = i % (lattice.basis.n + 1);
    switch (j % 4) {
      case 0:
        RC_ASSERT(lattice.classicOrthogonalise(1, to));
        break;
      case 1:
        RC_ASSERT(lattice.modifiedOrthogonalise(1, to, OnDependency::report, LqCache::bypass) == 0);
        break;
      case 2:
        RC_ASSERT(lattice.modifiedOrthogonalise(1, to, OnDependency::report, LqCache::use) == 0);
        break;
      default:
        RC_ASSERT(lattice.fullOrthogonalise(1, to, OnDependency::report) == 0);
    }
  }
};

struct Pass : LatticeMove<Pass> {
  static constexpr const char* name = "lllPass";
  void on(auto& lattice) const {
    lattice.params.deep = j % 3 == 0;
    lattice.lllPass(1, chosen(i, lattice.basis.n), 0);
  }
};

struct Reduce : LatticeMove<Reduce> {
  static constexpr const char* name = "reduce";
  void on(auto& lattice) const {
    lattice.params.deep = j % 3 == 0;
    RC_ASSERT(lattice.reduce(0));
  }
};

struct Verify : LatticeMove<Verify> {
  static constexpr const char* name = "verifyTransformation";
  void on(auto& lattice) const {
    RC_ASSERT(lattice.verifyTransformation(LatticeKind::full, Announce::silent));
    RC_ASSERT(identical(lattice.basis.B_save, lattice.backMapAll(lattice.basis.B())));
  }
};

struct Track : LatticeMove<Track> {
  static constexpr const char* name = "consistency";
  void apply(Model& model) const override { model.tracks = i % 2 == 1; }
  void on(auto& lattice) const { lattice.params.consistency = i % 2 == 1; }
};

struct ChangeScale : LatticeMove<ChangeScale> {
  static constexpr const char* name = "scale";
  // Only a change has its reaction.
  void apply(Model& model) const override {
    if (model.scales != isOn()) model.scale = ones(model.scale.dimension());
    model.scales = isOn();
  }
  void on(auto& lattice) const { lattice.params.scale = isOn(); }
  bool isOn() const { return i % 2 == 1; }
};

struct Translate : LatticeMove<Translate> {
  static constexpr const char* name = "translate";
  void on(auto& lattice) const { lattice.params.translate = i % 2 == 1; }
};

struct Resize : LatticeMove<Resize> {
  static constexpr const char* name = "resize";
  void on(auto& lattice) const {
    lattice.resize(lattice.basis.n, i % 2 == 0 ? 0 : lattice.basis.m, Vectors::keep);
  }
};

struct BackUp : LatticeMove<BackUp> {
  static constexpr const char* name = "backupVectors";
  void on(auto& lattice) const {
    const auto mode = i % 3 == 0   ? BackupMode::vectors
                      : i % 3 == 1 ? BackupMode::coordinates
                                   : BackupMode::points;
    auto backup = lattice.backupVectors(mode);
    RC_ASSERT(lattice.found.solutions.dimension() == 0);
    RC_ASSERT(lattice.file.stars.dimension() == 0);
    lattice.restoreVectors(std::move(backup), mode);
  }
};

struct Assign : LatticeMove<Assign> {
  static constexpr const char* name = "assignFrom";
  template <class T>
  void on(Lattice<T, long double>& lattice) const {
    Lattice<T, long double> copy;
    copy.assignFrom(lattice, Settings::copy);
    lattice.reset(nullptr, LatPath::keep);
    lattice.assignFrom(copy, i % 2 == 0 ? Settings::keep : Settings::copy);
  }
};

struct Regenerate : LatticeMove<Regenerate> {
  static constexpr const char* name = "regenerateLattice";
  void apply(Model& model) const override { model.scale = ones(model.scale.dimension()); }
  void on(auto& lattice) const {
    lattice.params.variate = i % 2 == 1;
    try {
      lattice.regenerateLattice();
    } catch (const PrecisionException&) {
      RC_DISCARD("solutions that long double can't hold in between");
    }
  }
};

struct UseExtended : Move<UseExtended> {
  static constexpr const char* name = "useExtendedPrecision";
  void apply(Model& model) const override { model.isExact = true; }
  void act(Subject& subject) const { subject.useExtendedPrecision(); }
};

struct UseStandard : Move<UseStandard> {
  static constexpr const char* name = "useStandardPrecision";
  void apply(Model& model) const override { model.isExact = false; }
  void act(Subject& subject) const { subject.useStandardPrecision(); }
};

/// All entries are so small that no sequence of these moves leads out of long double.
template <class T>
bool isSmall(const Lattice<T, long double>& lattice) {
  return std::all_of(lattice.basis.B().begin(), lattice.basis.B().end(), [](const Vector<T>& row) {
    return std::all_of(row.begin(), row.end(), [](const T& entry) {
      return NumberTraits<T>::absolute(entry) <= T(1000000);
    });
  });
}

void checkMoves(const SmallProblem& small) {
  Subject subject;
  LatticeOfBoth::read(subject, small);
  RC_PRE(LatticeOfBoth::prepare(subject).empty());
  // Two conditions: the macro evaluates all of a failing one.
  RC_PRE(!subject.usesExact());
  RC_PRE(isSmall(subject.standard()));
  try {
    test::fileAll(subject.standard(), test::someStars(small.problem));
  } catch (const PrecisionException&) {
    RC_DISCARD("norms that long double can't hold");
  }
  Model model;
  model.basis = exactRows(subject.standard().basis.B_save);
  model.scale = ones(subject.standard().basis.m);
  model.scales = subject.standard().params.scale;
  rc::state::check(
      model, subject,
      rc::state::gen::execOneOfWithArgs<SetScale, Swap, Sort, SizeReduce, Exchange, Orthogonalise,
                                        Pass, Reduce, Verify, Track, ChangeScale, Translate, Resize,
                                        BackUp, Assign, Regenerate, UseExtended, UseStandard>());
}

TEST(LatticeMoves, LeaveALatticeThatKnowsOnlyWhatIsSo) {
  const auto result = rc::check([] { checkMoves(*test::arbitrarySmallProblem()); });
  EXPECT_TRUE(result);
}

}  // namespace
}  // namespace starsift

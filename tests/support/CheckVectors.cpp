#include "support/CheckVectors.h"

#include <vector>

#include "core/Exceptions.h"
#include "numbers/Gcd.h"
#include "numbers/VectorQQ.h"

namespace starsift::test {

namespace {

/// One coordinate: bounds, scale, and the entries of the basis.
template <class T>
struct Column {
  T lower;
  T upper;
  T scale;
  Vector<T> entries;
};

template <class T>
class Generator {
 public:
  Generator(const Vanu<T>& problem, bool withEquations)
      : problem_(problem),
        variables_(problem.rx.dimension()),
        all_(variables_ + problem.modulusCount()),
        withEquations_(withEquations) {
    findRange();
  }

  const T& range() const { return range_; }
  Index vectors() const { return all_ + 1; }

  void addEquations() {
    for (Index i = 1; i <= problem_.bg.dimension(); ++i)
      add({T(), T(), T(), entries(-problem_.bg[i], problem_.Ag[i], T(1))});
  }

  void addTarget() {
    if (!problem_.atuValid) return;
    const T c = range_ / targetWidth();
    add({T(), T(), c, entries(-(problem_.rtu + problem_.ltu) * c, problem_.atu, 2 * c)});
  }

  void addInequations() {
    for (Index i = 1; i <= problem_.lu.dimension(); ++i) {
      const T c = range_ / (problem_.ru[i] - problem_.lu[i]);
      add({-range_, range_, c,
           entries(-(problem_.lu[i] + problem_.ru[i]) * c, problem_.Au[i], 2 * c)});
    }
  }

  void addVariables(bool withModuli) {
    const T infinity = NumberTraits<T>::infinity();
    for (Index i = 1; i <= (withModuli ? all_ : variables_); ++i) {
      const bool isModulus = i > variables_;
      const bool isFree = isModulus || problem_.fd[i] == FreedomDegree::free;
      const bool hasUpper = !isModulus && problem_.fd[i] == FreedomDegree::bounded;
      T c(1);
      if (i > variables_ - problem_.deviationCount)
        c = range_;
      else if (hasUpper)
        c = range_ / problem_.rx[i];
      Vector<T> unit(all_);
      unit[i] = T(1);
      add({isFree ? -infinity : -range_, hasUpper ? range_ : infinity, c,
           entries(-range_, unit, 2 * c)});
    }
  }

  void addLast() {
    const T& value = problem_.homValue;
    add({value, value, T(), entries(value, Vector<T>(all_), T())});
  }

  void writeTo(Lattice<T, long double>& lattice) const {
    const auto m = static_cast<Index>(columns_.size());
    lattice.resize(vectors(), m, true);
    for (Index j = 1; j <= m; ++j) {
      const Column<T>& column = columns_[static_cast<std::size_t>(j - 1)];
      lattice.l[j] = column.lower;
      lattice.r[j] = column.upper;
      lattice.c[j] = column.scale;
      for (Index v = 1; v <= vectors(); ++v) lattice.B_save[v][j] = column.entries[v];
    }
    lattice.B = lattice.B_save;
    lattice.rangeMultiple = range_;
  }

 private:
  void add(Column<T>&& column) { columns_.push_back(std::move(column)); }

  /// `first`, then the entries of the row times `factor`, 0 where it has none.
  Vector<T> entries(const T& first, const Vector<T>& row, const T& factor) const {
    Vector<T> result(vectors());
    result[1] = first;
    for (Index v = 1; v <= row.dimension(); ++v) result[1 + v] = factor * row[v];
    return result;
  }

  T targetWidth() const {
    const T width = problem_.rtu - problem_.ltu;
    return NumberTraits<T>::isZero(width) ? T(1) : width;
  }

  void includeRange(const T& width) {
    range_ = lcmQQ(range_, width);
    if (NumberTraits<T>::overflowCheck(range_)) throw PrecisionException("R overflow");
  }

  void findRange() {
    for (Index i = 1; i <= variables_; ++i)
      if (problem_.fd[i] == FreedomDegree::bounded) includeRange(problem_.rx[i]);
    if (withEquations_) return;
    for (Index i = 1; i <= problem_.lu.dimension(); ++i)
      includeRange(problem_.ru[i] - problem_.lu[i]);
    if (problem_.atuValid) includeRange(targetWidth());
  }

  const Vanu<T>& problem_;
  Index variables_;
  /// With the moduli.
  Index all_;
  bool withEquations_;
  T range_ = T(1);
  std::vector<Column<T>> columns_;
};

}  // namespace

template <class T>
void generateByHand(Lattice<T, long double>& lattice, LatticeStage stage) {
  using enum LatticeStage;
  const bool forEquations = stage == equations || stage == equationsGone;
  const bool withModuli = stage != full && lattice.modulusCount() > 0;
  Generator<T> generator(lattice, forEquations);
  if (stage == equations) generator.addEquations();
  if (!forEquations) generator.addTarget();
  if (!forEquations) generator.addInequations();
  generator.addVariables(withModuli);
  generator.addLast();
  generator.writeTo(lattice);
  lattice.latticeKind = forEquations ? LatticeKind::equations : LatticeKind::full;
  lattice.equationsRemoved = stage != equations;
  lattice.modsInLattice = withModuli;
}

template void generateByHand(Lattice<long double, long double>&, LatticeStage);
template void generateByHand(Lattice<QQ, long double>&, LatticeStage);

}  // namespace starsift::test

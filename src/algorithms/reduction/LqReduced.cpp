#include "algorithms/reduction/LqReduced.h"

#include "system/Exceptions.h"

namespace starsift {

namespace {

/// Equal values that are interchangeable: 0 and -0 are not, nans are.
bool sameBits(const Vector<long double>& a, const Vector<long double>& b) {
  if (a.dimension() != b.dimension()) return false;
  for (Index j = 1; j <= a.dimension(); ++j) {
    const ExtendedBits left(a[j]);
    const ExtendedBits right(b[j]);
    if (left.mantissa != right.mantissa || left.signAndExponent != right.signAndExponent)
      return false;
  }
  return true;
}

/// The work rows of a run: one matrix that each step changes, or one matrix per step. After
/// a run the cache holds exactly the valid elements.
template <class R>
class WorkRows {
 public:
  /// `cache` may be null; elements 1..kk of it are kept.
  WorkRows(Array<Matrix<R>>* cache, Index kk, Index mm, Index columns)
      : cache_(cache), mm_(mm), columns_(columns) {
    if (cache_ == nullptr) {
      single_.resize(mm, columns, false);
      return;
    }
    if (kk > 1 && cache_->dimension() >= kk) known_ = (*cache_)[1].rowCount();
    cache_->resize(mm, false);  // room for all
    cache_->resize(kk, false);
    for (Index k = 1; k <= kk; ++k) fit(k);
  }

  /// Row j >= k after steps 1..k-1.
  Vector<R>& row(Index k, Index j) {
    return cache_ == nullptr ? single_[j] : (*cache_)[k][j - k + 1];
  }

  /// True if row j of the last run equals `source` and is stored in element kk.
  bool knows(Index j, const Vector<R>& source) {
    return j <= known_ && sameBits((*cache_)[1][j], source);
  }

  /// Makes room for the rows after step k.
  void open(Index k) {
    if (cache_ == nullptr || k == mm_) return;
    cache_->resize(k + 1, false);
    fit(k + 1);
  }

 private:
  void fit(Index k) { (*cache_)[k].resize(mm_ - k + 1, columns_, false); }

  Array<Matrix<R>>* cache_;
  Index mm_;
  Index columns_;
  Matrix<R> single_;
  /// Number of rows of the last run if that run reached element kk, else 0.
  Index known_ = 0;
};

/// One run: the arguments of lq_reduced and its work rows.
template <class R>
class Run {
 public:
  Run(Matrix<R>& Lr, Matrix<R>& Q, Vector<R>& d, WorkRows<R>& work, Index mm)
      : Lr_(Lr), Q_(Q), d_(d), work_(work), mm_(mm) {}

  /// Applies steps 1..kk-1 to row j.
  void replay(Index j, Index kk, const Vector<R>& source) {
    work_.row(1, j) = source;
    for (Index i = 1; i < kk; ++i) reduce(i, j);
  }

  /// Performs step k; false if the pivot vanishes.
  bool step(Index k) {
    Q_[k] = work_.row(k, k);
    d_[k] = Q_[k] * Q_[k];
    if (NumberTraits<R>::isInfinite(d_[k]))
      throw DecimalPrecisionException("_d has infinite entry");
    if (NumberTraits<R>::isZero(d_[k])) return false;
    for (Index i = 1; i < k; ++i) Lr_[i][k] = R();
    Lr_[k][k] = R(1);
    work_.open(k);
    for (Index j = k + 1; j <= mm_; ++j) reduce(k, j);
    return true;
  }

 private:
  /// Subtracts the projection onto pivot i from row j.
  void reduce(Index i, Index j) {
    const Vector<R>& before = work_.row(i, j);
    Vector<R>& after = work_.row(i + 1, j);
    const Vector<R>& pivot = Q_[i];
    const R factor = pivot * before / d_[i];
    Lr_[j][i] = factor;
    for (Index c = 1; c <= pivot.dimension(); ++c) after[c] = before[c] - factor * pivot[c];
  }

  Matrix<R>& Lr_;
  Matrix<R>& Q_;
  Vector<R>& d_;
  WorkRows<R>& work_;
  Index mm_;
};

}  // namespace

template <class R>
Index lq_reduced(const Matrix<R>& A, Matrix<R>& Lr, Matrix<R>& Q, Vector<R>& _d,
                 Array<Matrix<R>>* cache, Index kk, Index mm, const StepObserver& onStep) {
  if (mm == 0) mm = A.rowCount();
  if (kk < 1) fail("lq_reduced: kk is invalid (< 1)");
  if (mm < kk || mm > A.rowCount()) fail("lq_reduced: dimension mismatch");
  if (cache == nullptr && kk != 1) fail("lq_reduced: non caching variant needs kk == 1");
  if (cache != nullptr && cache->dimension() < kk - 1) fail("lq_reduced: dimension mismatch");
  _d.resize(mm, false);
  Q.resize(mm, A.columnCount(), false);
  Lr.resize(mm, mm, false);
  WorkRows<R> work(cache, kk, mm, A.columnCount());
  Run<R> run(Lr, Q, _d, work, mm);
  for (Index j = kk; j <= mm; ++j)
    if (!work.knows(j, A[j])) run.replay(j, kk, A[j]);
  for (Index k = kk; k <= mm; ++k) {
    if (onStep) onStep(k);
    if (!run.step(k)) return k;
  }
  return 0;
}

template Index lq_reduced(const Matrix<long double>&, Matrix<long double>&, Matrix<long double>&,
                          Vector<long double>&, Array<Matrix<long double>>*, Index, Index,
                          const StepObserver&);

}  // namespace starsift

// Lattice: stored vectors across a change of the lattice.
#pragma once

#include <algorithm>
#include <optional>
#include <utility>

#include "algorithms/exact/ExactProduct.h"
#include "lattice/Lattice.h"
#include "lattice/find/LatticeCheck.inl"
#include "lattice/state/ClearAtEnd.h"
#include "problem/Rows.h"

namespace starsift {

namespace latticebackup {

/// The form of a vector that is kept; nullopt if it doesn't survive.
template <class T, class R>
std::optional<Vector<T>> backupForm(Lattice<T, R>& lattice, const Vector<T>& vector,
                                    BackupMode mode, Index count, Index position) {
  const Index m = lattice.basis.m;
  Vector<T> form(vector);
  switch (mode) {
    case BackupMode::vectors:
      form.resize(m, false);
      return form;
    case BackupMode::columns:
      if (form.dimension() != m) return std::nullopt;
      for (Index i = position; i < position + count; ++i)
        // The coordinate of a violated equation can't be removed.
        if (!lattice.frame.equationsRemoved && !(form[i] == T())) return std::nullopt;
      removeElements(form, position, count);
      return form;
    case BackupMode::coordinates:
      if (vector.dimension() != m ||
          !lattice.coordinatesOf(vector, form, Over::working, Coordinates::integer))
        return std::nullopt;
      return form;
    case BackupMode::points:
      return lattice.starOf(vector);
  }
  return std::nullopt;
}

/// The raw vector of such a form, over the untransformed `basis`; nullopt if there is none.
template <class T, class R>
std::optional<Vector<T>> restoredForm(const Lattice<T, R>& lattice, const Vector<T>& form,
                                      BackupMode mode, const Matrix<T>& basis) {
  if (mode == BackupMode::coordinates) {
    if (form.dimension() != lattice.basis.n) return std::nullopt;
    return exactProduct(form, basis);
  }
  if (mode != BackupMode::points) return form;
  Vector<T> vector;
  try {
    lattice.opt2lat(form, vector, Space::raw, T(1));
  } catch (const ModuloException&) {
    return std::nullopt;
  }
  return vector;
}

/// The raw vector doesn't stand for a solution of the problem as read.
template <class T, class R>
bool violatesProblem(const Lattice<T, R>& lattice, const Vector<T>& vector) {
  const std::optional<Star<T>> star = lattice.starOf(vector);
  return !star || !lattice.file.judge(*star).isSolution;
}

/// A vector of a heuristic collection, with its score in the present lattice.
template <class T, class R>
HeuristicVector<T, R> scored(const Lattice<T, R>& lattice, const Vector<T>& vector,
                             std::int64_t time) {
  HeuristicVector<T, R> result;
  static_cast<Vector<T>&>(result) = vector;
  result.time = lattice.discoveryTime(time);
  lattice.score(result.score, vector, Space::raw);
  return result;
}

}  // namespace latticebackup

template <class T, class R>
VectorBackup<T, R> Lattice<T, R>::backupVectors(BackupMode mode, Index count, Index position) {
  VectorBackup<T, R> backup;
  backup.stars.exchange(file.stars);
  const auto keep = [&](BackupOrigin origin, const TimeVector<T>& source,
                        const latticecheck::Judgement& judged = nullptr) {
    std::optional<Vector<T>> form;
    if (judged && mode == BackupMode::points)
      form.emplace().convertFrom(judged->star.x(), false);
    else
      form = latticebackup::backupForm(*this, source, mode, count, position);
    if (!form) return;
    auto& entry = backup.entries.emplace_back();
    entry.origin = origin;
    static_cast<Vector<T>&>(entry.vector) = std::move(*form);
    entry.vector.time = source.time;
    entry.judged = judged;
  };
  if (found.bestVector.isSet()) keep(BackupOrigin::best, found.bestVector);
  if (found.bestTarget.isSet())
    keep(BackupOrigin::target, found.bestTarget, found.bestTarget.judged);
  for (const FiledSolution<T>& solution : found.solutions)
    keep(BackupOrigin::store, solution, solution.judged);
  found.discard();
  for (auto [from, to] :
       {std::pair(&found.collected, &backup.collected), {&found.chosen, &backup.chosen}}) {
    to->exchange(*from);
    from->setLimit(to->limit());
    for (HeuristicVector<T, R>* vector = to->first(); vector != nullptr;) {
      HeuristicVector<T, R>* const next = vector->next;
      if (auto form = latticebackup::backupForm(*this, *vector, mode, count, position))
        static_cast<Vector<T>&>(*vector) = std::move(*form);
      else
        to->take(vector);
      vector = next;
    }
  }
  return backup;
}

template <class T, class R>
void Lattice<T, R>::restoreVectors(VectorBackup<T, R> backup, BackupMode mode) {
  run.restoring = true;
  const ClearAtEnd clearing(run.restoring);
  appendStars(backup.stars, std::move(file.stars));
  file.stars.exchange(backup.stars);
  const bool hasVectors = !backup.entries.empty() || backup.collected.first() != nullptr ||
                          backup.chosen.first() != nullptr;
  const Matrix<T> rows =
      hasVectors && mode == BackupMode::coordinates ? basis.untransformed() : Matrix<T>();
  for (const auto& entry : backup.entries) {
    const auto vector = latticebackup::restoredForm(*this, entry.vector, mode, rows);
    if (!vector) continue;
    const unsigned bits =
        latticecheck::checkVector(*this, *vector, Space::raw, entry.vector.time, entry.judged);
    if (entry.origin == BackupOrigin::target && (bits & CHECK_SOLUTION) == 0 &&
        latticebackup::violatesProblem(*this, *vector))
      fail("This case should not happen between a backup / restore!");
  }
  for (auto [from, to] :
       {std::pair(&backup.collected, &found.collected), {&backup.chosen, &found.chosen}})
    for (const HeuristicVector<T, R>& entry : *from) {
      const auto vector = latticebackup::restoredForm(*this, entry, mode, rows);
      if (vector && isConsistent(*vector, Match::tolerant))
        to->insert(latticebackup::scored(*this, *vector, entry.time));
    }
}

}  // namespace starsift

// Lattice: the vectors that it has stored, across a change of the lattice itself.
#pragma once

#include <algorithm>
#include <optional>
#include <utility>

#include "algorithms/exact/ExactProduct.h"
#include "lattice/ClearAtEnd.h"
#include "lattice/Lattice.h"
#include "problem/Rows.h"

namespace starsift {

template <class T, class R>
VectorBackup<T, R> Lattice<T, R>::backupVectors(BackupMode mode, Index count, Index position) {
  VectorBackup<T, R> backup;
  backup.stars.exchange(file.stars);
  const auto keep = [&](BackupOrigin origin, const TimeVector<T>& source,
                        const Judgement& judged = nullptr) {
    std::optional<Vector<T>> form;
    if (judged && mode == BackupMode::points)
      form.emplace().convertFrom(judged->star.x(), false);
    else
      form = backupForm(source, mode, count, position);
    if (!form) return;
    auto& entry = backup.entries.emplace_back();
    entry.origin = origin;
    static_cast<Vector<T>&>(entry.vector) = std::move(*form);
    entry.vector.time = source.time;
    entry.judged = judged;
  };
  if (bestVector.isSet()) keep(BackupOrigin::best, bestVector);
  if (bestTarget.isSet()) keep(BackupOrigin::target, bestTarget, bestTarget.judged);
  for (const FiledSolution<T>& solution : solutions)
    keep(BackupOrigin::store, solution, solution.judged);
  discardVectors();
  for (auto [from, to] : {std::pair(&collected, &backup.collected), {&chosen, &backup.chosen}}) {
    to->exchange(*from);
    from->setLimit(to->limit());
    for (HeuristicVector<T, R>* vector = to->first(); vector != nullptr;) {
      HeuristicVector<T, R>* const next = vector->next;
      if (auto form = backupForm(*vector, mode, count, position))
        static_cast<Vector<T>&>(*vector) = std::move(*form);
      else
        to->take(vector);
      vector = next;
    }
  }
  return backup;
}

template <class T, class R>
std::optional<Vector<T>> Lattice<T, R>::backupForm(const Vector<T>& vector, BackupMode mode,
                                                   Index count, Index position) {
  Vector<T> form(vector);
  switch (mode) {
    case BackupMode::vectors:
      form.resize(m, false);
      return form;
    case BackupMode::columns:
      if (form.dimension() != m) return std::nullopt;
      for (Index i = position; i < position + count; ++i)
        // An equation that doesn't hold is no coordinate to leave out.
        if (!equationsRemoved && !(form[i] == T())) return std::nullopt;
      removeElements(form, position, count);
      return form;
    case BackupMode::coordinates:
      if (vector.dimension() != m || !coordinatesOf(vector, form, false)) return std::nullopt;
      return form;
    case BackupMode::points:
      return starOf(vector);
  }
  return std::nullopt;
}

template <class T, class R>
std::optional<Vector<T>> Lattice<T, R>::restoredForm(const Vector<T>& form, BackupMode mode,
                                                     const Matrix<T>& basis) const {
  if (mode == BackupMode::coordinates) {
    if (form.dimension() != n) return std::nullopt;
    return exactProduct(form, basis);
  }
  if (mode != BackupMode::points) return form;
  Vector<T> vector;
  try {
    opt2lat(form, vector, false, T(1));
  } catch (const ModuloException&) {
    return std::nullopt;
  }
  return vector;
}

template <class T, class R>
void Lattice<T, R>::restoreVectors(VectorBackup<T, R> backup, BackupMode mode) {
  restoring = true;
  const ClearAtEnd clearing(restoring);
  appendStars(backup.stars, std::move(file.stars));
  file.stars.exchange(backup.stars);
  const Matrix<T> basis = mode == BackupMode::coordinates ? backMapAll(B) : Matrix<T>();
  for (const auto& entry : backup.entries) {
    const auto vector = restoredForm(entry.vector, mode, basis);
    if (!vector) continue;
    const unsigned bits = checkVector(*vector, false, entry.vector.time, entry.judged);
    if (entry.origin == BackupOrigin::target && (bits & CHECK_SOLUTION) == 0 &&
        violatesProblem(*vector))
      fail("This case should not happen between a backup / restore!");
  }
  for (auto [from, to] : {std::pair(&backup.collected, &collected), {&backup.chosen, &chosen}})
    for (const HeuristicVector<T, R>& entry : *from) {
      const auto vector = restoredForm(entry, mode, basis);
      if (vector && isConsistent(*vector, false)) to->insert(scored(*vector, entry.time));
    }
}

template <class T, class R>
bool Lattice<T, R>::violatesProblem(const Vector<T>& vector) const {
  const std::optional<Star<T>> star = starOf(vector);
  return !star || !file.judge(*star).isSolution;
}

}  // namespace starsift

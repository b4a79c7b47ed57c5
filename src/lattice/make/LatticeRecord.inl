// Lattice: construction, reset, resize, assignment, and the reactions to changed
// parameters. Each part clears, resizes and converts itself.
#pragma once

#include "lattice/Lattice.h"
#include "lattice/state/ClearAtEnd.h"

namespace starsift {

template <class T, class R>
Lattice<T, R>::Lattice(const Matrix<T>* source) : params(this) {
  reset(source, LatPath::clear);
}

template <class T, class R>
Lattice<T, R>::~Lattice() = default;

template <class T, class R>
void Lattice<T, R>::reset(const Matrix<T>* source, LatPath path) {
  basis.reset(source, this->homValue);
  gramSchmidt.resize(basis.n);
  gramSchmidt.clearLengths();
  frame.clear(basis.m);
  found.discard();
  found.clearCollections();
  run.resize(basis.n);
  run.clearCounts();
  if (run.consistencyForced) setTracking(false);
  run.consistencyForced = false;
  if (path == LatPath::clear) latFile.clear();
}

template <class T, class R>
void Lattice<T, R>::resize(Index newN, Index newM, Vectors stored) {
  if (newN < 0 || newM < 0) return;
  basis.resize(newN, newM > 0 ? newM : basis.m);
  basis.clearBits(1, ST_FACTORS);
  gramSchmidt.resize(basis.n);
  frame.resize(basis.m);
  run.resize(basis.n);
  if (stored == Vectors::discard)
    found.discard();
  else
    found.fit(basis.m);
}

template <class T, class R>
template <class U>
void Lattice<T, R>::assignFrom(const Lattice<U, R>& other, Settings settings) {
  if (static_cast<const void*>(this) == static_cast<const void*>(&other)) return;
  Vanu<T>::convertFrom(other);
  optOriginal.convertFrom(other.optOriginal);
  file.convertFrom(other.file);
  latFile = other.latFile;
  if (settings == Settings::copy) params.convertFrom(other.params);
  found.convertFrom(other.found);
  basis.convertFrom(other.basis);
  followParams();
  gramSchmidt = other.gramSchmidt;
  frame.convertFrom(other.frame);
  run.copyFrom(other.run);
}

template <class T, class R>
template <class U>
void Lattice<T, R>::convertFrom(const Lattice<U, R>& other) {
  assignFrom(other, Settings::copy);
}

template <class T, class R>
void Lattice<T, R>::release() {
  optOriginal = Vanu<T>();
  file.release();
}

template <class T, class R>
void Lattice<T, R>::followParams() {
  basis.tracksMoves = params.consistency;
  basis.isTranslated = params.translate;
}

template <class T, class R>
void Lattice<T, R>::setTracking(bool on) {
  this->reactionsOff = true;
  const ClearAtEnd clearing(this->reactionsOff);
  params.consistency = on;
}

template <class T, class R>
void Lattice<T, R>::consistencyChanged(bool on) {
  basis.tracksMoves = on;
  if (this->reactionsOff || !on) return;
  basis.B_save = basis.untransformed();
  pushTransformation(Stack::restart);
  basis.savedFactors.clear();
  this->trackingRestarted = true;
}

template <class T, class R>
void Lattice<T, R>::scaleChanged() {
  if (!this->reactionsOff) basis.clearScale(this->homValue);
}

template <class T, class R>
void Lattice<T, R>::translateChanged() {
  basis.isTranslated = params.translate;
  if (!this->reactionsOff) basis.clearTranslation(this->homValue);
}

}  // namespace starsift

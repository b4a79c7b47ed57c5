// Lattice: files and the stars in them.
#pragma once

#include <iostream>
#include <optional>
#include <sstream>
#include <string>
#include <utility>

#include "files/FileNames.h"
#include "files/LatText.h"
#include "files/SolReader.h"
#include "files/SolWriter.h"
#include "lattice/Lattice.h"
#include "stars/StarCheck.h"
#include "stars/StarOrder.h"
#include "system/Console.h"

namespace starsift {

/// The version that new stars are filed under.
constexpr const char* solverVersion = "2.4.2";

template <class T, class R>
void Lattice<T, R>::setFileNames(const std::string& path) {
  const FileNames names = fileNames(path);
  this->optFile = names.optFile;
  this->solFile = names.solFile;
  optOriginal.optFile = names.optFile;
  optOriginal.solFile = names.solFile;
  latFile = names.latFile;
}

template <class T, class R>
bool Lattice<T, R>::readStarsFromSolFile(bool peek) {
  return readStars(this->solFile, problemAsRead(), stars, peek);
}

template <class T, class R>
bool Lattice<T, R>::readStarsExactly(bool peek) {
  return starsift::readStarsExactly(this->solFile, problemAsRead(), stars, peek);
}

template <class T, class R>
bool Lattice<T, R>::checkStars() {
  return starsift::checkStars(problemAsRead(), stars);
}

template <class T, class R>
void Lattice<T, R>::writeSolFile(bool complete) {
  if (!run.outputSwitch) return;
  if (!complete) sol2star();
  if (this->solFile.empty()) {
    std::cerr << "\n*** solFile is not set - solution write not possible" << endLine();
    stampOutputTime();
    return;
  }
  writeStars(this->solFile, stars);
}

template <class T, class R>
void Lattice<T, R>::sol2star() {
  Array<Star<T>> added = solutionStars();
  if (!added.isSet()) return;
  const Index before = stars.dimension();
  stars.resize(before + added.dimension(), true);
  std::move(added.begin(), added.end(), stars.begin() + before);
  sortStars(stars);
  removeDuplicates(stars, params.bench > 0);
}

template <class T, class R>
Array<Star<T>> Lattice<T, R>::solutionStars() const {
  const Index targets = found.bestTarget.isSet() ? 1 : 0;
  Array<Star<T>> result(targets + found.solutions.dimension());
  if (!result.isSet()) return result;
  std::ostringstream paramsText;
  paramsText << params;
  StarChecker<T> checker(problemAsRead());
  const auto fill = [&](Star<T>& star, const TimeVector<T>& source) {
    std::optional<Star<T>> point = starOf(source);
    if (!point) fail("sol2star: lat2opt can not compute x_opt");
    star = std::move(*point);
    checker.check(star);
    star.paramsText = paramsText.str();
    star.versionText = solverVersion;
    star.time = source.time;
    star.fresh = true;
  };
  if (found.bestTarget.isSet()) fill(result[1], found.bestTarget);
  for (Index i = 1; i <= found.solutions.dimension(); ++i)
    fill(result[targets + i], found.solutions[i]);
  return result;
}

template <class T, class R>
void Lattice<T, R>::writeLatFile() {
  if (!run.outputSwitch) return;
  if (latFile.empty()) {
    std::cerr << "\n*** latFile is not set - lattice write not possible" << endLine();
    stampOutputTime();
    return;
  }
  LatticeData<T> data;
  data.basis = basis.untransformed();
  data.l = frame.l;
  data.r = frame.r;
  data.c = frame.c;
  data.rangeMultiple = frame.rangeMultiple;
  data.lx = this->lx;
  data.rx = this->rx;
  data.hasTarget = this->atuValid;
  data.ltu = this->ltu;
  data.rtu = this->rtu;
  data.seconds = secondsSinceStart();
  writeLat(latFile, latText(data));
}

}  // namespace starsift

// Lattice: files and the stars in them.
#pragma once

#include <iostream>
#include <optional>
#include <sstream>
#include <string>
#include <utility>

#include "files/FileNames.h"
#include "files/LatText.h"
#include "lattice/Lattice.h"
#include "system/Console.h"

namespace starsift {

/// The version that new stars are filed under.
constexpr const char* solverVersion = "2.4.2";

template <class T, class R>
void Lattice<T, R>::setFileNames(const std::string& path) {
  const FileNames names = fileNames(path);
  this->optFile = names.optFile;
  this->solFile = names.solFile;
  file.setPaths(names);
  latFile = names.latFile;
}

template <class T, class R>
bool Lattice<T, R>::readStarsFromSolFile(bool peek) {
  return file.readStars(peek ? StarReading::peek : StarReading::append);
}

template <class T, class R>
bool Lattice<T, R>::readStarsExactly(bool peek) {
  return file.readStarsExactly(peek ? StarReading::peek : StarReading::append);
}

template <class T, class R>
bool Lattice<T, R>::checkStars() {
  return file.checkStars();
}

template <class T, class R>
void Lattice<T, R>::writeSolFile(bool complete) {
  if (!outputSwitch) return;
  if (!complete) sol2star();
  if (file.path().empty()) {
    std::cerr << "\n*** solFile is not set - solution write not possible" << endLine();
    stampOutputTime();
    return;
  }
  file.write();
}

template <class T, class R>
void Lattice<T, R>::sol2star() {
  Array<Star<T>> found = solutionStars();
  if (!found.isSet()) return;
  file.appendStars(std::move(found));
  file.sortStars();
  file.removeDuplicates(params.bench > 0 ? Duplicates::ofPointAndParams : Duplicates::ofPoint);
}

template <class T, class R>
Array<Star<T>> Lattice<T, R>::solutionStars() const {
  const Index targets = bestTarget.isSet() ? 1 : 0;
  Array<Star<T>> found(targets + solutions.dimension());
  if (!found.isSet()) return found;
  std::ostringstream paramsText;
  paramsText << params;
  const auto fill = [&](Star<T>& star, const TimeVector<T>& source) {
    std::optional<Star<T>> point = starOf(source);
    if (!point) fail("sol2star: lat2opt can not compute x_opt");
    star = std::move(*point);
    StarVerdict<T> verdict = file.judge(star);
    star.targetValues.exchange(verdict.targetValues);
    star.targetNorm = verdict.norms.target;
    star.slackNorm = verdict.norms.slack;
    star.paramsText = paramsText.str();
    star.versionText = solverVersion;
    star.time = source.time;
    star.fresh = true;
  };
  if (bestTarget.isSet()) fill(found[1], bestTarget);
  for (Index i = 1; i <= solutions.dimension(); ++i) fill(found[targets + i], solutions[i]);
  return found;
}

template <class T, class R>
void Lattice<T, R>::writeLatFile() {
  if (!outputSwitch) return;
  if (latFile.empty()) {
    std::cerr << "\n*** latFile is not set - lattice write not possible" << endLine();
    stampOutputTime();
    return;
  }
  LatticeData<T> data;
  data.basis = backMapAll(B);
  data.l = l;
  data.r = r;
  data.c = c;
  data.rangeMultiple = rangeMultiple;
  data.lx = this->lx;
  data.rx = this->rx;
  data.hasTarget = this->atuValid;
  data.ltu = this->ltu;
  data.rtu = this->rtu;
  data.seconds = secondsSinceStart();
  writeLat(latFile, latText(data));
}

}  // namespace starsift

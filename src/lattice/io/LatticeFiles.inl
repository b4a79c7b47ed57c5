// Lattice: its files and stars.
#pragma once

#include <ostream>
#include <string>
#include <utility>

#include "files/FileNames.h"
#include "files/LatText.h"
#include "files/WriteOrFail.h"
#include "lattice/Lattice.h"
#include "system/Console.h"
#include "system/Exceptions.h"
#include "system/Failure.h"
#include "text/TextStreams.h"

namespace starsift {

namespace latticefiles {

/// The version that new stars are filed under.
constexpr const char* solverVersion = "2.4.2";

inline std::string lineOf(const Params& params) {
  TextWriter text;
  text << params;
  return text.str();
}

/// Best target and solutions with a number above `last` as stars over N.
template <class N, class T>
Array<Star<N>> freshStars(const FiledSolution<T>& best, const Array<FiledSolution<T>>& solutions,
                          Index last, const std::string& paramsText) {
  Array<Star<N>> result;
  const auto add = [&](const FiledSolution<T>& solution) {
    if (!solution.judged) fail("sol2star: lat2opt can not compute x_opt");
    if (solution.judged->number <= last) return;
    Star<N> star;
    star.convertFrom(solution.judged->star, false);
    star.paramsText = paramsText;
    star.versionText = solverVersion;
    star.time = solution.time;
    star.fresh = true;
    append(result, std::move(star));
  };
  if (best.isSet()) add(best);
  for (const FiledSolution<T>& solution : solutions) add(solution);
  return result;
}

/// Appends stars, if there are any, sorts, and removes duplicates.
template <class T, class R>
void joinStars(Lattice<T, R>& lattice, Array<Star<T>> added) {
  if (!added.isSet()) return;
  lattice.file.appendStars(std::move(added));
  lattice.file.sortStars();
  lattice.file.removeDuplicates(lattice.params.bench > 0 ? Duplicates::ofPointAndParams
                                                         : Duplicates::ofPoint);
}

/// Reports a message on the error stream unless it was the last one reported so.
inline void reportOnce(const std::string& message) {
  static std::string last;
  if (std::exchange(last, message) == message) return;
  remarkStream() << "*** " << message << endLine();
  stampOutputTime();
}

}  // namespace latticefiles

template <class T, class R>
void Lattice<T, R>::setFileNames(const std::string& path) {
  const FileNames names = fileNames(path);
  this->optFile = names.optFile;
  this->solFile = names.solFile;
  file.setPaths(names);
  latFile = names.latFile;
}

template <class T, class R>
bool Lattice<T, R>::readStarsFromSolFile(StarReading reading) {
  return file.readStars(reading);
}

template <class T, class R>
bool Lattice<T, R>::readStarsExactly(StarReading reading) {
  return file.readStarsExactly(reading);
}

template <class T, class R>
bool Lattice<T, R>::checkStars() {
  return file.checkStars();
}

template <class T, class R>
void Lattice<T, R>::writeSolFile(Stars what) {
  if (!run.outputSwitch) return;
  if (what == Stars::withSolutions) {
    Array<Star<T>> added = solutionStars();
    // Writing may throw, and the step is repeated then: the stars must be unchanged until here.
    if (!file.path().empty()) {
      requireExactText(file.stars);
      requireExactText(added);
    }
    latticefiles::joinStars(*this, std::move(added));
  }
  if (file.path().empty()) {
    remarkStream() << "\n*** solFile is not set - solution write not possible" << endLine();
    stampOutputTime();
    return;
  }
  writeOrFail([this] {
    if (file.write() == Commit::changed)
      throw WriteException("Others write all the time to file: " + file.path());
  });
}

template <class T, class R>
void Lattice<T, R>::sol2star() {
  latticefiles::joinStars(*this, solutionStars());
}

template <class T, class R>
Array<Star<T>> Lattice<T, R>::solutionStars() const {
  return latticefiles::freshStars<T>(found.bestTarget, found.solutions, 0,
                                     latticefiles::lineOf(params));
}

template <class T, class R>
Array<Star<QQ>> Lattice<T, R>::starsFiledAfter(Index last) const {
  return latticefiles::freshStars<QQ>(found.bestTarget, found.solutions, last, paramsText());
}

template <class T, class R>
std::string Lattice<T, R>::paramsText() const {
  // The two parameters of type T have another text in exact numbers.
  ExtendedParams<QQ> exact;
  exact.convertFrom(params);
  return latticefiles::lineOf(exact);
}

template <class T, class R>
void Lattice<T, R>::signStar(Star<QQ>& star, const std::string& paramsText) const {
  star.paramsText = paramsText;
  star.versionText = latticefiles::solverVersion;
  star.time = discoveryTime(0);
  star.fresh = true;
}

template <class T, class R>
void Lattice<T, R>::writeLatFile() {
  if (!run.outputSwitch) return;
  if (latFile.empty()) {
    remarkStream() << "\n*** latFile is not set - lattice write not possible" << endLine();
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
  writeOrFail([&] {
    try {
      writeLat(latFile, latText(data));
    } catch (const LinkException& exception) {
      // Whoever has put it there shall not end a search.
      latticefiles::reportOnce(exception.message());
    }
  });
}

}  // namespace starsift

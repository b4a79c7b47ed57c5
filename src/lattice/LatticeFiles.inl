// Lattice: files and the stars in them.
#pragma once

#include <iostream>

#include "core/Console.h"
#include "files/FileNames.h"
#include "files/SolReader.h"
#include "files/SolWriter.h"
#include "files/StarCheck.h"
#include "lattice/Lattice.h"

namespace starsift {

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
void Lattice<T, R>::writeSolFile() {
  if (!outputSwitch) return;
  if (this->solFile.empty()) {
    std::cerr << "\n*** solFile is not set - solution write not possible" << endLine();
    stampOutputTime();
    return;
  }
  writeStars(this->solFile, stars);
}

}  // namespace starsift

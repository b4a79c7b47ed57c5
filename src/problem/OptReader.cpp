#include "problem/OptReader.h"

#include "core/VectorText.h"
#include "problem/OptChecks.h"
#include "system/Exceptions.h"
#include "text/InputText.h"

namespace starsift {

namespace {

void readTargets(TextCursor& source, Vanu<QQ>& problem) {
  readVector(source, problem.dt);
  skipWithComments(source);
  if (source.peek() == '=') {
    source.take();
    readVector(source, problem.kt);
  } else {
    problem.kt = problem.dt;
  }
  optchecks::thresholds(problem);
  readMatrix(source, problem.At);
  optchecks::targetRows(problem);
}

void readEquations(TextCursor& source, Vanu<QQ>& problem) {
  readMatrix(source, problem.Ag);
  readVector(source, problem.bg);
  optchecks::equationRows(problem);
  readVector(source, problem.qg);
  optchecks::moduli(problem);
}

void readInequations(TextCursor& source, Vanu<QQ>& problem, Index n) {
  readVector(source, problem.lu);
  optchecks::inequationRows(problem);
  readVector(source, problem.ru);
  optchecks::inequationBounds(problem);
  readVector(source, problem.dx);
  readVector(source, problem.lx);
  readVector(source, problem.rx);
  optchecks::variables(problem, n);
}

InputText optText(const std::string& path) {
  try {
    if (std::optional<InputText> text = readFileText(path)) return std::move(*text);
  } catch (const ReadException&) {
    // Reported like a missing file.
  }
  fail("Could not read opt file: " + path);
}

}  // namespace

void parseOpt(TextCursor& source, Vanu<QQ>& problem) {
  readTargets(source, problem);
  readEquations(source, problem);
  readMatrix(source, problem.Au);
  const Index n = optchecks::columns(problem);
  optchecks::finiteEntries(problem);
  readInequations(source, problem, n);
  problem.fd.resize(n, false);
  for (Index j = 1; j <= n; ++j) problem.fd[j] = freedomDegree(problem.lx[j], problem.rx[j]);
  problem.trackingRestarted = false;
}

void readOpt(Vanu<QQ>& problem) {
  const InputText text = optText(problem.optFile);
  problem.clear(true);
  TextCursor source(text.view());
  parseOpt(source, problem);
  problem.updateFixedTargets();
}

}  // namespace starsift

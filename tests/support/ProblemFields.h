// A problem record as text, field by field, for comparisons.
#pragma once

#include <string>

#include "numbers/Conversion.h"
#include "numbers/VectorQQ.h"
#include "problem/Vanu.h"
#include "support/RowsText.h"

namespace starsift::test {

/// What normalisation reads or writes, a line a field, numbers as rationals.
template <class T>
std::string fieldsText(const Vanu<T>& record) {
  Vanu<QQ> problem;
  problem.convertFrom(record);
  std::string fixed;
  for (const auto& [index, value] : problem.fixedVars)
    fixed += textOf(index) + "=" + textOf(value) + " ";
  std::string swapped;
  for (const Index index : problem.swappedVars) swapped += textOf(index) + " ";
  const auto line = [](const char* name, const std::string& text) {
    return std::string(name) + " " + text + "\n";
  };
  return line("dt", textOf(problem.dt)) + line("kt", textOf(problem.kt)) +
         line("ltu", textOf(problem.ltu)) + line("rtu", textOf(problem.rtu)) +
         line("At", rowsText(problem.At)) + line("atuValid", textOf(problem.atuValid)) +
         line("atu", textOf(problem.atu)) + line("bg", textOf(problem.bg)) +
         line("qg", textOf(problem.qg)) + line("lu", textOf(problem.lu)) +
         line("ru", textOf(problem.ru)) + line("Ag", rowsText(problem.Ag)) +
         line("Au", rowsText(problem.Au)) + line("dx", textOf(problem.dx)) +
         line("lx", textOf(problem.lx)) + line("rx", textOf(problem.rx)) +
         line("fd", textOf(problem.fd)) + line("shift", textOf(problem.shift)) +
         line("slackUnit", textOf(problem.slackUnit)) + line("fixed", fixed) +
         line("swapped", swapped) + line("slacks", textOf(problem.slackCount)) +
         line("deviations", textOf(problem.deviationCount)) +
         line("lifted", textOf(problem.lifted));
}

}  // namespace starsift::test

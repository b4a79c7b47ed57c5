// Linear programs over the rationals, solved by the program esolver of QSopt_ex (D. Applegate,
// W. Cook, S. Dash, D. Espinoza, Oper. Res. Lett. 35, 2007), a process of its own: a program that
// fails must not take this one with it.
#pragma once

#include <string>
#include <vector>

#include "models/record/Model.h"

namespace starsift {

enum class LpStatus { optimal, infeasible, unbounded, failed };

struct LpResult {
  LpStatus status = LpStatus::failed;
  /// If optimal one value per column, which the caller may check.
  std::vector<QQ> x;
  /// If failed the reason.
  std::string reason;
};

/// Solves the model as if all columns were continuous. It has columns and rows.
LpResult solveExactly(const Model& model);

}  // namespace starsift

// The formats of solution files: whether a text has the format, and the reader for it. A reader
// throws ModelError for a text that is cut or malformed.
#pragma once

#include <string_view>

#include "models/solutions/SolverFile.h"

namespace starsift::solverformats {

bool isCbc(std::string_view text);
SolverFile readCbc(std::string_view text);

/// The table that GLPK writes for people.
bool isGlpkTable(std::string_view text);
SolverFile readGlpkTable(std::string_view text);

/// The form that GLPK writes for programs.
bool isGlpkRaw(std::string_view text);
SolverFile readGlpkRaw(std::string_view text);

bool isHighs(std::string_view text);
SolverFile readHighs(std::string_view text);

bool isScip(std::string_view text);
SolverFile readScip(std::string_view text);

/// The exact simplex solver esolver.
bool isEsolver(std::string_view text);
SolverFile readEsolver(std::string_view text);

/// Lists of names and values, as Gurobi and MIPLIB have them; tried last.
bool isList(std::string_view text);
SolverFile readList(std::string_view text);

bool isCplex(std::string_view text);
SolverFile readCplex(std::string_view text);

/// The output of solvers of pseudo-Boolean problems.
bool isOpbOutput(std::string_view text);
SolverFile readOpbOutput(std::string_view text);

}  // namespace starsift::solverformats

// All of a problem as a text: what its .opt file says, and beside that names and the order of rows.
//
// The first line has the version of the form, and how many variables, rows and targets follow with
// a line each: bounds, decimals and name of a variable; "=" with value and modulus or "<" with
// bounds, name and coefficients of a row; goal, threshold and coefficients of a target.
// Coefficients are those other than 0: their number, then each behind the index of its variable
// from 0 on. A name, which may have any bytes, stands behind its length:
//
//   starsift problem 1 2 1 1
//   0 9 0 3:tea
//   0 inf 0 0:
//   = 5 0 6:weight 2 0 2 1 0.5
//   inf inf 1 0 3
//
// Shorter than a .opt file if most coefficients are 0.
#pragma once

#include <string>
#include <string_view>

#include "library/ProblemRecord.h"

namespace starsift {

std::string problemText(const ProblemRecord& problem);

/// The problem of the text. Fatal: "not the text of a problem".
ProblemRecord parseProblemText(std::string_view text);

}  // namespace starsift

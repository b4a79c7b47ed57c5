// The .opt file: the text form of a problem, its items identified by position.
//
//   dt [= kt]  At  Ag bg qg  Au lu ru  dx lx rx
//
// vectors and matrices in their text form, white space and comments between any
// two tokens. The items are checked as they are read; the checks and their texts
// are in OptChecks.h.
#pragma once

#include "numbers/QQ.h"
#include "problem/Vanu.h"
#include "text/TextCursor.h"

namespace starsift {

/// Reads problem.optFile. Keeps the paths and replaces everything else. Every
/// failure is fatal; a file that can't be read gives "Could not read opt file: "
/// and its path.
void readOpt(Vanu<QQ>& problem);

/// Reads the items from `source`; the problem must be clear.
void parseOpt(TextCursor& source, Vanu<QQ>& problem);

}  // namespace starsift

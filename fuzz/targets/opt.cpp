// The reader of problem files, and what the command does with a problem at once.
#include "Target.h"
#include "numbers/Conversion.h"
#include "problem/OptReader.h"

namespace starsift::fuzz {

void runTarget(std::string_view bytes) {
  Vanu<QQ> problem;
  TextCursor source(bytes);
  parseOpt(source, problem);
  problem.updateFixedTargets();
  const Index n = problem.lx.dimension();
  require(n > 0 && problem.rx.dimension() == n && problem.dx.dimension() == n,
          "a problem that is accepted has bounds of each variable");
  require(problem.Ag.rowCount() == problem.bg.dimension(), "and a right side of each equation");
  Vanu<long double> rounded;
  rounded.convertFrom(problem);
}

}  // namespace starsift::fuzz

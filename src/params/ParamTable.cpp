#include "params/ParamTable.h"

#include <algorithm>
#include <array>
#include <cassert>

namespace starsift {

namespace {

// Users and other programs of the suite rely on this wording and spelling.
constexpr std::array<ParamRow, 25> rows = {{
    {"help", ParamKind::boolean, "0", "Display this help information."},
    {"verb", ParamKind::integer, "0",
     "To receive (detailed) runtime statistics, set this parameter to 1 or 2."},
    {"consistency", ParamKind::boolean, "0",
     "By setting this switch the lattice transformations are tracked and consulted to detect "
     "computing / overflow errors."},
    {"eenum", ParamKind::boolean, "1",
     "Enables the essential enumeration algorithm, which helps to find euclidean short vectors "
     "in a deterministic way (see also: --deep, --beta, --etime, --btime, --eprune)."},
    {"beta", ParamKind::integer, "20",
     "The enumeration algorithm operates on blocks of 20 vectors per default, which can be "
     "changed utilizing this parameter (see also: --eenum, --etime, --btime)."},
    {"eprune", ParamKind::integer, "3",
     "The enumeration trees can be pruned, which will speed up the enumeration. To enable "
     "moderate pruning use 1 - if you prefer more aggressive pruning, then use 2 or 3 (see: also "
     "--eenum, --beta)."},
    {"btime", ParamKind::integer, "0",
     "This defines a bound for the maximum time (in seconds) to spent, when enumerating a block "
     "of lattice vectors (see also: --etime, --beta, --eenum)."},
    {"etime", ParamKind::integer, "0",
     "This defines a bound for the maximum time (in seconds) to spent for the enumeration of "
     "lattice vectors (see also: --btime, --beta, --eenum)."},
    {"deep", ParamKind::boolean, "0",
     "The enumeration algorithm should do some kind of backtracking, when a short vector has "
     "been found - the short vector is not only compared with the basis vector of the current "
     "stage, but also with base vectors, which are stages ahead (see also: --eenum)."},
    {"collectLimit", ParamKind::natural, "100",
     "The collection limit defines the maximum size of the set containing the collected, good "
     "vectors. (see also:  --pair, --sieve, --sample)."},
    {"pair", ParamKind::boolean, "1",
     "This switch enables a heuristic pairwise recombination method, which helps to discover "
     "vectors with small sup-norms and collects these within a set of heuristically good vectors "
     "(see also: --pairLimit, --collectLimit)."},
    {"pairLimit", ParamKind::natural, "10",
     "The pair limit defines the maximum amount of vectors which are chosen from the collection "
     "set for pairing purposes (see also:  --pair, --collectLimit)."},
    {"sieve", ParamKind::boolean, "0",
     "This switch enables a sieving method on the collection set of heuristically good vectors, "
     "which helps to discover vectors with small sup-norms (see also: --collectLimit)."},
    {"sample", ParamKind::boolean, "0",
     "To enable a algorithm, which samples random (but probably short) vectors and collects them "
     "within the sets containing good vectors (see also: --sampleLimit, --collectLimit)."},
    {"sampleLimit", ParamKind::natural, "1000",
     "The sample limit defines how many vectors should be chosen, when using random sampling "
     "(see also: --sample)."},
    {"scale", ParamKind::boolean, "0",
     "Enables a scaling routine, which trims the lattice towards feasibility."},
    {"translate", ParamKind::boolean, "0",
     "Enables a translation routine, which trims the lattice towards feasibility."},
    {"reinsert", ParamKind::boolean, "1",
     "Enables a routine to re-insert best vectors into the lattice after each progressless "
     "iteration."},
    {"variate", ParamKind::boolean, "1",
     "Enables a variation of lattice base vectors (sorting / shuffling) after each progressless "
     "iteration."},
    {"rtime", ParamKind::guardedInteger, "0",
     "Terminate the program after the submitted number of seconds has been reached."},
    {"iters", ParamKind::integer, "-1",
     "Terminate the program after the submitted number of iterations."},
    {"sol", ParamKind::integer, "1",
     "Terminate the program, when the submitted number of solutions has been found."},
    {"bench", ParamKind::real, "0",
     "A value > 0 enables a benchmark run. The read of the lat / sol file is skipped and the "
     "secondsUntilDiscovered property of best vectors gets multiplied with the value of this "
     "parameter."},
    {"snorm", ParamKind::number, "-1",
     "Terminate the program, when a solution has been found, whose slack norm <= the provided "
     "value."},
    {"tnorm", ParamKind::number, "-inf",
     "Terminate the program, when a solution has been found, whose target norm <= the provided "
     "value."},
}};

}  // namespace

std::span<const ParamRow> paramTable() {
  return rows;
}

const ParamRow& paramRow(std::string_view name) {
  const auto* const row =
      std::find_if(rows.begin(), rows.end(), [name](const ParamRow& r) { return r.name == name; });
  assert(row != rows.end());
  return *row;
}

std::string_view paramKindName(ParamKind kind) {
  switch (kind) {
    case ParamKind::boolean:
      return "bool";
    case ParamKind::integer:
      return "long";
    case ParamKind::natural:
      return "unsigned long";
    case ParamKind::real:
      return "float";
    case ParamKind::guardedInteger:
      return "long";
    case ParamKind::number:
      return "number";
  }
  return "";
}

}  // namespace starsift

#include "models/solutions/SolverFile.h"

#include <array>

#include "models/solutions/Formats.h"
#include "models/text/ModelError.h"

namespace starsift {

namespace {

using namespace solverformats;

struct KnownFormat {
  bool (*recognises)(std::string_view text);
  SolverFile (*read)(std::string_view text);
};

constexpr std::array<KnownFormat, 9> knownFormats{{{isCplex, readCplex},
                                                   {isGlpkTable, readGlpkTable},
                                                   {isGlpkRaw, readGlpkRaw},
                                                   {isOpbOutput, readOpbOutput},
                                                   {isHighs, readHighs},
                                                   {isScip, readScip},
                                                   {isEsolver, readEsolver},
                                                   {isCbc, readCbc},
                                                   {isList, readList}}};

}  // namespace

SolverFile readSolverFile(std::string_view text) {
  for (const KnownFormat& known : knownFormats) {
    if (!known.recognises(text)) continue;
    SolverFile file = known.read(text);
    if (file.points.empty() && file.noSolution.empty())
      throw ModelError(0, "the file has no solution and doesn't say that there is none");
    return file;
  }
  throw ModelError(0, "this is no solution file of a known format");
}

}  // namespace starsift

#include "models/solutions/SolverFile.h"

#include <array>

#include "models/solutions/Formats.h"
#include "models/text/ModelError.h"
#include "text/IntegerText.h"

namespace starsift {

namespace {

struct KnownFormat {
  bool (*recognises)(std::string_view text);
  SolverFile (*read)(std::string_view text);
};

constexpr std::array<KnownFormat, 9> knownFormats{
    {{solverformats::isCplex, solverformats::readCplex},
     {solverformats::isGlpkTable, solverformats::readGlpkTable},
     {solverformats::isGlpkRaw, solverformats::readGlpkRaw},
     {solverformats::isOpbOutput, solverformats::readOpbOutput},
     {solverformats::isHighs, solverformats::readHighs},
     {solverformats::isScip, solverformats::readScip},
     {solverformats::isEsolver, solverformats::readEsolver},
     {solverformats::isCbc, solverformats::readCbc},
     {solverformats::isList, solverformats::readList}}};

}  // namespace

std::optional<std::uint32_t> indexOfNumber(std::string_view number, std::size_t count) {
  const auto parsed = parseInteger<std::uint32_t>(number, 1);
  if (!parsed || *parsed > count) return std::nullopt;
  return *parsed - 1;
}

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

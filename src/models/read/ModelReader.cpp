#include "models/read/ModelReader.h"

#include <array>

#include "models/read/LpReader.h"
#include "models/read/MpsReader.h"
#include "models/read/OpbReader.h"
#include "models/text/ModelError.h"
#include "models/text/Words.h"

namespace starsift {

namespace {

struct FormatName {
  std::string_view name;
  ModelFormat format;
};
constexpr std::array<FormatName, 3> formatNames{
    {{"mps", ModelFormat::mps}, {"lp", ModelFormat::lp}, {"opb", ModelFormat::opb}}};

}  // namespace

std::optional<ModelFormat> formatOfName(std::string_view name) {
  for (const FormatName& known : formatNames)
    if (equalsInAnyCase(name, known.name)) return known.format;
  return std::nullopt;
}

std::optional<ModelFormat> formatOfPath(std::string_view path) {
  constexpr std::string_view packed = ".gz";
  if (path.size() > packed.size() &&
      equalsInAnyCase(path.substr(path.size() - packed.size()), packed))
    path.remove_suffix(packed.size());
  const std::size_t point = path.find_last_of("./");
  if (point == std::string_view::npos || path[point] != '.') return std::nullopt;
  return formatOfName(path.substr(point + 1));
}

Model readModel(const ModelText& text, ModelFormat format, const ReadOptions& options) {
  try {
    switch (format) {
      case ModelFormat::mps:
        return readMps(text.view(), options);
      case ModelFormat::lp:
        return readLp(text.view(), options);
      case ModelFormat::opb:
        return readOpb(text.view());
    }
    return {};
  } catch (const ModelError& error) {
    throw error.withPath(text.path);
  }
}

}  // namespace starsift

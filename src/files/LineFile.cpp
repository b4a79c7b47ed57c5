#include "files/LineFile.h"

#include <malloc.h>

#include <utility>

#include "files/Report.h"
#include "files/SolReader.h"
#include "numbers/Conversion.h"
#include "problem/Exactness.h"
#include "stars/LineOrder.h"
#include "system/Exceptions.h"

namespace starsift {

namespace {

/// Frees the rows of a problem, which take 16 bytes for each entry, and gives the pages of a large
/// one back to the system.
void freeRows(Vanu<QQ>& problem) {
  constexpr Index manyEntries = 10'000;
  const Index rows = problem.At.rowCount() + problem.Ag.rowCount() + problem.Au.rowCount();
  problem.At = Matrix<QQ>();
  problem.Ag = Matrix<QQ>();
  problem.Au = Matrix<QQ>();
  if (rows * problem.lx.dimension() >= manyEntries) malloc_trim(0);
}

}  // namespace

std::optional<LineFile> LineFile::read(const std::string& path, Vanu<QQ> problem,
                                       const Watch& watch) {
  const std::optional<StarChecker<QQ>> checker = lineChecker(problem);
  if (!checker) return std::nullopt;
  const bool fits = fitsLongDouble(problem);
  freeRows(problem);
  const std::optional<FileIdentity> identity = fileIdentity(path);
  std::optional<InputText> input = readSolText(path);
  // Without a file there are no stars, as in an empty one.
  if (!input && !identity) input.emplace();
  if (!input) return std::nullopt;
  LineFile file(std::move(*input), identity, std::move(problem.dt));
  if (!file.check(*checker, fits, watch) || !file.tidy()) return std::nullopt;
  return file;
}

bool LineFile::check(const StarChecker<QQ>& checker, bool fits, const Watch& watch) {
  if (fits) {
    try {
      form_ = Form::standard;
      return checkAs<long double>(checker, watch);
    } catch (const PrecisionException&) {
      form_ = Form::exactForStars;
    }
  }
  return checkAs<QQ>(checker, watch);
}

bool LineFile::tidy() {
  std::vector<StarLine>& lines = stars_.lines;
  if (!sortLines(lines)) return false;
  const std::size_t before = lines.size();
  removeDuplicates(lines);
  // If the star that needs exact numbers has gone, only the report isn't exact.
  return form_ != Form::exactForStars || lines.size() == before;
}

template <class T>
bool LineFile::checkAs(const StarChecker<QQ>& checker, const Watch& watch) {
  std::optional<StarLines> stars = readRightStars<T>(input_, checker, allCores, watch);
  if (!stars) return false;
  stars_ = std::move(*stars);
  return true;
}

Commit LineFile::write(const std::string& path) const {
  return writeLines(path, stars_.lines, identity_).commit;
}

void LineFile::report(std::ostream& stream) const {
  if (form_ != Form::standard) return writeSolutions(stream, stars_.lines, goals_);
  Vector<long double> rounded;
  rounded.convertFrom(goals_, false);
  writeSolutions(stream, stars_.lines, rounded);
}

}  // namespace starsift

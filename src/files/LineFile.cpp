#include "files/LineFile.h"

#include <algorithm>
#include <thread>
#include <utility>

#include "files/Report.h"
#include "files/SolReader.h"
#include "numbers/Conversion.h"
#include "problem/Exactness.h"
#include "stars/LineOrder.h"
#include "system/Exceptions.h"

namespace starsift {

std::optional<LineFile> LineFile::read(const std::string& path, const Vanu<QQ>& problem,
                                       const std::function<void(const ReadProgress&)>& watch) {
  const std::optional<FileIdentity> identity = fileIdentity(path);
  std::optional<InputText> input = readSolText(path);
  if (!input) return std::nullopt;
  LineFile file(std::move(*input), identity);
  if (!file.check(problem, watch) || !file.tidy()) return std::nullopt;
  return file;
}

bool LineFile::check(const Vanu<QQ>& problem,
                     const std::function<void(const ReadProgress&)>& watch) {
  if (fitsLongDouble(problem)) {
    try {
      form_ = Form::standard;
      return checkAs<long double>(problem, watch);
    } catch (const PrecisionException&) {
      form_ = Form::exactForStars;
    }
  }
  return checkAs<QQ>(problem, watch);
}

bool LineFile::tidy() {
  std::vector<StarLine>& lines = stars_.lines;
  if (!sortLines(lines)) return false;
  const std::size_t before = lines.size();
  removeDuplicates(lines, true);
  // If the star that needs exact numbers has gone, only the report isn't exact.
  return form_ != Form::exactForStars || lines.size() == before;
}

template <class T>
bool LineFile::checkAs(const Vanu<QQ>& problem,
                       const std::function<void(const ReadProgress&)>& watch) {
  const unsigned threads = std::max(std::thread::hardware_concurrency(), 1U);
  std::optional<StarLines> stars = readRightStars<T>(input_, problem, threads, watch);
  if (!stars) return false;
  stars_ = std::move(*stars);
  return true;
}

Commit LineFile::write(const std::string& path) const {
  return writeLines(path, stars_.lines, identity_).commit;
}

void LineFile::report(std::ostream& stream, const Vector<QQ>& goals) {
  removeDuplicates(stars_.lines, false);
  if (form_ != Form::standard) return writeSolutions(stream, stars_.lines, goals);
  Vector<long double> rounded;
  rounded.convertFrom(goals, false);
  writeSolutions(stream, stars_.lines, rounded);
}

}  // namespace starsift

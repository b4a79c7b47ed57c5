#include "files/YSolutionFile.h"

#include "files/Report.h"
#include "files/SolReader.h"
#include "files/SolWriter.h"
#include "numbers/Conversion.h"
#include "stars/StarCheck.h"
#include "stars/StarNorms.h"
#include "system/Failure.h"

namespace starsift {

namespace {

/// Characters of a text that are handed on at once.
constexpr std::size_t pieceSize = std::size_t{1} << 18U;

}  // namespace

std::optional<QQ> YSolutionFile::leastTargetNorm() const {
  std::optional<QQ> least;
  for (std::size_t i = 0; i < stars_.size(); ++i) lowerTo(least, stars_[i].targetNorm.value());
  return least;
}

void YSolutionFile::mergeFile() {
  const std::optional<FileIdentity> identity = fileIdentity(path());
  const PackedStars read = readPackedStars(path(), file_.problem());
  StarChecker<QQ> checker(file_.problem());
  PackedStars right;
  for (std::size_t i = 0; i < read.size(); ++i) {
    Star<QQ> star = read.star(i);
    if (checker.check(star)) right.append(star);
  }
  for (std::size_t i = 0; i < right.size(); ++i) addStar(right.star(i));
  sortStars();
  removeDuplicates(Duplicates::ofPointAndParams);
  noteFile(identity);
}

void YSolutionFile::sortStars() {
  if (fitsStandard())
    stars_.sort<long double>();
  else
    stars_.sort<QQ>();
}

void YSolutionFile::removeDuplicates(Duplicates duplicates) {
  stars_.removeDuplicates(duplicates == Duplicates::ofPointAndParams);
}

void YSolutionFile::addStar(const Star<QQ>& judged) {
  if (searched_->contain(judged.x()))
    lowerTo(leastSearchedNorm_, judged.targetNorm);
  else
    hasOtherStars_ = true;
  stars_.append(judged);
}

void YSolutionFile::addStars(const Array<Star<QQ>>& judged, std::uint64_t problem) {
  if (problem != problemNumber()) fail("The stars solve another problem");
  for (const Star<QQ>& star : judged) addStar(star);
}

Commit YSolutionFile::writeIfCurrent() {
  if (!isFileKnown_) return Commit::changed;
  if (!fitsStandard()) return writeAs<QQ>();
  try {
    return writeAs<long double>();
  } catch (const PrecisionException&) {
    return writeAs<QQ>();
  }
}

template <class T>
Commit YSolutionFile::writeAs() {
  const WrittenFile written = writeStars<T>(path(), stars_, identity_);
  if (written.commit == Commit::written) noteFile(written.identity);
  return written.commit;
}

void YSolutionFile::noteFile(const std::optional<FileIdentity>& identity) {
  isFileKnown_ = true;
  identity_ = identity;
}

bool YSolutionFile::writeText(const std::function<bool(std::string_view)>& write) const {
  std::string text;
  for (std::size_t i = 0; i < stars_.size(); ++i) {
    appendLine<QQ>(text, stars_, i);
    if (text.size() < pieceSize) continue;
    if (!write(text)) return false;
    text.clear();
  }
  return write(text);
}

void YSolutionFile::writeSolutions(std::ostream& stream) const {
  const Vector<QQ>& goals = file_.problem().dt;
  if (!fitsStandard()) return starsift::writeSolutions(stream, stars_, goals);
  Vector<long double> rounded;
  rounded.convertFrom(goals, false);
  starsift::writeSolutions(stream, stars_, rounded);
}

}  // namespace starsift

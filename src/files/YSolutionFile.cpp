#include "files/YSolutionFile.h"

#include <utility>

#include "numbers/Conversion.h"

namespace starsift {

std::uint64_t YSolutionFile::problemNumber() const {
  return files_.withLive([](const auto& file) { return file.problemNumber(); });
}

const std::string& YSolutionFile::path() const {
  const std::string* path = nullptr;
  files_.withLive([&path](const auto& file) { path = &file.path(); });
  return *path;
}

Index YSolutionFile::starCount() const {
  return files_.withLive([](const auto& file) { return file.stars.dimension(); });
}

void YSolutionFile::mergeFile() {
  files_.runStep([](auto& file) { file.mergeFile(); }, OnFailure::unchanged);
}

std::optional<QQ> YSolutionFile::leastTargetNorm() const {
  return files_.withLive([]<class T>(const SolutionFile<T>& file) {
    std::optional<QQ> least;
    for (const Star<T>& star : file.stars) {
      QQ norm = NumberConversion<QQ, T>::convert(star.targetNorm);
      if (!least || norm < *least) least = std::move(norm);
    }
    return least;
  });
}

void YSolutionFile::sortStars() {
  files_.withLive([](auto& file) { file.sortStars(); });
}

void YSolutionFile::removeDuplicates(Duplicates duplicates) {
  files_.withLive([duplicates](auto& file) { file.removeDuplicates(duplicates); });
}

void YSolutionFile::addStars(Array<Star<QQ>> judged, std::uint64_t problem) {
  if (problem != problemNumber()) fail("The stars solve another problem");
  if (!judged.isSet()) return;
  files_.useExtended();
  files_.exact().appendStars(std::move(judged));
  files_.tryStandard();
}

Commit YSolutionFile::writeIfCurrent() {
  return files_.runStep([](auto& file) { return file.writeIfCurrent(); }, OnFailure::unchanged);
}

std::string YSolutionFile::text() const {
  return files_.withLive([](const auto& file) { return file.text(); });
}

void YSolutionFile::writeSolutions(std::ostream& stream) const {
  files_.withLive([&stream](const auto& file) { file.writeSolutions(stream); });
}

}  // namespace starsift

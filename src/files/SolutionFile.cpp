#include "files/SolutionFile.h"

#include <atomic>
#include <type_traits>
#include <utility>

#include "files/RecordReader.h"
#include "files/Report.h"
#include "files/SolReader.h"
#include "numbers/Conversion.h"
#include "problem/OptReader.h"
#include "stars/StarOrder.h"

namespace starsift {

namespace {

/// A number that no problem has yet; 0 is the number of the empty problem.
std::uint64_t nextProblemNumber() {
  static std::atomic<std::uint64_t> last = 0;
  return ++last;
}

}  // namespace

template <class T>
SolutionFile<T>::SolutionFile() : read_(std::make_shared<ReadProblem>()) {}

template <class T>
Vanu<T>& SolutionFile<T>::editProblem() {
  auto changed = std::make_shared<ReadProblem>();
  if (read_.use_count() > 1)
    changed->problem = read_->problem;
  else
    changed->problem = std::move(read_->problem);
  changed->number = nextProblemNumber();
  read_ = std::move(changed);
  return read_->problem;
}

template <class T>
void SolutionFile<T>::setPaths(const FileNames& names) {
  const std::uint64_t number = problemNumber();
  Vanu<T>& problem = editProblem();
  problem.optFile = names.optFile;
  problem.solFile = names.solFile;
  read_->number = number;
}

template <class T>
void SolutionFile<T>::readProblem() requires std::same_as<T, QQ> {
  // clang 14 instantiates the body also where the constraint fails.
  if constexpr (std::same_as<T, QQ>) readOpt(editProblem());
}

template <class T>
bool SolutionFile<T>::readStars(StarReading reading) {
  const std::optional<FileIdentity> identity = fileIdentity(path());
  const bool any = starsift::readStars(path(), problem(), stars, reading == StarReading::peek);
  if (reading == StarReading::append) noteFile(identity);
  return any;
}

template <class T>
bool SolutionFile<T>::readStarsExactly(StarReading reading) {
  const std::optional<FileIdentity> identity = fileIdentity(path());
  const bool any =
      starsift::readStarsExactly(path(), problem(), stars, reading == StarReading::peek);
  if (reading == StarReading::append) noteFile(identity);
  return any;
}

template <class T>
void SolutionFile<T>::mergeFile() {
  const std::optional<FileIdentity> identity = fileIdentity(path());
  Array<Star<T>> added;
  starsift::readStarsExactly(path(), problem(), added, false);
  starsift::checkStars(checker(), added, 1);
  appendStars(std::move(added));
  sortStars();
  removeDuplicates(Duplicates::ofPointAndParams);
  noteFile(identity);
}

template <class T>
void SolutionFile<T>::noteFile(const std::optional<FileIdentity>& identity) {
  isFileKnown_ = true;
  identity_ = identity;
}

template <class T>
StarChecker<T>& SolutionFile<T>::checker() const {
  if (!read_->checker) read_->checker.emplace(read_->problem);
  return *read_->checker;
}

template <class T>
bool SolutionFile<T>::checkStars(Index first) {
  return starsift::checkStars(checker(), stars, first);
}

template <class T>
void SolutionFile<T>::sortStars() {
  starsift::sortStars(stars);
}

template <class T>
void SolutionFile<T>::removeDuplicates(Duplicates duplicates) {
  starsift::removeDuplicates(stars, duplicates == Duplicates::ofPointAndParams);
}

template <class T>
void SolutionFile<T>::appendStars(Array<Star<T>> added) {
  starsift::appendStars(stars, std::move(added));
}

template <class T>
void SolutionFile<T>::appendLines(const std::vector<StarLine>& lines) {
  RecordReader<T, QQ> reader;
  Array<Star<T>> added;
  for (const StarLine& line : lines) {
    const std::string text = std::string(line.x()).append(line.rest());
    TextCursor source(text);
    Star<T> star;
    reader.read(star, source);
    append(added, std::move(star));
  }
  appendStars(std::move(added));
}

template <class T>
Commit SolutionFile<T>::write() {
  Commit commit = isFileKnown_ ? writeIfCurrent() : noteWritten(writeStars(path(), stars));
  for (int i = 0; i < mergeLimit && commit == Commit::changed; ++i) {
    mergeFile();
    commit = writeIfCurrent();
  }
  return commit;
}

template <class T>
Commit SolutionFile<T>::writeIfCurrent() {
  return isFileKnown_ ? noteWritten(writeStars(path(), stars, identity_)) : Commit::changed;
}

template <class T>
Commit SolutionFile<T>::noteWritten(const WrittenFile& written) {
  if (written.commit == Commit::written) noteFile(written.identity);
  return written.commit;
}

template <class T>
std::string SolutionFile<T>::solutionsText() const {
  return starsift::solutionsText(stars, problem().dt);
}

template <class T>
void SolutionFile<T>::writeSolutions(std::ostream& stream) const {
  starsift::writeSolutions(stream, stars, problem().dt);
}

template <class T>
std::string SolutionFile<T>::starReport(Index i) const {
  return starsift::starReport(stars.element(i), problem().dt);
}

template <class T>
template <class U>
void SolutionFile<T>::convertProblemFrom(const SolutionFile<U>& other) {
  if constexpr (std::is_same_v<T, U>) {
    read_ = other.read_;
  } else {
    auto read = std::make_shared<ReadProblem>();
    read->problem.convertFrom(other.problem());
    read->number = other.problemNumber();
    read_ = std::move(read);
  }
}

template <class T>
template <class U>
void SolutionFile<T>::convertFrom(const SolutionFile<U>& other) {
  convertProblemFrom(other);
  isFileKnown_ = other.isFileKnown_;
  identity_ = other.identity_;
  if constexpr (std::is_same_v<T, U>) {
    stars = other.stars;
    return;
  }
  stars.resize(other.stars.dimension(), false);
  for (Index i = 1; i <= stars.dimension(); ++i) stars[i].convertFrom(other.stars[i], false);
}

template <class T>
void SolutionFile<T>::release() {
  *this = SolutionFile();
}

template class SolutionFile<long double>;
template class SolutionFile<QQ>;

#define STARSIFT_CONVERSIONS(T, U)                                    \
  template void SolutionFile<T>::convertFrom(const SolutionFile<U>&); \
  template void SolutionFile<T>::convertProblemFrom(const SolutionFile<U>&);
STARSIFT_CONVERSIONS(long double, long double)
STARSIFT_CONVERSIONS(long double, QQ)
STARSIFT_CONVERSIONS(QQ, long double)
STARSIFT_CONVERSIONS(QQ, QQ)
#undef STARSIFT_CONVERSIONS

}  // namespace starsift

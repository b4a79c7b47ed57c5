#include "files/StarLines.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <exception>
#include <iterator>
#include <limits>
#include <string>
#include <string_view>
#include <thread>
#include <utility>

#include "files/PlainPoint.h"
#include "files/RecordReader.h"
#include "files/SolWriter.h"
#include "numbers/Conversion.h"
#include "stars/StarCheck.h"
#include "system/Exceptions.h"
#include "system/Failure.h"
#include "system/HelperThreads.h"
#include "system/LargePages.h"
#include "text/TextCursor.h"

namespace starsift {

namespace {

/// Thrown where only a reader of stars knows what to do. Not a GeneralException, because after
/// these a reader of records goes on.
struct NotPlain {};

/// Makes fatal reports throw NotPlain for its lifetime.
class FailuresThrow {
 public:
  FailuresThrow() : former_(setFailureHandler([](std::string_view) { throw NotPlain(); })) {}
  FailuresThrow(const FailuresThrow&) = delete;
  FailuresThrow& operator=(const FailuresThrow&) = delete;
  ~FailuresThrow() { setFailureHandler(former_); }

 private:
  FailureHandler former_;
};

/// From this magnitude on a long double has an exponent in a report.
constexpr std::int64_t longNumber = 1'000'000;

/// Returns the position behind `expected`, or null if something else stands at `text`. A zero byte
/// follows the text and isn't in `expected`.
const char* skip(const char* text, std::string_view expected) {
  return std::strncmp(text, expected.data(), expected.size()) == 0 ? text + expected.size()
                                                                   : nullptr;
}

/// Skips " | 5 | [ 5 7 ] | 0 | " with plain integers in any number; null if that isn't there.
const char* skipPlainResults(const char* text) {
  std::int64_t ignored = 0;
  const auto number = [&] { text = text == nullptr ? text : scanPlainInteger(text, ignored); };
  const auto mark = [&](std::string_view expected) {
    text = text == nullptr ? text : skip(text, expected);
  };
  mark(fieldSeparator);
  number();
  mark(" | [ ");
  while (text != nullptr && *text != ']') {
    number();
    mark(" ");
  }
  mark("] | ");
  number();
  mark(fieldSeparator);
  return text;
}

/// Sizes of lines have 32 bits.
std::uint32_t narrow(std::size_t size) {
  if (size > std::numeric_limits<std::uint32_t>::max()) throw NotPlain();
  return static_cast<std::uint32_t>(size);
}

/// Reads the records of a part of a solution file.
template <class T>
class LineReader {
 public:
  explicit LineReader(const StarChecker<QQ>& checker) : checker_(checker) {}

  /// Reads records from `begin`, where one may begin, until one begins at or behind `limit`, and
  /// adds their lines. Returns the position of that, or `end`, where the text ends.
  const char* read(const char* begin, const char* limit, const char* end,
                   std::vector<StarLine>& lines, std::pmr::memory_resource& arena) {
    lines_ = &lines;
    arena_ = &arena;
    TextCursor source(std::string_view(begin, static_cast<std::size_t>(end - begin)));
    for (skipWithComments(source); position(source) < limit; skipWithComments(source))
      if (!readPlain(source)) readAnyForm(source);
    return position(source);
  }

  /// The number of stars and malformed records that were dropped since the last call.
  std::size_t takeDropped() { return std::exchange(dropped_, 0); }

 private:
  static const char* position(const TextCursor& source) { return source.rest().data(); }

  /// Reads a point in canonical form into the checker. Returns the position behind it, or null.
  const char* scanPoint(const char* text);
  /// Reads a record whose point has canonical form; only its results may be out of date. False, and
  /// nothing is read, if it has another form.
  bool readPlain(TextCursor& source);
  void writeResults(const StarVerdict<QQ>& verdict);
  /// Adds the line of a right star: `x` and `rest` stand in the input, `rest` up to date or not.
  void addPlain(std::string_view x, std::string_view rest, bool isCurrent, std::int64_t time,
                const RecordTexts& texts, const Norms<QQ>& norms);
  void readAnyForm(TextCursor& source);
  void add(const Star<QQ>& star);
  /// Copies a text that isn't in the input.
  std::string_view stored(std::string_view text);
  StarLine& append(std::string_view x, std::string_view rest, const RecordTexts& texts,
                   std::int64_t time);

  StarChecker<QQ> checker_;
  RecordReader<QQ, QQ> records_;
  /// Results of the current star.
  Vector<T> targetValues_;
  std::vector<MixedNumber> mixed_;
  /// As in the line of the current star.
  bool hasLongNumbers_ = false;
  /// Fields 2 to 4 of the current star, with their separators.
  std::string results_;
  std::string rest_;
  std::vector<StarLine>* lines_ = nullptr;
  std::pmr::memory_resource* arena_ = nullptr;
  std::size_t dropped_ = 0;
};

template <class T>
const char* LineReader<T>::scanPoint(const char* text) {
  const auto size = static_cast<std::size_t>(checker_.variableCount());
  SmallPoint& small = checker_.point().becomeSmall();
  small.components.resize(size);
  const char* const behind = scanPlainPoint(text, small);
  if constexpr (!NumberTraits<T>::exact) {
    hasLongNumbers_ = small.magnitude >= longNumber;
    return behind;
  }
  if (behind != nullptr) return behind;
  mixed_.resize(size);
  const char* const behindMixed = scanPlainPoint(text, mixed_);
  return behindMixed != nullptr && checker_.point().assign(mixed_) ? behindMixed : nullptr;
}

template <class T>
void LineReader<T>::writeResults(const StarVerdict<QQ>& verdict) {
  using Number = NumberConversion<T, QQ>;
  results_.clear();
  targetValues_.convertFrom(verdict.targetValues, false);
  appendResults<T>(results_, targetValues_,
                   {Number::convert(verdict.norms.target), Number::convert(verdict.norms.slack)});
}

template <class T>
bool LineReader<T>::readPlain(TextCursor& source) {
  const char* const start = position(source);
  const char* const results = scanPoint(start);
  if (results == nullptr || checker_.variableCount() == 0) return false;
  const StarVerdict<QQ>& verdict = checker_.judgePoint();
  const char* behind = nullptr;
  if (verdict.isSolution) {
    writeResults(verdict);
    behind = skip(results, results_);
  }
  const bool isCurrent = behind != nullptr;
  // Without targets the results of the file stay.
  if (!isCurrent && checker_.hasTargets()) behind = skipPlainResults(results);
  if (behind == nullptr) return false;
  std::int64_t time = 0;
  behind = scanPlainInteger(behind, time);
  if (behind == nullptr || time < unknownTime) return false;
  behind = skip(behind, fieldSeparator);
  if (behind == nullptr) return false;
  source.advance(static_cast<std::size_t>(behind - start));
  const RecordTexts texts = readRecordTexts(source);
  if (!verdict.isSolution) {
    ++dropped_;
    return true;
  }
  const char* lineEnd = position(source);
  if (lineEnd[-1] == '\n') --lineEnd;
  addPlain({start, results}, {results, lineEnd}, isCurrent, time, texts, verdict.norms);
  return true;
}

template <class T>
void LineReader<T>::addPlain(std::string_view x, std::string_view rest, bool isCurrent,
                             std::int64_t time, const RecordTexts& texts, const Norms<QQ>& norms) {
  rest_.assign(results_);
  appendOrigin(rest_, time, texts.params, texts.version);
  if (!isCurrent || rest != rest_) rest = stored(rest_);
  StarLine& line = append(x, rest, texts, time);
  line.targetNorm = norms.target;
  line.slackNorm = norms.slack;
  line.hasLongNumbers = hasLongNumbers_;
}

template <class T>
void LineReader<T>::readAnyForm(TextCursor& source) {
  const char* const start = position(source);
  Star<QQ> star;
  const bool isComplete = records_.read(star, source);
  // Text that isn't a record and was not consumed would be read again for ever.
  if (position(source) == start) takeLine(source);
  if (star.dimension() == 0 && isComplete) {
    ++dropped_;
    return;
  }
  if (star.dimension() != checker_.variableCount() ||
      std::any_of(star.begin(), star.end(), NumberTraits<QQ>::isInfinite))
    throw NotPlain();
  if (checker_.check(star))
    add(star);
  else
    ++dropped_;
}

template <class T>
void LineReader<T>::add(const Star<QQ>& star) {
  Star<T> shown;
  shown.convertFrom(star, false);
  if (!hasExactText(shown.x())) throw NotPlain();
  const std::string_view text = stored(starText(shown));
  const std::size_t xSize = text.find(']') + 1;
  StarLine& line = append(text.substr(0, xSize), text.substr(xSize),
                          {star.paramsText, star.versionText}, star.time);
  line.targetNorm = star.targetNorm;
  line.slackNorm = star.slackNorm;
  line.hasLongNumbers = !NumberTraits<T>::exact;
}

template <class T>
std::string_view LineReader<T>::stored(std::string_view text) {
  char* const copy = static_cast<char*>(arena_->allocate(text.size(), 1));
  std::memcpy(copy, text.data(), text.size());
  return {copy, text.size()};
}

template <class T>
StarLine& LineReader<T>::append(std::string_view x, std::string_view rest, const RecordTexts& texts,
                                std::int64_t time) {
  const std::size_t versionSize = texts.version.size();
  const std::size_t versionPart = versionSize > 0 ? fieldSeparator.size() + versionSize : 0;
  StarLine& line = lines_->emplace_back();
  line.xText = x.data();
  line.restText = rest.data();
  line.xSize = narrow(x.size());
  line.restSize = narrow(rest.size());
  line.paramsSize = narrow(texts.params.size());
  line.paramsStart = narrow(rest.size() - versionPart) - line.paramsSize;
  line.versionSize = narrow(versionSize);
  line.time = static_cast<std::uint64_t>(time);
  line.hash = hashOfText(x);
  return line;
}

/// Bytes of a part of the input at least: below that a thread costs more than it saves.
constexpr std::size_t partSize = std::size_t{1} << 20U;
/// More parts than there are threads, so that a slower one reads fewer, and progress is seen.
constexpr std::size_t mostParts = 64;

/// Where parts of the text begin, each at the head of a line that may begin with a record; and the
/// end of the text.
std::vector<const char*> borders(std::string_view text) {
  const std::size_t count = std::clamp<std::size_t>(text.size() / partSize, 1, mostParts);
  std::vector<const char*> result{text.data()};
  for (std::size_t i = 1; i < count; ++i) {
    const std::size_t hit = text.find("\n[", i * (text.size() / count));
    if (hit == std::string_view::npos) break;
    const char* const head = text.data() + hit + 1;
    if (head > result.back()) result.push_back(head);
  }
  result.push_back(text.data() + text.size());
  return result;
}

/// Lines that a text may have, judged by the first one. Storage for too many costs nothing until
/// it is used, unless they are very many.
std::size_t likelyLines(const char* begin, const char* end) {
  constexpr std::ptrdiff_t shortLine = 128;
  const std::ptrdiff_t line = std::find(begin, end, '\n') - begin;
  return static_cast<std::size_t>((end - begin) / std::max(line, shortLine)) + 1;
}

/// Reads the parts of a text, some of them at a time.
template <class T>
class PartReaders {
 public:
  PartReaders(const StarChecker<QQ>& checker, std::vector<const char*> borders)
      : checker_(checker), borders_(std::move(borders)), parts_(borders_.size() - 1) {}

  /// False if the parts can't be told apart, or a record needs a reader of stars.
  bool read(unsigned threads, const std::function<void(const ReadProgress&)>& watch) {
    // Without a look at the cores for a short text: the C library reads a file for it.
    if (threads == allCores && parts_.size() > 1) threads = std::thread::hardware_concurrency();
    threads = std::clamp(threads, 1U, static_cast<unsigned>(parts_.size()));
    HelperThreads helpers;
    if (threads > 1) helpers.start(threads - 1, [this](unsigned) { readSome([] {}); });
    readSome([&] { watch(progress()); });
    helpers.join();
    if (problem_) std::rethrow_exception(problem_);
    return !failed_;
  }

  StarLines result() {
    StarLines all;
    std::size_t count = 0;
    for (const Part& part : parts_) count += part.lines.size();
    all.lines = std::move(parts_.front().lines);
    all.lines.reserve(count);
    for (Part& part : parts_) {
      all.arenas.push_back(std::move(part.arena));
      std::move(part.lines.begin(), part.lines.end(), std::back_inserter(all.lines));
      part.lines = {};
    }
    return all;
  }

 private:
  struct Part {
    std::vector<StarLine> lines;
    std::unique_ptr<std::pmr::monotonic_buffer_resource> arena =
        std::make_unique<std::pmr::monotonic_buffer_resource>();
  };

  /// Reads parts that nobody reads until none is left; calls `afterPart` after each.
  template <class AfterPart>
  void readSome(const AfterPart& afterPart) {
    try {
      LineReader<T> reader(checker_);
      for (std::size_t i = next_++; i < parts_.size() && !failed_; i = next_++) {
        readPart(reader, i);
        afterPart();
      }
    } catch (const NotPlain&) {
      failed_ = true;
    } catch (...) {
      keepFirst(std::current_exception());
    }
  }

  void readPart(LineReader<T>& reader, std::size_t i) {
    const char* const next = borders_[i + 1];
    Part& part = parts_[i];
    // All lines will be with those of the first part.
    part.lines.reserve(likelyLines(borders_[i], i == 0 ? borders_.back() : next));
    preferLargePages(part.lines.data(), part.lines.capacity() * sizeof(StarLine));
    if (reader.read(borders_[i], next, borders_.back(), part.lines, *part.arena) != next)
      throw NotPlain();
    done_ += static_cast<std::size_t>(next - borders_[i]);
    kept_ += part.lines.size();
    dropped_ += reader.takeDropped();
  }

  ReadProgress progress() const {
    return {done_, static_cast<std::size_t>(borders_.back() - borders_.front()), kept_, dropped_};
  }

  void keepFirst(std::exception_ptr problem) {
    if (!failed_.exchange(true)) problem_ = std::move(problem);
  }

  const StarChecker<QQ>& checker_;
  std::vector<const char*> borders_;
  std::vector<Part> parts_;
  std::atomic<std::size_t> next_ = 0;
  std::atomic<std::size_t> done_ = 0;
  std::atomic<std::size_t> kept_ = 0;
  std::atomic<std::size_t> dropped_ = 0;
  std::atomic<bool> failed_ = false;
  std::exception_ptr problem_;
};

}  // namespace

std::optional<StarChecker<QQ>> lineChecker(const Vanu<QQ>& problem) {
  const FailuresThrow throwing;
  try {
    StarChecker<QQ> checker(problem);
    if (checker.isWellFormed()) return checker;
  } catch (const NotPlain&) {
    // A reader of stars will say so.
  }
  return std::nullopt;
}

template <class T>
std::optional<StarLines> readRightStars(const InputText& text, const StarChecker<QQ>& checker,
                                        unsigned threads,
                                        const std::function<void(const ReadProgress&)>& watch) {
  const FailuresThrow throwing;
  try {
    PartReaders<T> parts(checker, borders(text.view()));
    if (!parts.read(threads, watch)) return std::nullopt;
    return parts.result();
  } catch (const NotPlain&) {
    return std::nullopt;
  }
}

template std::optional<StarLines> readRightStars<long double>(
    const InputText&, const StarChecker<QQ>&, unsigned,
    const std::function<void(const ReadProgress&)>&);
template std::optional<StarLines> readRightStars<QQ>(
    const InputText&, const StarChecker<QQ>&, unsigned,
    const std::function<void(const ReadProgress&)>&);

}  // namespace starsift

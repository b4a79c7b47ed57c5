#include "files/TreeState.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <string_view>
#include <utility>

#include "files/PlainText.h"
#include "files/ResultFile.h"
#include "numbers/VectorQQ.h"
#include "system/Exceptions.h"
#include "system/Failure.h"
#include "system/FilePlace.h"
#include "text/Digest.h"
#include "text/InputText.h"
#include "text/IntegerText.h"

namespace starsift {

namespace {

constexpr std::string_view heading = "starseek state\n";

/// Greater numbers of subtrees are no state of this program.
constexpr std::size_t mostSubtrees = std::size_t{1} << 20;

/// Thrown within readTreeState().
struct Damaged {};

/// "0-99 103": the indices of the subtrees done, in ascending order.
std::string rangesText(const std::vector<bool>& done) {
  std::string text;
  for (std::size_t i = 0; i < done.size(); ++i) {
    if (!done[i]) continue;
    const std::size_t first = i;
    while (i + 1 < done.size() && done[i + 1]) ++i;
    text += (text.empty() ? "" : " ") + std::to_string(first);
    if (i > first) text += '-' + std::to_string(i);
  }
  return text;
}

std::string normText(const std::optional<QQ>& norm) {
  return norm ? plainText(*norm) : "none";
}

void addMatrix(Digest& digest, const Matrix<QQ>& matrix) {
  digest.add(std::to_string(matrix.rowCount()) + 'x' + std::to_string(matrix.columnCount()));
  std::string text;
  for (Index i = 1; i <= matrix.rowCount(); ++i) {
    text.clear();
    appendText(text, matrix[i], 0);
    digest.add(text);
  }
}

/// Takes the fields of a text in sequence.
class Fields {
 public:
  explicit Fields(std::string_view rest) : rest_(rest) {}

  /// The value of the next line, which has this name.
  std::string_view take(std::string_view name) {
    const std::size_t end = rest_.find('\n');
    if (end == std::string_view::npos) throw Damaged();
    const std::string_view line = rest_.substr(0, end);
    if (!line.starts_with(name) || line.substr(name.size(), 1) != " ") throw Damaged();
    rest_.remove_prefix(end + 1);
    return line.substr(name.size() + 1);
  }

  bool isAtEnd() const { return rest_.empty(); }

 private:
  std::string_view rest_;
};

/// A number without sign and leading zeros.
std::uint64_t numberOf(std::string_view text, std::uint64_t most) {
  const auto number = parseInteger<std::uint64_t>(text, 0, most);
  if (!number || std::to_string(*number) != text) throw Damaged();
  return *number;
}

/// The text before and after the only `separator`.
std::pair<std::string_view, std::string_view> halves(std::string_view text, char separator) {
  const std::size_t at = text.find(separator);
  if (at == std::string_view::npos) throw Damaged();
  return {text.substr(0, at), text.substr(at + 1)};
}

std::vector<bool> doneOf(std::size_t count, std::string_view ranges) {
  std::vector<bool> done(count);
  std::uint64_t next = 0;
  while (!ranges.empty()) {
    const std::string_view range = ranges.substr(0, ranges.find(' '));
    ranges.remove_prefix(std::min(range.size() + 1, ranges.size()));
    const bool isOne = range.find('-') == std::string_view::npos;
    const auto [from, to] = isOne ? std::pair{range, range} : halves(range, '-');
    const std::uint64_t last = numberOf(to, mostSubtrees);
    const std::uint64_t first = numberOf(from, last);
    // Ascending, so that a line of any length takes no longer than its subtrees.
    if (first < next || last >= count) throw Damaged();
    for (std::uint64_t i = first; i <= last; ++i) done[i] = true;
    next = last + 1;
  }
  return done;
}

bool isDigits(std::string_view text) {
  return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

/// What normText() doesn't write in this way parseState() rejects.
std::optional<QQ> normOf(std::string_view text) {
  if (text == "none") return std::nullopt;
  const std::string_view magnitude = text.substr(text.starts_with('-') ? 1 : 0);
  const bool isFraction = magnitude.find('/') != std::string_view::npos;
  const auto [above, below] = isFraction ? halves(magnitude, '/') : std::pair{magnitude, magnitude};
  if (!isDigits(above) || !isDigits(below) || (isFraction && below.front() == '0')) throw Damaged();
  return QQ::parse(text);
}

TreeState stateOf(Fields fields) {
  TreeState state;
  state.version = fields.take("version");
  state.problem = fields.take("problem");
  state.goal = fields.take("goal");
  const auto [part, parts] = halves(fields.take("part"), '/');
  state.parts = static_cast<unsigned>(numberOf(parts, mostParts));
  state.part = static_cast<unsigned>(numberOf(part, state.parts));
  if (state.part == 0) throw Damaged();
  state.known = normOf(fields.take("known"));
  state.tree = fields.take("tree");
  const std::size_t count = numberOf(fields.take("subtrees"), mostSubtrees);
  state.done = doneOf(count, fields.take("done"));
  constexpr std::uint64_t most = UINT64_MAX;
  state.solutions = numberOf(fields.take("solutions"), most);
  state.nodes = numberOf(fields.take("nodes"), most);
  state.milliseconds = numberOf(fields.take("milliseconds"), most);
  state.best = normOf(fields.take("best"));
  state.bound = normOf(fields.take("bound"));
  state.isEnough = fields.take("end") == "enough";
  fields.take("sum");
  if (!fields.isAtEnd()) throw Damaged();
  return state;
}

[[noreturn]] void failBecause(const std::string& path, const std::string& reason) {
  fail("File " + path + ' ' + reason + ": remove it to begin anew");
}

/// The version that a text names in its second line.
std::string versionOf(std::string_view text) {
  if (!text.starts_with(heading)) throw Damaged();
  return std::string(Fields(text.substr(heading.size())).take("version"));
}

TreeState parseState(const std::string& path, const std::string& version, std::string_view text) {
  try {
    const std::string written = versionOf(text);
    const bool isVersion = written.find_first_not_of("0123456789.") == std::string::npos;
    if (isVersion && written != version)
      failBecause(path, "is of version " + written + ", not of " + version);
    TreeState state = stateOf(Fields(text.substr(heading.size())));
    if (stateText(state) != text) throw Damaged();
    if (written != version) failBecause(path, "is of version " + written + ", not of " + version);
    return state;
  } catch (const Damaged&) {
    failBecause(path, "is damaged");
  }
}

}  // namespace

std::size_t TreeState::doneCount() const {
  return static_cast<std::size_t>(std::count(done.begin(), done.end(), true));
}

std::uint64_t TreeState::solutionsFiled() const {
  if (goal == "best" || goal == "count") return 0;
  return isEnough ? std::max(solutions, wantedBy(goal)) : solutions;
}

std::uint64_t wantedBy(const std::string& goal) {
  std::uint64_t wanted = 0;
  std::from_chars(goal.data(), goal.data() + goal.size(), wanted);
  return wanted;
}

std::string problemDigest(const Vanu<QQ>& problem) {
  Digest digest;
  for (const Matrix<QQ>* matrix : {&problem.At, &problem.Ag, &problem.Au})
    addMatrix(digest, *matrix);
  for (const Vector<QQ>* vector : {&problem.dt, &problem.bg, &problem.qg, &problem.lu, &problem.ru,
                                   &problem.dx, &problem.lx, &problem.rx}) {
    std::string text;
    appendText(text, *vector, 0);
    digest.add(text);
  }
  return digest.text();
}

std::string stateText(const TreeState& state) {
  std::string text(heading);
  const auto add = [&text](std::string_view name, std::string_view value) {
    text.append(name).append(" ").append(value).append("\n");
  };
  add("version", state.version);
  add("problem", state.problem);
  add("goal", state.goal);
  add("part", std::to_string(state.part) + '/' + std::to_string(state.parts));
  add("known", normText(state.known));
  add("tree", state.tree);
  add("subtrees", std::to_string(state.done.size()));
  add("done", rangesText(state.done));
  add("solutions", std::to_string(state.solutions));
  add("nodes", std::to_string(state.nodes));
  add("milliseconds", std::to_string(state.milliseconds));
  add("best", normText(state.best));
  add("bound", normText(state.bound));
  add("end", state.isEnough ? "enough" : state.isComplete() ? "complete" : "open");
  Digest sum;
  sum.add(text);
  add("sum", sum.text());
  return text;
}

std::optional<TreeState> readTreeState(const std::string& path, const std::string& version) {
  try {
    const std::optional<InputText> text = readFileText(FilePlace(path));
    if (!text) return std::nullopt;
    return parseState(path, version, text->view());
  } catch (const ReadException& exception) {
    fail(exception.message());
  } catch (const LinkException& exception) {
    fail(exception.message());
  }
}

bool writeTreeState(const std::string& path, const TreeState& state) {
  ResultFile file(path);
  if (!file.isOpen()) return false;
  file.write(stateText(state));
  return file.commit() == Commit::written;
}

bool removeTreeState(const std::string& path) {
  return FilePlace(path).unlinkPath() || errno == ENOENT;
}

}  // namespace starsift

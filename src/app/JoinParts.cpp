#include "app/JoinParts.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <ostream>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/StarStore.h"
#include "app/Verdict.h"
#include "files/FileNames.h"
#include "files/PlainText.h"
#include "files/SolutionFile.h"
#include "search/decide/PartWalk.h"
#include "system/Console.h"
#include "system/Failure.h"
#include "text/IntegerText.h"

namespace starsift {

namespace {

/// A part and the files that it left.
struct PartFiles {
  FileNames names;
  TreeState state;
  Array<Star<QQ>> stars;
};

/// I and K of "FILE.part-I-of-K.state" with such a stem; nothing for another name.
std::optional<std::pair<unsigned, unsigned>> partOfName(const std::string& name,
                                                        const std::string& stem) {
  constexpr std::string_view ending = ".state";
  const std::string start = stem + ".part-";
  if (!name.starts_with(start) || !name.ends_with(ending)) return std::nullopt;
  std::string_view numbers(name);
  numbers.remove_prefix(start.size());
  numbers.remove_suffix(ending.size());
  constexpr std::string_view between = "-of-";
  const std::size_t at = numbers.find(between);
  if (at == std::string_view::npos) return std::nullopt;
  const auto part = parseInteger<unsigned>(numbers.substr(0, at));
  const auto parts = parseInteger<unsigned>(numbers.substr(at + between.size()));
  if (!part || !parts) return std::nullopt;
  return std::pair{*part, *parts};
}

[[noreturn]] void failWithoutParts(const std::string& optFile) {
  fail("There are no parts of " + optFile + ": starseek " + optFile +
       " --part=1/K makes the first one of K");
}

/// The parts whose states lie beside a problem, in ascending order; fatal as joinPartFiles().
std::set<unsigned> partsBeside(const std::string& optFile, unsigned& parts) {
  const std::filesystem::path path(optFile);
  const std::filesystem::path folder = path.has_parent_path() ? path.parent_path() : ".";
  const std::string stem = path.stem().string();
  std::set<unsigned> found;
  std::set<unsigned> numbers;
  std::error_code error;
  std::filesystem::directory_iterator entry(folder, error);
  for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
    const auto part = partOfName(entry->path().filename().string(), stem);
    if (!part) continue;
    found.insert(part->first);
    numbers.insert(part->second);
  }
  if (error) fail("Could not read folder " + folder.string() + ": " + error.message());
  if (found.empty()) failWithoutParts(optFile);
  if (numbers.size() > 1)
    fail("There are parts of " + std::to_string(*numbers.begin()) + " and parts of " +
         std::to_string(*numbers.rbegin()) + ": remove the files of one kind");
  parts = *numbers.begin();
  return found;
}

/// Fatal if a state can't be joined with the first one, which may be itself.
void requireFitting(const PartFiles& part, unsigned number, unsigned parts,
                    const std::string& problem, const PartFiles& first) {
  const std::string& path = part.names.stateFile;
  const TreeState& state = part.state;
  if (state.problem != problem) fail("File " + path + " is of another problem");
  if (state.part != number || state.parts != parts)
    fail("File " + path + " is of part " + std::to_string(state.part) + " of " +
         std::to_string(state.parts));
  if (state.goal != first.state.goal)
    fail("File " + path + " is of a search for " + state.goal + ", " + first.names.stateFile +
         " for " + first.state.goal);
  if (state.tree != first.state.tree)
    fail("Files " + path + " and " + first.names.stateFile +
         " are of two trees, which different machines have made: they prove nothing together");
}

Array<Star<QQ>> starsOf(const YLattice<long double>& lattice, const FileNames& names) {
  SolutionFile<QQ> file;
  lattice.withLive([&file](const auto& live) { file.convertProblemFrom(live.file); });
  file.setPaths(names);
  file.mergeFile();
  file.removeDuplicates(Duplicates::ofPoint);
  return std::move(file.stars);
}

/// Fatal if solutions of a part aren't in its file.
void requireStars(const PartFiles& part) {
  const auto present = static_cast<std::uint64_t>(part.stars.dimension());
  const std::uint64_t filed = part.state.solutionsFiled();
  if (present < filed)
    fail("File " + part.names.solFile + " has " + std::to_string(present) + " of the " +
         std::to_string(filed) + " solutions of its part");
}

std::vector<PartFiles> readParts(const YLattice<long double>& lattice, const std::string& optFile,
                                 unsigned& parts) {
  const std::string problem = problemDigest(lattice.problemAsRead());
  std::vector<PartFiles> result;
  for (const unsigned number : partsBeside(optFile, parts)) {
    PartFiles part;
    part.names = partFileNames(optFile, number, parts);
    std::optional<TreeState> state = readTreeState(part.names.stateFile, STARSIFT_VERSION);
    // Removed since the folder was read.
    if (!state) continue;
    part.state = *std::move(state);
    result.push_back(std::move(part));
    requireFitting(result.back(), number, parts, problem, result.front());
  }
  if (result.empty()) failWithoutParts(optFile);
  for (PartFiles& part : result) {
    part.stars = starsOf(lattice, part.names);
    requireStars(part);
  }
  return result;
}

/// Adds the solutions of the parts to the store. Fatal if none of them has the best norm that a
/// part knew.
void addStars(const std::vector<PartFiles>& parts, const std::optional<QQ>& best,
              const Vanu<QQ>& problem, StarStore& store) {
  const SearchedPoints searched(problem);
  bool isThere = !best || (store.leastSearchedNorm() && *store.leastSearchedNorm() <= *best);
  for (const PartFiles& part : parts)
    for (const Star<QQ>& star : part.stars)
      isThere = isThere || (star.targetNorm <= *best && searched.contain(star.x()));
  if (!isThere)
    fail("A part knew a solution with target norm " + plainText(*best) +
         ", which is in none of the solution files");
  for (const PartFiles& part : parts)
    for (const Star<QQ>& star : part.stars) store.add(star);
}

/// Options that lead to a goal.
std::string optionsFor(const std::string& goal) {
  if (goal == "best") return "";
  if (goal == "all") return " --sol=0";
  return goal == "count" ? " --count" : " --sol=" + goal;
}

/// What is to be done for a part, which has a state or not.
std::string missingText(const std::string& optFile, unsigned number, unsigned parts,
                        const TreeState* state, const std::string& goal) {
  std::string text = "Part " + std::to_string(number) + " of " + std::to_string(parts);
  if (state != nullptr)
    text += " is not complete, " + std::to_string(state->doneCount()) + " of its " +
            std::to_string(state->done.size()) + " subtrees are done: ";
  else
    text += " is missing: ";
  return text + "starseek " + optFile + " --part=" + std::to_string(number) + '/' +
         std::to_string(parts) + optionsFor(goal);
}

/// Reports the parts that aren't complete, and returns them.
std::vector<unsigned> reportMissing(const std::string& optFile, unsigned parts,
                                    const std::vector<PartFiles>& present, std::ostream& report) {
  std::vector<unsigned> missing;
  for (unsigned number = 1; number <= parts; ++number) {
    const auto part = std::find_if(present.begin(), present.end(), [number](const PartFiles& one) {
      return one.state.part == number;
    });
    if (part != present.end() && part->state.isComplete()) continue;
    missing.push_back(number);
    report << missingText(optFile, number, parts, part != present.end() ? &part->state : nullptr,
                          present.front().state.goal)
           << endLine();
  }
  return missing;
}

/// So many different solutions were wanted.
bool hasEnough(const std::string& goal, Index solutions) {
  const std::uint64_t wanted = wantedBy(goal);
  return wanted > 0 && static_cast<std::uint64_t>(solutions) >= wanted;
}

/// What the parts have found and proven together; without what only the lattice and the store know.
SearchResult resultOf(const std::vector<PartFiles>& parts) {
  const std::string& goal = parts.front().state.goal;
  std::vector<TreeState> states;
  states.reserve(parts.size());
  SearchResult result;
  result.isCount = goal == "count";
  for (const PartFiles& part : parts) {
    states.push_back(part.state);
    result.solutions += part.stars.dimension();
    result.seconds += static_cast<double>(part.state.milliseconds) / 1000;
  }
  result.decided = joinParts(goal == "best" ? Aim::best : Aim::all, states);
  if (!result.decided.isComplete() && hasEnough(goal, result.solutions))
    result.decided.undecided = Undecided::enough;
  return result;
}

}  // namespace

int joinPartFiles(YLattice<long double>& lattice, bool json, std::ostream& report) {
  lattice.readOpt();
  const std::string optFile = lattice.problemAsRead().optFile;
  unsigned parts = 0;
  const std::vector<PartFiles> present = readParts(lattice, optFile, parts);
  SearchResult result = resultOf(present);
  StarStore store(lattice);
  addStars(present, result.decided.best, lattice.problemAsRead(), store);
  const bool areFiled = store.save(lattice);
  result.scope = proofScope(lattice.problemAsRead());
  result.hasStars = store.report(report);
  report << endLine();
  result.hasTargets = lattice.hasTargets();
  takeStars(store, result);
  writeVerdict(report, result);
  const bool isOver = result.decided.isComplete() || result.decided.undecided == Undecided::enough;
  if (!isOver) result.missing = reportMissing(optFile, parts, present, report);
  if (json) report << jsonLine(result) << endLine();
  stampOutputTime();
  if (!areFiled) return EXIT_FAILURE;
  return isOver ? EXIT_SUCCESS : partsMissing;
}

}  // namespace starsift

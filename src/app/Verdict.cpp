#include "app/Verdict.h"

#include <algorithm>
#include <ostream>
#include <string_view>
#include <utility>

#include "app/TreeStatus.h"
#include "files/PlainText.h"
#include "system/Console.h"
#include "text/TextStreams.h"

namespace starsift {

namespace {

// A complete search is about the solutions that hold exactly, and says so if there may be others.

std::string noSolution(const SearchResult& result) {
  return std::string("There is no solution") +
         (result.scope.equationsAreExact ? "" : " that holds exactly") +
         ": the search was complete.";
}

std::string allSolutions(const SearchResult& result) {
  return "All " + std::to_string(result.decided.count) + " solutions" +
         (result.scope.equationsAreExact ? "" : " that hold exactly") +
         ": the search was complete.";
}

/// The first solution may be a known one that is better than all that were searched.
std::string optimum(const SearchResult& result) {
  const std::string_view among =
      result.scope.equationsAreExact ? "" : " among those that hold exactly";
  if (!result.hasOtherStars || !result.best)
    return "The first solution is optimal" + std::string(among) + '.';
  return "The optimum" + std::string(among) + " has the target norm " + plainText(*result.best) +
         '.';
}

std::string openVerdict(const SearchResult& result) {
  if (result.isCount && result.decided.count > 0)
    return "Solutions counted: " + std::to_string(result.decided.count) +
           ". This proves nothing: there may be more.";
  if (result.solutions == 0)
    return std::string("No ") + (result.hasStars ? "further " : "") +
           "solution was found. This proves nothing: there may be one all the same.";
  if (!result.hasTargets) return "";
  std::string text = "The first solution is the best one found, not proven to be the best there is";
  if (result.decided.bound) text += ": best bound " + plainText(*result.decided.bound);
  return text + '.';
}

/// What a proof leaves open; empty without one.
std::string reservation(const SearchResult& result) {
  return result.isStepsOnly() ? std::string(stepsRemark) : "";
}

/// Known solutions that a proof, or a bound, is not about.
std::string otherStars(const SearchResult& result) {
  const Decided& decided = result.decided;
  if (!result.hasOtherStars || !(decided.isComplete() || decided.bound)) return "";
  return "Known solutions between steps, or that hold only within the tolerance, were not "
         "considered.";
}

/// Why there is no proof; empty if that needs no words.
std::string reasonForNone(const Decided& decided) {
  if (decided.undecided == Undecided::noFiniteBox)
    return "No complete search: variable " + std::to_string(decided.variable) +
           " is not bounded on both sides.";
  if (decided.undecided == Undecided::unbounded)
    return "The problem is unbounded: the target norm decreases for ever along " +
           decided.direction + '.';
  if (decided.undecided == Undecided::tooLarge && decided.estimatedSeconds > 0)
    return "A complete search would take " + roughDuration(decided.estimatedSeconds) +
           "; --prove runs it anyway.";
  return "";
}

std::string partText(const SearchResult& result, const PartResult& part) {
  std::string text = "Part " + std::to_string(part.part) + " of " + std::to_string(part.parts);
  if (!part.isComplete) {
    text += " is not complete: " + std::to_string(part.done) + " of its " +
            std::to_string(part.subtrees) + " subtrees are done";
    return text + (result.decided.undecided == Undecided::enough
                       ? ", and what was wanted was found."
                       : "; the same command goes on.");
  }
  text += " is complete: ";
  if (!result.decided.best || !result.hasTargets || result.decided.count > 0)
    return text + std::to_string(result.decided.count) + " solutions.";
  return text + "no solution in it has a target norm below " + plainText(*result.decided.best) +
         '.';
}

std::string verdictText(const SearchResult& result) {
  switch (result.decided.proof) {
    case Proof::none:
      return result.part ? partText(result, *result.part) : openVerdict(result);
    case Proof::noSolution:
      return noSolution(result);
    case Proof::allFound:
      return allSolutions(result) +
             (result.hasTargets && !result.isCount ? '\n' + optimum(result) : "");
    case Proof::optimum:
      return optimum(result);
  }
  return "";
}

void writeLine(std::ostream& stream, const std::string& text) {
  if (!text.empty()) stream << text << endLine();
}

std::string_view statusOf(const SearchResult& result) {
  switch (result.decided.proof) {
    case Proof::noSolution:
      return "infeasible";
    case Proof::allFound:
      return "complete";
    case Proof::optimum:
      return "optimal";
    case Proof::none:
      break;
  }
  if (result.part && result.part->isComplete) return "part";
  // Another run of the same part may have found what was wanted.
  const bool isFound = result.solutions > 0 || result.decided.undecided == Undecided::enough;
  return isFound ? "found" : "open";
}

/// What the line of a part has beside that of a search, and that of joined parts.
std::string partFields(const SearchResult& result) {
  TextWriter text;
  if (result.part)
    text << R"(, "part": ")" << result.part->part << '/' << result.part->parts
         << R"(", "subtrees": )" << result.part->subtrees << R"(, "done": )" << result.part->done;
  for (std::size_t i = 0; i < result.missing.size(); ++i)
    text << (i == 0 ? R"(, "missing": [)" : ", ") << result.missing[i];
  if (!result.missing.empty()) text << ']';
  return std::move(text).str();
}

/// What keeps the status from being the whole truth, where that is so.
std::string reservationFields(const SearchResult& result) {
  std::string fields;
  if (result.isExactOnly()) fields += R"(, "exact_only": true)";
  if (result.isStepsOnly()) fields += R"(, "steps_only": true)";
  if (result.isUnbounded()) fields += R"(, "unbounded": true)";
  return fields;
}

std::string quoted(const std::optional<QQ>& value) {
  return value ? '"' + plainText(*value) + '"' : "null";
}

}  // namespace

std::uint64_t SearchResult::count() const {
  if (decided.proof == Proof::allFound) return decided.count;
  return std::max(decided.count, static_cast<std::uint64_t>(solutions));
}

void takeStars(const SolutionSink& sink, SearchResult& result) {
  result.hasOtherStars = sink.hasOtherStars();
  if (!result.hasTargets) return;
  result.best = result.decided.isComplete() ? sink.leastSearchedNorm() : sink.leastTargetNorm();
}

SearchResult provedBy(std::string_view message, SearchResult found) {
  found.decided.proof = Proof::noSolution;
  found.scope = fatalScope(message);
  return found;
}

void writeVerdict(std::ostream& stream, const SearchResult& result) {
  writeLine(stream, verdictText(result));
  writeLine(stream, reservation(result));
  writeLine(stream, otherStars(result));
  writeLine(stream, reasonForNone(result.decided));
  if (result.decided.nodes > 0) writeLine(stream, "Nodes: " + std::to_string(result.decided.nodes));
  stampOutputTime();
}

std::string jsonLine(const SearchResult& result) {
  const Decided& decided = result.decided;
  TextWriter text;
  text << R"({"status": ")" << statusOf(result) << R"(", "complete": )"
       << (decided.isComplete() ? "true" : "false") << R"(, "solutions": )" << result.solutions
       << R"(, "count": ")" << result.count() << R"(", "best": )" << quoted(result.best)
       << R"(, "bound": )" << quoted(decided.bound) << R"(, "nodes": )" << decided.nodes
       << R"(, "passes": )" << result.passes << R"(, "seconds": )" << result.seconds
       << R"(, "seed": )" << result.seed << partFields(result) << reservationFields(result) << '}';
  return std::move(text).str();
}

}  // namespace starsift

// How far the walk of a tree, or of a part of it, has come: the content of a .state file.
//
// One line a field, a name and a value; the last one is a digest of the lines before:
//
//   starseek state
//   version 2.4.2
//   problem 8c5e1a0c7f1f3c9e
//   goal best
//   part 3/8
//   known none
//   tree 01d3a5f2b7c96e48
//   subtrees 512
//   done 0-99 103 105-106
//   solutions 4
//   nodes 1048576
//   milliseconds 3120
//   best -303
//   bound -310
//   end open
//   sum 5d1c3b0a9f8e7d6c
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "numbers/QQ.h"
#include "problem/Vanu.h"

namespace starsift {

/// Greatest number of parts.
constexpr unsigned mostParts = 1024;

struct TreeState {
  /// Of the program.
  std::string version;
  /// problemDigest().
  std::string problem;
  /// What is looked for: "best", "all", "count", or a number of solutions.
  std::string goal;
  /// 1 <= part <= parts <= mostParts.
  unsigned part = 1;
  unsigned parts = 1;
  /// Target norm of a solution that was known when the tree was made: only better ones are in it.
  /// None in one of several parts, which must make the same tree.
  std::optional<QQ> known;
  /// Digest of the tree and of all its subtrees, those of other parts too.
  std::string tree;
  /// The subtrees of this part that were walked to their end.
  std::vector<bool> done;
  /// Solutions in these; not with the goal "best".
  std::uint64_t solutions = 0;
  std::uint64_t nodes = 0;
  std::uint64_t milliseconds = 0;
  /// Least target norm that is known: the subtrees done have no solution with a smaller one.
  std::optional<QQ> best;
  /// No solution of the problem has a smaller target norm.
  std::optional<QQ> bound;
  /// What was asked for was found: the other subtrees needn't be walked.
  bool isEnough = false;

  std::size_t doneCount() const;
  /// Solutions that the file of this part has at least; 0 with the goals "best" and "count".
  std::uint64_t solutionsFiled() const;
  bool isComplete() const { return doneCount() == done.size(); }
};

/// The number of solutions that a goal is; 0 for "best", "all" and "count".
std::uint64_t wantedBy(const std::string& goal);

/// Of everything that decides which points are solutions, and how good they are.
std::string problemDigest(const Vanu<QQ>& problem);

/// The text of a .state file.
std::string stateText(const TreeState& state);

/// Reads a .state file; nothing if there is none. Fatal: a file of another version of the program
/// than `version`, one with any byte that stateText() wouldn't have written, and one that can't be
/// read.
std::optional<TreeState> readTreeState(const std::string& path, const std::string& version);

/// Writes it whole or not at all; throws as ResultFile. Returns false if it can't be opened.
bool writeTreeState(const std::string& path, const TreeState& state);

/// Removes the file. Returns false if there is one that stays. LinkException as FilePlace.
bool removeTreeState(const std::string& path);

}  // namespace starsift

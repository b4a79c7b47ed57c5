#include "models/check/ExactLp.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <system_error>
#include <utility>

#include "models/solutions/PointReader.h"
#include "models/solutions/SolverFile.h"
#include "models/text/ModelError.h"
#include "models/text/ModelText.h"
#include "models/write/MpsWriter.h"
#include "system/SystemCall.h"

namespace starsift {

namespace {

constexpr const char* program = "esolver";
/// Seconds that the program may run.
constexpr const char* timeLimit = "3600";

/// A folder for the files of one run, removed with its content.
class ScratchFolder {
 public:
  ScratchFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "starport.XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr)
      throw ModelError(
          0, "no folder could be made in " + std::filesystem::temp_directory_path().string());
    path_ = name;
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;
  ~ScratchFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }

  std::string file(const std::string& name) const { return (path_ / name).string(); }

 private:
  std::filesystem::path path_;
};

/// What to do with the streams of a process: its output goes nowhere.
class SilentStreams {
 public:
  SilentStreams() {
    posix_spawn_file_actions_init(&actions_);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
      posix_spawn_file_actions_addopen(&actions_, stream, "/dev/null", O_RDWR, 0);
  }
  SilentStreams(const SilentStreams&) = delete;
  SilentStreams& operator=(const SilentStreams&) = delete;
  ~SilentStreams() { posix_spawn_file_actions_destroy(&actions_); }

  const posix_spawn_file_actions_t* get() const { return &actions_; }

 private:
  posix_spawn_file_actions_t actions_{};
};

/// Runs the program on the files; false if it isn't installed.
bool run(const std::string& modelFile, const std::string& solutionFile) {
  std::string model = modelFile;
  std::string solution = solutionFile;
  std::string name = program;
  std::string output = "-O";
  std::string limit = "-R";
  std::string seconds = timeLimit;
  const std::array<char*, 7> arguments{name.data(),     limit.data(), seconds.data(), output.data(),
                                       solution.data(), model.data(), nullptr};
  const SilentStreams streams;
  pid_t process = 0;
  const int error =
      posix_spawnp(&process, program, streams.get(), nullptr, arguments.data(), environ);
  if (error == ENOENT) return false;
  if (error != 0) throw ModelError(0, std::string(program) + " could not be started");
  int status = 0;
  uninterrupted([&] { return waitpid(process, &status, 0); });
  // The solution file says how it ended.
  return true;
}

/// Plain names: those of the model may be too much for the program.
WritableNames numberedNames(const Model& model) {
  WritableNames names;
  for (std::size_t j = 0; j < model.columnCount(); ++j) names.columns.add("x" + std::to_string(j));
  for (std::size_t i = 0; i < model.rowCount(); ++i) names.rows.add("r" + std::to_string(i));
  names.objective = "obj";
  return names;
}

LpResult failure(std::string reason) {
  return {LpStatus::failed, {}, std::move(reason)};
}

LpResult readResult(const Model& model, const WritableNames& names, const std::string& path) {
  try {
    const ModelText text = readModelText(path);
    const SolverFile file = readSolverFile(text.view());
    if (file.noSolution == "INFEASIBLE") return {LpStatus::infeasible, {}, {}};
    if (file.noSolution == "UNBOUNDED") return {LpStatus::unbounded, {}, {}};
    if (file.points.empty()) return failure(std::string(program) + " says " + file.noSolution);
    Model named = model;
    named.columnNames = names.columns;
    RoundingOptions exact;
    exact.snap = QQ();
    return {LpStatus::optimal, readPoint(named, file.format, file.points.front(), exact).x, {}};
  } catch (const ModelError& error) {
    return failure(std::string(program) + " wrote no solution: " + error.sentence());
  }
}

}  // namespace

LpResult solveExactly(const Model& model) {
  const ScratchFolder folder;
  const WritableNames names = numberedNames(model);
  Model relaxed = model;
  relaxed.name = "lp";
  relaxed.kinds.assign(relaxed.columnCount(), ColumnKind::continuous);
  // Maximising is an extension that the program needn't know.
  if (relaxed.objective.sense == ObjectiveSense::maximise) {
    relaxed.objective.sense = ObjectiveSense::minimise;
    for (QQ& coefficient : relaxed.objective.coefficients) coefficient.negate();
  }
  relaxed.objective.exists = true;
  relaxed.objective.constant = QQ();
  const std::string modelFile = folder.file("lp.mps");
  std::ofstream(modelFile, std::ios::binary) << mpsText(relaxed, names);
  const std::string solutionFile = folder.file("lp.sol");
  if (!run(modelFile, solutionFile))
    throw ModelError(0, std::string(program) +
                            ", which repairs, is not installed (Debian has it in "
                            "the package qsopt-ex)");
  return readResult(relaxed, names, solutionFile);
}

}  // namespace starsift

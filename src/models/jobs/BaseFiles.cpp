#include "models/jobs/BaseFiles.h"

#include <unistd.h>

#include <algorithm>
#include <optional>
#include <utility>

#include "files/FileNames.h"
#include "files/ResultFile.h"
#include "files/SolWriter.h"
#include "models/read/ProblemReader.h"
#include "models/text/ModelError.h"
#include "models/text/Sha256.h"
#include "models/text/Words.h"
#include "problem/OptReader.h"
#include "stars/StarNorms.h"
#include "system/Signals.h"
#include "text/InputText.h"

namespace starsift {

namespace {

Vector<QQ> vectorOf(const std::vector<QQ>& values) {
  Vector<QQ> vector(static_cast<Index>(values.size()));
  std::copy(values.begin(), values.end(), vector.begin());
  return vector;
}

bool exists(const std::string& path) {
  return access(path.c_str(), F_OK) == 0;
}

std::string namesPath(const std::string& optPath) {
  const std::string& opt = fileNames(optPath).optFile;
  return opt.substr(0, opt.size() - std::string_view(".opt").size()) + ".names";
}

std::optional<NamesFile> namesAt(const std::string& path) {
  const std::optional<InputText> text = readFileText(path);
  if (!text) return std::nullopt;
  try {
    return readNames(text->view());
  } catch (const ModelError& error) {
    throw error.withPath(path);
  }
}

/// The digest of a file, empty if there is none.
std::string digestOf(const std::string& path) {
  const std::optional<InputText> text = readFileText(path);
  return text ? sha256(text->view()) : "";
}

void requireCommitted(Commit commit, const std::string& path) {
  if (commit == Commit::changed) throw ModelError(0, "Somebody else writes to file: " + path);
}

/// Several files that are put in place together. The files must outlive the group.
class FileGroup {
 public:
  FileGroup() = default;
  FileGroup(const FileGroup&) = delete;
  FileGroup& operator=(const FileGroup&) = delete;
  /// Without keep() everything is as it was before.
  ~FileGroup() {
    for (ResultFile* const file : committed_) file->undo();
  }

  void commit(ResultFile& file, const std::string& path) {
    file.keepOld();
    requireCommitted(file.commit(), path);
    committed_.push_back(&file);
  }
  void keep() { committed_.clear(); }

 private:
  std::vector<ResultFile*> committed_;
};

void requireOpen(const ResultFile& file, const std::string& path) {
  if (!file.isOpen()) throw ModelError(0, "Could not write file: " + path);
}

/// Each line once; a line end is added to the old text if it has none.
void writeRecords(ResultFile& file, const std::string& path,
                  const std::vector<std::string>& records) {
  const std::optional<InputText> old = readFileText(path);
  const std::string_view text = old ? old->view() : std::string_view();
  NameTable lines;
  std::string_view rest = text;
  while (!rest.empty()) lines.add(takeLine(rest));
  file.write(text);
  if (!text.empty() && !text.ends_with('\n')) file.write("\n");
  for (const std::string& record : records)
    if (lines.add(record).isNew) file.write(record + '\n');
}

}  // namespace

void requireOwnFiles(const BasePaths& paths, const std::string& digest) {
  if (!exists(paths.opt) && !exists(paths.names)) return;
  std::optional<NamesFile> names;
  try {
    names = namesAt(paths.names);
  } catch (const ModelError&) {
    // No file of ours.
  }
  const bool isOwn = names && names->sourceDigest == digest &&
                     (!exists(paths.opt) || digestOf(paths.opt) == names->optDigest);
  if (!isOwn)
    throw ModelError(0, (exists(paths.opt) ? paths.opt : paths.names) +
                            " is there already and not from this model (--force replaces it)");
}

std::string recordText(const Problem& problem, const std::vector<QQ>& x,
                       const std::vector<QQ>& targetValues, const std::string& origin) {
  Star<QQ> star;
  static_cast<Vector<QQ>&>(star) = vectorOf(x);
  star.targetValues = vectorOf(targetValues);
  Vector<QQ> goals(static_cast<Index>(problem.targets.size()));
  for (std::size_t t = 0; t < problem.targets.size(); ++t)
    goals[static_cast<Index>(t + 1)] = problem.targets[t].goal;
  const Norms<QQ> norms = goalNorms(goals, star.targetValues);
  star.targetNorm = norms.target;
  star.slackNorm = norms.slack;
  star.time = -1;
  // A bar would end the field, a line end the record.
  star.paramsText = origin;
  for (char& c : star.paramsText)
    if (c == '|' || c == '\n' || c == '\r') c = '_';
  return starText(star);
}

void writeBaseFiles(const BasePaths& paths, const Model& model, const OptRows& rows,
                    const OptOptions& options, NamesFile names,
                    const std::vector<std::string>& records) {
  const DeferredSignals deferred;
  ResultFile opt(paths.opt);
  requireOpen(opt, paths.opt);
  Sha256 digest;
  writeOpt(model, rows, options, [&opt, &digest](std::string_view piece) {
    opt.write(piece);
    digest.add(piece);
  });
  names.optDigest = digest.take();
  ResultFile namesFile(paths.names);
  requireOpen(namesFile, paths.names);
  namesFile.write(namesText(names));
  std::optional<ResultFile> sol;
  if (!records.empty()) {
    // Looked up before the file is read: what is added behind that is not lost but refused.
    sol.emplace(paths.sol, fileIdentity(paths.sol));
    requireOpen(*sol, paths.sol);
    writeRecords(*sol, paths.sol, records);
  }
  FileGroup group;
  // First the file that other programs write too.
  if (sol) group.commit(*sol, paths.sol);
  group.commit(opt, paths.opt);
  group.commit(namesFile, paths.names);
  group.keep();
}

void addRecords(const std::string& path, const std::vector<std::string>& records) {
  const DeferredSignals deferred;
  // Looked up before the file is read: what is added behind that is not lost but refused.
  ResultFile file(path, fileIdentity(path));
  requireOpen(file, path);
  writeRecords(file, path, records);
  requireCommitted(file.commit(), path);
}

bool hasConstantColumn(const std::string& optPath) {
  return hasBaseNames(optPath) && readBaseNames(optPath).hasConstantColumn;
}

bool hasBaseNames(const std::string& optPath) {
  return exists(namesPath(optPath));
}

NamesFile readBaseNames(const std::string& optPath) {
  const std::string path = namesPath(optPath);
  std::optional<NamesFile> names = namesAt(path);
  if (!names) throw ModelError(0, path + ": there is no such file");
  if (digestOf(optPath) != names->optDigest)
    throw ModelError(0, path + ": these are the names of another problem than " + optPath);
  return *std::move(names);
}

Problem readBaseProblem(const std::string& optPath) {
  Vanu<QQ> problem;
  problem.optFile = optPath;
  readOpt(problem);
  if (!hasBaseNames(optPath)) return problemOf(problem);
  return problemOf(problem, readBaseNames(optPath));
}

}  // namespace starsift

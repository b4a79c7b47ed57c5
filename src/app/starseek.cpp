// The command: searches for solutions of a problem by reducing its lattice, and stores them in
// the solution file beside it.
#include <unistd.h>

#include <cstdlib>
#include <iostream>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "app/Interrupt.h"
#include "app/JoinParts.h"
#include "app/Program.h"
#include "app/ProofRemark.h"
#include "app/RescueFile.h"
#include "app/Seek.h"
#include "app/SeekArguments.h"
#include "app/StarStore.h"
#include "app/Verdict.h"
#include "params/ParamHelp.h"
#include "system/Console.h"
#include "system/Failure.h"
#include "system/Signals.h"

namespace starsift {
namespace {

constexpr std::string_view synopsis = "[--name=value ...] FILE.opt";

/// Where a status line may be drawn: on a terminal that can erase one and isn't shared with
/// reports of steps. Null if there is none.
std::streambuf* statusTerminal(const YLattice<long double>& lattice) {
  return lattice.params().verb > 0 && isatty(STDOUT_FILENO) != 0 ? nullptr : errorTerminal();
}

/// Never destroyed: the process ends.
YLattice<long double>& commandLattice() {
  static auto& lattice = *new YLattice<long double>;
  return lattice;
}

/// The remark on a fatal report: what it proves, or where the stars of the search are.
std::string searchRemark(std::string_view message) {
  StarStore::secureUnsaved();
  const std::string proof = proofRemark(message);
  return proof.empty() ? rescueRemark() : proof;
}

/// The same, after the line for scripts if the report is a proof.
std::string scriptRemark(std::string_view message) {
  if (fatalProof(message) != FatalProof::nothing) {
    SearchResult result;
    result.seed = commandLattice().seed();
    std::cout << jsonLine(provedBy(message, std::move(result))) << std::endl;
  }
  return searchRemark(message);
}

/// Ends the line of a progress report that a fatal report breaks off: the line for scripts stands
/// on one of its own.
void endReportLine(std::string_view) {
  std::cout << closeStamp(false);
}

int seek(YLattice<long double>& lattice, const SeekOptions& options,
         StatusLine::Clock::time_point start) {
  StatusLine line(statusTerminal(lattice), start, [] { return statusWidth(STDERR_FILENO); });
  const ClearedStream output(std::cout, line);
  const ClearedStream errors(std::cerr, line);
  SearchWatch watch(lattice, line, start);
  Seek search(lattice, watch, options, std::cout);
  const SearchEnd end = search.run();
  if (end == SearchEnd::overflow || !search.starsFiled() || search.hasNoParts())
    return EXIT_FAILURE;
  return search.leavesPart() ? partsMissing : EXIT_SUCCESS;
}

/// The command, started at `start`; returns its exit status.
int runCommand(std::span<char* const> arguments, StatusLine::Clock::time_point start) {
  const std::string_view program = arguments.empty() ? "" : arguments.front();
  const SeekArguments given = splitArguments(arguments.subspan(arguments.empty() ? 0 : 1));
  YLattice<long double>& lattice = commandLattice();
  lattice.setFileNames(given.optFile);
  applyArguments(lattice, given);
  if (given.options.version) {
    printVersion(program);
    return EXIT_SUCCESS;
  }
  if (given.options.help || lattice.params().help) {
    printUsage(program, synopsis);
    writeParamHelp(std::cout << endLine());
    std::cout << '\n' << optionsHelp;
    return EXIT_SUCCESS;
  }
  if (given.optFile.empty()) {
    printUsage(program, synopsis);
    return EXIT_FAILURE;
  }
  setFailureRemark(given.options.json ? scriptRemark : searchRemark);
  if (given.options.json) setFailureHandler(endReportLine);
  if (given.options.join)
    return unwinding(
        [&given, &lattice] { return joinPartFiles(lattice, given.options.json, std::cout); });
  return unwinding([&given, &lattice, start] { return seek(lattice, given.options, start); });
}

}  // namespace
}  // namespace starsift

/// Usage: starseek [--name=value ...] file.opt.
int main(int count, char** arguments) {
  const auto start = starsift::StatusLine::Clock::now();
  starsift::prepareProgram();
  // Before the lattice is made: its locks are files that no other program removes.
  starsift::rememberInterrupts();
  starsift::unlinkSemaphoresOnSignals();
  const int status =
      starsift::statusOfOutput(starsift::runCommand({arguments, arguments + count}, start));
  starsift::endByInterrupt();
  return status;
}

// The command: brings models and solutions that other programs read and write in and out.
#include <unistd.h>

#include <cstdlib>
#include <exception>
#include <iostream>
#include <new>
#include <span>
#include <string>

#include "app/OutOfMemory.h"
#include "app/Program.h"
#include "app/SolutionLock.h"
#include "app/port/PortArguments.h"
#include "files/FileNames.h"
#include "models/jobs/Explain.h"
#include "models/jobs/Export.h"
#include "models/jobs/Import.h"
#include "models/jobs/ReportJson.h"
#include "models/jobs/ReportText.h"
#include "models/jobs/SolutionText.h"
#include "models/text/ModelError.h"
#include "system/Failure.h"
#include "system/Signals.h"

namespace starsift {
namespace {

constexpr std::string_view synopsis = "MODEL [--solution=FILE ...] [-o BASE] (--help: all options)";

/// The status if the command line or an input is refused.
constexpr int refusal = 2;

/// MODEL without ".gz" and the ending of its format.
std::string baseOf(const PortArguments& given) {
  if (!given.output.empty()) return given.output;
  std::string base = given.files.front();
  if (base == "-") throw ModelError(0, "standard input has no name, so -o BASE is missing");
  for (const std::string_view ending : {".gz", ".GZ"})
    if (base.size() > ending.size() && base.ends_with(ending))
      base.resize(base.size() - ending.size());
  if (formatOfPath(base)) base.resize(base.rfind('.'));
  return base;
}

void show(const PortArguments& given, const JobReport& report) {
  if (given.isJson)
    std::cout << reportJson(report, given.showsRows);
  else if (given.job == PortJob::explain)
    writeExplanation(std::cout, report, given.showsRows);
  else
    writeReport(std::cout, report);
}

int bringSolutionsIn(const PortArguments& given) {
  const std::string& problem = given.files.front();
  const SolutionLock lock(fileNames(problem).solFile, Patience::whileHolderWorks);
  show(given, importSolutions(problem, given.solutions, given.options));
  return EXIT_SUCCESS;
}

int handModelOut(const PortArguments& given) {
  const std::string& input = given.files.front();
  if (given.output.empty())
    throw ModelError(0, input + ": -o MODEL.lp or -o MODEL.mps says what to write");
  if (!given.solutions.empty())
    throw ModelError(0, "solutions are added to problems, not to " + given.output);
  show(given, exportModel(input, given.output, given.options));
  return EXIT_SUCCESS;
}

int bringModelIn(const PortArguments& given) {
  if (given.files.size() != 1)
    throw ModelError(0, "one model at a time; solutions stand behind --solution");
  const std::string base = baseOf(given);
  // Searches of the same problem write their solutions too.
  const SolutionLock lock(base + ".sol", Patience::whileHolderWorks);
  show(given, importModel(given.files.front(), given.solutions, base, given.options));
  return EXIT_SUCCESS;
}

int explainFiles(const PortArguments& given) {
  const JobReport report = explain(given.files, given.options);
  if (report.solutions.empty()) throw ModelError(0, "there are no solutions to explain");
  show(given, report);
  return report.isRight() ? EXIT_SUCCESS : EXIT_FAILURE;
}

/// A start that isn't right may be wanted, but not without a word.
void tellWrongRecords(const HandedRecords& handed) {
  for (const HandedRecord& record : handed.records)
    if (!record.isRight)
      std::cerr << handed.solPath << ": record " << record.number
                << " isn't right (--explain tells why)\n";
}

int writeSolution(const PortArguments& given) {
  if (given.files.size() != 2)
    throw ModelError(0, "--solution-of takes a model and a file of records");
  if (given.form == SolutionForm::cbc && given.record == 0)
    throw ModelError(0, "CBC starts from one record, not from all");
  if (!given.output.empty()) requireReplaceable(given.output, given.options);
  const HandedRecords handed =
      recordsOf(given.files[0], given.files[1], given.record, given.options);
  const std::string text = given.isJson ? solutionJson(handed) : solutionText(handed, given.form);
  tellWrongRecords(handed);
  if (given.output.empty())
    std::cout << text;
  else
    writeTextFile(given.output, text);
  return EXIT_SUCCESS;
}

int run(std::string_view program, const PortArguments& given) {
  switch (given.job) {
    case PortJob::help:
      printUsage(program, synopsis);
      std::cout << portHelp();
      return EXIT_SUCCESS;
    case PortJob::version:
      std::cout << "starport " STARSIFT_VERSION "\n";
      return EXIT_SUCCESS;
    case PortJob::usage:
      printUsage(program, synopsis);
      return refusal;
    case PortJob::explain:
      return explainFiles(given);
    case PortJob::solutionOf:
      return writeSolution(given);
    case PortJob::importModel:
      return bringModelIn(given);
    case PortJob::importSolutions:
      return bringSolutionsIn(given);
    case PortJob::exportModel:
      return handModelOut(given);
  }
  return refusal;
}

/// What fail() does here: the readers and writers of the lower floors end a job by it.
void throwFailure(std::string_view message) {
  throw ModelError(0, std::string(message));
}

constexpr std::string_view noMemory = "there is not enough memory\n";

/// Without allocations. Nothing of the report has been printed that isn't flushed.
void refuseWithoutMemory() {
  // There is nothing left to be done if even this can't be written.
  [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, noMemory.data(), noMemory.size());
  std::_Exit(refusal);
}

int runCommand(std::span<char* const> arguments) {
  const std::string_view program = arguments.empty() ? "" : arguments.front();
  try {
    return run(program, readPortArguments(arguments.subspan(arguments.empty() ? 0 : 1)));
  } catch (const std::bad_alloc&) {
    std::cerr << noMemory << std::flush;
  } catch (const std::exception& error) {
    std::cerr << error.what() << std::endl;
  }
  return refusal;
}

}  // namespace
}  // namespace starsift

/// Usage: starport MODEL [--solution=FILE ...] [-o BASE].
int main(int count, char** arguments) {
  starsift::nameUncaughtExceptions();
  starsift::failWithoutMemory(starsift::refuseWithoutMemory);
  starsift::unlinkSemaphoresOnSignals();
  starsift::setFailureHandler(starsift::throwFailure);
  return starsift::statusOfOutput(starsift::runCommand({arguments, arguments + count}));
}

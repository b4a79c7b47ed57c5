#include "app/port/PortArguments.h"

#include <algorithm>
#include <string_view>

#include "models/jobs/OptionText.h"
#include "models/text/ModelError.h"
#include "models/text/Words.h"
#include "text/IntegerText.h"

namespace starsift {

namespace {

class ArgumentReader {
 public:
  explicit ArgumentReader(std::span<char* const> arguments) : rest_(arguments) {}

  PortArguments read();

 private:
  void readOption(std::string_view option);
  void setFlag(std::string_view name);
  void setText(std::string_view name, const std::string& value);
  void setRecord(std::string_view value);
  std::string takeValue(std::string_view name);
  PortJob jobOfFiles() const;
  bool readsModel() const;
  PortJobs jobsOfOptions() const;
  void refuseOptions() const;
  void finish();

  std::span<char* const> rest_;
  std::vector<const PortOption*> given_;
  PortArguments result_;
};

bool isHelpOrVersion(PortJob job) {
  return job == PortJob::help || job == PortJob::version;
}

std::string ArgumentReader::takeValue(std::string_view name) {
  if (rest_.empty()) throw ModelError(0, "the value of --" + std::string(name) + " is missing");
  std::string value = rest_.front();
  rest_ = rest_.subspan(1);
  return value;
}

void ArgumentReader::setFlag(std::string_view name) {
  if (name == "help") result_.job = PortJob::help;
  if (name == "version") result_.job = PortJob::version;
  if (name == "explain") result_.job = PortJob::explain;
  if (name == "solution-of") result_.job = PortJob::solutionOf;
  if (name == "force") result_.options.force = true;
  if (name == "constant") result_.options.opt.addConstant = true;
  if (name == "keep-rounded") result_.options.rounding.keepRounded = true;
  if (name == "rows") result_.showsRows = true;
  if (name == "json") result_.isJson = true;
  if (name == "repair") result_.options.repair = true;
}

void ArgumentReader::setRecord(std::string_view value) {
  if (value == "all") {
    result_.record = 0;
    return;
  }
  const auto record = parseInteger<std::size_t>(value, 1);
  if (!record) throw ModelError(0, inQuotes(value) + " is no value of --record");
  result_.record = *record;
}

void ArgumentReader::setText(std::string_view name, const std::string& value) {
  if (name == "solution")
    result_.solutions.push_back(value);
  else if (name == "output")
    result_.output = value;
  else if (name == "record")
    setRecord(value);
  else if (name == "for")
    result_.form = solutionFormOf(value);
  else
    setNumberOption(result_.options, name, value);
}

void ArgumentReader::readOption(std::string_view option) {
  const std::size_t equals = option.find('=');
  const std::string_view name = option.substr(0, equals);
  const bool hasValue = equals != std::string_view::npos;
  const PortOption* const known = portOption(name);
  if (known == nullptr || (hasValue && !known->takesValue))
    throw ModelError(0, "there is no option --" + excerpt(name));
  given_.push_back(known);
  if (!known->takesValue) return setFlag(name);
  setText(name, hasValue ? std::string(option.substr(equals + 1)) : takeValue(name));
}

/// What is asked for without an option that names a job.
PortJob ArgumentReader::jobOfFiles() const {
  if (result_.files.size() != 1) return PortJob::importModel;
  const bool isProblem = result_.files.front().ends_with(".opt");
  if (isProblem && result_.output.empty() && !result_.solutions.empty())
    return PortJob::importSolutions;
  return isProblem || formatOfPath(result_.output) ? PortJob::exportModel : PortJob::importModel;
}

/// The file that the job is about is a model; a problem if it is a .opt file or lies beside one.
bool ArgumentReader::readsModel() const {
  for (const std::string& file : result_.files) {
    if (file.ends_with(".opt")) return false;
    if (formatOfPath(file)) return true;
  }
  return result_.job == PortJob::importModel || result_.options.format.has_value();
}

/// The jobs whose options apply: a model is brought in with or without solutions.
PortJobs ArgumentReader::jobsOfOptions() const {
  PortJobs jobs = only(result_.job);
  const bool hasSolutions = result_.job == PortJob::importModel && !result_.solutions.empty();
  if (hasSolutions) jobs |= only(PortJob::importSolutions);
  if (readsModel()) jobs |= readingAModel;
  return jobs;
}

void ArgumentReader::refuseOptions() const {
  const PortJobs jobs = jobsOfOptions();
  for (const PortOption* const option : given_)
    if ((option->jobs & jobs) == 0)
      throw ModelError(0, (option->name == "output" ? "-o" : "--" + std::string(option->name)) +
                              " is only for " + std::string(option->use));
  if (result_.isJson && std::ranges::find(given_, portOption("for")) != given_.end())
    throw ModelError(0, "--for is not for --json");
  if (std::ranges::count(result_.files, "-") + std::ranges::count(result_.solutions, "-") > 1)
    throw ModelError(0, "standard input can be one file only");
}

void ArgumentReader::finish() {
  if (isHelpOrVersion(result_.job)) return;
  if (result_.files.empty()) {
    result_.job = PortJob::usage;
    return;
  }
  if (result_.job == PortJob::importModel) result_.job = jobOfFiles();
  refuseOptions();
}

PortArguments ArgumentReader::read() {
  while (!rest_.empty()) {
    const std::string argument = rest_.front();
    rest_ = rest_.subspan(1);
    if (argument.starts_with("--"))
      readOption(std::string_view(argument).substr(2));
    else if (argument == "-o")
      readOption("output");
    else if (argument == "-h")
      readOption("help");
    else if (argument.starts_with('-') && argument != "-")
      throw ModelError(0, "there is no option " + excerpt(argument));
    else
      result_.files.push_back(argument);
  }
  finish();
  return result_;
}

}  // namespace

PortArguments readPortArguments(std::span<char* const> arguments) {
  return ArgumentReader(arguments).read();
}

std::string portHelp() {
  return R"(
Models and solutions of other programs in and out, with exact numbers.

MODEL [--solution=FILE ...] [-o BASE]
  MODEL is a file .mps, .lp or .opb, also packed (.gz), or - with --format. It becomes BASE.opt and
  BASE.names; BASE is MODEL without its endings unless -o names it. What solvers wrote is added to
  BASE.sol.
BASE.opt -o MODEL.mps (or .lp; also from another model)
  writes a problem as a model; goals, moduli and decimal places are transformed.
BASE.opt --solution=FILE ...
  adds what solvers found of that model to BASE.sol.
--explain FILE ... [MODEL or BASE.opt]
  checks records (BASE.sol) and solution files: every row, bound and step that is broken, and by
  how much exactly. The status is 0 if all records are right, else 1.
--solution-of MODEL BASE.sol [-o FILE] (or BASE.opt as MODEL)
  writes a record as a list of names and values for solvers, or as CBC starts from.

--solution=FILE       a solution file of a solver; any number of times
--format=mps|lp|opb   format of MODEL, whatever its ending; of the model that a solution is about
--repair              makes broken solutions right: integers stay, the rest is solved exactly by
                      esolver (package qsopt-ex), or proved to have no solution
--force               replaces files that aren't from this model
--rows                with --explain: the values of all rows
--json                prints the report as JSON
--record=N|all        with --solution-of: which record (1)
--for=miplib|cbc      with --solution-of: the form (miplib)
--decimals=N          decimal places of continuous columns in BASE.opt (6)
--constant            adds a variable for the constant of the objective
--max-size=BYTES      largest BASE.opt, also with K, M or G (1G)
--infinity=X|none     bounds from this magnitude on are infinite (1e20)
--integer-upper=X     upper bound of integer columns of MPS files without any bound (1)
--integrality=X       largest distance to an integer that is rounded (1e-5)
--snap=X              largest distance beyond a bound that is removed (1e-9)
--keep-rounded        takes integers that the format of a solution can't hold as they stand
--help, -h            prints this text
--version             prints the version

The status is 2 if anything was refused; nothing is written then.
)";
}

}  // namespace starsift

// The extension module of the package starsift: numbers cross the border as machine integers or as
// texts, which the package makes of the numbers of Python and back.
#include <cxxabi.h>
#include <pybind11/functional.h>
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>
#include <starsift/starsift.h>
#include <unistd.h>

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <stop_token>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace py = pybind11;

namespace {

using starsift::Number;
using starsift::Problem;
using starsift::Row;
using starsift::Search;
using starsift::Solution;
using starsift::Verdict;

using Texts = std::vector<std::string>;
using Terms = std::vector<std::pair<std::size_t, std::string>>;

std::vector<Number> numbers(const Texts& texts) {
  return {texts.begin(), texts.end()};
}

/// An int, or the text of a number that is no machine integer: the package makes a number of it.
py::object toPython(const Number& number) {
  if (const auto integer = number.toInt64()) return py::int_(*integer);
  return py::str(number.text());
}

py::object toPython(const std::optional<Number>& number) {
  return number ? toPython(*number) : py::none();
}

py::list toPython(const std::vector<Number>& numbers) {
  py::list result;
  for (const Number& number : numbers) result.append(toPython(number));
  return result;
}

Row rowOf(const Terms& given) {
  std::vector<starsift::Term> terms;
  for (const auto& [variable, coefficient] : given) terms.push_back({variable, coefficient});
  return Row::sparse(terms);
}

using Integers = std::vector<std::int64_t>;
using Point = std::variant<Integers, std::vector<Number>>;

/// The components, if all of them are plain machine integers.
std::optional<Integers> integers(const py::sequence& point) {
  Integers result;
  result.reserve(point.size());
  for (const py::handle component : point) {
    int overflow = 0;
    if (PyLong_CheckExact(component.ptr()) == 0) return std::nullopt;
    result.push_back(PyLong_AsLongLongAndOverflow(component.ptr(), &overflow));
    if (overflow != 0) return std::nullopt;
  }
  return result;
}

/// `text` makes a text of a number.
Point pointOf(const py::sequence& point, const py::function& text) {
  if (std::optional<Integers> plain = integers(point)) return *std::move(plain);
  std::vector<Number> result;
  for (const py::handle component : point) result.emplace_back(text(component).cast<std::string>());
  return result;
}

/// At its end the interpreter ends every thread that asks for its lock, by unwinding that no
/// destructor survives. Such a thread waits here for the end of the process instead.
[[noreturn]] void waitForTheEnd() {
  while (true) pause();
}

/// Does work that asks for the lock.
template <class Work>
void whileItLives(const Work& work) {
  if (_Py_IsFinalizing() != 0) waitForTheEnd();
  try {
    work();
  } catch (const abi::__forced_unwind&) {
    waitForTheEnd();
  }
}

/// Other threads have the lock of the interpreter during its lifetime.
class LockReleased {
 public:
  LockReleased() = default;
  LockReleased(const LockReleased&) = delete;
  LockReleased& operator=(const LockReleased&) = delete;
  ~LockReleased() {
    whileItLives([this] { PyEval_RestoreThread(state_); });
  }

 private:
  PyThreadState* state_ = PyEval_SaveThread();
};

std::vector<Verdict> check(const Problem& problem, const py::sequence& given,
                           const py::function& text) {
  std::vector<Point> points;
  points.reserve(given.size());
  for (const py::handle point : given)
    points.push_back(pointOf(py::reinterpret_borrow<py::sequence>(point), text));
  // Other threads may change the problem while the lock is released.
  starsift::Checker checker(problem);
  const LockReleased released;
  std::vector<Verdict> verdicts;
  verdicts.reserve(points.size());
  for (const Point& point : points)
    verdicts.push_back(
        std::visit([&checker](const auto& x) { return checker.check(std::span(x)); }, point));
  return verdicts;
}

/// What the interpreter wants during a search: its signals, the calls of the user, and an end from
/// another thread.
class Calls {
 public:
  /// Each may be None. `isStopped` is asked some times a second.
  Calls(py::object isStopped, py::object onSolution, py::object onProgress)
      : isStopped_(std::move(isStopped)),
        onSolution_(std::move(onSolution)),
        onProgress_(std::move(onProgress)) {}

  void attach(Search& search) {
    if (!onSolution_.is_none())
      search.onSolution([this](const Solution& solution) { tell(onSolution_, solution); });
    search.onProgress([this](const Search::Progress& progress) {
      whileItLives([&] {
        const py::gil_scoped_acquire held;
        if (PyErr_CheckSignals() != 0) takeSignal();
        if (!isStopped_.is_none() && isStopped_().cast<bool>()) stop_.request_stop();
      });
      if (!onProgress_.is_none()) tell(onProgress_, progress);
    });
  }

  std::stop_token token() const { return stop_.get_token(); }

 private:
  /// Calls the user.
  template <class Argument>
  void tell(const py::object& call, const Argument& argument) {
    whileItLives([&] {
      const py::gil_scoped_acquire held;
      try {
        call(argument);
      } catch (py::error_already_set& error) {
        if (!error.matches(PyExc_KeyboardInterrupt)) throw;
        stop_.request_stop();
      }
    });
  }

  /// Ctrl-C ends the search, which returns what it has; another handler's exception leaves it.
  void takeSignal() {
    if (PyErr_ExceptionMatches(PyExc_KeyboardInterrupt) == 0) throw py::error_already_set();
    PyErr_Clear();
    stop_.request_stop();
  }

  py::object isStopped_;
  py::object onSolution_;
  py::object onProgress_;
  std::stop_source stop_;
};

using Options = std::map<std::string, std::string>;

Search searchWith(const Problem& problem, const Options& options) {
  Search made(problem);
  for (const auto& [name, value] : options) made.set(name, value);
  return made;
}

std::vector<Search::BasisProfile> profile(const Problem& problem, const Options& options,
                                          py::object isStopped) {
  Search made = searchWith(problem, options);
  Calls calls{std::move(isStopped), py::none(), py::none()};
  calls.attach(made);
  const LockReleased released;
  return made.profile(calls.token());
}

Search::Result search(const Problem& problem, const Options& options,
                      const std::vector<Solution>& known, py::object isStopped,
                      py::object onSolution, py::object onProgress) {
  Search made = searchWith(problem, options);
  made.know(known);
  Calls calls(std::move(isStopped), std::move(onSolution), std::move(onProgress));
  calls.attach(made);
  const LockReleased released;
  return made.run(calls.token());
}

std::string partName(const starsift::Violation& violation) {
  switch (violation.part) {
    case starsift::Part::row:
      return "row";
    case starsift::Part::lowerBound:
      return "lower bound";
    case starsift::Part::upperBound:
      return "upper bound";
    case starsift::Part::step:
      break;
  }
  return "step";
}

std::string proofName(const Search::Result& result) {
  switch (result.proof) {
    case Search::Proof::none:
      return "none";
    case Search::Proof::infeasible:
      return "infeasible";
    case Search::Proof::allFound:
      return "all found";
    case Search::Proof::optimum:
      break;
  }
  return "optimum";
}

std::string endName(const Search::Result& result) {
  switch (result.end) {
    case Search::End::goal:
      return "goal";
    case Search::End::passes:
      return "passes";
    case Search::End::time:
      return "time";
    case Search::End::fruitless:
      return "fruitless";
    case Search::End::stopped:
      return "stopped";
    case Search::End::decided:
      return "decided";
    case Search::End::overflow:
      break;
  }
  return "overflow";
}

/// What a problem is built by.
void defineBuilders(py::class_<Problem>& type) {
  type.def("add_variable",
           [](Problem& problem, const std::string& lower, const std::string& upper,
              const std::string& name,
              int decimals) { return problem.addVariable(lower, upper, name, decimals); })
      .def("add_equation",
           [](Problem& problem, const Terms& row, const std::string& value,
              const std::string& name) { return problem.addEquation(rowOf(row), value, name); })
      .def("add_congruence",
           [](Problem& problem, const Terms& row, const std::string& value,
              const std::string& modulus, const std::string& name) {
             return problem.addCongruence(rowOf(row), value, modulus, name);
           })
      .def(
          "add_range",
          [](Problem& problem, const Terms& row, const std::string& lower, const std::string& upper,
             const std::string& name) { return problem.addRange(rowOf(row), lower, upper, name); })
      .def("maximise",
           [](Problem& problem, const Terms& target) { return problem.maximise(rowOf(target)); })
      .def("minimise",
           [](Problem& problem, const Terms& target) { return problem.minimise(rowOf(target)); })
      .def("approach", [](Problem& problem, const Terms& target, const std::string& value) {
        return problem.approach(rowOf(target), value);
      });
}

void defineProblem(py::module_& module) {
  py::class_<Problem> type(module, "Problem");
  defineBuilders(type);
  type.def(py::init<>())
      .def(py::init<const Problem&>())
      .def_static("from_opt", [](const std::string& opt) { return Problem::fromOpt(opt); })
      .def_static("read", &Problem::read)
      .def_property_readonly("variable_count", &Problem::variableCount)
      .def_property_readonly("row_count", &Problem::rowCount)
      .def_property_readonly("target_count", &Problem::targetCount)
      .def("variable_name", &Problem::variableName)
      .def("row_name", &Problem::rowName)
      .def("to_opt", &Problem::toOpt)
      .def("from_sol",
           [](const Problem& problem, const std::string& sol) { return problem.fromSol(sol); })
      .def("to_sol",
           [](const Problem& problem, const std::vector<Solution>& solutions) {
             return problem.toSol(solutions);
           })
      .def(py::pickle([](const Problem& problem) { return py::bytes(problem.toText()); },
                      [](const py::bytes& text) { return Problem::fromText(std::string(text)); }))
      .def("check", check)
      .def("search", search)
      .def("profile", profile);
}

void defineVerdict(py::module_& module) {
  using starsift::Violation;
  py::class_<Violation>(module, "Violation")
      .def_property_readonly("part", partName)
      .def_readonly("index", &Violation::index)
      .def_readonly("name", &Violation::name)
      .def_property_readonly("amount", [](const Violation& v) { return toPython(v.amount); });
  py::class_<Verdict>(module, "Verdict")
      .def_readonly("is_solution", &Verdict::isSolution)
      .def_readonly("violations", &Verdict::violations)
      .def_property_readonly("target_values",
                             [](const Verdict& v) { return toPython(v.targetValues); })
      .def_property_readonly("target_norm", [](const Verdict& v) { return toPython(v.targetNorm); })
      .def_property_readonly("slack_norm", [](const Verdict& v) { return toPython(v.slackNorm); });
}

void defineSolution(py::module_& module) {
  py::class_<Solution>(module, "Solution")
      .def(py::init(
          [](const Texts& x, std::int64_t seconds, std::string parameters, std::string version) {
            Solution solution;
            solution.x = numbers(x);
            solution.seconds = seconds;
            solution.parameters = std::move(parameters);
            solution.version = std::move(version);
            return solution;
          }))
      .def_property_readonly("x", [](const Solution& s) { return toPython(s.x); })
      .def_property_readonly("target_values",
                             [](const Solution& s) { return toPython(s.targetValues); })
      .def_property_readonly("target_norm",
                             [](const Solution& s) { return toPython(s.targetNorm); })
      .def_property_readonly("slack_norm", [](const Solution& s) { return toPython(s.slackNorm); })
      .def_readonly("seconds", &Solution::seconds)
      .def_readonly("parameters", &Solution::parameters)
      .def_readonly("version", &Solution::version);
}

constexpr const char* aboutProgress = R"(How far a search is.

``seconds`` since its start, ``passes`` so far, and different ``solutions``. While a tree is walked,
``tree_share`` is the part of it that is done, from 0 to 1, and ``nodes`` are its nodes so far; else
``tree_share`` is None.)";

std::string textOf(const Search::Progress& progress) {
  return py::str("Progress(seconds={!r}, passes={!r}, solutions={!r}, tree_share={!r}, nodes={!r})")
      .format(progress.seconds, progress.passes, progress.solutions, progress.treeShare,
              progress.nodes);
}

void defineSearch(py::module_& module) {
  py::class_<Search::Progress>(module, "Progress", aboutProgress)
      .def("__repr__", textOf)
      .def(py::pickle(
          [](const Search::Progress& p) {
            return py::make_tuple(p.seconds, p.passes, p.solutions, p.treeShare, p.nodes);
          },
          [](const py::tuple& state) {
            return Search::Progress{state[0].cast<double>(), state[1].cast<std::uint64_t>(),
                                    state[2].cast<std::uint64_t>(),
                                    state[3].cast<std::optional<double>>(),
                                    state[4].cast<std::uint64_t>()};
          }))
      .def_readonly("seconds", &Search::Progress::seconds)
      .def_readonly("passes", &Search::Progress::passes)
      .def_readonly("solutions", &Search::Progress::solutions)
      .def_readonly("tree_share", &Search::Progress::treeShare)
      .def_readonly("nodes", &Search::Progress::nodes);
  py::class_<Search::BasisProfile>(module, "BasisProfile")
      .def_readonly("name", &Search::BasisProfile::name)
      .def_readonly("lengths", &Search::BasisProfile::lengths);
  py::class_<Search::Result>(module, "Result")
      .def_property_readonly("end", endName)
      .def_property_readonly("proof", proofName)
      .def_readonly("is_exact_only", &Search::Result::isExactOnly)
      .def_readonly("is_steps_only", &Search::Result::isStepsOnly)
      .def_readonly("is_unbounded", &Search::Result::isUnbounded)
      .def_readonly("verdict", &Search::Result::verdict)
      .def_readonly("solutions", &Search::Result::solutions)
      .def_readonly("count", &Search::Result::count)
      .def_property_readonly("best", [](const Search::Result& r) { return toPython(r.best); })
      .def_property_readonly("bound", [](const Search::Result& r) { return toPython(r.bound); })
      .def_readonly("nodes", &Search::Result::nodes)
      .def_readonly("passes", &Search::Result::passes)
      .def_readonly("seconds", &Search::Result::seconds)
      .def_readonly("seed", &Search::Result::seed);
}

}  // namespace

PYBIND11_MODULE(_starsift, module) {
  module.attr("__version__") = STARSIFT_VERSION;
  py::register_exception<starsift::Error>(module, "Error", PyExc_ValueError);
  defineVerdict(module);
  defineSolution(module);
  defineSearch(module);
  defineProblem(module);
}

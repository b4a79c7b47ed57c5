// The library of starsift: exact checks of solutions of integer linear problems, and searches for
// them.
//
//   maximise, minimise or come close to   target rows
//   subject to                            row x  =  value  (or congruent modulo a number)
//                                lower <= row x <= upper
//                                lower <=     x <= upper
//
// Numbers are exact throughout. Variables, rows and targets have indices from 0 on, in the order in
// which they were added.
//
// Nothing here prints, ends the process, touches signals, follows a locale or keeps state beyond
// its objects; callbacks run in the locale of the thread that calls. Functions throw Error for bad
// input and std::bad_alloc; an object is unchanged then. (GMP aborts the process if it gets no
// memory, unless its host has set functions of its own for that.) Different objects may be used by
// different threads at once; one object by one thread at a time, but const functions of Problem and
// Search by any number.
#pragma once

#include <compare>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <memory>
#include <optional>
#include <ranges>
#include <span>
#include <stdexcept>
#include <stop_token>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace starsift {
inline namespace v1 {

/// Bad input: what() is the sentence that the commands report.
class [[gnu::visibility("default")]] Error : public std::runtime_error {
 public:
  explicit Error(const std::string& message);
  Error(const Error&) = default;
  Error& operator=(const Error&) = default;
  ~Error() override;
};

/// The way of the library to what its objects hold.
class Inside;

/// Tells its digits as the classes of GMP do: mpz_class, mpq_class.
template <class Value>
concept GmpNumber = requires(const Value& value) {
  { value.get_str(10) } -> std::convertible_to<std::string>;
};

/// An exact rational number, or one of the two infinities. A value.
class [[gnu::visibility("default")]] Number {
 public:
  /// 0.
  Number() noexcept = default;

  /// Any machine integer. Characters and truth values are none.
  template <std::integral Integer>
  requires(!std::same_as<Integer, bool> && !std::same_as<Integer, char>)
      Number(Integer value) {  // NOLINT(google-explicit-constructor)
    if (std::in_range<std::int64_t>(value))
      small_ = static_cast<std::int64_t>(value);
    else
      *this = Number(std::to_string(value));
  }

  /// "3", "-2.5", "1e6", "7/4", "inf", "-inf"; leading zeros mean nothing. Error
  /// '"x" is not a number' for anything else, '"1/0" has the denominator 0', 'the exponent of
  /// "1e100001" is beyond 100000'.
  Number(std::string_view text);  // NOLINT(google-explicit-constructor)
  Number(const char* text) : Number(std::string_view(text)) {}         // NOLINT
  Number(const std::string& text) : Number(std::string_view(text)) {}  // NOLINT

  template <GmpNumber Gmp>
  Number(const Gmp& value)  // NOLINT(google-explicit-constructor)
      : Number(std::string_view(value.get_str(10))) {}

  /// An expression of them: -a, a + b. Its value is of the same template with one argument twice,
  /// which other templates may not bear; those of GMP are known by their precision.
  template <template <class, class> class Expression, class Value, class Operation>
  requires(requires(const Expression<Value, Operation>& expression) { expression.get_prec(); } &&
           !std::same_as<Value, Operation> && GmpNumber<Expression<Value, Value>>)
      Number(const Expression<Value, Operation>& expression)  // NOLINT(google-explicit-constructor)
      : Number(Expression<Value, Value>(expression)) {}

  /// A binary fraction is seldom what was meant: write the text.
  template <std::floating_point Real>
  Number(Real) = delete;

  static Number infinity();
  Number operator-() const;

  /// "3", "-7/2" in lowest terms, "inf", "-inf".
  std::string text() const;
  bool isInteger() const noexcept;
  bool isInfinite() const noexcept;
  /// The value, if it is a machine integer.
  std::optional<std::int64_t> toInt64() const noexcept;
  /// Rounded to some neighbour.
  double toDouble() const;

  friend bool operator==(const Number&, const Number&) = default;
  friend std::strong_ordering operator<=>(const Number& a, const Number& b) {
    return a.order(b);
  }

 private:
  friend class Inside;

  std::strong_ordering order(const Number& other) const;

  std::int64_t small_ = 0;
  /// In lowest terms; empty if the value is small_.
  std::string text_;
};

/// A coefficient of one variable.
struct Term {
  std::size_t variable = 0;
  Number coefficient;
};

/// The coefficients of a row or target.
class [[gnu::visibility("default")]] Row {
 public:
  /// One coefficient for each variable that the problem has.
  Row(std::initializer_list<Number> coefficients);  // NOLINT(google-explicit-constructor)
  template <std::ranges::input_range Values>
  requires(std::constructible_from<Number, std::ranges::range_reference_t<Values>> &&
           !std::same_as<std::remove_cvref_t<Values>, Row>) Row(const Values& coefficients)
      : isDense_(true) {  // NOLINT(google-explicit-constructor)
    for (const auto& value : coefficients) terms_.push_back({terms_.size(), Number(value)});
  }

  /// The coefficients of some variables, the others 0. Those of one variable add up.
  static Row sparse(std::span<const Term> terms);
  static Row sparse(std::initializer_list<Term> terms);

  std::span<const Term> terms() const noexcept {
    return terms_;
  }
  /// There is one for each variable.
  bool isDense() const noexcept {
    return isDense_;
  }

 private:
  explicit Row(std::vector<Term> terms);

  std::vector<Term> terms_;
  bool isDense_ = false;
};

/// A solution, and what is known of it: one record of a .sol file.
struct Solution {
  /// One component for each variable.
  std::vector<Number> x;
  /// One for each target.
  std::vector<Number> targetValues;
  /// The sum over the targets: maximised ones count negatively, of others the distance. Smaller is
  /// better.
  Number targetNorm;
  /// The sum of the distances to the values that targets should come close to.
  Number slackNorm;
  /// Seconds from the start of the search until it was found; -1 if that isn't known.
  std::int64_t seconds = -1;
  /// What the file tells of the search, on one line each.
  std::string parameters;
  std::string version;
};

/// A problem: variables, rows that must hold, and targets.
class [[gnu::visibility("default")]] Problem {
 public:
  /// No variables and no rows.
  Problem();
  Problem(const Problem& other);
  Problem(Problem && other) noexcept;
  Problem& operator=(const Problem& other);
  Problem& operator=(Problem&& other) noexcept;
  ~Problem();

  /// The problem of the text of a .opt file. Error with the report of the commands if it has
  /// another form.
  static Problem fromOpt(std::string_view text);
  /// The same for the file at `path`; "Could not read opt file: " and the path.
  static Problem read(const std::string& path);

  // Each of these returns the index of what it adds. Without a name variables are called x1, x2,
  // ... and rows g1, g2, ... (equations, congruences) and u1, u2, ... (ranges), counted from 1.
  // Errors begin with the name of the row: "row g2: 3 coefficients for 4 variables", "row g2: there
  // is no variable 7", "row g2: an infinite coefficient", "row g2: an infinite value".

  /// lower <= x <= upper in steps of 10^-decimals, 0 <= decimals <= 18. Error "variable x1: " and
  /// "the upper bound is below the lower one", "no finite value is within the bounds" or "decimals
  /// are from 0 to 18".
  std::size_t addVariable(const Number& lower, const Number& upper, std::string_view name = {},
                          int decimals = 0);

  /// row x = value, within 1e-9.
  std::size_t addEquation(const Row& row, const Number& value, std::string_view name = {});
  /// row x = value + a multiple of `modulus`. The remainder of row x - value, which has the sign of
  /// row x - value, may be up to 1e-9 in magnitude: a value that far short of a multiple is none.
  /// The modulus is finite and not within 1e-9 of 0, else Error "row g1: the modulus is 0 or
  /// infinite".
  std::size_t addCongruence(const Row& row, const Number& value, const Number& modulus,
                            std::string_view name = {});
  /// lower <= row x <= upper, exactly; one of them may be infinite. Error "row u1: the upper bound
  /// is below the lower one" or "row u1: no bound is finite".
  std::size_t addRange(const Row& row, const Number& lower, const Number& upper,
                       std::string_view name = {});

  std::size_t maximise(const Row& target);
  std::size_t minimise(const Row& target);
  /// The target should come close to `value`, which is finite.
  std::size_t approach(const Row& target, const Number& value);

  std::size_t variableCount() const noexcept;
  std::size_t rowCount() const noexcept;
  std::size_t targetCount() const noexcept;
  /// Error "there is no variable 7", "there is no row 7".
  std::string variableName(std::size_t variable) const;
  std::string rowName(std::size_t row) const;

  /// The text of a .opt file, which has no names, and the rows that are equations or congruences
  /// before the others. Error if there is none: "the problem has no variables", "the problem has
  /// neither rows nor targets".
  std::string toOpt() const;

  /// A text of all of the problem, also while it is being built: with names, and the rows in their
  /// order. It is for other processes and for files that this library reads again.
  std::string toText() const;
  /// The problem of such a text, of this version or an earlier one. Error "not the text of a
  /// problem".
  static Problem fromText(std::string_view text);

  /// The records of the text of a .sol file, right or wrong; a record of x alone gets values and
  /// norms if it is right. Malformed records are left out, as starsift does. Error with the report
  /// of starsift for malformed numbers.
  std::vector<Solution> fromSol(std::string_view text) const;
  /// The text that starsift writes for these: wrong ones are dropped, values and norms computed
  /// anew, the best first, no duplicates. Error as check().
  std::string toSol(std::span<const Solution> solutions) const;

 private:
  friend class Inside;
  struct [[gnu::visibility("hidden")]] Record;
  std::unique_ptr<Record> record_;
};

/// What a point can break.
enum class Part { row, lowerBound, upperBound, step };

struct Violation {
  Part part = Part::row;
  /// Of the row or variable.
  std::size_t index = 0;
  /// Of the row or variable.
  std::string name;
  /// Greater than 0: the distance to the nearest value that is allowed.
  Number amount;
};

/// The exact judgement of a point.
struct Verdict {
  /// Rows and bounds hold as starsift sees it: equations within 1e-9, congruences as told at
  /// addCongruence(), all else exactly. Steps don't matter.
  bool isSolution = false;
  /// Rows, bounds and steps that are broken, the largest amount first.
  std::vector<Violation> violations;
  /// Of a solution: see Solution.
  std::vector<Number> targetValues;
  Number targetNorm;
  Number slackNorm;

  /// Nothing is broken, not even a step.
  bool isRight() const noexcept { return violations.empty(); }
};

/// A problem prepared for the check of many points.
class [[gnu::visibility("default")]] Checker {
 public:
  /// Error as Problem::toOpt().
  explicit Checker(const Problem& problem);
  Checker(Checker && other) noexcept;
  Checker& operator=(Checker&& other) noexcept;
  ~Checker();

  /// `point` has one finite component for each variable; else Error "a point has 3 components, the
  /// problem 4 variables" or "a point has an infinite component".
  Verdict check(std::span<const Number> point);
  Verdict check(std::span<const std::int64_t> point);

 private:
  struct [[gnu::visibility("hidden")]] Prepared;
  std::unique_ptr<Prepared> prepared_;
};

/// The verdict on each point. Errors as those of Checker.
[[gnu::visibility("default")]] std::vector<Verdict> check(
    const Problem& problem, std::span<const std::vector<Number>> points);
/// The verdict on one point.
[[gnu::visibility("default")]] Verdict check(const Problem& problem, std::span<const Number> point);

/// A search for solutions by lattice reduction, walks and, where it can end in time, a complete
/// enumeration: what the command starseek does.
class [[gnu::visibility("default")]] Search {
 public:
  /// What is proved.
  enum class Proof { none, infeasible, allFound, optimum };

  /// Why the search ended.
  enum class End {
    /// Enough solutions, or a norm was met.
    goal,
    /// As many passes as the option `iters` allows.
    passes,
    /// The seconds of the option `rtime` are over.
    time,
    /// Many restarts without a new solution, where no option limits the search.
    fruitless,
    /// By the stop token.
    stopped,
    /// There is a proof, or a complete search found what was asked for.
    decided,
    /// A number is too large.
    overflow
  };

  struct Progress {
    /// Since the start of run().
    double seconds = 0;
    std::uint64_t passes = 0;
    /// Different ones.
    std::uint64_t solutions = 0;
    /// While a tree is walked: the part of it that is done, from 0 to 1, and its nodes so far.
    std::optional<double> treeShare;
    std::uint64_t nodes = 0;
  };

  struct Result {
    End end = End::goal;
    Proof proof = Proof::none;
    /// What is proved concerns the solutions that hold exactly; there may be others that satisfy
    /// equations within their tolerance only.
    bool isExactOnly = false;
    /// What is proved concerns the points whose variables are multiples of their steps, and there
    /// are variables with decimals; points between the steps may be solutions to the check.
    bool isStepsOnly = false;
    /// There are solutions with less and less target norm, without end.
    bool isUnbounded = false;
    /// What the command says of it.
    std::string verdict;
    /// Each point once, the best first.
    std::vector<Solution> solutions;
    /// All solutions there are, if proof is allFound; else those that were found, kept or only
    /// counted.
    std::uint64_t count = 0;
    /// The least target norm of a solution found or known, if there are targets; after a proof,
    /// of those that it is about.
    std::optional<Number> best;
    /// Proven: no solution has a smaller target norm.
    std::optional<Number> bound;
    std::uint64_t nodes = 0;
    std::uint64_t passes = 0;
    double seconds = 0;
    std::uint64_t seed = 0;
  };

  /// A basis of the complete search.
  struct BasisProfile {
    /// "before", "LLL", "blocks of 20".
    std::string name;
    /// Logarithms to base 10 of the lengths of its Gram-Schmidt vectors, in the scaling in which
    /// the box of the variables and rows is a cube of side 1.
    std::vector<double> lengths;
  };

  /// The problem is copied.
  explicit Search(Problem problem);
  Search(const Search& other);
  Search(Search && other) noexcept;
  Search& operator=(const Search& other);
  Search& operator=(Search&& other) noexcept;
  ~Search();

  /// Sets an option of the command by its name: sol, rtime, iters, tnorm, snorm, prove, count,
  /// threads, seed, beta and so on (see `starseek --help`). Error "Malformed parameter: name=value"
  /// for an unknown name or a value of another kind, "not an option of a search: name" for those
  /// that concern files and consoles: help, version, json, verb, bench, part, join, profile.
  Search& set(std::string_view name, std::string_view value);
  Search& set(std::string_view name, std::integral auto value) {
    return set(name, std::string_view(std::to_string(value)));
  }

  /// Solutions that are known, of an earlier search or of a file: those that are right are among
  /// the solutions of the result, and a best one is looked for among the better ones. Nobody is
  /// told of them. Those of several calls add up. Error as Problem::toSol().
  Search& know(std::span<const Solution> solutions);

  /// Called in the thread of run() for each new solution, once for each point. An exception ends
  /// the search and leaves run().
  Search& onSolution(std::function<void(const Solution&)> call);
  /// The same every hundredth of a second or so.
  Search& onProgress(std::function<void(const Progress&)> call);

  /// Searches until a limit or the end is reached, or `stop` is requested. May be called again, and
  /// by several threads at once if the callbacks allow that. Its own threads, one a core unless
  /// the option `threads` says otherwise, end before it returns. Error as Problem::toOpt().
  Result run(const std::stop_token& stop = {}) const;

  /// What reductions make of the basis of the complete search: as it is, after LLL reduction, after
  /// block reduction with blocks of as many rows as the option `beta` says. Ended by `stop` the
  /// bases there are. Without any if that search has no lattice in a finite box. Calls of progress
  /// tell the seconds. Error as Problem::toOpt().
  std::vector<BasisProfile> profile(const std::stop_token& stop = {}) const;

 private:
  struct [[gnu::visibility("hidden")]] Settings;
  std::unique_ptr<Settings> settings_;
};

}  // namespace v1
}  // namespace starsift

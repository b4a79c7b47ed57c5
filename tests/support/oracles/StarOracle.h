// What must become of a file of stars, worked out over GMP's rationals without any
// code of the system: the problem as plain numbers, its text, the verdict on a
// point, and the records of a written file.
#pragma once

#include <gmpxx.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace starsift::oracle {

using Point = std::vector<mpq_class>;

/// A finite number, or an infinity of the sign of `infinite`.
struct Bound {
  int infinite = 0;
  mpq_class value;

  bool operator==(const Bound&) const = default;
};

struct Target {
  /// +infinity: maximise, -infinity: minimise, finite: reach.
  Bound goal;
  Point row;

  bool operator==(const Target&) const = default;
};

struct Equation {
  Point row;
  mpq_class value;
  /// 0 for a plain equation.
  mpq_class modulus;

  bool operator==(const Equation&) const = default;
};

struct Inequation {
  Point row;
  Bound lower;
  Bound upper;

  bool operator==(const Inequation&) const = default;
};

struct Problem {
  std::vector<Target> targets;
  std::vector<Equation> equations;
  std::vector<Inequation> inequations;
  /// One each per variable.
  std::vector<Bound> lower;
  std::vector<Bound> upper;
  /// Decimal places per variable; empty: 0 each.
  std::vector<unsigned> decimals{};
  /// One per target; empty: none are given.
  std::vector<Bound> thresholds{};
};

/// A record of a solution file.
struct Record {
  Point x;
  mpq_class targetNorm;
  Point targetValues;
  mpq_class slackNorm;
  /// Seconds, -1 when not known.
  long time = -1;
  std::string params;
  std::string version;
  /// Of a record that was read: x as it stood there.
  std::string xText;
};

/// What a check says of a solution.
struct Verdict {
  Point targetValues;
  mpq_class targetNorm;
  mpq_class slackNorm;
};

/// The verdict on a point, nothing when it is no solution: bounds and ranges hold
/// exactly, equations and truncated remainders within 1 / 10^9.
std::optional<Verdict> judge(const Problem& problem, const Point& x);

/// "7", "-1/3" and so on: what the system reads and, in its exact form, writes as
/// a mixed number, "2:1/2".
std::string fractionText(const mpq_class& value);
std::string mixedText(const mpq_class& value);

/// The value of a decimal of up to 18 significant digits as a stream with six
/// digits shows it; nothing for other values.
std::optional<std::string> sixDigits(const mpq_class& value);

/// The product of two points of one length.
mpq_class product(const Point& row, const Point& x);

/// lower <= value <= upper; no number lies beyond an infinity.
bool between(const Bound& lower, const mpq_class& value, const Bound& upper);

/// 10^exponent.
mpz_class powerOfTen(unsigned long exponent);

/// Any form that the system writes: mixed number, decimal, exponent.
mpq_class parseNumber(std::string_view text);

/// "[ 1 -1/3 ]".
std::string pointText(const Point& point);

/// The text of a .opt file.
std::string problemText(const Problem& problem);

/// One line without its end, all fields.
std::string recordText(const Record& record);

/// One line as the system writes it; nothing where it isn't of that form.
std::optional<Record> parseRecord(const std::string& line);

/// True when the first of two written records may stand before the second one:
/// norms worked out by the oracle, then time, version, text of x, parameters. Not
/// for versions and parameters that contradict each other.
bool inOrder(const Record& first, const Record& second);

}  // namespace starsift::oracle

// The vocabulary of settings: one row per parameter. It is the only place where
// names, defaults, effects and help texts stand; the parameter sets, the help and
// the report of settings without effect are made from it. A member of a set names
// its row, and each row has a member: ParamTableTest.cpp.
#pragma once

#include <span>
#include <string_view>

namespace starsift {

/// How the value of a parameter is stored.
enum class ParamKind {
  boolean,         ///< bool, written 0 or 1
  integer,         ///< long
  natural,         ///< unsigned long
  real,            ///< float
  guardedInteger,  ///< long behind a lock
  number,          ///< the number type of the lattice
};

/// Whether setting a parameter changes what a command does. In either case its text is
/// stored with the solutions of a search.
enum class ParamEffect {
  none,  ///< belongs to an algorithm that isn't implemented yet
  yes,
};

struct ParamRow {
  std::string_view name;
  ParamKind kind;
  ParamEffect effect;
  /// In the form in which a value of the type is written.
  std::string_view defaultText;
  std::string_view help;
};

/// All rows in the order of registration, which is the order of the parameter text
/// and so part of the stored format. The rows of type `number` come last.
std::span<const ParamRow> paramTable();

/// The row of a name; the name is one of the table's.
const ParamRow& paramRow(std::string_view name);

/// The type as the documentation names it: "bool", "long", ...
std::string_view paramKindName(ParamKind kind);

}  // namespace starsift

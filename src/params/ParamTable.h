// The parameter table, with one row per parameter. It alone defines names, defaults and
// help texts; the parameter sets and the help are made from it. Each member of a set
// refers to its row by name; ParamTableTest.cpp checks that every row has a member.
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

struct ParamRow {
  std::string_view name;
  ParamKind kind;
  /// The default value in the notation of its type, such as "0" or "-inf".
  std::string_view defaultText;
  std::string_view help;
};

/// All rows in the order of registration. That is the order of the parameter text and
/// therefore part of the stored format. The rows of kind `number` come last.
std::span<const ParamRow> paramTable();

/// The row with this name, which must be in the table.
const ParamRow& paramRow(std::string_view name);

/// The type as the help shows it: "bool", "long", ...
std::string_view paramKindName(ParamKind kind);

}  // namespace starsift

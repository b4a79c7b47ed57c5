// Finds the parameters of a set by name.
#pragma once

#include "core/Map.h"
#include "params/ParamInfo.h"

namespace starsift {

/// Holds pointers to the parameters of the set that owns it, so it can't be copied.
class ParamRegistry {
 public:
  ParamRegistry() = default;
  ParamRegistry(const ParamRegistry&) = delete;
  ParamRegistry& operator=(const ParamRegistry&) = delete;

  void add(ParamInfo& parameter);

  /// The parameter of that name, or null if the set has none.
  ParamInfo* find(const std::string& name);

  /// The parameters that the set holds, in the order of registration; none after empty().
  const Hash<ParamInfo*>& table() const { return table_; }
  /// All parameters that were ever added, in the same order.
  const Array<ParamInfo*>& added() const { return added_; }

  /// Makes the set hold no parameters.
  void empty() { table_.clear(); }
  /// Makes the set hold all parameters that were added, or none if `other` is empty.
  void fillLike(const ParamRegistry& other);

 private:
  Hash<ParamInfo*> table_;
  Array<ParamInfo*> added_;
};

}  // namespace starsift

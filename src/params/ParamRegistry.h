// The parameters of one set by name.
#pragma once

#include "core/Map.h"
#include "params/ParamInfo.h"

namespace starsift {

/// Points to the parameters of the set that owns it, so it is never copied.
class ParamRegistry {
 public:
  ParamRegistry() = default;
  ParamRegistry(const ParamRegistry&) = delete;
  ParamRegistry& operator=(const ParamRegistry&) = delete;

  void add(ParamInfo& parameter);

  /// The parameter of that name, or null; always null in an emptied registry.
  ParamInfo* find(const std::string& name);

  /// The parameters that the set holds, in the order of registration.
  const Hash<ParamInfo*>& table() const { return table_; }
  /// All that were ever added, in the same order.
  const Array<ParamInfo*>& added() const { return added_; }

  /// The set holds no parameter any more.
  void empty() { table_.clear(); }
  /// The set holds all that were added, or none when `other` is empty.
  void fillLike(const ParamRegistry& other);

 private:
  Hash<ParamInfo*> table_;
  Array<ParamInfo*> added_;
};

}  // namespace starsift

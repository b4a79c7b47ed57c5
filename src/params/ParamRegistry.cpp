#include "params/ParamRegistry.h"

namespace starsift {

void ParamRegistry::add(ParamInfo& parameter) {
  added_.resize(added_.dimension() + 1, true);
  added_[added_.dimension()] = &parameter;
  table_[parameter.name()] = &parameter;
}

ParamInfo* ParamRegistry::find(const std::string& name) {
  ParamInfo* const* const entry = table_.find(name);
  return entry == nullptr ? nullptr : *entry;
}

void ParamRegistry::fillLike(const ParamRegistry& other) {
  if (!other.table_.isSet()) {
    empty();
  } else if (!table_.isSet()) {
    for (ParamInfo* parameter : added_) table_[parameter->name()] = parameter;
  }
}

}  // namespace starsift

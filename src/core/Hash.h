// The string-keyed map.
#pragma once

#include <string>

#include "core/Map.h"

namespace starsift {

/// Values by name, searched linearly in the order of insertion.
template <class V>
class Hash : public Map<std::string, V> {
 public:
  /// New entries have the type's empty value, also where an entry was before.
  void resize(Index dimension, bool reserve) override {
    const Index before = this->dimension();
    Map<std::string, V>::resize(dimension, reserve);
    for (Index i = before + 1; i <= dimension; ++i) this->data()[i].right = V();
  }
};

}  // namespace starsift

// Association by linear search: the collections of the system are short, and their
// order of insertion is part of what is written.
#pragma once

#include <string>

#include "core/ConversionArray.h"
#include "core/Pair.h"

namespace starsift {

/// Entries 1..dimension() in the order of insertion; `left` is the key, `right` the
/// value. Keys are compared with ==.
template <class K, class V>
class Map : public ConversionArray<Pair<K, V>> {
 public:
  /// The value of `key`. A key that isn't there is appended; its value is then the
  /// content of the new entry, see resize(). A reference is valid until the next new key.
  V& operator[](const K& key) {
    if (V* value = find(key)) return *value;
    this->resize(this->dimension() + 1, false);
    Pair<K, V>& entry = this->data()[this->dimension()];
    entry.left = key;
    return entry.right;
  }

  /// The value of `key`, or null if it isn't there.
  V* find(const K& key) { return valueIn(*this, key); }
  const V* find(const K& key) const { return valueIn(*this, key); }

 private:
  template <class Self>
  static auto valueIn(Self& self, const K& key) -> decltype(&self.data()->right) {
    for (auto& entry : self)
      if (entry.left == key) return &entry.right;
    return nullptr;
  }
};

/// Values by name.
template <class V>
class Hash : public Map<std::string, V> {
 public:
  /// New entries hold the type's empty value, even if the storage held an entry before.
  void resize(Index dimension, bool reserve) override {
    const Index before = this->dimension();
    Map<std::string, V>::resize(dimension, reserve);
    for (Index i = before + 1; i <= dimension; ++i) this->data()[i].right = V();
  }
};

}  // namespace starsift

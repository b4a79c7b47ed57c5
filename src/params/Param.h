// A parameter with a typed value. Param.cpp instantiates it for the types of the table.
#pragma once

#include <concepts>
#include <string>
#include <string_view>

#include "numbers/QQ.h"
#include "params/ParamRegistry.h"

namespace starsift {

template <class Text>
concept TextLike = std::convertible_to<const Text&, std::string_view>;

/// Conversion between the text and the typed value of a parameter.
template <class T>
struct ParamText {
  /// "inf" and "-inf" give the infinities, for an integer type its largest and smallest
  /// value. Any other text is parsed by QQ::parse for QQ, else by the stream operator;
  /// if that fails, `value` is what the operator leaves there.
  static void parse(const std::string& text, T& value);
  /// What a stream with default formatting writes.
  static std::string print(const T& value);
};

/// A parameter of type bool, long, unsigned long, float, long double, QQ or
/// MutexType<long>. Setting it stores the text, parses it and calls the callback. A
/// typed value is converted to text first, which may lose digits. A parameter can't be
/// copied: `a = b.get()` sets the value, `a.copyValue(b)` copies it without callback.
template <class T>
class Param : public ParamInfo {
 public:
  /// Not registered, without name and text.
  Param() = default;
  /// The parameter of this name in the parameter table, at its default. Adds itself to
  /// `registry`, which belongs to the same set.
  Param(std::string_view name, ParamRegistry& registry);

  Param& operator=(const T& value) {
    setText(ParamText<T>::print(value));
    return *this;
  }
  /// Sets from a text. A template, so that a string literal isn't converted to bool.
  template <TextLike Text>
  Param& operator=(const Text& text) {
    setText(std::string(std::string_view(text)));
    return *this;
  }

  const T& get() const { return value_; }
  // NOLINTNEXTLINE(google-explicit-constructor): a parameter is used like its value.
  operator const T&() const { return value_; }

  bool isDefault() const override;
  bool isBool() const override;
  void update() override;
  void setCallback(Callback& callback) override;
  void copyValue(const ParamInfo& source) override;

  /// Stores a value and its text with all digits, without callback. For conversions
  /// from another number type.
  void takeConverted(const T& value, const std::string& text);

 protected:
  /// Stores and parses the text, then calls the callback with the old text.
  void setText(const std::string& text);

 private:
  static void ignoreChange(const std::string& /*oldText*/) {}

  T value_ = T();
  Callback onChange_ = ignoreChange;
};

/// A parameter whose typed value is guarded by a lock, as its text is.
template <class T>
class MutexParam : public Param<MutexType<T>> {
 public:
  using Param<MutexType<T>>::Param;
  using Param<MutexType<T>>::operator=;

  MutexParam& operator=(T value) {
    this->setText(ParamText<T>::print(value));
    return *this;
  }

  T get() const { return Param<MutexType<T>>::get().get(); }
  // NOLINTNEXTLINE(google-explicit-constructor): as above.
  operator T() const { return get(); }
};

extern template struct ParamText<long>;

extern template class Param<bool>;
extern template class Param<long>;
extern template class Param<unsigned long>;
extern template class Param<float>;
extern template class Param<long double>;
extern template class Param<QQ>;
extern template class Param<MutexType<long>>;

}  // namespace starsift

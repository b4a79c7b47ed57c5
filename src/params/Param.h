// A parameter with a typed value. Bodies: Param.cpp, for the types of the table.
#pragma once

#include <concepts>
#include <string>
#include <string_view>

#include "numbers/QQ.h"
#include "params/ParamRegistry.h"

namespace starsift {

template <class Text>
concept TextLike = std::convertible_to<const Text&, std::string_view>;

/// The two directions between the text and the typed value of a parameter.
template <class T>
struct ParamText {
  /// "inf" and "-inf" are the infinities, in an integer type its largest and its
  /// smallest value. Any other text is extracted by the stream operator, which
  /// leaves `value` as it will when it fails; over QQ by QQ::parse.
  static void parse(const std::string& text, T& value);
  /// What a stream nobody set up shows.
  static std::string print(const T& value);
};

/// A parameter of type bool, long, unsigned long, float, long double, QQ or
/// MutexType<long>. Setting it stores the text, parses it and calls the callback;
/// a typed value goes through its text and may lose digits there. A parameter is
/// not copied as a whole: `a = b.get()` sets, `a.copyValue(b)` copies silently.
template <class T>
class Param : public ParamInfo {
 public:
  /// Unregistered: no name, no text.
  Param() = default;
  /// Takes its row of the parameter table and enters itself into the registry,
  /// which belongs to the same set.
  Param(std::string_view name, ParamRegistry& registry);

  Param& operator=(const T& value) {
    setText(ParamText<T>::print(value));
    return *this;
  }
  /// Sets from a text. A template so that a literal is never taken for a bool.
  template <TextLike Text>
  Param& operator=(const Text& text) {
    setText(std::string(std::string_view(text)));
    return *this;
  }

  const T& get() const { return value_; }
  // NOLINTNEXTLINE(google-explicit-constructor): a setting reads like its value.
  operator const T&() const { return value_; }

  bool isDefault() const override;
  bool isBool() const override;
  void update() override;
  void setCallback(Callback& callback) override;
  void copyValue(const ParamInfo& source) override;

  /// Takes a value and a text that shows all of it, without callback: what a
  /// conversion from another number type made.
  void takeConverted(const T& value, const std::string& text);

 protected:
  /// Stores and parses the text, then calls the callback with the old one.
  void setText(const std::string& text);

 private:
  static void ignoreChange(const std::string& /*oldText*/) {}

  T value_ = T();
  Callback onChange_ = ignoreChange;
};

/// A parameter whose typed value is guarded too.
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

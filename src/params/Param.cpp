#include "params/Param.h"

#include <cassert>
#include <limits>
#include <type_traits>
#include <utility>

#include "numbers/Conversion.h"
#include "text/TextStreams.h"

namespace starsift {

namespace {

template <class T>
constexpr ParamKind paramKindOf = ParamKind::number;
template <>
constexpr ParamKind paramKindOf<bool> = ParamKind::boolean;
template <>
constexpr ParamKind paramKindOf<long> = ParamKind::integer;
template <>
constexpr ParamKind paramKindOf<unsigned long> = ParamKind::natural;
template <>
constexpr ParamKind paramKindOf<float> = ParamKind::real;
template <>
constexpr ParamKind paramKindOf<MutexType<long>> = ParamKind::guardedInteger;

template <class T>
T infinityOf(bool negative) {
  if constexpr (std::numeric_limits<T>::has_infinity) {
    const T infinity = std::numeric_limits<T>::infinity();
    return negative ? -infinity : infinity;
  } else if constexpr (std::is_integral_v<T>) {
    // Either infinity converts to the bool true; its conversion to an integer is
    // undefined, so the largest or smallest value stands for it.
    constexpr bool isSwitch = std::is_same_v<T, bool>;
    return negative && !isSwitch ? std::numeric_limits<T>::lowest() : std::numeric_limits<T>::max();
  } else {
    T infinity = NumberTraits<T>::infinity();
    return negative ? -infinity : infinity;
  }
}

template <class T>
void extract(const std::string& text, T& value) {
  TextReader(text) >> value;
}

void extract(const std::string& text, QQ& value) {
  value = QQ::parse(text);
}

template <class T>
bool isSame(const T& a, const T& b) {
  return a == b;
}

bool isSame(const MutexType<long>& a, const MutexType<long>& b) {
  return a.copied() == b.copied();
}

}  // namespace

template <class T>
void ParamText<T>::parse(const std::string& text, T& value) {
  if (text == "inf" || text == "-inf") {
    value = infinityOf<T>(text.front() == '-');
  } else {
    extract(text, value);
  }
}

template <class T>
std::string ParamText<T>::print(const T& value) {
  TextWriter stream;
  stream << value;
  return stream.str();
}

/// Parses into a plain long: the constructor of Param calls this, and it must not
/// create the lock.
template <>
void ParamText<MutexType<long>>::parse(const std::string& text, MutexType<long>& value) {
  long plain = value.copied();
  ParamText<long>::parse(text, plain);
  value.assign(plain);
}

template <class T>
Param<T>::Param(std::string_view name, ParamRegistry& registry) : ParamInfo(paramRow(name)) {
  assert(paramRow(name).kind == paramKindOf<T>);
  ParamText<T>::parse(std::string(defaultText()), value_);
  registry.add(*this);
}

template <class T>
bool Param<T>::isDefault() const {
  T standard = T();
  if (!defaultText().empty()) ParamText<T>::parse(std::string(defaultText()), standard);
  return isSame(value_, standard);
}

template <class T>
bool Param<T>::isBool() const {
  return std::is_same_v<T, bool>;
}

template <class T>
void Param<T>::update() {
  ParamText<T>::parse(text(), value_);
}

template <class T>
void Param<T>::setCallback(Callback& callback) {
  std::swap(onChange_, callback);
  if (!onChange_) onChange_ = ignoreChange;
}

template <class T>
void Param<T>::copyValue(const ParamInfo& source) {
  ParamInfo::copyValue(source);
  value_ = static_cast<const Param&>(source).value_;
}

template <class T>
void Param<T>::takeConverted(const T& value, const std::string& text) {
  copyText(text);
  value_ = value;
}

template <class T>
void Param<T>::setText(const std::string& text) {
  const std::string oldText = this->text();
  setTextSilently(text);
  onChange_(oldText);
}

template struct ParamText<bool>;
template struct ParamText<long>;
template struct ParamText<unsigned long>;
template struct ParamText<float>;
template struct ParamText<long double>;
template struct ParamText<QQ>;
template struct ParamText<MutexType<long>>;

template class Param<bool>;
template class Param<long>;
template class Param<unsigned long>;
template class Param<float>;
template class Param<long double>;
template class Param<QQ>;
template class Param<MutexType<long>>;

}  // namespace starsift

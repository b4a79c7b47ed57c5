#include "params/ExtendedParams.h"

#include "numbers/Conversion.h"
#include "system/Console.h"

namespace starsift {

namespace {

template <LatticeNumber T>
std::string wholeText(const T& value) {
  std::string text;
  NumberTraits<T>::append(text, value, dblDigits);
  return text;
}

}  // namespace

template <LatticeNumber T>
ExtendedParams<T>::ExtendedParams(ParamReactions* owner) {
  react(verb, [this] { setExtendedOutput(verb == 2); });
  if (owner == nullptr) return;
  react(consistency, [this, owner] { owner->consistencyChanged(consistency); });
  react(scale, [owner] { owner->scaleChanged(); });
  react(translate, [owner] { owner->translateChanged(); });
}

template <LatticeNumber T>
ExtendedParams<T>::~ExtendedParams() = default;

template <LatticeNumber T>
ExtendedParams<T>::ExtendedParams(const ExtendedParams& other) : ExtendedParams() {
  *this = other;
}

template <LatticeNumber T>
ExtendedParams<T>& ExtendedParams<T>::operator=(const ExtendedParams& other) {
  if (this == &other) return *this;
  Params::operator=(other);
  snorm.copyValue(other.snorm);
  tnorm.copyValue(other.tnorm);
  return *this;
}

template <LatticeNumber T>
template <LatticeNumber U>
void ExtendedParams<T>::convertFrom(const ExtendedParams<U>& source) {
  const T slackNorm = NumberConversion<T, U>::convert(source.snorm);
  const T targetNorm = NumberConversion<T, U>::convert(source.tnorm);
  Params::operator=(source);
  snorm.takeConverted(slackNorm, wholeText(slackNorm));
  tnorm.takeConverted(targetNorm, wholeText(targetNorm));
}

template <LatticeNumber T>
void ExtendedParams<T>::react(ParamInfo& parameter, const std::function<void()>& reaction) {
  ParamInfo::Callback callback = [&parameter, reaction](const std::string& oldText) {
    if (oldText != parameter.text()) reaction();
  };
  parameter.setCallback(callback);
}

template class ExtendedParams<long double>;
template class ExtendedParams<QQ>;
template void ExtendedParams<long double>::convertFrom(const ExtendedParams<long double>&);
template void ExtendedParams<long double>::convertFrom(const ExtendedParams<QQ>&);
template void ExtendedParams<QQ>::convertFrom(const ExtendedParams<QQ>&);
template void ExtendedParams<QQ>::convertFrom(const ExtendedParams<long double>&);

}  // namespace starsift

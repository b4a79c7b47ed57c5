// The parameters of a lattice over T: the common ones and the two over T, wired to
// the reactions of their owner.
#pragma once

#include <concepts>
#include <functional>

#include "params/Params.h"

namespace starsift {

/// The number types of the two lattices.
template <class T>
concept LatticeNumber = std::same_as<T, long double> || std::same_as<T, QQ>;

/// What a lattice does at once when one of its settings changes: implemented by the
/// owner of a parameter set. Called behind the change, and only when the text of the
/// parameter differs from the one before.
class ParamReactions {
 public:
  virtual ~ParamReactions() = default;

  virtual void consistencyChanged(bool on) = 0;
  virtual void scaleChanged() = 0;
  virtual void translateChanged() = 0;

 protected:
  ParamReactions() = default;
  ParamReactions(const ParamReactions&) = default;
  ParamReactions& operator=(const ParamReactions&) = default;
};

template <LatticeNumber T>
class ExtendedParams : public Params {
 public:
  /// The owner hears of changes; it must live as long as the set. Without one only
  /// the global switch for extended output follows (on while verb is exactly 2).
  explicit ExtendedParams(ParamReactions* owner = nullptr);
  /// The copy has no owner.
  ExtendedParams(const ExtendedParams& other);
  /// Copies texts and typed values, as Params does.
  ExtendedParams& operator=(const ExtendedParams& other);
  ~ExtendedParams() override;

  /// As assignment, from a set over the other number type. The two parameters over
  /// T are converted strictly: PrecisionException where T can't hold one, and this
  /// set is unchanged then.
  template <LatticeNumber U>
  void convertFrom(const ExtendedParams<U>& source);

  /// One of the two is set: a search with targets ends at such a norm.
  bool hasNormLimit() const { return !snorm.isDefault() || !tnorm.isDefault(); }

  Param<T> snorm{"snorm", registry()};
  Param<T> tnorm{"tnorm", registry()};

 private:
  /// Lets `reaction` follow every change of the parameter's text.
  static void react(ParamInfo& parameter, const std::function<void()>& reaction);
};

extern template class ExtendedParams<long double>;
extern template class ExtendedParams<QQ>;

}  // namespace starsift

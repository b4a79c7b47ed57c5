// The parameters of a lattice over T: the common ones and two of type T. The set calls
// its owner when certain parameters change.
#pragma once

#include <concepts>
#include <functional>

#include "params/Params.h"

namespace starsift {

/// The number types of the two lattices.
template <class T>
concept LatticeNumber = std::same_as<T, long double> || std::same_as<T, QQ>;

/// Interface that the owner of a parameter set (the lattice) implements to act on a
/// change immediately. Called after the change, and only if the text of the parameter
/// has changed.
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
  /// Notifies `owner`, which must outlive the set, of changes to consistency, scale
  /// and translate. With or without an owner, changing verb turns the global switch for
  /// extended output on (value 2) or off (any other value).
  explicit ExtendedParams(ParamReactions* owner = nullptr);
  /// The copy has no owner and its own callback on verb.
  ExtendedParams(const ExtendedParams& other);
  /// Copies texts and typed values, as Params does.
  ExtendedParams& operator=(const ExtendedParams& other);
  ~ExtendedParams() override;

  /// Assigns from a set over the other number type. The two parameters of type T are
  /// converted exactly; throws PrecisionException if T can't represent one of them, and
  /// then leaves this set unchanged.
  template <LatticeNumber U>
  void convertFrom(const ExtendedParams<U>& source);

  /// True if snorm or tnorm isn't at its default; a search with targets then ends at a
  /// solution with such a norm.
  bool hasNormLimit() const { return !snorm.isDefault() || !tnorm.isDefault(); }

  Param<T> snorm{"snorm", registry()};
  Param<T> tnorm{"tnorm", registry()};

 private:
  /// Calls `reaction` after every change of the parameter's text.
  static void react(ParamInfo& parameter, const std::function<void()>& reaction);
};

extern template class ExtendedParams<long double>;
extern template class ExtendedParams<QQ>;

}  // namespace starsift

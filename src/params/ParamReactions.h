// What a lattice does at once when one of its settings changes.
#pragma once

namespace starsift {

/// Implemented by the owner of a parameter set. Called behind the change, and only
/// when the text of the parameter differs from the one before.
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

}  // namespace starsift

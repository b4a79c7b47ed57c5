// A set of parameters: what all lattices have, whatever their number type. Its text
// form is the option syntax, one line of "--name=value" items.
#pragma once

#include "params/Param.h"

namespace starsift {

/// The members are registered in the order of their declaration, which is that of
/// the parameter table. See there for what each one is.
class Params : public Serializable {
 private:
  // Ahead of the members that enter themselves.
  ParamRegistry registry_;

 public:
  /// All parameters at their defaults.
  Params();
  /// The copy has parameters of its own; callbacks stay behind.
  Params(const Params& other);
  /// Copies texts and typed values. No callback is called; each set keeps its own.
  /// A set without parameters makes this one a set without parameters.
  Params& operator=(const Params& other);
  ~Params() override;

  /// The items in the order of registration with a blank between them, no line
  /// feed. A parameter without a name or with an empty text is left out.
  std::ostream& write(std::ostream& stream) const override;

  /// Reads items up to the end of the stream or a line feed, which it leaves. The
  /// parameters named are set, the others stay; no callback is called. A text
  /// without items leaves a set without parameters. Fatal: "Malformed parameter: "
  /// and the token for an item without "=" or with an unknown name.
  std::istream& read(std::istream& stream) override;

  /// The parameters that the set holds, by name, in the order of registration.
  const Hash<ParamInfo*>& table() const { return registry_.table(); }

  /// The search ends after a number of passes or some time, whatever it finds.
  bool hasPassOrTimeLimit() const { return iters >= 0 || rtime.get() > 0; }

  Param<bool> help{"help", registry_};
  Param<long> verb{"verb", registry_};
  Param<bool> consistency{"consistency", registry_};
  Param<bool> eenum{"eenum", registry_};
  Param<long> beta{"beta", registry_};
  Param<long> eprune{"eprune", registry_};
  Param<long> btime{"btime", registry_};
  Param<long> etime{"etime", registry_};
  Param<bool> deep{"deep", registry_};
  Param<unsigned long> collectLimit{"collectLimit", registry_};
  Param<bool> pair{"pair", registry_};
  Param<unsigned long> pairLimit{"pairLimit", registry_};
  Param<bool> sieve{"sieve", registry_};
  Param<bool> sample{"sample", registry_};
  Param<unsigned long> sampleLimit{"sampleLimit", registry_};
  Param<bool> scale{"scale", registry_};
  Param<bool> translate{"translate", registry_};
  Param<bool> reinsert{"reinsert", registry_};
  Param<bool> variate{"variate", registry_};
  MutexParam<long> rtime{"rtime", registry_};
  Param<long> iters{"iters", registry_};
  Param<long> sol{"sol", registry_};
  Param<float> bench{"bench", registry_};
  /// Not registered, so no part of the text: the end of a search only stops it, while
  /// otherwise it ends the process.
  Param<bool> stopping;

 protected:
  ParamRegistry& registry() { return registry_; }

 private:
  /// Number of parameters of this class, which are registered before those of derived
  /// classes. Declared last: it counts the members above.
  Index commonCount_;
};

}  // namespace starsift

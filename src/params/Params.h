// The parameters that all lattices have, independent of their number type. The text
// form of a set is one line of "--name=value" items.
#pragma once

#include "params/Param.h"

namespace starsift {

/// The members are registered in the order of their declaration, which is the order of
/// the parameter table. The table says what each parameter means.
class Params : public Serializable {
 private:
  // Declared before the members, which add themselves to it.
  ParamRegistry registry_;

 public:
  /// All parameters at their defaults.
  Params();
  /// The copy has its own parameters with the same values, and no callbacks.
  Params(const Params& other);
  /// Copies texts and typed values without calling callbacks; each set keeps its own.
  /// If `other` has been emptied, this set is emptied as well.
  Params& operator=(const Params& other);
  ~Params() override;

  /// Writes the items in the order of registration, separated by blanks, without line
  /// feed. Omits a parameter without a name or with an empty text.
  std::ostream& write(std::ostream& stream) const override;

  /// Reads items up to the end of the stream or a line feed, which stays in the stream.
  /// Sets the parameters of the items and leaves the others unchanged; calls no callback.
  /// A text without items empties the set: table() has no entries, the members keep
  /// their values. Fatal for an item without "=" or with an unknown name: "Malformed
  /// parameter: " and the token.
  std::istream& read(std::istream& stream) override;

  /// The parameters of the set by name, in the order of registration.
  const Hash<ParamInfo*>& table() const { return registry_.table(); }

  /// True if the search ends after a number of passes or some time, whatever it finds.
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
  /// If true, the end of a search only stops it; if false, it ends the process. Not
  /// registered, and therefore not part of the text.
  Param<bool> stopping;

 protected:
  ParamRegistry& registry() { return registry_; }

 private:
  /// Number of parameters of this class, which are registered before those of derived
  /// classes. Declared last: it counts the members above.
  Index commonCount_;
};

}  // namespace starsift

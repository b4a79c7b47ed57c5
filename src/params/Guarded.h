// Values that are only reached through a lock of their own, and the set of such
// texts that a run shares.
//
// A lock is made on the first access. Most guarded values of a run are never
// touched, and a named semaphore costs more than all the rest of their
// construction. A value without a lock was never handed out, so copying it needs
// none; once the lock is there, copying waits on it like every other access.
#pragma once

#include <memory>
#include <string>

#include "core/Map.h"
#include "system/Semaphore.h"
#include "text/Serializable.h"

namespace starsift {

/// A value of type long or std::string behind a semaphore. Copies share the value,
/// never the lock; a moved value takes its lock along.
template <class T>
class MutexType : public Serializable {
 public:
  explicit MutexType(T value = T());
  MutexType(const MutexType& other);
  MutexType(MutexType&& other) noexcept;
  MutexType& operator=(const MutexType& other);
  MutexType& operator=(MutexType&& other) noexcept;
  ~MutexType() override;

  T get() const;
  void set(T value);

  // For copies: as get() and set(), but they make no lock.
  T copied() const { return lock_ ? get() : value_; }
  void assign(T value);

  /// The value in the form of its stream operator.
  std::ostream& write(std::ostream& stream) const override;
  /// A failed extraction stores what the stream operator left of an empty value.
  std::istream& read(std::istream& stream) override;

  /// The name of the lock's semaphore; empty before the first access.
  std::string lockName() const { return lock_ ? lock_->name() : std::string(); }

 private:
  NamedSemaphore& lock() const;

  mutable std::unique_ptr<NamedSemaphore> lock_;
  T value_;
};

extern template class MutexType<long>;
extern template class MutexType<std::string>;

/// Guarded texts by key.
template <class K>
class MutexVars : public Map<K, MutexType<std::string>> {};

/// The keys of the texts that a run shares. The numbers are fixed.
enum class MainMutexVariable {
  spare0 = 0,
  spare1 = 1,
  /// "stopped" once the termination handling has ended the search, else empty.
  runState = 2,
  spare3 = 3,
  /// Start of the process, seconds since the epoch in decimal; "0" until it is set.
  startTime = 4,
  // Counters in decimal; resetting the lattice sets them to "0".
  counter5 = 5,
  counter6 = 6,
  counter7 = 7,
};

/// One entry per key; empty texts except for startTime.
class MainMutexVars : public MutexVars<MainMutexVariable> {
 public:
  MainMutexVars();
};

}  // namespace starsift

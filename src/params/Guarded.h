// Values that are accessed only under their own lock, and the set of such texts that
// a run shares.
//
// A lock is created on the first access: most guarded values of a run are never
// accessed, and creating a named semaphore costs more than the rest of the
// construction. A value without a lock has never been accessed, so it is copied
// without one. If the lock exists, copying waits on it like any other access. During a
// HostedCall values belong to one thread and have no lock.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "core/Map.h"
#include "system/Semaphore.h"
#include "text/Serializable.h"

namespace starsift {

/// A value of type long or std::string guarded by a semaphore. A copy has the same
/// value and no lock; assigning keeps the lock of the target; moving moves the lock.
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

  // For copying: like get() and set(), but they never create the lock.
  T copied() const { return lock_ ? get() : value_; }
  void assign(T value);

  /// Writes the value with its stream operator.
  std::ostream& write(std::ostream& stream) const override;
  /// Extracts into a value-initialised T and stores it, even if the extraction failed.
  std::istream& read(std::istream& stream) override;

  /// Name of the semaphore; empty before the first access.
  std::string lockName() const { return lock_ ? lock_->name() : std::string(); }

 private:
  void take(std::optional<SemaphoreHold>& hold) const;

  mutable std::unique_ptr<NamedSemaphore> lock_;
  T value_;
};

extern template class MutexType<long>;
extern template class MutexType<std::string>;

/// Guarded texts by key.
template <class K>
class MutexVars : public Map<K, MutexType<std::string>> {};

/// The keys of the texts that a run shares. The numbers must not change.
enum class MainMutexVariable {
  spare0 = 0,
  spare1 = 1,
  /// "stopped" after the termination handling has ended the search, else empty.
  runState = 2,
  spare3 = 3,
  /// Start of the process in seconds since the epoch, decimal; "0" until it is set.
  startTime = 4,
  // Counters, decimal; resetting the lattice sets them to "0".
  counter5 = 5,
  counter6 = 6,
  counter7 = 7,
};

/// One entry per key: startTime is "0", the other texts are empty.
class MainMutexVars : public MutexVars<MainMutexVariable> {
 public:
  MainMutexVars();
};

}  // namespace starsift

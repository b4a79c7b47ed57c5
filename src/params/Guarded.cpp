#include "params/Guarded.h"

#include <utility>

#include "system/HostedCall.h"

namespace starsift {

template <class T>
MutexType<T>::MutexType(T value) : Serializable(commaStyle()), value_(std::move(value)) {}

template <class T>
MutexType<T>::~MutexType() = default;

template <class T>
MutexType<T>::MutexType(const MutexType& other) : Serializable(other), value_(other.copied()) {}

template <class T>
MutexType<T>::MutexType(MutexType&& other) noexcept = default;

template <class T>
MutexType<T>& MutexType<T>::operator=(const MutexType& other) {
  if (this == &other) return *this;
  Serializable::operator=(other);
  assign(other.copied());
  return *this;
}

template <class T>
MutexType<T>& MutexType<T>::operator=(MutexType&& other) noexcept = default;

template <class T>
T MutexType<T>::get() const {
  std::optional<SemaphoreHold> hold;
  take(hold);
  return value_;
}

template <class T>
void MutexType<T>::set(T value) {
  std::optional<SemaphoreHold> hold;
  take(hold);
  value_ = std::move(value);
}

template <class T>
void MutexType<T>::assign(T value) {
  if (lock_) {
    set(std::move(value));
  } else {
    value_ = std::move(value);
  }
}

template <class T>
std::ostream& MutexType<T>::write(std::ostream& stream) const {
  return stream << get();
}

template <class T>
std::istream& MutexType<T>::read(std::istream& stream) {
  T value = T();
  stream >> value;
  set(std::move(value));
  return stream;
}

template <class T>
void MutexType<T>::take(std::optional<SemaphoreHold>& hold) const {
  // The value belongs to one thread, and names of semaphores would be seen outside of the host.
  if (HostedCall::isUnderWay()) return;
  if (!lock_) lock_ = std::make_unique<NamedSemaphore>();
  hold.emplace(*lock_);
}

MainMutexVars::MainMutexVars() {
  using Key = MainMutexVariable;
  for (const Key key : {Key::spare0, Key::spare1, Key::spare3, Key::counter5, Key::counter6,
                        Key::counter7, Key::startTime, Key::runState})
    (*this)[key];
  (*this)[Key::startTime] = MutexType<std::string>("0");
}

template class MutexType<long>;
template class MutexType<std::string>;

}  // namespace starsift

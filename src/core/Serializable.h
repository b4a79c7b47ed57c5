// What has a text form: the interface, and the delimiter setting that goes with it.
#pragma once

#include <istream>
#include <ostream>
#include <string>
#include <utility>

namespace starsift {

/// Writes itself to a stream and reads itself back. The state is the delimiter
/// setting of the general list form (SerializableArray.h).
class Serializable {
 public:
  /// separators       characters between items, the first one is written; a blank
  ///                  is appended unless there is one, so that every text form
  ///                  tolerates blanks
  /// mergeSeparators  runs of separators and comments count as one
  /// secondFlag       kept and copied, no text form asks for it
  Serializable(std::string separators, bool mergeSeparators, bool secondFlag);
  virtual ~Serializable() = default;

  virtual std::ostream& write(std::ostream& stream) const = 0;
  virtual std::istream& read(std::istream& stream) = 0;

  const std::string& separators() const { return separators_; }
  bool mergeSeparators() const { return mergeSeparators_; }
  bool secondFlag() const { return secondFlag_; }

 protected:
  Serializable(const Serializable&) = default;
  /// A copy: an object whose content was moved away still has its text form.
  Serializable(Serializable&& other) noexcept  // NOLINTNEXTLINE(performance-move-constructor-init)
      : Serializable(static_cast<const Serializable&>(other)) {}
  Serializable& operator=(const Serializable&) = default;
  /// Leaves `other` with this object's former setting.
  Serializable& operator=(Serializable&& other) noexcept {
    std::swap(separators_, other.separators_);
    std::swap(mergeSeparators_, other.mergeSeparators_);
    std::swap(secondFlag_, other.secondFlag_);
    return *this;
  }

 private:
  std::string separators_;
  bool mergeSeparators_;
  bool secondFlag_;
};

inline std::ostream& operator<<(std::ostream& stream, const Serializable& object) {
  return object.write(stream);
}

inline std::istream& operator>>(std::istream& stream, Serializable& object) {
  return object.read(stream);
}

}  // namespace starsift

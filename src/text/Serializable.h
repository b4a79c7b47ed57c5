// The interface of objects that have a text form, and their delimiter setting.
#pragma once

#include <istream>
#include <ostream>
#include <string>
#include <utility>

namespace starsift {

/// How the general list form separates its items. All objects with the same setting
/// share one style, so that an object stores a pointer only and copying it is free.
struct ListStyle {
  /// Characters between items, the first one is written.
  std::string separators;
  /// Runs of separators and comments count as one.
  bool mergeSeparators;
  /// Stored and copied; no text form uses it.
  bool secondFlag;
};

/// Returns the style with this setting; it lives as long as the program. A blank is
/// appended to separators without one, so that every text form tolerates blanks.
const ListStyle& listStyle(std::string separators, bool mergeSeparators, bool secondFlag);

/// The style of most objects: commas.
inline const ListStyle& commaStyle() {
  static const ListStyle& style = listStyle(",", false, false);
  return style;
}

/// The style of vectors: blanks; a run of them counts as one.
inline const ListStyle& blankStyle() {
  static const ListStyle& style = listStyle(" ", true, true);
  return style;
}

/// An object that writes itself to a stream and reads itself back. Its state is the
/// delimiter setting of the general list form (SerializableArray.h).
class Serializable {
 public:
  explicit Serializable(const ListStyle& style) : style_(&style) {}
  virtual ~Serializable() = default;

  virtual std::ostream& write(std::ostream& stream) const = 0;
  virtual std::istream& read(std::istream& stream) = 0;

  const std::string& separators() const { return style_->separators; }
  bool mergeSeparators() const { return style_->mergeSeparators; }
  bool secondFlag() const { return style_->secondFlag; }

 protected:
  Serializable(const Serializable&) = default;
  Serializable(Serializable&&) noexcept = default;
  Serializable& operator=(const Serializable&) = default;
  /// Swaps the settings of the two objects.
  Serializable& operator=(Serializable&& other) noexcept {
    std::swap(style_, other.style_);
    return *this;
  }

 private:
  const ListStyle* style_;
};

inline std::ostream& operator<<(std::ostream& stream, const Serializable& object) {
  return object.write(stream);
}

inline std::istream& operator>>(std::istream& stream, Serializable& object) {
  return object.read(stream);
}

}  // namespace starsift

// The common base of all parameters, independent of the type of the value: name, help,
// and the value as text. An object of this class itself is one item of a parameter text.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "params/Guarded.h"
#include "params/ParamTable.h"
#include "text/Serializable.h"

namespace starsift {

/// One item "--name=value". The text of the value is authoritative: write() writes it,
/// and the typed value is parsed from it.
class ParamInfo : public Serializable {
 public:
  /// Called with the old text after the parameter has been set, even if the text is the
  /// same as before.
  using Callback = std::function<void(const std::string& oldText)>;

  /// No name, no help, no value.
  ParamInfo() : Serializable(commaStyle()) {}
  ParamInfo(const ParamInfo&) = delete;
  ParamInfo& operator=(const ParamInfo&) = delete;
  ~ParamInfo() override = default;

  /// Without the dashes; empty if the parameter isn't registered.
  const std::string& name() const { return name_; }
  std::string_view help() const { return row_->help; }
  /// The text of the value at registration.
  std::string_view defaultText() const { return row_->defaultText; }
  std::string text() const { return text_.get(); }
  /// True if the value equals the default, in whatever notation: "+20" is 20.
  virtual bool isDefault() const { return text() == defaultText(); }

  /// Writes "--name=value", or nothing if the text of the value is empty.
  std::ostream& write(std::ostream& stream) const override;

  /// Reads one item after white space and comments, and stores its name and value. The
  /// first two characters, the dashes, are skipped unchecked; the token after them ends
  /// at white space and is split at its first "=". Fatal if it has none: "Malformed
  /// parameter: " and the token. Calls no callback.
  std::istream& read(std::istream& stream) override;

  virtual bool isBool() const { return false; }
  /// Parses the text into the typed value.
  virtual void update() {}
  /// Swaps the callback with the given one; an empty one means no action.
  virtual void setCallback(Callback& /*callback*/) {}
  /// Copies text and typed value from a parameter of the same type, without callback.
  virtual void copyValue(const ParamInfo& source) { copyText(source.text_.copied()); }

  /// Stores the text and parses it, without callback.
  void setTextSilently(const std::string& text);

 protected:
  explicit ParamInfo(const ParamRow& row);
  /// Stores the text of another parameter without parsing it.
  void copyText(std::string text) { text_.assign(std::move(text)); }

 private:
  static constexpr ParamRow noRow{};

  std::string name_;
  /// Row of the parameter table; noRow if the parameter isn't registered.
  const ParamRow* row_ = &noRow;
  MutexType<std::string> text_;
};

}  // namespace starsift

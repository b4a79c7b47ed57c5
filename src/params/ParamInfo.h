// What all parameters have in common, whatever the type of their value: name, help,
// and the value as text. As an object of its own it is one item of a parameter text.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "params/Guarded.h"
#include "params/ParamTable.h"
#include "text/Serializable.h"

namespace starsift {

/// One item "--name=value". The text of the value is the authority: it is what
/// write() shows, and a typed value is parsed from it.
class ParamInfo : public Serializable {
 public:
  /// Called after a change with the text before it. The parameter has its new
  /// value already; whether anything changed is for the callee to find out.
  using Callback = std::function<void(const std::string& oldText)>;

  /// Without name, help and value.
  ParamInfo() : Serializable(commaStyle()) {}
  ParamInfo(const ParamInfo&) = delete;
  ParamInfo& operator=(const ParamInfo&) = delete;
  ~ParamInfo() override = default;

  /// Without the dashes; empty in a parameter that no set has registered.
  const std::string& name() const { return name_; }
  std::string_view help() const { return row_->help; }
  /// The value's text at registration.
  std::string_view defaultText() const { return row_->defaultText; }
  bool hasEffect() const { return row_->effect == ParamEffect::yes; }
  std::string text() const { return text_.get(); }
  /// The value is that of the default, however it is written: "+20" is 20.
  virtual bool isDefault() const { return text() == defaultText(); }

  /// "--name=value"; nothing when the value's text is empty.
  std::ostream& write(std::ostream& stream) const override;

  /// Reads one item behind white space and comments: two characters, the dashes,
  /// that are not looked at; then a token up to white space, name and value around
  /// its first "=". Fatal without one: "Malformed parameter: " and the token. Takes
  /// the name too. Calls no callback.
  std::istream& read(std::istream& stream) override;

  virtual bool isBool() const { return false; }
  /// Parses the text into the typed value.
  virtual void update() {}
  /// Exchanges the callback with the given one; an empty one does nothing.
  virtual void setCallback(Callback& /*callback*/) {}
  /// Takes text and typed value of a parameter of the same type, without callback.
  virtual void copyValue(const ParamInfo& source) { copyText(source.text_.copied()); }

  /// Stores the text and parses it, without callback.
  void setTextSilently(const std::string& text);

 protected:
  explicit ParamInfo(const ParamRow& row);
  /// Takes a text from another parameter, without parsing it.
  void copyText(std::string text) { text_.assign(std::move(text)); }

 private:
  static constexpr ParamRow noRow{};

  std::string name_;
  /// In the parameter table, or a row without texts.
  const ParamRow* row_ = &noRow;
  MutexType<std::string> text_;
};

}  // namespace starsift

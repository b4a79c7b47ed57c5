#include "peer/Text.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <sstream>

namespace peer {

namespace {

constexpr std::string_view blanks = " \t\r\n";

[[noreturn]] void stop(std::string_view message) {
  std::cerr << "peer: " << message << '\n';
  std::exit(EXIT_FAILURE);
}

mpz_class integer(std::string_view digits) {
  mpz_class value;
  if (value.set_str(std::string(digits), 10) != 0) stop("malformed number");
  return value;
}

/// a, a/b, a.b or a:b/c without a sign.
mpq_class magnitude(std::string_view text) {
  const std::size_t separator = text.find_first_of(".:/");
  if (separator == std::string_view::npos) return integer(text);
  const mpz_class head = integer(text.substr(0, separator));
  const std::string_view tail = text.substr(separator + 1);
  if (text[separator] == ':') return head + magnitude(tail);
  mpz_class denominator;
  if (text[separator] == '/') {
    denominator = integer(tail);
    if (denominator == 0) stop("division by zero");
  } else {
    mpz_ui_pow_ui(denominator.get_mpz_t(), 10, tail.size());
  }
  mpq_class value(text[separator] == '/' ? head : head * denominator + integer(tail), denominator);
  value.canonicalize();
  return value;
}

mpq_class parse(std::string_view text) {
  const bool negative = text.starts_with('-');
  mpq_class value = magnitude(text.substr(negative ? 1 : 0));
  if (negative) value = -value;
  return value;
}

}  // namespace

void Reader::skip() {
  while (true) {
    position_ = std::min(text_.find_first_not_of(blanks, position_), text_.size());
    const std::string_view rest = text_.substr(position_);
    if (rest.starts_with("//")) {
      position_ = std::min(text_.find('\n', position_), text_.size());
    } else if (rest.starts_with("/*")) {
      const std::size_t end = text_.find("*/", position_ + 2);
      if (end == std::string_view::npos) stop("comment is not closed");
      position_ = end + 2;
    } else {
      return;
    }
  }
}

bool Reader::take(char c) {
  skip();
  if (atEnd() || text_[position_] != c) return false;
  ++position_;
  return true;
}

std::string_view Reader::token() {
  skip();
  const std::size_t end = std::min(text_.find_first_of(" \t\r\n]|", position_), text_.size());
  const std::string_view result = text_.substr(position_, end - position_);
  position_ = end;
  return result;
}

mpq_class Reader::number() {
  return parse(token());
}

std::vector<mpq_class> Reader::vector() {
  std::vector<mpq_class> values;
  if (!take('[')) return values;
  while (!take(']')) values.push_back(number());
  return values;
}

std::vector<Bound> Reader::bounds() {
  std::vector<Bound> values;
  if (!take('[')) return values;
  while (!take(']')) {
    const std::string_view text = token();
    if (text == "inf" || text == "-inf")
      values.push_back({0, text == "inf" ? 1 : -1});
    else
      values.push_back({parse(text), 0});
  }
  return values;
}

std::vector<std::vector<mpq_class>> Reader::matrix() {
  std::vector<std::vector<mpq_class>> rows;
  if (!take('[')) return rows;
  while (!take(']')) rows.push_back(vector());
  return rows;
}

std::string Reader::field(std::string_view ends) {
  const std::size_t lineEnd = std::min(text_.find('\n', position_), text_.size());
  const std::size_t end = std::min(text_.find_first_of(ends, position_), lineEnd);
  const std::string_view text = text_.substr(position_, end - position_);
  position_ = end;
  const std::size_t first = text.find_first_not_of(blanks);
  if (first == std::string_view::npos) return "";
  return std::string(text.substr(first, text.find_last_not_of(blanks) + 1 - first));
}

std::string numberText(const mpq_class& value) {
  if (value.get_den() == 1) return value.get_num().get_str();
  const mpz_class whole = value.get_num() / value.get_den();
  if (whole == 0) return value.get_str();
  const mpz_class rest = abs(value.get_num()) % value.get_den();
  return whole.get_str() + ':' + rest.get_str() + '/' + value.get_den().get_str();
}

std::string vectorText(const std::vector<mpq_class>& values) {
  std::string text = "[ ";
  for (const mpq_class& value : values) text += numberText(value) + ' ';
  return text += ']';
}

std::string fileText(const std::string& path) {
  std::ifstream stream(path, std::ios::binary);
  if (!stream) stop("can't read " + path);
  std::ostringstream text;
  text << stream.rdbuf();
  return std::move(text).str();
}

}  // namespace peer

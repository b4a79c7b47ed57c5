// Streams in memory. Their numbers are those of files, "1234.5", whatever the global locale is: a
// host of the library may have set one.
#pragma once

#include <locale>
#include <sstream>
#include <string>

namespace starsift {

class TextReader : public std::istringstream {
 public:
  explicit TextReader(const std::string& text) : std::istringstream(text) {
    imbue(std::locale::classic());
  }
};

class TextWriter : public std::ostringstream {
 public:
  TextWriter() { imbue(std::locale::classic()); }
};

}  // namespace starsift

// The text of a .opt file, item by item.
#pragma once

#include <string>

namespace starsift::test {

/// A right file of two variables; a test changes the items that it is about.
struct OptText {
  std::string dt = "[ inf ]";
  /// With its "=", or empty.
  std::string kt{};
  std::string At = "[ [ 1 2 ] ]";
  std::string Ag = "[ [ 3 1/2 ] ]";
  std::string bg = "[ 7 ]";
  std::string qg = "[ ]";
  std::string Au = "[ [ 1 -1 ] ]";
  std::string lu = "[ -inf ]";
  std::string ru = "[ 2 ]";
  std::string dx = "[ 0 0 ]";
  std::string lx = "[ 0 0 ]";
  std::string rx = "[ 5 5 ]";

  std::string text() const {
    std::string result;
    for (const std::string* item : {&dt, &kt, &At, &Ag, &bg, &qg, &Au, &lu, &ru, &dx, &lx, &rx})
      result += *item + "\n";
    return result;
  }
};

}  // namespace starsift::test

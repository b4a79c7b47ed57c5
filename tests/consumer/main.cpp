// The smallest program that uses the installed library.
#include <iostream>

#include "numbers/QQ.h"

int main() {
  using starsift::QQ;
  std::cout << QQ::parse("1/2") + QQ::parse("1/3") << '\n';
}

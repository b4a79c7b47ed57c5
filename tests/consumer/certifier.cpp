// The smallest program that uses the floor certificates.
#include <iostream>

#include "certificates/Interval.h"

int main() {
  using starsift::Interval;
  using starsift::QQ;
  const Interval third(QQ(1, 3), 64);
  std::cout << (atMost(third, Interval(QQ(1, 2), 64)) == true ? "less" : "unknown") << '\n';
}

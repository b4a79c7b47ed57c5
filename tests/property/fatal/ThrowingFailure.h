// In a program with ThrowingFailure.cpp fail() throws while the tests run: thousands of
// generated problems end in a fatal report each, and a process of its own for each would
// take too long. An unexpected report shows its counterexample instead of ending everything.
#pragma once

#include <exception>
#include <string>
#include <utility>

namespace starsift::test {

/// Stands for the end of the process.
class FatalReport : public std::exception {
 public:
  explicit FatalReport(std::string message) : message_(std::move(message)) {}
  const char* what() const noexcept override { return message_.c_str(); }

 private:
  std::string message_;
};

}  // namespace starsift::test

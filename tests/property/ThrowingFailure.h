// In the program of the properties fail() throws: a property that may meet a fatal report
// catches it, any other one shows its counterexample instead of ending the process.
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

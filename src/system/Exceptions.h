// The conditions that a caller is designed to handle. Bad input and broken
// invariants are no exceptions: they go through fail() of Failure.h.
#pragma once

#include <exception>
#include <string>

namespace starsift {

/// Root of the system's exceptions. Carries one text and nothing else.
class GeneralException : public std::exception {
 public:
  explicit GeneralException(std::string message);
  const char* what() const noexcept override;
  const std::string& message() const noexcept { return message_; }

 protected:
  /// For derived classes: an empty `message` is replaced by `emptyText`.
  GeneralException(std::string message, const char* emptyText);

 private:
  std::string message_;
};

/// The working number type could not hold a result. The two-precision wrapper
/// hangs its switch to exact arithmetic on this class and its descendants.
class PrecisionException : public GeneralException {
 public:
  explicit PrecisionException(std::string message);

 protected:
  using GeneralException::GeneralException;
};

/// Long double can't carry the computation on (nan, infinity, a doubtful zero), as entries or as
/// the Gram-Schmidt data of exact entries. The wrapper repeats such a step of the standard lattice
/// in the exact one, where shorter entries may make it good; from there it leaves.
class DecimalPrecisionException : public PrecisionException {
 public:
  explicit DecimalPrecisionException(std::string message);
};

/// The integer part of a number has too many digits for the target type.
class PreCommaPrecisionException : public PrecisionException {
 public:
  explicit PreCommaPrecisionException(std::string message);
};

/// The fraction of a number is not exactly representable in the target type.
class PostCommaPrecisionException : public PrecisionException {
 public:
  explicit PostCommaPrecisionException(std::string message);
};

/// An overflow that no change of number type can correct. Unlike its sisters it
/// always opens with its own words: a message is appended behind ": ".
class FatalPrecisionException : public PrecisionException {
 public:
  explicit FatalPrecisionException(const std::string& message);
};

/// A stream was unusable when a value was to be read.
class ReadException : public GeneralException {
 public:
  explicit ReadException(std::string message);
};

/// The mapping between problem and lattice found a congruence violated.
class ModuloException : public GeneralException {
 public:
  explicit ModuloException(std::string message);
};

/// Ends a search pass after the lattice was regenerated.
class RestartException : public GeneralException {
 public:
  explicit RestartException(std::string message);
};

/// A linear dependency that can't be moved out of the way; raised and caught
/// inside the reduction.
class DependencyException : public GeneralException {
 public:
  explicit DependencyException(std::string message);
};

}  // namespace starsift

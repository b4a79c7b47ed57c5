// Conditions that a caller handles. Bad input and broken invariants are no
// exceptions: they are reported by fail() of Failure.h.
#pragma once

#include <exception>
#include <string>

namespace starsift {

/// Base of all exceptions of the system. Holds a text and nothing else.
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
/// switches to exact arithmetic on this class and the classes derived from it.
class PrecisionException : public GeneralException {
 public:
  explicit PrecisionException(std::string message);

 protected:
  using GeneralException::GeneralException;
};

/// Long double can't continue the computation (nan, infinity, a doubtful zero), in entries or in
/// the Gram-Schmidt data of exact entries. The wrapper repeats such a step of the standard lattice
/// in the exact one, where shorter entries may make it succeed; from there the exception leaves.
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

/// An overflow that no other number type would avoid. Unlike in the classes above, a
/// message does not replace the fixed text: it is appended to it after ": ".
class FatalPrecisionException : public PrecisionException {
 public:
  explicit FatalPrecisionException(const std::string& message);
};

/// A stream was in fail or bad state before a value was read, or a file can't be read.
class ReadException : public GeneralException {
 public:
  explicit ReadException(std::string message);
};

/// A file could not be written whole; the old one is as it was.
class WriteException : public GeneralException {
 public:
  explicit WriteException(std::string message);
};

/// A symbolic link on the way to a file may have been put there by somebody else.
class LinkException : public GeneralException {
 public:
  explicit LinkException(std::string message);
};

/// The mapping between problem and lattice found a congruence violated.
class ModuloException : public GeneralException {
 public:
  explicit ModuloException(std::string message);
};

/// Ends a pass of a search after the lattice was generated anew.
class RestartException : public GeneralException {
 public:
  explicit RestartException(std::string message);
};

/// A linearly dependent row that can't be moved to the end; thrown and caught within
/// the reduction.
class DependencyException : public GeneralException {
 public:
  explicit DependencyException(std::string message);
};

}  // namespace starsift

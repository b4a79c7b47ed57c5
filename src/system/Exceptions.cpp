#include "system/Exceptions.h"

#include <utility>

namespace starsift {

namespace {

constexpr const char* fatalPrecisionText = "FatalPrecisionException exception";

std::string fatalPrecisionMessage(const std::string& message) {
  return message.empty() ? fatalPrecisionText : std::string(fatalPrecisionText) + ": " + message;
}

}  // namespace

GeneralException::GeneralException(std::string message) : message_(std::move(message)) {}

GeneralException::GeneralException(std::string message, const char* emptyText)
    : message_(message.empty() ? std::string(emptyText) : std::move(message)) {}

const char* GeneralException::what() const noexcept {
  return message_.c_str();
}

PrecisionException::PrecisionException(std::string message)
    : GeneralException(std::move(message), "Precision exception") {}

DecimalPrecisionException::DecimalPrecisionException(std::string message)
    : PrecisionException(std::move(message), "DecimalPrecision exception") {}

PreCommaPrecisionException::PreCommaPrecisionException(std::string message)
    : PrecisionException(std::move(message), "PreCommaPrecision exception") {}

PostCommaPrecisionException::PostCommaPrecisionException(std::string message)
    : PrecisionException(std::move(message), "PostCommaPrecision exception") {}

FatalPrecisionException::FatalPrecisionException(const std::string& message)
    : PrecisionException(fatalPrecisionMessage(message)) {}

ReadException::ReadException(std::string message)
    : GeneralException(std::move(message), "Read exception") {}

WriteException::WriteException(std::string message)
    : GeneralException(std::move(message), "Write exception") {}

LinkException::LinkException(std::string message)
    : GeneralException(std::move(message), "Link exception") {}

ModuloException::ModuloException(std::string message)
    : GeneralException(std::move(message), "Modulo exception") {}

RestartException::RestartException(std::string message)
    : GeneralException(std::move(message), "Restart exception") {}

DependencyException::DependencyException(std::string message)
    : GeneralException(std::move(message), "Dependency exception") {}

}  // namespace starsift

#include "system/FailureRemark.h"

namespace starsift {

namespace {

/// Null: no remarks.
FailureRemark currentRemark = nullptr;

}  // namespace

void setFailureRemark(FailureRemark remark) {
  currentRemark = remark;
}

std::string failureRemark(std::string_view message) {
  return currentRemark == nullptr ? std::string() : currentRemark(message);
}

}  // namespace starsift

// What the program has to add to a fatal report: some reports are bad news about the
// input, others are an answer, and only the program knows what it was asked.
#pragma once

#include <string>
#include <string_view>

namespace starsift {

/// The line that belongs under a report with this message, without line feed; empty for
/// none.
using FailureRemark = std::string (*)(std::string_view message);

/// Lets fail() ask for a remark from now on; null ends that.
void setFailureRemark(FailureRemark remark);

/// The remark on a message; empty while nobody makes any.
std::string failureRemark(std::string_view message);

}  // namespace starsift

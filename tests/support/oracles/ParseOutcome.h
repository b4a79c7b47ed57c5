// What the number reader of the system makes of a text, its reports included.
#pragma once

#include <string>

#include "support/oracles/ReferenceNumberText.h"

namespace starsift::test {

/// What QQ::parse() makes of the text, found out in a process of its own when
/// `fatal` says that a report is due.
NumberOutcome parseOutcome(const std::string& text, bool fatal);

}  // namespace starsift::test

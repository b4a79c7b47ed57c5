// Writing a file that the program can't do without.
#pragma once

#include "system/Exceptions.h"
#include "system/Failure.h"

namespace starsift {

/// Returns write(), a step that writes a file; one that can't be written is fatal, with the message
/// of the WriteException or LinkException.
template <class Write>
auto writeOrFail(const Write& write) {
  try {
    return write();
  } catch (const WriteException& exception) {
    fail(exception.message());
  } catch (const LinkException& exception) {
    fail(exception.message());
  }
}

}  // namespace starsift

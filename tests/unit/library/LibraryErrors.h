// Expectations on the errors of the library.
#pragma once

#include <gtest/gtest.h>
#include <starsift/starsift.h>

#include <string>

/// The expression throws an Error with exactly this text.
#define EXPECT_ERROR(expression, text)            \
  try {                                           \
    static_cast<void>(expression);                \
    ADD_FAILURE() << "no error";                  \
  } catch (const ::starsift::Error& error) {      \
    EXPECT_EQ(std::string(error.what()), (text)); \
  }

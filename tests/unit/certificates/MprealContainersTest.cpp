// The containers over mpfr::mpreal.
#include <gtest/gtest.h>

#include "certificates/Mpreal.h"
#include "support/fixtures/EliminationSuite.h"
#include "support/fixtures/MatrixSuite.h"
#include "support/fixtures/MatrixTextSuite.h"
#include "support/fixtures/VectorSuite.h"
#include "support/fixtures/VectorTextSuite.h"

namespace starsift::test {

using FloatTypes = ::testing::Types<mpfr::mpreal>;
INSTANTIATE_TYPED_TEST_SUITE_P(Float, VectorOver, FloatTypes);
INSTANTIATE_TYPED_TEST_SUITE_P(Float, VectorTextOver, FloatTypes);
INSTANTIATE_TYPED_TEST_SUITE_P(Float, MatrixOver, FloatTypes);
INSTANTIATE_TYPED_TEST_SUITE_P(Float, MatrixTextOver, FloatTypes);
INSTANTIATE_TYPED_TEST_SUITE_P(Float, EliminationOver, FloatTypes);

}  // namespace starsift::test

// As SystemHeaders.h, for the test programs: the frameworks take longer than everything else.
#include <gmock/gmock.h>
#include <gmpxx.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include <filesystem>
#include <map>
#include <random>
#include <set>

#include "SystemHeaders.h"

// System headers that most sources include, precompiled where STARSIFT_PRECOMPILE is on. It is
// put in front of every source, so a source that forgets one of them is only noticed by the
// other builds.
#include <gmp.h>

#include <algorithm>
#include <array>
#include <cassert>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <limits>
#include <memory>
#include <optional>
#include <span>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

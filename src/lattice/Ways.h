// Named ways to call the operations of a lattice.
#pragma once

namespace starsift {

/// The space of a vector: raw space is that of B_save, working space that of B.
enum class Space { raw, working };

/// Whether an operation may write files, print reports and end a search.
enum class Announce { silent, full };

/// Constants of the problem, in a point.
enum class Constants { omit, insert };
/// Slacks and deviations, at the end of a point.
enum class Slacks { omit, append };
/// Whether a vector with h = -1 is negated first.
enum class Orientation { given, either };

/// Which basis coordinates refer to: B_save, or the rows of B in raw space.
enum class Over { saved, working };
/// Which coordinates are accepted.
enum class Coordinates { rational, integer };

}  // namespace starsift

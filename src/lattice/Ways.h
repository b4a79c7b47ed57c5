// Named ways to call the operations of a lattice.
#pragma once

namespace starsift {

/// Where the coordinates of a vector count: raw space is that of B_save, working space that
/// of B.
enum class Space { raw, working };

/// Whether an operation may write files, report, and end a search.
enum class Announce { silent, full };

/// Constants of the problem, in a point.
enum class Constants { omit, insert };
/// Slacks and deviations, at the end of a point.
enum class Slacks { omit, append };
/// Whether a vector stands for its negative too.
enum class Orientation { given, either };

/// Which basis coordinates refer to: B_save, or the rows of B in raw space.
enum class Over { saved, working };
/// Which coordinates count.
enum class Coordinates { rational, integer };

}  // namespace starsift

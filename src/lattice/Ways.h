// Named ways to call the operations of a lattice.
#pragma once

namespace starsift {

/// The space of a vector: raw space is that of B_save, working space that of B.
enum class Space { raw, working };

/// The stored vectors of a lattice whose size changes.
enum class Vectors { keep, discard };
/// The path of the lattice file, when a lattice starts anew.
enum class LatPath { keep, clear };
/// The parameters of a lattice that takes the state of another one.
enum class Settings { copy, keep };
/// The transformations behind a new one: dropped, or kept with the new one on top unless the last
/// is an identity.
enum class Stack { restart, push };

/// What a problem is normalised from: the lifted form if there is one, or the problem as read.
enum class From { lifted, read };
/// Whether the range of the target value is looked for when the problem is lifted.
enum class TargetRange { omit, find };

/// The stars of a lattice that are to be written.
enum class Stars { asTheyAre, withSolutions };
/// What a search has reached when it is restarted or ended.
enum class Outcome { unfinished, finished };
/// How exactly a vector is to be the image of its point.
enum class Match { tolerant, exact };

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

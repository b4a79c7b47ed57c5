// The order of stars that are held as lines, and the removal of duplicates; see StarOrder.h.
#pragma once

#include <vector>

#include "stars/StarLine.h"

namespace starsift {

/// Sorts by the order of a solution file and sets the ranks of the versions. False if that order
/// doesn't decide about two lines with different texts, as versions 2.4 and 2.4.0 of one star:
/// which of them comes first is up to the algorithm of sortStars().
bool sortLines(std::vector<StarLine>& lines);

/// Removes each line whose x and parameters are those of an earlier one, and marks the first line
/// of each x. O(total length of the texts).
void removeDuplicates(std::vector<StarLine>& lines);

}  // namespace starsift

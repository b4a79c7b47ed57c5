// The steps of the peer over all stars of a file.
#pragma once

#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

#include "peer/Problem.h"

namespace peer {

std::vector<Star> readStars(const std::string& path);
/// The same from the text of a file.
std::vector<Star> parseStars(std::string_view text);
/// Drops what is no solution.
void checkStars(const Problem& problem, std::vector<Star>& stars);
/// Best star first; the texts of the stars must be set.
void sortStars(std::vector<Star>& stars);
/// Of stars with one x and, with `compareParameters`, one parameter text the first stays.
void removeDuplicates(std::vector<Star>& stars, bool compareParameters);
/// What stands behind the text of x in a record.
std::string recordTail(const Star& star);
/// A new file that takes the name of the old one.
void writeStars(const std::string& path, const std::vector<Star>& stars);
void writeReport(std::ostream& stream, const Problem& problem, const std::vector<Star>& stars);

}  // namespace peer

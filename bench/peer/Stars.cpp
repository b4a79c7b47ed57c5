#include "peer/Stars.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <unordered_set>

namespace peer {

namespace {

/// The numbers of a dotted version, without trailing zeros.
std::vector<std::uint64_t> numbersOf(const std::string& text) {
  std::vector<std::uint64_t> numbers;
  std::istringstream stream(text);
  for (std::string part; std::getline(stream, part, '.');) numbers.push_back(std::stoull(part));
  while (!numbers.empty() && numbers.back() == 0) numbers.pop_back();
  return numbers;
}

Star readStar(Reader& reader) {
  Star star;
  star.x = reader.vector();
  star.text = vectorText(star.x);
  if (!reader.take('|')) return star;
  star.targetNorm = reader.number();
  reader.take('|');
  star.targetValues = reader.vector();
  reader.take('|');
  star.slackNorm = reader.number();
  reader.take('|');
  star.time = std::max(-1L, std::stol(std::string(reader.token())));
  if (reader.take('|')) star.parameters = reader.field("|");
  if (reader.take('|')) star.version = reader.field("");
  star.versionNumbers = numbersOf(star.version);
  return star;
}

bool comesBefore(const Star& a, const Star& b) {
  if (a.targetNorm != b.targetNorm) return a.targetNorm < b.targetNorm;
  if (a.slackNorm != b.slackNorm) return a.slackNorm < b.slackNorm;
  // As unsigned, so that a time that isn't known comes last.
  if (a.time != b.time)
    return static_cast<std::uint64_t>(a.time) < static_cast<std::uint64_t>(b.time);
  if (a.versionNumbers != b.versionNumbers) return a.versionNumbers > b.versionNumbers;
  if (a.text != b.text) return a.text < b.text;
  return a.parameters < b.parameters;
}

std::string twoDigits(long value) {
  std::string text = std::to_string(value);
  if (value < 10) text.insert(text.begin(), '0');
  return text;
}

std::string timeText(long seconds) {
  const std::string inMinute = twoDigits(seconds % 60);
  const std::string inHour = twoDigits(seconds / 60 % 60);
  if (seconds < 60) return std::to_string(seconds) + " sec(s)";
  if (seconds < 3600) return std::to_string(seconds / 60) + ':' + inMinute + " min(s):sec(s)";
  if (seconds < 86400)
    return std::to_string(seconds / 3600) + ':' + inHour + ':' + inMinute +
           " hour(s):min(s):sec(s)";
  return std::to_string(seconds / 86400) + ':' + twoDigits(seconds / 3600 % 24) + ':' + inHour +
         ':' + inMinute + " day(s):hour(s):min(s):sec(s)";
}

std::string goalText(const Bound& goal) {
  if (goal.infinity != 0) return goal.infinity > 0 ? "↑" : "↓";
  return "→" + numberText(goal.value);
}

}  // namespace

std::vector<Star> readStars(const std::string& path) {
  return parseStars(fileText(path));
}

std::vector<Star> parseStars(std::string_view text) {
  std::vector<Star> stars;
  Reader reader(text);
  for (reader.skip(); !reader.atEnd(); reader.skip()) stars.push_back(readStar(reader));
  return stars;
}

void checkStars(const Problem& problem, std::vector<Star>& stars) {
  std::erase_if(stars, [&problem](Star& star) { return !problem.check(star); });
}

void sortStars(std::vector<Star>& stars) {
  std::sort(stars.begin(), stars.end(), comesBefore);
}

void removeDuplicates(std::vector<Star>& stars, bool compareParameters) {
  std::unordered_set<std::string> known;
  std::erase_if(stars, [&](const Star& star) {
    return !known.insert(compareParameters ? star.text + '\n' + star.parameters : star.text).second;
  });
}

std::string recordTail(const Star& star) {
  std::string tail = " | " + numberText(star.targetNorm) + " | " + vectorText(star.targetValues) +
                     " | " + numberText(star.slackNorm) + " | " + std::to_string(star.time) +
                     " | " + star.parameters;
  if (!star.version.empty()) tail += " | " + star.version;
  return tail;
}

void writeStars(const std::string& path, const std::vector<Star>& stars) {
  const std::string beside = path + ".new";
  {
    std::ofstream file(beside, std::ios::binary);
    for (const Star& star : stars) file << star.text << recordTail(star) << '\n';
  }
  std::rename(beside.c_str(), path.c_str());
}

void writeReport(std::ostream& stream, const Problem& problem, const std::vector<Star>& stars) {
  stream << '\n';
  bool first = true;
  for (const Star& star : stars) {
    if (!first) stream << "\n---\n\n";
    first = false;
    stream << "x = " << star.text << "\n\nTarget values: [ ";
    for (std::size_t i = 0; i < star.targetValues.size(); ++i)
      stream << numberText(star.targetValues[i]) << goalText(problem.goals()[i]) << ' ';
    stream << "]\nTarget Norm: " << numberText(star.targetNorm)
           << "\nSlack Norm: " << numberText(star.slackNorm) << '\n';
    if (star.time != -1) stream << "Found after: " << timeText(star.time) << '\n';
  }
}

}  // namespace peer

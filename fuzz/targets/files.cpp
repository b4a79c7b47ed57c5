// The whole job on two arbitrary files, the problem before the first byte 31 and
// the solutions behind it. What a run leaves, the next ones must keep.
#include <algorithm>

#include "Target.h"
#include "WorkFolder.h"
#include "support/fixtures/StarRun.h"

namespace starsift::fuzz {

void runTarget(std::string_view bytes) {
  const std::size_t end = std::min(bytes.find('\x1f'), bytes.size());
  writeFile(workFile("p.opt"), bytes.substr(0, end));
  const std::string file = workFile("p.sol").string();
  const std::string_view stars = bytes.substr(std::min(end + 1, bytes.size()));
  writeFile(file, stars);
  try {
    test::siftedReport(file);
  } catch (const Failure&) {
    require(readFile(file) == stars, "a run that ends with a report changes nothing");
    return;
  }
  if (!std::filesystem::exists(file)) return;
  // A star that is gone may have made this run exact: then the next one may write
  // the same numbers as decimals, but no more than once.
  const std::string text = readFile(file);
  const std::string report = outcomeOf([&] { return test::siftedReport(file); });
  require(!report.starts_with("***"), "what a run wrote is no bad input");
  const std::string rewritten = readFile(file);
  require(std::count(rewritten.begin(), rewritten.end(), '\n') ==
              std::count(text.begin(), text.end(), '\n'),
          "a second run keeps all stars");
  require(test::siftedReport(file) == report, "a third run reports the same again");
  require(readFile(file) == rewritten, "and changes nothing");
}

}  // namespace starsift::fuzz

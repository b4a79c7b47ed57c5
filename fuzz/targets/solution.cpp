// The readers of solution files: what one accepts is rounded to a point of a small model.
#include "Target.h"
#include "models/read/LpReader.h"
#include "models/solutions/PointReader.h"
#include "models/solutions/SolverFile.h"

namespace starsift::fuzz {

void runTarget(std::string_view bytes) {
  static const Model model = readLp(
      "Minimize\n obj: x + y + x1 + x2\nSubject To\n c: x + y >= 1\nBounds\n y <= 9\n"
      "General\n x\nBinary\n x1 x2\nEnd\n",
      {});
  const SolverFile file = readSolverFile(bytes);
  require(file.noSolution.empty() || file.points.empty(),
          "a file without a solution has no points");
  for (const WrittenPoint& point : file.points) {
    const ReadPoint read = readPoint(model, file.format, point, {});
    require(read.x.size() == model.columnCount(), "a point has all columns");
    require(read.x[0].isInteger() || !read.fractional.empty(),
            "an integer column that isn't rounded is named");
  }
}

}  // namespace starsift::fuzz

#include "app/ProfilePicture.h"

#include <optional>
#include <ostream>

#include "app/Interrupt.h"
#include "files/ResultFile.h"
#include "files/WriteOrFail.h"
#include "system/Failure.h"
#include "system/FilterProcess.h"
#include "text/TextStreams.h"

namespace starsift {

namespace {

/// Without the settings of the user.
std::optional<std::string> gnuplot(const std::string& script) {
  return filtered("gnuplot", {"-d"}, script);
}

constexpr const char* plotSettings =
    "set terminal svg size 960,400 noenhanced background '#ffffff'\n"
    "set multiplot layout 1,2\n"
    "set xlabel 'k'\n"
    "set ylabel 'log10 of the length of b*_k, the box of side 1'\n"
    "set grid\n"
    "set key top right\n";

/// One diagram of the curves from `first` on.
void writePlot(std::ostream& script, const std::vector<ProfileCurve>& curves, std::size_t first) {
  for (std::size_t i = first; i < curves.size(); ++i)
    script << (i == first ? "plot " : ", ") << "$curve" << i
           << " with linespoints pointsize 0.4 linecolor " << i + 1 << " title '" << curves[i].name
           << "'";
  script << '\n';
}

}  // namespace

void requireGnuplot() {
  if (!gnuplot(""))
    fail("--profile needs gnuplot, which can't be run: it is in the package gnuplot-nox");
}

std::string profileScript(const std::vector<ProfileCurve>& curves) {
  TextWriter script;
  script.precision(6);
  script << plotSettings;
  for (std::size_t i = 0; i < curves.size(); ++i) {
    script << "$curve" << i << " << END\n";
    for (std::size_t k = 0; k < curves[i].lengths.size(); ++k)
      script << k + 1 << ' ' << curves[i].lengths[k] << '\n';
    script << "END\n";
  }
  writePlot(script, curves, 0);
  // Beside an unreduced basis reduced ones look alike.
  writePlot(script, curves, 1);
  return std::move(script).str();
}

void drawProfile(const std::vector<ProfileCurve>& curves, const std::string& path) {
  const std::optional<std::string> picture = gnuplot(profileScript(curves));
  // Ctrl-C is for gnuplot too.
  if (interrupted() != 0) return;
  if (!picture || picture->empty()) fail("gnuplot could not draw the profile");
  writeOrFail([&] {
    ResultFile file(path);
    if (!file.isOpen()) fail("Could not write file: " + path);
    file.write(*picture);
    if (file.commit() != Commit::written) fail("Others write all the time to file: " + path);
  });
}

}  // namespace starsift

#include "files/LatText.h"

#include "core/VectorText.h"
#include "files/ResultFile.h"
#include "numbers/VectorQQ.h"
#include "system/Signals.h"
#include "text/TextStreams.h"

namespace starsift {

namespace {

/// A file that is replaced by others so often in a row is left to them.
constexpr int writeTries = 10;

constexpr const char* legend = "// B -- l, r -- c, R -- lx, rx -- tuse, lrtu -- rtime";

/// The text with fileDigits; a stream would print a rational at its own precision.
template <class T>
std::string numberText(const T& value) {
  std::string text;
  NumberTraits<T>::append(text, value, fileDigits);
  return text;
}

}  // namespace

template <class T>
std::string latText(const LatticeData<T>& data) {
  TextWriter text;
  text.precision(fileDigits);
  text << data.basis << "\n\n"
       << data.l << '\n'
       << data.r << "\n\n"
       << data.c << '\n'
       << numberText(data.rangeMultiple) << "\n\n"
       << data.lx << '\n'
       << data.rx << "\n\n"
       << (data.hasTarget ? 1 : 0) << '\n'
       << Vector<T>{data.ltu, data.rtu} << "\n\n"
       << data.seconds << "\n\n"
       << legend << '\n';
  return std::move(text).str();
}

void writeLat(const std::string& path, const std::string& text) {
  const DeferredSignals deferred;
  Commit commit = Commit::changed;
  // Of two that write at once one is the last, and its lattice is as good as the other's.
  for (int i = 0; i < writeTries && commit == Commit::changed; ++i) {
    ResultFile file(path);
    file.write(text);
    commit = file.commit();
  }
}

template std::string latText(const LatticeData<long double>&);
template std::string latText(const LatticeData<QQ>&);

}  // namespace starsift

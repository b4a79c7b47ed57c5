// Tests of a lattice on its way from the text of a problem to a search.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

#include "core/Exceptions.h"
#include "lattice/Lattice.h"
#include "numbers/VectorQQ.h"
#include "support/FreshConsole.h"
#include "support/Problem.h"

namespace starsift::test {

/// The message of the exception that `step` throws, exactly of this class or one below it.
template <class Exception, class Step>
std::string messageOf(Step step) {
  try {
    step();
  } catch (const Exception& exception) {
    return exception.message();
  }
  return "nothing thrown";
}

template <class T>
class LatticeOfProblem : public FreshConsole {
 protected:
  /// The problem as read and in normal form; what is written on the way is dropped.
  void normalise(std::string_view problem) {
    live.optOriginal = problemFrom<T>(problem);
    consoleOf([this] { live.normalise(true, false); });
  }
  void prepare(std::string_view problem) {
    normalise(problem);
    live.prepareLattice();
  }

  /// The raw vector of a point.
  Vector<T> image(const Vector<T>& x) const {
    Vector<T> vector;
    live.opt2lat(x, vector, false, T(1));
    return vector;
  }
  /// The point of a raw vector.
  Vector<T> pointOf(const Vector<T>& vector) const {
    Vector<T> x;
    live.lat2opt(vector, x, true, false, true);
    return x;
  }

  /// Sets a switch of the parameters as the lattice itself does, without reaction.
  void setSilently(Param<bool>& param, bool on) {
    live.reactionsOff = true;
    param = on;
    live.reactionsOff = false;
  }

  static bool isIdentity(const Matrix<T>& matrix, Index order) {
    return identical(matrix, Matrix<T>::identity(order));
  }

  Lattice<T, long double> live;
};

using LatticeNumbers = testing::Types<long double, QQ>;

}  // namespace starsift::test

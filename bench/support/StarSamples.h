// A problem with any number of different right stars, as text and as objects.
#pragma once

#include <string>

#include "peer/Stars.h"
#include "problem/Vanu.h"
#include "stars/Star.h"
#include "support/Samples.h"

namespace starsift::bench {

/// What the numbers of problem and stars are.
enum class NumberKind { integers, fractions };

/// Equations with a closing variable each, which makes the rest of a star right whatever it is.
class StarSample {
 public:
  /// variables >= 20
  StarSample(Index variables, Index stars, NumberKind kind);

  const std::string& problemText() const { return problemText_; }
  /// The stars in random order; records of all seven fields, or x alone.
  std::string starsText(bool bare) const;

  template <class T>
  Vanu<T> problem() const {
    Vanu<T> result;
    result.convertFrom(problem_);
    return result;
  }

  /// Checked: target values and norms are set. `copies` of each star, which differ in their
  /// parameters.
  template <class T>
  Array<Star<T>> stars(Index copies = 1) const {
    const Index single = stars_.dimension();
    Array<Star<T>> result(single * copies);
    for (Index i = 1; i <= result.dimension(); ++i) {
      result[i].convertFrom(stars_[(i - 1) % single + 1], false);
      result[i].paramsText += std::to_string((i - 1) / single);
    }
    return result;
  }

  /// The same for the peer.
  std::vector<peer::Star> peerStars(Index copies = 1) const;

 private:
  void makeProblem(Index variables);
  void makeStars(Index count);
  Star<QQ> makeStar();
  /// A number of the sample's kind.
  QQ number();

  Random random_{1};
  NumberKind kind_;
  std::string problemText_;
  Vanu<QQ> problem_;
  Array<Star<QQ>> stars_;
};

}  // namespace starsift::bench

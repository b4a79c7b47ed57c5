// Order and duplicates of stars against the plain forms of their algorithms, which
// also fix what becomes of stars that are less than each other.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "files/SolReader.h"
#include "files/SolWriter.h"
#include "numbers/QQ.h"
#include "stars/StarOrder.h"

namespace starsift {
namespace {

/// Stars of one component whose keys often agree.
template <class T>
Array<Star<T>> arbitraryStars() {
  Array<Star<T>> stars(*rc::gen::inRange<Index>(0, 40));
  for (Star<T>& star : stars) {
    star = Star<T>{T(*rc::gen::inRange(8L, 12L))};
    star.targetNorm = T(*rc::gen::inRange(-1L, 2L));
    star.slackNorm = T(*rc::gen::inRange(0L, 2L));
    star.time = *rc::gen::element(-1, 3, 20);
    star.versionText = *rc::gen::element<std::string>("", "2.4", "2.4.0", "2.10", "x");
    star.paramsText = *rc::gen::element<std::string>("", "a", "b", "ab");
    star.fresh = *rc::gen::arbitrary<bool>();
  }
  return stars;
}

/// starLess, but of two stars that are less than each other the one with the higher
/// version comes first.
template <class T>
bool comesBefore(const Star<T>& a, const Star<T>& b) {
  if (!starLess(a, b) || !starLess(b, a)) return starLess(a, b);
  // Stars that differ in nothing but the version.
  Star<T> probe(b);
  probe.versionText = a.versionText;
  return starLess(probe, b);
}

/// Moves stars[top] down the heap stars[1..size].
template <class T>
void plainSiftDown(Array<Star<T>>& stars, Index top, Index size) {
  while (2 * top <= size) {
    Index child = 2 * top;
    if (child < size && comesBefore(stars[child], stars[child + 1])) ++child;
    if (!comesBefore(stars[top], stars[child])) return;
    stars.swap(top, child);
    top = child;
  }
}

template <class T>
void plainHeapSort(Array<Star<T>>& stars) {
  const Index n = stars.dimension();
  for (Index top = n / 2; top >= 1; --top) plainSiftDown(stars, top, n);
  for (Index size = n; size > 1; --size) {
    stars.swap(1, size);
    plainSiftDown(stars, 1, size - 1);
  }
}

template <class T>
void plainRemoveDuplicates(Array<Star<T>>& stars, bool compareParams) {
  for (Index i = 1; i <= stars.dimension(); ++i)
    for (Index j = i + 1; j <= stars.dimension();) {
      const bool same = identical(stars[i].x(), stars[j].x()) &&
                        (!compareParams || stars[i].paramsText == stars[j].paramsText);
      if (!same) {
        ++j;
        continue;
      }
      stars[i].fresh = stars[i].fresh && stars[j].fresh;
      for (Index k = j; k < stars.dimension(); ++k) stars.swap(k, k + 1);
      stars.resize(stars.dimension() - 1, false);
    }
}

template <class T>
std::string textOf(const Array<Star<T>>& stars) {
  std::string text;
  for (const Star<T>& star : stars) text += starText(star) + (star.fresh ? " fresh\n" : "\n");
  return text;
}

template <class T>
void sortsLikeThePlainOne() {
  const Array<Star<T>> stars = arbitraryStars<T>();
  Array<Star<T>> sorted(stars);
  Array<Star<T>> plain(stars);
  sortStars(sorted);
  plainHeapSort(plain);
  RC_ASSERT(textOf(sorted) == textOf(plain));
}

template <class T>
void siftedStarsStayAsTheyAre() {
  Array<Star<T>> stars = arbitraryStars<T>();
  sortStars(stars);
  removeDuplicates(stars, true);
  Array<Star<T>> again(stars);
  sortStars(again);
  removeDuplicates(again, true);
  RC_ASSERT(textOf(again) == textOf(stars));
}

template <class T>
void removesLikeThePlainOne() {
  const bool compareParams = *rc::gen::arbitrary<bool>();
  const Array<Star<T>> stars = arbitraryStars<T>();
  Array<Star<T>> sifted(stars);
  Array<Star<T>> plain(stars);
  removeDuplicates(sifted, compareParams);
  plainRemoveDuplicates(plain, compareParams);
  RC_ASSERT(textOf(sifted) == textOf(plain));
}

RC_GTEST_PROP(StarOrder, SortsLongDoubleStarsLikeThePlainHeapSort, ()) {
  sortsLikeThePlainOne<long double>();
}

RC_GTEST_PROP(StarOrder, SortsRationalStarsLikeThePlainHeapSort, ()) {
  sortsLikeThePlainOne<QQ>();
}

RC_GTEST_PROP(StarOrder, LeavesSiftedLongDoubleStarsAsTheyAre, ()) {
  siftedStarsStayAsTheyAre<long double>();
}

RC_GTEST_PROP(StarOrder, LeavesSiftedRationalStarsAsTheyAre, ()) {
  siftedStarsStayAsTheyAre<QQ>();
}

RC_GTEST_PROP(StarOrder, RemovesLongDoubleDuplicatesLikeThePlainLoop, ()) {
  removesLikeThePlainOne<long double>();
}

RC_GTEST_PROP(StarOrder, RemovesRationalDuplicatesLikeThePlainLoop, ()) {
  removesLikeThePlainOne<QQ>();
}

RC_GTEST_PROP(SolReader, ReadsTheStarsThatWereWritten, ()) {
  for (const Star<QQ>& star : arbitraryStars<QQ>()) {
    const std::string text = starText(star);
    TextCursor source(text);
    Star<QQ> back;
    RC_ASSERT(readStar(back, source));
    RC_ASSERT(starText(back) == text);
  }
}

}  // namespace
}  // namespace starsift

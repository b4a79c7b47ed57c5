#include "core/Set.h"

#include <utility>
#include <vector>

#include "support/fixtures/ExpectFails.h"

namespace starsift {
namespace {

/// An element of quality `score` whose vector is `id`.
struct Item {
  explicit Item(int identity, int quality = 0) : id(identity), score(quality) { ++alive; }
  Item(const Item& other)
      : next(other.next), previous(other.previous), id(other.id), score(other.score) {
    ++alive;
  }
  Item& operator=(const Item&) = delete;
  ~Item() { --alive; }

  Item* next = nullptr;
  Item* previous = nullptr;
  int id;
  int score;

  /// Items constructed and not destroyed.
  static inline int alive = 0;
};

bool identical(const Item& a, const Item& b) {
  return a.id == b.id;
}
bool better(const Item& a, const Item& b) {
  return a.score < b.score;
}

std::vector<int> ids(const Set<Item>& set) {
  std::vector<int> result;
  for (const Item& item : set) result.push_back(item.id);
  return result;
}

/// Checks the links from behind, and the count.
std::vector<int> idsBackwards(const Set<Item>& set) {
  std::vector<int> result;
  for (const Item* item = set.last(); item != nullptr; item = item->previous)
    result.push_back(item->id);
  EXPECT_EQ(static_cast<Index>(result.size()), set.count());
  return result;
}

std::unique_ptr<Item> item(int id) {
  return std::make_unique<Item>(id);
}

using Ids = std::vector<int>;

TEST(Set, StartsEmptyWithoutALimit) {
  const Set<Item> set;
  EXPECT_EQ(set.count(), 0);
  EXPECT_EQ(set.limit(), 0);
  EXPECT_EQ(set.first(), nullptr);
  EXPECT_EQ(set.last(), nullptr);
}

TEST(Set, LinksAnElementAheadOfAnother) {
  Set<Item> set;
  set.append(item(1));
  set.append(item(3));
  EXPECT_TRUE(set.insertBefore(item(2), set.last()));
  EXPECT_EQ(ids(set), (Ids{1, 2, 3}));
  EXPECT_EQ(idsBackwards(set), (Ids{3, 2, 1}));
}

TEST(Set, ElementAheadOfTheFirstBecomesTheFirst) {
  Set<Item> set;
  set.append(item(2));
  EXPECT_TRUE(set.insertBefore(item(1), set.first()));
  EXPECT_EQ(ids(set), (Ids{1, 2}));
  EXPECT_EQ(idsBackwards(set), (Ids{2, 1}));
}

TEST(Set, FailsOnTheHeadOfAnotherSet) {
  Set<Item> set;
  set.append(item(1));
  Set<Item> other;
  other.append(item(2));
  EXPECT_FAILS_WITH(set.insertBefore(item(3), other.first()),
                    "Set: before_element is not in the given set!");
}

TEST(Set, FullSetDropsANewHeadAtOnce) {
  Set<Item> set(2);
  set.append(item(1));
  set.append(item(2));
  EXPECT_FALSE(set.insertBefore(item(3), set.first()));
  EXPECT_EQ(ids(set), (Ids{1, 2}));
  EXPECT_EQ(idsBackwards(set), (Ids{2, 1}));
}

TEST(Set, FullSetDropsItsHeadForAnElementFurtherBehind) {
  Set<Item> set(2);
  set.append(item(1));
  set.append(item(2));
  EXPECT_TRUE(set.insertBefore(item(3), set.last()));
  EXPECT_EQ(ids(set), (Ids{3, 2}));
  EXPECT_EQ(idsBackwards(set), (Ids{2, 3}));
}

TEST(Set, FullSetDropsItsHeadForAnElementAtTheEnd) {
  Set<Item> set(1);
  set.append(item(1));
  set.append(item(2));
  EXPECT_EQ(ids(set), Ids{2});
  EXPECT_EQ(idsBackwards(set), Ids{2});
}

TEST(Set, LoweredLimitDropsOneElementPerInsertion) {
  Set<Item> set;
  for (int id = 1; id <= 3; ++id) set.append(item(id));
  set.setLimit(1);
  EXPECT_EQ(set.count(), 3);
  set.append(item(4));
  EXPECT_EQ(ids(set), (Ids{2, 3, 4}));
}

TEST(Set, GivesUpAnElementFromAnyPlace) {
  Set<Item> set;
  for (int id = 1; id <= 4; ++id) set.append(item(id));
  EXPECT_EQ(set.take(set.first()->next)->id, 2);
  EXPECT_EQ(set.take(set.first())->id, 1);
  EXPECT_EQ(set.take(set.last())->id, 4);
  EXPECT_EQ(ids(set), Ids{3});
  EXPECT_EQ(set.take(set.last())->id, 3);
  EXPECT_EQ(set.first(), nullptr);
  EXPECT_EQ(set.last(), nullptr);
  EXPECT_EQ(set.count(), 0);
}

TEST(Set, TakenElementCarriesNoLinks) {
  Set<Item> set;
  for (int id = 1; id <= 3; ++id) set.append(item(id));
  const auto taken = set.take(set.first()->next);
  EXPECT_EQ(taken->next, nullptr);
  EXPECT_EQ(taken->previous, nullptr);
}

TEST(Set, CopyHasElementsOfItsOwn) {
  Set<Item> set(5);
  set.append(item(1));
  set.append(item(2));
  Set<Item> copy(set);
  set.first()->id = 9;
  set.append(item(3));
  EXPECT_EQ(ids(copy), (Ids{1, 2}));
  EXPECT_EQ(idsBackwards(copy), (Ids{2, 1}));
  EXPECT_EQ(copy.limit(), 5);
}

TEST(Set, AssignmentReplacesElementsAndLimit) {
  Set<Item> set(5);
  set.append(item(1));
  Set<Item> other(2);
  other.append(item(7));
  other = set;
  EXPECT_EQ(ids(other), Ids{1});
  EXPECT_EQ(ids(set), Ids{1});
  EXPECT_EQ(other.limit(), 5);
}

TEST(Set, DestroysItsElements) {
  const int before = Item::alive;
  {
    Set<Item> set(2);
    for (int id = 1; id <= 4; ++id) set.append(item(id));
    EXPECT_EQ(Item::alive, before + 2);
    set.insertBefore(item(5), set.first());
    EXPECT_EQ(Item::alive, before + 2);
  }
  EXPECT_EQ(Item::alive, before);
}

/// Inserts items of the given scores, ids counting from 1.
SortedSet<Item> sorted(Index limit, const std::vector<int>& scores) {
  SortedSet<Item> set(limit);
  int id = 0;
  for (const int score : scores) set.insert(Item(++id, score));
  return set;
}

TEST(SortedSet, KeepsTheWorstFirstAndTheBestLast) {
  EXPECT_EQ(ids(sorted(0, {5, 1, 9, 3})), (Ids{3, 1, 4, 2}));
}

TEST(SortedSet, PutsAnEquallyGoodElementBehindTheOthers) {
  EXPECT_EQ(ids(sorted(0, {5, 5, 5})), (Ids{1, 2, 3}));
}

TEST(SortedSet, TurnsAwayTheSameVector) {
  auto set = sorted(0, {5, 3});
  const int before = Item::alive;
  EXPECT_FALSE(set.insert(Item(1, 1)));
  EXPECT_EQ(ids(set), (Ids{1, 2}));
  EXPECT_EQ(Item::alive, before);
}

TEST(SortedSet, LooksForTheSameVectorOnlyAheadOfTheNewPlace) {
  auto set = sorted(0, {5, 3});
  EXPECT_TRUE(set.insert(Item(2, 9)));
  EXPECT_EQ(ids(set), (Ids{2, 1, 2}));
}

TEST(SortedSet, DropsTheWorstWhenFull) {
  auto set = sorted(2, {5, 3});
  EXPECT_TRUE(set.insert(Item(3, 4)));
  EXPECT_EQ(ids(set), (Ids{3, 2}));
  EXPECT_TRUE(set.insert(Item(4, 1)));
  EXPECT_EQ(ids(set), (Ids{2, 4}));
  EXPECT_EQ(set.count(), 2);
}

TEST(SortedSet, TurnsAwayWhatIsWorseThanAllOfAFullSet) {
  auto set = sorted(2, {5, 3});
  EXPECT_FALSE(set.insert(Item(3, 8)));
  EXPECT_EQ(ids(set), (Ids{1, 2}));
}

TEST(SortedSet, LeavesTheElementItCopied) {
  SortedSet<Item> set;
  const Item original(1, 5);
  set.insert(original);
  EXPECT_NE(set.first(), &original);
  EXPECT_EQ(original.next, nullptr);
}

}  // namespace
}  // namespace starsift

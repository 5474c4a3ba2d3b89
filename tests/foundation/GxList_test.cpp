#include "crv/crv.h"
#include "tests/support/shapes.h"

#include <algorithm>
#include <stdexcept>
#include <vector>

#include <gtest/gtest.h>

namespace {

using support::Random;

/// Counts living elements and copies; the throwAt-th copy throws.
struct Counted {
  static int living;
  static int copies;
  static int throwAt;

  int value;

  explicit Counted(int v) : value(v) { ++living; }
  Counted(Counted const& other) : value(other.value) {
    if (++copies == throwAt) throw std::runtime_error("copy");
    ++living;
  }
  ~Counted() { --living; }
  bool operator==(Counted const& other) const { return value == other.value; }
};

int Counted::living = 0;
int Counted::copies = 0;
int Counted::throwAt = -1;

using List = GxList<Counted>;

List listOf(std::vector<int> const& values) {
  List list;
  for (int const v : values) list.add(Counted(v));
  return list;
}

std::vector<int> valuesOf(List const& list) {
  std::vector<int> values;
  list.forEach(
      [](Counted c, void* out) { static_cast<std::vector<int>*>(out)->push_back(c.value); },
      &values);
  return values;
}

/// The list walked backwards through the ring, reversed: both directions must agree.
std::vector<int> valuesBackwards(List const& list) {
  std::vector<int> values;
  list.first();
  for (unsigned i = 0; i < list.length(); ++i) {
    list.prev();
    values.push_back(list.curElement().value);
  }
  std::reverse(values.begin(), values.end());
  return values;
}

TEST(GxList, IndicesWrapAndCursorMovesInARing) {
  List list = listOf({10, 11, 12});
  EXPECT_EQ(list(3).value, 10);
  EXPECT_EQ(list[4].value, 11);
  EXPECT_EQ(list.next(), 1);
  EXPECT_EQ(list.curElement().value, 12);
  EXPECT_EQ(list.next(), 0);
  EXPECT_EQ(list.prev(), 1);
  EXPECT_EQ(list.curElement().value, 12);
  List nothing;
  EXPECT_EQ(nothing.first(), 0);
  EXPECT_EQ(nothing.next(), 0);
  EXPECT_EQ(nothing.prev(), 0);
  nothing.moveTo(3);
  nothing.remove(0);
  EXPECT_EQ(nothing.length(), 0u);
}

TEST(GxList, InsertAtEveryIndexAndBeforeTheCursor) {
  struct Case {
    int index;
    std::vector<int> result;
  };
  Case const cases[] = {
      {0, {9, 1, 2, 3}}, {1, {1, 9, 2, 3}},  {3, {1, 2, 3, 9}},  {4, {1, 9, 2, 3}},
      {6, {1, 2, 3, 9}}, {-1, {1, 2, 9, 3}}, {-2, {1, 2, 9, 3}},  // 2^32 - 2 is 2 modulo 3
  };
  for (Case const& k : cases) {
    List list = listOf({1, 2, 3});
    list.moveTo(2);
    EXPECT_EQ(list.insert(Counted(9), k.index).value, 9);
    EXPECT_EQ(valuesOf(list), k.result) << "insert at " << k.index;
    EXPECT_EQ(list.curElement().value, list(0).value);
    EXPECT_EQ(valuesBackwards(list), k.result);
  }
}

TEST(GxList, RemovingKeepsTheCursorOnItsElementOrTheNext) {
  struct Case {
    unsigned cursor;
    int index;
    std::vector<int> result;
    int atCursor;
  };
  Case const cases[] = {
      {2, 0, {2, 3, 4}, 3},  {2, 3, {1, 2, 3}, 3},  {2, -1, {1, 2, 4}, 4}, {3, -1, {1, 2, 3}, 1},
      {0, -1, {2, 3, 4}, 2}, {2, -7, {2, 3, 4}, 3}, {1, 6, {1, 2, 4}, 2},
  };
  for (Case const& k : cases) {
    List list = listOf({1, 2, 3, 4});
    list.moveTo(k.cursor);
    list.remove(k.index);
    EXPECT_EQ(list.curElement().value, k.atCursor);
    EXPECT_EQ(valuesOf(list), k.result);
    for (unsigned i = 0; i < list.length(); ++i) EXPECT_EQ(list(i).value, k.result[i]);
  }
  List one = listOf({1});
  one.remove(0);
  EXPECT_EQ(one.first(), 0);
  one.add(Counted(2));
  EXPECT_EQ(one(0).value, 2);
}

TEST(GxList, SplicingMovesNodesAndCopiesNothing) {
  struct Case {
    int index;
    std::vector<int> result;
  };
  Case const cases[] = {
      {-1, {7, 8, 2, 3, 1}},  // the ring turns: what stood before the cursor comes last
      {0, {7, 8, 1, 2, 3}},
      {1, {1, 7, 8, 2, 3}},
      {3, {1, 2, 3, 7, 8}},
  };
  for (Case const& k : cases) {
    List a = listOf({1, 2, 3});
    List b = listOf({7, 8});
    a.moveTo(1);
    Counted::copies = 0;
    a.inject(b, k.index);
    EXPECT_EQ(Counted::copies, 0);
    EXPECT_EQ(b.length(), 0u);
    EXPECT_EQ(valuesOf(a), k.result) << "inject at " << k.index;
    EXPECT_EQ(valuesBackwards(a), k.result);
    b.add(Counted(5));
    Counted::copies = 0;
    a += b;
    EXPECT_EQ(Counted::copies, 0);
    EXPECT_EQ(valuesOf(a).back(), 5);
    a.join(a);
    a.inject(a, 2);
    EXPECT_EQ(a.length(), 6u);
  }
}

TEST(GxList, AWrappedInjectIndexLeavesTheCursorsIndex) {
  List list = listOf({1, 2, 3});
  List more = listOf({8, 9});
  list.inject(more, 4);  // before the element at 1; 4 is above the cursor's index, 1
  EXPECT_EQ(valuesOf(list), (std::vector<int>{1, 8, 9, 2, 3}));
  EXPECT_EQ(list(2).value, 3) << "counted on from the cursor, which is taken to be at 1";
}

TEST(GxList, AssignmentToItselfEmptiesAndComparisonIgnoresCursors) {
  List a = listOf({1, 2, 3});
  List const b = a;
  a.moveTo(2);
  EXPECT_TRUE(a == b);
  List& alias = a;
  a = alias;
  EXPECT_EQ(a.length(), 0u);
  EXPECT_TRUE(a != b);
  EXPECT_EQ(a.find(Counted(1)), -1);
  EXPECT_EQ(b.find(Counted(3)), 2);
  auto const isTwo = [](Counted c, void*) -> int { return c.value == 2; };
  EXPECT_EQ(b.firstThat(isTwo, nullptr)->value, 2);
  EXPECT_EQ(a.firstThat(isTwo, nullptr), nullptr);
}

TEST(GxList, AThrowingCopyLosesNothing) {
  List list = listOf({1, 2, 3});
  int const before = Counted::living;
  Counted const value(9);
  auto const throwing = [&](auto operation) {
    Counted::copies = 0;
    Counted::throwAt = 1;
    EXPECT_THROW(operation(), std::runtime_error);
    Counted::throwAt = -1;
    EXPECT_EQ(valuesOf(list), (std::vector<int>{1, 2, 3}));
  };
  throwing([&] { list.add(value); });
  throwing([&] { list.insert(value, 1); });
  throwing([&] { List copy(list); });
  EXPECT_EQ(Counted::living, before + 1);
}

/// Random operations in step with a plain vector and a cursor index.
TEST(GxList, RandomOperationsAgreeWithAPlainModel) {
  Random random(4);
  {
    List list;
    std::vector<int> model;
    for (int step = 0; step < 20000; ++step) {
      int const n = static_cast<int>(model.size());
      int const at = n == 0 ? 0 : random.whole(0, n - 1);
      switch (random.whole(0, 8)) {
        case 0:
        case 1:
          list.add(Counted(step));
          model.push_back(step);
          break;
        case 2:
          list.insert(Counted(step), at);
          model.insert(model.begin() + at, step);
          break;
        case 3:
          list.remove(at);
          if (n != 0) model.erase(model.begin() + at);
          break;
        case 4: {
          int const to = n == 0 ? 0 : random.whole(0, n - 1);
          int const moved = list.move(at, to);
          ASSERT_EQ(moved, n != 0 && at != to);
          if (moved) {
            int const value = model[static_cast<std::size_t>(at)];
            model.erase(model.begin() + at);
            model.insert(model.begin() + to, value);
          }
          break;
        }
        case 5: {
          List more = listOf({-step, -step - 1});
          list.inject(more, at);
          model.insert(model.begin() + at, {-step, -step - 1});
          break;
        }
        case 6:
          if (n > 40) {
            list.empty();
            model.clear();
          }
          break;
        default:
          if (n != 0) {
            ASSERT_EQ(list(static_cast<unsigned>(at)).value, model[static_cast<std::size_t>(at)]);
          }
      }
      ASSERT_EQ(list.length(), model.size());
      ASSERT_EQ(valuesOf(list), model) << "after step " << step;
    }
  }
  EXPECT_EQ(Counted::living, 0);
}

}  // namespace

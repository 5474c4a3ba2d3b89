#include "tests/support/expect.h"
#include "tests/support/shapes.h"

#include <algorithm>

namespace {

using namespace support;
using List = GxList<int>;
using Values = std::vector<int>;

Values valuesOf(List const& list) {
  Values values;
  list.forEach([](int v, void* out) { static_cast<Values*>(out)->push_back(v); }, &values);
  return values;
}

int const* elementOf(List const& list, int value) {
  return list.firstThat([](int v, void* x) -> int { return v == *static_cast<int*>(x); }, &value);
}

/// A vector that follows the list's rules; indices run from -1, the cursor, to the length.
struct Model {
  Values values;
  int cursor = 0;

  int size() const { return static_cast<int>(values.size()); }
  int at(int index) const { return values.begin()[index]; }

  void splice(Values const& more, int index) {
    int const place = index == -1 ? cursor : index;
    values.insert(values.begin() + place, more.begin(), more.end());
    cursor = (place + static_cast<int>(more.size())) % size();
  }
  void insert(int value, int index) {
    splice({value}, index == -1 && cursor == 0 ? size() : index);  // the first stays the first
    cursor = 0;
  }
  void inject(Values const& more, int index) {
    int const turn = index == -1 ? cursor : 0;
    splice(more, index);
    std::rotate(values.begin(), values.begin() + turn, values.end());
    cursor -= turn;
  }
  void remove(int index) {
    int const victim = index == -1 ? cursor : index;
    values.erase(values.begin() + victim);
    if (victim < cursor) --cursor;
    if (cursor == size()) cursor = 0;
  }
  int move(int from, int to) {
    if (from == to || min(from, to) < 0 || max(from, to) >= size()) return 0;
    int const value = at(from);
    remove(from);
    insert(value, to);
    return 1;
  }
};

TEST(GxList, KeepsInStepWithAVector) {
  Random random(4);
  List list;
  Model model;
  for (int step = 1; step < 20000; ++step) {
    int const n = model.size(), index = random.whole(-1, n), to = random.whole(-1, n);
    Values const added = {-2 * step, -2 * step - 1};
    List more = listOf(added);
    int const* const moved = &more(0);
    switch (n > 40 ? -1 : random.whole(n == 0 ? 4 : 0, 7)) {
      case 0:
        model.cursor = (index + 1) % n;
        ASSERT_EQ(list(static_cast<unsigned>(index + 1)), model.at(model.cursor));
        break;
      case 1: ASSERT_EQ(list.next(), (model.cursor = (model.cursor + 1) % n) != 0); break;
      case 2: ASSERT_EQ(list.prev(), (model.cursor = (model.cursor + n - 1) % n) != 0); break;
      case 3: list.remove(index % n), model.remove(index % n); break;
      case 4: ASSERT_EQ(list.move(index, to), model.move(index, to)); break;
      case 5: list.insert(step, index), model.insert(step, index); break;
      case 6: list.inject(more, index), model.inject(added, index); break;
      case 7:
        list.add(step), list += more;
        model.values.insert(model.values.end(), {step, added[0], added[1]});
        break;
      default: list.empty(), model = Model();
    }
    ASSERT_EQ(valuesOf(list), model.values) << "after step " << step;
    if (list.length() != 0) {
      ASSERT_EQ(list.curElement(), model.at(model.cursor));
      ASSERT_EQ(list.find(list.curElement()), model.cursor);
    }
    ASSERT_EQ(elementOf(list, added[0]), more.length() == 2 ? nullptr : moved) << "not copied";
    ASSERT_TRUE(list.find(0) == -1 && List(list) == list && list != listOf<int>({0}));
  }
}

TEST(GxList, WrapsIndicesAndCountsOnFromTheIndexAsItWasGiven) {
  struct Case {
    void (*edit)(List& list, List& more);
    Values result;
    int atTwo;
  };
  Case const cases[] = {
      {[](List& list, List&) { list.insert(9, 6); }, {1, 9, 2, 3, 4, 5}, 2},
      {[](List& list, List&) { list.insert(9, -2); },
       {1, 2, 3, 4, 9, 5},
       3},  // 2^32 - 2 = 4 mod 5
            // Deliberate: the first was removed, but 5 is not before the cursor.
      {[](List& list, List&) { list.remove(5); }, {2, 3, 4, 5}, 3},
      // Deliberate: the cursor's element moved on, but 6 is beyond the cursor.
      {[](List& list, List& more) { list.inject(more, 6); }, {1, 8, 9, 2, 3, 4, 5}, 3},
      {[](List& list, List&) { list.inject(list, 2), list.join(list); }, {1, 2, 3, 4, 5}, 3},
      {[](List& list, List&) { list = *&list, list.add(1); }, {1}, 1},
  };
  for (Case const& k : cases) {
    List list = listOf<int>({1, 2, 3, 4, 5});
    list.moveTo(2);
    List more = listOf<int>({8, 9});
    k.edit(list, more);
    EXPECT_EQ(valuesOf(list), k.result);
    EXPECT_EQ(list(2), k.atTwo);
  }
}

}  // namespace

#include "tests/support/shapes.h"

#include <algorithm>
#include <iterator>
#include <numeric>
#include <type_traits>

#include "gtest/gtest.h"

namespace {

using List = GxList<int>;

TEST(GxListIterator, VisitsEveryElementInOrderAndLeavesTheCursorAlone) {
  static_assert(std::is_same<std::iterator_traits<List::const_iterator>::iterator_category,
                             std::forward_iterator_tag>::value,
                "standard algorithms take it");
  static_assert(std::is_same<decltype(*std::declval<List const&>().begin()), int const&>::value,
                "a const list hands out const elements");
  List list;
  EXPECT_TRUE(list.begin() == list.end());
  for (int v : {1, 2, 3, 4}) list.add(v);
  list.moveTo(2);
  for (int& v : list) v *= 10;
  List const& same = list;
  EXPECT_EQ(std::accumulate(same.begin(), same.end(), 0), 100);
  List::const_iterator const found = std::find(list.begin(), list.end(), 30);
  EXPECT_EQ(std::distance(same.begin(), found), 2);
  EXPECT_EQ(list.curElement(), 30);
  EXPECT_EQ(list[3], 40) << "the cursor's index is right, too";
}

TEST(GxListIterator, GoesOnThroughElementsThatAreAdded) {
  List list;
  list.add(1);
  int sum = 0;
  for (List::iterator i = list.begin(); i != list.end(); ++i) {
    sum += *i;
    if (*i < 4) list.add(*i + 1);
    if (*i == 2) list.insert(100, 0);
  }
  EXPECT_EQ(sum, 1 + 2 + 3 + 4);
  EXPECT_EQ(list.length(), 5u);
}

}  // namespace

// Indices that wrap, the odd rules of cursors, iterators; see also the operation GxList.
#include "tests/support/expect.h"

#include <iterator>
#include <type_traits>

namespace {

using namespace support;
using List = GxList<double>;

TEST(GxList, WrapsIndicesAndCountsOnFromTheIndexAsItWasGiven) {
  struct Case {
    void (*edit)(List& list, List& more);
    Numbers result;
    int atTwo;
  };
  Case const cases[] = {
      {[](List& list, List&) { list.insert(9, 6); }, {1, 9, 2, 3, 4, 5}, 2},
      // 2^32 - 2 is 4 modulo 5.
      {[](List& list, List&) { list.insert(9, -2); }, {1, 2, 3, 4, 9, 5}, 3},
      // Deliberate: the first was removed, but 5 is not before the cursor.
      {[](List& list, List&) { list.remove(5); }, {2, 3, 4, 5}, 3},
      {[](List& list, List&) { list.remove(-7); }, {2, 3, 4, 5}, 4},
      // Deliberate: the cursor's element moved on, but 6 is beyond the cursor.
      {[](List& list, List& more) { list.inject(more, 6); }, {1, 8, 9, 2, 3, 4, 5}, 3},
      {[](List& list, List&) { list.inject(list, 2), list.join(list); }, {1, 2, 3, 4, 5}, 3},
      {[](List& list, List&) { list = *&list, list.add(1); }, {1}, 1},
  };
  for (Case const& k : cases) {
    List list = listOf<double>({1, 2, 3, 4, 5});
    list.moveTo(2);
    List more = listOf<double>({8, 9});
    k.edit(list, more);
    EXPECT_EQ(valuesOf(list), k.result);
    EXPECT_EQ(list(2), k.atTwo);
  }
}

static_assert(std::is_same<std::iterator_traits<List::const_iterator>::iterator_category,
                           std::forward_iterator_tag>::value,
              "standard algorithms take it");
static_assert(std::is_same<decltype(*std::declval<List const&>().begin()), double const&>::value,
              "a const list hands out const elements");

TEST(GxListIterator, GoesOnThroughElementsThatAreAdded) {
  List list;
  list.add(1);
  double sum = 0;
  for (List::iterator i = list.begin(); i != list.end(); ++i) {
    sum += *i;
    if (*i < 4) list.add(*i + 1);
    if (*i == 2) list.insert(100, 0);
  }
  EXPECT_EQ(sum, 1 + 2 + 3 + 4);
  EXPECT_EQ(list.length(), 5U);
}

}  // namespace

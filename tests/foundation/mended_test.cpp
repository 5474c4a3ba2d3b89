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

TEST(CubicRoots, ALeadingCoefficientCountsHoweverSmallItIs) {
  // Coefficients, then roots, which are right to 1e-15 of themselves. Where only two stand beside
  // a cubic term of 1e-300, the third is -1e600.
  std::vector<std::vector<double>> const cases[] = {
      {{0, 1, 0, -1e16}, {-1e8, 1e8}},
      {{1, 0, 0, -1e16}, {215443.46900318837}},
      {{1e-17, 0, 0, -1}, {464158.8833612779}},
      {{6.508316021523154e-10, 3.6089903150522274e-07, -478302734.3499096, 1.0665221951039508e-07},
       {-857269269.69858053, 2.2298057663281521e-16, 857268715.17874727}},
      {{1e-17, 1, -3, 2}, {-1e17, 1, 2}},
      {{1e-300, 1, -3, 2}, {-1e300, 1, 2}},
      {{1e-300, 1e300, 0, -1e300}, {-1, 1}},
      {{0, 1e-300, 1e300, 1}, {-1e-300}},
      {{0, 1, 1e-300, 0}, {-1e-300, 0}},
      {{0, 1e240, 1, 0}, {-1e-240, 0}},
      {{0, 65536, -1e-310, 0}, {0, 1.52587890625e-315}},
      {{1e99, 0, 0, -8e-249}, {2e-116}},
      {{1, 0, -1e46, 1e30}, {-1e23, 1e-16, 1e23}}};
  for (std::vector<std::vector<double>> const& k : cases) {
    double roots[3];
    int const n = cubicRoots(k[0][0], k[0][1], k[0][2], k[0][3], roots);
    ASSERT_EQ(static_cast<std::size_t>(n), k[1].size()) << "leading coefficient " << k[0][0];
    for (int i = 0; i < n; ++i) {
      double const root = k[1][static_cast<std::size_t>(i)];
      EXPECT_NEAR(roots[i], root, 1e-15 * std::fabs(root)) << "leading coefficient " << k[0][0];
    }
  }
}

TEST(Constructors, ConvertFromWhatTheyHold) {
  Gx2DRotate const quarter = 1.5707963267948966;
  GxRefCount counter = nullptr;
  EXPECT_EQ(counter.value(), 1);
  EXPECT_NEAR((quarter * GxCoord<double>(1.0, 0.0)).yval(), 1.0, 1e-15);
}

}  // namespace

#include "values/curve_list.h"

#include <gtest/gtest.h>

#include "values/filled_store.h"

namespace kolvane::values {
namespace {

TEST(CurveList, NamesCurvesAfterCommandAndField) {
  Store store;
  CurveList curves(store);
  Add(store, "MSV? 1", {1});
  Add(store, "MSV? 2,3", {1, 2});
  Add(store, "", {1});
  curves.Refresh();
  ASSERT_EQ(curves.size(), 4u);
  EXPECT_EQ(curves.Name(0), "MSV? 1");
  EXPECT_EQ(curves.Name(1), "MSV? 2,3 [1]");
  EXPECT_EQ(curves.Name(2), "MSV? 2,3 [2]");
  EXPECT_EQ(curves.Name(3), "(ohne Befehl)");
}

TEST(CurveList, AddsCurvesForLaterRows) {
  Store store;
  CurveList curves(store);
  Add(store, "A?", {1});
  curves.Refresh();
  Add(store, "A?", {1, 2});
  EXPECT_EQ(curves.size(), 1u);
  curves.Refresh();
  EXPECT_EQ(curves.size(), 2u);
  EXPECT_EQ(curves.Name(0), "A? [1]");
}

TEST(CurveList, ShowsTheFirstOnes) {
  Store store;
  CurveList curves(store);
  Add(store, "A?", {1, 2, 3, 4, 5, 6, 7, 8, 9, 10});
  curves.Refresh();
  EXPECT_TRUE(curves.IsShown(CurveList::kFirstShown - 1));
  EXPECT_FALSE(curves.IsShown(CurveList::kFirstShown));
}

// The settings that a list makes before it measures are answered with numbers, too.
TEST(CurveList, ShowsQueriesBeforeOthers) {
  Store store;
  CurveList curves(store);
  for (const char* command : {"A", "B", "C", "D", "E", "F", "G", "H", "I"}) Add(store, command, {0});
  curves.Refresh();
  EXPECT_TRUE(curves.IsShown(7));
  EXPECT_FALSE(curves.IsShown(8));
  curves.SetName(6, "Bereich");
  Add(store, "MSV? 1-3", {1, 2, 3});
  curves.Refresh();
  EXPECT_TRUE(curves.IsShown(4));
  EXPECT_FALSE(curves.IsShown(5));
  EXPECT_TRUE(curves.IsShown(6)) << "the user's own choice";
  EXPECT_FALSE(curves.IsShown(7));
  for (const std::size_t number : {9u, 10u, 11u}) EXPECT_TRUE(curves.IsShown(number)) << number;
}

TEST(CurveList, RemembersWhatWasChosenWhenTheStoreIsCleared) {
  Store store;
  CurveList curves(store);
  Add(store, "A?", {1, 2});
  curves.Refresh();
  curves.SetName(1, "Kraft");
  curves.SetColor(1, 0x123456);
  curves.Show(0, false);
  store.Clear();
  curves.Refresh();
  EXPECT_EQ(curves.size(), 0u);
  Add(store, "B?", {1});
  Add(store, "A?", {1, 2});
  curves.Refresh();
  EXPECT_TRUE(curves.IsShown(0));
  EXPECT_EQ(curves.Color(0), std::nullopt);
  EXPECT_FALSE(curves.IsShown(1));
  EXPECT_EQ(curves.Name(2), "Kraft");
  EXPECT_EQ(curves.Color(2), 0x123456u);
}

TEST(CurveList, RestoresItsOwnName) {
  Store store;
  CurveList curves(store);
  Add(store, "A?", {1});
  curves.Refresh();
  curves.SetName(0, "Kraft");
  EXPECT_EQ(curves.Name(0), "Kraft");
  curves.SetName(0, "");
  EXPECT_EQ(curves.Name(0), "A?");
}

}  // namespace
}  // namespace kolvane::values

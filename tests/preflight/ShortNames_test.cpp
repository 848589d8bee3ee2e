#include "preflight/ShortNames.h"

#include <gtest/gtest.h>

namespace walrim {
namespace {

using Names = std::vector<std::string>;

const Recipient OldReceiver{ProtocolsOf("GPS 12 Software"), LimitsOf("GPS 12 Software"), false};

Waypoint At(std::string_view ident, double lat_deg) {
  Waypoint waypoint;
  waypoint.ident = ident;
  waypoint.lat_deg = lat_deg;
  return waypoint;
}

DataSet Holding(const std::vector<Waypoint>& waypoints) {
  DataSet data;
  for (const Waypoint& waypoint : waypoints)
    EXPECT_EQ(data.Add(waypoint), AddResult::Stored);
  return data;
}

Names ChosenFor(const std::vector<Waypoint>& waypoints, const std::vector<Waypoint>& before = {},
                const NameLookup& lookup = nullptr) {
  return ChooseShortNames(Holding(waypoints), Holding(before), OldReceiver, lookup).waypoints;
}

TEST(ShortNames, OneThatFitsStays) {
  EXPECT_EQ(ChosenFor({At("TAKAO", 35), At("takao2", 36)}), (Names{"TAKAO", "TAKAO2"}));
}

TEST(ShortNames, LongAndJapaneseOnesGetSixCapitals) {
  EXPECT_EQ(ChosenFor({At("LONGNAME", 35), At("きたほだか", 36), At("ﾄｻﾞﾝｸﾞﾁ", 37), At("A B-C", 38)}),
            (Names{"LONGNA", "KITAHO", "TOZANG", "ABC"}));
}

TEST(ShortNames, OnesThatWouldBeTheSameGetNumbers) {
  EXPECT_EQ(ChosenFor({At("LONGNAME1", 35), At("LONGNAME2", 36), At("CAMP", 37), At("CAMP", 38), At("camp", 37)}),
            (Names{"LONGNA", "LONGN2", "CAMP", "CAMP2", "CAMP3"}));
}

TEST(ShortNames, OneWithoutAReadableLetterIsNumberedToo) {
  EXPECT_EQ(ChosenFor({At("高尾", 35), At("陣馬", 36), At("", 37)}), (Names{"WPT", "WPT2", "WPT3"}));
}

TEST(ShortNames, WhatTheReceiverHoldsElsewhereIsNotTaken) {
  EXPECT_EQ(ChosenFor({At("TAKAO", 35), At("JINBA", 36)}, {At("TAKAO", 35), At("JINBA", 40)}),
            (Names{"TAKAO", "JINBA2"}));
}

TEST(ShortNames, WhatIsSentAgainKeepsTheNamesThatItHasThere) {
  EXPECT_EQ(ChosenFor({At("きたほだか", 35), At("北岳", 36), At("南岳", 37)},
                      {At("KITAHO", 35), At("DAKE", 36), At("DAKE2", 37)}),
            (Names{"KITAHO", "DAKE", "DAKE2"}));
}

TEST(ShortNames, TheUsersOwnComesFirst) {
  const NameLookup lookup = [](std::string_view name) {
    return name == "北穂高岳" ? std::string("KITAHO") : std::string();
  };
  EXPECT_EQ(ChosenFor({At("北穂高岳", 35), At("南岳", 36)}, {}, lookup), (Names{"KITAHO", "DAKE"}));
}

TEST(ShortNames, ARoutesPointIsCalledAsTheWaypointAtItsPlace) {
  DataSet data = Holding({At("きたほだか", 35)});
  Route route;
  route.points = {{At("きたほだか", 35), {}}, {At("きたほだか", 36), {}}, {At("GOAL", 37), {}}};
  ASSERT_EQ(data.Begin(route), AddResult::Stored);
  EXPECT_EQ(ChooseShortNames(data, {}, OldReceiver, nullptr).route_points,
            (std::vector<Names>{{"KITAHO", "KITAH2", "GOAL"}}));
}

}  // namespace
}  // namespace walrim

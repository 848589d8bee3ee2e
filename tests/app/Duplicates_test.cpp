// Records that were held already.
#include "app/Duplicates.h"

#include <gtest/gtest.h>

#include "app/Deed.h"

namespace walrim {
namespace {

Waypoint Named(const char* ident, double lat_deg = 35) {
  Waypoint waypoint;
  waypoint.ident = ident;
  waypoint.lat_deg = lat_deg;
  waypoint.lon_deg = 139;
  return waypoint;
}

using Indices = std::vector<std::size_t>;

TEST(Duplicates, AreThoseBehindWhatWasHeldThatStandInFrontOfThemToo) {
  DataSet data;
  for (const char* ident : {"A", "B", "A", "C", "C"})
    ASSERT_EQ(data.Add(Named(ident)), AddResult::Stored);
  const RecordIndices found = DuplicatesBehind(data, {2, 0, 0});
  EXPECT_EQ(found[0], (Indices{2, 4})) << "also of the same import";
  EXPECT_EQ(CountOf(found), 2U);
  EXPECT_EQ(CountOf(DuplicatesBehind(data, {5, 0, 0})), 0U) << "what was held stays";
}

TEST(Duplicates, ARecordThatDiffersInAnythingATextTellsIsNone) {
  const auto is_duplicate = [](Waypoint other) {
    DataSet data;
    EXPECT_EQ(data.Add(Named("A")), AddResult::Stored);
    EXPECT_EQ(data.Add(std::move(other)), AddResult::Stored);
    return CountOf(DuplicatesBehind(data, {1, 0, 0})) == 1;
  };
  EXPECT_TRUE(is_duplicate(Named("A")));
  EXPECT_TRUE(is_duplicate(Named("A  "))) << "a receiver's names are padded";
  Waypoint unchecked = Named("A");
  unchecked.chosen = false;
  EXPECT_TRUE(is_duplicate(unchecked));
  EXPECT_FALSE(is_duplicate(Named("B")));
  EXPECT_FALSE(is_duplicate(Named("A", 35.001)));
  Waypoint other = Named("A");
  other.cmnt = "TEA";
  EXPECT_FALSE(is_duplicate(other));
  other = Named("A");
  other.smbl = 8196;
  EXPECT_FALSE(is_duplicate(other));
}

TEST(Duplicates, RoutesAndLogsAreComparedPointByPoint) {
  DataSet data;
  for (const double lat_deg : {35.0, 35.0, 36.0}) {
    Route route;
    route.cmnt = "WALK";
    ASSERT_EQ(data.Begin(route), AddResult::Stored);
    ASSERT_EQ(data.Add(RoutePoint{Named("A", lat_deg), {}}), AddResult::Stored);
    TrackLog log;
    log.trk_ident = "LOG";
    ASSERT_EQ(data.Begin(log), AddResult::Stored);
    TrackPoint point;
    point.lat_deg = lat_deg;
    point.time = 1000;
    ASSERT_EQ(data.Add(point), AddResult::Stored);
  }
  const RecordIndices found = DuplicatesBehind(data, {0, 1, 1});
  EXPECT_EQ(found[1], Indices{1});
  EXPECT_EQ(found[2], Indices{1});
}

TEST(Deeds, ImportsOneBehindTheOtherAreOne) {
  Deeds deeds;
  deeds.Add({Deed::Kind::Imported, 2, {}, {true, false, false}, {{{3}, {}, {}}}});
  deeds.Add({Deed::Kind::Imported, 1, {}, {false, true, false}, {{{5}, {0}, {}}}});
  deeds.Add({Deed::Kind::Copied, 9, {}, {}, {}});
  ASSERT_EQ(deeds.All().size(), 2U);
  const Deed& sum = deeds.All().front();
  EXPECT_EQ(sum.records, 3U);
  EXPECT_EQ(sum.kinds, (DataKinds{true, true, false}));
  EXPECT_EQ(sum.already_held[0], (Indices{3, 5}));
  EXPECT_EQ(sum.already_held[1], Indices{0});
}

}  // namespace
}  // namespace walrim

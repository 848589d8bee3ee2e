#include <gtest/gtest.h>

#include "geo/GeneralLatLon.h"
#include "support.h"

namespace walrim {
namespace {

class WptReaderTest : public ::testing::Test {
 protected:
  ImportSummary ReadLines(const std::vector<std::string>& lines, int utc_offset_hours = 9) {
    return ReadWpt(data_, Lines(lines), utc_offset_hours);
  }

  const std::unique_ptr<InternalData> owner_ = std::make_unique<InternalData>();
  InternalData& data_ = *owner_;
};

TEST_F(WptReaderTest, AWaypointIsStoredWithTheDefaultsOfARecordWithoutMore) {
  const ImportSummary summary = ReadLines({"WP,D,takao, 35.6252, 139.2437,11/15/2002,14:05:12,summit"});
  EXPECT_EQ(summary.stored[IndexOf(DataKind::Waypoint)], 1);
  const D108Entry& entry = data_.d108[1];
  EXPECT_EQ(entry.ident, "TAKAO");
  EXPECT_EQ(entry.cmnt, "SUMMIT");
  EXPECT_EQ(entry.lat_deg, 35.6252);
  EXPECT_EQ(entry.lon_deg, 139.2437);
  EXPECT_EQ(entry.color, 255);
  EXPECT_EQ(entry.smbl, 18);
  EXPECT_EQ(entry.alt_m, UnknownMetres);
}

TEST_F(WptReaderTest, WithoutADatumLinePositionsAreOnWgs84) {
  ReadLines({"WP,DMS,A,34.413025,139.150000,d,t,c"});
  EXPECT_NEAR(data_.d108[1].lat_deg, 34.6917361111111, 1e-12);
}

TEST_F(WptReaderTest, ATextOnTokyoComesOutRightInWgs84) {
  const GeoPoint wgs = TokyoToWgs({35.5, 139.25, 0});
  for (const std::string& datum :
       {TokyoDatum, ScriptDatum, std::string("Tokyo mean,Bessel 1841"), std::string("datum,tokyo")}) {
    data_.Clear(DataKind::Waypoint);
    ReadLines({datum, "WP,D,A,35.5,139.25,d,t,c"});
    EXPECT_NEAR(data_.d108[1].lat_deg, wgs.latitude_deg, 1e-12) << datum;
    EXPECT_NEAR(data_.d108[1].lon_deg, wgs.longitude_deg, 1e-12) << datum;
  }
}

TEST_F(WptReaderTest, PositionsOnAnUnknownDatumAreSkipped) {
  const ImportSummary summary =
      ReadLines({"Datum,NAD27,Clarke", "WP,D,A,35.5,139.25,d,t,c", Wgs84Datum, "WP,D,B,35.5,139.25,d,t,c"});
  EXPECT_EQ(summary.skipped, 1);
  EXPECT_EQ(summary.first_skipped_line, 2);
  EXPECT_EQ(data_.WaypointCount, 1);
  EXPECT_EQ(data_.d108[1].ident, "B");
}

TEST_F(WptReaderTest, ARouteHasItsNumberAndAsManyPointsAsFollow) {
  ReadLines({"RN,7,ridge", "RP,D,A,35.5,139.25,d,t,first", "RP,D,B,35.5,139.5,d,t,last", "RN,9,empty"});
  EXPECT_EQ(data_.mirrored_routes.RouteCount, 2);
  EXPECT_EQ(data_.mirrored_routes.RoutePointCount[1], 2);
  EXPECT_EQ(data_.mirrored_routes.RoutePointCount[2], 0);
  EXPECT_EQ(data_.d201[1].nmbr, 7);
  EXPECT_EQ(data_.d201[1].cmnt.Bare(), "RIDGE");
  EXPECT_EQ(data_.d108[2100].ident, "A");
  EXPECT_EQ(data_.d108[2101].cmnt, "LAST");
}

TEST_F(WptReaderTest, ALogBeginsAtTheFirstPointAndAtEachWithTheFlag) {
  ReadLines({"TP,D,35.5,139.25,11/16/2002,09:00:00,0", "TP,D,35.5,139.25,11/16/2002,09:00:30,0",
             "TP,D,35.5,139.25,11/16/2002,10:00:00,1", "TP,D,35.5,139.25,11/16/2002,10:00:30,2"});
  EXPECT_EQ(data_.mirrored_tracks.TrackCount, 2);
  EXPECT_EQ(data_.mirrored_tracks.TrackPointCount[1], 2);
  EXPECT_EQ(data_.mirrored_tracks.TrackPointCount[2], 2);
  EXPECT_TRUE(data_.d310[1].dspl);
  EXPECT_EQ(data_.d310[1].color, 255);
  EXPECT_EQ(data_.d310[1].trk_ident, "");
  EXPECT_EQ(data_.track_points[0].time, 406339200);
  EXPECT_FALSE(data_.track_points[0].new_trk);
  EXPECT_TRUE(data_.track_points[2].new_trk);
  EXPECT_FALSE(data_.track_points[3].new_trk);
}

TEST_F(WptReaderTest, ANewReaderBeginsANewLog) {
  ReadLines({"TP,D,35.5,139.25,11/16/2002,09:00:00,0"});
  ReadLines({"TP,D,35.5,139.25,11/16/2002,09:00:00,0"});
  EXPECT_EQ(data_.mirrored_tracks.TrackCount, 2);
}

TEST_F(WptReaderTest, TheEpochIsNoTimeInAnyZone) {
  const ImportSummary summary =
      ReadLines({"TP,D,35.5,139.25,12/31/1989,00:00:00,1", "TP,D,35.5,139.25,12/30/1989,19:00:00,0"}, -5);
  EXPECT_EQ(data_.track_points[0].time, 0);
  EXPECT_EQ(data_.track_points[1].time, 0);
  EXPECT_EQ(summary.unread_times, 0);
}

TEST_F(WptReaderTest, ATimeThatIsNoneIsToldByItsLine) {
  const ImportSummary summary = ReadLines({"TP,D,35.5,139.25,11/16/2002,09:00:00,1", "TP,D,35.5,139.25,soon,now,0"});
  EXPECT_EQ(summary.track_points, 2);
  EXPECT_EQ(summary.unread_times, 1);
  EXPECT_EQ(summary.first_unread_time_line, 2);
}

TEST_F(WptReaderTest, BadPositionsAreSkippedByTheirLine) {
  const ImportSummary summary = ReadLines({"", "WP,D,A,x,139.25,d,t,c", "WP,XX,A,35,139,d,t,c", "WP,D,A,95,139,d,t,c",
                                           "WP,MPS,A,1/2/3/4,139,d,t,c", "WP", "WP,D,A,35,139"});
  EXPECT_EQ(summary.skipped, 5);
  EXPECT_EQ(summary.first_skipped_line, 2);
  EXPECT_EQ(data_.WaypointCount, 1);
}

TEST_F(WptReaderTest, UnknownCommandsAreToldOnceALineAndTheFirstTwentyKept) {
  WptReader reader(data_, 9);
  std::vector<std::string> lines;
  for (int i = 1; i <= 25; ++i)
    lines.emplace_back("X" + std::to_string(i) + ",a,b,WP");
  lines.push_back("WP,D,A,35,139,d,t,c");
  reader.ReadText(Lines(lines));
  EXPECT_EQ(reader.Messages().count, 25);
  ASSERT_EQ(reader.Messages().kept.size(), 20U);
  EXPECT_EQ(reader.Messages().kept[0], "command [X1] is not suppoted");
  EXPECT_EQ(reader.Messages().kept[19], "command [X20] is not suppoted");
  EXPECT_EQ(data_.WaypointCount, 1);
}

TEST_F(WptReaderTest, ACommentWithACommaLosesItsTailAndIsCounted) {
  const ImportSummary summary = ReadLines({"RN,1,a", "RP,D,A,35,139,d,t,hut, closed", "RP,D,B,35,139,d,t,x,y"});
  EXPECT_EQ(data_.d108[2100].cmnt, "HUT");
  EXPECT_EQ(summary.overfull, 2);
  EXPECT_EQ(summary.first_overfull_line, 2);
}

TEST_F(WptReaderTest, PointsOfARouteThatDidNotFitAreNotGivenToAnother) {
  std::vector<std::string> lines;
  for (int i = 1; i <= 80; ++i)
    lines.emplace_back("RN," + std::to_string(i) + ",r");
  lines.push_back("RP,D,A,35,139,d,t,c");
  const ImportSummary summary = ReadLines(lines);
  EXPECT_EQ(data_.mirrored_routes.RouteCount, 79);
  EXPECT_EQ(data_.mirrored_routes.RoutePointCount[79], 0);
  EXPECT_EQ(summary.skipped, 2);
}

TEST_F(WptReaderTest, StoredLinesMayComeOneByOne) {
  WptReader reader(data_, 9);
  reader.SetLineNumber(41);
  WptLine line;
  line.command = "WP";
  reader.StoreLine(line);
  EXPECT_EQ(reader.Summary().first_skipped_line, 41);
}

}  // namespace
}  // namespace walrim

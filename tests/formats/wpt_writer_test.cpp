#include <gtest/gtest.h>

#include "geo/GeneralLatLon.h"
#include "support.h"

namespace walrim {
namespace {

class WptWriterTest : public ::testing::Test {
 protected:
  const std::unique_ptr<InternalData> owner_ = std::make_unique<InternalData>();
  InternalData& data_ = *owner_;
};

TEST_F(WptWriterTest, AnEmptyDataSetGivesNoText) {
  EXPECT_EQ(WrittenWpt(data_), "");
  EXPECT_EQ(WrittenWpt(data_, Settings("D", "Tokyo")), "");
}

TEST_F(WptWriterTest, LogsWithoutPointsGiveNoText) {
  AddLog(data_, {});
  EXPECT_EQ(WrittenWpt(data_), "");
}

TEST_F(WptWriterTest, AllKindsInTheirOrder) {
  (void)data_.AddWaypoint(Waypoint("takao", "35.6252", "139.2437", "summit"));
  AddRoute(data_, "7", "ridge", {Waypoint("A", "35.5", "139.25", "first"), Waypoint("B", "35.75", "139.5", "last")});
  AddLog(data_, {TrackedPoint(35.5, 139.25, 406339200, true), TrackedPoint(35.5, 139.5, 406339230, false)});
  EXPECT_EQ(WrittenWpt(data_),
            Lines({Wgs84Datum, "WP,D,TAKAO,35.6252,139.2437,11/15/2002,14:05:12,SUMMIT", "RN,7,RIDGE",
                   "RP,D,A,35.5,139.25,11/15/2002,14:05:12,FIRST", "RP,D,B,35.75,139.5,11/15/2002,14:05:12,LAST",
                   "TP,D,35.5,139.25,11/16/2002,09:00:00,1", "TP,D,35.5,139.5,11/16/2002,09:00:30,0"}));
}

TEST_F(WptWriterTest, OnlyTheWantedKindsAreWritten) {
  (void)data_.AddWaypoint(Waypoint("A", "35.5", "139.25", "c"));
  AddRoute(data_, "7", "ridge", {});
  EXPECT_EQ(BuildWptText(data_, {false, true, false}, Settings()), Lines({Wgs84Datum, "RN,7,RIDGE"}));
  EXPECT_EQ(BuildWptText(data_, {false, false, true}, Settings()), "");
}

TEST_F(WptWriterTest, AnEmptyCommentGetsTheCreationStamp) {
  (void)data_.AddWaypoint(Waypoint("A", "35.5", "139.25", ""));
  (void)data_.AddWaypoint(Waypoint("B", "35.5", "139.25", "   "));
  WptWriter writer(data_, Settings());
  EXPECT_EQ(writer.FormatLine("WPT", 1), "WP,D,A,35.5,139.25,11/15/2002,14:05:12,CRTD 14:05 15-Nov-02");
  EXPECT_EQ(writer.FormatLine("WPT", 2), "WP,D,B,35.5,139.25,11/15/2002,14:05:12,CRTD 14:05 15-Nov-02");
}

TEST_F(WptWriterTest, TextsLoseTheBlanksAroundThemAndCannotEndALine) {
  (void)data_.AddWaypoint(Waypoint(" A1 ", "35.5", "139.25", "  two\r\nlines\t  "));
  WptWriter writer(data_, Settings());
  EXPECT_EQ(writer.FormatLine("WPT", 1), "WP,D,A1,35.5,139.25,11/15/2002,14:05:12,TWO  LINES");
}

TEST_F(WptWriterTest, CommasAndQuotesAreWrittenAsTheyAre) {
  (void)data_.AddWaypoint(Waypoint("A", "35.5", "139.25", "hut, \"closed\""));
  EXPECT_EQ(WptWriter(data_, Settings()).FormatLine("WPT", 1),
            "WP,D,A,35.5,139.25,11/15/2002,14:05:12,HUT, \"CLOSED\"");
}

TEST_F(WptWriterTest, TheTextForAScriptIsAlwaysInDms) {
  (void)data_.AddWaypoint(Waypoint("A", "34.6917361111111", "139.25", "c"));
  AddLog(data_, {TrackedPoint(34.5, 139.25, 406339200, true)});
  const std::string lines = Lines({Wgs84Datum, "WP,DMS,A,34.413025,139.150000,11/15/2002,14:05:12,C",
                                   "TP,DMS,34.300000,139.150000,11/16/2002,09:00:00,1"});
  EXPECT_EQ(WrittenWpt(data_, Settings("D", "WGS84", 9, "MPS")), lines);
  EXPECT_EQ(WrittenWpt(data_, Settings("DMS")), lines);
}

TEST_F(WptWriterTest, PositionsAreOnTheExportDatum) {
  (void)data_.AddWaypoint(Waypoint("A", "35.6252", "139.2437", "c"));
  const GeoPoint tokyo = WgsToTokyo({35.6252, 139.2437, 0});
  const std::string text = WrittenWpt(data_, Settings("D", "Tokyo"));
  WptLineReader lines(text);
  EXPECT_EQ(lines.Read().fields[0], TokyoDatum.substr(6));
  const WptLine line = lines.Read();
  EXPECT_NEAR(std::stod(std::string(line.fields[2])), tokyo.latitude_deg, 1e-12);
  EXPECT_NEAR(std::stod(std::string(line.fields[3])), tokyo.longitude_deg, 1e-12);
  EXPECT_GT(std::abs(tokyo.latitude_deg - 35.6252), 0.002);
}

TEST_F(WptWriterTest, AnUnknownTimeIsTheEpochInTheZone) {
  AddLog(data_, {TrackedPoint(35.5, 139.25, 4294967290.0, true), TrackedPoint(35.5, 139.25, 4294967295.0, false)});
  EXPECT_EQ(WptWriter(data_, Settings()).FormatLine("TRP", 1, 0), "TP,D,35.5,139.25,12/31/1989,09:00:00,1");
  EXPECT_EQ(WptWriter(data_, Settings("D", "WGS84", -5)).FormatLine("TRP", 1, 1),
            "TP,D,35.5,139.25,12/30/1989,19:00:00,0");
}

TEST_F(WptWriterTest, TrackHeadersAndUnknownTagsGiveNothing) {
  AddLog(data_, {TrackedPoint(35.5, 139.25, 0, true)});
  EXPECT_EQ(WptWriter(data_, Settings()).FormatLine("TRH", 1), "");
  EXPECT_EQ(WptWriter(data_, Settings()).FormatLine("XYZ", 1), "");
}

TEST_F(WptWriterTest, PointsBeforeTheFirstLogAreWrittenFirst) {
  data_.track_points.at(0) = TrackedPoint(35.5, 139.25, 406339200, false);
  data_.tracks.TrackPointCount[0] = 1;
  data_.tracks.TrackStart[1] = 1;
  data_.MirrorTrackCounters();
  EXPECT_EQ(WrittenWpt(data_), Lines({Wgs84Datum, "TP,D,35.5,139.25,11/16/2002,09:00:00,0"}));
}

TEST_F(WptWriterTest, RoutesAndLogsAreCountedByTheMirroredCounters) {
  AddRoute(data_, "1", "r", {Waypoint("A", "35.5", "139.25", "c")});
  data_.routes.RouteCount = 0;
  EXPECT_EQ(WrittenWpt(data_), Lines({Wgs84Datum, "RN,1,R", "RP,D,A,35.5,139.25,11/15/2002,14:05:12,C"}));
}

TEST_F(WptWriterTest, ProgressIsToldBeforeEachRecord) {
  (void)data_.AddWaypoint(Waypoint("A", "35.5", "139.25", "c"));
  (void)data_.AddWaypoint(Waypoint("B", "35.5", "139.25", "c"));
  AddRoute(data_, "1", "r", {});
  AddLog(data_, {TrackedPoint(35.5, 139.25, 0, true)});
  std::string told;
  (void)BuildWptText(data_, EveryKind, Settings(), [&](DataKind kind, int number, int count) {
    told += std::string(DataKindName(kind)) + std::to_string(number) + "/" + std::to_string(count) + " ";
  });
  EXPECT_EQ(told, "Waypoint1/2 Waypoint2/2 Route1/1 TrackLog1/1 ");
}

}  // namespace
}  // namespace walrim

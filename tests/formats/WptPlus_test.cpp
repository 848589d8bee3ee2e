#include "formats/WptPlus.h"

#include <cmath>
#include <gtest/gtest.h>

#include "Support.h"
#include "formats/Messages.h"
#include "formats/WptLine.h"

namespace walrim {
namespace {

class WptReaderTest : public ::testing::Test {
 protected:
  ImportResult ReadLines(const std::vector<std::string>& lines, int utc_offset_hours = 9) {
    return Read(FormatId::WptPlus, data_, Lines(lines), utc_offset_hours);
  }

  DataSet data_;
};

TEST_F(WptReaderTest, AWaypointIsStoredWithTheDefaultsOfARecordWithoutMore) {
  const ImportResult result = ReadLines({"WP,D,takao, 35.6252, 139.2437,11/15/2002,14:05:12,summit"});
  EXPECT_EQ(result.stored[IndexOf(DataKind::Waypoint)], 1);
  ASSERT_EQ(data_.Waypoints().size(), 1U);
  EXPECT_EQ(data_.Waypoints()[0], Named("TAKAO", 35.6252, 139.2437, "SUMMIT"));
}

TEST_F(WptReaderTest, QuotesAndEqualsSignsAreNoPartOfATextAsInTheStandardFile) {
  ReadLines({"WP,D,=A=1,35.5,135.25,d,t,=\"x=y\"", "RN,=\"7\",a=b"});
  EXPECT_EQ(data_.Waypoints()[0].ident, "A1");
  EXPECT_EQ(data_.Waypoints()[0].cmnt, "X=Y");
  EXPECT_EQ(data_.Routes()[0].nmbr, 7);
  EXPECT_EQ(data_.Routes()[0].cmnt, "AB");
}

TEST_F(WptReaderTest, WithoutADatumLinePositionsAreOnWgs84) {
  ReadLines({"WP,DMS,A,34.413025,139.150000,d,t,c"});
  EXPECT_NEAR(data_.Waypoints()[0].lat_deg, 34.6917361111111, 1e-12);
}

TEST_F(WptReaderTest, ATextOnTokyoComesOutRightInWgs84) {
  const GeoPoint wgs = ConvertDatum({35.5, 139.25, 0}, Datum::Tokyo, Datum::Wgs84);
  for (const std::string& datum : {TokyoDatum, std::string("Datum,Tokyo mean ,Bessel 1841"),
                                   std::string("Tokyo mean,Bessel 1841"), std::string("datum,tokyo")}) {
    data_.Clear(DataKind::Waypoint);
    ReadLines({datum, "WP,D,A,35.5,139.25,d,t,c"});
    EXPECT_NEAR(data_.Waypoints()[0].lat_deg, wgs.latitude_deg, 1e-12) << datum;
    EXPECT_NEAR(data_.Waypoints()[0].lon_deg, wgs.longitude_deg, 1e-12) << datum;
  }
}

TEST_F(WptReaderTest, PositionsOnAnUnknownDatumAreSkipped) {
  const ImportResult result =
      ReadLines({"Datum,NAD27,Clarke", "WP,D,A,35.5,139.25,d,t,c", Wgs84Datum, "WP,D,B,35.5,139.25,d,t,c"});
  EXPECT_EQ(result.skipped.count, 1);
  EXPECT_EQ(result.skipped.first_line, 2);
  EXPECT_EQ(result.skipped.first_why, format_messages::UnknownDatum);
  ASSERT_EQ(data_.Waypoints().size(), 1U);
  EXPECT_EQ(data_.Waypoints()[0].ident, "B");
}

TEST_F(WptReaderTest, ARouteHasItsNumberAndAsManyPointsAsFollow) {
  ReadLines({"RN,7,ridge", "RP,D,A,35.5,139.25,d,t,first", "RP,D,B,35.5,139.5,d,t,last", "RN,9,empty"});
  ASSERT_EQ(data_.Routes().size(), 2U);
  EXPECT_EQ(data_.Routes()[0],
            Numbered(7, "RIDGE", {Named("A", 35.5, 139.25, "FIRST"), Named("B", 35.5, 139.5, "LAST")}));
  EXPECT_EQ(data_.Routes()[1], Numbered(9, "EMPTY"));
}

TEST_F(WptReaderTest, ALogBeginsAtTheFirstPointAndAtEachWithTheFlag) {
  const ImportResult result =
      ReadLines({"TP,D,35.5,139.25,11/16/2002,09:00:00,0", "TP,D,35.5,139.25,11/16/2002,09:00:30,0",
                 "TP,D,35.5,139.25,11/16/2002,10:00:00,1", "TP,D,35.5,139.25,11/16/2002,10:00:30,2"});
  EXPECT_EQ(result.stored[IndexOf(DataKind::TrackLog)], 2);
  EXPECT_EQ(result.track_points, 4);
  ASSERT_EQ(data_.Logs().size(), 2U);
  EXPECT_TRUE(data_.Logs()[0].dspl);
  EXPECT_EQ(data_.Logs()[0].color, 255);
  EXPECT_EQ(data_.Logs()[0].trk_ident, "");
  EXPECT_EQ(data_.Logs()[0].points,
            (std::vector{At(35.5, 139.25, 406339200, false), At(35.5, 139.25, 406339230, false)}));
  EXPECT_EQ(data_.Logs()[1].points,
            (std::vector{At(35.5, 139.25, 406342800, true), At(35.5, 139.25, 406342830, false)}));
}

TEST_F(WptReaderTest, ANewReaderBeginsANewLog) {
  ReadLines({"TP,D,35.5,139.25,11/16/2002,09:00:00,0"});
  ReadLines({"TP,D,35.5,139.25,11/16/2002,09:00:00,0"});
  EXPECT_EQ(data_.Logs().size(), 2U);
}

TEST_F(WptReaderTest, TheEpochIsNoTimeInAnyZone) {
  const ImportResult result =
      ReadLines({"TP,D,35.5,139.25,12/31/1989,00:00:00,1", "TP,D,35.5,139.25,12/30/1989,19:00:00,0"}, -5);
  EXPECT_EQ(data_.Logs()[0].points[0].time, std::nullopt);
  EXPECT_EQ(data_.Logs()[0].points[1].time, std::nullopt);
  EXPECT_EQ(result.unread_time.count, 0);
}

TEST_F(WptReaderTest, ATimeThatIsNoneIsToldByItsLine) {
  const ImportResult result = ReadLines({"TP,D,35.5,139.25,11/16/2002,09:00:00,1", "TP,D,35.5,139.25,soon,now,0"});
  EXPECT_EQ(result.track_points, 2);
  EXPECT_EQ(result.unread_time.count, 1);
  EXPECT_EQ(result.unread_time.first_line, 2);
}

TEST_F(WptReaderTest, BadPositionsAreSkippedByTheirLine) {
  const ImportResult result = ReadLines({"", "WP,D,A,x,139.25,d,t,c", "WP,XX,A,35,139,d,t,c", "WP,D,A,95,139,d,t,c",
                                         "WP,MPS,A,1/2/3/4,139,d,t,c", "WP", "WP,D,A,35,139"});
  EXPECT_EQ(result.skipped.count, 5);
  EXPECT_EQ(result.skipped.first_line, 2);
  EXPECT_EQ(data_.Waypoints().size(), 1U);
}

TEST_F(WptReaderTest, UnknownCommandsAreToldOnceALineAndTheFirstTwentyKept) {
  std::vector<std::string> lines;
  for (int i = 1; i <= 25; ++i)
    lines.emplace_back("X" + std::to_string(i) + ",a,b,WP");
  lines.push_back("WP,D,A,35,139,d,t,c");
  const ImportResult result = ReadLines(lines);
  EXPECT_EQ(result.messages.count, 25);
  ASSERT_EQ(result.messages.kept.size(), 20U);
  EXPECT_EQ(result.messages.kept[0], format_messages::UnknownCommand("X1"));
  EXPECT_EQ(result.messages.kept[19], format_messages::UnknownCommand("X20"));
  EXPECT_EQ(data_.Waypoints().size(), 1U);
}

TEST_F(WptReaderTest, ACommentWithACommaLosesItsTailAndIsCounted) {
  const ImportResult result = ReadLines({"RN,1,a", "RP,D,A,35,139,d,t,hut, closed", "RP,D,B,35,139,d,t,x,y"});
  EXPECT_EQ(data_.Routes()[0].points[0].waypoint.cmnt, "HUT");
  EXPECT_EQ(result.overfull.count, 2);
  EXPECT_EQ(result.overfull.first_line, 2);
}

TEST_F(WptReaderTest, PointsOfARouteThatDidNotFitAreNotGivenToAnother) {
  std::vector<std::string> lines;
  for (int i = 1; i <= 80; ++i)
    lines.emplace_back("RN," + std::to_string(i) + ",r");
  lines.push_back("RP,D,A,35,139,d,t,c");
  const ImportResult result = ReadLines(lines);
  ASSERT_EQ(data_.Routes().size(), 79U);
  EXPECT_TRUE(data_.Routes()[78].points.empty());
  EXPECT_EQ(result.skipped.count, 2);
  EXPECT_EQ(result.skipped.first_why, format_messages::StoreFull);
}

TEST_F(WptReaderTest, EveryLineEndIsOne) {
  const ImportResult result =
      Read(FormatId::WptPlus, data_, "RN,1,a\r\nRN,2,b\nRN,3,c\rRN,4,d\n\r\n\rRN,5,\"e\nWP,D,A,x,1");
  ASSERT_EQ(data_.Routes().size(), 5U);
  EXPECT_EQ(data_.Routes()[4].cmnt, "E");
  EXPECT_EQ(result.skipped.first_line, 8);
}

class WptWriterTest : public ::testing::Test {
 protected:
  /// The line of the data set's only record.
  std::string OnlyLine(const WriteSettings& settings = Settings()) {
    const std::string text = Written(FormatId::WptPlus, data_, settings);
    const std::size_t first = text.find("\r\n") + 2;
    return text.substr(first, text.size() - first - 2);
  }

  DataSet data_;
};

TEST_F(WptWriterTest, AnEmptyDataSetGivesNoText) {
  EXPECT_EQ(Written(FormatId::WptPlus, data_), "");
  AddLog(data_, {});
  EXPECT_EQ(Written(FormatId::WptPlus, data_), "");
}

TEST_F(WptWriterTest, AllKindsInTheirOrder) {
  (void)data_.Add(Named("TAKAO", 35.6252, 139.2437, "SUMMIT"));
  (void)data_.Begin(Numbered(7, "RIDGE", {Named("A", 35.5, 139.25, "FIRST"), Named("B", 35.75, 139.5, "LAST")}));
  AddLog(data_, {At(35.5, 139.25, 406339200, true), At(35.5, 139.5, 406339230)});
  EXPECT_EQ(Written(FormatId::WptPlus, data_),
            Lines({Wgs84Datum, "WP,D,TAKAO,35.6252,139.2437,11/15/2002,14:05:12,SUMMIT", "RN,7,RIDGE",
                   "RP,D,A,35.5,139.25,11/15/2002,14:05:12,FIRST", "RP,D,B,35.75,139.5,11/15/2002,14:05:12,LAST",
                   "TP,D,35.5,139.25,11/16/2002,09:00:00,1", "TP,D,35.5,139.5,11/16/2002,09:00:30,0"}));
}

TEST_F(WptWriterTest, OnlyTheWantedKindsAreWritten) {
  (void)data_.Add(Named("A"));
  (void)data_.Begin(Numbered(7, "RIDGE"));
  WriteSettings settings = Settings();
  settings.kinds = {false, true, false};
  EXPECT_EQ(Written(FormatId::WptPlus, data_, settings), Lines({Wgs84Datum, "RN,7,RIDGE"}));
  settings.kinds = {false, false, true};
  EXPECT_EQ(Written(FormatId::WptPlus, data_, settings), "");
}

TEST_F(WptWriterTest, AnEmptyCommentGetsTheCreationStamp) {
  for (const std::string& comment : {std::string(), std::string("   "), std::string(2, '\0')}) {
    data_.Clear(DataKind::Waypoint);
    (void)data_.Add(Named("A", 35.5, 139.25, comment));
    EXPECT_EQ(OnlyLine(), "WP,D,A,35.5,139.25,11/15/2002,14:05:12,CRTD 14:05 15-Nov-02");
  }
}

TEST_F(WptWriterTest, TextsLoseTheBlanksAndZerosAroundThemAndCannotEndALine) {
  (void)data_.Add(Named(std::string(" A1\0 ", 5), 35.5, 139.25, "  TWO\r\nLINES\t  "));
  EXPECT_EQ(OnlyLine(), "WP,D,A1,35.5,139.25,11/15/2002,14:05:12,TWO  LINES");
}

TEST_F(WptWriterTest, CommasAndQuotesAreWrittenAsTheyAreAndCounted) {
  (void)data_.Add(Named("A", 35.5, 139.25, "HUT, \"CLOSED\""));
  EXPECT_EQ(OnlyLine(), "WP,D,A,35.5,139.25,11/15/2002,14:05:12,HUT, \"CLOSED\"");
  (void)data_.Add(Named("B", 35.5, 139.25, "HUT"));
  (void)data_.Begin(Numbered(1, "A,B", {Named("\"C"), Named("D,", 1, 2, "E,")}));
  EXPECT_EQ(WriteText(FormatId::WptPlus, data_, Settings()).second.broken_texts, 4);
}

TEST_F(WptWriterTest, PositionsAreInTheNotationAndOnTheDatumOfTheSettings) {
  (void)data_.Add(Named("A", 34.6917361111111, 139.25, "C"));
  EXPECT_EQ(OnlyLine(Settings(AngleNotation::DMS)), "WP,DMS,A,34.413025,139.150000,11/15/2002,14:05:12,C");
  const GeoPoint tokyo = ConvertDatum({34.6917361111111, 139.25, 0}, Datum::Wgs84, Datum::Tokyo);
  EXPECT_TRUE(Written(FormatId::WptPlus, data_, Settings(AngleNotation::D, Datum::Tokyo)).starts_with(TokyoDatum));
  const std::string text = OnlyLine(Settings(AngleNotation::D, Datum::Tokyo));
  const WptLine line = ReadWptLine(text);
  EXPECT_NEAR(std::stod(std::string(line.fields[2])), tokyo.latitude_deg, 1e-12);
  EXPECT_NEAR(std::stod(std::string(line.fields[3])), tokyo.longitude_deg, 1e-12);
  EXPECT_GT(std::abs(tokyo.latitude_deg - 34.6917361111111), 0.002);
}

TEST_F(WptWriterTest, AnUnknownTimeIsTheEpochInTheZone) {
  AddLog(data_, {At(35.5, 139.25, {}, true)});
  EXPECT_EQ(OnlyLine(), "TP,D,35.5,139.25,12/31/1989,09:00:00,1");
  EXPECT_EQ(OnlyLine(Settings(AngleNotation::D, Datum::Wgs84, -5)), "TP,D,35.5,139.25,12/30/1989,19:00:00,1");
}

TEST_F(WptWriterTest, PointsBeforeTheFirstLogAreWrittenFirst) {
  TrackLog headless;
  headless.headless = true;
  AddLog(data_, {At(35.5, 139.25, 406339200)}, headless);
  AddLog(data_, {At(36.5, 139.25, 406339200, true)});
  EXPECT_EQ(Written(FormatId::WptPlus, data_),
            Lines({Wgs84Datum, "TP,D,35.5,139.25,11/16/2002,09:00:00,0", "TP,D,36.5,139.25,11/16/2002,09:00:00,1"}));
}

TEST_F(WptWriterTest, ProgressIsToldBeforeEachRecord) {
  (void)data_.Add(Named("A"));
  (void)data_.Add(Named("B"));
  (void)data_.Begin(Numbered(1, "r"));
  AddLog(data_, {At(35.5, 139.25, {}, true)});
  std::string told;
  WriteSettings settings = Settings();
  settings.progress = [&](DataKind kind, int number, int count) {
    told += std::string(DataKindName(kind)) + std::to_string(number) + "/" + std::to_string(count) + " ";
  };
  (void)Written(FormatId::WptPlus, data_, settings);
  EXPECT_EQ(told, "Waypoint1/2 Waypoint2/2 Route1/1 TrackLog1/1 ");
}

}  // namespace
}  // namespace walrim

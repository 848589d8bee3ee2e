#include "formats/WptLine.h"

#include <gtest/gtest.h>
#include <vector>

#include "Support.h"

namespace walrim {
namespace {

void ExpectLine(std::string_view text, WptCommand command, const std::vector<std::string>& fields) {
  SCOPED_TRACE(text);
  const WptLine line = ReadWptLine(text);
  EXPECT_EQ(line.command, command);
  for (std::size_t i = 0; i < WptFieldCount; ++i)
    EXPECT_EQ(line.fields[i], i < fields.size() ? fields[i] : "") << "field " << i + 1;
}

TEST(WptLine, AWaypointLineHasSevenFieldsWithoutTheBlanksBefore) {
  ExpectLine("WP,D,ABC, 35.1, 135.2,01/02/2002,10:11:12,hello", WptCommand::Waypoint,
             {"D", "ABC", "35.1", "135.2", "01/02/2002", "10:11:12", "hello"});
}

TEST(WptLine, EachCommandHasItsFields) {
  ExpectLine("RP,DMS,A,1,2,d,t,c", WptCommand::RoutePoint, {"DMS", "A", "1", "2", "d", "t", "c"});
  ExpectLine("RN,3,north ridge", WptCommand::Route, {"3", "north ridge"});
  ExpectLine("TP,D, 1, 2,d,t,1", WptCommand::TrackPoint, {"D", "1", "2", "d", "t", "1"});
  ExpectLine(TokyoDatum, WptCommand::Datum, {TokyoDatum.substr(6)});
}

TEST(WptLine, CommandsAreReadInAnyCase) {
  ExpectLine("wp,D,A,1,2", WptCommand::Waypoint, {"D", "A", "1", "2"});
  ExpectLine("  Tp ,D,1,2\t", WptCommand::TrackPoint, {"D", "1", "2"});
  ExpectLine("DATUM,WGS84", WptCommand::Datum, {"WGS84"});
}

TEST(WptLine, ADatumLineThatLostItsFirstWordIsOne) {
  ExpectLine("Tokyo mean,Bessel 1841,1", WptCommand::Datum, {"Tokyo mean,Bessel 1841,1"});
  ExpectLine("wgs84,WGS84,0", WptCommand::Datum, {"wgs84,WGS84,0"});
}

TEST(WptLine, AnUnknownCommandGivesItsWord) {
  ExpectLine("XY,1,2", WptCommand::Unknown, {"XY"});
  ExpectLine(",WP", WptCommand::Unknown, {""});
  ExpectLine("WPX,1", WptCommand::Unknown, {"WPX"});
}

TEST(WptLine, AFieldInQuotesMayHoldCommas) {
  ExpectLine("RN, \"1,2\" x,\"a, b\"", WptCommand::Route, {"1,2", "a, b"});
  ExpectLine("RN,1,say \"hi\"", WptCommand::Route, {"1", "say \"hi\""});
  ExpectLine("RN,\"1,a", WptCommand::Route, {"1,a", ""});
}

TEST(WptLine, MissingFieldsAreEmpty) {
  ExpectLine("WP,D,A", WptCommand::Waypoint, {"D", "A"});
  ExpectLine("WP", WptCommand::Waypoint, {});
}

TEST(WptLine, ATailBehindACommaIsTold) {
  ExpectLine("RN,1,hut, closed", WptCommand::Route, {"1", "hut"});
  EXPECT_TRUE(ReadWptLine("RN,1,hut, closed").overfull);
  EXPECT_FALSE(ReadWptLine("RN,2,b,").overfull);
  EXPECT_FALSE(ReadWptLine("RN,2,b, \t").overfull);
}

TEST(WptText, LosesTheBlanksAroundItAndCannotEndALine) {
  EXPECT_EQ(WptText("  two\r\nlines\t  "), "two  lines");
  EXPECT_EQ(WptText(std::string("A\0B\0", 4)), "A B");
  EXPECT_EQ(WptText("   "), "");
}

TEST(WptText, CommasAndQuotesBreakALine) {
  EXPECT_TRUE(BreaksWptLine("a,b"));
  EXPECT_TRUE(BreaksWptLine("\"a"));
  EXPECT_FALSE(BreaksWptLine("a; b"));
}

TEST(DatumLine, IsOneOfTwoTextsAndReadsBack) {
  EXPECT_EQ(DatumLine(Datum::Tokyo), TokyoDatum);
  EXPECT_EQ(DatumLine(Datum::Wgs84), Wgs84Datum);
  EXPECT_EQ(DatumOfField(TokyoDatum.substr(6)), "Tokyo");
  EXPECT_EQ(DatumOfField("Tokyo mean ,Bessel 1841"), "Tokyo");
  EXPECT_EQ(DatumOfField(Wgs84Datum.substr(6)), "WGS84");
  EXPECT_EQ(DatumOfField("NAD27,Clarke"), "NAD27");
}

}  // namespace
}  // namespace walrim

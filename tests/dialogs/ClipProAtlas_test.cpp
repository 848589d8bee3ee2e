#include "dialogs/ClipProAtlas.h"

#include <gtest/gtest.h>
#include <utility>

#include "dialogs/Messages.h"

namespace walrim {
namespace {

using namespace dialog_messages;
using Texts = std::vector<std::string>;

TEST(ClipEntries, HaveTheCodeInFiveDigitsAndTheNameOfTheWaypointType) {
  const Texts d108 = SymbolEntries(WaypointType::D108);
  ASSERT_EQ(d108.size(), 141U);
  EXPECT_EQ(d108.front(), "00000 : white anchor symbol");
  EXPECT_EQ(d108[14], "00014 : white skull and crossbones symbol*/");
  EXPECT_EQ(d108[18], "00018 : waypoint dot");
  EXPECT_EQ(d108.back(), "16402 : Seaplane Base");
  for (std::size_t i = 1; i < d108.size(); ++i)
    EXPECT_LT(CodeOfEntry(d108[i - 1]), CodeOfEntry(d108[i]));
  EXPECT_EQ(SymbolEntries(WaypointType::D103).size(), 16U);
  EXPECT_EQ(DisplayEntries(WaypointType::D104),
            (Texts{"00000 : Display symbol non", "00001 : Display symbol by itself",
                   "00003 : Display symbol with waypoint name", "00005 : Display symbol with comment"}));
}

TEST(ClipEntries, TheCodeIsTheNumberOfTheFirstFiveCharacters) {
  EXPECT_EQ(CodeOfEntry("00018 : waypoint dot"), 18);
  EXPECT_EQ(CodeOfEntry("16402 : Seaplane Base"), 16402);
  EXPECT_EQ(CodeOfEntry("123456"), 12345);
  EXPECT_EQ(CodeOfEntry("7"), 7);
  EXPECT_EQ(CodeOfEntry(""), 0);
  EXPECT_EQ(CodeOfEntry("name"), 0);
  EXPECT_EQ(CodeOfEntry("-0001"), 0);
  EXPECT_EQ(CodeOfEntry("9E+99"), 99999);
}

class ClipProAtlasTest : public ::testing::Test {
 protected:
  void OpenTakao(Datum datum = Datum::Wgs84, WaypointType type = WaypointType::D108) {
    ShowClip({35.6252, 139.2437, datum, "takao", "高尾山"}, type, clip);
  }

  ClipProAtlas clip;
};

TEST_F(ClipProAtlasTest, APointFillsTheControls) {
  OpenTakao(Datum::Tokyo);
  EXPECT_EQ(clip.ClipLat, "35.6252");
  EXPECT_EQ(clip.ClipLon, "139.2437");
  EXPECT_EQ(clip.ClipIdent, "takao");
  EXPECT_EQ(clip.ClipCmnt, "高尾山");
  EXPECT_EQ(clip.notation, AngleNotation::D);
  EXPECT_EQ(clip.datum, Datum::Tokyo);
  EXPECT_EQ(clip.smbl_entries.size(), 141U);
  EXPECT_EQ(clip.dspl_entries.size(), 3U);
  EXPECT_EQ(clip.SmblType, "00018 : waypoint dot");
  EXPECT_EQ(clip.DsplType, "00000 : Display symbol with waypoint name");
}

TEST_F(ClipProAtlasTest, ControlCharactersOfTheTextsBecomeBlanks) {
  ShowClip({35, 139, Datum::Wgs84, "A\tB", "C\r\nD"}, WaypointType::D108, clip);
  EXPECT_EQ(clip.ClipIdent, "A B");
  EXPECT_EQ(clip.ClipCmnt, "C  D");
  clip.ClipIdent = "X\tY";
  clip.ClipCmnt = "\x01";
  const ClipResult result = FinishClip(clip);
  ASSERT_TRUE(result.waypoint);
  EXPECT_EQ(result.waypoint->ident, "X Y");
  EXPECT_EQ(result.waypoint->cmnt, " ");
}

TEST_F(ClipProAtlasTest, TheEntriesChosenLastStayChosenWhileTheyAreOffered) {
  OpenTakao();
  clip.SmblType = "08246 : summit symbol";
  clip.DsplType = "00002 : Display symbol with comment";
  OpenTakao();
  EXPECT_EQ(clip.SmblType, "08246 : summit symbol");
  EXPECT_EQ(clip.DsplType, "00002 : Display symbol with comment");
  OpenTakao(Datum::Wgs84, WaypointType::D104);
  EXPECT_EQ(clip.SmblType, "08246 : summit symbol");
  EXPECT_EQ(clip.DsplType, "00000 : Display symbol non") << "D104 has no display mode 2";
  OpenTakao(Datum::Wgs84, WaypointType::D103);
  EXPECT_EQ(clip.SmblType, "00000 : dot symbol") << "neither 8246 nor 18 is a D103 symbol";
}

TEST_F(ClipProAtlasTest, ClipPntSwitchesBetweenDegreesAndDms) {
  OpenTakao();
  EXPECT_EQ(SwitchClipNotation(clip), "");
  EXPECT_EQ(clip.notation, AngleNotation::DMS);
  EXPECT_EQ(clip.ClipLat, "35.373072");
  EXPECT_EQ(clip.ClipLon, "139.143732");
  EXPECT_EQ(SwitchClipNotation(clip), "");
  EXPECT_EQ(clip.notation, AngleNotation::D);
  EXPECT_EQ(clip.ClipLat, "35.6252");
  EXPECT_EQ(clip.ClipLon, "139.2437");
}

TEST_F(ClipProAtlasTest, ClipPntConvertsTheTextsAsTheyStand) {
  OpenTakao();
  clip.ClipLat = " 34.6917361111111 ";
  EXPECT_EQ(SwitchClipNotation(clip), "");
  EXPECT_EQ(clip.ClipLat, "34.413025");
  clip.ClipLat = "34.30";
  EXPECT_EQ(SwitchClipNotation(clip), "");
  EXPECT_EQ(clip.ClipLat, "34.5");
}

TEST_F(ClipProAtlasTest, SouthAndWestStayInDegreesAndKeepTheirValue) {
  ShowClip({-33.75, -0.25, Datum::Wgs84, "S", ""}, WaypointType::D108, clip);
  EXPECT_NE(SwitchClipNotation(clip), "") << "-33.75 as -34.450000 would be read as -34.55";
  EXPECT_EQ(clip.ClipLat, "-33.75");
  EXPECT_EQ(clip.ClipLon, "-0.25");
  EXPECT_EQ(clip.notation, AngleNotation::D);
  const ClipResult result = FinishClip(clip);
  ASSERT_TRUE(result.waypoint);
  EXPECT_EQ(result.waypoint->lat_deg, -33.75);
  EXPECT_EQ(result.waypoint->lon_deg, -0.25);
}

TEST_F(ClipProAtlasTest, NoNegativeDegreesAreTakenInDms) {
  OpenTakao();
  ASSERT_EQ(SwitchClipNotation(clip), "");
  clip.ClipLat = "-34.450000";
  EXPECT_NE(SwitchClipNotation(clip), "");
  EXPECT_FALSE(FinishClip(clip).waypoint);
}

TEST_F(ClipProAtlasTest, ATextThatIsNoPositionIsRefusedAndNothingChanges) {
  OpenTakao();
  for (const char* text : {"", " ", "\"\"", "abc", "35,6", "-", ".", "N35", "３５", "nan", "inf", "0x10", "1E+400"}) {
    clip.ClipLon = text;
    EXPECT_NE(SwitchClipNotation(clip), "") << text;
    const ClipResult result = FinishClip(clip);
    EXPECT_FALSE(result.waypoint) << text;
    EXPECT_NE(result.refusal, "") << text;
    EXPECT_EQ(clip.ClipLat, "35.6252");
    EXPECT_EQ(clip.ClipLon, text);
    EXPECT_EQ(clip.notation, AngleNotation::D);
  }
}

TEST_F(ClipProAtlasTest, ATextIsReadAsLenientlyAsAFilesColumn) {
  for (const auto& [text, lon_deg] :
       {std::pair("139.6x", 139.6), std::pair(" 139.6 E", 139.6), std::pair("+139", 139.0), std::pair("139.6.2", 139.6),
        std::pair("1E", 1.0), std::pair("=\"139.5\"", 139.5), std::pair("139 deg", 139.0)}) {
    OpenTakao();
    clip.ClipLon = text;
    const ClipResult result = FinishClip(clip);
    ASSERT_TRUE(result.waypoint) << text << result.refusal;
    EXPECT_EQ(result.waypoint->lon_deg, lon_deg) << text;
    EXPECT_EQ(SwitchClipNotation(clip), "") << text;
    ASSERT_TRUE(FinishClip(clip).waypoint) << text;
    EXPECT_NEAR(FinishClip(clip).waypoint->lon_deg, lon_deg, 1e-5) << text;
  }
}

TEST_F(ClipProAtlasTest, TheRefusalNamesTheTextAndWhatIsExpected) {
  OpenTakao();
  clip.ClipLat = "abc";
  EXPECT_EQ(SwitchClipNotation(clip), NoAngle(Latitude, "abc", LatitudeInDegrees));
  clip.ClipLat = "90.1";
  EXPECT_EQ(SwitchClipNotation(clip), OutOfRange(Latitude, "90.1", 90));
  clip.ClipLat = "90";
  clip.ClipLon = "-180.01";
  EXPECT_EQ(SwitchClipNotation(clip), OutOfRange(Longitude, "-180.01", 180));
  clip.ClipLon = "-180";
  EXPECT_EQ(SwitchClipNotation(clip), NoNegativeDms(Longitude, "-180"));
  clip.ClipLon = "180";
  EXPECT_EQ(SwitchClipNotation(clip), "");
  clip.ClipLon = "east";
  EXPECT_EQ(SwitchClipNotation(clip), NoAngle(Longitude, "east", LongitudeInDms));
}

TEST_F(ClipProAtlasTest, MinutesOf60AndMoreAreCarriedAsInAFile) {
  OpenTakao();
  ASSERT_EQ(SwitchClipNotation(clip), "");
  clip.ClipLat = "34.596000";
  EXPECT_EQ(SwitchClipNotation(clip), "");
  EXPECT_EQ(clip.ClipLat, "35");
  ASSERT_EQ(SwitchClipNotation(clip), "");
  clip.ClipLat = "34.90";
  ASSERT_TRUE(FinishClip(clip).waypoint);
  EXPECT_EQ(FinishClip(clip).waypoint->lat_deg, 35.5);
}

TEST_F(ClipProAtlasTest, OkHandsTheWaypointOver) {
  OpenTakao();
  clip.SmblType = "08246 : summit symbol";
  clip.DsplType = "00002 : Display symbol with comment";
  clip.ClipCmnt = "標高599m";
  const ClipResult result = FinishClip(clip);
  EXPECT_EQ(result.refusal, "");
  ASSERT_TRUE(result.waypoint);
  EXPECT_EQ(result.waypoint->lat_deg, 35.6252);
  EXPECT_EQ(result.waypoint->lon_deg, 139.2437);
  EXPECT_EQ(result.waypoint->ident, "takao");
  EXPECT_EQ(result.waypoint->cmnt, "標高599m");
  EXPECT_EQ(result.waypoint->smbl, 8246);
  EXPECT_EQ(result.waypoint->dspl, 2);
}

TEST_F(ClipProAtlasTest, OkReadsThePositionInTheNotationThatIsShown) {
  OpenTakao();
  ASSERT_EQ(SwitchClipNotation(clip), "");
  clip.ClipLat = "35.3000";
  const ClipResult result = FinishClip(clip);
  ASSERT_TRUE(result.waypoint);
  EXPECT_EQ(result.waypoint->lat_deg, 35.5);
  EXPECT_NEAR(result.waypoint->lon_deg, 139.2437, 1e-12);
}

TEST_F(ClipProAtlasTest, APointOnTheTokyoDatumComesOutOnWgs84) {
  OpenTakao(Datum::Tokyo);
  const ClipResult result = FinishClip(clip);
  ASSERT_TRUE(result.waypoint);
  const GeoPoint expected = ConvertDatum({35.6252, 139.2437, 0}, Datum::Tokyo, Datum::Wgs84);
  EXPECT_EQ(result.waypoint->lat_deg, expected.latitude_deg);
  EXPECT_EQ(result.waypoint->lon_deg, expected.longitude_deg);
  // West of Tokyo the old datum's figures are some 11.7" smaller in latitude and 11.1" larger in longitude.
  EXPECT_NEAR((result.waypoint->lat_deg - 35.6252) * 3600, 11.7, 0.3);
  EXPECT_NEAR((result.waypoint->lon_deg - 139.2437) * 3600, -11.1, 0.3);
}

TEST_F(ClipProAtlasTest, ARefusalCanBeCorrectedAndConfirmed) {
  OpenTakao(Datum::Tokyo);
  clip.ClipLat = "?";
  EXPECT_FALSE(FinishClip(clip).waypoint);
  clip.ClipLat = "35.6252";
  const ClipResult result = FinishClip(clip);
  ASSERT_TRUE(result.waypoint);
  EXPECT_EQ(result.waypoint->lat_deg, ConvertDatum({35.6252, 139.2437, 0}, Datum::Tokyo, Datum::Wgs84).latitude_deg)
      << "the datum was kept";
}

}  // namespace
}  // namespace walrim

#include "dialogs/ClipProAtlas.h"

#include <gtest/gtest.h>
#include <utility>

#include "dialogs/Messages.h"

namespace walrim {
namespace {

using namespace dialog_messages;

class ClipProAtlasTest : public ::testing::Test {
 protected:
  void OpenTakao(Datum datum = Datum::Wgs84, WaypointType type = WaypointType::D108) {
    ShowClip({35.6252, 139.2437, datum, "takao", "高尾山"}, type, clip);
  }

  ClipProAtlas clip;
};

TEST_F(ClipProAtlasTest, AnEntryHasTheCodeInFiveDigitsAndTheNameOfTheWaypointType) {
  OpenTakao();
  const std::vector<CodeEntry> d108 = clip.smbl_entries;
  ASSERT_EQ(d108.size(), 141U);
  EXPECT_EQ(d108.front().text, "00000 : white anchor symbol");
  EXPECT_EQ(d108[14].text, "00014 : white skull and crossbones symbol*/");
  EXPECT_EQ(d108[18].text, "00018 : waypoint dot");
  EXPECT_EQ(d108.back().text, "16402 : Seaplane Base");
  EXPECT_EQ(d108.back().code, 16402);
  for (std::size_t i = 1; i < d108.size(); ++i)
    EXPECT_LT(d108[i - 1].code, d108[i].code);
  OpenTakao(Datum::Wgs84, WaypointType::D103);
  EXPECT_EQ(clip.smbl_entries.size(), 16U);
  OpenTakao(Datum::Wgs84, WaypointType::D104);
  std::string shown;
  for (const CodeEntry& entry : clip.dspl_entries)
    shown += std::to_string(entry.code) + "=" + entry.text + "|";
  EXPECT_EQ(shown,
            "0=00000 : Display symbol non|1=00001 : Display symbol by itself|"
            "3=00003 : Display symbol with waypoint name|5=00005 : Display symbol with comment|");
}

TEST_F(ClipProAtlasTest, APointFillsTheControls) {
  OpenTakao(Datum::Tokyo);
  EXPECT_EQ(clip.lat, "35.6252");
  EXPECT_EQ(clip.lon, "139.2437");
  EXPECT_EQ(clip.ident, "takao");
  EXPECT_EQ(clip.cmnt, "高尾山");
  EXPECT_EQ(clip.notation, AngleNotation::D);
  EXPECT_EQ(clip.datum, Datum::Tokyo);
  EXPECT_EQ(clip.smbl_entries.size(), 141U);
  EXPECT_EQ(clip.dspl_entries.size(), 3U);
  EXPECT_EQ(clip.smbl, 18);
  EXPECT_EQ(clip.dspl, 0);
}

TEST_F(ClipProAtlasTest, ControlCharactersOfTheTextsBecomeBlanks) {
  ShowClip({35, 139, Datum::Wgs84, "A\tB", "C\r\nD"}, WaypointType::D108, clip);
  EXPECT_EQ(clip.ident, "A B");
  EXPECT_EQ(clip.cmnt, "C  D");
  clip.ident = "X\tY";
  clip.cmnt = "\x01";
  const ClipResult result = FinishClip(clip);
  ASSERT_TRUE(result.waypoint);
  EXPECT_EQ(result.waypoint->ident, "X Y");
  EXPECT_EQ(result.waypoint->cmnt, " ");
}

TEST_F(ClipProAtlasTest, TheEntriesChosenLastStayChosenWhileTheyAreOffered) {
  OpenTakao();
  clip.smbl = 8246;
  clip.dspl = 2;
  OpenTakao();
  EXPECT_EQ(clip.smbl, 8246);
  EXPECT_EQ(clip.dspl, 2);
  OpenTakao(Datum::Wgs84, WaypointType::D104);
  EXPECT_EQ(clip.smbl, 8246);
  EXPECT_EQ(clip.dspl, 0) << "D104 has no display mode 2";
  OpenTakao(Datum::Wgs84, WaypointType::D103);
  EXPECT_EQ(clip.smbl, 0) << "neither 8246 nor 18 is a D103 symbol";
}

TEST_F(ClipProAtlasTest, ClipPntSwitchesBetweenDegreesAndDms) {
  OpenTakao();
  EXPECT_EQ(SwitchClipNotation(clip), "");
  EXPECT_EQ(clip.notation, AngleNotation::DMS);
  EXPECT_EQ(clip.lat, "35.373072");
  EXPECT_EQ(clip.lon, "139.143732");
  EXPECT_EQ(SwitchClipNotation(clip), "");
  EXPECT_EQ(clip.notation, AngleNotation::D);
  EXPECT_EQ(clip.lat, "35.6252");
  EXPECT_EQ(clip.lon, "139.2437");
}

TEST_F(ClipProAtlasTest, ClipPntConvertsTheTextsAsTheyStand) {
  OpenTakao();
  clip.lat = " 34.6917361111111 ";
  EXPECT_EQ(SwitchClipNotation(clip), "");
  EXPECT_EQ(clip.lat, "34.413025");
  clip.lat = "34.30";
  EXPECT_EQ(SwitchClipNotation(clip), "");
  EXPECT_EQ(clip.lat, "34.5");
}

TEST_F(ClipProAtlasTest, SouthAndWestStayInDegreesAndKeepTheirValue) {
  ShowClip({-33.75, -0.25, Datum::Wgs84, "S", ""}, WaypointType::D108, clip);
  EXPECT_NE(SwitchClipNotation(clip), "") << "-33.75 as -34.450000 would be read as -34.55";
  EXPECT_EQ(clip.lat, "-33.75");
  EXPECT_EQ(clip.lon, "-0.25");
  EXPECT_EQ(clip.notation, AngleNotation::D);
  const ClipResult result = FinishClip(clip);
  ASSERT_TRUE(result.waypoint);
  EXPECT_EQ(result.waypoint->lat_deg, -33.75);
  EXPECT_EQ(result.waypoint->lon_deg, -0.25);
}

TEST_F(ClipProAtlasTest, NoNegativeDegreesAreTakenInDms) {
  OpenTakao();
  ASSERT_EQ(SwitchClipNotation(clip), "");
  clip.lat = "-34.450000";
  EXPECT_NE(SwitchClipNotation(clip), "");
  EXPECT_FALSE(FinishClip(clip).waypoint);
}

TEST_F(ClipProAtlasTest, ATextThatIsNoPositionIsRefusedAndNothingChanges) {
  OpenTakao();
  for (const char* text : {"", " ", "\"\"", "abc", "35,6", "-", ".", "N35", "３５", "nan", "inf", "0x10", "1E+400"}) {
    clip.lon = text;
    EXPECT_NE(SwitchClipNotation(clip), "") << text;
    const ClipResult result = FinishClip(clip);
    EXPECT_FALSE(result.waypoint) << text;
    EXPECT_NE(result.refusal, "") << text;
    EXPECT_EQ(clip.lat, "35.6252");
    EXPECT_EQ(clip.lon, text);
    EXPECT_EQ(clip.notation, AngleNotation::D);
  }
}

TEST_F(ClipProAtlasTest, ATextIsReadAsLenientlyAsAFilesColumn) {
  for (const auto& [text, lon_deg] :
       {std::pair("139.6x", 139.6), std::pair(" 139.6 E", 139.6), std::pair("+139", 139.0), std::pair("139.6.2", 139.6),
        std::pair("1E", 1.0), std::pair("=\"139.5\"", 139.5), std::pair("139 deg", 139.0)}) {
    OpenTakao();
    clip.lon = text;
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
  clip.lat = "abc";
  EXPECT_EQ(SwitchClipNotation(clip), NoAngle(Latitude, "abc", LatitudeInDegrees));
  clip.lat = "90.1";
  EXPECT_EQ(SwitchClipNotation(clip), OutOfRange(Latitude, "90.1", 90));
  clip.lat = "90";
  clip.lon = "-180.01";
  EXPECT_EQ(SwitchClipNotation(clip), OutOfRange(Longitude, "-180.01", 180));
  clip.lon = "-180";
  EXPECT_EQ(SwitchClipNotation(clip), NoNegativeDms(Longitude, "-180"));
  clip.lon = "180";
  EXPECT_EQ(SwitchClipNotation(clip), "");
  clip.lon = "east";
  EXPECT_EQ(SwitchClipNotation(clip), NoAngle(Longitude, "east", LongitudeInDms));
}

TEST_F(ClipProAtlasTest, MinutesOf60AndMoreAreCarriedAsInAFile) {
  OpenTakao();
  ASSERT_EQ(SwitchClipNotation(clip), "");
  clip.lat = "34.596000";
  EXPECT_EQ(SwitchClipNotation(clip), "");
  EXPECT_EQ(clip.lat, "35");
  ASSERT_EQ(SwitchClipNotation(clip), "");
  clip.lat = "34.90";
  ASSERT_TRUE(FinishClip(clip).waypoint);
  EXPECT_EQ(FinishClip(clip).waypoint->lat_deg, 35.5);
}

TEST_F(ClipProAtlasTest, OkHandsTheWaypointOver) {
  OpenTakao();
  clip.smbl = 8246;
  clip.dspl = 2;
  clip.cmnt = "標高599m";
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
  clip.lat = "35.3000";
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
  clip.lat = "?";
  EXPECT_FALSE(FinishClip(clip).waypoint);
  clip.lat = "35.6252";
  const ClipResult result = FinishClip(clip);
  ASSERT_TRUE(result.waypoint);
  EXPECT_EQ(result.waypoint->lat_deg, ConvertDatum({35.6252, 139.2437, 0}, Datum::Tokyo, Datum::Wgs84).latitude_deg)
      << "the datum was kept";
}

}  // namespace
}  // namespace walrim

#include "dialogs/PositionEdit.h"

#include <gtest/gtest.h>

#include "dialogs/Messages.h"

namespace walrim {
namespace {

using enum PositionAxis;
using namespace dialog_messages;

constexpr GeoPoint Before{35.5, 139.25, 0};

PositionEdit Edit(PositionAxis axis, std::string_view text, const PositionForm& form = {}) {
  return EditPosition(Before, axis, text, form);
}

/// "35.5 139.25", or the refusal.
std::string Came(PositionAxis axis, std::string_view text, const PositionForm& form = {}) {
  const PositionEdit edit = Edit(axis, text, form);
  if (!edit.point) return edit.refusal;
  std::string position;
  AppendAngle(position, edit.point->latitude_deg, AngleNotation::D);
  AppendAngle(position += " ", edit.point->longitude_deg, AngleNotation::D);
  return position;
}

TEST(PositionEdit, AnAngleReplacesItsAxisAlone) {
  EXPECT_EQ(Came(Latitude, "36.125"), "36.125 139.25");
  EXPECT_EQ(Came(Longitude, " -12.5 "), "35.5 -12.5");
  EXPECT_EQ(Came(Latitude, "-90"), "-90 139.25");
  EXPECT_EQ(Came(Longitude, "1E-05"), "35.5 1E-05");
}

TEST(PositionEdit, NumbersAreReadAsTheyAreShown) {
  EXPECT_EQ(Came(Latitude, "36.073000", {AngleNotation::DMS, Datum::Wgs84}), "36.125 139.25");
  EXPECT_EQ(Came(Latitude, "36/07/30.0", {AngleNotation::MPS, Datum::Wgs84}), "36.125 139.25");
  EXPECT_EQ(Came(Latitude, "36/07/30000", {AngleNotation::PAO, Datum::Wgs84}), "36.125 139.25");
  // Parted numbers, and those that are not, say by themselves what they are.
  EXPECT_EQ(Came(Latitude, "36/07/30.0", {AngleNotation::DMS, Datum::Wgs84}), "36.125 139.25");
  EXPECT_EQ(Came(Latitude, "36.125", {AngleNotation::MPS, Datum::Wgs84}), "36.125 139.25");
}

TEST(PositionEdit, MarksAndLettersAreReadWhateverIsShown) {
  for (const AngleNotation notation : {AngleNotation::D, AngleNotation::DMS, AngleNotation::MPS}) {
    const PositionForm form{notation, Datum::Wgs84};
    EXPECT_EQ(Came(Latitude, "36°07'30\"", form), "36.125 139.25");
    EXPECT_EQ(Came(Latitude, "北緯36度7分30秒", form), "36.125 139.25");
    EXPECT_EQ(Came(Latitude, "S36.125", form), "-36.125 139.25");
    EXPECT_EQ(Came(Longitude, "36.07.30", form), "35.5 36.125");
    EXPECT_EQ(Came(Longitude, "12°30'W", form), "35.5 -12.5");
  }
}

TEST(PositionEdit, AWholePositionReplacesBothOnEitherAxis) {
  for (const PositionAxis axis : {Latitude, Longitude}) {
    EXPECT_EQ(Came(axis, "36.125, 140.5"), "36.125 140.5");
    EXPECT_EQ(Came(axis, "geo:36.125,140.5"), "36.125 140.5");
    EXPECT_EQ(Came(axis, "https://maps.gsi.go.jp/#15/36.125/140.5/"), "36.125 140.5");
    EXPECT_EQ(Came(axis, "N36°07'30\" E140°30'00\""), "36.125 140.5");
  }
}

TEST(PositionEdit, AnAngleIsOnTheDatumThatIsShownAndAWholePositionOnItsOwn) {
  const PositionForm tokyo{AngleNotation::D, Datum::Tokyo};
  const PositionEdit edit = Edit(Latitude, "36", tokyo);
  ASSERT_TRUE(edit.point);
  const GeoPoint shown = ConvertDatum(*edit.point, Datum::Wgs84, Datum::Tokyo);
  const GeoPoint shown_before = ConvertDatum(Before, Datum::Wgs84, Datum::Tokyo);
  EXPECT_NEAR(shown.latitude_deg, 36, 1e-6);
  EXPECT_NEAR(shown.longitude_deg, shown_before.longitude_deg, 1e-6);
  EXPECT_GT(edit.point->latitude_deg, 36.003);
  EXPECT_EQ(Came(Latitude, "geo:36.125,140.5", tokyo), "36.125 140.5");
}

TEST(PositionEdit, TheOtherAxisStaysWhateverDatumIsShown) {
  const PositionForm tokyo{AngleNotation::D, Datum::Tokyo};
  const GeoPoint shown = ConvertDatum(Before, Datum::Wgs84, Datum::Tokyo);
  const auto typed = [&](PositionAxis axis, double degrees) {
    return *Edit(axis, std::to_string(degrees), tokyo).point;
  };
  // Within a second or so nothing of it changes; farther away it is shown as before.
  EXPECT_EQ(typed(Latitude, shown.latitude_deg).longitude_deg, Before.longitude_deg);
  EXPECT_EQ(typed(Longitude, shown.longitude_deg).latitude_deg, Before.latitude_deg);
  const GeoPoint north = ConvertDatum(typed(Latitude, 36), Datum::Wgs84, Datum::Tokyo);
  EXPECT_NEAR(north.latitude_deg, 36, 1e-11);
  EXPECT_NEAR(north.longitude_deg, shown.longitude_deg, 1e-11);
}

TEST(PositionEdit, WhatIsNoPositionIsToldWhy) {
  for (const char* text : {"", "abc", "35.5x", "35 30", "1-2", "36/07/30/1", "35°70'", "36°07", "1.2.3.4.5"})
    EXPECT_EQ(Came(Latitude, text), NoPosition("緯度", text)) << text;
  EXPECT_EQ(Came(Latitude, "90.01"), OutOfRange("緯度", "90.01", 90));
  EXPECT_EQ(Came(Latitude, "1e999"), NoPosition("緯度", "1e999"));
  EXPECT_EQ(Came(Longitude, "-180.5"), OutOfRange("経度", "-180.5", 180));
  EXPECT_EQ(Came(Longitude, "N35"), OtherAxis("経度", "N35"));
  EXPECT_EQ(Came(Latitude, "geo:95.5,139"), LinkOffGlobe);
}

TEST(PositionEdit, APackedNotationTakesNoSouthAndWest) {
  const PositionForm dms{AngleNotation::DMS, Datum::Wgs84};
  EXPECT_EQ(Came(Latitude, "-36.0730", dms), NoNegativeDms("緯度", "-36.0730"));
  EXPECT_EQ(Came(Latitude, "S36°07'30\"", dms), "-36.125 139.25");
}

}  // namespace
}  // namespace walrim

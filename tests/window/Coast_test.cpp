// The land that the program carries.
#include "window/Coast.h"

#include <QFile>
#include <algorithm>
#include <gtest/gtest.h>

namespace walrim {
namespace {

/// Two triangles: one of 100.0, 10.0 / 100.5, 10.0 / 100.0, 10.5 degrees; one of its size, a degree further north.
QByteArray TwoRings() {
  return QByteArray::fromHex(
      "57434f31"
      "02000000"
      "06"
      "80b518"
      "c0b802"
      "d00f"
      "00"
      "cf0f"
      "d00f"
      "06"
      "00"
      "a01f"
      "d00f"
      "00"
      "cf0f"
      "d00f");
}

bool IsLand(const std::vector<MapLine>& coast, double lat_deg, double lon_deg) {
  const MercatorPoint at = MercatorOf(lat_deg, lon_deg);
  bool land = false;
  for (const MapLine& ring : coast) {
    const std::vector<MercatorPoint>& points = ring.Points();
    for (std::size_t i = 1; i < points.size(); ++i) {
      const MercatorPoint a = points[i - 1];
      const MercatorPoint b = points[i];
      if ((a.y > at.y) != (b.y > at.y) && at.x < a.x + (b.x - a.x) * (at.y - a.y) / (b.y - a.y)) land = !land;
    }
  }
  return land;
}

TEST(Coast, ReadsRingsAsTheyAreWritten) {
  const std::vector<MapLine> rings = ReadCoast(TwoRings());
  ASSERT_EQ(rings.size(), 2U);
  const std::vector<MercatorPoint>& points = rings[0].Points();
  ASSERT_EQ(points.size(), 4U) << "it ends at its first point";
  EXPECT_NEAR(LongitudeOfMercator(points[0].x), 100, 1e-9);
  EXPECT_NEAR(LatitudeOfMercator(points[0].y), 10, 1e-9);
  EXPECT_NEAR(LongitudeOfMercator(points[1].x), 100.5, 1e-9);
  EXPECT_NEAR(LatitudeOfMercator(points[2].y), 10.5, 1e-9);
  EXPECT_EQ(points[3], points[0]);
  EXPECT_NEAR(LatitudeOfMercator(rings[1].Points()[0].y), 11, 1e-9);
}

TEST(Coast, NothingIsReadOfWhatIsCutOffOrGoesOn) {
  const QByteArray whole = TwoRings();
  for (qsizetype size = 0; size < whole.size(); ++size)
    EXPECT_TRUE(ReadCoast(whole.first(size)).empty()) << size;
  EXPECT_TRUE(ReadCoast(whole + '\0').empty());
  EXPECT_TRUE(ReadCoast(QByteArray("X") + whole.mid(1)).empty());
  EXPECT_TRUE(ReadCoast(whole.first(8) + QByteArray(40, '\xff')).empty());
}

TEST(Coast, TheProgramKnowsLandFromSea) {
  const std::vector<MapLine> coast = LoadCoast();
  ASSERT_FALSE(coast.empty());
  EXPECT_TRUE(IsLand(coast, 35.3606, 138.7274)) << "Fuji";
  EXPECT_TRUE(IsLand(coast, 43.0621, 141.3544)) << "Sapporo";
  EXPECT_TRUE(IsLand(coast, 26.33, 127.80)) << "Okinawa";
  EXPECT_TRUE(IsLand(coast, 44.1, 145.85)) << "Kunashiri";
  EXPECT_TRUE(IsLand(coast, 34.73, 139.40)) << "Oshima";
  EXPECT_TRUE(IsLand(coast, 37.5, 127.0)) << "Seoul";
  EXPECT_TRUE(IsLand(coast, 48.85, 2.35)) << "Paris";
  EXPECT_TRUE(IsLand(coast, -33.0, 146.0)) << "Australia";
  EXPECT_TRUE(IsLand(coast, -80.0, 20.0)) << "Antarctica";
  EXPECT_FALSE(IsLand(coast, 35.0, 139.4)) << "Sagami bay";
  EXPECT_FALSE(IsLand(coast, 34.3, 133.45)) << "the Inland Sea";
  EXPECT_FALSE(IsLand(coast, 30.0, 150.0)) << "the Pacific";
  EXPECT_FALSE(IsLand(coast, 42.0, 50.5)) << "the Caspian Sea";
}

TEST(Coast, TakesNoMoreThanItsBoundOfTheProgram) {
  QFile file(":/coast.bin");
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  EXPECT_LE(file.size(), 300'000);
}

}  // namespace
}  // namespace walrim

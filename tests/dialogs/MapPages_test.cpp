#include "dialogs/MapPages.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace walrim {
namespace {

constexpr double TowerLat = 35.709529;
constexpr double TowerLon = 139.810713;

void ExpectPoint(const std::string& text, double lat_deg, double lon_deg) {
  const auto point = RecognizeMapPoint(text);
  ASSERT_TRUE(point) << text;
  EXPECT_EQ(point->lat_deg, lat_deg) << text;
  EXPECT_EQ(point->lon_deg, lon_deg) << text;
  EXPECT_EQ(point->datum, Datum::Wgs84) << text;
  EXPECT_EQ(point->ident, "") << text;
}

void ExpectTower(const std::string& text) {
  ExpectPoint(text, TowerLat, TowerLon);
}

void ExpectNone(const std::string& text) {
  EXPECT_FALSE(RecognizeMapPoint(text)) << text;
  EXPECT_FALSE(LeadsOffGlobe(text)) << text;
}

TEST(MapPages, EveryFormOfEveryMapGivesItsPosition) {
  for (const char* text :
       {"https://maps.gsi.go.jp/#15/35.709529/139.810713/",
        "https://maps.gsi.go.jp/#15/35.709529/139.810713/&base=std&ls=std&disp=1&vs=c1g1j0h0k0l0u0t0z0r0s0m0f1",
        "https://maps.gsi.go.jp/#15/35.709529/139.810713",
        "https://maps.gsi.go.jp/vector/#15.25/35.709529/139.810713/",
        "https://maps.gsi.go.jp/?hc=hic#15/35.709529/139.810713/",
        "https://www.google.com/maps/search/?api=1&query=35.709529,139.810713",
        "https://www.google.com/maps/search/?api=1&query=35.709529%2C139.810713",
        "https://www.google.com/maps/search/?api=1&query=35.709529%2c+139.810713&query_place_id=ChIJ",
        "https://www.google.com/maps/@35.709529,139.810713,15z",
        "https://www.google.com/maps/@35.709529,139.810713,15z?entry=ttu&g_ep=Egoy",
        "https://www.google.com/maps/@35.709529,139.810713,1234m/data=!3m1!1e3",
        "https://www.google.co.jp/maps/@35.709529,139.810713",
        "https://google.com/maps?q=35.709529,139.810713&z=15",
        "https://maps.google.com/?ll=35.709529,139.810713&z=15",
        "https://maps.google.co.jp/maps?q=35.709529,139.810713",
        "https://www.google.com/maps/place/Tokyo+Skytree/@35.7,139.8,17z/"
        "data=!3m1!4b1!4m5!8m2!3d35.709529!4d139.810713",
        "https://map.yahoo.co.jp/place?lat=35.709529&lon=139.810713&zoom=16",
        "https://map.yahoo.co.jp/place?zoom=16&lon=139.810713&lat=35.709529&maptype=basic",
        "https://map.yahoo.co.jp/?lat=35.709529&lon=139.810713",
        "https://www.openstreetmap.org/?mlat=35.709529&mlon=139.810713#map=15/35.709529/139.810713",
        "https://www.openstreetmap.org/?mlat=35.709529&mlon=139.810713#map=15/35.7/139.8",
        "https://www.openstreetmap.org/?mlat=35.709529&mlon=139.810713",
        "https://www.openstreetmap.org/#map=15/35.709529/139.810713",
        "https://www.openstreetmap.org/node/1234#map=15/35.709529/139.810713&layers=N",
        "https://openstreetmap.org/#map=15/35.709529/139.810713",
        "  https://maps.gsi.go.jp/#15/35.709529/139.810713/\r\n"})
    ExpectTower(text);
}

TEST(MapPages, TheSchemeMayBeTheOtherOneOrLeftOut) {
  for (const char* text :
       {"http://maps.gsi.go.jp/#15/35.709529/139.810713/", "maps.gsi.go.jp/#15/35.709529/139.810713/",
        "HTTPS://MAPS.GSI.GO.JP/#15/35.709529/139.810713/", "http://www.google.com/maps/@35.709529,139.810713,15z",
        "www.google.com/maps/search/?api=1&query=35.709529,139.810713", "google.com/maps/@35.709529,139.810713,15z",
        "http://map.yahoo.co.jp/place?lat=35.709529&lon=139.810713&zoom=16",
        "map.yahoo.co.jp/place?lat=35.709529&lon=139.810713&zoom=16",
        "http://www.openstreetmap.org/?mlat=35.709529&mlon=139.810713#map=15/35.709529/139.810713",
        "www.openstreetmap.org/#map=15/35.709529/139.810713"})
    ExpectTower(text);
}

TEST(MapPages, SouthAndWestAndTheEdgesOfTheGlobe) {
  ExpectPoint("https://maps.gsi.go.jp/#5/-33.5/-70.25/", -33.5, -70.25);
  ExpectPoint("https://www.google.com/maps/@-33.5,-70.25,5z", -33.5, -70.25);
  ExpectPoint("https://www.google.com/maps/search/?api=1&query=-33.5,-70.25", -33.5, -70.25);
  ExpectPoint("https://map.yahoo.co.jp/place?lat=-33.5&lon=-70.25", -33.5, -70.25);
  ExpectPoint("https://www.openstreetmap.org/?mlat=-33.5&mlon=-70.25", -33.5, -70.25);
  ExpectPoint("https://www.openstreetmap.org/#map=5/90/-180", 90, -180);
  ExpectPoint("https://maps.gsi.go.jp/#5/-90/180", -90, 180);
}

TEST(MapPages, APositionOffTheGlobeIsKnownForWhatItIs) {
  for (const char* text : {"https://maps.gsi.go.jp/#15/90.1/139.810713/", "maps.gsi.go.jp/#15/35.7/-180.1/",
                           "https://www.google.com/maps/@139.810713,35.709529,15z",
                           "https://www.google.com/maps/search/?api=1&query=35.7,200",
                           "https://map.yahoo.co.jp/place?lat=99999999999999999999&lon=139.8",
                           "https://www.openstreetmap.org/#map=15/-91/139.8", "geo:95,139", "geo:35,181;u=5",
                           "95.5, 139.5", "139.8107, 35.7095"}) {
    EXPECT_FALSE(RecognizeMapPoint(text)) << text;
    EXPECT_TRUE(LeadsOffGlobe(text)) << text;
  }
  EXPECT_FALSE(LeadsOffGlobe("https://maps.gsi.go.jp/#15/90/139.810713/"));
  EXPECT_FALSE(LeadsOffGlobe("hello"));
}

TEST(MapPages, PagesWithoutAPositionHoldNone) {
  for (const char* text : {"https://maps.gsi.go.jp/",
                           "https://maps.gsi.go.jp/#15",
                           "https://maps.gsi.go.jp/#15/35.7",
                           "https://maps.gsi.go.jp/#15/35.7/",
                           "https://maps.gsi.go.jp/#x/35.7/139.8",
                           "https://maps.gsi.go.jp/#15/35.7/139.8x",
                           "https://maps.gsi.go.jp/15/35.7/139.8/",
                           "https://www.google.com/maps",
                           "https://www.google.com/maps/",
                           "https://www.google.com/maps/search/?api=1&query=Tokyo+Skytree",
                           "https://www.google.com/maps/search/?api=1&query=35.7,139.8,1",
                           "https://www.google.com/maps/place/Skytree",
                           "https://www.google.com/maps/@35.7",
                           "https://www.google.com/search?q=35.7,139.8",
                           "https://www.google.com/maps/d/viewer?mid=abc",
                           "https://maps.app.goo.gl/abcdef",
                           "https://map.yahoo.co.jp/place?lat=35.7",
                           "https://map.yahoo.co.jp/place?lat=35.7&lon=",
                           "https://map.yahoo.co.jp/place?lat=1e1&lon=139.8",
                           "https://www.openstreetmap.org/",
                           "https://www.openstreetmap.org/?mlat=35.7",
                           "https://www.openstreetmap.org/#map=15",
                           "https://www.openstreetmap.org/copyright"})
    ExpectNone(text);
}

TEST(MapPages, OtherPagesHoldNone) {
  for (const char* text :
       {"https://example.com/#15/35.7/139.8/", "https://maps.gsi.go.jp.example.com/#15/35.7/139.8/",
        "https://example.com/maps.gsi.go.jp/#15/35.7/139.8/", "https://notgoogle.com/maps/@35.7,139.8,15z",
        "ftp://maps.gsi.go.jp/#15/35.7/139.8/", "file://maps.gsi.go.jp/#15/35.7/139.8/",
        "httpx://maps.gsi.go.jp/#15/35.7/139.8/", "https://https://maps.gsi.go.jp/#15/35.7/139.8/",
        "https://map.yahoo.com/place?lat=35.7&lon=139.8", "https://www.openstreetmap.com/#map=15/35.7/139.8",
        "see https://maps.gsi.go.jp/#15/35.7/139.8/", "https://maps.gsi.go.jp/#15/35.7/139.8/ and more"})
    ExpectNone(text);
}

TEST(MapPages, TheAddressOfAPlaceLeadsThere) {
  const MapPlace tower{TowerLat, TowerLon, {}};
  std::vector<std::string> addresses;
  for (const MapPage& page : MapPages())
    addresses.push_back(page.write == nullptr ? "" : page.write(tower));
  EXPECT_EQ(addresses, (std::vector<std::string>{
                           "https://maps.gsi.go.jp/#15/35.709529/139.810713/",
                           "https://www.openstreetmap.org/?mlat=35.709529&mlon=139.810713#map=15/35.709529/139.810713",
                           "https://www.google.com/maps/search/?api=1&query=35.709529,139.810713", ""}));
}

TEST(MapPages, EveryAddressIsReadBackToItsPlace) {
  for (const MapPlace& place : {MapPlace{-33.5, -70.25, {}}, MapPlace{0.00000012, -0.00001, {}}, MapPlace{90, -180, {}},
                                MapPlace{35.62519441, 139.24369434, {}}, MapPlace{0, 0, {}}}) {
    for (const MapPage& page : MapPages()) {
      if (page.write != nullptr) ExpectPoint(page.write(place), place.lat_deg, place.lon_deg);
    }
    ExpectPoint(GeoLink(place), place.lat_deg, place.lon_deg);
  }
}

}  // namespace
}  // namespace walrim

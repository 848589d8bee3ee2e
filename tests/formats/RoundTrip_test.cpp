// Random records through WPT+ texts and scripts and back.
#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <random>

#include "Support.h"

namespace walrim {
namespace {

/// Where random positions lie.
struct Area {
  double lat_from;
  double lat_to;
  double lon_from;
  double lon_to;
};
constexpr Area Japan{24, 46, 123, 146};
constexpr Area Globe{-80, 80, -179, 179};

class RandomData {
 public:
  RandomData(unsigned seed, const Area& area)
      : random_(seed), lat_(area.lat_from, area.lat_to), lon_(area.lon_from, area.lon_to) {}

  DataSet Filled() {
    DataSet data;
    for (std::size_t i = Below(60); i > 0; --i)
      (void)data.Add(Point());
    for (std::size_t i = Below(6); i > 0; --i) {
      std::vector<Waypoint> points;
      for (std::size_t k = Below(12); k > 0; --k)
        points.push_back(Point());
      (void)data.Begin(Numbered(static_cast<int>(Below(256)), Comment(), points));
    }
    for (std::size_t i = Below(6); i > 0; --i) {
      std::vector<TrackPoint> points;
      for (std::size_t k = 0, count = 1 + Below(30); k < count; ++k)
        points.push_back(At(lat_(random_), lon_(random_), Time(), k == 0));
      AddLog(data, points);
    }
    return data;
  }

 private:
  std::size_t Below(std::size_t limit) { return random_() % limit; }

  Waypoint Point() {
    constexpr std::array<std::string_view, 8> idents{"A01", "LONGIDENT", "山小屋", "A>", "<B", "007", "P 2", "高尾"};
    return Named(idents[Below(idents.size())], lat_(random_), lon_(random_), Comment());
  }
  std::string Comment() {
    constexpr std::array<std::string_view, 10> comments{
        "",           "山頂の三角点", "CRTD 09:10 01-JAN-02", "HUT ><", "// $STR$",
        "URL:X [WP]", "<>",           "水場；冬は涸れる",     "RP:1<",  "ABC CRTD 23:59 31-DEC-99 DEF"};
    return std::string(comments[Below(comments.size())]);
  }
  std::optional<GarminSeconds> Time() {
    if (Below(7) == 0) return std::nullopt;
    return 354000000 + static_cast<GarminSeconds>(Below(400000000));
  }

  std::mt19937 random_;
  std::uniform_real_distribution<double> lat_;
  std::uniform_real_distribution<double> lon_;
};

constexpr double OneMetre = 1 / 111000.0;
// The way from one datum to the other and back is off by half a metre, by its corrections.
constexpr double DatumTolerance = OneMetre;
constexpr double DmsTolerance = 0.0051 / 3600;
constexpr double MpsTolerance = 0.056 / 3600;

/// tolerance_deg is how far a position may move on the way, in degrees of latitude.
void ExpectNear(double lat1, double lon1, double lat2, double lon2, double tolerance_deg) {
  EXPECT_NEAR(lat1, lat2, tolerance_deg);
  EXPECT_NEAR(lon1, lon2, tolerance_deg / std::cos(lat1 * 3.14159265 / 180));
}

void ExpectSame(Waypoint after, const Waypoint& before, double tolerance_deg) {
  ExpectNear(before.lat_deg, before.lon_deg, after.lat_deg, after.lon_deg, tolerance_deg);
  Waypoint expected = before;
  if (expected.cmnt.empty()) expected.cmnt = after.cmnt == "CRTD 14:05 15-NOV-02" ? after.cmnt : "the stamp of now";
  after.lat_deg = before.lat_deg;
  after.lon_deg = before.lon_deg;
  EXPECT_EQ(after, expected);
}

void ExpectSame(const Route& after, const Route& before, double tolerance_deg) {
  EXPECT_EQ(after.nmbr, before.nmbr);
  EXPECT_EQ(after.cmnt, before.cmnt);
  ASSERT_EQ(after.points.size(), before.points.size());
  for (std::size_t i = 0; i < before.points.size(); ++i)
    ExpectSame(after.points[i].waypoint, before.points[i].waypoint, tolerance_deg);
}

void ExpectSame(const TrackLog& after, const TrackLog& before, double tolerance_deg) {
  ASSERT_EQ(after.points.size(), before.points.size());
  for (std::size_t i = 0; i < before.points.size(); ++i) {
    const TrackPoint& was = before.points[i];
    const TrackPoint& is = after.points[i];
    EXPECT_EQ(is.time, was.time);
    EXPECT_EQ(is.new_trk, was.new_trk);
    ExpectNear(was.lat_deg, was.lon_deg, is.lat_deg, is.lon_deg, tolerance_deg);
  }
}

template <typename Record>
void ExpectSame(const std::vector<Record>& after, const std::vector<Record>& before, double tolerance_deg) {
  ASSERT_EQ(after.size(), before.size());
  for (std::size_t i = 0; i < before.size(); ++i)
    ExpectSame(after[i], before[i], tolerance_deg);
}

struct Way {
  FormatId format;
  WriteSettings settings;
  Area area;
  double tolerance_deg;
};

Way OfScript(Datum datum, int utc_offset_hours, const ScriptOptions& options) {
  Way way{FormatId::Script, Settings(AngleNotation::D, datum, utc_offset_hours), Japan, MpsTolerance + DatumTolerance};
  way.settings.script = options;
  return way;
}

class RoundTrip : public ::testing::TestWithParam<Way> {};

TEST_P(RoundTrip, AFileGivesTheRecordsBack) {
  const auto& [format, settings, area, tolerance_deg] = GetParam();
  for (unsigned seed = 1; seed <= 20; ++seed) {
    SCOPED_TRACE(seed);
    const DataSet before = RandomData(seed, area).Filled();
    DataSet after;
    const auto [text, report] = WriteText(format, before, settings);
    EXPECT_EQ(report.skipped, 0);
    EXPECT_EQ(report.broken_texts, 0);
    const ImportResult result = Read(format, after, text, settings.utc_offset_hours);
    EXPECT_EQ(result.skipped.count + result.unread_time.count + result.statements.count + result.overfull.count, 0);
    ExpectSame(after.Waypoints(), before.Waypoints(), tolerance_deg);
    ExpectSame(after.Routes(), before.Routes(), tolerance_deg);
    ExpectSame(after.Logs(), before.Logs(), tolerance_deg);
  }
}

INSTANTIATE_TEST_SUITE_P(
    WptPlus, RoundTrip,
    ::testing::Values(Way{FormatId::WptPlus, Settings(), Globe, 1e-11},
                      Way{FormatId::WptPlus, Settings(AngleNotation::D, Datum::Tokyo, -5), Japan, DatumTolerance},
                      Way{FormatId::WptPlus, Settings(AngleNotation::DMS, Datum::Wgs84, 0), Japan, DmsTolerance},
                      Way{FormatId::WptPlus, Settings(AngleNotation::DMS, Datum::Tokyo), Japan,
                          DmsTolerance + DatumTolerance},
                      Way{FormatId::WptPlus, Settings(AngleNotation::MPS), Globe, MpsTolerance}));

INSTANTIATE_TEST_SUITE_P(Script, RoundTrip,
                         ::testing::Values(OfScript(Datum::Wgs84, 9, {}), OfScript(Datum::Tokyo, 9, {}),
                                           OfScript(Datum::Wgs84, -5, {-9, "START", "GOAL", true, 1}),
                                           OfScript(Datum::Tokyo, 0, {13, "始点", "終点", false, 1})));

TEST(ScriptRoundTrip, WhatWouldBreakAStatementComesBackInFullWidth) {
  DataSet before;
  (void)before.Add(Named("A;B", 35.5, 139.25, "HUT; \r\nNO //, X"));
  (void)before.Begin(Numbered(1, "R;", {Named("P><Q", 35.5, 139.25, "><;")}));
  DataSet after;
  Read(FormatId::Script, after, Written(FormatId::Script, before, Settings(AngleNotation::D, Datum::Tokyo)));
  EXPECT_EQ(after.Waypoints()[0].ident, "A；B");
  EXPECT_EQ(after.Waypoints()[0].cmnt, "HUT；   NO //");
  EXPECT_EQ(after.Routes()[0].cmnt, "R；");
  EXPECT_EQ(after.Routes()[0].points[0].waypoint.ident, "P＞＜Q");
  EXPECT_EQ(after.Routes()[0].points[0].waypoint.cmnt, "><；");
}

}  // namespace
}  // namespace walrim

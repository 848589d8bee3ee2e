#include <cmath>
#include <gtest/gtest.h>
#include <random>

#include "support.h"
#include "text/Numbers.h"
#include "text/Utf8.h"

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

  void Fill(InternalData& data) {
    for (std::size_t i = Below(60); i > 0; --i)
      (void)data.AddWaypoint(Point());
    for (std::size_t i = Below(6); i > 0; --i) {
      std::vector<WaypointRecord> points;
      for (std::size_t k = Below(12); k > 0; --k)
        points.push_back(Point());
      AddRoute(data, std::to_string(Below(256)), Comment(), points);
    }
    for (std::size_t i = Below(6); i > 0; --i) {
      std::vector<TrackPointEntry> points;
      for (std::size_t k = 0, count = 1 + Below(30); k < count; ++k)
        points.push_back(TrackedPoint(lat_(random_), lon_(random_), Time(), k == 0));
      AddLog(data, points);
    }
  }

 private:
  std::size_t Below(std::size_t limit) { return random_() % limit; }

  WaypointRecord Point() {
    constexpr std::array<std::string_view, 8> idents{"A01", "LONGIDENT", "山小屋", "A>", "<B", "007", "P 2", "高尾"};
    return Waypoint(idents[Below(idents.size())], ShortestNumber(lat_(random_)), ShortestNumber(lon_(random_)),
                    Comment());
  }
  std::string Comment() {
    constexpr std::array<std::string_view, 10> comments{
        "",           "山頂の三角点", "CRTD 09:10 01-JAN-02", "HUT ><", "// $STR$",
        "URL:X [WP]", "<>",           "水場；冬は涸れる",     "RP:1<",  "ABC CRTD 23:59 31-DEC-99 DEF"};
    return std::string(comments[Below(comments.size())]);
  }
  double Time() { return Below(7) == 0 ? 4294967295.0 : 354000000.0 + static_cast<double>(Below(400000000)); }

  std::mt19937 random_;
  std::uniform_real_distribution<double> lat_;
  std::uniform_real_distribution<double> lon_;
};

/// How far a position may move on the way, in degrees of latitude.
struct Tolerance {
  double degrees;
  void Expect(double lat1, double lon1, double lat2, double lon2) const {
    EXPECT_NEAR(lat1, lat2, degrees);
    EXPECT_NEAR(lon1, lon2, degrees / std::cos(lat1 * 3.14159265 / 180));
  }
};
constexpr double OneMetre = 1 / 111000.0;

std::string CommentBack(const std::string& comment) {
  return comment.empty() ? "CRTD 14:05 15-NOV-02" : comment;
}

void ExpectSamePoint(const D108Entry& before, const D108Entry& after, const Tolerance& tolerance) {
  EXPECT_EQ(after.ident, before.ident);
  EXPECT_EQ(after.cmnt, CommentBack(before.cmnt));
  tolerance.Expect(before.lat_deg, before.lon_deg, after.lat_deg, after.lon_deg);
}

void ExpectSameData(const InternalData& before, const InternalData& after, const Tolerance& tolerance) {
  ASSERT_EQ(after.WaypointCount, before.WaypointCount);
  for (std::size_t slot = 1; slot <= static_cast<std::size_t>(before.WaypointCount); ++slot)
    ExpectSamePoint(before.d108[slot], after.d108[slot], tolerance);
  ASSERT_EQ(after.mirrored_routes.RouteCount, before.mirrored_routes.RouteCount);
  EXPECT_EQ(after.mirrored_routes.RoutePointCount, before.mirrored_routes.RoutePointCount);
  for (int route = 1; route <= before.mirrored_routes.RouteCount; ++route) {
    const auto at = static_cast<std::size_t>(route);
    EXPECT_EQ(after.d201[at].nmbr, before.d201[at].nmbr);
    EXPECT_EQ(after.d202[at].rte_ident, before.d202[at].rte_ident);
    for (int point = 0; point < before.mirrored_routes.RoutePointCount.at(at); ++point) {
      const auto slot = static_cast<std::size_t>(RoutePointSlot(route, point));
      ExpectSamePoint(before.d108[slot], after.d108[slot], tolerance);
    }
  }
  ASSERT_EQ(after.mirrored_tracks.TrackPointCount, before.mirrored_tracks.TrackPointCount);
  EXPECT_EQ(after.mirrored_tracks.TrackStart, before.mirrored_tracks.TrackStart);
  const int logs = before.mirrored_tracks.TrackCount;
  for (int log = 1; log <= logs; ++log) {
    for (int point = 0; point < before.mirrored_tracks.TrackPointCount.at(static_cast<std::size_t>(log)); ++point) {
      const TrackPointEntry& was = before.TrackPointAt(log, point);
      const TrackPointEntry& is = after.TrackPointAt(log, point);
      EXPECT_EQ(is.time, was.time >= UnknownGarminTime ? 0 : was.time);
      EXPECT_EQ(is.new_trk, was.new_trk);
      tolerance.Expect(was.lat_deg, was.lon_deg, is.lat_deg, is.lon_deg);
    }
  }
}

struct WptCase {
  WptSettings settings;
  Area area;
  double tolerance_deg;
};

class WptRoundTrip : public ::testing::TestWithParam<WptCase> {};

TEST_P(WptRoundTrip, AWptTextGivesTheDataBack) {
  const WptCase& with = GetParam();
  for (unsigned seed = 1; seed <= 20; ++seed) {
    SCOPED_TRACE(seed);
    const auto before = std::make_unique<InternalData>();
    const auto after = std::make_unique<InternalData>();
    RandomData(seed, with.area).Fill(*before);
    const ImportSummary summary =
        ReadWpt(*after, WrittenWpt(*before, with.settings), with.settings.text.utc_offset_hours);
    EXPECT_EQ(summary.skipped, 0);
    EXPECT_EQ(summary.unread_times, 0);
    ExpectSameData(*before, *after, {with.tolerance_deg});
  }
}

// The way from one datum to the other and back is off by half a metre, by its corrections.
constexpr double DatumTolerance = OneMetre;
constexpr double DmsTolerance = 0.0051 / 3600;
constexpr double MpsTolerance = 0.056 / 3600;

INSTANTIATE_TEST_SUITE_P(Forms, WptRoundTrip,
                         ::testing::Values(WptCase{Settings("D", "WGS84"), Globe, 1e-11},
                                           WptCase{Settings("D", "Tokyo", -5), Japan, DatumTolerance},
                                           WptCase{Settings("DMS", "WGS84", 0), Japan, DmsTolerance},
                                           WptCase{Settings("DMS", "Tokyo"), Japan, DmsTolerance + DatumTolerance},
                                           WptCase{Settings("MPS", "WGS84"), Globe, MpsTolerance}));

struct ScriptCase {
  std::string datum;
  int utc_offset_hours;
  MpsOptions options;
};

class ScriptRoundTrip : public ::testing::TestWithParam<ScriptCase> {};

TEST_P(ScriptRoundTrip, AScriptGivesTheDataBack) {
  const ScriptCase& with = GetParam();
  for (unsigned seed = 1; seed <= 20; ++seed) {
    SCOPED_TRACE(seed);
    const auto before = std::make_unique<InternalData>();
    const auto after = std::make_unique<InternalData>();
    RandomData(seed, Japan).Fill(*before);
    const std::string wpt = WrittenWpt(*before, Settings("D", with.datum, with.utc_offset_hours, "MPS"));
    const Conversion script = ConvertWptToScript(wpt, with.options, Now);
    EXPECT_EQ(script.skipped, 0);
    EXPECT_EQ(script.cut, 0);
    const Conversion back = ConvertScriptToWpt(script.text);
    EXPECT_EQ(back.skipped, 0);
    const ImportSummary summary = ReadWpt(*after, back.text, with.utc_offset_hours);
    EXPECT_EQ(summary.skipped, 0);
    EXPECT_EQ(summary.unread_times, 0);
    ExpectSameData(*before, *after, {MpsTolerance + DatumTolerance});
  }
}

INSTANTIATE_TEST_SUITE_P(Options, ScriptRoundTrip,
                         ::testing::Values(ScriptCase{"WGS84", 9, {}}, ScriptCase{"Tokyo", 9, {}},
                                           ScriptCase{"WGS84", -5, {-9, "START", "GOAL", 1, 1}},
                                           ScriptCase{"Tokyo", 0, {13, "始点", "終点", 0, 1}}));

TEST(ScriptRoundTrip, ATextInDecimalDegreesKeepsPositionsOfAllQuadrants) {
  const auto before = std::make_unique<InternalData>();
  const auto after = std::make_unique<InternalData>();
  RandomData(7, Globe).Fill(*before);
  const std::string script = ConvertWptToScript(WrittenWpt(*before, Settings("D", "Tokyo")), {}, Now).text;
  ReadWpt(*after, ConvertScriptToWpt(script).text);
  ExpectSameData(*before, *after, {MpsTolerance + DatumTolerance});
}

TEST(ScriptRoundTrip, WhatWouldBreakAStatementComesBackInFullWidth) {
  const auto before = std::make_unique<InternalData>();
  const auto after = std::make_unique<InternalData>();
  (void)before->AddWaypoint(Waypoint("A;B", "35.5", "139.25", "hut; \r\nno //, x"));
  AddRoute(*before, "1", "r;", {Waypoint("P><Q", "35.5", "139.25", "><;")});
  const std::string script = ConvertWptToScript(WrittenWpt(*before, Settings("D", "Tokyo", 9, "MPS")), {}, Now).text;
  ReadWpt(*after, ConvertScriptToWpt(script).text);
  EXPECT_EQ(after->d108[1].ident, "A；B");
  EXPECT_EQ(after->d108[1].cmnt, "HUT；   NO //");
  EXPECT_EQ(after->d202[1].rte_ident, "R；");
  EXPECT_EQ(after->d108[2100].ident, "P＞＜Q");
  EXPECT_EQ(after->d108[2100].cmnt, "><；");
}

}  // namespace
}  // namespace walrim

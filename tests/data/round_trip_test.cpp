#include <gtest/gtest.h>
#include <random>

#include "data/GeneralWalrim.h"
#include "support.h"
#include "text/Cp932.h"
#include "text/Numbers.h"
#include "text/Utf8.h"

namespace walrim {
namespace {

/// A data set with all kinds in it, every value from a fixed random sequence.
void FillRandomly(InternalData& data) {
  std::mt19937 random(11);
  std::uniform_real_distribution<double> lat(24, 46);
  std::uniform_real_distribution<double> lon(123, 146);
  const auto waypoint = [&](int i) {
    WaypointRecord record = Waypoint("w" + PadNumber(i, 4), ShortestNumber(lat(random)), ShortestNumber(lon(random)));
    record[WaypointField::cmnt] = i % 2 == 0 ? "山小屋" : "hut no " + std::to_string(i);
    record[WaypointField::smbl] = std::to_string(random() % 16403);
    record[WaypointField::dspl] = std::to_string(random() % 3);
    record[WaypointField::dst] = ShortestNumber(static_cast<float>(random() % 100) / 10);
    record[WaypointField::alt] = ShortestNumber(static_cast<float>(random() % 40000) / 10);
    record[WaypointField::dpth] = "1E+25";
    for (std::size_t k = 0; k < SubclassBytes; ++k)
      record[SubclassField(k)] = std::to_string(random() % 256);
    return record;
  };
  for (int i = 0; i < 50; ++i)
    (void)data.AddWaypoint(waypoint(i));
  for (int route = 1; route <= 4; ++route) {
    (void)data.AddRouteHeader(Route("route " + std::to_string(route), std::to_string(route * 3)));
    for (int point = 0; point < route * 3; ++point) {
      RoutePoint record{waypoint(point), {}};
      record.link[LinkField::link_class] = std::to_string(random() % 65536);
      record.link[LinkField::ident] = "link";
      (void)data.AddRoutePoint(record, route, point);
    }
  }
  for (int log = 1; log <= 5; ++log) {
    (void)data.AddTrackHeader(Track("log " + std::to_string(log), std::to_string(log * 7), log % 2 ? "TRUE" : "FALSE"));
    for (int point = 0; point < log * 7; ++point) {
      (void)data.AddTrackPoint(PointAt(lat(random), lon(random), 354000000 + point, point == 0), log, point);
    }
  }
}

TEST(TextsRoundTrip, EveryPrintableCharacterComesBackFromAFile) {
  InternalData first;
  for (char c = ' ' + 1; c < 0x7F; ++c) {
    if (c >= 'a' && c <= 'z') continue;  // idents and comments are held in capitals
    const std::string text = std::string(1, c) + "A" + c + ",B" + c;
    WaypointRecord record = Waypoint(text);
    record[WaypointField::cmnt] = text;
    record[WaypointField::facility] = text;
    ASSERT_GT(first.AddWaypoint(record), 0);
    if (first.routes.RouteCount == MaxRoutes) continue;
    const int route = first.AddRouteHeader(Route(text, "1"));
    ASSERT_EQ(first.AddRoutePoint({record, {}}, route, 0), 0);
    ASSERT_GT(first.AddTrackHeader(Track(text, "0", "TRUE")), 0);
  }
  InternalData second;
  const std::string text = Written(first, {}, true);
  const ImportSummary summary = Read(second, text, 9);
  EXPECT_EQ(summary.skipped, 0);
  EXPECT_EQ(summary.overfull, 0);
  ASSERT_EQ(second.WaypointCount, first.WaypointCount);
  for (std::size_t slot = 1; slot <= static_cast<std::size_t>(first.WaypointCount); ++slot) {
    EXPECT_EQ(second.d108[slot].ident, first.d108[slot].ident);
    EXPECT_EQ(second.d108[slot].cmnt, first.d108[slot].cmnt);
    EXPECT_EQ(second.d108[slot].facility, first.d108[slot].facility);
  }
  EXPECT_EQ(Written(second, {}, true), text);
}

class RoundTrip : public ::testing::TestWithParam<TextSettings> {};

TEST_P(RoundTrip, AFileReadsBackAsTheSameFile) {
  const auto first = std::make_unique<InternalData>();
  const auto second = std::make_unique<InternalData>();
  FillRandomly(*first);
  const TextSettings& settings = GetParam();
  const std::string text = Written(*first, settings, true);
  const ImportSummary summary = Read(*second, text, settings.utc_offset_hours);
  EXPECT_EQ(summary.skipped, 0);
  EXPECT_EQ(second->WaypointCount, 50);
  EXPECT_EQ(second->mirrored_routes.RouteCount, 4);
  EXPECT_EQ(second->mirrored_tracks.TrackCount, 5);
  EXPECT_EQ(second->tracks.TrackPointCount, first->tracks.TrackPointCount);
  EXPECT_EQ(second->routes.RoutePointCount, first->routes.RoutePointCount);
  for (std::size_t slot : {1U, 50U, 2100U, 2411U}) {
    EXPECT_NEAR(second->d108[slot].lat_deg, first->d108[slot].lat_deg, 2e-5) << slot;
    EXPECT_NEAR(second->d108[slot].lon_deg, first->d108[slot].lon_deg, 2e-5) << slot;
    EXPECT_EQ(second->d108[slot].ident, first->d108[slot].ident);
    EXPECT_EQ(second->d108[slot].cmnt, first->d108[slot].cmnt);
    EXPECT_EQ(second->d108[slot].subclass, first->d108[slot].subclass);
    EXPECT_EQ(second->d108[slot].alt_m, first->d108[slot].alt_m);
    EXPECT_EQ(second->d104[slot].dst_m, first->d104[slot].dst_m);
  }
  EXPECT_EQ(second->track_points[30].time, first->track_points[30].time);
  if (settings.datum == "WGS84" && settings.degree_type == "D") {
    // 15 digits of a position settle after the first writing.
    const std::string again = Written(*second, settings, true);
    const auto third = std::make_unique<InternalData>();
    Read(*third, again, settings.utc_offset_hours);
    EXPECT_EQ(Written(*third, settings, true), again);
  }
}

INSTANTIATE_TEST_SUITE_P(AllSettings, RoundTrip,
                         ::testing::Values(TextSettings{"D", "WGS84", 9}, TextSettings{"DMS", "WGS84", 0},
                                           TextSettings{"MPS", "WGS84", -5}, TextSettings{"D", "Tokyo", 9},
                                           TextSettings{"DMS", "Tokyo", 9}, TextSettings{"MPS", "Tokyo", 14}));

TEST(RoundTripEncodings, AShiftJisFileReadsLikeAUtf8One) {
  const auto data = std::make_unique<InternalData>();
  FillRandomly(*data);
  const std::string text = Written(*data);
  const auto encoded = EncodeCp932(text);
  ASSERT_TRUE(encoded);
  EXPECT_NE(*encoded, text);
  EXPECT_EQ(DecodeText(*encoded), text);
  EXPECT_EQ(DecodeText("\xEF\xBB\xBF" + text), text);
  EXPECT_EQ(DecodeOwnedText(text), text);
  EXPECT_EQ(DecodeOwnedText(*encoded), text);
  EXPECT_EQ(DecodeOwnedText("\xEF\xBB\xBF" + text), text);
}

TEST(RoundTripRecords, TheTextFormOfAWaypointAddsTheSameWaypoint) {
  const auto data = std::make_unique<InternalData>();
  FillRandomly(*data);
  for (int slot = 1; slot <= 50; ++slot) {
    const WaypointRecord record = data->GetWaypoint(slot);
    ASSERT_EQ(data->AddWaypoint(record, 60), 60);
    ASSERT_EQ(data->GetWaypoint(60), record);
    ASSERT_EQ(data->d103[60].ident, data->d103[static_cast<std::size_t>(slot)].ident);
    ASSERT_EQ(data->d108[60].lat_deg, data->d108[static_cast<std::size_t>(slot)].lat_deg);
  }
}

TEST(RoundTripRecords, TheLineAndTheRecordStoreTheSame) {
  const auto by_record = std::make_unique<InternalData>();
  const auto by_line = std::make_unique<InternalData>();
  FillRandomly(*by_record);
  Read(*by_line, Written(*by_record));
  for (int slot = 1; slot <= 50; ++slot) {
    WaypointRecord expected = by_record->GetWaypoint(slot);
    WaypointRecord got = by_line->GetWaypoint(slot);
    for (WaypointRecord* record : {&expected, &got}) {
      for (const WaypointField field : {WaypointField::lat, WaypointField::lon}) {
        (*record)[field] = GeneralNumber(LeadingNumber((*record)[field]));
      }
    }
    ASSERT_EQ(got, expected);
  }
}

}  // namespace
}  // namespace walrim

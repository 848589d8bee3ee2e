// Track headers and points against bytes written by hand, both ways.
#include "device/types/TrackTypes.h"

#include <gtest/gtest.h>

#include "support/Packets.h"

namespace walrim {
namespace {

// 45 degrees north is 2^29 semicircles, 135 degrees east 3 * 2^29.
const Bytes Lat45{0x00, 0x00, 0x00, 0x20};
const Bytes Lon135{0x00, 0x00, 0x00, 0x60};
const Bytes Single12_5{0x00, 0x00, 0x48, 0x41};
const Bytes SingleUnknown{0x51, 0x59, 0x04, 0x69};  // 1.0e25

Bytes EncodedHeader(const TrackLog& log, TrackHeaderType type) {
  EncodeNotes notes;
  return EncodeTrackHeader(log, type, notes);
}

TEST(TrackTypes, D300) {
  const Bytes vector = Joined({Lat45, Lon135, {0x78, 0x56, 0x34, 0x92}, {0xFF}});
  ASSERT_EQ(vector.size(), 13U);
  const TrackPoint point = DecodeTrackPoint(vector, TrackPointType::D300);
  EXPECT_EQ(point.lat_deg, 45.0);
  EXPECT_EQ(point.lon_deg, 135.0);
  EXPECT_EQ(point.time, 2452903544U);
  EXPECT_TRUE(point.new_trk);
  EXPECT_EQ(point.alt_m, std::nullopt);
  EXPECT_EQ(EncodeTrackPoint(point, TrackPointType::D300), vector);
}

TEST(TrackTypes, D301) {
  const Bytes vector = Joined({Lat45, Lon135, {0xF9, 0xFF, 0xFF, 0xFF}, Single12_5, SingleUnknown, {0x00}});
  ASSERT_EQ(vector.size(), 21U);
  const TrackPoint point = DecodeTrackPoint(vector, TrackPointType::D301);
  EXPECT_EQ(point.lat_deg, 45.0);
  EXPECT_EQ(point.lon_deg, 135.0);
  EXPECT_EQ(point.time, 4294967289U);
  EXPECT_FALSE(point.new_trk);
  EXPECT_EQ(point.alt_m, 12.5F);
  EXPECT_EQ(point.dpth_m, std::nullopt);
  EXPECT_EQ(EncodeTrackPoint(point, TrackPointType::D301), vector);
}

TEST(TrackTypes, D300LosesHeightAndDepth) {
  TrackPoint point;
  point.lat_deg = 45;
  point.lon_deg = 135;
  point.alt_m = 12.5F;
  EXPECT_EQ(EncodeTrackPoint(point, TrackPointType::D300), Joined({Lat45, Lon135, {0, 0, 0, 0}, {0}}));
  EXPECT_EQ(EncodeTrackPoint(point, TrackPointType::D301),
            Joined({Lat45, Lon135, {0, 0, 0, 0}, Single12_5, SingleUnknown, {0}}));
}

TEST(TrackTypes, D310AndItsEmptyIdentOfThreeBytes) {
  const Bytes vector = Joined({{0xFF}, {0x04}, TextBytes("ACTIVE LOG"), {0x00}});
  TrackLog log = DecodeTrackHeader(vector);
  EXPECT_TRUE(log.dspl);
  EXPECT_EQ(log.color, 4);
  EXPECT_EQ(log.trk_ident, "ACTIVE LOG");
  EXPECT_FALSE(log.headless);
  EXPECT_EQ(EncodedHeader(log, TrackHeaderType::D310), vector);
  EXPECT_EQ(EncodedHeader(log, TrackHeaderType::Empty), Bytes{});
  log.trk_ident.clear();
  EXPECT_EQ(EncodedHeader(log, TrackHeaderType::D310), (Bytes{0xFF, 0x04, 0x00}));
}

}  // namespace
}  // namespace walrim

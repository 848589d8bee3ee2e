#include "device/PositionHiding.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>

#include "device/Frame.h"

namespace walrim {
namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes BytesOf(std::string_view text) {
  return Bytes(text.begin(), text.end());
}

Bytes operator+(Bytes left, const Bytes& right) {
  left.insert(left.end(), right.begin(), right.end());
  return left;
}

// 35.6 degrees north and 139.2 degrees east, roughly; one degree more each.
const Bytes Here{0x00, 0x00, 0x51, 0x19, 0x00, 0x00, 0xFC, 0x62};
const Bytes There{0x60, 0x0B, 0x07, 0x1A, 0x60, 0x0B, 0xB2, 0x63};
const Bytes Origin(8, 0);
const Bytes Between{0x60, 0x0B, 0xB6, 0x00, 0x60, 0x0B, 0xB6, 0x00};

/// Hides frames behind the product data of a model.
struct Hider {
  explicit Hider(std::string_view model) {
    static_cast<void>(hiding.Hide(FrameOnWire(255, Bytes{77, 0, 214, 0} + BytesOf(model) + Bytes{0})));
  }
  /// The data of a packet that was hidden, which must be a whole frame of its id.
  Bytes Data(int id, const Bytes& data) {
    const Bytes wire = hiding.Hide(FrameOnWire(id, data));
    Bytes plain;
    for (std::size_t i = 0; i < wire.size(); ++i) {
      plain.push_back(wire[i]);
      if (i >= 2 && wire[i] == DLE && i + 1 < wire.size() && wire[i + 1] == DLE) ++i;
    }
    const Bytes hidden(plain.begin() + 3, plain.end() - 3);
    EXPECT_EQ(wire, FrameOnWire(id, hidden));
    return hidden;
  }

  PositionHiding hiding;
};

TEST(PositionHiding, MovesEachTypeWhereItsPositionStands) {
  const Bytes name = BytesOf("TAKAO ");
  const Bytes rest(50, 'x');
  for (const std::string_view model : {"GPS 12 Software", "GPS III Software", "GPS 12CX Software"}) {
    Hider hider(model);
    EXPECT_EQ(hider.Data(35, name + Here + rest), name + Origin + rest) << model;
    EXPECT_EQ(hider.Data(30, name + There + rest), name + Between + rest) << model;
  }
  Hider hider("eTrex Software");
  const Bytes front(24, 9);
  EXPECT_EQ(hider.Data(35, front + Here + rest), front + Origin + rest);
  EXPECT_EQ(hider.Data(30, front + There + rest), front + Between + rest);
  EXPECT_EQ(hider.Data(34, There + rest), Between + rest);
}

TEST(PositionHiding, LongitudeGoesRoundAndLatitudeEndsAtThePoles) {
  Hider hider("GPS 12 Software");
  // -80 degrees, and 170 degrees east.
  EXPECT_EQ(hider.Data(34, {0x72, 0x1C, 0xC7, 0xC7, 0x1C, 0xC7, 0xE3, 0x78}), Origin);
  // 80 degrees would be 160; -170 degrees lies 20 further east.
  EXPECT_EQ(hider.Data(34, {0x8E, 0xE3, 0x38, 0x38, 0xE4, 0x38, 0x1C, 0x87}),
            (Bytes{0x00, 0x00, 0x00, 0x40, 0xC8, 0x71, 0x38, 0x0E}));
}

TEST(PositionHiding, MovesTheFixInRadiansAlong) {
  Hider hider("GPS 12 Software");
  // pi / 8 and -pi / 2: the first position of this trace.
  const Bytes radians{0x18, 0x2D, 0x44, 0x54, 0xFB, 0x21, 0xD9, 0x3F, 0x18, 0x2D, 0x44, 0x54, 0xFB, 0x21, 0xF9, 0xBF};
  const Bytes front(26, 7);
  EXPECT_EQ(hider.Data(51, front + radians + Bytes(22, 8)), front + Bytes(16, 0) + Bytes(22, 8));
  EXPECT_EQ(hider.Data(17, radians), Bytes(16, 0));
  // The same place in semicircles: 2^28, -2^30.
  EXPECT_EQ(hider.Data(34, {0, 0, 0, 0x10, 0, 0, 0, 0xC0}), Origin);
}

TEST(PositionHiding, WhatIsNoPositionTellsNothing) {
  Hider hider("GPS 12 Software");
  EXPECT_EQ(hider.Data(34, Origin), Origin);
  EXPECT_EQ(hider.Data(34, Here), Origin);
  EXPECT_EQ(hider.Data(34, Origin), Origin);
  const Bytes nowhere{0xFF, 0xFF, 0xFF, 0x7F, 0xFF, 0xFF, 0xFF, 0x7F};
  EXPECT_EQ(hider.Data(34, nowhere), nowhere);
  EXPECT_EQ(hider.Data(34, {1, 0, 0, 0x40, 0x12, 0x34, 0x56, 0x12}), nowhere);
  const Bytes no_number(16, 0xFF);
  EXPECT_EQ(hider.Data(17, no_number), Bytes(16, 0));
}

TEST(PositionHiding, RecordsOfUnknownTypesAndUnknownPacketsAreBlanked) {
  const Bytes record = BytesOf("TAKAO ") + Here + Bytes(50, 'x');
  Hider stranger("Something else");
  EXPECT_EQ(stranger.Data(35, record), Bytes(record.size(), 0));
  EXPECT_EQ(stranger.Data(34, Here), Origin);
  PositionHiding unmet;
  EXPECT_EQ(unmet.Hide(FrameOnWire(34, Here)), FrameOnWire(34, Origin));
  Hider hider("GPS 12 Software");
  EXPECT_EQ(hider.Data(77, record), Bytes(record.size(), 0));
  EXPECT_EQ(hider.Data(35, BytesOf("TAKAO ") + Bytes(7, 'x')), Bytes(13, 0)) << "too short";
}

TEST(PositionHiding, WhatHoldsNoPositionStays) {
  Hider hider("eTrex Software");
  const Bytes name = BytesOf("\x01\xFFTAKAO\x10");
  for (const int id : {6, 10, 12, 14, 21, 27, 29, 98, 99, 248, 253, 254, 255})
    EXPECT_EQ(hider.Data(id, name), name) << id;
}

TEST(PositionHiding, RebuiltFramesAreStuffedAndSummedUp) {
  PositionHiding hiding;
  static_cast<void>(hiding.Hide(FrameOnWire(255, Bytes{77, 0, 214, 0} + BytesOf("GPS 48 x") + Bytes{0, 0})));
  static_cast<void>(hiding.Hide(FrameOnWire(34, Bytes{0, 0, 0, 0x20, 0, 0, 0, 0x20})));
  EXPECT_EQ(hiding.Hide(FrameOnWire(34, Bytes{0x10, 0, 0, 0x20, 1, 0, 0, 0x20})),
            (Bytes{0x10, 0x22, 0x08, 0x10, 0x10, 0, 0, 0, 1, 0, 0, 0, 0xC5, 0x10, 0x03}));
}

TEST(PositionHiding, DamageStaysDamageAndTellsNothing) {
  Hider hider("GPS 12 Software");
  Bytes damaged = FrameOnWire(34, Here);
  damaged[damaged.size() - 3] ^= 1;
  EXPECT_EQ(hider.hiding.Hide(damaged), (Bytes{0x10, 0x22, 0x08, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0x10, 0x03}));
  EXPECT_EQ(hider.hiding.Hide(BytesOf("$GPRMC,3537.93,N")), Bytes(16, 0));
  // Zeros would make a whole frame of these: id and size are 256 together.
  EXPECT_EQ(hider.hiding.Hide(Bytes{0x10, 0xFE, 0x02, 7, 7, 7, 0x10, 0x03}),
            (Bytes{0x10, 0xFE, 0x02, 1, 1, 1, 0x10, 0x03}));
  EXPECT_EQ(hider.hiding.Hide(Bytes{9, 0x10, 5, 7, 9, 0x10, 0x03}), (Bytes{1, 0x10, 1, 1, 1, 0x10, 0x03}));
  Bytes full = FrameOnWire(1, Bytes(255, 7));
  full[full.size() - 3] ^= 1;
  const Bytes hidden = hider.hiding.Hide(full);
  EXPECT_EQ(hidden.size() + 1, full.size());
  EXPECT_EQ(hidden.back(), 0x10);
  const Bytes cut{0x10, 0x22, 0x08, 0x10, 0x10, 0x51};
  EXPECT_EQ(hider.hiding.Hide(cut), (Bytes{0x10, 0x22, 0x08, 0x10, 0x10, 0}));
  EXPECT_EQ(hider.hiding.Hide(Bytes{}), Bytes{});
  EXPECT_EQ(hider.hiding.Hide(Bytes(5000, 0x33)), Bytes(5000, 0));
}

}  // namespace
}  // namespace walrim

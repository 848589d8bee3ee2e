#include "device/Models.h"

#include <gtest/gtest.h>

namespace walrim {
namespace {

constexpr DeviceProtocols Old(WaypointType waypoint) {
  return {waypoint, RouteHeaderType::D201, RouteLinkType::None, TrackPointType::D300, TrackHeaderType::None};
}
constexpr DeviceProtocols New{WaypointType::D108, RouteHeaderType::D202, RouteLinkType::D210, TrackPointType::D301,
                              TrackHeaderType::D310};

struct Model {
  const char* description;
  DeviceProtocols types;
};
class AllModels : public ::testing::TestWithParam<Model> {};
TEST_P(AllModels, GetTheirTypes) {
  EXPECT_EQ(ProtocolsOf(GetParam().description), GetParam().types) << GetParam().description;
}
INSTANTIATE_TEST_SUITE_P(Table, AllModels,
                         ::testing::Values(Model{"GPS 12 Software", Old(WaypointType::D103)},
                                           Model{"GPS 12XL Software", Old(WaypointType::D103)},
                                           Model{"GPS 12CX Software", Old(WaypointType::D107)},
                                           Model{"GPS 48 Software", Old(WaypointType::D103)},
                                           Model{"GPS II+ Software", Old(WaypointType::D103)},
                                           Model{"GPS III Software", Old(WaypointType::D104)},
                                           Model{"GPS III+ Software", Old(WaypointType::D104)},
                                           Model{"eMap Software", New}, Model{"eTrex Software", New}));

TEST(ProtocolsOf, AnUnknownModelIsTakenForD104) {
  EXPECT_EQ(ProtocolsOf("Something else"), Old(WaypointType::D104));
  EXPECT_EQ(DeviceProtocols(), Old(WaypointType::D104));
}

TEST(ProtocolsOf, OnlyModelsOfTheTableAreKnownForCertain) {
  EXPECT_EQ(KnownProtocolsOf("GPS 12CX Software"), Old(WaypointType::D107));
  EXPECT_EQ(KnownProtocolsOf("eTrex Software"), New);
  EXPECT_FALSE(KnownProtocolsOf("eTrexSoftware"));
  EXPECT_FALSE(KnownProtocolsOf("Something else"));
}

// Were the longer name taken for the shorter one the type would be the same; so the one without a blank tells.
TEST(ProtocolsOf, ABlankBelongsToTheName) {
  EXPECT_EQ(ProtocolsOf("GPS 12XLSoftware"), Old(WaypointType::D104));
}

TEST(ProtocolsOf, ANewModelWithoutItsBlankHasEmptyLinksAndHeaders) {
  const DeviceProtocols expected{WaypointType::D104, RouteHeaderType::D201, RouteLinkType::Empty, TrackPointType::D300,
                                 TrackHeaderType::Empty};
  EXPECT_EQ(ProtocolsOf("eTrexLegend"), expected);
  EXPECT_EQ(ProtocolsOf("eMapSoftware"), expected);
}

TEST(ProtocolsOf, TheNameMayStandAnywhereInTheCaseThatItHas) {
  EXPECT_EQ(ProtocolsOf("The eTrex Software"), New);
  EXPECT_EQ(ProtocolsOf("ETREX Software"), Old(WaypointType::D104));
}

TEST(RichestProtocols, AreThoseOfTheNewModels) {
  EXPECT_EQ(RichestProtocols, New);
}

}  // namespace
}  // namespace walrim

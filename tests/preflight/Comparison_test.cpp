#include "preflight/Comparison.h"

#include <algorithm>
#include <gtest/gtest.h>

#include "device/Models.h"

namespace walrim {
namespace {

constexpr DataKinds AllKinds{true, true, true};
constexpr std::string_view Name = "GPS 12 Software Version 4.57";

Recipient Receiver(std::string_view description = Name) {
  return {ProtocolsOf(description), LimitsOf(description), false};
}

Waypoint Named(std::string_view ident, double lat_deg, int symbol = 0) {
  Waypoint waypoint;
  waypoint.type = WaypointType::D103;
  waypoint.ident = ident;
  waypoint.lat_deg = lat_deg;
  waypoint.smbl = static_cast<std::uint16_t>(symbol);
  return waypoint;
}

template <typename Record>
DataSet Holding(std::initializer_list<Record> records) {
  DataSet data;
  EXPECT_TRUE(data.Edit(Insertion<Record>(0, std::vector<Record>(records))));
  return data;
}

TrackLog Log(std::initializer_list<GarminSeconds> times) {
  TrackLog log;
  log.headless = true;
  for (const GarminSeconds time : times) {
    log.points.emplace_back();
    log.points.back().lat_deg = 35 + 0.001 * static_cast<double>(log.points.size());
    log.points.back().time = time;
  }
  return log;
}

std::vector<Loss> Losses(const std::vector<Difference>& differences) {
  std::vector<Loss> losses(differences.size());
  std::ranges::transform(differences, losses.begin(), &Difference::loss);
  return losses;
}

TEST(Comparison, OfSeveralThatMayBeAWaypointTheOneThatDiffersLeastIsIt) {
  const DataSet sent = Holding({Named("CAMPSITE1", 35, 10)});
  const DataSet held = Holding({Named("CAMPSI", 35, 2), Named("CAMPSI", 35, 10)});
  EXPECT_EQ(Losses(Compare(sent, AllKinds, held, {}, Receiver())), std::vector{Loss::Name});
}

TEST(Comparison, ALogThatWasThereBeforeIsNotTakenForTheOneThatWasSent) {
  const DataSet sent = Holding({Log({50, 60, 70})});
  TrackLog active = Log({10, 20, 30});
  const TrackLog again = Log({50, 60, 70});
  active.points.insert(active.points.end(), again.points.begin(), again.points.end());
  EXPECT_EQ(Losses(Compare(sent, AllKinds, Holding({active}), {}, Receiver())), std::vector<Loss>{});
  // The old one is the better one where the end of the new one found no room.
  active.points.resize(4);
  active.points[0].time = 50;
  active.points[1].time = 60;
  active.points[2].time = 70;
  EXPECT_EQ(Losses(Compare(sent, AllKinds, Holding({active}), {}, Receiver())), std::vector<Loss>{});
}

TEST(Comparison, WhatTheReceiverHeldUnderANameOrANumberIsToldWhenItIsGone) {
  const DataSet sent = Holding({Named("CAMP", 35), Named("LAKE", 36)});
  const DataSet before = Holding({Named("CAMP  ", 37), Named("LAKE  ", 36), Named("HUT   ", 38)});
  const DataSet held = Holding({Named("CAMP  ", 35), Named("LAKE  ", 36), Named("HUT   ", 38)});
  const std::vector<Difference> expected{{DataKind::Waypoint, Loss::Overwrites, 0, {}, 1, "CAMP", "CAMP"}};
  EXPECT_EQ(Compare(sent, AllKinds, held, before, Receiver()), expected);
  EXPECT_EQ(Compare(sent, AllKinds, held, {}, Receiver()), std::vector<Difference>{}) << "it is not known";
}

Route Way(std::uint8_t number, std::string_view name, std::initializer_list<Waypoint> points) {
  Route route{RouteHeaderType::D201, number, std::string(name), {}};
  for (const Waypoint& point : points)
    route.points.push_back({point, {}});
  return route;
}

TEST(Comparison, NamesThatSomeReceiversLoseAreToldWhereTheyArrive) {
  const DataSet sent = Holding(
      {Way(1, "WAY", {Named("A", 35), Named("B", 36)}), Way(2, "WAY", {Named("A", 37)}), Way(3, "", {Named("C", 38)})});
  const std::vector<Difference> expected{{DataKind::Route, Loss::SharedRouteName, 1, {}, 1, "WAY", {}},
                                         {DataKind::Route, Loss::SharedName, 1, 0, 1, "A", {}},
                                         {DataKind::Route, Loss::NoRouteName, 2, {}, 1, {}, {}}};
  EXPECT_EQ(Compare(sent, AllKinds, sent, {}, Receiver()), expected);
  const DataSet before = Holding({Way(3, "OLD", {Named("D", 39)})});
  EXPECT_EQ(Compare(sent, AllKinds, sent, before, Receiver()).size(), 4U);
}

TEST(Comparison, APictureIsNamedInBothLanguages) {
  const DataSet sent = Holding({Named("A", 35, 11)});
  const DataSet held = Holding({Named("A", 35, 0)});
  const std::vector<Difference> differences = Compare(sent, AllKinds, held, {}, Receiver());
  ASSERT_EQ(differences.size(), 1U);
  EXPECT_EQ(differences[0].was, "キャンプ場（camp symbol）");
  EXPECT_EQ(differences[0].is, "点（dot symbol）");
}

}  // namespace
}  // namespace walrim

#include <gtest/gtest.h>

#include "device/DeviceProtocols.h"
#include "device/LinkTables.h"
#include "device/NameTables.h"

namespace walrim {
namespace {

DeviceProtocols Chosen(std::string_view description) {
  DeviceProtocols protocols;
  ChooseProtocols(description, protocols);
  return protocols;
}

TEST(ChooseProtocols, ETrexWithBlankSpeaksTheNewTypes) {
  const DeviceProtocols chosen = Chosen("eTrex Software Version 2.14");
  EXPECT_EQ(chosen.WaypointProtocol, "A100");
  EXPECT_EQ(chosen.RouteProtocol, "A201");
  EXPECT_EQ(chosen.TrackProtocol, "A301");
  EXPECT_EQ(chosen.WaypointType, "D108");
  EXPECT_EQ(chosen.RouteHeaderType, "D202");
  EXPECT_EQ(chosen.RouteLinkType, "D210");
  EXPECT_EQ(chosen.TrackPointType, "D301");
  EXPECT_EQ(chosen.TrackHeaderType, "D310");
  EXPECT_EQ(chosen.DateTimeType, "D600");
  EXPECT_EQ(chosen.PvtProtocol, "A800");
  EXPECT_EQ(chosen.PvtType, "");
}

TEST(ChooseProtocols, ETrexWithoutBlankGetsNewProtocolsButOldTypes) {
  const DeviceProtocols chosen = Chosen("eTrexLegend");
  EXPECT_EQ(chosen.RouteProtocol, "A201");
  EXPECT_EQ(chosen.TrackProtocol, "A301");
  EXPECT_EQ(chosen.WaypointType, "D104");
  EXPECT_EQ(chosen.RouteHeaderType, "D201");
  EXPECT_EQ(chosen.RouteLinkType, "");
  EXPECT_EQ(chosen.TrackPointType, "D300");
  EXPECT_EQ(chosen.TrackHeaderType, "");
}

TEST(ChooseProtocols, GpsIIIPlusMatchesBothNames) {
  const DeviceProtocols chosen = Chosen("GPS III+ Software 2.01");
  EXPECT_EQ(chosen.WaypointType, "D104");
  EXPECT_EQ(chosen.PvtType, "D800");
  EXPECT_EQ(chosen.RouteProtocol, "A200");
}

TEST(ChooseProtocols, Gps12XlIsNotGps12) {
  // Were the longer name taken for the shorter one the type would be the same; so the one without a blank tells.
  EXPECT_EQ(Chosen("GPS 12XL Software").WaypointType, "D103");
  EXPECT_EQ(Chosen("GPS 12XLSoftware").WaypointType, "D104");
  EXPECT_EQ(Chosen("GPS 12CX Software").WaypointType, "D107");
}

TEST(ChooseProtocols, UnknownModelIsTakenForD104) {
  const DeviceProtocols chosen = Chosen("Something else");
  EXPECT_EQ(chosen.WaypointType, "D104");
  EXPECT_EQ(chosen.RouteHeaderType, "D201");
  EXPECT_EQ(chosen.TrackPointType, "D300");
}

TEST(ChooseProtocols, NamesAreCaseSensitive) {
  EXPECT_EQ(Chosen("ETREX Software").RouteProtocol, "A200");
}

TEST(ChooseProtocols, ALaterModelOverwritesAnEarlierChoice) {
  DeviceProtocols protocols = Chosen("eTrex x");
  ChooseProtocols("GPS 48 x", protocols);
  EXPECT_EQ(protocols.WaypointType, "D103");
  EXPECT_EQ(protocols.RouteLinkType, "");
  EXPECT_EQ(protocols.TrackHeaderType, "");
}

/// All that a model's row of the tables decides, as one text.
std::string TypesOf(const DeviceProtocols& chosen) {
  std::string text;
  for (const std::string_view type : {std::string_view(chosen.WaypointType), std::string_view(chosen.RouteProtocol),
                                      std::string_view(chosen.RouteHeaderType), std::string_view(chosen.RouteLinkType),
                                      std::string_view(chosen.TrackProtocol), std::string_view(chosen.TrackHeaderType),
                                      std::string_view(chosen.TrackPointType)})
    text.append(type.empty() ? "-" : type).append(" ");
  return text;
}

struct Model {
  const char* description;
  const char* types;
};
class AllModels : public ::testing::TestWithParam<Model> {};
TEST_P(AllModels, GetTheirTypes) {
  EXPECT_EQ(TypesOf(Chosen(GetParam().description)), GetParam().types);
}
INSTANTIATE_TEST_SUITE_P(Table, AllModels,
                         ::testing::Values(Model{"GPS 12 Software", "D103 A200 D201 - A300 - D300 "},
                                           Model{"GPS 12XL Software", "D103 A200 D201 - A300 - D300 "},
                                           Model{"GPS 12CX Software", "D107 A200 D201 - A300 - D300 "},
                                           Model{"GPS 48 Software", "D103 A200 D201 - A300 - D300 "},
                                           Model{"GPS II+ Software", "D103 A200 D201 - A300 - D300 "},
                                           Model{"GPS III Software", "D104 A200 D201 - A300 - D300 "},
                                           Model{"GPS III+ Software", "D104 A200 D201 - A300 - D300 "},
                                           Model{"eMap Software", "D108 A201 D202 D210 A301 D310 D301 "},
                                           Model{"eTrex Software", "D108 A201 D202 D210 A301 D310 D301 "}));

TEST(ProtocolsBeforeIdentification, AreTheRichest) {
  const DeviceProtocols before = ProtocolsBeforeIdentification();
  EXPECT_EQ(before.WaypointType, "D108");
  EXPECT_EQ(before.RouteLinkType, "D210");
  EXPECT_EQ(before.TrackPointType, "D301");
  EXPECT_EQ(before.TrackHeaderType, "D310");
}

TEST(LinkTables, L001AndA010HaveThePublishedNumbers) {
  LinkPids pids;
  pids.Select(1);
  EXPECT_EQ(pids.Pid_Command_Data, 10);
  EXPECT_EQ(pids.Pid_Xfer_Cmplt, 12);
  EXPECT_EQ(pids.Pid_Date_Time_Data, 14);
  EXPECT_EQ(pids.Pid_Position_Data, 17);
  EXPECT_EQ(pids.Pid_Prx_Wpt_Data, 19);
  EXPECT_EQ(pids.Pid_Records, 27);
  EXPECT_EQ(pids.Pid_Rte_Hdr, 29);
  EXPECT_EQ(pids.Pid_Rte_Wpt_Data, 30);
  EXPECT_EQ(pids.Pid_Almanac_Data, 31);
  EXPECT_EQ(pids.Pid_Trk_Data, 34);
  EXPECT_EQ(pids.Pid_Wpt_Data, 35);
  EXPECT_EQ(pids.Pid_Pvt_Data, 51);
  EXPECT_EQ(pids.Pid_Rte_Link_Data, 98);
  EXPECT_EQ(pids.Pid_Trk_Hdr, 99);
  DeviceCommands commands;
  commands.Select(10);
  EXPECT_EQ(commands.Cmnd_Abort_Transfer, 0);
  EXPECT_EQ(commands.Cmnd_Transfer_Rte, 4);
  EXPECT_EQ(commands.Cmnd_Transfer_Trk, 6);
  EXPECT_EQ(commands.Cmnd_Transfer_Wpt, 7);
  EXPECT_EQ(commands.Cmnd_Start_Pvt_Data, 49);
}

TEST(LinkTables, TheAlternativesLeaveWhatTheyLack) {
  LinkPids pids;
  pids.Select(1);
  pids.Select(2);
  EXPECT_EQ(pids.Pid_Command_Data, 11);
  EXPECT_EQ(pids.Pid_Records, 35);
  EXPECT_EQ(pids.Pid_Wpt_Data, 43);
  EXPECT_EQ(pids.Pid_Almanac_Data, 4);
  EXPECT_EQ(pids.Pid_Trk_Data, 34);  // not set by the second column
  DeviceCommands commands;
  commands.Select(10);
  commands.Select(11);
  EXPECT_EQ(commands.Cmnd_Transfer_Wpt, 21);
  EXPECT_EQ(commands.Cmnd_Turn_Off_Pwr, 26);
  EXPECT_EQ(commands.Cmnd_Transfer_Trk, 6);
}

TEST(NameTables, D108KnowsTheTracBackSymbolAndNoColours) {
  const NameTables tables = NameTablesFor(WaypointType::D108);
  EXPECT_EQ(NameTables::NameOf(tables.SymbolNames, 8196), "TracBack (feet) symbol");
  EXPECT_TRUE(tables.ColourNames.empty());
  EXPECT_EQ(tables.SymbolNames.size(), 141U);
}

TEST(NameTables, D103HasNoSymbolFrom16On) {
  const NameTables tables = NameTablesFor(WaypointType::D103);
  EXPECT_EQ(NameTables::NameOf(tables.SymbolNames, 15), "back track symbol");
  EXPECT_EQ(NameTables::NameOf(tables.SymbolNames, 16), "");
}

TEST(NameTables, Codes8224And8225HaveNoName) {
  const NameTables tables = NameTablesFor(WaypointType::D104);
  EXPECT_EQ(NameTables::NameOf(tables.SymbolNames, 8223), "street intersection symbol");
  EXPECT_EQ(NameTables::NameOf(tables.SymbolNames, 8224), "");
  EXPECT_EQ(NameTables::NameOf(tables.SymbolNames, 8225), "");
  EXPECT_EQ(NameTables::NameOf(tables.SymbolNames, 8226), "inspection/weigh station symbol");
}

TEST(NameTables, TheSkullKeepsItsEnd) {
  EXPECT_EQ(NameTables::NameOf(NameTablesFor(WaypointType::D108).SymbolNames, 14),
            "white skull and crossbones symbol*/");
}

TEST(NameTables, DisplayModesDifferForD104) {
  EXPECT_EQ(NameTables::NameOf(NameTablesFor(WaypointType::D104).DisplayNames, 0), "Display symbol non");
  EXPECT_EQ(NameTables::NameOf(NameTablesFor(WaypointType::D104).DisplayNames, 5), "Display symbol with comment");
  EXPECT_EQ(NameTables::NameOf(NameTablesFor(WaypointType::D104).DisplayNames, 2), "");
  EXPECT_EQ(NameTables::NameOf(NameTablesFor(WaypointType::D108).DisplayNames, 2), "Display symbol with comment");
}

TEST(NameTables, OnlyD107NamesColours) {
  EXPECT_EQ(NameTables::NameOf(NameTablesFor(WaypointType::D107).ColourNames, 3), "Blue");
  EXPECT_EQ(NameTables::NameOf(NameTablesFor(WaypointType::D107).SymbolNames, 0), "dot symbol");
  EXPECT_TRUE(NameTablesFor(WaypointType::D103).ColourNames.empty());
}

}  // namespace
}  // namespace walrim

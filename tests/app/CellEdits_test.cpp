#include "app/CellEdits.h"

#include <gtest/gtest.h>

#include "app/Messages.h"
#include "device/types/WaypointTypes.h"
#include "dialogs/Messages.h"
#include "records/Symbols.h"

namespace walrim {
namespace {

Waypoint Typed(WaypointType type, std::string ident = "TAKAO ", std::string cmnt = std::string(40, ' ')) {
  Waypoint waypoint;
  waypoint.type = type;
  waypoint.ident = std::move(ident);
  waypoint.cmnt = std::move(cmnt);
  waypoint.smbl = 10;
  return waypoint;
}

Waypoint Edited(const Waypoint& before, EditField field, std::string_view text) {
  const CellEdit<Waypoint> edit = EditWaypoint(before, field, text, {});
  EXPECT_EQ(edit.refusal, "");
  return edit.record.value_or(Waypoint{});
}

std::string Refusal(const Waypoint& before, EditField field, std::string_view text) {
  const CellEdit<Waypoint> edit = EditWaypoint(before, field, text, {});
  EXPECT_FALSE(edit.record);
  return edit.refusal;
}

TEST(CellEdits, ATextIsTakenWithoutBlanksAroundItAndInCapitals) {
  const Waypoint before;
  EXPECT_EQ(Edited(before, EditField::Name, " Takao san ").ident, "TAKAO SAN");
  EXPECT_EQ(Edited(before, EditField::Comment, "山頂, 茶屋").cmnt, "山頂, 茶屋");
  EXPECT_EQ(Edited(before, EditField::Comment, "").cmnt, "");
}

TEST(CellEdits, ATextThatFitsKeepsTheWidthOfItsField) {
  for (const WaypointType type : {WaypointType::D103, WaypointType::D104, WaypointType::D107}) {
    const Waypoint name = Edited(Typed(type), EditField::Name, "mt");
    EXPECT_EQ(name.type, type);
    EXPECT_EQ(name.ident, "MT    ");
    EXPECT_EQ(Edited(Typed(type), EditField::Name, "山頂駅").ident, "山頂駅");
    EXPECT_EQ(Edited(Typed(type), EditField::Comment, "山").cmnt, "山" + std::string(38, ' '));
    EXPECT_EQ(Edited(Typed(type), EditField::Comment, std::string(40, 'X')).cmnt, std::string(40, 'X'));
  }
}

TEST(CellEdits, AWiderTextMakesARecordOfTextsOfAnyLength) {
  Waypoint before = Typed(WaypointType::D103, std::string("MT\0\0\0\0", 6), "A" + std::string(39, ' '));
  before.unused = 7;
  before.dspl = 2;
  const Waypoint after = Edited(before, EditField::Name, "takaosan");
  EXPECT_EQ(after.type, WaypointType::D108);
  EXPECT_EQ(after.ident, "TAKAOSAN");
  EXPECT_EQ(after.cmnt, "A");
  // 10 is the flag among the 16.
  EXPECT_EQ(after.smbl, 178);
  EXPECT_EQ(after.symbol_set, SymbolSet::Large);
  EXPECT_EQ(after.unused, 7U);
  EXPECT_EQ(after.dspl, 2);
  EXPECT_EQ(Edited(before, EditField::Comment, std::string(41, 'X')).ident, "MT");
  EXPECT_EQ(Edited(Typed(WaypointType::D104), EditField::Name, "takaosan").smbl, 10);
}

TEST(CellEdits, ARecordMadeWiderIsSentToItsReceiverAsBeforeButForTheEdit) {
  Waypoint before = Typed(WaypointType::D103);
  before.lat_deg = 35.5;
  before.dspl = 1;
  const Waypoint there_and_back = Edited(Edited(before, EditField::Name, "TAKAOSAN"), EditField::Name, "TAKAO");
  EncodeNotes notes;
  const Waypoint sent = DecodeWaypoint(EncodeWaypoint(there_and_back, WaypointType::D103, notes), WaypointType::D103);
  EXPECT_EQ(sent.ident.substr(0, 5), "TAKAO");
  EXPECT_EQ(sent.smbl, before.smbl);
  EXPECT_EQ(sent.dspl, before.dspl);
  EXPECT_NEAR(sent.lat_deg, before.lat_deg, 1e-6);
  EXPECT_FALSE(notes.replaced || notes.cut || notes.cut_texts > 0);
}

TEST(CellEdits, ATextThatNoPacketTakesIsRefusedUnlessItWasThereBefore) {
  const std::string longest(250, 'X');
  EXPECT_EQ(Edited(Waypoint{}, EditField::Comment, longest).cmnt, longest);
  EXPECT_EQ(Refusal(Waypoint{}, EditField::Comment, longest + "X"), messages::TextTooLong(250));
  Waypoint before;
  before.cmnt = longest + "YYYY";
  EXPECT_EQ(Edited(before, EditField::Comment, longest + "ZZZZ").cmnt, longest + "ZZZZ");
  EXPECT_EQ(Refusal(before, EditField::Comment, longest + "ZZZZZ"), messages::TextTooLong(254));
}

TEST(CellEdits, LineEndsAndTabsAreRefused) {
  for (const std::string text : {"A\nB", "A\tB", "A\rB", "A\x01"})
    EXPECT_EQ(Refusal(Waypoint{}, EditField::Name, text), messages::LineBreakInText);
}

TEST(CellEdits, AnEmptyHeightIsUnknown) {
  Waypoint before;
  EXPECT_EQ(Edited(before, EditField::Height, "599.15").alt_m, 599.15F);
  EXPECT_EQ(Edited(before, EditField::Height, "-12").alt_m, -12.0F);
  EXPECT_EQ(Edited(before, EditField::Height, "0").alt_m, 0.0F);
  before.alt_m = 5;
  EXPECT_EQ(Edited(before, EditField::Height, " ").alt_m, std::nullopt);
  EXPECT_EQ(Refusal(before, EditField::Height, "5m"), messages::NoHeight("5m"));
  EXPECT_EQ(Refusal(before, EditField::Height, "1-2"), messages::NoHeight("1-2"));
  EXPECT_EQ(Refusal(before, EditField::Height, "100001"), messages::HeightOutOfRange);
}

TEST(CellEdits, APositionIsOneOfTheFieldsThatArePlaces) {
  const Waypoint after = Edited(Waypoint{}, EditField::Latitude, "geo:36.125,140.5");
  EXPECT_EQ(after.lat_deg, 36.125);
  EXPECT_EQ(after.lon_deg, 140.5);
  EXPECT_EQ(Refusal(Waypoint{}, EditField::Longitude, "x"), dialog_messages::NoPosition("経度", "x"));
}

TEST(CellEdits, AChosenSymbolIsOneOfItsSet) {
  Waypoint before;
  before.symbol_set = SymbolSet::Small;
  before.smbl = 3;
  const Waypoint after = Edited(before, EditField::Symbol, "8");
  EXPECT_EQ(after.smbl, 8);
  EXPECT_EQ(after.symbol_set, SymbolSet::Large);
  EXPECT_TRUE(HasLargeSymbol(after));
  EXPECT_TRUE(HasSmallSymbol(Edited(Typed(WaypointType::D107), EditField::Symbol, "15")));
  EXPECT_TRUE(HasLargeSymbol(Edited(Typed(WaypointType::D104), EditField::Symbol, "8246")));
  EXPECT_EQ(Refusal(Typed(WaypointType::D103), EditField::Symbol, "18"), messages::NoSuchSymbol);
  EXPECT_EQ(Refusal(Waypoint{}, EditField::Symbol, "38"), messages::NoSuchSymbol);
  EXPECT_EQ(Refusal(Waypoint{}, EditField::Symbol, "flag"), messages::NoSuchSymbol);
}

TEST(CellEdits, ARecordThatNeverCameIsOneOnceItIsEdited) {
  Waypoint missing;
  missing.missing = true;
  EXPECT_FALSE(Edited(missing, EditField::Name, "A").missing);
}

TEST(CellEdits, ARoutesCommentKeepsItsWidthOrIsANameOfAnyLength) {
  const Route narrow{RouteHeaderType::D201, 4, "A" + std::string(19, ' '), {}};
  const CellEdit<Route> fits = EditRoute(narrow, "home");
  EXPECT_EQ(*fits.record, (Route{RouteHeaderType::D201, 4, "HOME" + std::string(16, ' '), {}}));
  const CellEdit<Route> wider = EditRoute(narrow, "the way home from there");
  EXPECT_EQ(*wider.record, (Route{RouteHeaderType::D202, 4, "THE WAY HOME FROM THERE", {}}));
  EXPECT_EQ(EditRoute(narrow, "A\nB").refusal, messages::LineBreakInText);
}

TEST(CellEdits, ALogHasANameUnlessItIsHeadless) {
  TrackLog log;
  log.color = 4;
  log.dspl = false;
  const CellEdit<TrackLog> edit = EditLog(log, "day one");
  EXPECT_EQ(*edit.record, (TrackLog{false, false, 4, "DAY ONE", {}}));
  log.headless = true;
  EXPECT_EQ(EditLog(log, "X").refusal, messages::HeadlessLogHasNoName);
}

TEST(CellEdits, APointOfALogHasAPlaceAndAHeight) {
  TrackPoint before;
  before.time = 5;
  EXPECT_EQ(EditTrackPoint(before, EditField::Latitude, "36.125", {}).record->lat_deg, 36.125);
  EXPECT_EQ(EditTrackPoint(before, EditField::Longitude, "140.5", {}).record->lon_deg, 140.5);
  const CellEdit<TrackPoint> height = EditTrackPoint(before, EditField::Height, "12", {});
  EXPECT_EQ(height.record->alt_m, 12.0F);
  EXPECT_EQ(height.record->time, 5U);
  EXPECT_FALSE(EditTrackPoint(before, EditField::Name, "X", {}).record);
}

}  // namespace
}  // namespace walrim

// The commands on the receiver, as a person presses them.
#include <chrono>
#include <gtest/gtest.h>
#include <string>

#include "AppTest.h"
#include "device/Messages.h"

namespace walrim {
namespace {

using Strings = std::vector<std::string>;

constexpr int WaypointCommand = 7;
constexpr int RouteCommand = 4;
constexpr int TrackCommand = 6;
constexpr std::string_view LinkLostText = messages::LinkLost;
const PlainPacket Abort{10, {0, 0}};

class DeviceCommandsTest : public AppTest {
 protected:
  DeviceCommandsTest() {
    receiver.description = "GPS 12 Software";
    main.State().Settings().link = LinkChoice::Plain;
    receiver.packets_of[WaypointCommand] = {WaypointPacket("W1"), WaypointPacket("W2")};
    receiver.packets_of[RouteCommand] = {RouteHeaderPacket(1, "R1"), RoutePointPacket("P1")};
    receiver.packets_of[TrackCommand] = {TrackPoint300(true), TrackPoint300(false), TrackPoint300(true)};
  }

  void HoldRoutes(int count) {
    for (int i = 0; i < count; ++i)
      ASSERT_EQ(Data().Begin(Route{}), AddResult::Stored);
  }
  void HoldWaypointsAndLogs(int waypoints, int logs) {
    for (int i = 0; i < waypoints; ++i)
      ASSERT_EQ(Data().Add(Waypoint{}), AddResult::Stored);
    for (int i = 0; i < logs; ++i)
      ASSERT_EQ(Data().Begin(TrackLog{}), AddResult::Stored);
  }
  void TickDownload(bool waypoint, bool route, bool track) {
    main.State().Settings().download_kinds = {waypoint, route, track};
  }
  void TickDo(bool waypoint, bool route, bool track) {
    main.State().Settings().chosen_kinds = {waypoint, route, track};
  }
  void DownloadAll() {
    TickDownload(true, true, true);
    ASSERT_EQ(main.Device().Download(), Outcome::Done);
    desktop.messages.clear();
    desktop.questions.clear();
    receiver.received.clear();
  }
  [[nodiscard]] std::size_t Asked(int command) const {
    return receiver.CountReceived({10, {static_cast<std::uint8_t>(command), 0}});
  }
};

// ---- Get GPS info

TEST_F(DeviceCommandsTest, InfoShowsTheReceiverAndItsCounts) {
  EXPECT_EQ(main.Device().GetInfo(), Outcome::Done);
  EXPECT_EQ(main.State().ReceiverText(), "GPS 12 Software  (Pid:130)");
  EXPECT_EQ(InReceiver()[0], 2);
  EXPECT_EQ(InReceiver()[1], 2);
  EXPECT_EQ(InReceiver()[2], 3);
  EXPECT_TRUE(desktop.Showed("Initializing Device"));
  EXPECT_TRUE(desktop.Showed("Get Data Num of Waypoint"));
  EXPECT_TRUE(desktop.Showed("Get Data Num of TrackLog"));
  EXPECT_EQ(desktop.caption, "");
  EXPECT_FALSE(main.State().Busy());
  EXPECT_FALSE(port.PortOpen());
}

TEST_F(DeviceCommandsTest, TheStatusLineSaysWhichLinkIsUsed) {
  const std::pair<LinkChoice, std::string> texts[] = {{LinkChoice::Plain, messages::LinkInUse(false, false)},
                                                      {LinkChoice::Checked, messages::LinkInUse(true, false)},
                                                      {LinkChoice::Automatic, messages::LinkInUse(true, true)}};
  for (const auto& [choice, text] : texts) {
    desktop.captions.clear();
    main.State().Settings().link = choice;
    EXPECT_EQ(main.Device().GetInfo(), Outcome::Done);
    EXPECT_TRUE(desktop.Showed(text)) << text;
  }
}

TEST_F(DeviceCommandsTest, WhereTheFirstAnswerIsSpoiltThePlainLinkIsChosenAndSaid) {
  main.State().Settings().link = LinkChoice::Automatic;
  const auto answer = port.script;
  port.script = [&](const Bytes& wire) {
    auto answers = answer(wire);
    if (wire.at(1) == 254) answers.at(0).bytes.at(5) ^= 0x01;  // the checksum of the ACK
    return answers;
  };
  receiver.packets_of[WaypointCommand][0].data[14] = 0x10;
  receiver.packets_of[WaypointCommand][0].data[15] = 0x03;
  TickDownload(true, false, false);
  EXPECT_EQ(main.Device().Download(), Outcome::Done);
  EXPECT_TRUE(desktop.Showed(messages::LinkInUse(false, true)));
  EXPECT_TRUE(main.Device().DamagedRecordsCame());
  port.script = answer;
  EXPECT_EQ(main.Device().Download(), Outcome::Done);
  EXPECT_TRUE(desktop.Showed(messages::LinkInUse(true, true)));
  EXPECT_FALSE(main.Device().DamagedRecordsCame());
}

TEST_F(DeviceCommandsTest, InfoOfASilentReceiverShowsTheDescriptionAndNothingElse) {
  receiver.silent_after = 0;
  EXPECT_EQ(main.Device().GetInfo(), Outcome::NoReceiver);
  EXPECT_EQ(main.State().ReceiverText(), messages::ReceiverText(device_messages::SilentReceiver, -1));
  EXPECT_EQ(receiver.ReceivedIds(), (std::vector<int>{254, 254}));
  EXPECT_TRUE(desktop.messages.empty());
}

TEST_F(DeviceCommandsTest, InfoThatFindsNonsenseSaysThatNothingWasIdentified) {
  receiver.acknowledges = false;
  EXPECT_EQ(main.Device().GetInfo(), Outcome::NoReceiver);
  EXPECT_EQ(main.State().ReceiverText(), messages::ReceiverText(messages::NotIdentified, 0));
  port.script = {};
  loop.on_yield = [&] { port.Queue({}, Bytes(20, 0x24)); };
  EXPECT_EQ(main.Device().GetInfo(), Outcome::NoReceiver);
  EXPECT_EQ(main.State().ReceiverText(), messages::ReceiverText(messages::NotIdentified, 0));
}

TEST_F(DeviceCommandsTest, InfoAtAReceiverThatRefusesSaysThatItRefuses) {
  receiver.acknowledges = false;
  main.State().Settings().link = LinkChoice::Checked;
  EXPECT_EQ(main.Device().GetInfo(), Outcome::NoReceiver);
  EXPECT_EQ(main.State().ReceiverText(), messages::ReceiverText(messages::NotAcknowledged, 0));
  EXPECT_EQ(receiver.ReceivedIds(), (std::vector<int>{254, 254, 254}));
}

TEST_F(DeviceCommandsTest, InfoOnALineWithAStrayByteEveryHalfSecondEndsWithinTenSeconds) {
  for (const LinkChoice choice : {LinkChoice::Automatic, LinkChoice::Checked, LinkChoice::Plain}) {
    main.State().Settings().link = choice;
    port.script = {};
    auto next = clock.now;
    loop.on_yield = [&] {
      if (clock.now < next) return;
      next = clock.now + std::chrono::milliseconds{500};
      port.Queue({}, {0x5A});
    };
    const auto start = clock.now;
    EXPECT_EQ(main.Device().GetInfo(), Outcome::NoReceiver);
    EXPECT_LT(clock.now - start, std::chrono::seconds{10});
    EXPECT_EQ(main.State().ReceiverText(), messages::ReceiverText(messages::NotIdentified, 0));
  }
}

TEST_F(DeviceCommandsTest, TheRequestIsRepeatedOnceBehindSilenceOrNonsense) {
  const auto answer = port.script;
  for (const LinkChoice choice : {LinkChoice::Automatic, LinkChoice::Checked, LinkChoice::Plain}) {
    for (const Bytes& first : {Bytes{}, Bytes{0x10, 0x15, 0x10}, WireFrame(6, Int16(35))}) {
      main.State().Settings().link = choice;
      int asked = 0;
      port.script = [&](const Bytes& wire) -> std::vector<ScriptedPort::Answer> {
        if (wire.at(1) != 254 || ++asked > 1) return answer(wire);
        if (first.empty()) return {};
        return {{std::chrono::milliseconds{2}, first}};
      };
      EXPECT_EQ(main.Device().GetInfo(), Outcome::Done);
      EXPECT_EQ(asked, 2);
    }
  }
}

TEST_F(DeviceCommandsTest, InfoOnATakenPortSaysSo) {
  port.open_result.problem = PortProblem::InUse;
  EXPECT_EQ(main.Device().GetInfo(), Outcome::Refused);
  EXPECT_EQ(desktop.messages, Strings{device_messages::PortNotOpened("1", port.open_result)});
}

TEST_F(DeviceCommandsTest, InfoWhenTheReceiverStopsAnsweringSaysSoOnce) {
  receiver.silent_after = 2;
  EXPECT_EQ(main.Device().GetInfo(), Outcome::LinkLost);
  EXPECT_EQ(desktop.messages, std::vector<std::string>{std::string(LinkLostText)});
  EXPECT_EQ(InReceiver()[0], 2);
  EXPECT_EQ(InReceiver()[1], std::nullopt);
}

TEST_F(DeviceCommandsTest, AutoDownloadTakesAllKindsWhateverWasSelected) {
  main.State().Settings().auto_download = true;
  TickDownload(false, true, false);
  EXPECT_EQ(main.Device().GetInfo(), Outcome::Done);
  EXPECT_EQ(main.State().Settings().download_kinds, (std::array<bool, 3>{true, true, true}));
  EXPECT_TRUE(main.State().Loaded(DataKind::Waypoint));
  EXPECT_TRUE(main.State().Loaded(DataKind::Route));
  EXPECT_TRUE(main.State().Loaded(DataKind::TrackLog));
}

TEST_F(DeviceCommandsTest, ControlCharactersOfADescriptionAreNotShown) {
  receiver.description = "GPS 12 \x1b[31m\nRed";
  EXPECT_EQ(main.Device().GetInfo(), Outcome::Done);
  EXPECT_EQ(main.State().ReceiverText(), "GPS 12  [31m Red  (Pid:130)");
}

// ---- Download

TEST_F(DeviceCommandsTest, DownloadWithoutASelectionIsRefused) {
  EXPECT_EQ(main.Device().Download(), Outcome::Refused);
  EXPECT_EQ(desktop.messages, std::vector<std::string>{std::string(messages::NothingToDownload)});
  EXPECT_TRUE(receiver.received.empty());
}

TEST_F(DeviceCommandsTest, DownloadFillsTheSelectedKinds) {
  TickDownload(true, false, true);
  EXPECT_EQ(main.Device().Download(), Outcome::Done);
  EXPECT_EQ(Held(), (Counts{2, std::nullopt, 3}));
  EXPECT_TRUE(main.State().Loaded(DataKind::Waypoint));
  EXPECT_FALSE(main.State().Loaded(DataKind::Route));
  EXPECT_EQ(Asked(RouteCommand), 0U);
  EXPECT_TRUE(desktop.questions.empty());  // nothing was held
  EXPECT_TRUE(desktop.Showed("DownLoading : Waypoint"));
  EXPECT_TRUE(desktop.Showed("DownLoading : TrackLog [3/3] Remaining 00:00"));
  EXPECT_EQ(desktop.caption, "");
  EXPECT_FALSE(main.State().CancelEnabled());
  EXPECT_FALSE(main.State().Busy());
}

// Cancel is pressed half a second behind the last packet that the receiver heard.
TEST_F(DeviceCommandsTest, CancelOnASilentLineEndsWithin300MsAndSaysNothingOfAReceiverThatIsOff) {
  for (const LinkChoice choice : {LinkChoice::Automatic, LinkChoice::Checked, LinkChoice::Plain}) {
    main.State().Settings().link = LinkChoice::Plain;
    loop.on_yield = {};
    receiver.silent_after.reset();
    DownloadAll();
    TickDo(true, true, true);
    main.State().Settings().link = choice;
    for (const auto command : {&DeviceCommands::GetInfo, &DeviceCommands::Download, &DeviceCommands::Upload}) {
      for (std::size_t heard = 0; heard < 6; ++heard) {
        SCOPED_TRACE(heard);
        desktop.messages.clear();
        receiver.received.clear();
        receiver.silent_after = heard;
        const std::string before = main.State().ReceiverText();
        std::size_t seen = 0;
        auto silent_since = clock.now;
        std::optional<std::chrono::nanoseconds> cancelled;
        loop.on_yield = [&] {
          if (receiver.received.size() <= heard || seen != receiver.received.size()) silent_since = clock.now;
          seen = receiver.received.size();
          if (cancelled || clock.now - silent_since < std::chrono::milliseconds{500}) return;
          EXPECT_TRUE(main.State().CancelEnabled());
          cancelled = clock.now;
          main.Cancel();
        };
        EXPECT_EQ((main.Device().*command)(), Outcome::Cancelled);
        ASSERT_TRUE(cancelled);
        EXPECT_LE(clock.now - *cancelled, std::chrono::milliseconds{300});
        EXPECT_EQ(desktop.messages, std::vector<std::string>{});
        EXPECT_EQ(main.State().ReceiverText(), before);
        EXPECT_EQ(desktop.caption, "");
        EXPECT_FALSE(main.State().CancelEnabled());
        EXPECT_FALSE(port.PortOpen());
        for (const DataKind kind : AllDataKinds)
          EXPECT_NE(InReceiver()[IndexOf(kind)], 0);
      }
    }
  }
}

TEST_F(DeviceCommandsTest, CancelCanBePressedFromTheIdentificationOn) {
  DownloadAll();
  TickDo(true, false, false);
  for (const auto command : {&DeviceCommands::GetInfo, &DeviceCommands::Download, &DeviceCommands::Upload}) {
    bool always = true;
    int turns = 0;
    loop.on_yield = [&] {
      ++turns;
      always = always && main.State().CancelEnabled();
    };
    EXPECT_EQ((main.Device().*command)(), Outcome::Done);
    EXPECT_TRUE(always);
    EXPECT_GT(turns, 0);
    EXPECT_FALSE(main.State().CancelEnabled());
  }
}

TEST_F(DeviceCommandsTest, CancelIsEnabledOnlyWhileTheTransferRuns) {
  TickDownload(true, false, false);
  bool seen = false;
  loop.on_yield = [&] { seen = seen || (main.State().CancelEnabled() && main.State().Busy()); };
  EXPECT_FALSE(main.State().CancelEnabled());
  main.Device().Download();
  EXPECT_TRUE(seen);
  EXPECT_FALSE(main.State().CancelEnabled());
}

TEST_F(DeviceCommandsTest, AKindThatTheReceiverReportedAsEmptyIsSkippedSilently) {
  TickDownload(true, true, false);
  main.State().SetReceiverCount(DataKind::Route, 0);
  EXPECT_EQ(main.Device().Download(), Outcome::Done);
  EXPECT_EQ(Asked(RouteCommand), 0U);
  EXPECT_TRUE(desktop.messages.empty());
}

TEST_F(DeviceCommandsTest, ALoadedKindIsAskedForOnceAndNoKeepsIt) {
  DownloadAll();
  desktop.yes = false;
  receiver.packets_of[WaypointCommand] = {WaypointPacket("NEW")};
  EXPECT_EQ(main.Device().Download(), Outcome::Done);
  EXPECT_EQ(desktop.questions, (std::vector<std::string>{messages::OverwriteHeldQuestion(DataKind::Waypoint),
                                                         messages::OverwriteHeldQuestion(DataKind::Route),
                                                         messages::OverwriteHeldQuestion(DataKind::TrackLog)}));
  EXPECT_EQ(Held()[0], 2);
  EXPECT_EQ(Data().Waypoints().at(0).ident.substr(0, 2), "W1");
  desktop.yes = true;
  EXPECT_EQ(main.Device().Download(), Outcome::Done);
  EXPECT_EQ(Held()[0], 1);
}

TEST_F(DeviceCommandsTest, AResultOfZeroLeavesCounterAndDataAsTheyWere) {
  DownloadAll();
  receiver.packets_of[WaypointCommand].clear();
  TickDownload(true, false, false);
  EXPECT_EQ(main.Device().Download(), Outcome::Done);
  EXPECT_EQ(Held()[0], 2);
  EXPECT_EQ(Data().Count(DataKind::Waypoint), 2U);
  EXPECT_TRUE(desktop.messages.empty());
}

TEST_F(DeviceCommandsTest, ACancelDuringRoutesKeepsWaypointsAndSkipsTheRest) {
  TickDownload(true, true, true);
  main.State().Settings().auto_save = true;
  main.State().Settings().auto_copy = true;
  loop.on_yield = [&] {
    if (Asked(RouteCommand) == 1 && receiver.received.back().id == 6) main.Cancel();
  };
  EXPECT_EQ(main.Device().Download(), Outcome::Cancelled);
  EXPECT_EQ(Held(), (Counts{2, std::nullopt, std::nullopt}));
  EXPECT_EQ(Asked(TrackCommand), 0U);
  EXPECT_TRUE(desktop.filters.empty());
  EXPECT_EQ(desktop.clipboard, "");
  EXPECT_TRUE(desktop.messages.empty());
  EXPECT_EQ(receiver.received.back(), Abort);
  EXPECT_FALSE(main.State().Busy());
}

TEST_F(DeviceCommandsTest, ASilentReceiverEmptiesTheHalfReceivedKindAndKeepsTheFinishedOnes) {
  DownloadAll();
  receiver.silent_after = 8;  // identification, the waypoints, and the beginning of the routes
  const auto start = clock.now;
  EXPECT_EQ(main.Device().Download(), Outcome::LinkLost);
  EXPECT_LT(clock.now - start, std::chrono::seconds{5});
  EXPECT_EQ(desktop.messages, std::vector<std::string>{std::string(LinkLostText)});
  EXPECT_EQ(Held(), (Counts{2, std::nullopt, 3}));
  EXPECT_FALSE(main.State().Loaded(DataKind::Route));
  EXPECT_EQ(Data().Count(DataKind::Route), 0U);
  EXPECT_FALSE(port.PortOpen());
}

TEST_F(DeviceCommandsTest, OneKindsTimeOutDoesNotEndTheNextCommand) {
  TickDownload(true, false, false);
  receiver.silent_after = 3;
  EXPECT_EQ(main.Device().Download(), Outcome::LinkLost);
  receiver.silent_after.reset();
  EXPECT_EQ(main.Device().Download(), Outcome::Done);
  EXPECT_EQ(Held()[0], 2);
}

TEST_F(DeviceCommandsTest, AReceiverSilentAtTheFirstPacketIsSaidAndTheOldDataStay) {
  DownloadAll();
  receiver.silent_after = 1;
  EXPECT_EQ(main.Device().Download(), Outcome::LinkLost);
  EXPECT_EQ(desktop.messages, std::vector<std::string>{std::string(LinkLostText)});
  EXPECT_EQ(Held()[0], 2);
}

TEST_F(DeviceCommandsTest, ACountThatLiesEndsWithAMessageAndAnEmptyKind) {
  DownloadAll();
  receiver.announced = -5;
  EXPECT_EQ(main.Device().Download(), Outcome::Refused);
  EXPECT_EQ(desktop.messages, std::vector<std::string>{std::string(messages::BadAnswer)});
  EXPECT_EQ(Held()[0], std::nullopt);
}

TEST_F(DeviceCommandsTest, NonsenseOnTheLineEndsTheCommandAndLeavesTheProgramUsable) {
  DownloadAll();
  const auto answer = port.script;
  port.script = [&](const Bytes& wire) {
    auto answers = answer(wire);
    if (Unwrapped(wire) == PlainPacket{6, {27, 0}}) {
      for (int i = 0; i < 5; ++i)
        answers.push_back(answers[0]);
    }
    return answers;
  };
  EXPECT_EQ(main.Device().Download(), Outcome::Refused);
  EXPECT_EQ(desktop.messages, std::vector<std::string>{std::string(messages::BadData)});
  EXPECT_EQ(Held()[0], std::nullopt);
  EXPECT_FALSE(port.PortOpen());
  EXPECT_FALSE(main.State().Busy());
  EXPECT_FALSE(main.State().CancelEnabled());
  port.script = answer;
  EXPECT_EQ(main.Device().Download(), Outcome::Done);
  EXPECT_EQ(Held()[0], 2);
}

TEST_F(DeviceCommandsTest, DamagedRecordsAreTold) {
  receiver.packets_of[WaypointCommand][0].data[14] = 0x10;
  receiver.packets_of[WaypointCommand][0].data[15] = 0x03;
  TickDownload(true, false, false);
  EXPECT_EQ(main.Device().Download(), Outcome::Done);
  const std::string notice = messages::DamagedRecords(DataKind::Waypoint, 1);
  EXPECT_EQ(main.State().Told().Take(), std::vector<std::string>{notice});
  EXPECT_EQ(desktop.caption, notice);
  EXPECT_TRUE(main.State().Told().Take().empty());
}

TEST_F(DeviceCommandsTest, PicturesThatTheReceiverLacksAreToldOnce) {
  for (const std::optional<std::uint16_t> smbl : {8246, 8246, 10}) {
    Waypoint waypoint;
    waypoint.ident = "A";
    waypoint.smbl = smbl;
    HoldWaypoint(waypoint);
  }
  TickDo(true, false, false);
  EXPECT_EQ(main.Device().Upload(), Outcome::Done);
  const std::string notice = messages::ReplacedRecords(DataKind::Waypoint, {"Waypoint 1", "Waypoint 2"});
  EXPECT_EQ(main.State().Told().Take(), std::vector<std::string>{notice});
  EXPECT_EQ(desktop.caption, notice);
  EXPECT_TRUE(desktop.messages.empty());
}

TEST_F(DeviceCommandsTest, RecordsThatNeverCameAreCountedByKind) {
  receiver.announced = 6;
  TickDownload(true, false, false);
  EXPECT_EQ(main.Device().Download(), Outcome::Done);
  EXPECT_EQ(desktop.messages.size(), 1U);  // the prescribed one
  EXPECT_EQ(main.State().Told().Take(), Strings{messages::MissingRecords(DataKind::Waypoint, 6, 4)});
  EXPECT_EQ(desktop.caption, messages::MissingRecords(DataKind::Waypoint, 6, 4));
  EXPECT_FALSE(Data().Waypoints().at(1).missing);
  EXPECT_TRUE(Data().Waypoints().at(2).missing);
  EXPECT_TRUE(Data().Waypoints().at(5).missing);
  EXPECT_EQ(Data().Count(DataKind::Waypoint), 6U);

  receiver.announced.reset();
  EXPECT_EQ(main.Device().Download(), Outcome::Done);
  EXPECT_TRUE(main.State().Told().Take().empty());
  EXPECT_EQ(Data().Count(DataKind::Waypoint), 2U);
}

TEST_F(DeviceCommandsTest, AutoSaveAndAutoCopyFollowTheDownloadedKinds) {
  main.State().Settings().auto_save = true;
  main.State().Settings().auto_copy = true;
  TickDownload(true, false, false);
  TickDo(false, true, true);
  EXPECT_EQ(main.Device().Download(), Outcome::Done);
  EXPECT_EQ(main.State().Settings().chosen_kinds, (std::array<bool, 3>{true, false, false}));
  EXPECT_EQ(desktop.filters.size(), 1U);  // the save dialog was shown, and cancelled
  EXPECT_EQ(desktop.clipboard.substr(0, 6), "WPT\tD\t");
}

TEST_F(DeviceCommandsTest, ACommandWhileAnotherRunsDoesNothing) {
  TickDownload(true, false, false);
  Outcome nested = Outcome::Done;
  loop.on_yield = [&] { nested = main.Device().GetInfo(); };
  EXPECT_EQ(main.Device().Download(), Outcome::Done);
  EXPECT_EQ(nested, Outcome::Busy);
}

TEST_F(DeviceCommandsTest, TheCapacityMessageIsShownOncePerKindUntilItIsDeleted) {
  HoldRoutes(78);
  main.State().SetHeldCount(DataKind::Route, 78);
  EXPECT_TRUE(desktop.messages.empty());
  HoldRoutes(1);
  main.State().SetHeldCount(DataKind::Route, 79);
  main.State().SetHeldCount(DataKind::Route, 79);
  EXPECT_EQ(desktop.messages, std::vector<std::string>{messages::KindFull(DataKind::Route)});
  EXPECT_EQ(main.State().Full(DataKind::Route), true);
  EXPECT_EQ(main.State().Full(DataKind::Waypoint), false);
  TickDo(false, true, false);
  EXPECT_EQ(main.Deletes().Delete(), Outcome::Done);
  EXPECT_EQ(main.State().Full(DataKind::Route), false);
  HoldRoutes(79);
  main.State().SetHeldCount(DataKind::Route, 79);
  EXPECT_EQ(desktop.messages.size(), 2U);
}

TEST_F(DeviceCommandsTest, TheOtherCapacityMessagesStandAt1999And1536) {
  HoldWaypointsAndLogs(1998, 1535);
  main.State().SetHeldCount(DataKind::Waypoint, 1998);
  main.State().SetHeldCount(DataKind::TrackLog, 1535);
  EXPECT_TRUE(desktop.messages.empty());
  HoldWaypointsAndLogs(1, 1);
  main.State().SetHeldCount(DataKind::Waypoint, 1999);
  main.State().SetHeldCount(DataKind::TrackLog, 1536);
  EXPECT_EQ(desktop.messages,
            (std::vector<std::string>{messages::KindFull(DataKind::Waypoint), messages::KindFull(DataKind::TrackLog)}));
}

TEST_F(DeviceCommandsTest, ManyPacketsOfFewRoutesAreNotTheLimit) {
  auto& packets = receiver.packets_of[RouteCommand];
  for (int p = 0; p < 90; ++p)
    packets.push_back(RoutePointPacket("P"));
  TickDownload(false, true, false);
  EXPECT_EQ(main.Device().Download(), Outcome::Done);
  EXPECT_EQ(Held()[1], 92);
  EXPECT_TRUE(desktop.messages.empty());
}

TEST_F(DeviceCommandsTest, AFullKindThatIsLostIsAsEmptyAsAnyOther) {
  DownloadAll();
  HoldRoutes(78);
  main.State().SetHeldCount(DataKind::Route, 79);
  ASSERT_TRUE(main.State().Full(DataKind::Route));
  TickDownload(false, true, false);
  receiver.silent_after = 3;
  EXPECT_EQ(main.Device().Download(), Outcome::LinkLost);
  EXPECT_FALSE(main.State().Full(DataKind::Route));
  EXPECT_EQ(main.State().Full(DataKind::Route), false);
}

TEST_F(DeviceCommandsTest, ACounterOfZeroLeavesTheLoadedFlagAndADashClearsIt) {
  main.State().SetHeldCount(DataKind::Waypoint, 3);
  main.State().SetHeldCount(DataKind::Waypoint, 0);
  EXPECT_TRUE(main.State().Loaded(DataKind::Waypoint));
  main.State().Empty(DataKind::Waypoint);
  EXPECT_FALSE(main.State().Loaded(DataKind::Waypoint));
}

// ---- Delete

TEST_F(DeviceCommandsTest, DeleteEmptiesTheCheckedKindsAlone) {
  DownloadAll();
  TickDo(true, false, true);
  EXPECT_EQ(main.Deletes().Delete(), Outcome::Done);
  EXPECT_EQ(Held(), (Counts{std::nullopt, 2, std::nullopt}));
  EXPECT_EQ(Data().Count(DataKind::Waypoint), 0U);
  EXPECT_EQ(Data().Count(DataKind::Route), 1U);
  EXPECT_TRUE(desktop.Showed(std::string(messages::Deleting)));
  EXPECT_TRUE(desktop.questions.empty());
}

TEST_F(DeviceCommandsTest, DeleteWithNothingCheckedShowsAndTakesBackTheStatusAlone) {
  DownloadAll();
  desktop.SetStatusCaption("before");
  TickDo(false, false, false);
  EXPECT_EQ(main.Deletes().Delete(), Outcome::Done);
  EXPECT_TRUE(desktop.Showed(std::string(messages::Deleting)));
  EXPECT_EQ(desktop.caption, "before");
  EXPECT_EQ(Held()[0], 2);
}

// ---- Upload

TEST_F(DeviceCommandsTest, UploadWithoutASelectionIsRefused) {
  EXPECT_EQ(main.Device().Upload(), Outcome::Refused);
  EXPECT_EQ(desktop.messages, std::vector<std::string>{std::string(messages::NothingToUpload)});
}

TEST_F(DeviceCommandsTest, UploadWithoutDataIsRefused) {
  TickDo(true, true, true);
  EXPECT_EQ(main.Device().Upload(), Outcome::Refused);
  EXPECT_EQ(desktop.messages, std::vector<std::string>{std::string(messages::NothingHeld)});
}

TEST_F(DeviceCommandsTest, UploadSendsTheCheckedKindsAndShowsTheNewCounts) {
  DownloadAll();
  TickDo(true, false, true);
  receiver.packets_of[WaypointCommand] = {WaypointPacket("A"), WaypointPacket("B"), WaypointPacket("C"),
                                          WaypointPacket("D")};
  EXPECT_EQ(main.Device().Upload(), Outcome::Done);
  EXPECT_EQ(InReceiver()[0], 4);
  EXPECT_EQ(InReceiver()[2], 3);
  EXPECT_EQ(InReceiver()[1], std::nullopt);
  EXPECT_EQ(receiver.CountReceived({12, {7, 0}}), 1U);
  EXPECT_EQ(receiver.CountReceived({12, {4, 0}}), 0U);
  EXPECT_EQ(receiver.CountReceived({12, {6, 0}}), 1U);
  EXPECT_TRUE(desktop.Showed("UpLoading : Waypoint"));
  EXPECT_TRUE(desktop.Showed("UpLoading : TrackLog [3/3] Remaining 00:00"));
  EXPECT_EQ(desktop.caption, "");
  EXPECT_EQ(Held()[0], 2);
}

TEST_F(DeviceCommandsTest, AutoDeleteRemovesTheUploadedKinds) {
  DownloadAll();
  main.State().Settings().auto_delete = true;
  TickDo(true, false, false);
  EXPECT_EQ(main.Device().Upload(), Outcome::Done);
  EXPECT_EQ(Held(), (Counts{std::nullopt, 2, 3}));
}

TEST_F(DeviceCommandsTest, AReceiverThatStopsAnsweringDuringAnUploadLeavesTheDataUntouched) {
  DownloadAll();
  main.State().Settings().auto_delete = true;
  TickDo(true, true, true);
  receiver.silent_after = 2;
  EXPECT_EQ(main.Device().Upload(), Outcome::LinkLost);
  EXPECT_EQ(desktop.messages, std::vector<std::string>{std::string(LinkLostText)});
  EXPECT_EQ(Held(), (Counts{2, 2, 3}));
  EXPECT_EQ(Data().Count(DataKind::Waypoint), 2U);
}

TEST_F(DeviceCommandsTest, ACancelledUploadRunsNoAutoDelete) {
  DownloadAll();
  main.State().Settings().auto_delete = true;
  TickDo(true, true, true);
  loop.on_yield = [&] {
    if (receiver.received.size() == 3) main.Cancel();
  };
  EXPECT_EQ(main.Device().Upload(), Outcome::Cancelled);
  EXPECT_EQ(Held()[0], 2);
  EXPECT_EQ(receiver.received.back(), Abort);
}

TEST_F(DeviceCommandsTest, ACancelledUploadAsksForTheNewCountAllTheSame) {
  DownloadAll();
  main.State().SetReceiverCount(DataKind::Waypoint, 0);
  TickDo(true, false, false);
  loop.on_yield = [&] {
    if (receiver.received.size() == 3) main.Cancel();
  };
  EXPECT_EQ(main.Device().Upload(), Outcome::Cancelled);
  EXPECT_EQ(InReceiver()[0], 2);
}

TEST_F(DeviceCommandsTest, ARecordThatCannotBeSentStopsItsOwnKindAlone) {
  DownloadAll();
  Data().Clear(DataKind::Waypoint);
  HoldWaypoint("EDGE", "", 35, 180.0);
  TickDo(true, true, false);
  EXPECT_EQ(main.Device().Upload(), Outcome::Refused);
  EXPECT_EQ(desktop.messages, Strings{device_messages::ValueOutOfRange("Waypoint 1")});
  EXPECT_EQ(receiver.CountReceived({12, {7, 0}}), 0U);
  EXPECT_EQ(receiver.CountReceived({12, {4, 0}}), 1U);
}

TEST_F(DeviceCommandsTest, APortThatIsTakenAfterTheIdentificationIsSaidAsSuch) {
  TickDownload(true, true, false);
  loop.on_yield = [&] {
    if (receiver.received.size() == 1) port.open_result.problem = PortProblem::InUse;
  };
  EXPECT_EQ(main.Device().Download(), Outcome::Refused);
  EXPECT_EQ(desktop.messages, Strings{device_messages::PortNotOpened("1", port.open_result)});
}

TEST_F(DeviceCommandsTest, APortThatIsGoneAfterTheIdentificationIsALostLink) {
  TickDownload(true, true, false);
  loop.on_yield = [&] {
    if (receiver.received.size() == 1) port.open_result.problem = PortProblem::Missing;
  };
  EXPECT_EQ(main.Device().Download(), Outcome::LinkLost);
  ASSERT_EQ(desktop.messages.size(), 2U);
  EXPECT_EQ(desktop.messages[1], std::string(messages::LinkLost));
}

TEST_F(DeviceCommandsTest, AnUploadWhoseEndIsNotAcknowledgedIsSaidAndRunsNoAutoDelete) {
  DownloadAll();
  TickDo(true, false, false);
  main.State().Settings().auto_delete = true;
  const auto answer = port.script;
  port.script = [&](const Bytes& wire) -> std::vector<ScriptedPort::Answer> {
    if (wire.at(1) == 12) return {{std::chrono::milliseconds{2}, WireFrame(21, Int16(12))}};
    return answer(wire);
  };
  EXPECT_EQ(main.Device().Upload(), Outcome::Refused);
  EXPECT_EQ(desktop.caption, messages::EndRefused(DataKind::Waypoint));
  EXPECT_TRUE(main.State().Loaded(DataKind::Waypoint));
}

TEST_F(DeviceCommandsTest, AnUploadWhoseEndStaysRefusedOrUnansweredRunsNoAutoDeleteOnEitherLink) {
  const auto answer = port.script;
  for (const bool checked : {false, true}) {
    for (const bool answered : {false, true}) {
      port.script = answer;
      main.State().Settings().auto_delete = false;
      DownloadAll();
      TickDo(true, false, false);
      main.State().Settings().auto_delete = true;
      main.State().Settings().link = checked ? LinkChoice::Checked : LinkChoice::Plain;
      port.script = [&](const Bytes& wire) -> std::vector<ScriptedPort::Answer> {
        if (wire.at(1) != 12) return answer(wire);
        if (!answered) return {};
        return {{std::chrono::milliseconds{2}, WireFrame(21, Int16(12))}};
      };
      EXPECT_EQ(main.Device().Upload(), Outcome::Refused);
      EXPECT_TRUE(desktop.caption.starts_with(messages::EndRefused(DataKind::Waypoint))) << desktop.caption;
      EXPECT_TRUE(main.State().Loaded(DataKind::Waypoint));
    }
  }
}

TEST_F(DeviceCommandsTest, ACountThatIsNotAnsweredLeavesNoOldOne) {
  DownloadAll();
  TickDo(true, false, false);
  main.State().SetReceiverCount(DataKind::Waypoint, 0);
  const auto answer = port.script;
  bool ended = false;
  port.script = [&](const Bytes& wire) -> std::vector<ScriptedPort::Answer> {
    if (wire.at(1) == 12) ended = true;
    return ended && wire.at(1) == 10 ? std::vector<ScriptedPort::Answer>{} : answer(wire);
  };
  EXPECT_EQ(main.Device().Upload(), Outcome::LinkLost);
  EXPECT_EQ(InReceiver()[0], std::nullopt);
}

TEST_F(DeviceCommandsTest, CancelWhileTheReceiverIsIdentifiedAsksForNoCount) {
  bool cancelled = false;
  const auto answer = port.script;
  port.script = [&](const Bytes& wire) {
    if (!cancelled) main.Cancel();
    cancelled = true;
    return answer(wire);
  };
  EXPECT_EQ(main.Device().GetInfo(), Outcome::Cancelled);
  EXPECT_EQ(receiver.ReceivedIds(), std::vector<int>{254});
}

TEST_F(DeviceCommandsTest, AnUploadThatIsNotAcknowledgedIsSaid) {
  DownloadAll();
  TickDo(true, false, false);
  loop.on_yield = [&] { receiver.acknowledges = receiver.received.size() != 1; };
  EXPECT_EQ(main.Device().Upload(), Outcome::NoReceiver);
  EXPECT_EQ(desktop.messages, std::vector<std::string>{std::string(messages::NotAcknowledged)});
}

// ---- What is shown meanwhile

/// The status line and whether Cancel can be pressed, at each command that begins a transfer.
struct Shown {
  std::string caption;
  bool cancel_enabled = false;
  friend bool operator==(const Shown&, const Shown&) = default;
};
void PrintTo(const Shown& shown, std::ostream* out) {
  *out << shown.caption << (shown.cancel_enabled ? " +" : " -");
}

class ShownMeanwhile : public DeviceCommandsTest {
 protected:
  ShownMeanwhile() {
    port.script = [this, answer = port.script](const Bytes& wire) {
      const PlainPacket packet = Unwrapped(wire);
      const bool begins = (packet.id == 10 && packet != Abort) || packet.id == 27;
      if (begins) shown.push_back({desktop.caption, main.State().CancelEnabled()});
      return answer(wire);
    };
  }

  std::vector<Shown> shown;
};

TEST_F(ShownMeanwhile, EachNumberIsAskedForUnderItsKindsName) {
  EXPECT_EQ(main.Device().GetInfo(), Outcome::Done);
  std::vector<std::string> captions;
  for (const Shown& one : shown)
    captions.push_back(one.caption);
  EXPECT_EQ(captions, (std::vector<std::string>{"Get Data Num of Waypoint", "Get Data Num of Route",
                                                "Get Data Num of TrackLog"}));
}

TEST_F(ShownMeanwhile, EachKindIsDownloadedUnderItsNameAndCanBeCancelled) {
  TickDownload(true, true, true);
  EXPECT_EQ(main.Device().Download(), Outcome::Done);
  EXPECT_EQ(shown,
            (std::vector<Shown>{
                {"DownLoading : Waypoint", true}, {"DownLoading : Route", true}, {"DownLoading : TrackLog", true}}));
  EXPECT_FALSE(main.State().CancelEnabled());
}

TEST_F(ShownMeanwhile, EachKindIsUploadedUnderItsNameAndCanBeCancelled) {
  DownloadAll();
  shown.clear();
  TickDo(true, true, true);
  EXPECT_EQ(main.Device().Upload(), Outcome::Done);
  // Behind each kind its new number is asked for.
  EXPECT_EQ(shown, (std::vector<Shown>{{"UpLoading : Waypoint", true},
                                       {"UpLoading : Waypoint", true},
                                       {"UpLoading : Route", true},
                                       {"UpLoading : Route", true},
                                       {"UpLoading : TrackLog", true},
                                       {"UpLoading : TrackLog", true}}));
  EXPECT_FALSE(main.State().CancelEnabled());
}

TEST_F(DeviceCommandsTest, AnInfoThatFailsIsFollowedByNoAutoDownload) {
  main.State().Settings().auto_download = true;
  receiver.silent_after = 2;
  EXPECT_EQ(main.Device().GetInfo(), Outcome::LinkLost);
  receiver.silent_after.reset();
  EXPECT_FALSE(main.State().Loaded(DataKind::Waypoint));
  EXPECT_EQ(main.State().Settings().download_kinds, (std::array<bool, 3>{false, false, false}));
}

TEST_F(DeviceCommandsTest, AKindIsStillThereWhileItsLossIsTold) {
  DownloadAll();
  receiver.silent_after = 8;
  std::optional<int> told;
  desktop.on_message = [&] { told = Held()[1]; };
  EXPECT_EQ(main.Device().Download(), Outcome::LinkLost);
  EXPECT_EQ(told, 2);
  EXPECT_EQ(Held()[1], std::nullopt);
}

}  // namespace
}  // namespace walrim

// The commands on the receiver, as a person presses them.
#include <chrono>
#include <gtest/gtest.h>
#include <string>

#include "app/WalrimMain.h"
#include "support/Fakes.h"
#include "support/ScriptedReceiver.h"

namespace walrim {
namespace {

constexpr int WaypointCommand = 7;
constexpr int RouteCommand = 4;
constexpr int TrackCommand = 6;
constexpr std::string_view LinkLostText = "電源が切れたか，コードが外れました．";
const PlainPacket Abort{10, {0, 0}};

class DeviceCommandsTest : public ::testing::Test {
 protected:
  DeviceCommandsTest() {
    receiver.description = "GPS 12 Software";
    main.controls.CheckedLink = LinkChoice::Plain;
    receiver.packets_of[WaypointCommand] = {Waypoint("W1"), Waypoint("W2")};
    receiver.packets_of[RouteCommand] = {RouteHeaderPacket("R1"), {30, Waypoint("P1").data}};
    receiver.packets_of[TrackCommand] = {Track(true), Track(false), Track(true)};
  }

  static PlainPacket Waypoint(std::string_view ident) {
    Bytes data(ident.begin(), ident.end());
    data.resize(6, ' ');
    data.resize(18, 0);
    data.resize(58, ' ');
    data.resize(60, 0);
    return {35, data};
  }
  static PlainPacket RouteHeaderPacket(std::string_view comment) {
    Bytes data{1};
    data.insert(data.end(), comment.begin(), comment.end());
    data.resize(21, ' ');
    return {29, data};
  }
  static PlainPacket Track(bool new_trk) {
    Bytes data(13, 0);
    data[12] = new_trk ? 1 : 0;
    return {34, data};
  }
  void HoldRoutes(int count) {
    for (int i = 0; i < count; ++i)
      ASSERT_GT(main.Data().AddRouteHeader(RouteHeader{}), 0);
  }
  void TickDownload(bool waypoint, bool route, bool track) { main.controls.DownCheck = {waypoint, route, track}; }
  void TickDo(bool waypoint, bool route, bool track) { main.controls.DoCheck = {waypoint, route, track}; }
  void DownloadAll() {
    TickDownload(true, true, true);
    ASSERT_EQ(main.GpsDownLoad_Click(), Outcome::Done);
    desktop.messages.clear();
    desktop.questions.clear();
    receiver.received.clear();
  }
  [[nodiscard]] std::size_t Asked(int command) const {
    return receiver.CountReceived({10, {static_cast<std::uint8_t>(command), 0}});
  }

  FakeClock clock;
  ScriptedPort port{clock};
  ScriptedReceiver receiver{port};
  FakeEventLoop loop;
  RecordingDesktop desktop;
  WalrimMain main{port, clock, loop, desktop};
};

// ---- Get GPS info

TEST_F(DeviceCommandsTest, InfoShowsTheReceiverAndItsCounts) {
  EXPECT_EQ(main.Get_GpsInfo_Click(), Outcome::Done);
  EXPECT_EQ(main.controls.GpsInfo, "GPS 12 Software  (Pid:130)");
  EXPECT_EQ(main.controls.GpsDataNum[0], "2");
  EXPECT_EQ(main.controls.GpsDataNum[1], "2");
  EXPECT_EQ(main.controls.GpsDataNum[2], "3");
  EXPECT_TRUE(desktop.Showed("Initializing Device"));
  EXPECT_TRUE(desktop.Showed("Get Data Num of Waypoint"));
  EXPECT_TRUE(desktop.Showed("Get Data Num of TrackLog"));
  EXPECT_EQ(desktop.caption, "");
  EXPECT_FALSE(main.Busy());
  EXPECT_FALSE(port.PortOpen());
}

TEST_F(DeviceCommandsTest, TheStatusLineSaysWhichLinkIsUsed) {
  const std::pair<LinkChoice, std::string_view> texts[] = {{LinkChoice::Plain, "誤り検査：しない"},
                                                           {LinkChoice::Checked, "誤り検査：する"},
                                                           {LinkChoice::Automatic, "誤り検査：する（自動）"}};
  for (const auto& [choice, text] : texts) {
    desktop.captions.clear();
    main.controls.CheckedLink = choice;
    EXPECT_EQ(main.Get_GpsInfo_Click(), Outcome::Done);
    EXPECT_TRUE(desktop.Showed(text)) << text;
  }
}

TEST_F(DeviceCommandsTest, WhereTheFirstAnswerIsSpoiltThePlainLinkIsChosenAndSaid) {
  main.controls.CheckedLink = LinkChoice::Automatic;
  const auto answer = port.script;
  port.script = [&](const Bytes& wire) {
    auto answers = answer(wire);
    if (wire.at(1) == 254) answers.at(0).bytes.at(5) ^= 0x01;  // the checksum of the ACK
    return answers;
  };
  receiver.packets_of[WaypointCommand][0].data[14] = 0x10;
  receiver.packets_of[WaypointCommand][0].data[15] = 0x03;
  TickDownload(true, false, false);
  EXPECT_EQ(main.GpsDownLoad_Click(), Outcome::Done);
  EXPECT_TRUE(desktop.Showed("誤り検査：しない（自動）"));
  EXPECT_TRUE(main.DamagedRecordsCame());
  port.script = answer;
  EXPECT_EQ(main.GpsDownLoad_Click(), Outcome::Done);
  EXPECT_TRUE(desktop.Showed("誤り検査：する（自動）"));
  EXPECT_FALSE(main.DamagedRecordsCame());
}

TEST_F(DeviceCommandsTest, InfoOfASilentReceiverShowsTheDescriptionAndNothingElse) {
  receiver.silent_after = 0;
  EXPECT_EQ(main.Get_GpsInfo_Click(), Outcome::NoReceiver);
  EXPECT_EQ(main.controls.GpsInfo, "電源が入っていないか，接続されていません． (Pid:-1)");
  EXPECT_EQ(receiver.ReceivedIds(), (std::vector<int>{254, 254}));
  EXPECT_TRUE(desktop.messages.empty());
}

TEST_F(DeviceCommandsTest, InfoThatFindsNonsenseSaysThatNothingWasIdentified) {
  receiver.acknowledges = false;
  EXPECT_EQ(main.Get_GpsInfo_Click(), Outcome::NoReceiver);
  EXPECT_EQ(main.controls.GpsInfo, "受信機を識別できませんでした． (Pid:0)");
  port.script = {};
  loop.on_yield = [&] { port.Queue({}, Bytes(20, 0x24)); };
  EXPECT_EQ(main.Get_GpsInfo_Click(), Outcome::NoReceiver);
  EXPECT_EQ(main.controls.GpsInfo, "受信機を識別できませんでした． (Pid:0)");
}

TEST_F(DeviceCommandsTest, InfoAtAReceiverThatRefusesSaysThatItRefuses) {
  receiver.acknowledges = false;
  main.controls.CheckedLink = LinkChoice::Checked;
  EXPECT_EQ(main.Get_GpsInfo_Click(), Outcome::NoReceiver);
  EXPECT_EQ(main.controls.GpsInfo, "受信機が要求に応じませんでした． (Pid:0)");
  EXPECT_EQ(receiver.ReceivedIds(), (std::vector<int>{254, 254, 254}));
}

TEST_F(DeviceCommandsTest, InfoOnALineWithAStrayByteEveryHalfSecondEndsWithinTenSeconds) {
  for (const LinkChoice choice : {LinkChoice::Automatic, LinkChoice::Checked, LinkChoice::Plain}) {
    main.controls.CheckedLink = choice;
    port.script = {};
    auto next = clock.now;
    loop.on_yield = [&] {
      if (clock.now < next) return;
      next = clock.now + std::chrono::milliseconds{500};
      port.Queue({}, {0x5A});
    };
    const auto start = clock.now;
    EXPECT_EQ(main.Get_GpsInfo_Click(), Outcome::NoReceiver);
    EXPECT_LT(clock.now - start, std::chrono::seconds{10});
    EXPECT_EQ(main.controls.GpsInfo, "受信機を識別できませんでした． (Pid:0)");
  }
}

TEST_F(DeviceCommandsTest, TheRequestIsRepeatedOnceBehindSilenceOrNonsense) {
  const auto answer = port.script;
  for (const LinkChoice choice : {LinkChoice::Automatic, LinkChoice::Checked, LinkChoice::Plain}) {
    for (const Bytes& first : {Bytes{}, Bytes{0x10, 0x15, 0x10}, WireFrame(6, Int16(35))}) {
      main.controls.CheckedLink = choice;
      int asked = 0;
      port.script = [&](const Bytes& wire) -> std::vector<ScriptedPort::Answer> {
        if (wire.at(1) != 254 || ++asked > 1) return answer(wire);
        if (first.empty()) return {};
        return {{std::chrono::milliseconds{2}, first}};
      };
      EXPECT_EQ(main.Get_GpsInfo_Click(), Outcome::Done);
      EXPECT_EQ(asked, 2);
    }
  }
}

TEST_F(DeviceCommandsTest, InfoOnATakenPortSaysSo) {
  port.open_result.problem = PortProblem::InUse;
  EXPECT_EQ(main.Get_GpsInfo_Click(), Outcome::Refused);
  ASSERT_EQ(desktop.messages.size(), 1U);
  EXPECT_EQ(desktop.messages[0].substr(0, desktop.messages[0].find('\n')), "Serial Port [ 1 ] は既に使われています");
}

TEST_F(DeviceCommandsTest, InfoWhenTheReceiverStopsAnsweringSaysSoOnce) {
  receiver.silent_after = 2;
  EXPECT_EQ(main.Get_GpsInfo_Click(), Outcome::LinkLost);
  EXPECT_EQ(desktop.messages, std::vector<std::string>{std::string(LinkLostText)});
  EXPECT_EQ(main.controls.GpsDataNum[0], "2");
  EXPECT_EQ(main.controls.GpsDataNum[1], "");
}

TEST_F(DeviceCommandsTest, AutoDownloadTakesAllKindsWhateverWasSelected) {
  main.controls.AutoDownload = true;
  TickDownload(false, true, false);
  EXPECT_EQ(main.Get_GpsInfo_Click(), Outcome::Done);
  EXPECT_EQ(main.controls.DownCheck, (std::array<bool, 3>{true, true, true}));
  EXPECT_TRUE(main.DataSetLoaded(DataKind::Waypoint));
  EXPECT_TRUE(main.DataSetLoaded(DataKind::Route));
  EXPECT_TRUE(main.DataSetLoaded(DataKind::TrackLog));
}

TEST_F(DeviceCommandsTest, ControlCharactersOfADescriptionAreNotShown) {
  receiver.description = "GPS 12 \x1b[31m\nRed";
  EXPECT_EQ(main.Get_GpsInfo_Click(), Outcome::Done);
  EXPECT_EQ(main.controls.GpsInfo, "GPS 12  [31m Red  (Pid:130)");
}

// ---- Download

TEST_F(DeviceCommandsTest, DownloadWithoutASelectionIsRefused) {
  EXPECT_EQ(main.GpsDownLoad_Click(), Outcome::Refused);
  EXPECT_EQ(desktop.messages, std::vector<std::string>{"DownLoadするDataSetが選択されていません．"});
  EXPECT_TRUE(receiver.received.empty());
}

TEST_F(DeviceCommandsTest, DownloadFillsTheSelectedKinds) {
  TickDownload(true, false, true);
  EXPECT_EQ(main.GpsDownLoad_Click(), Outcome::Done);
  EXPECT_EQ(main.controls.GpsNum, (std::array<std::string, 3>{"2", "-", "3"}));
  EXPECT_TRUE(main.DataSetLoaded(DataKind::Waypoint));
  EXPECT_FALSE(main.DataSetLoaded(DataKind::Route));
  EXPECT_EQ(Asked(RouteCommand), 0U);
  EXPECT_TRUE(desktop.questions.empty());  // nothing was held
  EXPECT_TRUE(desktop.Showed("DownLoading : Waypoint"));
  EXPECT_TRUE(desktop.Showed("DownLoading : TrackLog [3/3] Remaining 00:00"));
  EXPECT_EQ(desktop.caption, "");
  EXPECT_FALSE(main.controls.CancelEnabled);
  EXPECT_FALSE(main.Busy());
}

// Cancel is pressed half a second behind the last packet that the receiver heard.
TEST_F(DeviceCommandsTest, CancelOnASilentLineEndsWithin300MsAndSaysNothingOfAReceiverThatIsOff) {
  for (const LinkChoice choice : {LinkChoice::Automatic, LinkChoice::Checked, LinkChoice::Plain}) {
    main.controls.CheckedLink = LinkChoice::Plain;
    loop.on_yield = {};
    receiver.silent_after.reset();
    DownloadAll();
    TickDo(true, true, true);
    main.controls.CheckedLink = choice;
    for (Outcome (WalrimMain::*command)() :
         {&WalrimMain::Get_GpsInfo_Click, &WalrimMain::GpsDownLoad_Click, &WalrimMain::GpsUpLoad_Click}) {
      for (std::size_t heard = 0; heard < 6; ++heard) {
        SCOPED_TRACE(heard);
        desktop.messages.clear();
        receiver.received.clear();
        receiver.silent_after = heard;
        const std::string before = main.controls.GpsInfo;
        std::size_t seen = 0;
        auto silent_since = clock.now;
        std::optional<std::chrono::nanoseconds> cancelled;
        loop.on_yield = [&] {
          if (receiver.received.size() <= heard || seen != receiver.received.size()) silent_since = clock.now;
          seen = receiver.received.size();
          if (cancelled || clock.now - silent_since < std::chrono::milliseconds{500}) return;
          EXPECT_TRUE(main.controls.CancelEnabled);
          cancelled = clock.now;
          main.Cancel_Click();
        };
        EXPECT_EQ((main.*command)(), Outcome::Cancelled);
        ASSERT_TRUE(cancelled);
        EXPECT_LE(clock.now - *cancelled, std::chrono::milliseconds{300});
        EXPECT_EQ(desktop.messages, std::vector<std::string>{});
        EXPECT_EQ(main.controls.GpsInfo, before);
        EXPECT_EQ(desktop.caption, "");
        EXPECT_FALSE(main.controls.CancelEnabled);
        EXPECT_FALSE(port.PortOpen());
        for (const DataKind kind : AllDataKinds)
          EXPECT_NE(main.controls.GpsDataNum[IndexOf(kind)], "0");
      }
    }
  }
}

TEST_F(DeviceCommandsTest, CancelCanBePressedFromTheIdentificationOn) {
  DownloadAll();
  TickDo(true, false, false);
  for (Outcome (WalrimMain::*command)() :
       {&WalrimMain::Get_GpsInfo_Click, &WalrimMain::GpsDownLoad_Click, &WalrimMain::GpsUpLoad_Click}) {
    bool always = true;
    int turns = 0;
    loop.on_yield = [&] {
      ++turns;
      always = always && main.controls.CancelEnabled;
    };
    EXPECT_EQ((main.*command)(), Outcome::Done);
    EXPECT_TRUE(always);
    EXPECT_GT(turns, 0);
    EXPECT_FALSE(main.controls.CancelEnabled);
  }
}

TEST_F(DeviceCommandsTest, CancelIsEnabledOnlyWhileTheTransferRuns) {
  TickDownload(true, false, false);
  bool seen = false;
  loop.on_yield = [&] { seen = seen || (main.controls.CancelEnabled && main.Busy()); };
  EXPECT_FALSE(main.controls.CancelEnabled);
  main.GpsDownLoad_Click();
  EXPECT_TRUE(seen);
  EXPECT_FALSE(main.controls.CancelEnabled);
}

TEST_F(DeviceCommandsTest, AKindThatTheReceiverReportedAsEmptyIsSkippedSilently) {
  TickDownload(true, true, false);
  main.controls.GpsDataNum[1] = "0";
  EXPECT_EQ(main.GpsDownLoad_Click(), Outcome::Done);
  EXPECT_EQ(Asked(RouteCommand), 0U);
  EXPECT_TRUE(desktop.messages.empty());
}

TEST_F(DeviceCommandsTest, ALoadedKindIsAskedForOnceAndNoKeepsIt) {
  DownloadAll();
  desktop.yes = false;
  receiver.packets_of[WaypointCommand] = {Waypoint("NEW")};
  EXPECT_EQ(main.GpsDownLoad_Click(), Outcome::Done);
  EXPECT_EQ(desktop.questions,
            (std::vector<std::string>{"現在の内部データ(Waypoint)は上書きされます．よろしいですか？",
                                      "現在の内部データ(Route)は上書きされます．よろしいですか？",
                                      "現在の内部データ(TrackLog)は上書きされます．よろしいですか？"}));
  EXPECT_EQ(main.controls.GpsNum[0], "2");
  EXPECT_EQ(main.Data().d103[1].ident.Bare().substr(0, 2), "W1");
  desktop.yes = true;
  EXPECT_EQ(main.GpsDownLoad_Click(), Outcome::Done);
  EXPECT_EQ(main.controls.GpsNum[0], "1");
}

TEST_F(DeviceCommandsTest, AResultOfZeroLeavesCounterAndDataAsTheyWere) {
  DownloadAll();
  receiver.packets_of[WaypointCommand].clear();
  TickDownload(true, false, false);
  EXPECT_EQ(main.GpsDownLoad_Click(), Outcome::Done);
  EXPECT_EQ(main.controls.GpsNum[0], "2");
  EXPECT_EQ(main.Data().WaypointCount, 2);
  EXPECT_TRUE(desktop.messages.empty());
}

TEST_F(DeviceCommandsTest, ACancelDuringRoutesKeepsWaypointsAndSkipsTheRest) {
  TickDownload(true, true, true);
  main.controls.AutoSave = true;
  main.controls.AutoCopy = true;
  loop.on_yield = [&] {
    if (Asked(RouteCommand) == 1 && receiver.received.back().id == 6) main.Cancel_Click();
  };
  EXPECT_EQ(main.GpsDownLoad_Click(), Outcome::Cancelled);
  EXPECT_EQ(main.controls.GpsNum, (std::array<std::string, 3>{"2", "-", "-"}));
  EXPECT_EQ(Asked(TrackCommand), 0U);
  EXPECT_TRUE(desktop.filters.empty());
  EXPECT_EQ(desktop.clipboard, "");
  EXPECT_TRUE(desktop.messages.empty());
  EXPECT_EQ(receiver.received.back(), Abort);
  EXPECT_FALSE(main.Busy());
}

TEST_F(DeviceCommandsTest, ASilentReceiverEmptiesTheHalfReceivedKindAndKeepsTheFinishedOnes) {
  DownloadAll();
  receiver.silent_after = 8;  // identification, the waypoints, and the beginning of the routes
  const auto start = clock.now;
  EXPECT_EQ(main.GpsDownLoad_Click(), Outcome::LinkLost);
  EXPECT_LT(clock.now - start, std::chrono::seconds{5});
  EXPECT_EQ(desktop.messages, std::vector<std::string>{std::string(LinkLostText)});
  EXPECT_EQ(main.controls.GpsNum, (std::array<std::string, 3>{"2", "-", "3"}));
  EXPECT_FALSE(main.DataSetLoaded(DataKind::Route));
  EXPECT_EQ(main.Data().routes.RouteCount, 0);
  EXPECT_FALSE(port.PortOpen());
}

TEST_F(DeviceCommandsTest, OneKindsTimeOutDoesNotEndTheNextCommand) {
  TickDownload(true, false, false);
  receiver.silent_after = 3;
  EXPECT_EQ(main.GpsDownLoad_Click(), Outcome::LinkLost);
  receiver.silent_after.reset();
  EXPECT_EQ(main.GpsDownLoad_Click(), Outcome::Done);
  EXPECT_EQ(main.controls.GpsNum[0], "2");
}

TEST_F(DeviceCommandsTest, AReceiverSilentAtTheFirstPacketIsSaidAndTheOldDataStay) {
  DownloadAll();
  receiver.silent_after = 1;
  EXPECT_EQ(main.GpsDownLoad_Click(), Outcome::LinkLost);
  EXPECT_EQ(desktop.messages, std::vector<std::string>{std::string(LinkLostText)});
  EXPECT_EQ(main.controls.GpsNum[0], "2");
}

TEST_F(DeviceCommandsTest, ACountThatLiesEndsWithAMessageAndAnEmptyKind) {
  DownloadAll();
  receiver.announced = -5;
  EXPECT_EQ(main.GpsDownLoad_Click(), Outcome::Refused);
  EXPECT_EQ(desktop.messages, std::vector<std::string>{"受信機からの応答が正しくないため，通信を中止しました．"});
  EXPECT_EQ(main.controls.GpsNum[0], "-");
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
  EXPECT_EQ(main.GpsDownLoad_Click(), Outcome::Refused);
  EXPECT_EQ(desktop.messages, std::vector<std::string>{"受信データが異常なため，通信を中止しました．"});
  EXPECT_EQ(main.controls.GpsNum[0], "-");
  EXPECT_FALSE(port.PortOpen());
  EXPECT_FALSE(main.Busy());
  EXPECT_FALSE(main.controls.CancelEnabled);
  port.script = answer;
  EXPECT_EQ(main.GpsDownLoad_Click(), Outcome::Done);
  EXPECT_EQ(main.controls.GpsNum[0], "2");
}

TEST_F(DeviceCommandsTest, DamagedRecordsAreTold) {
  receiver.packets_of[WaypointCommand][0].data[14] = 0x10;
  receiver.packets_of[WaypointCommand][0].data[15] = 0x03;
  TickDownload(true, false, false);
  EXPECT_EQ(main.GpsDownLoad_Click(), Outcome::Done);
  const std::string notice =
      "(Waypoint)破損した記録が1件届きました．"
      "「誤り検査」を「する」にして，もう一度ダウンロードしてください．";
  EXPECT_EQ(main.TakeNotices(), std::vector<std::string>{notice});
  EXPECT_EQ(desktop.caption, notice);
  EXPECT_TRUE(main.TakeNotices().empty());
}

TEST_F(DeviceCommandsTest, PicturesThatTheReceiverLacksAreToldOnce) {
  for (const char* smbl : {"8246", "8246", "10"}) {
    WaypointRecord record;
    record[WaypointField::ident] = "A";
    record[WaypointField::smbl] = smbl;
    ASSERT_GT(main.Data().AddWaypoint(record), 0);
  }
  main.SetGpsNum(DataKind::Waypoint, "3");
  TickDo(true, false, false);
  EXPECT_EQ(main.GpsUpLoad_Click(), Outcome::Done);
  const std::string notice = "(Waypoint)受信機にない絵や色を，近いものに替えて送信しました：Waypoint 1，Waypoint 2．";
  EXPECT_EQ(main.TakeNotices(), std::vector<std::string>{notice});
  EXPECT_EQ(desktop.caption, notice);
  EXPECT_TRUE(desktop.messages.empty());
}

TEST_F(DeviceCommandsTest, RecordsThatNeverCameAreCountedByKind) {
  receiver.announced = 6;
  TickDownload(true, false, false);
  EXPECT_EQ(main.GpsDownLoad_Click(), Outcome::Done);
  EXPECT_EQ(desktop.messages.size(), 1U);  // the prescribed one
  EXPECT_EQ(main.TakeNotices(), std::vector<std::string>{"Waypoint：6件中4件が届きませんでした．"});
  EXPECT_EQ(desktop.caption, "Waypoint：6件中4件が届きませんでした．");
  EXPECT_FALSE(main.Data().IsMissingWaypoint(2));
  EXPECT_TRUE(main.Data().IsMissingWaypoint(3));
  EXPECT_TRUE(main.Data().IsMissingWaypoint(6));
  EXPECT_FALSE(main.Data().IsMissingWaypoint(7));

  receiver.announced.reset();
  EXPECT_EQ(main.GpsDownLoad_Click(), Outcome::Done);
  EXPECT_TRUE(main.TakeNotices().empty());
  EXPECT_FALSE(main.Data().IsMissingWaypoint(3));
}

TEST_F(DeviceCommandsTest, AutoSaveAndAutoCopyFollowTheDownloadedKinds) {
  main.controls.AutoSave = true;
  main.controls.AutoCopy = true;
  TickDownload(true, false, false);
  TickDo(false, true, true);
  EXPECT_EQ(main.GpsDownLoad_Click(), Outcome::Done);
  EXPECT_EQ(main.controls.DoCheck, (std::array<bool, 3>{true, false, false}));
  EXPECT_EQ(desktop.filters.size(), 1U);  // the save dialog was shown, and cancelled
  EXPECT_EQ(desktop.clipboard.substr(0, 6), "WPT\tD\t");
}

TEST_F(DeviceCommandsTest, ACommandWhileAnotherRunsDoesNothing) {
  TickDownload(true, false, false);
  Outcome nested = Outcome::Done;
  loop.on_yield = [&] { nested = main.Get_GpsInfo_Click(); };
  EXPECT_EQ(main.GpsDownLoad_Click(), Outcome::Done);
  EXPECT_EQ(nested, Outcome::Busy);
}

TEST_F(DeviceCommandsTest, TheCapacityMessageIsShownOncePerKindUntilItIsDeleted) {
  HoldRoutes(78);
  main.SetGpsNum(DataKind::Route, "78");
  EXPECT_TRUE(desktop.messages.empty());
  HoldRoutes(1);
  main.SetGpsNum(DataKind::Route, "79");
  main.SetGpsNum(DataKind::Route, "79");
  EXPECT_EQ(desktop.messages, std::vector<std::string>{"(Route)内部データ容量の限界です．"});
  EXPECT_EQ(main.controls.DataTypeBackColor[1], FullBackColor);
  EXPECT_EQ(main.controls.DataTypeBackColor[0], NormalBackColor);
  TickDo(false, true, false);
  EXPECT_EQ(main.Delete_Click(), Outcome::Done);
  EXPECT_EQ(main.controls.DataTypeBackColor[1], NormalBackColor);
  HoldRoutes(79);
  main.SetGpsNum(DataKind::Route, "79");
  EXPECT_EQ(desktop.messages.size(), 2U);
}

TEST_F(DeviceCommandsTest, TheOtherCapacityMessagesStandAt1999And1536) {
  main.Data().WaypointCount = 1998;
  main.Data().tracks.TrackCount = 1535;
  main.SetGpsNum(DataKind::Waypoint, "1998");
  main.SetGpsNum(DataKind::TrackLog, "1535");
  EXPECT_TRUE(desktop.messages.empty());
  main.Data().WaypointCount = 1999;
  main.Data().tracks.TrackCount = 1536;
  main.SetGpsNum(DataKind::Waypoint, "1999");
  main.SetGpsNum(DataKind::TrackLog, "1536");
  EXPECT_EQ(desktop.messages,
            (std::vector<std::string>{"(Waypoint)内部データ容量の限界です．", "(TrackLog)内部データ容量の限界です．"}));
}

TEST_F(DeviceCommandsTest, ManyPacketsOfFewRoutesAreNotTheLimit) {
  auto& packets = receiver.packets_of[RouteCommand];
  for (int p = 0; p < 90; ++p)
    packets.push_back({30, Waypoint("P").data});
  TickDownload(false, true, false);
  EXPECT_EQ(main.GpsDownLoad_Click(), Outcome::Done);
  EXPECT_EQ(main.controls.GpsNum[1], "92");
  EXPECT_TRUE(desktop.messages.empty());
}

TEST_F(DeviceCommandsTest, AFullKindThatIsLostIsAsEmptyAsAnyOther) {
  DownloadAll();
  HoldRoutes(78);
  main.SetGpsNum(DataKind::Route, "79");
  ASSERT_TRUE(main.CapacityWarned(DataKind::Route));
  TickDownload(false, true, false);
  receiver.silent_after = 3;
  EXPECT_EQ(main.GpsDownLoad_Click(), Outcome::LinkLost);
  EXPECT_FALSE(main.CapacityWarned(DataKind::Route));
  EXPECT_EQ(main.controls.DataTypeBackColor[1], NormalBackColor);
}

TEST_F(DeviceCommandsTest, ACounterOfZeroLeavesTheLoadedFlagAndADashClearsIt) {
  main.SetGpsNum(DataKind::Waypoint, "3");
  main.SetGpsNum(DataKind::Waypoint, "0");
  EXPECT_TRUE(main.DataSetLoaded(DataKind::Waypoint));
  main.SetGpsNum(DataKind::Waypoint, "-");
  EXPECT_FALSE(main.DataSetLoaded(DataKind::Waypoint));
}

// ---- Delete

TEST_F(DeviceCommandsTest, DeleteEmptiesTheCheckedKindsAlone) {
  DownloadAll();
  TickDo(true, false, true);
  EXPECT_EQ(main.Delete_Click(), Outcome::Done);
  EXPECT_EQ(main.controls.GpsNum, (std::array<std::string, 3>{"-", "2", "-"}));
  EXPECT_EQ(main.Data().WaypointCount, 0);
  EXPECT_EQ(main.Data().routes.RouteCount, 1);
  EXPECT_TRUE(desktop.Showed("内部データ削除中"));
  EXPECT_TRUE(desktop.questions.empty());
}

TEST_F(DeviceCommandsTest, DeleteWithNothingCheckedShowsAndTakesBackTheStatusAlone) {
  DownloadAll();
  desktop.SetStatusCaption("before");
  TickDo(false, false, false);
  EXPECT_EQ(main.Delete_Click(), Outcome::Done);
  EXPECT_TRUE(desktop.Showed("内部データ削除中"));
  EXPECT_EQ(desktop.caption, "before");
  EXPECT_EQ(main.controls.GpsNum[0], "2");
}

// ---- Upload

TEST_F(DeviceCommandsTest, UploadWithoutASelectionIsRefused) {
  EXPECT_EQ(main.GpsUpLoad_Click(), Outcome::Refused);
  EXPECT_EQ(desktop.messages, std::vector<std::string>{"UpLoadするDataSetが選択されていません．"});
}

TEST_F(DeviceCommandsTest, UploadWithoutDataIsRefused) {
  TickDo(true, true, true);
  EXPECT_EQ(main.GpsUpLoad_Click(), Outcome::Refused);
  EXPECT_EQ(desktop.messages, std::vector<std::string>{"内部データがありません．"});
}

TEST_F(DeviceCommandsTest, UploadSendsTheCheckedKindsAndShowsTheNewCounts) {
  DownloadAll();
  TickDo(true, false, true);
  receiver.packets_of[WaypointCommand] = {Waypoint("A"), Waypoint("B"), Waypoint("C"), Waypoint("D")};
  EXPECT_EQ(main.GpsUpLoad_Click(), Outcome::Done);
  EXPECT_EQ(main.controls.GpsDataNum[0], "4");
  EXPECT_EQ(main.controls.GpsDataNum[2], "3");
  EXPECT_EQ(main.controls.GpsDataNum[1], "");
  EXPECT_EQ(receiver.CountReceived({12, {7, 0}}), 1U);
  EXPECT_EQ(receiver.CountReceived({12, {4, 0}}), 0U);
  EXPECT_EQ(receiver.CountReceived({12, {6, 0}}), 1U);
  EXPECT_TRUE(desktop.Showed("UpLoading : Waypoint"));
  EXPECT_TRUE(desktop.Showed("UpLoading : TrackLog [3/3] Remaining 00:00"));
  EXPECT_EQ(desktop.caption, "");
  EXPECT_EQ(main.controls.GpsNum[0], "2");
}

TEST_F(DeviceCommandsTest, AutoDeleteRemovesTheUploadedKinds) {
  DownloadAll();
  main.controls.AutoDelete = true;
  TickDo(true, false, false);
  EXPECT_EQ(main.GpsUpLoad_Click(), Outcome::Done);
  EXPECT_EQ(main.controls.GpsNum, (std::array<std::string, 3>{"-", "2", "3"}));
}

TEST_F(DeviceCommandsTest, AReceiverThatStopsAnsweringDuringAnUploadLeavesTheDataUntouched) {
  DownloadAll();
  main.controls.AutoDelete = true;
  TickDo(true, true, true);
  receiver.silent_after = 2;
  EXPECT_EQ(main.GpsUpLoad_Click(), Outcome::LinkLost);
  EXPECT_EQ(desktop.messages, std::vector<std::string>{std::string(LinkLostText)});
  EXPECT_EQ(main.controls.GpsNum, (std::array<std::string, 3>{"2", "2", "3"}));
  EXPECT_EQ(main.Data().WaypointCount, 2);
}

TEST_F(DeviceCommandsTest, ACancelledUploadRunsNoAutoDelete) {
  DownloadAll();
  main.controls.AutoDelete = true;
  TickDo(true, true, true);
  loop.on_yield = [&] {
    if (receiver.received.size() == 3) main.Cancel_Click();
  };
  EXPECT_EQ(main.GpsUpLoad_Click(), Outcome::Cancelled);
  EXPECT_EQ(main.controls.GpsNum[0], "2");
  EXPECT_EQ(receiver.received.back(), Abort);
}

TEST_F(DeviceCommandsTest, ACancelledUploadAsksForTheNewCountAllTheSame) {
  DownloadAll();
  main.controls.GpsDataNum[0] = "0";
  TickDo(true, false, false);
  loop.on_yield = [&] {
    if (receiver.received.size() == 3) main.Cancel_Click();
  };
  EXPECT_EQ(main.GpsUpLoad_Click(), Outcome::Cancelled);
  EXPECT_EQ(main.controls.GpsDataNum[0], "2");
}

TEST_F(DeviceCommandsTest, ARecordThatCannotBeSentStopsItsOwnKindAlone) {
  DownloadAll();
  main.Data().d103[1].lon_deg = 180.0;
  TickDo(true, true, false);
  EXPECT_EQ(main.GpsUpLoad_Click(), Outcome::Refused);
  EXPECT_EQ(desktop.messages, std::vector<std::string>{"Waypoint 1の値が受信機の範囲を超えています．"});
  EXPECT_EQ(receiver.CountReceived({12, {7, 0}}), 0U);
  EXPECT_EQ(receiver.CountReceived({12, {4, 0}}), 1U);
}

TEST_F(DeviceCommandsTest, APortThatIsTakenAfterTheIdentificationIsSaidAsSuch) {
  TickDownload(true, true, false);
  loop.on_yield = [&] {
    if (receiver.received.size() == 1) port.open_result.problem = PortProblem::InUse;
  };
  EXPECT_EQ(main.GpsDownLoad_Click(), Outcome::Refused);
  ASSERT_EQ(desktop.messages.size(), 1U);
  EXPECT_EQ(desktop.messages[0].find("Serial Port [ 1 ] は既に使われています"), 0U);
}

TEST_F(DeviceCommandsTest, APortThatIsGoneAfterTheIdentificationIsALostLink) {
  TickDownload(true, true, false);
  loop.on_yield = [&] {
    if (receiver.received.size() == 1) port.open_result.problem = PortProblem::Missing;
  };
  EXPECT_EQ(main.GpsDownLoad_Click(), Outcome::LinkLost);
  ASSERT_EQ(desktop.messages.size(), 2U);
  EXPECT_EQ(desktop.messages[1], "電源が切れたか，コードが外れました．");
}

TEST_F(DeviceCommandsTest, AnUploadWhoseEndIsNotAcknowledgedIsSaidAndRunsNoAutoDelete) {
  DownloadAll();
  TickDo(true, false, false);
  main.controls.AutoDelete = true;
  const auto answer = port.script;
  port.script = [&](const Bytes& wire) -> std::vector<ScriptedPort::Answer> {
    if (wire.at(1) == 12) return {{std::chrono::milliseconds{2}, WireFrame(21, Int16(12))}};
    return answer(wire);
  };
  EXPECT_EQ(main.GpsUpLoad_Click(), Outcome::Refused);
  EXPECT_EQ(desktop.caption,
            "(Waypoint)受信機が転送の終わりを受け取らなかったため，書き込まれていない可能性があります．");
  EXPECT_TRUE(main.DataSetLoaded(DataKind::Waypoint));
}

TEST_F(DeviceCommandsTest, AnUploadWhoseEndStaysRefusedOrUnansweredRunsNoAutoDeleteOnEitherLink) {
  const auto answer = port.script;
  for (const bool checked : {false, true}) {
    for (const bool answered : {false, true}) {
      port.script = answer;
      main.controls.AutoDelete = false;
      DownloadAll();
      TickDo(true, false, false);
      main.controls.AutoDelete = true;
      main.controls.CheckedLink = checked ? LinkChoice::Checked : LinkChoice::Plain;
      port.script = [&](const Bytes& wire) -> std::vector<ScriptedPort::Answer> {
        if (wire.at(1) != 12) return answer(wire);
        if (!answered) return {};
        return {{std::chrono::milliseconds{2}, WireFrame(21, Int16(12))}};
      };
      EXPECT_EQ(main.GpsUpLoad_Click(), Outcome::Refused);
      EXPECT_TRUE(desktop.caption.starts_with("(Waypoint)受信機が転送の終わりを受け取らなかった")) << desktop.caption;
      EXPECT_TRUE(main.DataSetLoaded(DataKind::Waypoint));
    }
  }
}

TEST_F(DeviceCommandsTest, ACountThatIsNotAnsweredLeavesNoOldOne) {
  DownloadAll();
  TickDo(true, false, false);
  main.controls.GpsDataNum[0] = "0";
  const auto answer = port.script;
  bool ended = false;
  port.script = [&](const Bytes& wire) -> std::vector<ScriptedPort::Answer> {
    if (wire.at(1) == 12) ended = true;
    return ended && wire.at(1) == 10 ? std::vector<ScriptedPort::Answer>{} : answer(wire);
  };
  EXPECT_EQ(main.GpsUpLoad_Click(), Outcome::LinkLost);
  EXPECT_EQ(main.controls.GpsDataNum[0], "");
}

TEST_F(DeviceCommandsTest, CancelWhileTheReceiverIsIdentifiedAsksForNoCount) {
  bool cancelled = false;
  const auto answer = port.script;
  port.script = [&](const Bytes& wire) {
    if (!cancelled) main.Cancel_Click();
    cancelled = true;
    return answer(wire);
  };
  EXPECT_EQ(main.Get_GpsInfo_Click(), Outcome::Cancelled);
  EXPECT_EQ(receiver.ReceivedIds(), std::vector<int>{254});
}

TEST_F(DeviceCommandsTest, AnUploadThatIsNotAcknowledgedIsSaid) {
  DownloadAll();
  TickDo(true, false, false);
  loop.on_yield = [&] { receiver.acknowledges = receiver.received.size() != 1; };
  EXPECT_EQ(main.GpsUpLoad_Click(), Outcome::NoReceiver);
  EXPECT_EQ(desktop.messages, std::vector<std::string>{"受信機が要求に応じませんでした．"});
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
      if (begins) shown.push_back({desktop.caption, main.controls.CancelEnabled});
      return answer(wire);
    };
  }

  std::vector<Shown> shown;
};

TEST_F(ShownMeanwhile, EachNumberIsAskedForUnderItsKindsName) {
  EXPECT_EQ(main.Get_GpsInfo_Click(), Outcome::Done);
  std::vector<std::string> captions;
  for (const Shown& one : shown)
    captions.push_back(one.caption);
  EXPECT_EQ(captions, (std::vector<std::string>{"Get Data Num of Waypoint", "Get Data Num of Route",
                                                "Get Data Num of TrackLog"}));
}

TEST_F(ShownMeanwhile, EachKindIsDownloadedUnderItsNameAndCanBeCancelled) {
  TickDownload(true, true, true);
  EXPECT_EQ(main.GpsDownLoad_Click(), Outcome::Done);
  EXPECT_EQ(shown,
            (std::vector<Shown>{
                {"DownLoading : Waypoint", true}, {"DownLoading : Route", true}, {"DownLoading : TrackLog", true}}));
  EXPECT_FALSE(main.controls.CancelEnabled);
}

TEST_F(ShownMeanwhile, EachKindIsUploadedUnderItsNameAndCanBeCancelled) {
  DownloadAll();
  shown.clear();
  TickDo(true, true, true);
  EXPECT_EQ(main.GpsUpLoad_Click(), Outcome::Done);
  // Behind each kind its new number is asked for.
  EXPECT_EQ(shown, (std::vector<Shown>{{"UpLoading : Waypoint", true},
                                       {"UpLoading : Waypoint", true},
                                       {"UpLoading : Route", true},
                                       {"UpLoading : Route", true},
                                       {"UpLoading : TrackLog", true},
                                       {"UpLoading : TrackLog", true}}));
  EXPECT_FALSE(main.controls.CancelEnabled);
}

TEST_F(DeviceCommandsTest, AnInfoThatFailsIsFollowedByNoAutoDownload) {
  main.controls.AutoDownload = true;
  receiver.silent_after = 2;
  EXPECT_EQ(main.Get_GpsInfo_Click(), Outcome::LinkLost);
  receiver.silent_after.reset();
  EXPECT_FALSE(main.DataSetLoaded(DataKind::Waypoint));
  EXPECT_EQ(main.controls.DownCheck, (std::array<bool, 3>{false, false, false}));
}

TEST_F(DeviceCommandsTest, AKindIsStillThereWhileItsLossIsTold) {
  DownloadAll();
  receiver.silent_after = 8;
  std::string told;
  desktop.on_message = [&] { told = main.controls.GpsNum[1]; };
  EXPECT_EQ(main.GpsDownLoad_Click(), Outcome::LinkLost);
  EXPECT_EQ(told, "2");
  EXPECT_EQ(main.controls.GpsNum[1], "-");
}

}  // namespace
}  // namespace walrim

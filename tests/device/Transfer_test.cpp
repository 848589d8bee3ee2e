#include <chrono>
#include <gtest/gtest.h>
#include <stdexcept>

#include "device/Garmin.h"
#include "support/Fakes.h"
#include "support/ScriptedReceiver.h"

namespace walrim {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr std::string_view DataLoss =
    "GPS内のデータ不具合もしくは通信エラーのためデータの取りこぼしが発生した可能性があります．";
const PlainPacket Abort{10, {0, 0}};

class TransferTest : public ::testing::Test {
 protected:
  TransferTest() {
    garmin.SetDefaultProtocols();
    Speak("eTrex Software");
  }

  void Speak(std::string_view description) {
    ChooseProtocols(description, garmin.session.protocols);
    receiver.description = description;
  }
  static Bytes Padded(std::string_view text, std::size_t width) {
    Bytes bytes(text.begin(), text.end());
    bytes.resize(width, ' ');
    return bytes;
  }
  /// D103 waypoint at 0, 0.
  static PlainPacket Waypoint(std::string_view ident) {
    Bytes data = Padded(ident, 6);
    data.resize(18, 0);
    const Bytes comment = Padded("", 40);
    data.insert(data.end(), comment.begin(), comment.end());
    data.insert(data.end(), {0, 0});
    return {35, data};
  }
  static PlainPacket RoutePointPacket(std::string_view ident) { return {30, Waypoint(ident).data}; }
  static PlainPacket RouteHeaderPacket(int number, std::string_view comment) {
    Bytes data{static_cast<std::uint8_t>(number)};
    const Bytes text = Padded(comment, 20);
    data.insert(data.end(), text.begin(), text.end());
    return {29, data};
  }
  static PlainPacket TrackPoint300(bool new_trk) {
    Bytes data(13, 0);
    data[12] = new_trk ? 1 : 0;
    return {34, data};
  }
  static PlainPacket TrackPoint301(std::uint8_t time, bool new_trk = false) {
    Bytes data(21, 0);
    data[8] = time;
    data[20] = new_trk ? 1 : 0;
    return {34, data};
  }
  static std::vector<PlainPacket> TwoSegmentsAndASavedTrack() {
    // Every time is different, so that a point tells where it came from.
    return {{99, {1, 255, 'A', 0}}, TrackPoint301(1, true), TrackPoint301(2),       TrackPoint301(3, true),
            TrackPoint301(4),       {99, {0, 4, 'B', 0}},   TrackPoint301(5, true), TrackPoint301(6)};
  }
  void GiveWaypoints(int count) {
    for (int i = 1; i <= count; ++i)
      receiver.packets.push_back(Waypoint("W" + std::to_string(i)));
  }
  [[nodiscard]] std::int32_t Download(DataKind kind = DataKind::Waypoint) {
    garmin.session.TransferAborted = false;
    return garmin.Download(kind, "1", TransferMode::Transfer);
  }
  [[nodiscard]] std::int32_t Upload(DataKind kind) {
    garmin.session.TransferAborted = false;
    return garmin.Upload(kind, "1");
  }
  void HoldWaypoint(std::string_view ident) {
    WaypointRecord record;
    record[WaypointField::ident] = ident;
    record[WaypointField::lat] = "45";
    record[WaypointField::lon] = "135";
    ASSERT_GT(data.AddWaypoint(record), 0);
  }
  void HoldRoute(int points) {
    RouteHeader header;
    header[RouteHeaderField::nmbr] = "3";
    header[RouteHeaderField::cmnt] = "ROUTE";
    header[RouteHeaderField::rte_wpt_num] = std::to_string(points);
    const int route = data.AddRouteHeader(header);
    for (int p = 0; p < points; ++p) {
      RoutePoint point;
      point.waypoint[WaypointField::ident] = "P" + std::to_string(p);
      ASSERT_EQ(data.AddRoutePoint(point, route, p), p);
    }
  }
  void HoldLog(int points) {
    TrackHeader header;
    header[TrackHeaderField::trk_pnt_num] = std::to_string(points);
    header[TrackHeaderField::trk_ident] = "LOG";
    const int log = data.AddTrackHeader(header);
    for (int p = 0; p < points; ++p) {
      TrackPoint point;
      point[TrackPointField::new_trk] = p == 0 ? "TRUE" : "FALSE";
      ASSERT_EQ(data.AddTrackPoint(point, log, p), p);
    }
  }

  FakeClock clock;
  ScriptedPort port{clock};
  ScriptedReceiver receiver{port};
  FakeEventLoop loop;
  RecordingDesktop desktop;
  InternalData data;
  Garmin garmin{data, port, clock, loop, desktop};
};

// ---- Texts

TEST(ProgressText, ExtrapolatesInAStraightLine) {
  EXPECT_EQ(ProgressText("[3/10]", 3, 10, 6.0), "[3/10] Remaining 00:14");
  EXPECT_EQ(ProgressText("[10/10]", 10, 10, 60.0), "[10/10] Remaining 00:00");
}

TEST(ProgressText, ShowsNoTimeBeforeAnythingCame) {
  EXPECT_EQ(ProgressText("[0/10]", 0, 10, 6.0), "[0/10] Remaining ");
}

TEST(FormatRemaining, IsMinutesAndSeconds) {
  EXPECT_EQ(FormatRemaining(75), "01:15");
  EXPECT_EQ(FormatRemaining(5400), "90:00");
  EXPECT_EQ(FormatRemaining(0), "00:00");
}

TEST(StatusLine, ProgressStandsBehindWhatWasPushed) {
  RecordingDesktop desktop;
  StatusLine status(desktop);
  status.SetCaption("DownLoading : Waypoint");
  status.SetStatus("push");
  status.SetStatus("[1/2] Remaining 00:01");
  EXPECT_EQ(desktop.caption, "DownLoading : Waypoint [1/2] Remaining 00:01");
  status.SetStatus("Pop");
  EXPECT_EQ(desktop.caption, "DownLoading : Waypoint");
}

TEST(StatusLine, ASecondPushOverwritesTheFirst) {
  RecordingDesktop desktop;
  StatusLine status(desktop);
  status.SetCaption("one");
  status.SetStatus("PUSH");
  status.SetCaption("two");
  status.SetStatus("PUSH");
  status.SetCaption("three");
  status.SetStatus("POP");
  EXPECT_EQ(desktop.caption, "two");
}

// ---- Identification

TEST_F(TransferTest, ConnectingReadsTheProductDataAndChoosesTheTypes) {
  const ProductInfo info = garmin.ConnectDevice("1");
  EXPECT_EQ(info.ProductId, 130);
  EXPECT_FLOAT_EQ(info.SoftwareVersion, 2.14F);
  EXPECT_EQ(info.Description, "eTrex Software ");  // the second text is empty
  EXPECT_EQ(garmin.session.protocols.WaypointType, "D108");
  EXPECT_EQ(garmin.session.protocols.LinkProtocol, "L001");
  EXPECT_EQ(data.CurrentWaypointType, WaypointType::D108);
  EXPECT_FALSE(port.PortOpen());
}

TEST_F(TransferTest, APortThatCannotBeOpenedIsSaidAndChangesNothing) {
  const DeviceProtocols before = garmin.session.protocols;
  port.open_result = {PortProblem::InUse, "/dev/ttyS0", "", ""};
  const ProductInfo info = garmin.ConnectDevice("3");
  EXPECT_EQ(info.ProductId, 0);
  EXPECT_EQ(info.Description, "");
  ASSERT_EQ(desktop.messages.size(), 1U);
  EXPECT_EQ(desktop.messages[0], "Serial Port [ 3 ] は既に使われています\n/dev/ttyS0は他のプログラムが使用中です．");
  EXPECT_EQ(garmin.session.protocols, before);
}

TEST_F(TransferTest, APortWithoutPermissionNamesTheGroupAndTheCommand) {
  port.open_result = {PortProblem::NotPermitted, "/dev/ttyUSB0", "dialout", ""};
  static_cast<void>(garmin.ConnectDevice("1"));
  EXPECT_NE(desktop.messages.at(0).find("sudo usermod -aG dialout $USER"), std::string::npos);
}

TEST_F(TransferTest, AnUnknownModelIsTakenForD104WithoutAMessage) {
  receiver.description = "Something else";
  EXPECT_EQ(garmin.ConnectDevice("1").ProductId, 130);
  EXPECT_EQ(garmin.session.protocols.WaypointType, "D104");
  EXPECT_TRUE(desktop.messages.empty());
}

TEST_F(TransferTest, ASilentReceiverGivesIdMinusOneAndTheFallbackTypes) {
  receiver.silent_after = 0;
  data.CurrentWaypointType = WaypointType::D107;
  const ProductInfo info = garmin.ConnectDevice("1");
  EXPECT_EQ(info.ProductId, -1);
  EXPECT_EQ(info.SoftwareVersion, -1.0F);
  EXPECT_EQ(info.Description, "電源が入っていないか，接続されていません．");
  EXPECT_EQ(garmin.session.protocols.WaypointType, "D104");
  EXPECT_EQ(data.CurrentWaypointType, WaypointType::D107);  // the data that are held did not change
  EXPECT_TRUE(desktop.messages.empty());
}

TEST_F(TransferTest, AReplyWithoutAckIsNoReceiver) {
  receiver.acknowledges = false;
  const ProductInfo info = garmin.ConnectDevice("1");
  EXPECT_EQ(info.ProductId, 0);
  EXPECT_EQ(info.Description, "");
}

TEST_F(TransferTest, ProductDataThatComeLateAreWaitedFor) {
  receiver.gap = milliseconds{300};
  EXPECT_EQ(garmin.ConnectDevice("1").ProductId, 130);
  receiver.gap = seconds{6};
  EXPECT_EQ(garmin.ConnectDevice("1").ProductId, -1);
}

// ---- Download

TEST_F(TransferTest, ADownloadAsksAcknowledgesAndEndsWithAbort) {
  Speak("GPS 12 Software");
  GiveWaypoints(3);
  EXPECT_EQ(Download(), 3);
  EXPECT_EQ(data.WaypointCount, 3);
  EXPECT_EQ(data.d103[3].ident.Bare(), "W3");
  EXPECT_EQ(receiver.received,
            (std::vector<PlainPacket>{{10, {7, 0}}, {6, {27, 0}}, {6, {35, 0}}, {6, {35, 0}}, {6, {35, 0}}, Abort}));
  EXPECT_FALSE(port.PortOpen());
  EXPECT_TRUE(desktop.messages.empty());
}

TEST_F(TransferTest, ADownloadedWaypointIsHeldInAllFourLayouts) {
  Speak("GPS 12 Software");
  GiveWaypoints(1);
  ASSERT_EQ(Download(), 1);
  data.d104[1].ident.ZerosToBlanks();
  EXPECT_EQ(data.d104[1].ident.Bare(), "W1");
  EXPECT_EQ(data.d108[1].ident.substr(0, 2), "W1");
  EXPECT_EQ(data.d108[1].attr, 96);
}

TEST_F(TransferTest, ProgressStandsBehindTheCaption) {
  Speak("GPS 12 Software");
  GiveWaypoints(2);
  garmin.Status().SetCaption("DownLoading : Waypoint");
  ASSERT_EQ(Download(), 2);
  EXPECT_TRUE(desktop.Showed("DownLoading : Waypoint [1/2] Remaining 00:00"));
  EXPECT_TRUE(desktop.Showed("DownLoading : Waypoint [2/2] Remaining 00:00"));
  EXPECT_EQ(desktop.caption, "DownLoading : Waypoint");
}

TEST_F(TransferTest, AnEmptyReceiverIsAbortedWithoutProgress) {
  HoldWaypoint("OLD");
  EXPECT_EQ(Download(), 0);
  EXPECT_EQ(receiver.received, (std::vector<PlainPacket>{{10, {7, 0}}, Abort}));
  EXPECT_FALSE(port.PortOpen());
  EXPECT_TRUE(desktop.captions.empty());
  EXPECT_EQ(data.WaypointCount, 1);  // what was held stays
}

TEST_F(TransferTest, CountOnlyReturnsTheCountAndRequestsNoData) {
  GiveWaypoints(5);
  HoldWaypoint("OLD");
  EXPECT_EQ(garmin.Download(DataKind::Waypoint, "1", TransferMode::CountOnly), 5);
  EXPECT_EQ(receiver.received, (std::vector<PlainPacket>{{10, {7, 0}}, Abort}));
  EXPECT_EQ(data.WaypointCount, 1);
  EXPECT_TRUE(desktop.captions.empty());
}

TEST_F(TransferTest, AnEarlyXferCmpltWarnsOnceAndKeepsTheAnnouncedCount) {
  Speak("GPS 12 Software");
  for (int i = 0; i < 8; ++i)
    HoldWaypoint("OLD");
  GiveWaypoints(5);
  receiver.announced = 8;
  EXPECT_EQ(Download(), 8);
  EXPECT_EQ(data.WaypointCount, 8);
  EXPECT_EQ(desktop.messages, std::vector<std::string>{std::string(DataLoss)});
  EXPECT_EQ(data.d103[5].ident.Bare(), "W5");
  EXPECT_EQ(data.d103[6].ident.Bare(), "");  // cleared, not what was held before
  EXPECT_EQ(receiver.received.back(), Abort);
}

// The tables and the upload of another kind go by what is held.
TEST_F(TransferTest, WhatIsHeldStaysUntilADownloadHasEnded) {
  Speak("GPS 12 Software");
  HoldWaypoint("OLD");
  GiveWaypoints(3);
  std::vector<std::string> seen;
  loop.on_yield = [&] {
    if (receiver.received.back() != Abort) seen.push_back(data.GetWaypoint(1)[WaypointField::ident]);
  };
  EXPECT_EQ(Download(), 3);
  ASSERT_FALSE(seen.empty());
  EXPECT_EQ(seen, std::vector<std::string>(seen.size(), "OLD"));
  EXPECT_EQ(data.d103[1].ident.Bare(), "W1");
  EXPECT_EQ(data.WaypointCount, 3);
}

TEST_F(TransferTest, AReceiverWithMoreThanItAnnouncedWarnsToo) {
  Speak("GPS 12 Software");
  GiveWaypoints(5);
  receiver.announced = 3;
  EXPECT_EQ(Download(), 3);
  EXPECT_EQ(data.WaypointCount, 3);
  EXPECT_EQ(desktop.messages, std::vector<std::string>{std::string(DataLoss)});
}

TEST_F(TransferTest, AnUnknownFirstPacketWaitsForCancel) {
  Speak("GPS 12 Software");
  GiveWaypoints(3);
  receiver.packets[0].id = 200;
  int turns = 0;
  loop.on_yield = [&] {
    if (++turns == 500) garmin.session.TransferAborted = true;
  };
  const auto start = clock.now;
  EXPECT_EQ(Download(), -1);
  EXPECT_GE(turns, 500);
  EXPECT_GE(clock.now - start, seconds{2});  // it rests between the turns
  EXPECT_TRUE(desktop.Showed(" [0/3] Remaining "));
  EXPECT_EQ(receiver.CountReceived({6, {200, 0}}), 0U);
  EXPECT_EQ(receiver.received.back(), Abort);
}

TEST_F(TransferTest, CancelEndsTheTransferAfterItsExchange) {
  Speak("GPS 12 Software");
  GiveWaypoints(10);
  loop.on_yield = [&] {
    if (receiver.CountReceived({6, {35, 0}}) == 4) garmin.session.TransferAborted = true;
  };
  EXPECT_EQ(Download(), -1);
  EXPECT_LE(receiver.CountReceived({6, {35, 0}}), 5U);
  EXPECT_EQ(receiver.received.back(), Abort);
  EXPECT_FALSE(port.PortOpen());
}

TEST_F(TransferTest, AReceiverThatFallsSilentEndsWithMinusNineAndAnAbort) {
  Speak("GPS 12 Software");
  GiveWaypoints(10);
  receiver.silent_after = 4;
  const auto start = clock.now;
  EXPECT_EQ(Download(), -9);
  EXPECT_LT(clock.now - start, seconds{5});
  EXPECT_TRUE(garmin.session.TransferAborted);
  EXPECT_EQ(receiver.received.back(), Abort);
  EXPECT_FALSE(port.PortOpen());
}

TEST_F(TransferTest, SilenceAfterTheLastRecordIsNoFailure) {
  Speak("GPS 12 Software");
  GiveWaypoints(3);
  receiver.silent_after = 4;  // the command and three ACKs; the last ACK is answered by nothing
  EXPECT_EQ(Download(), 3);
  EXPECT_EQ(data.WaypointCount, 3);
  EXPECT_TRUE(desktop.messages.empty());
}

TEST_F(TransferTest, NoAckToTheCommandGivesZeroForEveryKind) {
  receiver.acknowledges = false;
  HoldWaypoint("OLD");
  for (const DataKind kind : AllDataKinds) {
    EXPECT_EQ(Download(kind), 0);
    EXPECT_TRUE(garmin.session.report.not_acknowledged);
  }
  EXPECT_EQ(data.WaypointCount, 1);
  receiver.silent_after = 0;
  EXPECT_EQ(Download(), 0);
  EXPECT_TRUE(garmin.session.report.no_answer);
  EXPECT_FALSE(port.PortOpen());
}

TEST_F(TransferTest, RecordsThatComeLateBehindTheAckAreWaitedFor) {
  Speak("GPS 12 Software");
  GiveWaypoints(2);
  receiver.gap = milliseconds{500};
  EXPECT_EQ(Download(), 2);
}

TEST_F(TransferTest, RecordsThatNeverComeBehindTheAckTimeOut) {
  Speak("GPS 12 Software");
  GiveWaypoints(2);
  receiver.gap = seconds{5};
  EXPECT_EQ(Download(), -9);
}

TEST_F(TransferTest, ACountThatLiesIsGivenUp) {
  HoldWaypoint("OLD");
  for (const int count : {-1, -32768, 2000, 32767}) {
    receiver.announced = count;
    EXPECT_EQ(Download(), -1) << count;
    EXPECT_TRUE(garmin.session.report.bad_answer);
    EXPECT_EQ(data.WaypointCount, 1);
  }
  receiver.announced = 32767;
  EXPECT_EQ(Download(DataKind::Route), -1);
  EXPECT_EQ(Download(DataKind::TrackLog), -1);
}

TEST_F(TransferTest, DamagedRecordsAreTakenAndCounted) {
  Speak("GPS 12 Software");
  GiveWaypoints(3);
  // A data byte 10 followed by 03 cuts the frame.
  receiver.packets[1].data[14] = 0x10;
  receiver.packets[1].data[15] = 0x03;
  EXPECT_EQ(Download(), 3);
  EXPECT_EQ(garmin.session.report.damaged_records, 1);
  EXPECT_EQ(data.d103[2].ident.Bare(), "W2");
  EXPECT_EQ(data.d103[3].ident.Bare(), "W3");
}

// 45h in the highest byte is a latitude of 97 degrees.
TEST_F(TransferTest, PositionsOffTheGlobeCountAsDamaged) {
  Speak("GPS 12 Software");
  GiveWaypoints(3);
  receiver.packets[1].data[9] = 0x45;
  EXPECT_EQ(Download(), 3);
  EXPECT_EQ(garmin.session.report.damaged_records, 1);
  receiver.packets = {RouteHeaderPacket(1, "R"), RoutePointPacket("A"), RoutePointPacket("B")};
  receiver.packets[1].data[9] = 0xBA;
  EXPECT_EQ(Download(DataKind::Route), 3);
  EXPECT_EQ(garmin.session.report.damaged_records, 1);
  receiver.packets = {TrackPoint300(true), TrackPoint300(false)};
  receiver.packets[0].data[3] = 0x45;
  receiver.packets[1].data[3] = 0x40;  // the pole
  EXPECT_EQ(Download(DataKind::TrackLog), 2);
  EXPECT_EQ(garmin.session.report.damaged_records, 1);
}

TEST_F(TransferTest, SixFramesAtOnceEndTheTransferWithThePortClosed) {
  Speak("GPS 12 Software");
  GiveWaypoints(3);
  const auto answer = port.script;
  port.script = [&](const Bytes& wire) {
    auto answers = answer(wire);
    if (Unwrapped(wire) == PlainPacket{6, {27, 0}}) {
      for (int i = 0; i < 5; ++i)
        answers.push_back(answers[0]);
    }
    return answers;
  };
  EXPECT_THROW(static_cast<void>(Download()), std::out_of_range);
  EXPECT_FALSE(port.PortOpen());
  EXPECT_EQ(receiver.received.back(), Abort);
}

TEST_F(TransferTest, NonsenseInAnswerToTheClosingAbortLosesNothingThatCame) {
  Speak("GPS 12 Software");
  GiveWaypoints(3);
  const auto answer = port.script;
  port.script = [&](const Bytes& wire) {
    auto answers = answer(wire);
    if (Unwrapped(wire) == Abort) {
      for (int i = 0; i < 6; ++i)
        answers.push_back(answers[0]);
    }
    return answers;
  };
  EXPECT_EQ(Download(), 3);
  EXPECT_EQ(data.WaypointCount, 3);
  EXPECT_FALSE(port.PortOpen());
}

TEST_F(TransferTest, ALostLineEndsTheTransferAtOnce) {
  Speak("GPS 12 Software");
  GiveWaypoints(3);
  receiver.silent_after = 3;
  loop.on_yield = [&] { port.line_lost = receiver.received.size() > 3; };
  const auto start = clock.now;
  EXPECT_EQ(Download(), -9);
  EXPECT_LT(clock.now - start, seconds{1});
}

// ---- Routes

TEST_F(TransferTest, RoutesWithoutLinksAreCutByTheirHeaders) {
  Speak("GPS 12 Software");
  receiver.packets = {RouteHeaderPacket(4, "FIRST"),  RoutePointPacket("A"), RoutePointPacket("B"),
                      RouteHeaderPacket(7, "SECOND"), RoutePointPacket("C"), RoutePointPacket("D"),
                      RoutePointPacket("E")};
  EXPECT_EQ(Download(DataKind::Route), 7);
  EXPECT_EQ(data.routes.RouteCount, 2);
  EXPECT_EQ(data.mirrored_routes.RoutePointCount[1], 2);
  EXPECT_EQ(data.mirrored_routes.RoutePointCount[2], 3);
  EXPECT_EQ(data.d201[2].nmbr, 7);
  EXPECT_EQ(data.d202[2].rte_ident, "SECOND");  // held for the other receivers too
  EXPECT_EQ(data.d103[2203].ident.Bare(), "E");
  EXPECT_EQ(data.mirrored_routes.first_point[2], 1);
}

TEST_F(TransferTest, LinksAreTakenUnderA201Alone) {
  const PlainPacket link{98, Bytes(21, 0)};
  receiver.packets = {{29, {'R', 0}}, {30, Bytes(54, 0)}, link};
  EXPECT_EQ(Download(DataKind::Route), 3);
  EXPECT_EQ(receiver.CountReceived({6, {98, 0}}), 1U);
  EXPECT_EQ(data.d210[LinkSlot(1, 1)].subclass[7], 0);

  Speak("GPS 12 Software");
  receiver.packets = {RouteHeaderPacket(1, "R"), RoutePointPacket("A"), link};
  receiver.received.clear();
  loop.on_yield = [&] { garmin.session.TransferAborted = clock.now > seconds{20}; };
  EXPECT_EQ(Download(DataKind::Route), -1);
  EXPECT_EQ(receiver.CountReceived({6, {98, 0}}), 0U);
}

TEST_F(TransferTest, ARouteKeeps99PointsAndTheNextRoutesSlotsAreNotTouched) {
  Speak("GPS 12 Software");
  receiver.packets = {RouteHeaderPacket(1, "LONG")};
  for (int p = 1; p <= 102; ++p)
    receiver.packets.push_back(RoutePointPacket("P" + std::to_string(p)));
  receiver.packets.push_back(RouteHeaderPacket(2, "NEXT"));
  receiver.packets.push_back(RoutePointPacket("N1"));
  EXPECT_EQ(Download(DataKind::Route), 105);
  EXPECT_EQ(data.routes.RoutePointCount[1], 99);
  EXPECT_EQ(data.d103[2199].ident.Bare(), "P99");
  EXPECT_EQ(data.d103[2200].ident.Bare(), "");
  EXPECT_EQ(data.d103[2201].ident.Bare(), "N1");
  EXPECT_EQ(desktop.messages, std::vector<std::string>{std::string(DataLoss)});
  EXPECT_EQ(receiver.CountReceived({6, {30, 0}}), 103U);
}

TEST_F(TransferTest, AnEightiethRouteHeaderIsARangeError) {
  Speak("GPS 12 Software");
  for (int r = 1; r <= 80; ++r)
    receiver.packets.push_back(RouteHeaderPacket(r, "R"));
  EXPECT_THROW(static_cast<void>(Download(DataKind::Route)), std::out_of_range);
  receiver.packets.pop_back();
  EXPECT_EQ(Download(DataKind::Route), 79);
  EXPECT_EQ(data.routes.RouteCount, 79);
}

// ---- The remaining time

/// Captions that end in a time, in the order in which they were shown.
std::vector<std::string> RemainingTimes(const RecordingDesktop& desktop) {
  std::vector<std::string> times;
  for (const std::string& caption : desktop.captions) {
    if (caption.find(" Remaining ") != std::string::npos) times.push_back(caption.substr(1));
  }
  return times;
}
using Times = std::vector<std::string>;

// A record takes two seconds: one until its first byte comes, and as long for its burst to settle.
TEST_F(TransferTest, TheRemainingTimeOfADownloadIsThatOfTheRecordsToCome) {
  Speak("GPS 12 Software");
  GiveWaypoints(4);
  receiver.delay = milliseconds{1000};
  EXPECT_EQ(Download(), 4);
  EXPECT_EQ(RemainingTimes(desktop), (Times{"[1/4] Remaining 00:06", "[2/4] Remaining 00:04", "[3/4] Remaining 00:02",
                                            "[4/4] Remaining 00:00"}));
}

TEST_F(TransferTest, TheRemainingTimeOfAnUploadIsTakenFromThePacketsThatWent) {
  Speak("GPS 12 Software");
  receiver.delay = milliseconds{1000};
  for (int i = 0; i < 4; ++i)
    HoldWaypoint("W");
  EXPECT_EQ(Upload(DataKind::Waypoint), 4);
  // Shown before its packet goes, and counted as if that had gone.
  EXPECT_EQ(RemainingTimes(desktop), (Times{"[1/4] Remaining 00:00", "[2/4] Remaining 00:02", "[3/4] Remaining 00:01",
                                            "[4/4] Remaining 00:00"}));
  desktop.captions.clear();
  HoldRoute(3);
  EXPECT_EQ(Upload(DataKind::Route), 4);
  // A header and three points; what has gone is counted.
  EXPECT_EQ(RemainingTimes(desktop),
            (Times{"[1/1,1/3] Remaining 00:06", "[1/1,2/3] Remaining 00:04", "[1/1,3/3] Remaining 00:02"}));
  desktop.captions.clear();
  HoldLog(4);
  EXPECT_EQ(Upload(DataKind::TrackLog), 4);
  EXPECT_EQ(RemainingTimes(desktop), (Times{"[1/4] Remaining 00:06", "[2/4] Remaining 00:04", "[3/4] Remaining 00:02",
                                            "[4/4] Remaining 00:00"}));
}

// ---- Tracks

TEST_F(TransferTest, AFirstPointWithNewTrkBeginsLog1) {
  Speak("GPS 12 Software");
  receiver.packets = {TrackPoint300(true), TrackPoint300(false), TrackPoint300(true)};
  EXPECT_EQ(Download(DataKind::TrackLog), 3);
  EXPECT_EQ(data.mirrored_tracks.TrackCount, 2);
  EXPECT_EQ(data.mirrored_tracks.TrackStart[1], 0);
  EXPECT_EQ(data.mirrored_tracks.TrackPointCount[1], 2);
  EXPECT_EQ(data.mirrored_tracks.TrackStart[2], 2);
  EXPECT_EQ(data.mirrored_tracks.TrackPointCount[2], 1);
  EXPECT_EQ(data.mirrored_tracks.TrackPointCount[0], 0);
}

TEST_F(TransferTest, PointsBeforeTheFirstNewTrkAreCountedInLog0) {
  Speak("GPS 12 Software");
  receiver.packets = {TrackPoint300(false), TrackPoint300(false), TrackPoint300(true)};
  EXPECT_EQ(Download(DataKind::TrackLog), 3);
  EXPECT_EQ(data.mirrored_tracks.TrackPointCount[0], 2);
  EXPECT_EQ(data.mirrored_tracks.TrackStart[0], 0);
  EXPECT_EQ(data.mirrored_tracks.TrackCount, 1);
  EXPECT_EQ(data.mirrored_tracks.TrackStart[1], 2);
}

TEST_F(TransferTest, AHeaderBeginsALogAndAFlagInsideItASegment) {
  receiver.packets = TwoSegmentsAndASavedTrack();
  EXPECT_EQ(Download(DataKind::TrackLog), 8);
  EXPECT_EQ(data.tracks.TrackCount, 2);
  EXPECT_EQ(data.d310[1].trk_ident, "A");
  EXPECT_EQ(data.tracks.TrackPointCount[1], 4);
  EXPECT_TRUE(data.TrackPointAt(1, 2).new_trk);
  EXPECT_EQ(data.d310[2].trk_ident, "B");
  EXPECT_EQ(data.d310[2].color, 4);
  EXPECT_FALSE(data.d310[2].dspl);
  EXPECT_EQ(data.tracks.TrackPointCount[2], 2);
  EXPECT_EQ(data.TrackPointAt(2, 0).time, 5);
}

TEST_F(TransferTest, ALogOfTwoSegmentsGoesBackAsItCame) {
  receiver.packets = TwoSegmentsAndASavedTrack();
  ASSERT_EQ(Download(DataKind::TrackLog), 8);
  receiver.received.clear();
  EXPECT_EQ(Upload(DataKind::TrackLog), 8);
  std::vector<PlainPacket> sent(receiver.received.begin() + 1, receiver.received.end() - 1);
  std::vector<PlainPacket> expected = TwoSegmentsAndASavedTrack();
  for (PlainPacket& packet : expected) {
    // A truth is sent as 255.
    std::uint8_t& truth = packet.id == 99 ? packet.data.front() : packet.data.back();
    if (truth != 0) truth = 255;
  }
  EXPECT_EQ(sent, expected);
}

TEST_F(TransferTest, AHeaderBeginsALogWhoseFirstPointHasNoFlag) {
  receiver.packets = {{99, {1, 255, 'A', 0}}, TrackPoint301(1, true), {99, {1, 255, 'B', 0}}, TrackPoint301(2)};
  EXPECT_EQ(Download(DataKind::TrackLog), 4);
  EXPECT_EQ(data.tracks.TrackCount, 2);
  EXPECT_EQ(data.tracks.TrackPointCount[1], 1);
  EXPECT_EQ(data.TrackPointAt(2, 0).time, 2);
}

TEST_F(TransferTest, PointsInFrontOfTheFirstHeaderAreALogOfTheirOwn) {
  receiver.packets = {TrackPoint301(1), TrackPoint301(2, true), {99, {1, 255, 'A', 0}}, TrackPoint301(3, true)};
  EXPECT_EQ(Download(DataKind::TrackLog), 4);
  EXPECT_EQ(data.tracks.TrackPointCount[0], 1);
  EXPECT_EQ(data.tracks.TrackCount, 2);
  EXPECT_EQ(data.d310[1].trk_ident, "");
  EXPECT_EQ(data.d310[2].trk_ident, "A");
  EXPECT_EQ(data.TrackPointAt(2, 0).time, 3);
}

// A receiver that has no headers may not send any: what looks like one cuts nothing.
TEST_F(TransferTest, WithoutTrackHeadersOnlyTheFlagsCut) {
  Speak("GPS 12 Software");
  receiver.packets = {TrackPoint300(true), {99, {1, 255, 'A', 0}}, TrackPoint300(false), TrackPoint300(true)};
  EXPECT_EQ(Download(DataKind::TrackLog), 4);
  EXPECT_EQ(data.tracks.TrackCount, 2);
  EXPECT_EQ(data.tracks.TrackPointCount[1], 2);
  EXPECT_EQ(data.d310[1].trk_ident, "");
}

TEST_F(TransferTest, PointsInFrontOfTheFirstLogGoBackFirst) {
  Speak("GPS 12 Software");
  receiver.packets = {TrackPoint300(false), TrackPoint300(false), TrackPoint300(true)};
  ASSERT_EQ(Download(DataKind::TrackLog), 3);
  receiver.received.clear();
  EXPECT_EQ(Upload(DataKind::TrackLog), 3);
  EXPECT_EQ(receiver.ReceivedIds(), (std::vector<int>{27, 34, 34, 34, 12}));
  EXPECT_EQ(receiver.received[1].data.at(12), 0);
  EXPECT_EQ(receiver.received[3].data.at(12), 255);
}

TEST_F(TransferTest, NothingOfTheLogsThatWereHeldStaysBehindADownload) {
  HoldLog(3);
  HoldLog(4);
  receiver.packets = {{99, {1, 255, 'N', 0}}, TrackPoint301(7, true)};
  EXPECT_EQ(Download(DataKind::TrackLog), 2);
  EXPECT_EQ(data.tracks.TrackCount, 1);
  EXPECT_EQ(data.tracks.TrackPointCount[1], 1);
  EXPECT_EQ(data.tracks.TrackPointCount[2], 0);
  EXPECT_EQ(data.d310[2].trk_ident, "");
  EXPECT_EQ(data.track_points[1].time, 0);
}

// ---- Exactly full, and one more

TEST_F(TransferTest, AReceiverOf30000PointsIsReadAndWrittenWhole) {
  Speak("GPS 12 Software");
  receiver.packets.assign(30000, TrackPoint300(false));
  receiver.packets.front() = TrackPoint300(true);
  receiver.packets.back().data[8] = 77;
  EXPECT_EQ(Download(DataKind::TrackLog), 30000);
  EXPECT_EQ(data.tracks.TrackPointCount[1], 30000);
  EXPECT_EQ(data.TrackPointAt(1, 29999).time, 77);
  EXPECT_TRUE(desktop.messages.empty());
  receiver.received.clear();
  EXPECT_EQ(Upload(DataKind::TrackLog), 30000);
  ASSERT_EQ(receiver.received.size(), 30002U);
  EXPECT_EQ(receiver.received[30000].data[8], 77);
}

TEST_F(TransferTest, OneTrackPointTooManyIsRefusedBeforeAnythingIsEmptied) {
  HoldLog(2);
  Speak("GPS 12 Software");
  receiver.announced = 30001;
  EXPECT_EQ(Download(DataKind::TrackLog), -1);
  EXPECT_TRUE(garmin.session.report.bad_answer);
  EXPECT_EQ(data.tracks.TrackPointCount[1], 2);
}

TEST_F(TransferTest, HeadersAreAnnouncedBeyondThePoints) {
  receiver.announced = 31536;
  receiver.packets = {{99, {1, 255, 'A', 0}}, TrackPoint301(1, true)};
  EXPECT_EQ(Download(DataKind::TrackLog), 31536);
  receiver.announced = 31537;
  EXPECT_EQ(Download(DataKind::TrackLog), -1);
  EXPECT_TRUE(garmin.session.report.bad_answer);
}

TEST_F(TransferTest, AReceiverOf1536LogsIsReadWholeAndOneMoreIsARangeError) {
  for (int log = 1; log <= 1536; ++log) {
    receiver.packets.push_back({99, {1, 255, 'A', 0}});
    receiver.packets.push_back(TrackPoint301(static_cast<std::uint8_t>(log % 200), true));
  }
  EXPECT_EQ(Download(DataKind::TrackLog), 3072);
  EXPECT_EQ(data.tracks.TrackCount, 1536);
  EXPECT_EQ(data.TrackPointAt(1536, 0).time, 1536 % 200);
  EXPECT_EQ(Upload(DataKind::TrackLog), 3072);
  receiver.packets.push_back({99, {1, 255, 'A', 0}});
  EXPECT_THROW(static_cast<void>(Download(DataKind::TrackLog)), std::out_of_range);
}

TEST_F(TransferTest, AReceiverOf1999WaypointsIsReadAndWrittenWhole) {
  Speak("GPS 12 Software");
  GiveWaypoints(1999);
  EXPECT_EQ(Download(), 1999);
  EXPECT_EQ(data.d103[1999].ident.Bare(), "W1999");
  EXPECT_TRUE(desktop.messages.empty());
  EXPECT_EQ(Upload(DataKind::Waypoint), 1999);
  EXPECT_EQ(receiver.received.at(receiver.received.size() - 2), receiver.packets.back());
}

TEST_F(TransferTest, RoutesMayAnnounceAPointAndALinkForEverySlot) {
  Speak("GPS 12 Software");
  receiver.packets = {RouteHeaderPacket(1, "R"), RoutePointPacket("A")};
  receiver.announced = 15879;
  EXPECT_EQ(Download(DataKind::Route), 15879);
  EXPECT_EQ(data.routes.RouteCount, 1);
  receiver.announced = 15880;
  EXPECT_EQ(Download(DataKind::Route), -1);
  EXPECT_TRUE(garmin.session.report.bad_answer);
  EXPECT_EQ(data.routes.RouteCount, 1);
}

TEST_F(TransferTest, AnEarlyEndKeepsTheTrackPointsThatCame) {
  Speak("GPS 12 Software");
  receiver.packets = {TrackPoint300(true), TrackPoint300(false)};
  receiver.announced = 9;
  EXPECT_EQ(Download(DataKind::TrackLog), 9);
  EXPECT_EQ(data.tracks.TrackPointCount[1], 2);
  EXPECT_EQ(desktop.messages.size(), 1U);
}

// ---- Upload

TEST_F(TransferTest, AWaypointUploadAnnouncesSendsAndCompletes) {
  HoldWaypoint("ONE");
  HoldWaypoint("TWO");
  EXPECT_EQ(Upload(DataKind::Waypoint), 2);
  EXPECT_EQ(receiver.ReceivedIds(), (std::vector<int>{27, 35, 35, 12}));
  EXPECT_EQ(receiver.received.front().data, (Bytes{2, 0}));
  EXPECT_EQ(receiver.received.back().data, (Bytes{7, 0}));
  EXPECT_TRUE(desktop.Showed(" [2/2] Remaining 00:00"));
  EXPECT_FALSE(port.PortOpen());
}

TEST_F(TransferTest, AnA201UploadOfThreePointsAnnouncesSevenPackets) {
  HoldRoute(3);
  EXPECT_EQ(Upload(DataKind::Route), 7);
  EXPECT_EQ(receiver.ReceivedIds(), (std::vector<int>{27, 29, 30, 98, 30, 98, 30, 98, 12}));
  EXPECT_EQ(receiver.received.front().data, (Bytes{7, 0}));
  EXPECT_EQ(receiver.received.back().data, (Bytes{4, 0}));
  EXPECT_TRUE(desktop.Showed(" [1/1,2/3] Remaining 00:00"));
}

TEST_F(TransferTest, AnA200UploadOfTwoAndThreePointsAnnouncesSevenPackets) {
  Speak("GPS 12 Software");
  HoldRoute(2);
  HoldRoute(3);
  EXPECT_EQ(Upload(DataKind::Route), 7);
  EXPECT_EQ(receiver.ReceivedIds(), (std::vector<int>{27, 29, 30, 30, 29, 30, 30, 30, 12}));
  EXPECT_EQ(receiver.received.front().data, (Bytes{7, 0}));
}

TEST_F(TransferTest, ADownloadedRouteUploadsAllOfItsPoints) {
  Speak("GPS 12 Software");
  receiver.packets = {RouteHeaderPacket(4, "FIRST"), RoutePointPacket("A"), RoutePointPacket("B")};
  ASSERT_EQ(Download(DataKind::Route), 3);
  receiver.received.clear();
  EXPECT_EQ(Upload(DataKind::Route), 3);
  EXPECT_EQ(receiver.received.at(1), receiver.packets[0]);
  EXPECT_EQ(receiver.received.at(2), receiver.packets[1]);
  EXPECT_EQ(receiver.received.at(3), receiver.packets[2]);
}

TEST_F(TransferTest, AnA301UploadOfThreeAndFourPointsAnnouncesNineRecords) {
  HoldLog(3);
  HoldLog(4);
  EXPECT_EQ(Upload(DataKind::TrackLog), 9);
  EXPECT_EQ(receiver.ReceivedIds(), (std::vector<int>{27, 99, 34, 34, 34, 99, 34, 34, 34, 34, 12}));
  EXPECT_EQ(receiver.received.front().data, (Bytes{9, 0}));
  EXPECT_EQ(receiver.received.back().data, (Bytes{6, 0}));
}

TEST_F(TransferTest, AnA300UploadSendsNoHeaders) {
  Speak("GPS 12 Software");
  HoldLog(2);
  EXPECT_EQ(Upload(DataKind::TrackLog), 2);
  EXPECT_EQ(receiver.ReceivedIds(), (std::vector<int>{27, 34, 34, 12}));
  EXPECT_EQ(receiver.received[1].data.at(12), 255);  // new_trk as stored
  EXPECT_EQ(receiver.received[2].data.at(12), 0);
}

// The noise 00 FF puts the id of product data where the id of whatever follows would be.
TEST_F(TransferTest, NoiseInFrontOfTheProductDataIsNoReceiver) {
  const auto answer = port.script;
  port.script = [&](const Bytes& wire) {
    auto answers = answer(wire);
    answers.at(1).bytes.insert(answers.at(1).bytes.begin(), {0x00, 0xFF, 0x5A, 0xA5, 0x7E});
    return answers;
  };
  const ProductInfo info = garmin.ConnectDevice("1");
  EXPECT_EQ(info.ProductId, 0);
  EXPECT_EQ(info.Description, "");
}

TEST_F(TransferTest, AnUploadWhoseEndIsNotAcknowledgedIsNoted) {
  HoldWaypoint("A");
  const auto answer = port.script;
  port.script = [&](const Bytes& wire) -> std::vector<ScriptedPort::Answer> {
    if (wire.at(1) == 12) return {{milliseconds{2}, WireFrame(21, Int16(12))}};
    return answer(wire);
  };
  EXPECT_EQ(Upload(DataKind::Waypoint), 1);
  EXPECT_TRUE(garmin.session.report.end_refused);
  port.script = answer;
  EXPECT_EQ(Upload(DataKind::Waypoint), 1);
  EXPECT_FALSE(garmin.session.report.end_refused);
}

TEST_F(TransferTest, AnUploadWithoutAckGivesZero) {
  HoldWaypoint("ONE");
  receiver.acknowledges = false;
  EXPECT_EQ(Upload(DataKind::Waypoint), 0);
  EXPECT_EQ(receiver.ReceivedIds(), std::vector<int>{27});
  EXPECT_FALSE(port.PortOpen());
}

TEST_F(TransferTest, AnUploadToAReceiverThatFallsSilentIsAborted) {
  for (int i = 0; i < 4; ++i)
    HoldWaypoint("W");
  receiver.silent_after = 2;
  EXPECT_EQ(Upload(DataKind::Waypoint), -9);
  EXPECT_EQ(receiver.received.back(), Abort);
  EXPECT_EQ(receiver.ReceivedIds(), (std::vector<int>{27, 35, 35, 10}));
}

TEST_F(TransferTest, ACancelledUploadIsAborted) {
  for (int i = 0; i < 4; ++i)
    HoldWaypoint("W");
  loop.on_yield = [&] { garmin.session.TransferAborted = receiver.received.size() >= 3; };
  EXPECT_EQ(Upload(DataKind::Waypoint), -1);
  EXPECT_EQ(receiver.received.back(), Abort);
}

TEST_F(TransferTest, ARecordThatTheReceiverCannotHoldStopsTheUploadBeforeItBegins) {
  HoldWaypoint("ONE");
  HoldWaypoint("CAFé");
  EXPECT_EQ(Upload(DataKind::Waypoint), -1);
  EXPECT_TRUE(receiver.received.empty());
  EXPECT_EQ(garmin.session.report.unsendable, "Waypoint 2の文字「é」は受信機に送れません．");
  data.ClearAllWaypoints();
  HoldWaypoint("EAST");
  data.d108[1].lon_deg = 180.0;
  EXPECT_EQ(Upload(DataKind::Waypoint), -1);
  EXPECT_EQ(garmin.session.report.unsendable, "Waypoint 1の値が受信機の範囲を超えています．");
}

TEST_F(TransferTest, AnUploadTellsWhichRecordsWereCut) {
  HoldWaypoint("ONE");
  HoldWaypoint("TWO");
  data.d108[2].addr = std::string(300, 'A');
  EXPECT_EQ(Upload(DataKind::Waypoint), 2);
  EXPECT_EQ(garmin.session.report.cut_records, std::vector<std::string>{"Waypoint 2"});
  EXPECT_EQ(receiver.received.at(2).data.size(), 250U);
}

TEST_F(TransferTest, RecordsThatAreNotAcknowledgedAreCounted) {
  for (int i = 0; i < 3; ++i)
    HoldWaypoint("W");
  loop.on_yield = [&] { receiver.acknowledges = receiver.received.size() != 2; };
  EXPECT_EQ(Upload(DataKind::Waypoint), 3);
  EXPECT_EQ(garmin.session.report.refused_records, 1);
}

}  // namespace
}  // namespace walrim

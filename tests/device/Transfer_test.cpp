#include <chrono>
#include <gtest/gtest.h>
#include <stdexcept>

#include "device/Messages.h"
#include "support/DeviceWorld.h"
#include "text/Scan.h"

namespace walrim {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

const PlainPacket Abort{10, {0, 0}};

class TransferTest : public ::testing::Test, protected DeviceWorld {
 protected:
  TransferTest() { Meet("eTrex Software"); }

  static std::vector<PlainPacket> TwoSegmentsAndASavedTrack() {
    // Every time is different, so that a point tells where it came from.
    return {{99, {1, 255, 'A', 0}}, TrackPoint301(1, true), TrackPoint301(2),       TrackPoint301(3, true),
            TrackPoint301(4),       {99, {0, 4, 'B', 0}},   TrackPoint301(5, true), TrackPoint301(6)};
  }
  void GiveWaypoints(int count) {
    for (int i = 1; i <= count; ++i)
      receiver.packets.push_back(WaypointPacket("W" + std::to_string(i)));
  }
  void HoldWaypoint(std::string_view ident, double lon_deg = 135) {
    Waypoint waypoint;
    waypoint.ident = ident;
    waypoint.lat_deg = 45;
    waypoint.lon_deg = lon_deg;
    ASSERT_EQ(data.Add(std::move(waypoint)), AddResult::Stored);
  }
  void HoldRoute(int points) {
    Route route{RouteHeaderType::D202, 3, "ROUTE", {}};
    for (int p = 0; p < points; ++p) {
      route.points.emplace_back();
      route.points.back().waypoint.ident = "P" + std::to_string(p);
    }
    ASSERT_EQ(data.Begin(std::move(route)), AddResult::Stored);
  }
  void HoldLog(int points) {
    TrackLog log;
    log.trk_ident = "LOG";
    ASSERT_EQ(data.Begin(std::move(log)), AddResult::Stored);
    for (int p = 0; p < points; ++p) {
      TrackPoint point;
      point.new_trk = p == 0;
      ASSERT_EQ(data.Add(point), AddResult::Stored);
    }
  }
  /// Names without the blanks that fill their fields.
  [[nodiscard]] std::string Ident(std::size_t number) const { return Bare(data.Waypoints().at(number - 1).ident); }
  [[nodiscard]] const Route& RouteOf(std::size_t number) const { return data.Routes().at(number - 1); }
  [[nodiscard]] std::string PointIdent(std::size_t route, std::size_t point) const {
    return Bare(RouteOf(route).points.at(point - 1).waypoint.ident);
  }
  /// A log by its number: a headless one is 0.
  [[nodiscard]] const TrackLog& Log(std::size_t number) const {
    return data.Logs().at(number - static_cast<std::size_t>(data.FirstLogNumber()));
  }
  [[nodiscard]] std::size_t WaypointCount() const { return data.Count(DataKind::Waypoint); }
  [[nodiscard]] std::size_t RouteCount() const { return data.Count(DataKind::Route); }
  [[nodiscard]] std::size_t LogCount() const { return data.Count(DataKind::TrackLog); }

 private:
  static std::string Bare(std::string_view text) { return std::string(TrimBlanks(text)); }
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

// ---- Identification

TEST_F(TransferTest, ConnectingReadsTheProductDataAndChoosesTheTypes) {
  const ProductInfo info = garmin.ConnectDevice("1");
  EXPECT_EQ(info.product_id, 130);
  EXPECT_EQ(info.description, "eTrex Software ");  // the second text is empty
  EXPECT_EQ(garmin.Protocols(), RichestProtocols);
  EXPECT_FALSE(port.PortOpen());
}

TEST_F(TransferTest, APortThatCannotBeOpenedIsSaidAndChangesNothing) {
  const DeviceProtocols before = garmin.Protocols();
  port.open_result = {PortProblem::InUse, "/dev/ttyS0", "", ""};
  const ProductInfo info = garmin.ConnectDevice("3");
  EXPECT_EQ(info.product_id, 0);
  EXPECT_EQ(info.description, "");
  ASSERT_EQ(desktop.messages.size(), 1U);
  EXPECT_EQ(desktop.messages[0], device_messages::PortNotOpened("3", port.open_result));
  EXPECT_EQ(garmin.Protocols(), before);
}

TEST_F(TransferTest, APortWithoutPermissionNamesTheGroupAndTheCommand) {
  port.open_result = {PortProblem::NotPermitted, "/dev/ttyUSB0", "dialout", ""};
  static_cast<void>(garmin.ConnectDevice("1"));
  EXPECT_EQ(desktop.messages.at(0), device_messages::PortNotOpened("1", port.open_result));
}

TEST_F(TransferTest, AnUnknownModelIsTakenForD104WithoutAMessage) {
  receiver.description = "Something else";
  EXPECT_EQ(garmin.ConnectDevice("1").product_id, 130);
  EXPECT_EQ(garmin.Protocols().waypoint, WaypointType::D104);
  EXPECT_TRUE(desktop.messages.empty());
}

TEST_F(TransferTest, ASilentReceiverGivesIdMinusOneAndTheFallbackTypes) {
  receiver.silent_after = 0;
  const ProductInfo info = garmin.ConnectDevice("1");
  EXPECT_EQ(info.product_id, -1);
  EXPECT_EQ(info.description, device_messages::SilentReceiver);
  EXPECT_EQ(garmin.Protocols().waypoint, WaypointType::D104);
  EXPECT_TRUE(desktop.messages.empty());
}

TEST_F(TransferTest, AReplyWithoutAckIsNoReceiver) {
  receiver.acknowledges = false;
  const ProductInfo info = garmin.ConnectDevice("1");
  EXPECT_EQ(info.product_id, 0);
  EXPECT_EQ(info.description, "");
}

TEST_F(TransferTest, ProductDataThatComeLateAreWaitedFor) {
  receiver.gap = milliseconds{300};
  EXPECT_EQ(garmin.ConnectDevice("1").product_id, 130);
  receiver.gap = seconds{6};
  EXPECT_EQ(garmin.ConnectDevice("1").product_id, -1);
}

// ---- Download

TEST_F(TransferTest, ADownloadAsksAcknowledgesAndEndsWithAbort) {
  Meet("GPS 12 Software");
  GiveWaypoints(3);
  EXPECT_EQ(Download(), 3);
  EXPECT_EQ(WaypointCount(), 3U);
  EXPECT_EQ(Ident(3), "W3");
  EXPECT_EQ(receiver.received,
            (std::vector<PlainPacket>{{10, {7, 0}}, {6, {27, 0}}, {6, {35, 0}}, {6, {35, 0}}, {6, {35, 0}}, Abort}));
  EXPECT_FALSE(port.PortOpen());
  EXPECT_TRUE(desktop.messages.empty());
}

TEST_F(TransferTest, ADownloadedWaypointGoesToReceiversOfOtherTypes) {
  Meet("GPS 12 Software");
  GiveWaypoints(1);
  ASSERT_EQ(Download(), 1);
  Meet("GPS III Software");
  ASSERT_EQ(Upload(DataKind::Waypoint), 1);
  // A zero character ends the texts. The dot has another number among all symbols.
  const Bytes comment = Joined({{0}, TextBytes("", 39)});
  EXPECT_EQ(receiver.received.at(1).data,
            Joined({TextBytes("W1"), {0}, TextBytes("", 3), Bytes(12, 0), comment, Bytes(4, 0), {18, 0, 0}}));
  Meet("eTrex Software");
  ASSERT_EQ(Upload(DataKind::Waypoint), 1);
  const Bytes& sent = receiver.received.at(1).data;
  EXPECT_EQ(sent.at(3), 96);
  EXPECT_EQ(Bytes(sent.begin() + 48, sent.begin() + 55), Joined({TextBytes("W1", 6), {0}}));
}

TEST_F(TransferTest, ProgressStandsBehindTheCaption) {
  Meet("GPS 12 Software");
  GiveWaypoints(2);
  desktop.caption = "DownLoading : Waypoint";
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
  EXPECT_EQ(WaypointCount(), 1U);  // what was held stays
}

TEST_F(TransferTest, CountOnlyReturnsTheCountAndRequestsNoData) {
  GiveWaypoints(5);
  HoldWaypoint("OLD");
  EXPECT_EQ(garmin.Download(data, DataKind::Waypoint, "1", TransferMode::CountOnly), 5);
  EXPECT_EQ(receiver.received, (std::vector<PlainPacket>{{10, {7, 0}}, Abort}));
  EXPECT_EQ(WaypointCount(), 1U);
  EXPECT_TRUE(desktop.captions.empty());
}

TEST_F(TransferTest, AnEarlyXferCmpltWarnsOnceAndKeepsTheAnnouncedCount) {
  Meet("GPS 12 Software");
  for (int i = 0; i < 8; ++i)
    HoldWaypoint("OLD");
  GiveWaypoints(5);
  receiver.announced = 8;
  EXPECT_EQ(Download(), 8);
  EXPECT_EQ(WaypointCount(), 8U);
  EXPECT_EQ(desktop.messages, std::vector<std::string>{std::string(device_messages::DataLoss)});
  EXPECT_EQ(Ident(5), "W5");
  EXPECT_EQ(Ident(6), "");  // not what was held before
  EXPECT_FALSE(data.Waypoints()[4].missing);
  EXPECT_TRUE(data.Waypoints()[5].missing);
  EXPECT_EQ(receiver.received.back(), Abort);
}

// The tables and the upload of another kind go by what is held.
TEST_F(TransferTest, WhatIsHeldStaysUntilADownloadHasEnded) {
  Meet("GPS 12 Software");
  HoldWaypoint("OLD");
  GiveWaypoints(3);
  std::vector<std::string> seen;
  loop.on_yield = [&] {
    if (receiver.received.back() != Abort) seen.push_back(Ident(1));
  };
  EXPECT_EQ(Download(), 3);
  ASSERT_FALSE(seen.empty());
  EXPECT_EQ(seen, std::vector<std::string>(seen.size(), "OLD"));
  EXPECT_EQ(Ident(1), "W1");
  EXPECT_EQ(WaypointCount(), 3U);
}

TEST_F(TransferTest, AReceiverWithMoreThanItAnnouncedWarnsToo) {
  Meet("GPS 12 Software");
  GiveWaypoints(5);
  receiver.announced = 3;
  EXPECT_EQ(Download(), 3);
  EXPECT_EQ(WaypointCount(), 3U);
  EXPECT_EQ(desktop.messages, std::vector<std::string>{std::string(device_messages::DataLoss)});
}

TEST_F(TransferTest, AnUnknownFirstPacketWaitsForCancel) {
  Meet("GPS 12 Software");
  GiveWaypoints(3);
  receiver.packets[0].id = 200;
  int turns = 0;
  loop.on_yield = [&] {
    if (++turns == 500) garmin.Cancel();
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
  Meet("GPS 12 Software");
  GiveWaypoints(10);
  loop.on_yield = [&] {
    if (receiver.CountReceived({6, {35, 0}}) == 4) garmin.Cancel();
  };
  EXPECT_EQ(Download(), -1);
  EXPECT_LE(receiver.CountReceived({6, {35, 0}}), 5U);
  EXPECT_EQ(receiver.received.back(), Abort);
  EXPECT_FALSE(port.PortOpen());
}

TEST_F(TransferTest, AReceiverThatFallsSilentEndsWithMinusNineAndAnAbort) {
  Meet("GPS 12 Software");
  GiveWaypoints(10);
  receiver.silent_after = 4;
  const auto start = clock.now;
  EXPECT_EQ(Download(), -9);
  EXPECT_LT(clock.now - start, seconds{5});
  EXPECT_EQ(receiver.received.back(), Abort);
  EXPECT_FALSE(port.PortOpen());
}

TEST_F(TransferTest, SilenceAfterTheLastRecordIsNoFailure) {
  Meet("GPS 12 Software");
  GiveWaypoints(3);
  receiver.silent_after = 4;  // the command and three ACKs; the last ACK is answered by nothing
  EXPECT_EQ(Download(), 3);
  EXPECT_EQ(WaypointCount(), 3U);
  EXPECT_TRUE(desktop.messages.empty());
}

TEST_F(TransferTest, NoAckToTheCommandGivesZeroForEveryKind) {
  receiver.acknowledges = false;
  HoldWaypoint("OLD");
  for (const DataKind kind : AllDataKinds) {
    EXPECT_EQ(Download(kind), 0);
    EXPECT_TRUE(garmin.Report().not_acknowledged);
  }
  EXPECT_EQ(WaypointCount(), 1U);
  receiver.silent_after = 0;
  EXPECT_EQ(Download(), 0);
  EXPECT_TRUE(garmin.Report().no_answer);
  EXPECT_FALSE(port.PortOpen());
}

TEST_F(TransferTest, RecordsThatComeLateBehindTheAckAreWaitedFor) {
  Meet("GPS 12 Software");
  GiveWaypoints(2);
  receiver.gap = milliseconds{500};
  EXPECT_EQ(Download(), 2);
}

TEST_F(TransferTest, RecordsThatNeverComeBehindTheAckTimeOut) {
  Meet("GPS 12 Software");
  GiveWaypoints(2);
  receiver.gap = seconds{5};
  EXPECT_EQ(Download(), -9);
}

TEST_F(TransferTest, ACountThatLiesIsGivenUp) {
  HoldWaypoint("OLD");
  for (const int count : {-1, -32768, 2000, 32767}) {
    receiver.announced = count;
    EXPECT_EQ(Download(), -1) << count;
    EXPECT_TRUE(garmin.Report().bad_answer);
    EXPECT_EQ(WaypointCount(), 1U);
  }
  receiver.announced = 32767;
  EXPECT_EQ(Download(DataKind::Route), -1);
  EXPECT_EQ(Download(DataKind::TrackLog), -1);
}

TEST_F(TransferTest, DamagedRecordsAreTakenAndCounted) {
  Meet("GPS 12 Software");
  GiveWaypoints(3);
  // A data byte 10 followed by 03 cuts the frame.
  receiver.packets[1].data[14] = 0x10;
  receiver.packets[1].data[15] = 0x03;
  EXPECT_EQ(Download(), 3);
  EXPECT_EQ(garmin.Report().damaged_records, 1);
  EXPECT_FALSE(data.Waypoints()[0].damaged);
  EXPECT_TRUE(data.Waypoints()[1].damaged);
  EXPECT_EQ(Ident(2), "W2");
  EXPECT_EQ(Ident(3), "W3");
}

// 45h in the highest byte is a latitude of 97 degrees.
TEST_F(TransferTest, PositionsOffTheGlobeCountAsDamaged) {
  Meet("GPS 12 Software");
  GiveWaypoints(3);
  receiver.packets[1].data[9] = 0x45;
  EXPECT_EQ(Download(), 3);
  EXPECT_EQ(garmin.Report().damaged_records, 1);
  EXPECT_TRUE(data.Waypoints()[1].damaged);
  receiver.packets = {RouteHeaderPacket(1, "R"), RoutePointPacket("A"), RoutePointPacket("B")};
  receiver.packets[1].data[9] = 0xBA;
  EXPECT_EQ(Download(DataKind::Route), 3);
  EXPECT_EQ(garmin.Report().damaged_records, 1);
  EXPECT_FALSE(data.Routes()[0].damaged);
  EXPECT_TRUE(data.Routes()[0].points[0].waypoint.damaged);
  EXPECT_FALSE(data.Routes()[0].points[1].waypoint.damaged);
  receiver.packets = {TrackPoint300(true), TrackPoint300(false)};
  receiver.packets[0].data[3] = 0x45;
  receiver.packets[1].data[3] = 0x40;  // the pole
  EXPECT_EQ(Download(DataKind::TrackLog), 2);
  EXPECT_EQ(garmin.Report().damaged_records, 1);
  EXPECT_TRUE(data.Logs()[0].points[0].damaged);
  EXPECT_FALSE(data.Logs()[0].points[1].damaged);
}

TEST_F(TransferTest, SixFramesAtOnceEndTheTransferWithThePortClosed) {
  Meet("GPS 12 Software");
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
  Meet("GPS 12 Software");
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
  EXPECT_EQ(WaypointCount(), 3U);
  EXPECT_FALSE(port.PortOpen());
}

TEST_F(TransferTest, ALostLineEndsTheTransferAtOnce) {
  Meet("GPS 12 Software");
  GiveWaypoints(3);
  receiver.silent_after = 3;
  loop.on_yield = [&] { port.line_lost = receiver.received.size() > 3; };
  const auto start = clock.now;
  EXPECT_EQ(Download(), -9);
  EXPECT_LT(clock.now - start, seconds{1});
}

// ---- Routes

TEST_F(TransferTest, RoutesWithoutLinksAreCutByTheirHeaders) {
  Meet("GPS 12 Software");
  receiver.packets = {RouteHeaderPacket(4, "FIRST"),  RoutePointPacket("A"), RoutePointPacket("B"),
                      RouteHeaderPacket(7, "SECOND"), RoutePointPacket("C"), RoutePointPacket("D"),
                      RoutePointPacket("E")};
  EXPECT_EQ(Download(DataKind::Route), 7);
  EXPECT_EQ(RouteCount(), 2U);
  EXPECT_EQ(RouteOf(1).points.size(), 2U);
  EXPECT_EQ(RouteOf(2).points.size(), 3U);
  EXPECT_EQ(RouteOf(2).nmbr, 7);
  EXPECT_EQ(TrimBlanks(RouteOf(2).cmnt), "SECOND");
  EXPECT_EQ(PointIdent(2, 3), "E");
}

TEST_F(TransferTest, LinksAreTakenUnderA201Alone) {
  const PlainPacket link{98, Bytes(21, 0)};
  receiver.packets = {{29, {'R', 0}}, {30, Bytes(54, 0)}, link};
  EXPECT_EQ(Download(DataKind::Route), 3);
  EXPECT_EQ(receiver.CountReceived({6, {98, 0}}), 1U);
  EXPECT_EQ(RouteOf(1).points.at(0).link->subclass[7], 0);

  Meet("GPS 12 Software");
  receiver.packets = {RouteHeaderPacket(1, "R"), RoutePointPacket("A"), link};
  receiver.received.clear();
  loop.on_yield = [&, deadline = clock.now + seconds{20}] {
    if (clock.now > deadline) garmin.Cancel();
  };
  EXPECT_EQ(Download(DataKind::Route), -1);
  EXPECT_EQ(receiver.CountReceived({6, {98, 0}}), 0U);
}

TEST_F(TransferTest, ARouteKeeps99PointsAndTheNextRoutesSlotsAreNotTouched) {
  Meet("GPS 12 Software");
  receiver.packets = {RouteHeaderPacket(1, "LONG")};
  for (int p = 1; p <= 102; ++p)
    receiver.packets.push_back(RoutePointPacket("P" + std::to_string(p)));
  receiver.packets.push_back(RouteHeaderPacket(2, "NEXT"));
  receiver.packets.push_back(RoutePointPacket("N1"));
  EXPECT_EQ(Download(DataKind::Route), 105);
  EXPECT_EQ(RouteOf(1).points.size(), 99U);
  EXPECT_EQ(PointIdent(1, 99), "P99");
  EXPECT_EQ(PointIdent(2, 1), "N1");
  EXPECT_EQ(desktop.messages, std::vector<std::string>{std::string(device_messages::DataLoss)});
  EXPECT_EQ(receiver.CountReceived({6, {30, 0}}), 103U);
}

TEST_F(TransferTest, AnEightiethRouteHeaderIsARangeError) {
  Meet("GPS 12 Software");
  for (int r = 1; r <= 80; ++r)
    receiver.packets.push_back(RouteHeaderPacket(r, "R"));
  EXPECT_THROW(static_cast<void>(Download(DataKind::Route)), std::out_of_range);
  receiver.packets.pop_back();
  EXPECT_EQ(Download(DataKind::Route), 79);
  EXPECT_EQ(RouteCount(), 79U);
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
  Meet("GPS 12 Software");
  GiveWaypoints(4);
  receiver.delay = milliseconds{1000};
  EXPECT_EQ(Download(), 4);
  EXPECT_EQ(RemainingTimes(desktop), (Times{"[1/4] Remaining 00:06", "[2/4] Remaining 00:04", "[3/4] Remaining 00:02",
                                            "[4/4] Remaining 00:00"}));
}

TEST_F(TransferTest, TheRemainingTimeOfAnUploadIsTakenFromThePacketsThatWent) {
  Meet("GPS 12 Software");
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
  Meet("GPS 12 Software");
  receiver.packets = {TrackPoint300(true), TrackPoint300(false), TrackPoint300(true)};
  EXPECT_EQ(Download(DataKind::TrackLog), 3);
  EXPECT_EQ(LogCount(), 2U);
  EXPECT_EQ(Log(1).points.size(), 2U);
  EXPECT_EQ(Log(2).points.size(), 1U);
  EXPECT_EQ(data.FirstLogNumber(), 1);
}

TEST_F(TransferTest, PointsBeforeTheFirstNewTrkAreCountedInLog0) {
  Meet("GPS 12 Software");
  receiver.packets = {TrackPoint300(false), TrackPoint300(false), TrackPoint300(true)};
  EXPECT_EQ(Download(DataKind::TrackLog), 3);
  EXPECT_EQ(Log(0).points.size(), 2U);
  EXPECT_EQ(LogCount(), 1U);
}

TEST_F(TransferTest, AHeaderBeginsALogAndAFlagInsideItASegment) {
  receiver.packets = TwoSegmentsAndASavedTrack();
  EXPECT_EQ(Download(DataKind::TrackLog), 8);
  EXPECT_EQ(LogCount(), 2U);
  EXPECT_EQ(Log(1).trk_ident, "A");
  EXPECT_EQ(Log(1).points.size(), 4U);
  EXPECT_TRUE(Log(1).points.at(2).new_trk);
  EXPECT_EQ(Log(2).trk_ident, "B");
  EXPECT_EQ(Log(2).color, 4);
  EXPECT_FALSE(Log(2).dspl);
  EXPECT_EQ(Log(2).points.size(), 2U);
  EXPECT_EQ(Log(2).points.at(0).time, 5);
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
  EXPECT_EQ(LogCount(), 2U);
  EXPECT_EQ(Log(1).points.size(), 1U);
  EXPECT_EQ(Log(2).points.at(0).time, 2);
}

TEST_F(TransferTest, PointsInFrontOfTheFirstHeaderAreALogOfTheirOwn) {
  receiver.packets = {TrackPoint301(1), TrackPoint301(2, true), {99, {1, 255, 'A', 0}}, TrackPoint301(3, true)};
  EXPECT_EQ(Download(DataKind::TrackLog), 4);
  EXPECT_EQ(Log(0).points.size(), 1U);
  EXPECT_EQ(LogCount(), 2U);
  EXPECT_EQ(Log(1).trk_ident, "");
  EXPECT_EQ(Log(2).trk_ident, "A");
  EXPECT_EQ(Log(2).points.at(0).time, 3);
}

// A receiver that has no headers may not send any: what looks like one cuts nothing.
TEST_F(TransferTest, WithoutTrackHeadersOnlyTheFlagsCut) {
  Meet("GPS 12 Software");
  receiver.packets = {TrackPoint300(true), {99, {1, 255, 'A', 0}}, TrackPoint300(false), TrackPoint300(true)};
  EXPECT_EQ(Download(DataKind::TrackLog), 4);
  EXPECT_EQ(LogCount(), 2U);
  EXPECT_EQ(Log(1).points.size(), 2U);
  EXPECT_EQ(Log(1).trk_ident, "");
}

TEST_F(TransferTest, PointsInFrontOfTheFirstLogGoBackFirst) {
  Meet("GPS 12 Software");
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
  ASSERT_EQ(data.Logs().size(), 1U);
  EXPECT_EQ(Log(1).trk_ident, "N");
  EXPECT_EQ(Log(1).points.size(), 1U);
  EXPECT_EQ(data.TrackPointCount(), 1U);
}

// ---- Exactly full, and one more

TEST_F(TransferTest, AReceiverOf30000PointsIsReadAndWrittenWhole) {
  Meet("GPS 12 Software");
  receiver.packets.assign(30000, TrackPoint300(false));
  receiver.packets.front() = TrackPoint300(true);
  receiver.packets.back().data[8] = 77;
  EXPECT_EQ(Download(DataKind::TrackLog), 30000);
  EXPECT_EQ(Log(1).points.size(), 30000U);
  EXPECT_EQ(Log(1).points.at(29999).time, 77);
  EXPECT_TRUE(desktop.messages.empty());
  receiver.received.clear();
  EXPECT_EQ(Upload(DataKind::TrackLog), 30000);
  ASSERT_EQ(receiver.received.size(), 30002U);
  EXPECT_EQ(receiver.received[30000].data[8], 77);
}

TEST_F(TransferTest, OneTrackPointTooManyIsRefusedBeforeAnythingIsEmptied) {
  HoldLog(2);
  Meet("GPS 12 Software");
  receiver.announced = 30001;
  EXPECT_EQ(Download(DataKind::TrackLog), -1);
  EXPECT_TRUE(garmin.Report().bad_answer);
  EXPECT_EQ(Log(1).points.size(), 2U);
}

TEST_F(TransferTest, HeadersAreAnnouncedBeyondThePoints) {
  receiver.announced = 31536;
  receiver.packets = {{99, {1, 255, 'A', 0}}, TrackPoint301(1, true)};
  EXPECT_EQ(Download(DataKind::TrackLog), 31536);
  receiver.announced = 31537;
  EXPECT_EQ(Download(DataKind::TrackLog), -1);
  EXPECT_TRUE(garmin.Report().bad_answer);
}

TEST_F(TransferTest, AReceiverOf1536LogsIsReadWholeAndOneMoreIsARangeError) {
  for (int log = 1; log <= 1536; ++log) {
    receiver.packets.push_back({99, {1, 255, 'A', 0}});
    receiver.packets.push_back(TrackPoint301(static_cast<std::uint8_t>(log % 200), true));
  }
  EXPECT_EQ(Download(DataKind::TrackLog), 3072);
  EXPECT_EQ(LogCount(), 1536U);
  EXPECT_EQ(Log(1536).points.at(0).time, 1536 % 200);
  EXPECT_EQ(Upload(DataKind::TrackLog), 3072);
  receiver.packets.push_back({99, {1, 255, 'A', 0}});
  EXPECT_THROW(static_cast<void>(Download(DataKind::TrackLog)), std::out_of_range);
}

TEST_F(TransferTest, AReceiverOf1999WaypointsIsReadAndWrittenWhole) {
  Meet("GPS 12 Software");
  GiveWaypoints(1999);
  EXPECT_EQ(Download(), 1999);
  EXPECT_EQ(Ident(1999), "W1999");
  EXPECT_TRUE(desktop.messages.empty());
  EXPECT_EQ(Upload(DataKind::Waypoint), 1999);
  EXPECT_EQ(receiver.received.at(receiver.received.size() - 2), receiver.packets.back());
}

TEST_F(TransferTest, RoutesMayAnnounceAPointAndALinkForEverySlot) {
  Meet("GPS 12 Software");
  receiver.packets = {RouteHeaderPacket(1, "R"), RoutePointPacket("A")};
  receiver.announced = 15879;
  EXPECT_EQ(Download(DataKind::Route), 15879);
  EXPECT_EQ(RouteCount(), 1U);
  receiver.announced = 15880;
  EXPECT_EQ(Download(DataKind::Route), -1);
  EXPECT_TRUE(garmin.Report().bad_answer);
  EXPECT_EQ(RouteCount(), 1U);
}

TEST_F(TransferTest, AnEarlyEndKeepsTheTrackPointsThatCame) {
  Meet("GPS 12 Software");
  receiver.packets = {TrackPoint300(true), TrackPoint300(false)};
  receiver.announced = 9;
  EXPECT_EQ(Download(DataKind::TrackLog), 9);
  EXPECT_EQ(Log(1).points.size(), 2U);
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
  Meet("GPS 12 Software");
  HoldRoute(2);
  HoldRoute(3);
  EXPECT_EQ(Upload(DataKind::Route), 7);
  EXPECT_EQ(receiver.ReceivedIds(), (std::vector<int>{27, 29, 30, 30, 29, 30, 30, 30, 12}));
  EXPECT_EQ(receiver.received.front().data, (Bytes{7, 0}));
}

TEST_F(TransferTest, ADownloadedRouteUploadsAllOfItsPoints) {
  Meet("GPS 12 Software");
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
  Meet("GPS 12 Software");
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
  EXPECT_EQ(info.product_id, 0);
  EXPECT_EQ(info.description, "");
}

TEST_F(TransferTest, AnUploadWhoseEndIsNotAcknowledgedIsNoted) {
  HoldWaypoint("A");
  const auto answer = port.script;
  port.script = [&](const Bytes& wire) -> std::vector<ScriptedPort::Answer> {
    if (wire.at(1) == 12) return {{milliseconds{2}, WireFrame(21, Int16(12))}};
    return answer(wire);
  };
  EXPECT_EQ(Upload(DataKind::Waypoint), 1);
  EXPECT_TRUE(garmin.Report().end_refused);
  port.script = answer;
  EXPECT_EQ(Upload(DataKind::Waypoint), 1);
  EXPECT_FALSE(garmin.Report().end_refused);
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
  loop.on_yield = [&] {
    if (receiver.received.size() >= 3) garmin.Cancel();
  };
  EXPECT_EQ(Upload(DataKind::Waypoint), -1);
  EXPECT_EQ(receiver.received.back(), Abort);
}

TEST_F(TransferTest, ARecordThatTheReceiverCannotHoldStopsTheUploadBeforeItBegins) {
  HoldWaypoint("ONE");
  HoldWaypoint("CAFé");
  EXPECT_EQ(Upload(DataKind::Waypoint), -1);
  EXPECT_TRUE(receiver.received.empty());
  EXPECT_EQ(garmin.Report().unsendable, device_messages::CharacterNotSendable("Waypoint 2", "é"));
  data.Clear(DataKind::Waypoint);
  HoldWaypoint("EAST", 180.0);
  EXPECT_EQ(Upload(DataKind::Waypoint), -1);
  EXPECT_EQ(garmin.Report().unsendable, device_messages::ValueOutOfRange("Waypoint 1"));
}

TEST_F(TransferTest, TextsThatTheFieldsHaveNoRoomForAreCountedAlsoWhereNothingCanBeSent) {
  Meet("GPS 12 Software");
  HoldWaypoint("TOO LONG");
  HoldWaypoint("SHORT");
  EXPECT_EQ(Upload(DataKind::Waypoint), 2);
  EXPECT_EQ(garmin.Report().cut_texts, 1);
  HoldWaypoint("CAFé", 180.0);
  HoldWaypoint("ALSO TOO LONG");
  EXPECT_EQ(Upload(DataKind::Waypoint), -1);
  EXPECT_EQ(garmin.Report().cut_texts, 2);
  EXPECT_EQ(garmin.Report().unsendable, device_messages::ValueOutOfRange("Waypoint 3"));
  Meet("eTrex Software");
  EXPECT_EQ(Upload(DataKind::Waypoint), -1);
  EXPECT_EQ(garmin.Report().cut_texts, 0);
}

TEST_F(TransferTest, ALinkIsSentWithoutDataWhereItsTypeIsNotKnown) {
  Meet("eTrexLegend");
  HoldRoute(1);
  EXPECT_EQ(Upload(DataKind::Route), 3);
  EXPECT_EQ(receiver.ReceivedIds(), (std::vector<int>{27, 29, 30, 98, 12}));
  EXPECT_EQ(receiver.received[3].data, Bytes{});
  HoldLog(1);
  EXPECT_EQ(Upload(DataKind::TrackLog), 2);
  EXPECT_EQ(receiver.received[6].id, 99);
  EXPECT_EQ(receiver.received[6].data, Bytes{});
}

TEST_F(TransferTest, CancelHoldsUntilItIsCleared) {
  HoldWaypoint("A");
  garmin.Cancel();
  EXPECT_EQ(garmin.Upload(data, DataKind::Waypoint, "1"), -1);
  EXPECT_EQ(receiver.received.back(), Abort);
  garmin.ClearCancel();
  EXPECT_EQ(garmin.Upload(data, DataKind::Waypoint, "1"), 1);
}

TEST_F(TransferTest, AnUploadTellsWhichRecordsWereCut) {
  HoldWaypoint("ONE");
  Waypoint long_one;
  long_one.details.Set(&WaypointDetails::addr, std::string(300, 'A'));
  ASSERT_EQ(data.Add(std::move(long_one)), AddResult::Stored);
  EXPECT_EQ(Upload(DataKind::Waypoint), 2);
  EXPECT_EQ(garmin.Report().cut_records, std::vector<std::string>{"Waypoint 2"});
  EXPECT_EQ(receiver.received.at(2).data.size(), 250U);
}

TEST_F(TransferTest, RecordsThatAreNotAcknowledgedAreCounted) {
  for (int i = 0; i < 3; ++i)
    HoldWaypoint("W");
  loop.on_yield = [&] { receiver.acknowledges = receiver.received.size() != 2; };
  EXPECT_EQ(Upload(DataKind::Waypoint), 3);
  EXPECT_EQ(garmin.Report().refused_records, 1);
}

}  // namespace
}  // namespace walrim

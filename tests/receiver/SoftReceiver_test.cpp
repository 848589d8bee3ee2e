#include "receiver/SoftReceiver.h"

#include <algorithm>
#include <gtest/gtest.h>

#include "receiver/ReceiverHost.h"
#include "text/Dates.h"

namespace walrim {
namespace {

using std::chrono::nanoseconds;
using std::chrono::seconds;

constexpr nanoseconds ByteTime{1041666};

ReceiverMemory SmallMemory() {
  ReceiverMemory memory;
  memory.waypoints = {{35, {1}}, {35, {2, 2}}, {35, {16, 3}}};
  memory.routes = {{29, {1}}, {30, {2}}, {98, {3}}};
  memory.tracks = {{99, {1, 2, 0}}, {34, {5}}};
  return memory;
}

class SoftReceiverTest : public testing::Test {
 protected:
  SoftReceiver receiver{*FindReceiverModel("eTrex"), SmallMemory(), 9600, {}};
  ReceiverHost host{receiver};
};

TEST_F(SoftReceiverTest, AnswersTheProductRequestWithAckAndProductData) {
  const Bytes came = host.ExchangeBytes(ProductRequestFrame);
  const Bytes ack{0x10, 0x06, 0x02, 0xFE, 0x00, 0xFA, 0x10, 0x03};
  ASSERT_GT(came.size(), ack.size());
  EXPECT_EQ(Bytes(came.begin(), came.begin() + 8), ack);
  const auto frames = FramesIn(came);
  ASSERT_EQ(frames.size(), 2U);
  EXPECT_EQ(frames[1].id, 255);
  EXPECT_TRUE(frames[1].sound);
}

TEST_F(SoftReceiverTest, TellsItsProtocolsBehindTheAckOfItsProductDataAndOnlyThen) {
  EXPECT_EQ(FramesIn(host.ExchangeBytes(ProductRequestFrame)).size(), 2U);
  EXPECT_TRUE(host.Ack(254).empty());
  EXPECT_EQ(host.Nak(255).at(0).id, 255);
  // P000 L001 A010, A100 D108, A201 D202 D108 D210, A301 D310 D301, A600 D600, A700 D700.
  const Bytes protocols = BytesOf("P") + Bytes{0, 0} + BytesOf("L") + Bytes{1, 0} + BytesOf("A") + Bytes{10, 0} +
                          BytesOf("A") + Bytes{100, 0} + BytesOf("D") + Bytes{108, 0} + BytesOf("A") + Bytes{201, 0} +
                          BytesOf("D") + Bytes{202, 0} + BytesOf("D") + Bytes{108, 0} + BytesOf("D") + Bytes{210, 0} +
                          BytesOf("A") + Bytes{0x2D, 1} + BytesOf("D") + Bytes{0x36, 1} + BytesOf("D") +
                          Bytes{0x2D, 1} + BytesOf("A") + Bytes{0x58, 2} + BytesOf("D") + Bytes{0x58, 2} +
                          BytesOf("A") + Bytes{0xBC, 2} + BytesOf("D") + Bytes{0xBC, 2};
  EXPECT_EQ(host.Ack(255), std::vector{Sound(253, protocols)});
  EXPECT_EQ(host.Nak(253), std::vector{Sound(253, protocols)});
  EXPECT_TRUE(host.Ack(253).empty());
  EXPECT_TRUE(host.Ack(255).empty());
}

TEST_F(SoftReceiverTest, AProductRequestEndsADownload) {
  static_cast<void>(host.Command(7));
  static_cast<void>(host.Ack(27));
  EXPECT_EQ(FramesIn(host.ExchangeBytes(ProductRequestFrame)).size(), 2U);
  EXPECT_EQ(host.Ack(255).size(), 1U);
  EXPECT_TRUE(host.Ack(253).empty());
}

TEST(SoftReceiver, OnlyFourModelsAnnounceTheirProtocols) {
  for (const ReceiverModel& model : ReceiverModels()) {
    SoftReceiver receiver(model, {}, 9600, {});
    ReceiverHost host(receiver);
    static_cast<void>(host.ExchangeBytes(ProductRequestFrame));
    const bool announces =
        model.name == "GPS 12CX" || model.name == "GPS III+" || model.name == "eMap" || model.name == "eTrex";
    EXPECT_EQ(host.Ack(255).size(), announces ? 1U : 0U) << model.name;
  }
}

TEST(SoftReceiver, AnnouncementsNameTheLayoutsThatAreSent) {
  const auto list = [](std::string_view model) { return ProtocolListPacket(FindReceiverModel(model)->protocols).data; };
  const auto has = [](const Bytes& bytes, const Bytes& part) {
    return std::search(bytes.begin(), bytes.end(), part.begin(), part.end()) != bytes.end();
  };
  const Bytes a200 = BytesOf("A") + Bytes{200, 0} + BytesOf("D") + Bytes{201, 0};
  const Bytes a300 = BytesOf("A") + Bytes{0x2C, 1} + BytesOf("D") + Bytes{0x2C, 1};
  const Bytes d104 = BytesOf("D") + Bytes{104, 0};
  const Bytes d107 = BytesOf("D") + Bytes{107, 0};
  const Bytes a100 = BytesOf("A") + Bytes{100, 0};
  EXPECT_TRUE(has(list("GPS III+"), a100 + d104 + a200 + d104 + a300));
  EXPECT_TRUE(has(list("GPS 12CX"), a100 + d107 + a200 + d107 + a300));
  EXPECT_EQ(list("eMap"), list("eTrex"));
}

TEST_F(SoftReceiverTest, TellsTheTime) {
  // 2026/11/22 01:02:03
  receiver.SetClock(SecondsSinceGarminEpoch({2026, 11, 22, 1, 2, 3}), host.now);
  EXPECT_EQ(host.Command(5), (std::vector{Sound(6, {10, 0}), Sound(14, {11, 22, 0xEA, 0x07, 1, 0, 2, 3})}));
  EXPECT_TRUE(host.Ack(14).empty());
  host.now += seconds(3600);
  EXPECT_EQ(host.Command(5).at(1), Sound(14, {11, 22, 0xEA, 0x07, 2, 0, 2, 3}));
}

TEST_F(SoftReceiverTest, ItsClockIsSet) {
  EXPECT_EQ(host.Exchange(14, {11, 22, 0xEA, 0x07, 1, 0, 2, 3}), std::vector{Sound(6, {14, 0})});
  host.now += seconds(3600);
  EXPECT_EQ(host.Command(5).at(1), Sound(14, {11, 22, 0xEA, 0x07, 2, 0, 2, 3}));
  // The 31st of November, and seven bytes.
  static_cast<void>(host.Exchange(14, {11, 31, 0xEA, 0x07, 1, 0, 2, 3}));
  static_cast<void>(host.Exchange(14, {11, 22, 0xEB, 0x07, 1, 0, 2}));
  EXPECT_EQ(host.Command(5).at(1), Sound(14, {11, 22, 0xEA, 0x07, 2, 0, 2, 3}));
}

TEST(SoftReceiver, ARollOverIsCuredByTheClock) {
  // A position of eight bytes, the time, height, depth and a mark.
  const auto point = [](const Bytes& time) { return Bytes(8, 1) + time + Bytes(9, 2); };
  // 2026/11/21 00:00:00 is 45639300h seconds behind 1989/12/31, 7168 days less are 20799300h.
  const Bytes right = point({0x00, 0x93, 0x63, 0x45});
  const Bytes behind = point({0x00, 0x93, 0x79, 0x20});
  const Bytes timeless = point({0, 0, 0, 0});
  ReceiverMemory memory;
  memory.tracks = {{99, {1, 2, 0}}, {34, right}, {34, timeless}};
  SoftReceiver receiver(*FindReceiverModel("eTrex"), memory, 0, {});
  ReceiverHost host(receiver);
  receiver.SetClock(SecondsSinceGarminEpoch({2026, 11, 22, 1, 2, 3}), host.now);
  const auto points = [&host] {
    std::vector<Bytes> found;
    std::vector<SeenFrame> frames = host.Command(6);
    for (frames = host.Ack(27); !frames.empty(); frames = host.Ack(frames.back().id)) {
      if (frames.back().id == 34) found.push_back(frames.back().data);
    }
    return found;
  };
  receiver.FallBack(1, false);
  EXPECT_EQ(points(), (std::vector{right, timeless}));
  receiver.FallBack(1, true);
  EXPECT_EQ(points(), (std::vector{behind, timeless}));
  EXPECT_EQ(host.Command(5).at(1), Sound(14, {4, 8, 0xD7, 0x07, 1, 0, 2, 3}));  // 2007/04/08
  static_cast<void>(host.Ack(14));
  static_cast<void>(host.Exchange(14, {11, 22, 0xEA, 0x07, 1, 0, 2, 3}));
  EXPECT_EQ(host.Command(5).at(1), Sound(14, {11, 22, 0xEA, 0x07, 1, 0, 2, 3}));
  static_cast<void>(host.Ack(14));
  EXPECT_EQ(points(), (std::vector{right, timeless}));
}

TEST_F(SoftReceiverTest, WithoutAClockSetItIsNoonInJapanAtItsStart) {
  host.now = nanoseconds(0);
  EXPECT_EQ(host.Command(5).at(1), Sound(14, {12, 8, 0xD2, 0x07, 3, 0, 0, 0}));
}

TEST_F(SoftReceiverTest, TellsItsPositionInRadians) {
  // 35.6323 and 139.27 degrees: 0.62190095 and 2.43072005.
  EXPECT_EQ(host.Command(2),
            (std::vector{Sound(6, {10, 0}), Sound(17, {0xDF, 0x75, 0xEA, 0xD4, 0x9C, 0xE6, 0xE3, 0x3F, 0x07, 0x2B, 0x6A,
                                                       0x5A, 0x1D, 0x72, 0x03, 0x40})}));
  EXPECT_TRUE(host.Ack(17).empty());
}

TEST_F(SoftReceiverTest, AnswersAboutItselfEndADownload) {
  static_cast<void>(host.Command(7));
  static_cast<void>(host.Command(5));
  EXPECT_TRUE(host.Ack(14).empty());
  EXPECT_TRUE(host.Ack(27).empty());
}

TEST_F(SoftReceiverTest, UnderstandsAFrameFedByteByByte) {
  for (const std::uint8_t byte : ProductRequestFrame)
    receiver.Receive(Bytes{byte}, host.now);
  EXPECT_EQ(FramesIn(host.ExchangeBytes({})).size(), 2U);
}

TEST_F(SoftReceiverTest, NaksAWrongChecksumAndActsOnTheRepetition) {
  EXPECT_EQ(host.ExchangeBytes({0x10, 0x0A, 0x02, 0x07, 0x00, 0xEE, 0x10, 0x03}),
            (Bytes{0x10, 0x15, 0x02, 0x0A, 0x00, 0xDF, 0x10, 0x03}));
  EXPECT_EQ(host.Command(7), (std::vector{Sound(6, {10, 0}), Sound(27, {3, 0})}));
}

TEST_F(SoftReceiverTest, DownloadsWaypoints) {
  EXPECT_EQ(host.Command(7), (std::vector{Sound(6, {10, 0}), Sound(27, {3, 0})}));
  EXPECT_EQ(host.Ack(27), std::vector{Sound(35, {1})});
  EXPECT_EQ(host.Ack(35), (std::vector{Sound(35, {2, 2})}));
  EXPECT_EQ(host.Ack(35), (std::vector{Sound(35, {16, 3})}));
  EXPECT_EQ(host.Ack(35), (std::vector{Sound(12, {7, 0})}));
  EXPECT_TRUE(host.Ack(12).empty());
  EXPECT_TRUE(host.Ack(12).empty());
}

TEST_F(SoftReceiverTest, DownloadsRoutesAndTracksUnderTheirCommands) {
  EXPECT_EQ(host.Download(4),
            (std::vector{Sound(27, {3, 0}), Sound(29, {1}), Sound(30, {2}), Sound(98, {3}), Sound(12, {4, 0})}));
  EXPECT_EQ(host.Download(6),
            (std::vector{Sound(27, {2, 0}), Sound(99, {1, 2, 0}), Sound(34, {5}), Sound(12, {6, 0})}));
}

TEST_F(SoftReceiverTest, RecordsOnTheLineByHand) {
  EXPECT_EQ(host.ExchangeBytes({0x10, 0x0A, 0x02, 0x07, 0x00, 0xED, 0x10, 0x03}),
            (Bytes{0x10, 0x06, 0x02, 0x0A, 0x00, 0xEE, 0x10, 0x03, 0x10, 0x1B, 0x02, 0x03, 0x00, 0xE0, 0x10, 0x03}));
  EXPECT_EQ(host.ExchangeBytes({0x10, 0x06, 0x02, 0x1B, 0x00, 0xDD, 0x10, 0x03}),
            (Bytes{0x10, 0x23, 0x01, 0x01, 0xDB, 0x10, 0x03}));
}

TEST_F(SoftReceiverTest, SendsAgainWhatTheHostRefuses) {
  static_cast<void>(host.Command(7));
  EXPECT_EQ(host.Nak(27), std::vector{Sound(27, {3, 0})});
  EXPECT_EQ(host.Ack(27), std::vector{Sound(35, {1})});
  EXPECT_EQ(host.Nak(35), std::vector{Sound(35, {1})});
  EXPECT_EQ(host.Nak(35), std::vector{Sound(35, {1})});
  EXPECT_EQ(host.Ack(35), (std::vector{Sound(35, {2, 2})}));
}

TEST_F(SoftReceiverTest, AnAckOfAnotherPacketMovesNothing) {
  static_cast<void>(host.Command(7));
  EXPECT_TRUE(host.Ack(35).empty());
  EXPECT_EQ(host.Ack(27), std::vector{Sound(35, {1})});
}

TEST_F(SoftReceiverTest, AbortEndsADownload) {
  static_cast<void>(host.Command(7));
  static_cast<void>(host.Ack(27));
  EXPECT_EQ(host.Command(0), std::vector{Sound(6, {10, 0})});
  EXPECT_TRUE(host.Ack(35).empty());
  EXPECT_EQ(host.Download(7).size(), 5U);
}

TEST_F(SoftReceiverTest, AbortAfterTheCountAndInsteadOfTheLastAck) {
  static_cast<void>(host.Command(6));
  EXPECT_EQ(host.Command(0), std::vector{Sound(6, {10, 0})});
  static_cast<void>(host.Command(6));
  static_cast<void>(host.Ack(27));
  static_cast<void>(host.Ack(99));
  EXPECT_EQ(host.Ack(34), (std::vector{Sound(12, {6, 0})}));
  EXPECT_EQ(host.Command(0), std::vector{Sound(6, {10, 0})});
  EXPECT_EQ(host.Command(7).size(), 2U);
}

TEST_F(SoftReceiverTest, ACommandThatItDoesNotKnowIsAcknowledgedOnly) {
  EXPECT_EQ(host.Command(3), std::vector{Sound(6, {10, 0})});
  EXPECT_EQ(host.Exchange(10, {}), std::vector{Sound(6, {10, 0})});
}

TEST(SoftReceiver, AnEmptyMemoryAnnouncesNothingAndCompletes) {
  SoftReceiver receiver(*FindReceiverModel("GPS 12"), {}, 9600, {});
  ReceiverHost host(receiver);
  EXPECT_EQ(host.Command(4), (std::vector{Sound(6, {10, 0}), Sound(27, {0, 0})}));
  EXPECT_EQ(host.Ack(27), (std::vector{Sound(12, {4, 0})}));
}

TEST_F(SoftReceiverTest, AnUploadReplacesItsKindAndComesBackAsItWas) {
  EXPECT_EQ(host.Exchange(27, {2, 0}), std::vector{Sound(6, {27, 0})});
  EXPECT_EQ(host.Exchange(35, {9, 8, 7}), std::vector{Sound(6, {35, 0})});
  EXPECT_EQ(host.Exchange(35, {16, 16}), std::vector{Sound(6, {35, 0})});
  EXPECT_EQ(receiver.Memory().waypoints.size(), 3U) << "not before the transfer is complete";
  EXPECT_EQ(host.Exchange(12, {7, 0}), std::vector{Sound(6, {12, 0})});
  EXPECT_EQ(host.Download(7),
            (std::vector{Sound(27, {2, 0}), Sound(35, {9, 8, 7}), Sound(35, {16, 16}), Sound(12, {7, 0})}));
  EXPECT_EQ(receiver.Memory().routes, SmallMemory().routes);
  EXPECT_EQ(receiver.Memory().tracks, SmallMemory().tracks);
}

TEST_F(SoftReceiverTest, UploadsRoutesAndTracks) {
  static_cast<void>(host.Exchange(27, {3, 0}));
  for (const std::uint8_t id : Bytes{29, 30, 98})
    static_cast<void>(host.Exchange(id, {id}));
  static_cast<void>(host.Exchange(12, {4, 0}));
  EXPECT_EQ(receiver.Memory().routes, (std::vector<LinePacket>{{29, {29}}, {30, {30}}, {98, {98}}}));
  static_cast<void>(host.Exchange(27, {2, 0}));
  for (const std::uint8_t id : Bytes{99, 34})
    static_cast<void>(host.Exchange(id, {id}));
  static_cast<void>(host.Exchange(12, {6, 0}));
  EXPECT_EQ(receiver.Memory().tracks, (std::vector<LinePacket>{{99, {99}}, {34, {34}}}));
}

TEST_F(SoftReceiverTest, AnAbortedUploadLeavesTheMemoryAsItWas) {
  static_cast<void>(host.Exchange(27, {2, 0}));
  static_cast<void>(host.Exchange(35, {9}));
  EXPECT_EQ(host.Command(0), std::vector{Sound(6, {10, 0})});
  EXPECT_EQ(host.Exchange(12, {7, 0}), std::vector{Sound(6, {12, 0})});
  EXPECT_EQ(receiver.Memory().waypoints, SmallMemory().waypoints);
}

TEST_F(SoftReceiverTest, RoutesThatEndWithTheWaypointsCommandAreKept) {
  static_cast<void>(host.Exchange(27, {3, 0}));
  for (const std::uint8_t id : Bytes{29, 30, 98})
    static_cast<void>(host.Exchange(id, {id}));
  EXPECT_EQ(host.Exchange(12, {7, 0}), std::vector{Sound(6, {12, 0})});
  EXPECT_EQ(receiver.Memory().routes, (std::vector<LinePacket>{{29, {29}}, {30, {30}}, {98, {98}}}));
  EXPECT_EQ(receiver.Memory().waypoints, SmallMemory().waypoints);
  EXPECT_EQ(receiver.Memory().tracks, SmallMemory().tracks);
}

TEST_F(SoftReceiverTest, AnEndThatNamesNoTransferKeepsTheRecords) {
  static_cast<void>(host.Exchange(27, {1, 0}));
  static_cast<void>(host.Exchange(35, {9}));
  static_cast<void>(host.Exchange(12, {0, 0}));
  EXPECT_EQ(receiver.Memory().waypoints, (std::vector<LinePacket>{{35, {9}}}));
  EXPECT_EQ(receiver.Memory().routes, SmallMemory().routes);
}

TEST_F(SoftReceiverTest, RecordsOfSeveralKindsGoEachToItsOwn) {
  static_cast<void>(host.Exchange(27, {4, 0}));
  for (const std::uint8_t id : Bytes{29, 35, 30, 35})
    static_cast<void>(host.Exchange(id, {id, 1}));
  static_cast<void>(host.Exchange(12, {4, 0}));
  EXPECT_EQ(receiver.Memory().routes, (std::vector<LinePacket>{{29, {29, 1}}, {30, {30, 1}}}));
  EXPECT_EQ(receiver.Memory().waypoints, (std::vector<LinePacket>{{35, {35, 1}}, {35, {35, 1}}}));
  EXPECT_EQ(receiver.Memory().tracks, SmallMemory().tracks);
}

TEST_F(SoftReceiverTest, RecordsThatItHasNoRoomForLeaveItsMemoryAlone) {
  static_cast<void>(host.Exchange(27, {1, 0}));
  EXPECT_EQ(host.Exchange(31, {9}), std::vector{Sound(6, {31, 0})});
  static_cast<void>(host.Exchange(12, {7, 0}));
  EXPECT_EQ(receiver.Memory().waypoints, SmallMemory().waypoints);
}

TEST_F(SoftReceiverTest, KeepsNoMoreRecordsThanWereAnnounced) {
  static_cast<void>(host.Exchange(27, {1, 0}));
  for (std::uint8_t i = 0; i < 3; ++i)
    static_cast<void>(host.Exchange(35, {i}));
  static_cast<void>(host.Exchange(12, {7, 0}));
  EXPECT_EQ(receiver.Memory().waypoints, (std::vector<LinePacket>{{35, {0}}}));
}

TEST_F(SoftReceiverTest, ANakWhereNoPacketAwaitsItsAckBringsTheLastAckOrNakAgain) {
  EXPECT_TRUE(host.Nak(0).empty()) << "nothing was sent";
  EXPECT_EQ(host.Exchange(27, {1, 0}), std::vector{Sound(6, {27, 0})});
  EXPECT_EQ(host.Nak(6), std::vector{Sound(6, {27, 0})});
  Bytes damaged = HostFrame(35, {9});
  damaged[3] ^= 1;
  EXPECT_EQ(FramesIn(host.ExchangeBytes(damaged)), std::vector{Sound(21, {35, 0})});
  EXPECT_EQ(host.Nak(21), std::vector{Sound(21, {35, 0})});
}

TEST_F(SoftReceiverTest, AnUploadOfNothingEmptiesTheKind) {
  static_cast<void>(host.Exchange(27, {0, 0}));
  static_cast<void>(host.Exchange(12, {4, 0}));
  EXPECT_TRUE(receiver.Memory().routes.empty());
}

TEST_F(SoftReceiverTest, AnswersFromWhenTheLastByteOfTheFrameHasPassed) {
  const nanoseconds start = host.now;
  receiver.Receive(ProductRequestFrame, start);
  EXPECT_EQ(receiver.InputFreeAt(), start + 8 * ByteTime);
  ASSERT_TRUE(receiver.NextDue());
  EXPECT_EQ(*receiver.NextDue(), start + 9 * ByteTime);
  EXPECT_TRUE(receiver.Send(start + 9 * ByteTime - nanoseconds(1)).empty());
  EXPECT_EQ(receiver.Send(start + 9 * ByteTime), Bytes{0x10});
  EXPECT_EQ(receiver.Send(start + 9 * ByteTime), Bytes{});
  EXPECT_EQ(receiver.Send(start + 12 * ByteTime), (Bytes{0x06, 0x02, 0xFE}));
}

TEST_F(SoftReceiverTest, BytesHandedOverAtOncePassOneAfterTheOther) {
  const nanoseconds start = host.now;
  receiver.Receive(HostFrame(10, {3, 0}), start);
  receiver.Receive(HostFrame(10, {3, 0}), start);
  EXPECT_EQ(receiver.InputFreeAt(), start + 16 * ByteTime);
  // The first ACK passes while the second frame is still coming in.
  EXPECT_EQ(receiver.Send(start + 16 * ByteTime).size(), 8U);
  EXPECT_EQ(receiver.Send(start + 24 * ByteTime).size(), 8U);
}

TEST_F(SoftReceiverTest, AWholeDownloadTakesItsBytesTime) {
  const nanoseconds start = host.now;
  std::size_t bytes = 0;
  const auto exchange = [&](std::uint8_t id, const Bytes& data) {
    const Bytes frame = HostFrame(id, data);
    bytes += frame.size() + host.ExchangeBytes(frame).size();
  };
  exchange(10, {7, 0});
  exchange(6, {27, 0});
  exchange(6, {35, 0});
  exchange(6, {35, 0});
  exchange(6, {35, 0});
  EXPECT_EQ(host.now - start, static_cast<std::int64_t>(bytes) * ByteTime);
}

TEST_F(SoftReceiverTest, AFreeLineStartsFromNow) {
  static_cast<void>(host.ExchangeBytes(ProductRequestFrame));
  host.now += seconds(60);
  receiver.Receive(ProductRequestFrame, host.now);
  EXPECT_EQ(receiver.NextDue(), host.now + 9 * ByteTime);
}

TEST(SoftReceiver, BaudZeroTakesNoTime) {
  SoftReceiver receiver(*FindReceiverModel("eTrex"), SmallMemory(), 0, {});
  receiver.Receive(ProductRequestFrame, seconds(5));
  EXPECT_EQ(receiver.NextDue(), seconds(5));
  EXPECT_EQ(FramesIn(receiver.Send(seconds(5))).size(), 2U);
  EXPECT_FALSE(receiver.NextDue());
}

TEST(SoftReceiver, OtherBaudRatesHaveTheirPace) {
  SoftReceiver receiver(*FindReceiverModel("eTrex"), SmallMemory(), 4800, {});
  receiver.Receive(ProductRequestFrame, seconds(5));
  EXPECT_EQ(receiver.InputFreeAt(), seconds(5) + 8 * nanoseconds(2083333));
}

TEST(SoftReceiver, AHostThatNeverReadsIsNotAnsweredForEver) {
  SoftReceiver receiver(*FindReceiverModel("eTrex"), SmallMemory(), 0, {});
  for (int i = 0; i < 100000; ++i)
    receiver.Receive(ProductRequestFrame, seconds(5));
  EXPECT_LT(receiver.Send(seconds(5)).size(), 2U << 20);
}

}  // namespace
}  // namespace walrim

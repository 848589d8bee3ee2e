// Which link the transfers behind an identification use, and what the identification says on the wire for it.
#include <chrono>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "device/Garmin.h"
#include "support/Fakes.h"
#include "support/Packets.h"
#include "support/RecordingTrace.h"

namespace walrim {
namespace {

using std::chrono::milliseconds;

// By hand: FE+02 = 100h, checksum 00. 06+02+FF = 107h, checksum F9. 06+02+FD = 105h, checksum FB.
const Bytes ProductRequest{0x10, 0xFE, 0x02, 0x00, 0x00, 0x00, 0x10, 0x03};
const Bytes AckOfProductData{0x10, 0x06, 0x02, 0xFF, 0x00, 0xF9, 0x10, 0x03};
const Bytes AckOfProtocols{0x10, 0x06, 0x02, 0xFD, 0x00, 0xFB, 0x10, 0x03};
// The receiver's ACK: 06+02+FE = 106h, checksum FA.
const Bytes AckOfProductRequest{0x10, 0x06, 0x02, 0xFE, 0x00, 0xFA, 0x10, 0x03};
// Id 130, version 2.14, "AB", "": FF+08+82+D6+41+42 = 2E2h, checksum 1E.
const Bytes ProductData{0x10, 0xFF, 0x08, 0x82, 0x00, 0xD6, 0x00, 0x41, 0x42, 0x00, 0x00, 0x1E, 0x10, 0x03};

class LinkChoiceTest : public ::testing::Test {
 protected:
  LinkChoiceTest() { garmin.SetTrace(&trace); }

  /// Identifies a receiver that answers the product request with these bytes, and says no more.
  ProductInfo Meet(LinkChoice choice, const Bytes& answer) {
    port.script = [answer](const Bytes& wire) -> std::vector<ScriptedPort::Answer> {
      if (wire.at(1) != 254) return {};
      return {{milliseconds{2}, answer}};
    };
    garmin.SetLinkChoice(choice);
    port.sent.clear();
    trace.notes.clear();
    return garmin.ConnectDevice("1");
  }

  FakeClock clock;
  ScriptedPort port{clock};
  FakeEventLoop loop;
  RecordingDesktop desktop;
  Garmin garmin{port, clock, loop, desktop};
  RecordingTrace trace;
};

TEST_F(LinkChoiceTest, AnAnswerFramedAsPublishedChoosesTheCheckedLink) {
  EXPECT_EQ(Meet(LinkChoice::Automatic, Joined({AckOfProductRequest, ProductData})).product_id, 130);
  EXPECT_TRUE(garmin.CheckedLinkInUse());
  EXPECT_TRUE(trace.Noted("checked link"));
}

TEST_F(LinkChoiceTest, AWrongSizeOrChecksumOrALoneDleChoosesThePlainLink) {
  Bytes ack_sum = AckOfProductRequest;
  ack_sum[5] = 0xFB;
  Bytes product_sum = ProductData;
  product_sum[11] = 0x1F;
  Bytes product_size = ProductData;
  product_size[2] = 0x0A;
  // A 10h in the data that is not doubled: FF+08+82+D6+10+41 = 2B0h, checksum 50.
  const Bytes lone{0x10, 0xFF, 0x08, 0x82, 0x00, 0xD6, 0x00, 0x10, 0x41, 0x00, 0x00, 0x50, 0x10, 0x03};
  for (const Bytes& answer : {Joined({ack_sum, ProductData}), Joined({AckOfProductRequest, product_sum}),
                              Joined({AckOfProductRequest, product_size}), Joined({AckOfProductRequest, lone})}) {
    EXPECT_EQ(Meet(LinkChoice::Automatic, answer).product_id, 130);
    EXPECT_FALSE(garmin.CheckedLinkInUse());
    EXPECT_TRUE(trace.Noted("plain link"));
    EXPECT_EQ(port.sent, std::vector<Bytes>{ProductRequest});
  }
}

TEST_F(LinkChoiceTest, EachIdentificationChoosesAnew) {
  Bytes spoilt = ProductData;
  spoilt[11] = 0x1F;
  EXPECT_EQ(Meet(LinkChoice::Automatic, Joined({AckOfProductRequest, ProductData})).product_id, 130);
  EXPECT_EQ(Meet(LinkChoice::Automatic, Joined({AckOfProductRequest, spoilt})).product_id, 130);
  EXPECT_FALSE(garmin.CheckedLinkInUse());
  EXPECT_EQ(Meet(LinkChoice::Automatic, {}).product_id, -1);
  EXPECT_FALSE(garmin.CheckedLinkInUse());
}

TEST_F(LinkChoiceTest, WhoeverChoosesOneGetsIt) {
  EXPECT_EQ(Meet(LinkChoice::Plain, Joined({AckOfProductRequest, ProductData})).product_id, 130);
  EXPECT_FALSE(garmin.CheckedLinkInUse());
  EXPECT_TRUE(trace.Noted("plain link"));
  Bytes spoilt = AckOfProductRequest;
  spoilt[5] = 0xFB;
  EXPECT_EQ(Meet(LinkChoice::Checked, Joined({spoilt, ProductData})).product_id, 130);
  EXPECT_TRUE(garmin.CheckedLinkInUse());
  EXPECT_TRUE(trace.Noted("checked link"));
}

TEST_F(LinkChoiceTest, ProductDataAreAcknowledgedButOnThePlainLink) {
  for (const LinkChoice choice : {LinkChoice::Automatic, LinkChoice::Checked}) {
    EXPECT_EQ(Meet(choice, Joined({AckOfProductRequest, ProductData})).product_id, 130);
    EXPECT_EQ(port.sent, (std::vector<Bytes>{ProductRequest, AckOfProductData}));
  }
  EXPECT_EQ(Meet(LinkChoice::Plain, Joined({AckOfProductRequest, ProductData})).product_id, 130);
  EXPECT_EQ(port.sent, std::vector<Bytes>{ProductRequest});
}

TEST_F(LinkChoiceTest, TheProtocolListBehindTheAckIsAcknowledgedAndPassedOver) {
  for (const LinkChoice choice : {LinkChoice::Automatic, LinkChoice::Checked}) {
    garmin.SetLinkChoice(choice);
    port.sent.clear();
    port.script = [](const Bytes& wire) -> std::vector<ScriptedPort::Answer> {
      if (wire == ProductRequest) return {{milliseconds{2}, Joined({AckOfProductRequest, ProductData})}};
      if (wire == AckOfProductData) return {{milliseconds{60}, WireFrame(253, Bytes(255, 0x4C))}};
      return {};
    };
    EXPECT_EQ(garmin.ConnectDevice("1").product_id, 130);
    EXPECT_EQ(port.sent, (std::vector<Bytes>{ProductRequest, AckOfProductData, AckOfProtocols}));
    EXPECT_FALSE(port.PortOpen());
  }
}

TEST_F(LinkChoiceTest, ATalkerBehindTheProductDataIsNotListenedToForEver) {
  port.script = [this](const Bytes& wire) -> std::vector<ScriptedPort::Answer> {
    if (wire.at(1) == 6) port.Queue(milliseconds{50}, WireFrame(248, {0x41, 0x00}));
    if (wire != ProductRequest) return {};
    return {{milliseconds{2}, Joined({AckOfProductRequest, ProductData})}};
  };
  EXPECT_EQ(garmin.ConnectDevice("1").product_id, 130);
  EXPECT_LT(clock.now, std::chrono::seconds{3});
}

// What some receivers send behind their product data, late; the next exchange would take it for its answer.
TEST_F(LinkChoiceTest, ThePortIsNotClosedBeforeTheLineHasFallenSilent) {
  for (const LinkChoice choice : {LinkChoice::Automatic, LinkChoice::Checked, LinkChoice::Plain}) {
    for (const int late_ms : {40, 70, 95}) {
      garmin.SetLinkChoice(choice);
      port.script = [&](const Bytes& wire) -> std::vector<ScriptedPort::Answer> {
        if (wire != ProductRequest) return {};
        return {{milliseconds{2}, Joined({AckOfProductRequest, ProductData})},
                {milliseconds{late_ms}, WireFrame(248, Bytes(42, 0x4C))}};
      };
      EXPECT_EQ(garmin.ConnectDevice("1").product_id, 130);
      clock.Advance(std::chrono::seconds{1});
      EXPECT_EQ(port.InBufferCount(), 0U) << "left on the line";
    }
  }
}

// A waypoint in place of the product data: 23+02+41+42 = A8, checksum 58.
TEST_F(LinkChoiceTest, AnotherPacketInPlaceOfTheProductDataIsNoReceiver) {
  const Bytes waypoint{0x10, 0x23, 0x02, 0x41, 0x42, 0x58, 0x10, 0x03};
  for (const LinkChoice choice : {LinkChoice::Automatic, LinkChoice::Checked, LinkChoice::Plain}) {
    const ProductInfo info = Meet(choice, Joined({AckOfProductRequest, waypoint}));
    EXPECT_EQ(info.product_id, 0);
    EXPECT_EQ(info.description, "");
  }
}

// FF+0B+82+D6+41+42+43+44 = 36Ch, checksum 94.
TEST_F(LinkChoiceTest, TheDescriptionIsTheFirstTwoTexts) {
  const Bytes product{0x10, 0xFF, 0x0B, 0x82, 0x00, 0xD6, 0x00, 0x41, 0x42,
                      0x00, 0x43, 0x44, 0x00, 0x00, 0x94, 0x10, 0x03};
  EXPECT_EQ(Meet(LinkChoice::Automatic, Joined({AckOfProductRequest, product})).description, "AB CD");
  EXPECT_TRUE(garmin.CheckedLinkInUse());
}

// Version 7.84 is 310h, 10 03 on the wire. FF+08+82+10+03+41+42 = 21Fh, checksum E1.
TEST_F(LinkChoiceTest, AVersionOf10hThen03hDoesNotCutTheProductDataWhereTheLinkIsChosen) {
  const Bytes product{0x10, 0xFF, 0x08, 0x82, 0x00, 0x10, 0x10, 0x03, 0x41, 0x42, 0x00, 0x00, 0xE1, 0x10, 0x03};
  const ProductInfo info = Meet(LinkChoice::Automatic, Joined({AckOfProductRequest, product}));
  EXPECT_EQ(info.description, "AB ");
  EXPECT_TRUE(garmin.CheckedLinkInUse());
}

}  // namespace
}  // namespace walrim

#include "receiver/UnaskedTalker.h"

#include <gtest/gtest.h>

namespace walrim {
namespace {

using std::chrono::milliseconds;
using std::chrono::nanoseconds;
using std::chrono::seconds;

// 2002/12/08 03:00:00 UTC
constexpr std::int64_t Noon = 408250800;

TEST(UnaskedTalker, SettingsAreRead) {
  EXPECT_EQ(TalkerSettingOf("nmea")->baud, 4800);
  EXPECT_EQ(TalkerSettingOf("nmea:1200")->baud, 1200);
  EXPECT_EQ(TalkerSettingOf("text")->mode, TalkerMode::Text);
  EXPECT_EQ(TalkerSettingOf("noise")->mode, TalkerMode::Noise);
  EXPECT_EQ(TalkerSettingOf("silent")->mode, TalkerMode::Silent);
  for (const char* wrong : {"", "NMEA", "nmea:", "nmea:12x", "nmea:100", "nmea4800", "texts"})
    EXPECT_FALSE(TalkerSettingOf(wrong)) << wrong;
}

TEST(UnaskedTalker, SentencesHaveTheirTimePlaceAndChecksum) {
  EXPECT_EQ(NmeaSentences(Noon),
            "$GPRMC,030000,A,3537.9380,N,13916.2000,E,000.0,000.0,081202,006.6,W*60\r\n"
            "$GPGGA,030000,3537.9380,N,13916.2000,E,1,05,2.1,190.0,M,39.0,M,,*4B\r\n"
            "$GPGLL,3537.9380,N,13916.2000,E,030000,A*27\r\n"
            "$PGRMT,eTrex Software Version 2.14,,,,,,,,*62\r\n");
  EXPECT_EQ(SimpleText(Noon), "@021208030000N3537938E13916200G015+00190E0000N0000U0000\r\n");
}

TEST(UnaskedTalker, TalksAtItsPaceAndAgainAfterItsInterval) {
  UnaskedTalker talker({TalkerMode::Text, 9600}, Noon);
  EXPECT_TRUE(talker.Send(seconds(5)).empty());
  // 57 bytes of ten bits take 59.4 ms.
  EXPECT_EQ(talker.Send(seconds(5) + milliseconds(30)).size(), 28U);
  EXPECT_EQ(talker.Send(seconds(5) + milliseconds(60)).size(), 29U);
  EXPECT_EQ(talker.NextDue(), nanoseconds(seconds(6)));
  static_cast<void>(talker.Send(seconds(6)));
  EXPECT_EQ(talker.Send(seconds(7)).size(), 57U);
}

TEST(UnaskedTalker, ASilentOneIsNeverDue) {
  UnaskedTalker talker({TalkerMode::Silent, 9600}, Noon);
  EXPECT_TRUE(talker.Send(seconds(1)).empty());
  EXPECT_TRUE(talker.Send(seconds(9)).empty());
  EXPECT_FALSE(talker.NextDue());
}

TEST(UnaskedTalker, NoiseNeverEnds) {
  UnaskedTalker talker({TalkerMode::Noise, 9600}, Noon);
  std::size_t bytes = 0;
  for (int ms = 0; ms <= 1000; ms += 10)
    bytes += talker.Send(milliseconds(ms)).size();
  EXPECT_GT(bytes, 600U);
}

}  // namespace
}  // namespace walrim

#include "doctor/NmeaReader.h"

#include <gtest/gtest.h>
#include <string_view>

namespace walrim {
namespace {

SentenceFacts FactsOf(std::string_view text) {
  NmeaReader reader;
  for (const char c : text)
    reader.Take(static_cast<std::uint8_t>(c));
  return reader.Facts();
}

TEST(NmeaReader, ReadsPositionTimeAndSatellites) {
  const SentenceFacts facts = FactsOf(
      "$GPRMC,124211,A,3537.9382,N,13916.2003,E,000.0,000.0,081202,006.6,W*67\r\n"
      "$GPGGA,124212,3537.9382,N,13916.2003,E,1,05,2.1,190.2,M,39.1,M,,*4C\r\n"
      "$PGRMT,eTrex Software Version 2.10,,,,,,,,*66\r\n");
  EXPECT_EQ(facts.nmea_sentences, 3);
  EXPECT_NEAR(facts.lat_deg.value_or(0), 35.632303, 1e-6);
  EXPECT_NEAR(facts.lon_deg.value_or(0), 139.270005, 1e-6);
  EXPECT_EQ(facts.utc, (CivilTime{2002, 12, 8, 12, 42, 11}));
  EXPECT_EQ(facts.satellites, 5);
  EXPECT_EQ(facts.product, "eTrex Software Version 2.10");
}

TEST(NmeaReader, SouthAndWestAreNegative) {
  const SentenceFacts facts = FactsOf("$GPGLL,3351.5000,S,15112.2500,W,124211,A*20\r\n");
  EXPECT_NEAR(facts.lat_deg.value_or(0), -33.858333, 1e-6);
  EXPECT_NEAR(facts.lon_deg.value_or(0), -151.204167, 1e-6);
}

TEST(NmeaReader, AWrongChecksumIsNoSentence) {
  EXPECT_EQ(FactsOf("$GPGLL,3351.5000,S,15112.2500,W,124211,A*33\r\n").nmea_sentences, 0);
  EXPECT_EQ(FactsOf("$GPGLL,3351.5000,S,15112.2500,W,124211,A\r\n").nmea_sentences, 0);
  EXPECT_EQ(FactsOf("$GPGLL,3351.5000,S,15112.2500,W,124211,A*3\r\n").nmea_sentences, 0);
}

TEST(NmeaReader, EmptyFieldsAreNotKnown) {
  const SentenceFacts facts = FactsOf("$GPRMC,,V,,,,,,,,,*31\r\n");
  EXPECT_EQ(facts.nmea_sentences, 1);
  EXPECT_FALSE(facts.lat_deg);
  EXPECT_FALSE(facts.utc);
}

TEST(NmeaReader, ASentenceBehindTheRestOfAnotherIsRead) {
  EXPECT_EQ(FactsOf("2.1,190.2,M,3$GPRMC,,V,,,,,,,,,*31\r\n").nmea_sentences, 1);
}

TEST(NmeaReader, ReadsTheSimpleText) {
  // yymmdd hhmmss, position, quality, height and speeds, as receivers send it each second.
  const SentenceFacts facts = FactsOf("@021208124211N3537938E13916200G015+00190E0000N0000U0000\r\n");
  EXPECT_EQ(facts.text_sentences, 1);
  EXPECT_NEAR(facts.lat_deg.value_or(0), 35.632300, 1e-6);
  EXPECT_NEAR(facts.lon_deg.value_or(0), 139.270000, 1e-6);
  EXPECT_EQ(facts.utc, (CivilTime{2002, 12, 8, 12, 42, 11}));
}

TEST(NmeaReader, TheSimpleTextOfAReceiverWithoutAFixIsSeen) {
  const SentenceFacts facts = FactsOf("@__________________________________________________ABCD\r\n");
  EXPECT_EQ(facts.text_sentences, 1);
  EXPECT_FALSE(facts.lat_deg);
}

TEST(NmeaReader, LinesWithoutAnEndAreForgotten) {
  EXPECT_EQ(FactsOf(std::string(100000, '$')).nmea_sentences, 0);
}

}  // namespace
}  // namespace walrim

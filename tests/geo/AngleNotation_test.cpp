#include "geo/AngleNotation.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <gtest/gtest.h>
#include <random>
#include <stdexcept>
#include <string>

#include "geo/Decimal.h"
#include "text/Numbers.h"

namespace walrim {
namespace {

using enum AngleNotation;

/// An angle text in another notation.
std::string ConvertAngle(std::string_view value, AngleNotation from, AngleNotation to) {
  std::string text;
  AppendConvertedAngle(text, value, from, to);
  return text;
}

TEST(ConvertAngle, TheSameAngleInEveryNotation) {
  EXPECT_EQ(ConvertAngle("34.413025", DMS, D), "34.6917361111111");
  EXPECT_EQ(ConvertAngle("34.413025", DMS, MPS), "34/41/30.3");
  EXPECT_EQ(ConvertAngle("34.413025", DMS, PAO), "34/41/30250");
  EXPECT_EQ(ConvertAngle("34/41/30250", PAO, DMS), "34.413025");
  EXPECT_EQ(ConvertAngle("34/41/30250", PAO, D), "34.6917361111111");
  EXPECT_EQ(ConvertAngle("34.4150416667", DM, DMS), "34.413025");
}

TEST(ConvertAngle, DmsToDegreesHas15DigitsAndComesBack) {
  const std::string degrees = ConvertAngle("34.413025", DMS, D);
  EXPECT_EQ(degrees, "34.6917361111111");
  EXPECT_EQ(ConvertAngle(degrees, D, DMS), "34.413025");
}

TEST(ConvertAngle, SlashedPartsToTheOtherNotations) {
  EXPECT_EQ(ConvertAngle("34/41/30.25", MPS, DMS), "34.413025");
  EXPECT_EQ(ConvertAngle("34/41/30.25", MPS, PAO), "34/41/30250");
  EXPECT_EQ(ConvertAngle("34/41/30.25", MPS, MPS), "34/41/30.3") << "half away from zero";
}

TEST(ConvertAngle, DmIsReadButNotWritten) {
  EXPECT_EQ(ConvertAngle("34.6917361111111", D, DM), "");
  EXPECT_EQ(ConvertAngle("34/41/30", MPS, DM), "");
  EXPECT_EQ(ConvertAngle("35.30", DM, D), "35.5");
}

TEST(ConvertAngle, DegreesAreNormalisedTo15Digits) {
  EXPECT_EQ(ConvertAngle("34.691736111111113", D, D), "34.6917361111111");
  EXPECT_EQ(ConvertAngle("0035.50", D, D), "35.5");
}

TEST(ConvertAngle, ReadsTheDigitsThatAreWritten) {
  EXPECT_EQ(ConvertAngle("35.400000", DMS, MPS), "35/40/00.0");
  EXPECT_EQ(ConvertAngle("35.40", DMS, DMS), "35.400000");
  EXPECT_EQ(ConvertAngle("0.29", DMS, MPS), "0/29/00.0");
  EXPECT_EQ(ConvertAngle("35.7", D, DMS), "35.420000");
  EXPECT_EQ(ConvertAngle("35.1", D, DMS), "35.060000");
}

TEST(ConvertAngle, NegativeAnglesFollowTheFloorRule) {
  EXPECT_EQ(ConvertAngle("-135.5", D, DMS), "-136.300000");
  EXPECT_EQ(ConvertAngle("-135", D, DMS), "-135.000000");
  EXPECT_EQ(ConvertAngle("-135.5", D, D), "-135.5");
}

TEST(ConvertAngle, NothingIsCarried) {
  EXPECT_EQ(ConvertAngle("34/59/59.96", MPS, MPS), "34/59/60.0");
  EXPECT_EQ(ConvertAngle("34/59/59.996", MPS, DMS), "34.596000");
  EXPECT_EQ(ConvertAngle("34/59/59.9996", MPS, PAO), "34/59/60000");
  EXPECT_EQ(ConvertAngle("34.596000", DMS, D), "35");
}

TEST(ConvertAngle, SecondsStayExactUntilTheyAreRounded) {
  EXPECT_EQ(ConvertAngle("0/0/0.05", MPS, MPS), "0/00/00.1");
  EXPECT_EQ(ConvertAngle("0/0/0.15", MPS, MPS), "0/00/00.2");
  EXPECT_EQ(ConvertAngle("0/0/0.0049999", MPS, DMS), "0.000000");
  EXPECT_EQ(ConvertAngle("0/0/0.005", MPS, DMS), "0.000001");
}

TEST(ConvertAngle, PartsMayBeAnything) {
  EXPECT_EQ(ConvertAngle("", MPS, DMS), "0.000000");
  EXPECT_EQ(ConvertAngle("34", MPS, DMS), "34.000000");
  EXPECT_EQ(ConvertAngle("34.5/1/2", MPS, MPS), "34.5/01/02.0");
  EXPECT_EQ(ConvertAngle("1/-5/-2", MPS, MPS), "1/-05/-02.0");
  EXPECT_EQ(ConvertAngle("a/b/c", MPS, MPS), "0/00/00.0");
  EXPECT_EQ(ConvertAngle("34/41/30250x", PAO, MPS), "34/41/30.3");
}

TEST(ConvertAngle, AFourthPartIsAnOverrun) {
  EXPECT_THROW((void)ConvertAngle("1/2/3/4", MPS, D), std::out_of_range);
  EXPECT_THROW((void)ConvertAngle("1/2/3/", PAO, DMS), std::out_of_range);
  EXPECT_THROW((void)ConvertAngle("1/2/3/", MPS, DM), std::out_of_range);
  EXPECT_EQ(ConvertAngle("1/2/3/4", D, D), "1");
}

TEST(ConvertAngle, ExponentsAreNumbers) {
  EXPECT_EQ(ConvertAngle("3.54E+1", D, DMS), "35.240000");
  EXPECT_EQ(ConvertAngle("354e-1", DMS, D), ConvertAngle("35.4", DMS, D));
  EXPECT_EQ(ConvertAngle("1E-05", D, DMS), "0.000004");
  EXPECT_EQ(ConvertAngle("0.000035E+6", D, D), "35");
}

TEST(ConvertAngle, AbsurdNumbersEnd) {
  EXPECT_EQ(ConvertAngle("1E+400", D, DMS), "0.000000");
  EXPECT_EQ(ConvertAngle("1e-300", D, DMS), "0.000000");
  EXPECT_EQ(ConvertAngle("1e999999999999999999999", DMS, D), "0");
  EXPECT_EQ(ConvertAngle("1e-999999999999999999999", DMS, MPS), "0/00/00.0");
  EXPECT_EQ(ConvertAngle("1E+25", D, DMS), "1E+25.000000");
  EXPECT_EQ(ConvertAngle("-1E+300", D, DMS), "-1E+300.000000");
  EXPECT_EQ(ConvertAngle("1/1/1E+20", MPS, PAO).size(), 5U + 24U);
  for (const AngleNotation from : {D, DM, DMS, MPS, PAO}) {
    for (const AngleNotation to : {D, DMS, MPS, PAO}) {
      for (const char* text : {"1E+308/1E+308/1E+308", "-1e308/-1e308/9e307", "9999999999999999999999/1/1",
                               "1e18/1e18/1e18", "10000.5/99999.5/999999.5", "1e-40/1e-40/1e-40", "-0", "-0.0/-0/-0"}) {
        EXPECT_FALSE(ConvertAngle(text, from, to).empty());
        EXPECT_TRUE(std::isfinite(DegreesOfAngle(text, from)));
      }
    }
  }
}

TEST(ConvertAngle, LongTextsAreCutNotCrashed) {
  EXPECT_EQ(ConvertAngle("35." + std::string(1000, '4'), D, MPS), "35/26/40.0");
  EXPECT_EQ(ConvertAngle(std::string(1000, '0') + "35.5", D, DMS), "35.300000");
  EXPECT_EQ(ConvertAngle("0." + std::string(2000, '0') + "1E+2001", D, D), "1");
}

TEST(ConvertAngle, WhatDmsWritesReadsBackWithinItsRounding) {
  std::mt19937_64 random(3);
  std::uniform_real_distribution<double> degrees(0, 180);
  constexpr double HalfUnit = 0.005 / 3600;
  for (int i = 0; i < 50000; ++i) {
    const double value = i < 10000 ? i * 0.0181 : degrees(random);
    const std::string text = ConvertAngle(ShortestNumber(value), D, DMS);
    ASSERT_NEAR(DegreesOfAngle(text, DMS), value, HalfUnit + 1e-12) << text;
    ASSERT_EQ(ConvertAngle(text, DMS, DMS), text);
  }
}

TEST(ConvertAngle, EveryDmsTextKeepsItsDigits) {
  for (int minutes = 0; minutes < 60; ++minutes) {
    for (int hundredths = 0; hundredths < 6000; hundredths += 7) {
      const std::string text = "135." + PadNumber(minutes, 2) + PadNumber(hundredths, 4);
      ASSERT_EQ(ConvertAngle(text, DMS, DMS), text);
      // Through 15 digits of degrees a whole minute may come back as 60 seconds, which is the same angle.
      const std::string back = ConvertAngle(ConvertAngle(text, DMS, D), D, DMS);
      ASSERT_NEAR(DegreesOfAngle(back, DMS), DegreesOfAngle(text, DMS), 1e-12) << back;
    }
  }
}

TEST(ConvertAngle, MpsReadsBackWithinItsRounding) {
  std::mt19937_64 random(4);
  std::uniform_real_distribution<double> degrees(0, 180);
  for (int i = 0; i < 20000; ++i) {
    const double value = degrees(random);
    const std::string text = ConvertAngle(ShortestNumber(value), D, MPS);
    ASSERT_NEAR(DegreesOfAngle(text, MPS), value, 0.05 / 3600 + 1e-12) << text;
  }
}

TEST(DegreesOfAngle, IsTheNearestDouble) {
  EXPECT_EQ(DegreesOfAngle("34.691736111111113", D), 34.691736111111113);
  EXPECT_EQ(DegreesOfAngle("34.413025", DMS), 34.0 + 249025.0 / 360000.0);
  EXPECT_EQ(DegreesOfAngle("35.40", DMS), 35.0 + 2.0 / 3.0);
  EXPECT_EQ(DegreesOfAngle("-1/30/0", MPS), -0.5);
}

TEST(AngleNotationOfName, KnowsTheFiveInAnyCase) {
  for (const AngleNotation notation : {D, DM, DMS, MPS, PAO})
    EXPECT_EQ(AngleNotationOfName(AngleNotationName(notation)), notation);
  EXPECT_EQ(AngleNotationOfName(" dms "), DMS);
  for (const char* name : {"", "DMSS", "DegreeType", "\tD"})
    EXPECT_FALSE(AngleNotationOfName(name)) << name;
}

TEST(ReadAngle, RefusesWhatBeginsWithNoNumber) {
  EXPECT_EQ(ReadAngle("35.30", D), 35.3);
  EXPECT_EQ(ReadAngle("-.5", D), -0.5);
  EXPECT_EQ(ReadAngle("35.373072", DMS), 35.0 + 225072.0 / 360000.0);
  EXPECT_EQ(ReadAngle("1/30/0", MPS), 1.5);
  for (const char* text : {"", " ", "x35", "-", ".", "+-5"})
    EXPECT_FALSE(ReadAngle(text, D)) << text;
  EXPECT_FALSE(ReadAngle("1/2/3/4", MPS));
}

TEST(ReadAngle, DmsAsThisProgramWritesItIsReadAsAnyOther) {
  for (const char* text : {"35.373072", "0.000000", "135.595999", "180.000000", "7.605000"})
    EXPECT_EQ(ReadAngle(text, DMS), DegreesOfAngle(text, DMS)) << text;
}

TEST(ReadPosition, RefusesWhatIsOffTheGlobe) {
  const auto point = ReadPosition("35.5", "-139.25", D);
  ASSERT_TRUE(point);
  EXPECT_EQ(point->latitude_deg, 35.5);
  EXPECT_EQ(point->longitude_deg, -139.25);
  EXPECT_FALSE(ReadPosition("90.1", "0", D));
  EXPECT_FALSE(ReadPosition("0", "180.1", D));
  EXPECT_FALSE(ReadPosition("0", "east", D));
  EXPECT_TRUE(ReadPosition("-90", "180", D));
}

TEST(ConvertAngle, DmsAsThisProgramWritesItBecomesPartsAsAnyOther) {
  for (const char* text : {"35.373072", "0.000004", "0.000005", "135.595999", "180.000000"})
    EXPECT_EQ(ConvertAngle(text, DMS, MPS), ConvertAngle(std::string("0") + text, DMS, MPS)) << text;
}

TEST(AppendAngle, WritesEveryNotationBehindWhatIsThere) {
  std::string text = "x";
  AppendAngle(text, 35.6252, D);
  AppendAngle(text += ' ', 35.6252, DMS);
  AppendAngle(text += ' ', 35.6252, MPS);
  AppendAngle(text += ' ', 35.6252, PAO);
  EXPECT_EQ(text, "x35.6252 35.373072 35/37/30.7 35/37/30720");
}

TEST(Decimal, RoundsOnTheDecimalValue) {
  EXPECT_EQ(FixedDigits(ParseDecimal("30.25"), 0, 2, 1), "30.3");
  EXPECT_EQ(FixedDigits(ParseDecimal("2.675"), 2, 4, 0), "0268");
  EXPECT_EQ(FixedDigits(ParseDecimal("-30.25"), 0, 2, 1), "-30.3");
  EXPECT_EQ(FixedDigits(ParseDecimal("-0.01"), 0, 2, 1), "00.0");
  EXPECT_EQ(FixedDigits(ParseDecimal("0.5"), 0, 1, 0), "1");
}

TEST(Decimal, AgreesWithLeadingNumber) {
  for (const char* text :
       {"1", "-1.5", " 2.25e2", "1e", "1e+", ".5", "5.", "+3", "--1", "", "x", "1e5x", "1.2.3", "-.5e1"}) {
    EXPECT_EQ(NearestDouble(ParseDecimal(text)), LeadingNumber(text)) << text;
  }
}

/// Forty digits of numerator / divisor by hand.
std::string LongDivision(long numerator, long divisor) {
  std::string digits = std::to_string(numerator / divisor) + ".";
  for (int i = 0; i < 40; ++i) {
    numerator = numerator % divisor * 10;
    digits += static_cast<char>('0' + numerator / divisor);
  }
  return digits;
}

TEST(DegreesOfAngle, IsTheNearestDoubleForEveryKindOfSecond) {
  constexpr long HundredthsPerDegree = 360000;
  for (long hundredths = 1; hundredths < 180 * HundredthsPerDegree; hundredths += 99991) {
    const std::string seconds =
        std::to_string(100 + hundredths / 100 % 60).substr(1) + "." + std::to_string(100 + hundredths % 100).substr(1);
    const std::string angle =
        std::to_string(hundredths / HundredthsPerDegree) + "/" + std::to_string(hundredths / 6000 % 60) + "/" + seconds;
    const double nearest = std::strtod(LongDivision(hundredths, HundredthsPerDegree).c_str(), nullptr);
    ASSERT_EQ(DegreesOfAngle(angle, MPS), nearest) << angle;
    // More decimals than a double's division takes at once.
    ASSERT_EQ(DegreesOfAngle(angle + "00000000000000000000000000001", MPS), nearest) << angle;
    ASSERT_NEAR(DegreesOfAngle(angle + "123456", MPS), nearest, 1.0 / HundredthsPerDegree) << angle;
  }
}

/// A fraction's thirty digits, in three parts.
constexpr UInt128 Fraction(std::uint64_t first, std::uint64_t second, std::uint64_t third) {
  return (UInt128{first} * 10'000'000'000 + second) * 10'000'000'000 + third;
}

TEST(Decimal, KeepsThirtyDigitsBehindThePoint) {
  const auto fraction_is = [](std::string_view text, UInt128 fraction) {
    return ParseDecimal(text).fraction == fraction;
  };
  EXPECT_TRUE(fraction_is("7.5", Fraction(5'000'000'000, 0, 0)));
  EXPECT_TRUE(fraction_is("7.123456789012345678", Fraction(1'234'567'890, 1'234'567'800, 0)));
  EXPECT_TRUE(fraction_is("7.1234567890123456789", Fraction(1'234'567'890, 1'234'567'890, 0)));
  EXPECT_TRUE(fraction_is("7.000000000000000000500000000009", Fraction(0, 50, 9)));
  EXPECT_TRUE(fraction_is("7.1234567890123456789012345678994", Fraction(1'234'567'890, 1'234'567'890, 1'234'567'899)));
  EXPECT_TRUE(fraction_is("1e-30", 1));
  EXPECT_TRUE(fraction_is("1e-31", 0));
  EXPECT_TRUE(fraction_is("125.5e-4", Fraction(125'500'000, 0, 0)));
  EXPECT_TRUE(fraction_is("125e3", 0));
}

TEST(Decimal, LongNumbersKeepTheirZeros) {
  EXPECT_EQ(FixedDigits(ParseDecimal("90000000000000000.25"), 0, 1, 2), "90000000000000000.25");
  EXPECT_EQ(FixedDigits(ParseDecimal("100000000000000000"), 0, 1, 1), "100000000000000000.0");
  EXPECT_EQ(FixedDigits(ParseDecimal("5.00007"), 0, 2, 5), "05.00007");
}

}  // namespace
}  // namespace walrim

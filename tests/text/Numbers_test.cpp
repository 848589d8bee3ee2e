#include "text/Numbers.h"

#include <cmath>
#include <cstdlib>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace walrim {
namespace {

std::string GeneralNumber(double value) {
  std::string text;
  AppendGeneralNumber(text, value);
  return text;
}

TEST(LeadingNumber, TakesTheLongestNumberInFront) {
  EXPECT_EQ(LeadingNumber("12abc"), 12);
  EXPECT_EQ(LeadingNumber("34.5.6"), 34.5);
  EXPECT_EQ(LeadingNumber(" \t 7"), 7);
  EXPECT_EQ(LeadingNumber("+1.5"), 1.5);
  EXPECT_EQ(LeadingNumber("-.25x"), -0.25);
  EXPECT_EQ(LeadingNumber("5."), 5);
  EXPECT_EQ(LeadingNumber("1E+25"), 1e25);
  EXPECT_EQ(LeadingNumber("2e3"), 2000);
  EXPECT_EQ(LeadingNumber("5e"), 5);
  EXPECT_EQ(LeadingNumber("5e+"), 5);
}

TEST(LeadingNumber, IsZeroWhereThereIsNone) {
  for (const char* text : {"", " ", "abc", "-", "+", ".", "-.", "+-5", "- 5", "--5", "e5", ".e5", "inf", "-inf", "nan",
                           "infinity", "\"5\""}) {
    EXPECT_EQ(LeadingNumber(text), 0) << text;
  }
}

TEST(LeadingNumber, KnowsNoHexadecimal) {
  EXPECT_EQ(LeadingNumber("0x10"), 0);
}

TEST(LeadingNumber, IsZeroWhereTheNumberFitsNoDouble) {
  EXPECT_EQ(LeadingNumber("1E+400"), 0);
  EXPECT_EQ(LeadingNumber("-1e999999999999999999"), 0);
  EXPECT_EQ(LeadingNumber("1e-400"), 0);
  EXPECT_EQ(LeadingNumber(std::string(1000, '9')), 0);
}

TEST(IsNumber, IsWhatLeadingNumberTakesAsAWhole) {
  for (const char* number : {"0", "12", "-1.5", "+.5", "5.", "1E-05", "1e9", "1e999"})
    EXPECT_TRUE(IsNumber(number)) << number;
  for (const char* other : {"", "-", ".", "1x", " 1", "1 ", "1-2", "1.2.3", "e5", "1e", "1e+", "0x1", "inf", "１"})
    EXPECT_FALSE(IsNumber(other)) << other;
}

TEST(LeadingNumber, GivesNoNegativeZero) {
  EXPECT_FALSE(std::signbit(LeadingNumber("-0.0")));
}

TEST(LeadingInteger, RoundsDownAndStaysInRange) {
  EXPECT_EQ(LeadingInteger("7.9", 0, 255), 7);
  EXPECT_EQ(LeadingInteger("-0.5", -10, 255), -1);
  EXPECT_EQ(LeadingInteger("-3", 0, 255), 0);
  EXPECT_EQ(LeadingInteger("256", 0, 255), 255);
  EXPECT_EQ(LeadingInteger("1E+300", 0, std::numeric_limits<long long>::max()), std::numeric_limits<long long>::max());
  EXPECT_EQ(LeadingInteger("-1E+300", std::numeric_limits<long long>::min(), 0), std::numeric_limits<long long>::min());
  EXPECT_EQ(LeadingInteger("999999999999999", 0, 1000), 1000);
}

TEST(GeneralNumber, HasUpTo15SignificantDigits) {
  EXPECT_EQ(GeneralNumber(34.69173611111111), "34.6917361111111");
  EXPECT_EQ(GeneralNumber(0.1 + 0.2), "0.3");
  EXPECT_EQ(GeneralNumber(-0.5), "-0.5");
  EXPECT_EQ(GeneralNumber(0), "0");
  EXPECT_EQ(GeneralNumber(-0.0), "0");
  EXPECT_EQ(GeneralNumber(100), "100");
}

TEST(GeneralNumber, ChangesToAnExponentAtTheEdges) {
  EXPECT_EQ(GeneralNumber(0.0001), "0.0001");
  EXPECT_EQ(GeneralNumber(0.00001), "1E-05");
  EXPECT_EQ(GeneralNumber(123456789012345.0), "123456789012345");
  EXPECT_EQ(GeneralNumber(-999999999999999.0), "-999999999999999");
  EXPECT_EQ(GeneralNumber(1e15), "1E+15");
  EXPECT_EQ(GeneralNumber(1e25), "1E+25");
  EXPECT_EQ(GeneralNumber(1.5e-300), "1.5E-300");
}

TEST(ShortestNumber, HasTheFewestDigitsThatReadBack) {
  EXPECT_EQ(ShortestNumber(34.69173611111111), "34.69173611111111");
  EXPECT_EQ(ShortestNumber(0.1 + 0.2), "0.30000000000000004");
  EXPECT_EQ(ShortestNumber(1.0e25F), "1E+25");
  EXPECT_EQ(ShortestNumber(0.5F), "0.5");
  EXPECT_EQ(ShortestNumber(0.1F), "0.1");
  EXPECT_EQ(ShortestNumber(-1234.5F), "-1234.5");
  EXPECT_EQ(ShortestNumber(135.0), "135");
  EXPECT_EQ(ShortestNumber(1000.0), "1000");
  EXPECT_EQ(ShortestNumber(0.0001), "0.0001");
  EXPECT_EQ(ShortestNumber(0.00012), "0.00012");
  EXPECT_EQ(ShortestNumber(0.000012), "1.2E-05");
  EXPECT_EQ(ShortestNumber(123456789012345680.0), "1.2345678901234568E+17");
  EXPECT_EQ(ShortestNumber(-0.0), "0");
  EXPECT_EQ(ShortestNumber(std::numeric_limits<double>::infinity()), "0");
}

TEST(ShortestNumber, LargeNumbersEndInZerosAndNotInDigitsThatNobodyGave) {
  EXPECT_EQ(ShortestNumber(9999999.5), "9999999.5");
  EXPECT_EQ(ShortestNumber(10000000.5), "10000000.5");
  EXPECT_EQ(ShortestNumber(9999999.0F), "9999999");
  EXPECT_EQ(ShortestNumber(16777216.0F), "16777216");
  EXPECT_EQ(ShortestNumber(123456792.0F), "123456790");
  EXPECT_EQ(ShortestNumber(999999986991104.0F), "1E+15");
  EXPECT_EQ(ShortestNumber(0.0001F), "0.0001");
  EXPECT_EQ(ShortestNumber(0.000099F), "9.9E-05");
}

TEST(ShortestNumber, EveryDoubleReadsBackAsItself) {
  std::mt19937_64 random(7);
  std::uniform_real_distribution<double> degrees(-180, 180);
  std::uniform_int_distribution<int> exponent(-300, 300);
  for (int i = 0; i < 20000; ++i) {
    const double value = degrees(random);
    ASSERT_EQ(LeadingNumber(ShortestNumber(value)), value);
    const double scaled = std::ldexp(value, exponent(random));
    ASSERT_EQ(LeadingNumber(ShortestNumber(scaled)), scaled);
    const auto single = static_cast<float>(value);
    ASSERT_EQ(static_cast<float>(LeadingNumber(ShortestNumber(single))), single);
  }
}

TEST(PadNumber, FillsWithZerosBehindTheSign) {
  EXPECT_EQ(PadNumber(7, 2), "07");
  EXPECT_EQ(PadNumber(123, 2), "123");
  EXPECT_EQ(PadNumber(0, 3), "000");
  EXPECT_EQ(PadNumber(-7, 3), "-007");
  EXPECT_EQ(PadNumber(std::numeric_limits<long long>::min(), 2), "-9223372036854775808");
}

TEST(AppendPadded, WritesBehindWhatIsThere) {
  std::string text = "12:";
  AppendPadded(text, 5, 2);
  AppendPadded(text, -5, 2);
  EXPECT_EQ(text, "12:05-05");
}

}  // namespace
}  // namespace walrim

#include <gtest/gtest.h>

#include "formats/WptLine.h"
#include "support.h"

namespace walrim {
namespace {

void ExpectLine(const WptLine& line, std::string_view command, const std::vector<std::string>& fields) {
  EXPECT_EQ(line.command, command);
  for (std::size_t i = 0; i < WptFieldCount; ++i)
    EXPECT_EQ(line.fields[i], i < fields.size() ? fields[i] : "") << "field " << i + 1;
}

WptLine ReadOne(const std::string& text) {
  static std::string held;
  held = text;
  return WptLineReader(held).Read();
}

TEST(WptLineReader, AWaypointLineHasSevenFieldsWithoutTheBlanksBefore) {
  ExpectLine(ReadOne("WP,D,ABC, 35.1, 135.2,01/02/2002,10:11:12,hello"), "WP",
             {"D", "ABC", "35.1", "135.2", "01/02/2002", "10:11:12", "hello"});
}

TEST(WptLineReader, EachCommandHasItsFields) {
  ExpectLine(ReadOne("RP,DMS,A,1,2,d,t,c"), "RP", {"DMS", "A", "1", "2", "d", "t", "c"});
  ExpectLine(ReadOne("RN,3,north ridge"), "RN", {"3", "north ridge"});
  ExpectLine(ReadOne("TP,D, 1, 2,d,t,1"), "TP", {"D", "1", "2", "d", "t", "1"});
  ExpectLine(ReadOne(TokyoDatum), "Datum", {TokyoDatum.substr(6)});
}

TEST(WptLineReader, CommandsAreReadInAnyCase) {
  EXPECT_EQ(ReadOne("wp,D,A,1,2").command, "WP");
  EXPECT_EQ(ReadOne("  Tp ,D,1,2").command, "TP");
  EXPECT_EQ(ReadOne("DATUM,WGS84").command, "Datum");
}

TEST(WptLineReader, ADatumLineThatLostItsFirstWordIsOne) {
  ExpectLine(ReadOne("Tokyo mean,Bessel 1841,1"), "Datum", {"Tokyo mean,Bessel 1841,1"});
  ExpectLine(ReadOne("wgs84,WGS84,0"), "Datum", {"wgs84,WGS84,0"});
}

TEST(WptLineReader, AnUnknownCommandGivesItsMessageAndLeavesTheRestOfTheLine) {
  const std::string text = "XY,1,2\r\nRN,1,a\r\n";
  WptLineReader reader(text);
  ExpectLine(reader.Read(), "", {"command [XY] is not suppoted"});
  ExpectLine(reader.Read(), "", {"command [1] is not suppoted"});
  reader.SkipLine();
  ExpectLine(reader.Read(), "RN", {"1", "a"});
  EXPECT_EQ(reader.LineNumber(), 2);
}

TEST(WptLineReader, TheEndIsEof) {
  WptLineReader reader("RN,1,a");
  (void)reader.Read();
  ExpectLine(reader.Read(), "eof", {});
  ExpectLine(reader.Read(), "eof", {});
  ExpectLine(ReadOne(""), "eof", {});
}

TEST(WptLineReader, EveryLineEndIsOne) {
  const std::string text = "RN,1,a\r\nRN,2,b\nRN,3,c\rRN,4,d\n\r\n\rRN,5,e";
  WptLineReader reader(text);
  for (const char* number : {"1", "2", "3", "4", "5"})
    EXPECT_EQ(reader.Read().fields[0], number);
  EXPECT_EQ(reader.LineNumber(), 7);
  EXPECT_EQ(reader.Read().command, "eof");
}

TEST(WptLineReader, AFieldInQuotesMayHoldCommas) {
  ExpectLine(ReadOne("RN, \"1,2\" x,\"a, b\""), "RN", {"1,2", "a, b"});
  ExpectLine(ReadOne("RN,1,say \"hi\""), "RN", {"1", "say \"hi\""});
}

TEST(WptLineReader, AnOpenQuoteEndsWithItsLine) {
  const std::string text = "RN,\"1,a\nRN,2,b";
  WptLineReader reader(text);
  ExpectLine(reader.Read(), "RN", {"1,a", ""});
  ExpectLine(reader.Read(), "RN", {"2", "b"});
}

TEST(WptLineReader, MissingFieldsAreEmptyAndNeverTakenFromTheNextLine) {
  const std::string text = "WP,D,A\nRN,1,a";
  WptLineReader reader(text);
  ExpectLine(reader.Read(), "WP", {"D", "A"});
  ExpectLine(reader.Read(), "RN", {"1", "a"});
}

TEST(WptLineReader, ATailBehindACommaIsToldAndPassedOver) {
  const std::string text = "RN,1,hut, closed\nRN,2,b,\n";
  WptLineReader reader(text);
  const WptLine line = reader.Read();
  ExpectLine(line, "RN", {"1", "hut"});
  EXPECT_TRUE(line.overfull);
  const WptLine next = reader.Read();
  ExpectLine(next, "RN", {"2", "b"});
  EXPECT_FALSE(next.overfull);
}

TEST(ComposeWptLine, PutsABlankWhereTheFormHasOne) {
  EXPECT_EQ(ComposeWptLine("Datum", {"a,b"}), "Datum,a,b");
  EXPECT_EQ(ComposeWptLine("WP", {"D", "A", "1", "2", "d", "t", "c"}), "WP,D,A, 1, 2,d,t,c");
  EXPECT_EQ(ComposeWptLine("RP", {"D", "A", "1", "2", "d", "t", "c"}), "RP,D,A, 1, 2,d,t,c");
  EXPECT_EQ(ComposeWptLine("RN", {"1", "c"}), "RN,1,c");
  EXPECT_EQ(ComposeWptLine("TP", {"D", "1", "2", "d", "t", "0"}), "TP,D, 1, 2,d,t,0");
  EXPECT_EQ(ComposeWptLine("XY", {"1"}), "command [XY] is not suppoted");
  EXPECT_EQ(ComposeWptLine("RN", {}), "RN,,");
}

TEST(ComposeWptLine, ReadsBackAsTheWritersLineDoes) {
  const std::string written = "WP,D,A,1,2,d,t,c\r\n";
  const std::string composed = ComposeWptLine("WP", {"D", "A", "1", "2", "d", "t", "c"});
  EXPECT_EQ(WptLineReader(written).Read().fields, WptLineReader(composed).Read().fields);
}

TEST(DatumLine, IsOneOfTwoTextsAndReadsBack) {
  EXPECT_EQ(DatumLine("Tokyo"), TokyoDatum);
  EXPECT_EQ(DatumLine("WGS84"), Wgs84Datum);
  EXPECT_EQ(DatumOfField(TokyoDatum.substr(6)), "Tokyo");
  EXPECT_EQ(DatumOfField(ScriptDatumField), "Tokyo");
  EXPECT_EQ(DatumOfField(Wgs84Datum.substr(6)), "WGS84");
  EXPECT_EQ(DatumOfField("wgs84"), "WGS84");
  EXPECT_EQ(DatumOfField("NAD27,Clarke"), "NAD27");
}

}  // namespace
}  // namespace walrim

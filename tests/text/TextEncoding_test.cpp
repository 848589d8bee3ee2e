#include "text/TextEncoding.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "text/Scan.h"

namespace walrim {
namespace {

using Lines = std::vector<std::string>;

/// The lines of a text that comes in pieces of a size.
Lines LinesOf(std::string_view bytes, std::size_t piece, TextEncoding encoding = TextEncoding::Utf8) {
  LineSource source([bytes, piece]() mutable { return TakeBytes(bytes, piece); }, encoding);
  Lines lines;
  for (std::string_view line; source.Next(line);) {
    lines.emplace_back(line);
    EXPECT_EQ(source.LineNumber(), static_cast<int>(lines.size()));
  }
  return lines;
}

void ExpectLines(std::string_view bytes, const Lines& expected, TextEncoding encoding = TextEncoding::Utf8) {
  for (std::size_t piece = 1; piece <= bytes.size() + 1; ++piece)
    EXPECT_EQ(LinesOf(bytes, piece, encoding), expected) << "pieces of " << piece;
}

TextEncoding EncodingInPieces(std::string_view bytes, std::size_t piece) {
  EncodingDetector detector;
  while (!bytes.empty())
    detector.Add(TakeBytes(bytes, piece));
  return detector.Encoding();
}

void ExpectEncoding(std::string_view bytes, TextEncoding expected) {
  for (std::size_t piece = 1; piece <= bytes.size() + 1; ++piece)
    EXPECT_EQ(EncodingInPieces(bytes, piece), expected) << bytes << ", pieces of " << piece;
}

TEST(EncodingDetector, WhatIsValidUtf8IsUtf8) {
  ExpectEncoding("", TextEncoding::Utf8);
  ExpectEncoding("plain", TextEncoding::Utf8);
  ExpectEncoding("富士山 \U0001F5FB", TextEncoding::Utf8);
  ExpectEncoding("\xC2\x80 a control character is no katakana", TextEncoding::Utf8);
}

TEST(EncodingDetector, AllElseIsShiftJis) {
  ExpectEncoding("\x95\x78\x8E\x6D", TextEncoding::ShiftJis);
  ExpectEncoding("cut short \xE5\xAF", TextEncoding::ShiftJis);
  ExpectEncoding("富\xB1", TextEncoding::ShiftJis);
}

TEST(EncodingDetector, PairsOfHalfWidthKatakanaAloneAreShiftJis) {
  ExpectEncoding("WPT\t\xCF\xB4", TextEncoding::ShiftJis);
  ExpectEncoding("\xD4\xB5\xD0\xB3", TextEncoding::ShiftJis);
  // One character that katakana do not make decides for UTF-8.
  ExpectEncoding("\xCF\xB4 富", TextEncoding::Utf8);
  ExpectEncoding("\xCF\xB4\xD0\x80", TextEncoding::Utf8);
}

TEST(EncodingDetector, TheMarkDecides) {
  ExpectEncoding("\xEF\xBB\xBF\xCF\xB4", TextEncoding::Utf8);
  ExpectEncoding("\xEF\xBB\xBF\x95\x78", TextEncoding::Utf8);
  ExpectEncoding("\xEF\xBB", TextEncoding::ShiftJis);
}

/// The lines of a text whose encoding is found out, each with a line feed.
std::string WholeText(std::string_view bytes) {
  LineSource source(bytes, EncodingOf(bytes));
  std::string text;
  for (std::string_view line; source.Next(line);)
    text.append(line).append("\n");
  return text;
}

TEST(WholeText, TakesTheMarkAway) {
  EXPECT_EQ(WholeText("\xEF\xBB\xBF富"), "富\n");
}

TEST(WholeText, MarkedTextThatIsIllFormedStaysText) {
  EXPECT_EQ(WholeText("\xEF\xBB\xBF"
                      "a\x80"),
            "a\xEF\xBF\xBD\n");
}

TEST(WholeText, RecognisesUtf8AndElseReadsShiftJis) {
  EXPECT_EQ(WholeText("a\r\nb\n\n"), "a\nb\n\n");
  EXPECT_EQ(WholeText("富士"), "富士\n");
  EXPECT_EQ(WholeText("\x95\x78\x8E\x6D"), "富士\n");
  EXPECT_EQ(WholeText("plain"), "plain\n");
}

TEST(LineSource, LinesEndInThreeWays) {
  ExpectLines("a\r\nb\nc\rd", {"a", "b", "c", "d"});
  ExpectLines("\r\n\n\r", {"", "", ""});
  ExpectLines("a\r\r\n\nb", {"a", "", "", "b"});
  ExpectLines("", {});
  ExpectLines("a", {"a"});
}

TEST(LineSource, TheLastEndBeginsNoLine) {
  ExpectLines("a\r\n", {"a"});
  ExpectLines("a\r", {"a"});
  ExpectLines("a\n", {"a"});
}

TEST(LineSource, DecodesShiftJisLineByLine) {
  ExpectLines("\x95\x78\r\n\x8E\x6D\x82\n\xB1", {"富", "士\xEF\x9E\x82", "ｱ"}, TextEncoding::ShiftJis);
}

TEST(LineSource, LeavesTheMarkOut) {
  for (const std::size_t piece : {3U, 4U, 99U})
    EXPECT_EQ(LinesOf("\xEF\xBB\xBFWPT\n富\x80", piece), (Lines{"WPT", "富\xEF\xBF\xBD"})) << piece;
}

TEST(LineSource, AHeldTextIsReadAcrossItsPieces) {
  const std::string long_line(150000, 'x');
  const std::string text = "a\n" + long_line + "\nb";
  LineSource source(text, TextEncoding::Utf8);
  std::string_view line;
  ASSERT_TRUE(source.Next(line));
  ASSERT_TRUE(source.Next(line));
  EXPECT_EQ(line, long_line);
  ASSERT_TRUE(source.Next(line));
  EXPECT_EQ(line, "b");
  EXPECT_FALSE(source.Next(line));
}

}  // namespace
}  // namespace walrim

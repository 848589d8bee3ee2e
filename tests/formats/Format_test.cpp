#include "formats/Format.h"

#include <gtest/gtest.h>

namespace walrim {
namespace {

TEST(Format, TheRowsStandInTheOrderOfTheirNumbers) {
  std::string rows;
  for (const Format& format : Formats()) {
    EXPECT_EQ(&FormatOf(format.id), &format);
    rows.append(format.name).append(" ").append(format.ending).append(format.has_options ? " options|" : "|");
  }
  EXPECT_EQ(rows, "標準 grc|WPT+ txt|MPS mps options|GPX gpx|KML kml|");
}

TEST(Format, AnEndingIsKnownInAnyCase) {
  EXPECT_EQ(FormatOfEnding("GRC"), &FormatOf(FormatId::Standard));
  EXPECT_EQ(FormatOfEnding("txt"), &FormatOf(FormatId::WptPlus));
  EXPECT_EQ(FormatOfEnding("Mps"), &FormatOf(FormatId::Script));
  EXPECT_EQ(FormatOfEnding(""), nullptr);
  EXPECT_EQ(FormatOfEnding("Gpx"), &FormatOf(FormatId::Gpx));
  EXPECT_EQ(FormatOfEnding("kml"), &FormatOf(FormatId::Kml));
  EXPECT_EQ(FormatOfEnding("gp"), nullptr);
}

TEST(Format, TheDialogFilterOffersAllFilesAndTheFormats) {
  EXPECT_EQ(DialogFilter(FormatOf(FormatId::Standard)), "すべてのファイル (*.*)|*.*|標準ファイル (*.grc)|*.grc|");
  EXPECT_EQ(DialogFilter(FormatOf(FormatId::WptPlus)), "すべてのファイル (*.*)|*.*|WPT+ファイル (*.txt)|*.txt|");
  EXPECT_EQ(DialogFilter(FormatOf(FormatId::Script)), "すべてのファイル (*.*)|*.*|MPSファイル (*.mps)|*.mps|");
  EXPECT_EQ(DialogFilter(FormatOf(FormatId::Gpx)), "すべてのファイル (*.*)|*.*|GPXファイル (*.gpx)|*.gpx|");
  EXPECT_EQ(DialogFilter(FormatOf(FormatId::Kml)), "すべてのファイル (*.*)|*.*|KMLファイル (*.kml)|*.kml|");
}

TEST(Format, OnlyKmlIsNotRead) {
  for (const Format& format : Formats()) {
    EXPECT_EQ(format.read == nullptr, format.id == FormatId::Kml) << format.name;
    EXPECT_EQ(format.recognise == nullptr, format.read == nullptr) << format.name;
  }
}

TEST(Format, TheOpenDialogFilterBeginsWithEverythingThatCanBeReadAndEndsWithTheChosenFormat) {
  const std::string known = "対応ファイル (*.grc;*.txt;*.mps;*.gpx)|*.grc;*.txt;*.mps;*.gpx|";
  EXPECT_EQ(OpenDialogFilter(FormatOf(FormatId::WptPlus)),
            known +
                "標準ファイル (*.grc)|*.grc|MPSファイル (*.mps)|*.mps|GPXファイル (*.gpx)|*.gpx|"
                "すべてのファイル (*.*)|*.*|WPT+ファイル (*.txt)|*.txt|");
  EXPECT_EQ(OpenDialogFilter(FormatOf(FormatId::Kml)),
            known +
                "標準ファイル (*.grc)|*.grc|WPT+ファイル (*.txt)|*.txt|MPSファイル (*.mps)|*.mps|GPXファイル "
                "(*.gpx)|*.gpx|すべてのファイル (*.*)|*.*|");
}

TEST(RecognizeFormat, ByTheFirstColumnOfTheFirstLine) {
  for (const char* text :
       {"WALRIM Ver", "walrim\tVer. 1", "WPT\tD", "rth,1", " RTP ,x", "TRH", "trp\r\n", "TRP\nWP,1"}) {
    const bool whole = std::string_view(text) != "WALRIM Ver";
    EXPECT_EQ(RecognizeFormat(text), whole ? &FormatOf(FormatId::Standard) : nullptr) << text;
  }
  for (const char* text : {"Datum,WGS84", "tokyo mean,Bessel", "WGS84,x", "WP,D", "rn,1", "RP", "TP\r"})
    EXPECT_EQ(RecognizeFormat(text), &FormatOf(FormatId::WptPlus)) << text;
  for (const char* text : {"", "\r\nWPT", "hello", "point oid=1;", "WPTX\t"})
    EXPECT_EQ(RecognizeFormat(text), nullptr) << text;
}

TEST(RecognizeFormat, AScriptByItsNameOrWithoutOneByItsTitle) {
  EXPECT_EQ(RecognizeFormat("point oid=1;", "/a/b.mps"), &FormatOf(FormatId::Script));
  EXPECT_EQ(RecognizeFormat("point oid=1;", "B.MPS"), &FormatOf(FormatId::Script));
  EXPECT_EQ(RecognizeFormat("//Header:Prog:", "b.txt"), nullptr);
  EXPECT_EQ(RecognizeFormat("//header:Prog:"), &FormatOf(FormatId::Script));
  EXPECT_EQ(RecognizeFormat("//head"), nullptr);
  EXPECT_EQ(RecognizeFormat("point", "ps"), nullptr);
}

TEST(RecognizeFormat, GpxByItsRootElementWhateverTheFileIsCalled) {
  using namespace std::string_view_literals;
  for (const std::string_view text :
       {"<gpx>"sv, "\xEF\xBB\xBF<?xml version=\"1.0\"?>\r\n<gpx version=\"1.1\">"sv, "  <gpx\tversion"sv,
        "<?xml version='1.0'?><!-- <kml> --><!DOCTYPE gpx><x:gpx/>"sv,
        "<!DOCTYPE gpx [<!ENTITY a \"b\"><!-- c -->]><gpx>"sv, "<gpx"sv, "\xFF\xFE<\0g\0p\0x\0>\0"sv,
        "\xFE\xFF\0<\0g\0p\0x\0>"sv, "<\0g\0p\0x\0>\0"sv}) {
    for (const std::string_view path : {"", "a.gpx", "a.txt", "a.mps"})
      EXPECT_EQ(RecognizeFormat(text, path), &FormatOf(FormatId::Gpx)) << text << path;
  }
  for (const std::string_view text :
       {"<gpxx>"sv, "<kml><gpx>"sv, "gpx"sv, "<!-- <gpx>"sv, "<?xml <gpx>"sv, "< gpx>"sv, "<html gpx>"sv})
    EXPECT_EQ(RecognizeFormat(text, "a.gpx"), nullptr) << text;
}

TEST(RecognizeFormat, TheFirstLineCountsMoreThanTheName) {
  EXPECT_EQ(RecognizeFormat("WPT\tD", "a.mps"), &FormatOf(FormatId::Standard));
  EXPECT_EQ(RecognizeFormat("WP,D", "a.grc"), &FormatOf(FormatId::WptPlus));
}

}  // namespace
}  // namespace walrim

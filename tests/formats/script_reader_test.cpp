#include <gtest/gtest.h>

#include "formats/Statement.h"
#include "geo/GeneralLatLon.h"
#include "support.h"

namespace walrim {
namespace {

std::string Back(const std::string& script) {
  return ConvertScriptToWpt(script).text;
}

TEST(ScriptReader, TheTextBeginsWithItsDatumLine) {
  EXPECT_EQ(Back(""), ScriptDatum + "\r\n");
  EXPECT_EQ(Back("nothing of a script"), ScriptDatum + "\r\n");
}

TEST(ScriptReader, OurPointsComeBackAsWhatTheyWere) {
  EXPECT_EQ(Back(ScriptOf({TokyoDatum, "WP,D,ABC,34.5,135.25,d,t,summit, not kept", "RN,7,ridge",
                           "RP,D,A,34.5,135.25,d,t,", "RP,D,B,34.5,135.5,d,t,CRTD 14:05 15-Nov-02",
                           "TP,D,34.5,135.25,11/16/2002,09:00:00,1", "TP,D,34.5,135.5,12/31/1989,09:00:00,0"})),
            Lines({ScriptDatum, "WP,D,ABC, 34.5, 135.25,12/31/1989,00:00:00,summit", "RN,7,ridge",
                   "RP,D,A, 34.5, 135.25,12/31/1989,00:00:00,",
                   "RP,D,B, 34.5, 135.5,11/15/2002,14:05:00,CRTD 14:05 15-NOV-02",
                   "TP,D, 34.5, 135.25,11/16/2002,09:00:00,1", "TP,D, 34.5, 135.5,12/31/1989,00:00:00,0"}));
}

TEST(ScriptReader, TheOptionsChangeNothingOfWhatComesBack) {
  const std::vector<std::string> lines{TokyoDatum,
                                       "RN,7,ridge",
                                       "RP,D,A,34.5,135.25,d,t,CRTD 23:05 15-NOV-02",
                                       "RP,D,B,34.5,135.5,d,t,c",
                                       "TP,D,34.5,135.25,11/16/2002,09:00:00,1",
                                       "TP,D,34.5,135.5,11/16/2002,09:00:30,0"};
  EXPECT_EQ(Back(ScriptOf(lines, {-11, "START", "GOAL", 1, 1})), Back(ScriptOf(lines)));
}

TEST(ScriptReader, AStepLosesTimesButNoPoint) {
  const std::vector<std::string> lines{TokyoDatum, "TP,D,34.5,135.25,11/16/2002,09:00:00,1",
                                       "TP,D,34.5,135.5,11/16/2002,09:00:30,0",
                                       "TP,D,34.5,135.75,11/16/2002,09:01:00,0"};
  EXPECT_EQ(Back(ScriptOf(lines, {0, "", "", 0, 5})),
            Lines({ScriptDatum, "TP,D, 34.5, 135.25,11/16/2002,09:00:00,1", "TP,D, 34.5, 135.5,12/31/1989,00:00:00,0",
                   "TP,D, 34.5, 135.75,11/16/2002,09:01:00,0"}));
}

TEST(ScriptReader, LinesComeBackInTheOrderOfTheirStatements) {
  const std::vector<std::string> lines{
      "TP,D, 34.5, 135.25,11/16/2002,09:00:00,1", "WP,D,A, 34.5, 135.25,12/31/1989,00:00:00,c",
      "TP,D, 34.5, 135.25,11/16/2002,09:00:00,1", "RN,7,ridge", "RP,D,B, 34.5, 135.5,12/31/1989,00:00:00,c"};
  std::vector<std::string> wpt{TokyoDatum};
  wpt.insert(wpt.end(), lines.begin(), lines.end());
  EXPECT_EQ(Back(ScriptOf(wpt)), ScriptDatum + "\r\n" + Lines(lines));
}

TEST(ScriptReader, PositionsOnWgs84AreConvertedSoThatTheDatumLineIsTrue) {
  const std::string text = Back(ScriptOf({Wgs84Datum, "WP,D,A,34.5,135.25,d,t,c"}));
  const GeoPoint tokyo = WgsToTokyo({34.5, 135.25, 0});
  WptLineReader lines(text);
  EXPECT_EQ(DatumOfField(lines.Read().fields[0]), "Tokyo");
  const WptLine line = lines.Read();
  EXPECT_NEAR(std::stod(std::string(line.fields[2])), tokyo.latitude_deg, 1e-11);
  EXPECT_NEAR(std::stod(std::string(line.fields[3])), tokyo.longitude_deg, 1e-11);
}

TEST(ScriptReader, AScriptFromElsewhereGivesItsPoints) {
  EXPECT_EQ(Back("mapserver script ver=1.0;\r\n"
                 "\t\ttheme\tstr=my huts;\r\n"
                 "\t\tpoint\toid=4\r\n\t\t\t\tgid=9\r\n\t\t\t\tpos=34/30/00.0,135/15/00.0\r\n"
                 "\t\t\t\tstr=hut, \"old\"\r\n\t\t\t\tinfo=open in summer;\r\n"
                 "\t\tline\toid=5\r\n\t\t\t\tpos=34/30/00.0,135/15/00.0,34/31/00.0,135/15/00.0\r\n\t\t\t\tstr=path;\r\n"
                 "point oid=6,gid=5131,pos=34/30/0,135/30/0;\n"
                 "point oid=7,gid=5133,pos=34/30/0,135/30/0,str=x,info=RP:1<A><c>;\n"
                 "point oid=8,gid=5135,pos=34/30/0,135/30/0,str=y,info=[TR]#1 TP:1 11/16/2002 09:00:00;\n"),
            Lines({ScriptDatum, "WP,D,hut   old, 34.5, 135.25,12/31/1989,00:00:00,open in summer",
                   "WP,D,6, 34.5, 135.5,12/31/1989,00:00:00,", "WP,D,x, 34.5, 135.5,12/31/1989,00:00:00,RP:1<A><c>",
                   "WP,D,y, 34.5, 135.5,12/31/1989,00:00:00,[TR]#1 TP:1 11/16/2002 09:00:00"}));
}

TEST(ScriptReader, APointOfALogThatHasNoSuchOneIsAWaypoint) {
  for (const char* info :
       {"[TR]#1 TP:0 x", "[TR]#1 TP:2 x", "[TR]#2 TP:1 x", "[TR]#1 TP:99999999999999999999 x", "[TR]#1"}) {
    const std::string text =
        Back(BuildStatement("line", {"1", "5134", "34/30/00.0,135/15/00.0", "[TR]#1"}) + "\r\n" +
             BuildStatement("point", {"2", "5135", "34/30/00.0,135/15/00.0", "p", "", "", "", info}));
    EXPECT_NE(text.find("WP,D,p,"), std::string::npos) << info;
    EXPECT_NE(text.find("TP,D,"), std::string::npos) << info;
  }
}

TEST(ScriptReader, StatementsThatGiveNothingAreCounted) {
  const Conversion result = ConvertScriptToWpt(
      "point oid=1,pos=34/30/0;\n"
      "point oid=2,pos=x,135/0/0;\n"
      "point oid=3,pos=1/2/3/4,135/0/0;\n"
      "\t\tline\toid=4\r\n\t\t\t\tgid=5134\r\n\t\t\t\tpos=34/0/0,135/0/0,99/0/0,135/0/0,34/1/0\r\n\t\t\t\tstr=[TR]#1;\n"
      "point oid=5,pos=34/0/0,135/0/0\n");
  EXPECT_EQ(result.skipped, 6);
  EXPECT_EQ(result.text, Lines({ScriptDatum, "TP,D, 34, 135,12/31/1989,00:00:00,1"}));
}

TEST(ScriptReader, WhatStandsBehindAStatementOnItsLineIsCountedButNotARemark) {
  const Conversion result = ConvertScriptToWpt(
      "point oid=1,pos=34/0/0,135/0/0;point oid=2,pos=34/0/0,135/0/0; line oid=3;\n"
      "point oid=4,pos=34/0/0,135/0/0; // hut;\n"
      "point oid=5,\npos=34/0/0,135/0/0;\t\n"
      "theme str=a;b\n");
  EXPECT_EQ(result.skipped, 2);
  EXPECT_EQ(std::count(result.text.begin(), result.text.end(), '\n'), 4);
}

TEST(ScriptReader, APointIndentedByTabsMayHaveItsKeysBehindCommas) {
  const std::string point = Lines({ScriptDatum, "WP,D,hut, 34.5, 135.25,12/31/1989,00:00:00,open"});
  EXPECT_EQ(Back("\t\tpoint\toid=4, gid=9,pos=34/30/0,135/15/0,str=hut,info=open;\r\n"), point);
  EXPECT_EQ(Back("\t\tpoint\toid=4\r\n    gid=9\r\n    pos=34/30/0,135/15/0\r\n    str=hut\r\n    info=open;\r\n"),
            point);
}

TEST(ScriptReader, ALogGivesNoMorePointsThanCanBeStored) {
  std::string pos;
  for (int i = 0; i < MaxTrackPoints + 10; ++i)
    pos += i == 0 ? "1,1" : ",1,1";
  const std::string line = BuildStatement("line", {"1", "5134", pos, "[TR]#1"}) + "\r\n";
  const Conversion result = ConvertScriptToWpt(line + line);
  EXPECT_EQ(std::count(result.text.begin(), result.text.end(), '\n'), MaxTrackPoints + 1);
  EXPECT_EQ(result.skipped, 2);
}

}  // namespace
}  // namespace walrim

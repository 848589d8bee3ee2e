#include <gtest/gtest.h>

#include "geo/GeneralLatLon.h"
#include "geo/GeneralLib.h"
#include "support.h"

namespace walrim {
namespace {

const std::string Groups =
    "\t\tgroup\tgid=5131\r\n\t\t\t\tgname=Waypoint\r\n\t\t\t\ttextrgb=0,255,0\r\n\t\t\t\tlinergb=0,0,255\r\n"
    "\t\t\t\tareargb=0,0,255\r\n\t\t\t\tbodrrgb=0,0,255\r\n\t\t\t\ttextstyle=frame#2\r\n\t\t\t\tlinestyle=line#0\r\n"
    "\t\t\t\tareastyle=hatch#3\r\n\t\t\t\tpointstyle=mark#13024\r\n\t\t\t\tbodrstyle=line#0\r\n\t\t\t\ticonsize=16\r\n"
    "\t\t\t\tlinewidth=1\r\n\t\t\t\tbodrwidth=1;\r\n"
    "\t\tgroup\tgid=5132\r\n\t\t\t\tgname=Route\r\n\t\t\t\ttextrgb=255,0,0\r\n\t\t\t\tlinergb=255,0,0\r\n"
    "\t\t\t\tareargb=0,0,255\r\n\t\t\t\tbodrrgb=0,0,255\r\n\t\t\t\ttextstyle=frame#2\r\n\t\t\t\tlinestyle=line#0\r\n"
    "\t\t\t\tareastyle=hatch#3\r\n\t\t\t\tpointstyle=none\r\n\t\t\t\tbodrstyle=line#0\r\n\t\t\t\ticonsize=32\r\n"
    "\t\t\t\tlinewidth=2\r\n\t\t\t\tbodrwidth=2;\r\n"
    "\t\tgroup\tgid=5133\r\n\t\t\t\tgname=RoutePoint\r\n\t\t\t\ttextrgb=255,0,0\r\n\t\t\t\tlinergb=0,0,255\r\n"
    "\t\t\t\tareargb=0,0,255\r\n\t\t\t\tbodrrgb=0,0,255\r\n\t\t\t\ttextstyle=plain\r\n\t\t\t\tlinestyle=line#0\r\n"
    "\t\t\t\tareastyle=hatch#3\r\n\t\t\t\tpointstyle=mark#93050\r\n\t\t\t\tbodrstyle=line#0\r\n\t\t\t\ticonsize=16\r\n"
    "\t\t\t\tlinewidth=1\r\n\t\t\t\tbodrwidth=1;\r\n"
    "\t\tgroup\tgid=5133.1\r\n\t\t\t\tgname=RoutePointOrigin\r\n\t\t\t\ttextrgb=255,0,0\r\n"
    "\t\t\t\tlinergb=0,0,255\r\n\t\t\t\tareargb=0,0,255\r\n\t\t\t\tbodrrgb=0,0,255\r\n\t\t\t\ttextstyle=plain\r\n"
    "\t\t\t\tlinestyle=line#0\r\n\t\t\t\tareastyle=hatch#3\r\n\t\t\t\tpointstyle=mark#14010\r\n"
    "\t\t\t\tbodrstyle=line#0\r\n\t\t\t\ticonsize=16\r\n\t\t\t\tlinewidth=1\r\n\t\t\t\tbodrwidth=1;\r\n"
    "\t\tgroup\tgid=5133.2\r\n\t\t\t\tgname=RoutePointDestination\r\n\t\t\t\ttextrgb=255,0,0\r\n"
    "\t\t\t\tlinergb=0,0,255\r\n\t\t\t\tareargb=0,0,255\r\n\t\t\t\tbodrrgb=0,0,255\r\n\t\t\t\ttextstyle=plain\r\n"
    "\t\t\t\tlinestyle=line#0\r\n\t\t\t\tareastyle=hatch#3\r\n\t\t\t\tpointstyle=mark#14131\r\n"
    "\t\t\t\tbodrstyle=line#0\r\n\t\t\t\ticonsize=16\r\n\t\t\t\tlinewidth=1\r\n\t\t\t\tbodrwidth=1;\r\n"
    "\t\tgroup\tgid=5134\r\n\t\t\t\tgname=TrackLog\r\n\t\t\t\ttextrgb=0,0,255\r\n\t\t\t\tlinergb=0,0,255\r\n"
    "\t\t\t\tareargb=0,0,255\r\n\t\t\t\tbodrrgb=0,0,255\r\n\t\t\t\ttextstyle=frame#2\r\n\t\t\t\tlinestyle=line#0\r\n"
    "\t\t\t\tareastyle=hatch#3\r\n\t\t\t\tpointstyle=none\r\n\t\t\t\tbodrstyle=line#0\r\n\t\t\t\ticonsize=32\r\n"
    "\t\t\t\tlinewidth=2\r\n\t\t\t\tbodrwidth=2;\r\n"
    "\t\tgroup\tgid=5135\r\n\t\t\t\tgname=TrackPoint\r\n\t\t\t\ttextrgb=0,0,255\r\n\t\t\t\tlinergb=0,0,255\r\n"
    "\t\t\t\tareargb=0,0,255\r\n\t\t\t\tbodrrgb=0,0,255\r\n\t\t\t\ttextstyle=plain\r\n\t\t\t\tlinestyle=line#0\r\n"
    "\t\t\t\tareastyle=hatch#3\r\n\t\t\t\tpointstyle=mark#92000\r\n\t\t\t\tbodrstyle=line#0\r\n\t\t\t\ticonsize=16\r\n"
    "\t\t\t\tlinewidth=1\r\n\t\t\t\tbodrwidth=1;\r\n";

/// A point statement as the script writes it.
std::string Point(const std::string& oid, const std::string& gid, const std::string& pos, const std::string& str,
                  const std::string& info) {
  return "\t\tpoint\toid=" + oid + "\r\n\t\t\t\tgid=" + gid + "\r\n\t\t\t\tpos=" + pos +
         (str.empty() ? "" : "\r\n\t\t\t\tstr=" + str) + "\r\n\t\t\t\tstrformat=right\r\n\t\t\t\tinfo=" + info +
         ";\r\n";
}

std::string LineStatement(const std::string& oid, const std::string& gid, const std::string& pos,
                          const std::string& str, const std::string& info) {
  return "\t\tline\toid=" + oid + "\r\n\t\t\t\tgid=" + gid + (pos.empty() ? "" : "\r\n\t\t\t\tpos=" + pos) +
         "\r\n\t\t\t\tstr=" + str + "\r\n\t\t\t\tstrformat=right\r\n\t\t\t\tinfo=" + info + ";\r\n";
}

const std::string FirstPos = "34/41/30.3,135/00/00.0";
const std::string SecondPos = "34/42/00.0,135/00/00.0";
const std::string FirstStop = "RP,DMS,ABC,34.413025,135.000000,d,t,first";
const std::string SecondStop = "RP,DMS,LONGIDENT,34.420000,135.000000,d,t,second";
const std::string ThirdStop = "RP,DMS,山,34.430000,135.000000,d,t,";

TEST(ScriptWriter, TheFrameOfAScriptOfNothing) {
  const std::string script = ScriptOf({});
  EXPECT_EQ(script,
            "//Header:Prog:1.0.8.0 Templ:1.2 Date:11/15/2002 14:05:12;\r\n"
            "mapserver script ver=1.0;\r\n"
            "\t\tmessage\tstr=Walrim Waypoint:0 Route:0 TrackLog:0;\r\n"
            "\t\ttheme\tstr=Walrim Datum:WGS84 UTCOffset:0;\r\n" +
                Groups + "\t\tdisp\tall;\r\nmapserver end;\r\n");
}

TEST(ScriptWriter, TheThemeNamesTheDatumAndTheHours) {
  MpsOptions options;
  options.utc_offset_hours = -3;
  EXPECT_NE(ScriptOf({TokyoDatum}, options).find("\t\ttheme\tstr=Walrim Datum:Tokyo UTCOffset:-3;\r\n"),
            std::string::npos);
}

TEST(ScriptWriter, AWaypointIsAPoint) {
  EXPECT_EQ(DrawnPart(ScriptOf({"WP,DMS,ABC,34.413025,135.000000,11/15/2002,14:05:12,summit hut"})),
            Point("1", "5131", FirstPos, "ABC   ", "[WP]<ABC><summit hut>"));
}

TEST(ScriptWriter, LabelsArePaddedByCharactersAndLongOnesKept) {
  const std::string part = DrawnPart(ScriptOf({"WP,D,山小屋,34.7,135,d,t,c", "WP,D,LONGIDENT,34.7,135,d,t,c"}));
  EXPECT_NE(part.find("str=山小屋   \r\n"), std::string::npos);
  EXPECT_NE(part.find("str=LONGIDENT\r\n"), std::string::npos);
}

TEST(ScriptWriter, ACreationStampIsPutInCapitalsAndShifted) {
  MpsOptions options;
  options.utc_offset_hours = 9;
  const std::string line = "WP,D,A,34.7,135,d,t,CRTD 20:05 15-Nov-02";
  EXPECT_NE(ScriptOf({line}).find("<CRTD 20:05 15-NOV-02>"), std::string::npos);
  EXPECT_NE(ScriptOf({line}, options).find("<CRTD 05:05 16-NOV-02>"), std::string::npos);
}

TEST(ScriptWriter, ARouteIsALineAndItsPoints) {
  EXPECT_EQ(DrawnPart(ScriptOf({"RN,7,ridge", FirstStop, SecondStop, ThirdStop})),
            LineStatement("1", "5132", FirstPos + "," + SecondPos + ",34/43/00.0,135/00/00.0", "RtNo:7 RpNum:3",
                          "[RT]<ridge>") +
                Point("2", "5133.1", FirstPos, "ABC   ", "RP:1<ABC><first>") +
                Point("3", "5133", SecondPos, "LONGIDENT", "RP:2<LONGIDENT><second>") +
                Point("4", "5133.2", "34/43/00.0,135/00/00.0", "山     ", "RP:3<山><>"));
}

TEST(ScriptWriter, TheOptionsNameTheEndsOfARouteAndNumberItDownwards) {
  const MpsOptions options{0, "START", "END", 1, 1};
  const std::string part = DrawnPart(ScriptOf({"RN,7,ridge", FirstStop, SecondStop, ThirdStop}, options));
  EXPECT_NE(part.find(Point("2", "5133.1", FirstPos, "START ", "RP:3<ABC><first>")), std::string::npos);
  EXPECT_NE(part.find("RP:2<LONGIDENT><second>"), std::string::npos);
  EXPECT_NE(part.find(Point("4", "5133.2", "34/43/00.0,135/00/00.0", "END   ", "RP:1<山><>")), std::string::npos);
}

TEST(ScriptWriter, ShortRoutes) {
  EXPECT_EQ(DrawnPart(ScriptOf({"RN,1,none", "RN,2,one", FirstStop})),
            LineStatement("1", "5132", "", "RtNo:1 RpNum:0", "[RT]<none>") +
                LineStatement("2", "5132", FirstPos, "RtNo:2 RpNum:1", "[RT]<one>") +
                Point("3", "5133.1", FirstPos, "ABC   ", "RP:1<ABC><first>"));
}

const std::vector<std::string> WalkLines{"TP,DMS,34.413025,135.000000,11/16/2002,09:00:00,1",
                                         "TP,DMS,34.420000,135.000000,11/16/2002,09:00:30,0",
                                         "TP,DMS,34.420000,135.000000,11/16/2002,10:01:10,0"};

TEST(ScriptWriter, ALogIsALineWithItsStatisticsAndItsPoints) {
  // 29.75 seconds of latitude on a sphere of 6377.397155 km.
  EXPECT_EQ(DrawnPart(ScriptOf(WalkLines)),
            LineStatement("1", "5134", FirstPos + "," + SecondPos + "," + SecondPos, "[TR]#1",
                          "[TR]#1 Start[11/16/2002 09:00:00] End[11/16/2002 10:01:10] Total:01:01:10 3tps .92km "
                          ".902km/hr") +
                Point("2", "5135", FirstPos, "11/16/2002 09:00:00", "[TR]#1 TP:1 11/16/2002 09:00:00") +
                Point("3", "5135", SecondPos, "11/16/2002 09:00:30",
                      "[TR]#1 TP:2 11/16/2002 09:00:30 Intv. 00:00:30 .92km 110.379km/hr") +
                Point("4", "5135", SecondPos, "11/16/2002 10:01:10",
                      "[TR]#1 TP:3 11/16/2002 10:01:10 Intv. 01:00:40 0km 0km/hr"));
}

TEST(ScriptWriter, TheFlagCutsLogs) {
  const std::string part =
      DrawnPart(ScriptOf({"TP,D,34.7,135,11/16/2002,09:00:00,0", "TP,D,34.7,135,11/16/2002,09:00:30,1",
                          "TP,D,34.7,135,11/16/2002,09:01:00,0"}));
  EXPECT_NE(part.find("[TR]#1 Start[11/16/2002 09:00:00] End[11/16/2002 09:00:00] Total:1tps 0km ;"),
            std::string::npos);
  EXPECT_NE(part.find("Total:00:00:30 2tps 0km 0km/hr;"), std::string::npos);
  EXPECT_NE(part.find("info=[TR]#2 TP:2 "), std::string::npos);
}

TEST(ScriptWriter, PointsWithoutATimeCarryTheEpoch) {
  for (const char* time : {"12/31/1989,00:00:00", "12/31/1989,09:00:00", "12/30/1989,19:00:00", "soon,now"}) {
    const std::string part = DrawnPart(ScriptOf({"TP,DMS,34.413025,135.000000," + std::string(time) + ",1",
                                                 "TP,DMS,34.420000,135.000000," + std::string(time) + ",0"}));
    EXPECT_EQ(part, LineStatement("1", "5134", FirstPos + "," + SecondPos, "[TR]#1", "[TR]#1 Total:2tps .92km ") +
                        Point("2", "5135", FirstPos, "", "[TR]#1 TP:1 12/31/1989 00:00:00") +
                        Point("3", "5135", SecondPos, "", "[TR]#1 TP:2 12/31/1989 00:00:00 Intv. .92km "));
  }
}

TEST(ScriptWriter, NoStatisticsDivideByNoTime) {
  for (const auto& [first, second] : {std::pair("09:00:00", "09:00:00"), std::pair("09:00:00", "08:00:00")}) {
    const std::string script = ScriptOf({"TP,D,0,0,11/16/2002," + std::string(first) + ",1",
                                         "TP,D,0,180,11/16/2002," + std::string(second) + ",0",
                                         "TP,D,-90,-180,11/16/2002," + std::string(second) + ",0"});
    EXPECT_EQ(script.find("nan"), std::string::npos);
    EXPECT_EQ(script.find("inf\r"), std::string::npos);
    EXPECT_EQ(DrawnPart(script).find("km/hr"), std::string::npos);
  }
}

TEST(ScriptWriter, TimesAreShiftedByTheOption) {
  MpsOptions options;
  options.utc_offset_hours = 15;
  const std::string part = DrawnPart(ScriptOf(WalkLines, options));
  EXPECT_NE(part.find("Start[11/17/2002 00:00:00]"), std::string::npos);
  EXPECT_NE(part.find("TP:2 11/17/2002 00:00:30"), std::string::npos);
}

std::vector<std::string> DrawnLogPoints(int count, std::int16_t step) {
  std::vector<std::string> lines;
  for (int i = 0; i < count; ++i)
    lines.emplace_back("TP,D,34.7,135,11/16/2002,09:00:00,0");
  MpsOptions options;
  options.track_log_step = step;
  const std::string part = DrawnPart(ScriptOf(lines, options));
  std::vector<std::string> numbers;
  for (std::size_t at = part.find(" TP:"); at != std::string::npos; at = part.find(" TP:", at + 1))
    numbers.push_back(part.substr(at + 4, part.find(' ', at + 4) - at - 4));
  return numbers;
}

TEST(ScriptWriter, TheStepLeavesPointsOutButNeverTheFirstAndTheLast) {
  EXPECT_EQ(DrawnLogPoints(5, 1), (std::vector<std::string>{"1", "2", "3", "4", "5"}));
  EXPECT_EQ(DrawnLogPoints(6, 2), (std::vector<std::string>{"1", "3", "5", "6"}));
  EXPECT_EQ(DrawnLogPoints(5, 2), (std::vector<std::string>{"1", "3", "5"}));
  EXPECT_EQ(DrawnLogPoints(5, 100), (std::vector<std::string>{"1", "5"}));
  EXPECT_EQ(DrawnLogPoints(2, 0), (std::vector<std::string>{"1", "2"}));
  EXPECT_EQ(DrawnLogPoints(2, -4), (std::vector<std::string>{"1", "2"}));
}

TEST(ScriptWriter, ALateDatumLineDoesNotMoveWhatFollows) {
  const GeoPoint tokyo = WgsToTokyo({35.5, 139.25, 0});
  const std::string script = ScriptOf({TokyoDatum, "WP,D,A,35.5,139.25,d,t,c", Wgs84Datum, "WP,D,B,35.5,139.25,d,t,c"});
  EXPECT_NE(script.find("Datum:Tokyo"), std::string::npos);
  const std::string pos = ConvertAngle(std::to_string(tokyo.latitude_deg), "D", "MPS");
  EXPECT_NE(script.find("pos=" + pos + ","), std::string::npos) << pos;
}

TEST(ScriptWriter, LinesThatCannotBeDrawnAreCounted) {
  const Conversion result = ConvertWptToScript(
      Lines({"XY,1,2", "WP,D,A,x,1,d,t,c", "WP,ZZ,A,1,1,d,t,c", "TP,MPS,1/2/3/4,1,d,t,0", "RP,D,A,95,1,d,t,c",
             "Datum,NAD27", "WP,D,A,1,1,d,t,c", Wgs84Datum, "WP,D,A,1,1,d,t,hut, closed"}),
      {}, Now);
  EXPECT_EQ(result.skipped, 5);
  EXPECT_EQ(result.cut, 1);
  ASSERT_EQ(result.messages.count, 1);
  EXPECT_EQ(result.messages.kept[0], "command [XY] is not suppoted");
  EXPECT_EQ(DrawnPart(result.text), Point("1", "5131", "1/00/00.0,1/00/00.0", "A     ", "[WP]<A><hut>"));
}

TEST(ScriptWriter, TextsCannotBreakAStatement) {
  const std::string part =
      DrawnPart(ScriptOf({"WP,D,A;B,34.7,135,d,t,// $STR$ ; url=x ><", "RN,1,a;b", "RP,D,\"p><q, x\",34.7,135,d,t,c"}));
  EXPECT_NE(part.find("str=A；B   \r\n"), std::string::npos);
  EXPECT_NE(part.find("info=[WP]<A；B><// $STR$ ； url=x ><>;\r\n"), std::string::npos);
  EXPECT_NE(part.find("info=[RT]<a；b>;\r\n"), std::string::npos);
  EXPECT_NE(part.find("info=RP:1<p＞＜q, x><c>;\r\n"), std::string::npos);
}

TEST(ScriptWriter, ProgressIsToldOnTheWay) {
  std::vector<std::string> lines(1000, "WP,D,A,34.7,135,d,t,c");
  int told = 0;
  const std::string text = Lines(lines);
  (void)ConvertWptToScript(text, {}, Now, [&](std::size_t done, std::size_t total) {
    ++told;
    EXPECT_LE(done, total);
    EXPECT_EQ(total, text.size());
  });
  EXPECT_GT(told, 1);
}

}  // namespace
}  // namespace walrim

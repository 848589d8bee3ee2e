#include "formats/ScriptWriter.h"

#include <gtest/gtest.h>

#include "Support.h"

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
constexpr double FirstLat = 34 + (41 + 30.25 / 60) / 60;
constexpr double SecondLat = 34.7;
const Waypoint FirstStop = Named("ABC", FirstLat, 135, "FIRST");
const Waypoint SecondStop = Named("LONGIDENT", SecondLat, 135, "SECOND");
const Waypoint ThirdStop = Named("山", 34 + 43 / 60.0, 135, "THIRD");
const Route Ridge = Numbered(7, "RIDGE", {FirstStop, SecondStop, ThirdStop});

/// 2002/11/16 00:00:00 UTC.
constexpr GarminSeconds Midnight = 406339200;

/// Times in UTC, so that nothing shifts them but the option.
WriteSettings ScriptSettings(const ScriptOptions& options = {}) {
  WriteSettings settings = Settings(AngleNotation::D, Datum::Wgs84, 0);
  settings.script = options;
  return settings;
}

/// The statements of a script that draw: from the first one behind the groups to disp.
std::string DrawnPart(const std::string& script) {
  const std::size_t last_group = script.rfind("\t\tgroup\t");
  const std::size_t begin = script.find(";\r\n", last_group) + 3;
  return script.substr(begin, script.find("\t\tdisp\t") - begin);
}

class ScriptWriterTest : public ::testing::Test {
 protected:
  std::string Script(const WriteSettings& settings = ScriptSettings()) {
    return Written(FormatId::Script, data_, settings);
  }
  std::string Drawn(const ScriptOptions& options = {}) { return DrawnPart(Script(ScriptSettings(options))); }

  DataSet data_;
};

TEST_F(ScriptWriterTest, TheFrameOfAScript) {
  (void)data_.Add(Named("A", SecondLat, 135, "C"));
  EXPECT_EQ(Script(),
            "//Header:Prog:1.0.8.0 Templ:1.2 Date:11/15/2002 14:05:12;\r\n"
            "mapserver script ver=1.0;\r\n"
            "\t\tmessage\tstr=Walrim Waypoint:1 Route:0 TrackLog:0;\r\n"
            "\t\ttheme\tstr=Walrim Datum:WGS84 UTCOffset:0;\r\n" +
                Groups + Point("1", "5131", SecondPos, "A     ", "[WP]<A><C>") +
                "\t\tdisp\tall;\r\nmapserver end;\r\n");
}

TEST_F(ScriptWriterTest, NothingToDrawGivesNoText) {
  EXPECT_EQ(Script(), "");
  AddLog(data_, {});
  EXPECT_EQ(Script(), "");
  (void)data_.Add(FirstStop);
  WriteSettings settings = ScriptSettings();
  settings.kinds = {false, true, true};
  EXPECT_EQ(Script(settings), "");
}

TEST_F(ScriptWriterTest, TheThemeNamesTheDatumAndTheHours) {
  (void)data_.Add(FirstStop);
  WriteSettings settings = ScriptSettings();
  settings.datum = Datum::Tokyo;
  settings.script.utc_offset_hours = -3;
  EXPECT_NE(Script(settings).find("\t\ttheme\tstr=Walrim Datum:Tokyo UTCOffset:-3;\r\n"), std::string::npos);
}

TEST_F(ScriptWriterTest, TheMessageCountsWhatIsDrawn) {
  (void)data_.Add(Named("A", 95, 135));
  (void)data_.Add(FirstStop);
  (void)data_.Begin(Ridge);
  AddLog(data_, {At(95, 135, {}, true)});
  AddLog(data_, {At(1, 1, {}, true), At(1, 1), At(2, 2, {}, true), At(95, 1, {}, true), At(3, 3)});
  AddLog(data_, {At(3, 3)});
  EXPECT_NE(Script().find("Walrim Waypoint:1 Route:1 TrackLog:3;"), std::string::npos);
  WriteSettings settings = ScriptSettings();
  settings.kinds = {false, true, false};
  EXPECT_NE(Script(settings).find("Walrim Waypoint:0 Route:1 TrackLog:0;"), std::string::npos);
}

TEST_F(ScriptWriterTest, AWaypointIsAPoint) {
  (void)data_.Add(Named("ABC", FirstLat, 135, "SUMMIT HUT"));
  EXPECT_EQ(Drawn(), Point("1", "5131", FirstPos, "ABC   ", "[WP]<ABC><SUMMIT HUT>"));
}

TEST_F(ScriptWriterTest, PositionsAreOnTheDatumOfTheSettings) {
  (void)data_.Add(Named("A", 35.5, 139.25));
  const GeoPoint tokyo = ConvertDatum({35.5, 139.25, 0}, Datum::Wgs84, Datum::Tokyo);
  std::string pos;
  AppendAngle(pos, tokyo.latitude_deg, AngleNotation::MPS);
  WriteSettings settings = ScriptSettings();
  settings.datum = Datum::Tokyo;
  EXPECT_NE(Script(settings).find("pos=" + pos + ","), std::string::npos) << pos;
}

TEST_F(ScriptWriterTest, LabelsArePaddedByCharactersAndLongOnesKept) {
  (void)data_.Add(Named("山小屋"));
  (void)data_.Add(Named("LONGIDENT"));
  EXPECT_NE(Drawn().find("str=山小屋   \r\n"), std::string::npos);
  EXPECT_NE(Drawn().find("str=LONGIDENT\r\n"), std::string::npos);
}

TEST_F(ScriptWriterTest, ACreationStampIsPutInCapitalsAndShifted) {
  (void)data_.Add(Named("A", 34.7, 135, "CRTD 20:05 15-Nov-02"));
  ScriptOptions options;
  options.utc_offset_hours = 9;
  EXPECT_NE(Drawn().find("<CRTD 20:05 15-NOV-02>"), std::string::npos);
  EXPECT_NE(Drawn(options).find("<CRTD 05:05 16-NOV-02>"), std::string::npos);
}

TEST_F(ScriptWriterTest, AnEmptyCommentIsTheStampOfNow) {
  (void)data_.Add(Named("A", 34.7, 135));
  EXPECT_NE(Drawn().find("[WP]<A><CRTD 14:05 15-NOV-02>"), std::string::npos);
}

TEST_F(ScriptWriterTest, ARouteIsALineAndItsPoints) {
  (void)data_.Begin(Ridge);
  EXPECT_EQ(Drawn(), LineStatement("1", "5132", FirstPos + "," + SecondPos + ",34/43/00.0,135/00/00.0",
                                   "RtNo:7 RpNum:3", "[RT]<RIDGE>") +
                         Point("2", "5133.1", FirstPos, "ABC   ", "RP:1<ABC><FIRST>") +
                         Point("3", "5133", SecondPos, "LONGIDENT", "RP:2<LONGIDENT><SECOND>") +
                         Point("4", "5133.2", "34/43/00.0,135/00/00.0", "山     ", "RP:3<山><THIRD>"));
}

TEST_F(ScriptWriterTest, TheOptionsNameTheEndsOfARouteAndNumberItDownwards) {
  (void)data_.Begin(Ridge);
  const std::string part = Drawn({0, "START", "END", true, 1});
  EXPECT_NE(part.find(Point("2", "5133.1", FirstPos, "START ", "RP:3<ABC><FIRST>")), std::string::npos);
  EXPECT_NE(part.find("RP:2<LONGIDENT><SECOND>"), std::string::npos);
  EXPECT_NE(part.find(Point("4", "5133.2", "34/43/00.0,135/00/00.0", "END   ", "RP:1<山><THIRD>")), std::string::npos);
}

TEST_F(ScriptWriterTest, ShortRoutes) {
  (void)data_.Begin(Numbered(1, "NONE"));
  (void)data_.Begin(Numbered(2, "ONE", {FirstStop}));
  EXPECT_EQ(Drawn(), LineStatement("1", "5132", "", "RtNo:1 RpNum:0", "[RT]<NONE>") +
                         LineStatement("2", "5132", FirstPos, "RtNo:2 RpNum:1", "[RT]<ONE>") +
                         Point("3", "5133.1", FirstPos, "ABC   ", "RP:1<ABC><FIRST>"));
}

const std::vector<TrackPoint> Walk{At(FirstLat, 135, Midnight + 9 * 3600, true),
                                   At(SecondLat, 135, Midnight + 9 * 3600 + 30),
                                   At(SecondLat, 135, Midnight + 10 * 3600 + 70)};

TEST_F(ScriptWriterTest, ALogIsALineWithItsStatisticsAndItsPoints) {
  AddLog(data_, Walk);
  // 29.75 seconds of latitude on a sphere of 6377.397155 km.
  EXPECT_EQ(Drawn(),
            LineStatement("1", "5134", FirstPos + "," + SecondPos + "," + SecondPos, "[TR]#1",
                          "[TR]#1 Start[11/16/2002 09:00:00] End[11/16/2002 10:01:10] Total:01:01:10 3tps .92km "
                          ".902km/hr") +
                Point("2", "5135", FirstPos, "11/16/2002 09:00:00", "[TR]#1 TP:1 11/16/2002 09:00:00") +
                Point("3", "5135", SecondPos, "11/16/2002 09:00:30",
                      "[TR]#1 TP:2 11/16/2002 09:00:30 Intv. 00:00:30 .92km 110.379km/hr") +
                Point("4", "5135", SecondPos, "11/16/2002 10:01:10",
                      "[TR]#1 TP:3 11/16/2002 10:01:10 Intv. 01:00:40 0km 0km/hr"));
}

TEST_F(ScriptWriterTest, AnIntervalIsTheWayFromThePointThatIsDrawnBefore) {
  AddLog(data_, {At(FirstLat, 135, Midnight, true), At(SecondLat, 135, Midnight + 60), At(FirstLat, 135, Midnight + 90),
                 At(SecondLat, 135, Midnight + 3600), At(SecondLat, 135, Midnight + 3660)});
  const std::string part = Drawn({0, "", "", false, 2});
  EXPECT_NE(part.find("[TR]#1 TP:3 11/16/2002 00:01:30 Intv. 00:01:30 1.84km 73.586km/hr;"), std::string::npos) << part;
  EXPECT_NE(part.find("[TR]#1 TP:5 11/16/2002 01:01:00 Intv. 00:59:30 .92km .928km/hr;"), std::string::npos) << part;
  EXPECT_EQ(part.find("TP:2 "), std::string::npos);
}

TEST_F(ScriptWriterTest, EachSegmentIsALogAndLogsWithoutABeginningRunTogether) {
  AddLog(data_, {At(34.7, 135, Midnight), At(34.7, 135, Midnight + 30, true)});
  AddLog(data_, {At(34.7, 135, Midnight + 60)});
  const std::string part = Drawn();
  EXPECT_NE(part.find("info=[TR]#1 Start[11/16/2002 00:00:00] End[11/16/2002 00:00:00] Total:00:00:00 1tps 0km ;"),
            std::string::npos);
  EXPECT_NE(part.find("info=[TR]#2 Start[11/16/2002 00:00:30] End[11/16/2002 00:01:00] Total:00:00:30 2tps 0km "
                      "0km/hr;"),
            std::string::npos);
  EXPECT_NE(part.find("info=[TR]#2 TP:2 "), std::string::npos);
}

TEST_F(ScriptWriterTest, PointsWithoutATimeCarryTheEpoch) {
  AddLog(data_, {At(FirstLat, 135, {}, true), At(SecondLat, 135)});
  const std::string expected =
      LineStatement("1", "5134", FirstPos + "," + SecondPos, "[TR]#1", "[TR]#1 Total:2tps .92km ") +
      Point("2", "5135", FirstPos, "", "[TR]#1 TP:1 12/31/1989 00:00:00") +
      Point("3", "5135", SecondPos, "", "[TR]#1 TP:2 12/31/1989 00:00:00 Intv. .92km ");
  for (const int hours : {0, 9, -5}) {
    WriteSettings settings = ScriptSettings();
    settings.utc_offset_hours = hours;
    EXPECT_EQ(DrawnPart(Script(settings)), expected) << hours;
  }
}

TEST_F(ScriptWriterTest, TimesAreShiftedByTheZoneAndTheOption) {
  AddLog(data_, Walk);
  WriteSettings settings = ScriptSettings();
  settings.utc_offset_hours = 9;
  settings.script.utc_offset_hours = 6;
  const std::string part = DrawnPart(Script(settings));
  EXPECT_NE(part.find("Start[11/17/2002 00:00:00]"), std::string::npos);
  EXPECT_NE(part.find("TP:2 11/17/2002 00:00:30"), std::string::npos);
}

class DrawnPoints : public ScriptWriterTest {
 protected:
  /// The numbers of the points of a log that are drawn.
  std::string Of(int count, std::int16_t step) {
    data_.Clear(DataKind::TrackLog);
    AddLog(data_, std::vector<TrackPoint>(static_cast<std::size_t>(count), At(34.7, 135, Midnight)));
    ScriptOptions options;
    options.track_log_step = step;
    const std::string part = Drawn(options);
    std::string numbers;
    for (std::size_t at = part.find(" TP:"); at != std::string::npos; at = part.find(" TP:", at + 1))
      numbers += part.substr(at + 4, part.find(' ', at + 4) - at - 4) + " ";
    return numbers;
  }
};

TEST_F(DrawnPoints, TheStepLeavesPointsOutButNeverTheFirstAndTheLast) {
  EXPECT_EQ(Of(5, 1), "1 2 3 4 5 ");
  EXPECT_EQ(Of(6, 2), "1 3 5 6 ");
  EXPECT_EQ(Of(5, 2), "1 3 5 ");
  EXPECT_EQ(Of(5, 100), "1 5 ");
  EXPECT_EQ(Of(2, 0), "1 2 ");
  EXPECT_EQ(Of(2, -4), "1 2 ");
}

TEST_F(ScriptWriterTest, RecordsWithoutAPlaceOnTheGlobeAreCountedAndLeftOut) {
  (void)data_.Add(Named("A", 95, 1));
  (void)data_.Add(Named("B", 1, 1, "C"));
  (void)data_.Begin(Numbered(1, "R", {Named("P", 1, 181), FirstStop}));
  AddLog(data_, {At(95, 1, {}, true), At(1, 1)});
  const auto [script, report] = WriteText(FormatId::Script, data_, ScriptSettings());
  EXPECT_EQ(report.skipped, 3);
  EXPECT_EQ(report.broken_texts, 0);
  const std::string part = DrawnPart(script);
  EXPECT_TRUE(part.starts_with(Point("1", "5131", "1/00/00.0,1/00/00.0", "B     ", "[WP]<B><C>"))) << part;
  EXPECT_NE(part.find("RtNo:1 RpNum:1"), std::string::npos);
  EXPECT_NE(part.find("1tps"), std::string::npos);
}

TEST_F(ScriptWriterTest, CommasAndQuotesCutATextAsTheyCutAWptPlusLine) {
  (void)data_.Add(Named("A", 1, 1, "HUT, CLOSED"));
  (void)data_.Add(Named("\"B,1", 1, 1, "SHUT"));
  (void)data_.Add(Named("C,X", 1, 1, "LOST"));
  (void)data_.Begin(Numbered(1, "X,Y"));
  const auto [script, report] = WriteText(FormatId::Script, data_, ScriptSettings());
  EXPECT_EQ(report.broken_texts, 4);
  EXPECT_EQ(report.skipped, 2) << "the ident swallows its position, or stands in its place";
  EXPECT_EQ(DrawnPart(script), Point("1", "5131", "1/00/00.0,1/00/00.0", "A     ", "[WP]<A><HUT>") +
                                   LineStatement("2", "5132", "", "RtNo:1 RpNum:0", "[RT]<X>"));
}

TEST_F(ScriptWriterTest, TextsCannotBreakAStatement) {
  (void)data_.Add(Named("A;B", 34.7, 135, "// $STR$ ; URL=X ><"));
  (void)data_.Begin(Numbered(1, "A;B", {Named("P><Q", 34.7, 135, "C")}));
  const std::string part = Drawn();
  EXPECT_NE(part.find("str=A；B   \r\n"), std::string::npos);
  EXPECT_NE(part.find("info=[WP]<A；B><// $STR$ ； URL=X ><>;\r\n"), std::string::npos);
  EXPECT_NE(part.find("info=[RT]<A；B>;\r\n"), std::string::npos);
  EXPECT_NE(part.find("info=RP:1<P＞＜Q><C>;\r\n"), std::string::npos);
}

TEST_F(ScriptWriterTest, ProgressIsToldBeforeEachRecord) {
  (void)data_.Add(FirstStop);
  (void)data_.Begin(Ridge);
  AddLog(data_, Walk);
  std::string told;
  WriteSettings settings = ScriptSettings();
  settings.progress = [&](DataKind kind, int number, int count) {
    told += std::string(DataKindName(kind)) + std::to_string(number) + "/" + std::to_string(count) + " ";
  };
  (void)Script(settings);
  EXPECT_EQ(told, "Waypoint1/1 Route1/1 TrackLog1/1 ");
}

}  // namespace
}  // namespace walrim

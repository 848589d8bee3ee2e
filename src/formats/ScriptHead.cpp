#include "formats/ScriptHead.h"

#include <array>
#include <string>
#include <string_view>

#include "formats/ScriptLabels.h"
#include "formats/StatementBuilder.h"
#include "formats/WptDates.h"

namespace walrim {
namespace {

using GroupValues = std::array<std::string_view, 14>;
constexpr std::array<GroupValues, 7> Groups{{
    {ScriptGroup::Waypoint, "Waypoint", "0,255,0", "0,0,255", "0,0,255", "0,0,255", "frame#2", "line#0", "hatch#3",
     "mark#13024", "line#0", "16", "1", "1"},
    {ScriptGroup::Route, "Route", "255,0,0", "255,0,0", "0,0,255", "0,0,255", "frame#2", "line#0", "hatch#3", "none",
     "line#0", "32", "2", "2"},
    {ScriptGroup::RoutePoint, "RoutePoint", "255,0,0", "0,0,255", "0,0,255", "0,0,255", "plain", "line#0", "hatch#3",
     "mark#93050", "line#0", "16", "1", "1"},
    {ScriptGroup::RoutePointOrigin, "RoutePointOrigin", "255,0,0", "0,0,255", "0,0,255", "0,0,255", "plain", "line#0",
     "hatch#3", "mark#14010", "line#0", "16", "1", "1"},
    {ScriptGroup::RoutePointDestination, "RoutePointDestination", "255,0,0", "0,0,255", "0,0,255", "0,0,255", "plain",
     "line#0", "hatch#3", "mark#14131", "line#0", "16", "1", "1"},
    {ScriptGroup::TrackLog, "TrackLog", "0,0,255", "0,0,255", "0,0,255", "0,0,255", "frame#2", "line#0", "hatch#3",
     "none", "line#0", "32", "2", "2"},
    {ScriptGroup::TrackPoint, "TrackPoint", "0,0,255", "0,0,255", "0,0,255", "0,0,255", "plain", "line#0", "hatch#3",
     "mark#92000", "line#0", "16", "1", "1"},
}};

/// The two version texts of the script's form. They are not the program's.
constexpr std::string_view ProgramVersion = "1.0.8.0";
constexpr std::string_view TemplateVersion = "1.2";

}  // namespace

void WriteScriptHead(TextOutput& out, const ScriptContents& contents, const ScriptTheme& theme, const CivilTime& now) {
  out.Line().append("//Header:Prog:").append(ProgramVersion).append(" Templ:").append(TemplateVersion);
  out.Line().append(" Date:");
  AppendWptMoment(out.Line(), now, ' ');
  out.Line() += ';';
  out.EndLine();
  out.Line().append("mapserver script ver=1.0;");
  out.EndLine();
  const std::string message = "Walrim Waypoint:" + std::to_string(contents.waypoints) +
                              " Route:" + std::to_string(contents.routes) +
                              " TrackLog:" + std::to_string(contents.logs);
  AppendStatement(out.Line(), StatementKeyword::Message, {message});
  out.EndLine();
  AppendStatement(out.Line(), StatementKeyword::Theme, {ThemeText(theme)});
  out.EndLine();
  for (const GroupValues& group : Groups) {
    AppendStatement(out.Line(), StatementKeyword::Group, group);
    out.EndLine();
  }
}

void WriteScriptEnd(TextOutput& out) {
  AppendStatement(out.Line(), StatementKeyword::Disp, {"all"});
  out.EndLine();
  out.Line().append("mapserver end;");
  out.EndLine();
}

}  // namespace walrim

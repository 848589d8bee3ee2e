#include "formats/ScriptHead.h"

#include <array>
#include <span>

#include "formats/ProAtlas.h"
#include "formats/Statement.h"
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

}  // namespace

void AppendStatementLine(std::string& out, std::string_view keyword, std::initializer_list<std::string_view> values) {
  AppendStatement(out, keyword, std::span(values.begin(), values.size()));
  out.append("\r\n");
}

std::string ScriptHead(const ScriptContents& contents, const ScriptTheme& theme, const CivilTime& now) {
  std::string head;
  std::string date;
  AppendWptMoment(date, now, ' ');
  const std::string message = "Walrim Waypoint:" + std::to_string(contents.waypoints) +
                              " Route:" + std::to_string(contents.routes) +
                              " TrackLog:" + std::to_string(contents.logs);
  AppendStatementLine(head, "hedder", {ScriptProgramVersion, ScriptTemplateVersion, date});
  AppendStatementLine(head, "mapserver", {"1.0"});
  AppendStatementLine(head, "message", {message});
  AppendStatementLine(head, "theme", {ThemeText(theme)});
  for (const GroupValues& group : Groups) {
    AppendStatement(head, "group", group);
    head.append("\r\n");
  }
  return head;
}

void AppendScriptEnd(std::string& out) {
  AppendStatementLine(out, "disp", {"all"});
  AppendStatementLine(out, "mapserver", {"end"});
}

}  // namespace walrim

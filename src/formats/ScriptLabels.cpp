#include "formats/ScriptLabels.h"

#include "formats/WptDates.h"
#include "text/Numbers.h"
#include "text/Scan.h"
#include "text/Utf8.h"

namespace walrim {
namespace {

constexpr std::string_view RouteMark = "[RT]";
constexpr std::string_view RoutePointMark = "RP:";
constexpr std::string_view TrackMark = "[TR]#";
constexpr std::string_view RouteNumberMark = "RtNo:";
constexpr std::string_view RoutePointCountMark = " RpNum:";
constexpr std::string_view TrackPointNumberMark = " TP:";

constexpr std::string_view Opening = "<";
constexpr std::string_view Between = "><";
constexpr std::string_view Closing = ">";
constexpr std::string_view FullWidthBetween = "＞＜";

constexpr std::size_t IdentFieldWidth = 6;

void AppendTexts(std::string& out, std::string_view ident, std::string_view comment) {
  out.append(Opening);
  for (std::size_t at = ident.find(Between); at != std::string_view::npos; at = ident.find(Between)) {
    out.append(ident.substr(0, at)).append(FullWidthBetween);
    ident.remove_prefix(at + Between.size());
  }
  out.append(ident).append(Between).append(comment).append(Closing);
}

std::optional<PointTexts> ParseTexts(std::string_view text) {
  if (text == "<>") return PointTexts{};
  if (!Take(text, Opening) || !text.ends_with(Closing)) return std::nullopt;
  text.remove_suffix(Closing.size());
  const std::size_t at = text.find(Between);
  if (at == std::string_view::npos) return std::nullopt;
  return PointTexts{text.substr(0, at), text.substr(at + Between.size())};
}

}  // namespace

std::string IdentField(std::string_view ident) {
  std::size_t characters = 0;
  for (std::string_view rest = ident; !rest.empty() && characters < IdentFieldWidth; ++characters)
    (void)TakeCharacter(rest);
  return std::string(ident).append(IdentFieldWidth - characters, ' ');
}

std::string WaypointInfo(std::string_view ident, std::string_view comment) {
  std::string info(WaypointMark);
  AppendTexts(info, ident, comment);
  return info;
}

std::optional<PointTexts> ParseWaypointInfo(std::string_view info) {
  return Take(info, WaypointMark) ? ParseTexts(info) : std::nullopt;
}

std::string RoutePointInfo(std::size_t number, std::string_view ident, std::string_view comment) {
  std::string info = std::string(RoutePointMark) + std::to_string(number);
  AppendTexts(info, ident, comment);
  return info;
}

std::optional<PointTexts> ParseRoutePointInfo(std::string_view info) {
  if (!Take(info, RoutePointMark)) return std::nullopt;
  (void)TakeDigits(info);
  return ParseTexts(info);
}

std::string RouteLabel(std::string_view number, std::size_t point_count) {
  std::string label(RouteNumberMark);
  return label.append(number).append(RoutePointCountMark).append(std::to_string(point_count));
}

std::optional<std::string_view> ParseRouteLabel(std::string_view label) {
  if (!Take(label, RouteNumberMark)) return std::nullopt;
  return label.substr(0, label.rfind(RoutePointCountMark));
}

std::string RouteInfo(std::string_view comment) {
  std::string info(RouteMark);
  return info.append(Opening).append(comment).append(Closing);
}

std::string_view ParseRouteInfo(std::string_view info) {
  if (!Take(info, RouteMark) || !Take(info, Opening) || !info.ends_with(Closing)) return {};
  return info.substr(0, info.size() - Closing.size());
}

std::string LogLabel(std::size_t log) {
  return std::string(TrackMark) + std::to_string(log);
}

std::optional<std::string_view> ParseLogLabel(std::string_view label) {
  if (!Take(label, TrackMark)) return std::nullopt;
  return TakeDigits(label);
}

std::string TrackPointInfo(std::size_t log, std::size_t point, std::string_view text) {
  constexpr std::size_t UsualLength = 96;
  std::string info;
  info.reserve(UsualLength);
  info.append(TrackMark).append(std::to_string(log)).append(TrackPointNumberMark).append(std::to_string(point));
  info.append(" ").append(text);
  return info;
}

std::optional<TrackPointMark> ParseTrackPointInfo(std::string_view info) {
  constexpr std::size_t DateLength = 10;
  constexpr std::size_t TimeLength = 8;
  constexpr std::size_t MostDigits = 9;
  TrackPointMark mark;
  if (!Take(info, TrackMark)) return std::nullopt;
  mark.log = TakeDigits(info);
  if (!Take(info, TrackPointNumberMark)) return std::nullopt;
  const std::string_view point = TakeDigits(info);
  if (point.empty() || point.size() > MostDigits || !Take(info, " ")) return std::nullopt;
  mark.point = static_cast<std::size_t>(LeadingNumber(point));
  const std::string_view date = info.substr(0, DateLength);
  const std::string_view time = info.size() > DateLength ? info.substr(DateLength + 1, TimeLength) : std::string_view();
  if (date != NoDate || time != NoTime) mark.moment = ParseWptMoment(date, time);
  return mark;
}

}  // namespace walrim

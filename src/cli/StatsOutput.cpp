#include "cli/StatsOutput.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <numeric>
#include <optional>
#include <vector>

#include "cli/Messages.h"
#include "text/Dates.h"
#include "text/Scan.h"
#include "text/Utf8.h"
#include "walks/Figures.h"

namespace walrim {

namespace {

constexpr double MetresPerKilometre = 1000;
constexpr double KilometresPerHour = 3.6;  ///< of a metre a second
constexpr const char* Unknown = "-";

using Row = std::vector<std::string>;

std::string Rounded(std::optional<double> value, int decimals) {
  if (!value) return Unknown;
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), "%.*f", decimals, *value);
  return text.data();
}

std::optional<double> Times(std::optional<double> value, double factor) {
  if (value) *value *= factor;
  return value;
}

std::string Clock(std::optional<std::int64_t> seconds) {
  if (!seconds) return Unknown;
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), "%lld:%02lld:%02lld", static_cast<long long>(*seconds / 3600),
                static_cast<long long>(*seconds / 60 % 60), static_cast<long long>(*seconds % 60));
  return text.data();
}

/// The first time from one point to another.
template <typename Iterator>
std::optional<GarminSeconds> FirstTimeOf(Iterator begin, Iterator end) {
  const auto timed = std::find_if(begin, end, [](const TrackPoint& point) { return point.time.has_value(); });
  return timed == end ? std::nullopt : timed->time;
}

std::optional<GarminSeconds> FirstTime(const TrackLog& log) {
  return FirstTimeOf(log.points.begin(), log.points.end());
}

std::optional<GarminSeconds> LastTime(const TrackLog& log) {
  return FirstTimeOf(log.points.rbegin(), log.points.rend());
}

std::string Moment(std::optional<GarminSeconds> time, int utc_offset_hours) {
  return time ? DateTimeText(LocalTimeOfGarminTime(time, utc_offset_hours)) : Unknown;
}

std::string Shown(std::string_view name) {
  return WithoutControlCharacters(TrimBlanks(name));
}

/// Columns that a terminal shows of a text: two for a character of the East Asian scripts.
std::size_t WidthOf(std::string_view utf8) {
  std::size_t width = 0;
  while (!utf8.empty()) {
    const char32_t c = TakeCharacter(utf8);
    const bool wide = (c >= 0x1100 && c <= 0x115F) || (c >= 0x2E80 && c <= 0xA4CF) || (c >= 0xAC00 && c <= 0xD7A3) ||
                      (c >= 0xF900 && c <= 0xFAFF) || (c >= 0xFE30 && c <= 0xFE6F) || (c >= 0xFF00 && c <= 0xFF60) ||
                      (c >= 0xFFE0 && c <= 0xFFE6) || (c >= 0x20000 && c <= 0x3FFFD);
    width += wide ? 2 : 1;
  }
  return width;
}

/// Rows of as many cells as the first; some columns are set to the left.
std::string Table(const std::vector<Row>& rows, const std::vector<std::size_t>& left) {
  std::vector<std::size_t> widths(rows.front().size());
  for (const Row& row : rows) {
    for (std::size_t i = 0; i < row.size(); ++i)
      widths[i] = std::max(widths[i], WidthOf(row[i]));
  }
  std::string text;
  for (const Row& row : rows) {
    std::string line;
    for (std::size_t i = 0; i < row.size(); ++i) {
      const std::string padding(widths[i] - WidthOf(row[i]), ' ');
      line += (i > 0 ? "  " : "") + (std::ranges::count(left, i) > 0 ? row[i] + padding : padding + row[i]);
    }
    line.erase(line.find_last_not_of(' ') + 1);
    text += line + "\n";
  }
  return text;
}

Row FigureCells(const Figures& figures) {
  return {std::to_string(figures.points),
          std::to_string(figures.segments),
          Rounded(figures.distance_m / MetresPerKilometre, 2),
          Clock(figures.duration_s),
          Clock(figures.moving_s),
          Rounded(Times(figures.AverageSpeed_m_s(), KilometresPerHour), 1),
          Rounded(Times(figures.MovingSpeed_m_s(), KilometresPerHour), 1),
          Rounded(Times(figures.fastest_m_s, KilometresPerHour), 1),
          Rounded(figures.ascent_m, 0),
          Rounded(figures.descent_m, 0),
          Rounded(figures.lowest_m, 0),
          Rounded(figures.highest_m, 0)};
}

std::vector<Figures> FiguresOfLogs(const DataSet& data) {
  std::vector<Figures> figures;
  for (const TrackLog& log : data.Logs())
    figures.push_back(FiguresOf(log.points));
  return figures;
}

std::string LogTable(const DataSet& data, int utc_offset_hours) {
  const std::vector<Figures> figures = FiguresOfLogs(data);
  std::vector<Row> rows{Row(cli_messages::LogTitles.begin(), cli_messages::LogTitles.end())};
  const auto add = [&](Row begin, const Figures& of) {
    const Row cells = FigureCells(of);
    begin.insert(begin.end(), cells.begin(), cells.end());
    rows.push_back(std::move(begin));
  };
  for (std::size_t i = 0; i < figures.size(); ++i) {
    const TrackLog& log = data.Logs()[i];
    add({std::to_string(static_cast<int>(i) + data.FirstLogNumber()), Shown(log.trk_ident),
         Moment(FirstTime(log), utc_offset_hours), Moment(LastTime(log), utc_offset_hours)},
        figures[i]);
  }
  if (figures.size() > 1) add({"", std::string(cli_messages::Total), "", ""}, TotalOf(figures));
  return Table(rows, {1}) + cli_messages::AscentNote(static_cast<int>(AscentThreshold_m)) + "\n";
}

std::string RouteTable(const DataSet& data) {
  std::vector<Row> rows{Row(cli_messages::RouteTitles.begin(), cli_messages::RouteTitles.end())};
  int number = 0;
  for (const Route& route : data.Routes()) {
    const std::vector<double> legs_m = LegsOf(route);
    std::string legs;
    for (const double leg_m : legs_m)
      legs += (legs.empty() ? "" : " ") + Rounded(leg_m / MetresPerKilometre, 2);
    rows.push_back({std::to_string(++number), Shown(route.cmnt), std::to_string(route.points.size()),
                    Rounded(std::accumulate(legs_m.begin(), legs_m.end(), 0.0) / MetresPerKilometre, 2),
                    legs.empty() ? Unknown : legs});
  }
  return Table(rows, {1, 4});
}

// ---- JSON

QString Text(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

std::string IsoMoment(GarminSeconds time) {
  std::string text = DateTimeText(CivilFromGarminSeconds(time)) + "Z";
  text[4] = text[7] = '-';
  text[10] = 'T';
  return text;
}

QJsonObject FigureObject(const Figures& figures) {
  QJsonObject object{{"points", static_cast<qint64>(figures.points)},
                     {"segments", static_cast<qint64>(figures.segments)},
                     {"distance", figures.distance_m}};
  const auto insert = [&](const char* key, const auto& value) {
    if (value) object.insert(key, static_cast<double>(*value));
  };
  insert("duration", figures.duration_s);
  insert("movingTime", figures.moving_s);
  insert("averageSpeed", figures.AverageSpeed_m_s());
  insert("movingSpeed", figures.MovingSpeed_m_s());
  insert("highestSpeed", figures.fastest_m_s);
  insert("ascent", figures.ascent_m);
  insert("descent", figures.descent_m);
  insert("lowest", figures.lowest_m);
  insert("highest", figures.highest_m);
  return object;
}

QJsonObject LogObject(const TrackLog& log, const Figures& figures, int number) {
  QJsonObject object = FigureObject(figures);
  object.insert("number", number);
  object.insert("name", Text(Shown(log.trk_ident)));
  if (const auto first = FirstTime(log)) object.insert("start", Text(IsoMoment(*first)));
  if (const auto last = LastTime(log)) object.insert("end", Text(IsoMoment(*last)));
  return object;
}

QJsonObject RouteObject(const Route& route, int number) {
  const std::vector<double> legs_m = LegsOf(route);
  QJsonArray legs;
  for (const double leg_m : legs_m)
    legs.append(leg_m);
  return {{"number", number},
          {"name", Text(Shown(route.cmnt))},
          {"points", static_cast<qint64>(route.points.size())},
          {"length", std::accumulate(legs_m.begin(), legs_m.end(), 0.0)},
          {"legs", legs}};
}

}  // namespace

std::string StatsText(const DataSet& data, int utc_offset_hours) {
  std::string text;
  if (!data.Logs().empty()) text += LogTable(data, utc_offset_hours);
  if (!data.Logs().empty() && !data.Routes().empty()) text += "\n";
  if (!data.Routes().empty()) text += RouteTable(data);
  return text;
}

std::string StatsJson(const DataSet& data) {
  const std::vector<Figures> figures = FiguresOfLogs(data);
  QJsonArray logs;
  for (std::size_t i = 0; i < figures.size(); ++i)
    logs.append(LogObject(data.Logs()[i], figures[i], static_cast<int>(i) + data.FirstLogNumber()));
  QJsonArray routes;
  for (const Route& route : data.Routes())
    routes.append(RouteObject(route, static_cast<int>(routes.size()) + 1));
  const QJsonObject object{{"logs", logs},
                           {"total", FigureObject(TotalOf(figures))},
                           {"routes", routes},
                           {"ascentThreshold", AscentThreshold_m}};
  return QJsonDocument(object).toJson(QJsonDocument::Indented).toStdString();
}

}  // namespace walrim

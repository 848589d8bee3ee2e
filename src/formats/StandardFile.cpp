#include "formats/StandardFile.h"

#include <algorithm>

#include "formats/StandardColumns.h"
#include "formats/StandardReader.h"
#include "text/Scan.h"

namespace walrim {
namespace {

bool EndsColumn(char c) {
  return static_cast<unsigned char>(c) <= '\r' && (c == '\t' || c == '\r' || c == '\n' || c == '\0');
}

/// Appends a text; what would end a column or a line becomes a blank.
void AppendText(std::string& out, std::string_view text) {
  const auto begin = static_cast<std::ptrdiff_t>(out.size());
  out.append(text);
  std::replace_if(out.begin() + begin, out.end(), EndsColumn, ' ');
}

template <typename Record>
void AppendColumn(std::string& out, const StandardColumn<Record>& column, const Record& record,
                  const LineContext& context) {
  out.append(column.form == ColumnForm::Bare ? "\t" : "\t=\"");
  if (column.text == nullptr) {
    column.write(out, record, context);
  } else {
    const std::string_view text = column.text(record);
    AppendText(out, column.form == ColumnForm::WrappedTrimmed ? TrimBlanks(text) : text);
  }
  if (column.form != ColumnForm::Bare) out += '"';
}

template <typename Record>
void AppendColumns(std::string& out, std::span<const StandardColumn<Record>> columns, const Record& record,
                   const LineContext& context) {
  for (const StandardColumn<Record>& column : columns)
    AppendColumn(out, column, record, context);
}

/// Writes the lines of a data set.
class StandardWriter {
 public:
  StandardWriter(TextOutput& out, const WriteSettings& settings)
      : out_(out), settings_(settings), lines_(settings.notation, settings.datum, settings.utc_offset_hours) {}

  void Write(const std::vector<Waypoint>& waypoints) {
    WriteTitles(!waypoints.empty(), {StandardLine::Waypoint});
    for (const Waypoint& waypoint : waypoints) {
      Tell(DataKind::Waypoint, waypoints.size());
      WriteLine(waypoint);
    }
  }

  void Write(const std::vector<Route>& routes) {
    WriteTitles(!routes.empty(), {StandardLine::RouteHeader, StandardLine::RoutePoint});
    for (const Route& route : routes) {
      Tell(DataKind::Route, routes.size());
      WriteLine(route);
      for (const RoutePoint& point : route.points)
        WriteLine(point, route.type);
    }
  }

  void Write(const std::vector<TrackLog>& logs) {
    WriteTitles(!logs.empty(), {StandardLine::TrackHeader, StandardLine::TrackPoint});
    for (const TrackLog& log : logs) {
      Tell(DataKind::TrackLog, logs.size());
      WriteLine(log);
      const TrackPoint* before = nullptr;
      for (const TrackPoint& point : log.points) {
        WriteLine(point, before);
        before = &point;
      }
    }
  }

 private:
  void WriteTitles(bool wanted, std::initializer_list<StandardLine> lines) {
    number_ = 0;
    if (!wanted || !settings_.with_header) return;
    for (const StandardLine line : lines) {
      out_.Line().append(StandardHeaderLine(line));
      out_.EndLine();
    }
  }

  void Tell(DataKind kind, std::size_t count) {
    ++number_;
    if (settings_.progress) settings_.progress(kind, number_, static_cast<int>(count));
  }

  template <typename... Parts>
  void WriteLine(const Parts&... parts) {
    lines_.Append(out_.Line(), parts...);
    out_.EndLine();
  }

  TextOutput& out_;
  const WriteSettings& settings_;
  StandardLineWriter lines_;
  int number_ = 0;  ///< of the record of its kind, from 1
};

}  // namespace

std::string StandardHeaderLine(StandardLine line) {
  const StandardSection& section = SectionOf(line);
  std::string text(section.tag);
  if (section.positioned) text.append("\tDegreeType\tDatum");
  for (std::size_t i = 0; i < section.column_count; ++i)
    text.append("\t").append(section.title(i));
  return text;
}

StandardLineWriter::StandardLineWriter(AngleNotation notation, Datum datum, int utc_offset_hours)
    : notation_(notation), datum_(datum), utc_offset_hours_(utc_offset_hours) {}

LineContext StandardLineWriter::Lead(std::string& out, StandardLine line) const {
  out.append(SectionOf(line).tag);
  return {notation_, utc_offset_hours_, {}, nullptr};
}

LineContext StandardLineWriter::Lead(std::string& out, StandardLine line, const GeoPoint& position) const {
  LineContext context = Lead(out, line);
  out.append("\t").append(AngleNotationName(notation_)).append("\t").append(DatumName(datum_));
  // The height is taken as 0: those of the records stay as they are.
  context.position = ConvertDatum(position, Datum::Wgs84, datum_);
  return context;
}

void StandardLineWriter::Append(std::string& out, const Waypoint& waypoint) const {
  const LineContext context = Lead(out, StandardLine::Waypoint, {waypoint.lat_deg, waypoint.lon_deg, 0});
  AppendColumns(out, WaypointColumns(), waypoint, context);
}

void StandardLineWriter::Append(std::string& out, const Route& route) const {
  AppendColumns(out, RouteColumns(), route, Lead(out, StandardLine::RouteHeader));
}

void StandardLineWriter::Append(std::string& out, const RoutePoint& point, RouteHeaderType route) const {
  const Waypoint& waypoint = point.waypoint;
  const LineContext context = Lead(out, StandardLine::RoutePoint, {waypoint.lat_deg, waypoint.lon_deg, 0});
  AppendColumns(out, RouteWaypointColumns(), waypoint, context);
  switch (route) {
    case RouteHeaderType::D201:
      for (const auto& column : LinkColumns())
        out.append(column.form == ColumnForm::Bare ? "\t" : "\t=\"\"");
      return;
    case RouteHeaderType::D202:
      return AppendColumns(out, LinkColumns(), point, context);
  }
}

void StandardLineWriter::Append(std::string& out, const TrackLog& log) const {
  AppendColumns(out, TrackLogColumns(), log, Lead(out, StandardLine::TrackHeader));
}

void StandardLineWriter::Append(std::string& out, const TrackPoint& point, const TrackPoint* before) const {
  LineContext context = Lead(out, StandardLine::TrackPoint, {point.lat_deg, point.lon_deg, 0});
  context.before = before;
  AppendColumns(out, TrackPointColumns(), point, context);
}

ImportResult ReadStandardFile(LineSource& lines, DataSet& data, const ReadSettings& settings) {
  StandardReader reader(data, settings.utc_offset_hours);
  for (std::string_view line; lines.Next(line);)
    reader.ReadLine(line, lines.LineNumber());
  return reader.Result();
}

WriteReport WriteStandardFile(TextOutput& out, const DataSet& data, const WriteSettings& settings) {
  StandardWriter writer(out, settings);
  if (settings.kinds[IndexOf(DataKind::Waypoint)]) writer.Write(data.Waypoints());
  if (settings.kinds[IndexOf(DataKind::Route)]) writer.Write(data.Routes());
  if (settings.kinds[IndexOf(DataKind::TrackLog)]) writer.Write(data.Logs());
  return {};
}

}  // namespace walrim

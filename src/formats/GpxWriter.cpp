#include "formats/GpxWriter.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "formats/GpxColumns.h"
#include "formats/GpxTexts.h"
#include "formats/XmlLines.h"
#include "formats/XmlValues.h"

namespace walrim {
namespace {

constexpr std::string_view Creator = "Walrim " WALRIM_VERSION;

/// The rectangle around positions.
class Bounds {
 public:
  template <typename Position>
  void Add(const Position& position) {
    if (!OnGlobe({position.lat_deg, position.lon_deg, 0})) return;
    // GPX has no 180 degrees east.
    const double lon_deg = position.lon_deg == 180 ? -180 : position.lon_deg;
    if (empty_) *this = Bounds(position.lat_deg, lon_deg);
    south_ = std::min(south_, position.lat_deg);
    north_ = std::max(north_, position.lat_deg);
    west_ = std::min(west_, lon_deg);
    east_ = std::max(east_, lon_deg);
  }

  Bounds() = default;
  [[nodiscard]] bool Empty() const { return empty_; }
  [[nodiscard]] std::string Attributes() const {
    return " minlat=\"" + XmlAngle(south_) + "\" minlon=\"" + XmlAngle(west_) + "\" maxlat=\"" + XmlAngle(north_) +
           "\" maxlon=\"" + XmlAngle(east_) + "\"";
  }

 private:
  Bounds(double lat_deg, double lon_deg)
      : empty_(false), south_(lat_deg), north_(lat_deg), west_(lon_deg), east_(lon_deg) {}

  bool empty_ = true;
  double south_ = 0;
  double north_ = 0;
  double west_ = 0;
  double east_ = 0;
};

class GpxWriter {
 public:
  GpxWriter(TextOutput& out, const DataSet& data, const WriteSettings& settings)
      : xml_(out), data_(data), settings_(settings) {}

  WriteReport Run() {
    const bool nothing = std::ranges::none_of(AllDataKinds, [this](DataKind kind) { return Wanted(kind); });
    if (nothing) return {};
    WriteHead();
    if (Wanted(DataKind::Waypoint)) WriteAll(DataKind::Waypoint, data_.Waypoints());
    if (Wanted(DataKind::Route)) WriteAll(DataKind::Route, data_.Routes());
    if (Wanted(DataKind::TrackLog)) WriteAll(DataKind::TrackLog, data_.Logs());
    xml_.End("gpx");
    return report_;
  }

 private:
  [[nodiscard]] bool Wanted(DataKind kind) const { return settings_.kinds[IndexOf(kind)] && data_.Holds(kind); }

  void WriteHead() {
    std::string attributes = " version=\"1.1\" creator=\"";
    attributes.append(Creator).append("\" xmlns=\"").append(GpxNamespace).append("\" xmlns:gpxx=\"");
    attributes.append(GpxxNamespace).append(GpxxVersion);
    attributes.append("\" xmlns:walrim=\"").append(WalrimNamespace).append("\"");
    xml_.BeginText("gpx", attributes);
    const Bounds bounds = BoundsOfAll();
    if (bounds.Empty()) return;
    xml_.Begin("metadata");
    xml_.Empty("bounds", bounds.Attributes());
    xml_.End("metadata");
  }

  [[nodiscard]] Bounds BoundsOfAll() const {
    Bounds bounds;
    if (Wanted(DataKind::Waypoint)) {
      for (const Waypoint& waypoint : data_.Waypoints())
        bounds.Add(waypoint);
    }
    if (Wanted(DataKind::Route)) {
      for (const Route& route : data_.Routes()) {
        for (const RoutePoint& point : route.points)
          bounds.Add(point.waypoint);
      }
    }
    if (Wanted(DataKind::TrackLog)) {
      for (const TrackLog& log : data_.Logs()) {
        for (const TrackPoint& point : log.points)
          bounds.Add(point);
      }
    }
    return bounds;
  }

  template <typename Record>
  void WriteAll(DataKind kind, const std::vector<Record>& records) {
    int number = 0;
    for (const Record& record : records) {
      ++number;
      if (settings_.progress) settings_.progress(kind, number, static_cast<int>(records.size()));
      Write(record);
    }
  }

  /// Begins a point; false where its position cannot be written.
  template <typename Position>
  bool BeginPoint(std::string_view name, const Position& point) {
    if (!OnGlobe({point.lat_deg, point.lon_deg, 0})) {
      ++report_.off_globe;
      return false;
    }
    std::string& tag = xml_.BeginTag(name).append(" lat=\"");
    AppendXmlAngle(tag, point.lat_deg);
    AppendXmlAngle(tag.append("\" lon=\""), point.lon_deg);
    tag += '"';
    xml_.EndTag();
    return true;
  }

  /// What is read of a waypoint's texts; where it is, and the set of its symbol, are no columns to be compared.
  [[nodiscard]] Waypoint ReadBack(const Waypoint& waypoint) const {
    Waypoint back = WaypointOf(texts_, 0);
    back.lat_deg = waypoint.lat_deg;
    back.lon_deg = waypoint.lon_deg;
    back.symbol_set = waypoint.symbol_set;
    return back;
  }

  void Write(const Waypoint& waypoint) {
    if (!BeginPoint("wpt", waypoint)) return;
    const Waypoint file = AsInFile(waypoint);
    SetTexts(texts_, waypoint, file);
    WriteContents("walrim:waypoint", ColumnAttributes(file, ReadBack(waypoint)));
    xml_.End("wpt");
  }

  void Write(const RoutePoint& point) {
    if (!BeginPoint("rtept", point.waypoint)) return;
    const RoutePoint file{AsInFile(point.waypoint), point.link};
    SetTexts(texts_, point.waypoint, file.waypoint);
    if (point.link->subclass != NoSubclass) texts_.subclass = HexText(point.link->subclass);
    const RoutePoint back{ReadBack(point.waypoint), LinkOf(texts_)};
    WriteContents("walrim:waypoint", ColumnAttributes(file, back));
    xml_.End("rtept");
  }

  void WriteContents(std::string_view own_name, std::string_view attributes) {
    const GpxTexts& texts = texts_;
    xml_.Text("ele", texts.ele);
    xml_.Text("name", texts.name);
    xml_.Text("cmt", texts.cmt);
    xml_.Text("sym", texts.sym);
    const bool extended = HasExtension(texts);
    if (!extended && texts.subclass.empty() && attributes.empty()) return;
    xml_.Begin("extensions");
    if (extended) WriteExtension(texts);
    WriteParted("gpxx:RoutePointExtension", "gpxx:Subclass", texts.subclass);
    if (!attributes.empty()) xml_.Empty(own_name, attributes);
    xml_.End("extensions");
  }

  [[nodiscard]] static bool HasAddress(const GpxTexts& texts) {
    return !(texts.street.empty() && texts.city.empty() && texts.state.empty() && texts.country.empty());
  }
  [[nodiscard]] static bool HasExtension(const GpxTexts& texts) {
    return HasAddress(texts) || !(texts.proximity.empty() && texts.depth.empty() && texts.display_mode.empty());
  }

  void WriteExtension(const GpxTexts& texts) {
    xml_.Begin("gpxx:WaypointExtension");
    xml_.Text("gpxx:Proximity", texts.proximity);
    xml_.Text("gpxx:Depth", texts.depth);
    xml_.Text("gpxx:DisplayMode", texts.display_mode);
    if (HasAddress(texts)) {
      xml_.Begin("gpxx:Address");
      xml_.Text("gpxx:StreetAddress", texts.street);
      xml_.Text("gpxx:City", texts.city);
      xml_.Text("gpxx:State", texts.state);
      xml_.Text("gpxx:Country", texts.country);
      xml_.End("gpxx:Address");
    }
    xml_.End("gpxx:WaypointExtension");
  }

  /// A text in an element of its own kind of extension.
  void WriteParted(std::string_view extension, std::string_view name, std::string_view text) {
    if (text.empty()) return;
    xml_.Begin(extension);
    xml_.Text(name, text);
    xml_.End(extension);
  }

  void WriteExtensions(std::string_view extension, std::string_view name, std::string_view text,
                       std::string_view own_name, std::string_view attributes) {
    if (text.empty() && attributes.empty()) return;
    xml_.Begin("extensions");
    WriteParted(extension, name, text);
    if (!attributes.empty()) xml_.Empty(own_name, attributes);
    xml_.End("extensions");
  }

  void Write(const Route& route) {
    const GpxTexts texts = GpxTextsOf(route);
    Route file = AsInFile(route);
    std::string attributes = ColumnAttributes(file, RouteOf(texts));
    AppendRoutePointCount(attributes, route.points.size());
    xml_.Begin("rte");
    xml_.Text("name", texts.name);
    xml_.Text("number", texts.number);
    WriteExtensions({}, {}, {}, "walrim:route", attributes);
    for (const RoutePoint& point : route.points)
      Write(point);
    xml_.End("rte");
  }

  void Write(const TrackLog& log) {
    const GpxTexts texts = GpxTextsOf(log);
    std::string attributes = ColumnAttributes(AsInFile(log), TrackLogOf(texts));
    AppendTrackPointCount(attributes, log.points.size());
    xml_.Begin("trk");
    xml_.Text("name", texts.name);
    WriteExtensions("gpxx:TrackExtension", "gpxx:DisplayColor", texts.color, "walrim:track", attributes);
    bool in_segment = false;
    for (const TrackPoint& point : log.points) {
      if (point.new_trk || !in_segment) {
        if (in_segment) xml_.End("trkseg");
        xml_.Begin("trkseg");
      }
      Write(point, point.new_trk || !in_segment);
      in_segment = true;
    }
    if (in_segment) xml_.End("trkseg");
    xml_.End("trk");
  }

  void Write(const TrackPoint& point, bool begins_segment) {
    if (!BeginPoint("trkpt", point)) return;
    SetTexts(texts_, point);
    TrackPoint back = AsSaid(point, texts_);
    back.new_trk = begins_segment;
    xml_.Text("ele", texts_.ele);
    xml_.Text("time", texts_.time);
    WriteExtensions("gpxx:TrackPointExtension", "gpxx:Depth", texts_.depth, "walrim:point",
                    ColumnAttributes(point, back));
    xml_.End("trkpt");
  }

  XmlLines xml_;
  const DataSet& data_;
  const WriteSettings& settings_;
  GpxTexts texts_;  ///< of the present point
  WriteReport report_;
};

}  // namespace

WriteReport WriteGpx(TextOutput& out, const DataSet& data, const WriteSettings& settings) {
  return GpxWriter(out, data, settings).Run();
}

}  // namespace walrim

#include "formats/StandardColumns.h"

#include <array>
#include <cmath>
#include <utility>

#include "formats/FieldValues.h"
#include "geo/Distance.h"
#include "records/Symbols.h"
#include "text/Cp932.h"
#include "text/Dates.h"
#include "text/Numbers.h"

namespace walrim {
namespace {

using enum ColumnForm;
using Context = const LineContext&;
using Text = std::string_view;

/// Fewest letters of a state or a country that D108 writes.
constexpr std::size_t StateWidth = 2;

template <typename Value>
void AppendValue(std::string& out, Value value) {
  AppendInteger(out, static_cast<long long>(value));
}

void AppendTruth(std::string& out, bool truth) {
  out.append(truth ? "TRUE" : "FALSE");
}

/// A state or country as wide as D108's field.
void AppendState(std::string& out, const Waypoint& waypoint, Text state) {
  if (HasFixedWidthTexts(waypoint.type)) return;
  out.append(state);
  for (std::size_t width = Cp932Width(state); width < StateWidth; ++width)
    out += ' ';
}

void AppendSymbolName(std::string& out, const Waypoint& waypoint, int code) {
  out.append(NameOf(SymbolNames(waypoint.type), code));
}

void AppendLeg(std::string& out, const TrackPoint& point, const TrackPoint* before) {
  if (before == nullptr) {
    out += '0';
    return;
  }
  const double leg_m = SphericalDistance(before->lat_deg, before->lon_deg, point.lat_deg, point.lon_deg) * 1000;
  const auto tenths = static_cast<long long>(std::round(leg_m * 10));
  AppendInteger(out, tenths / 10);
  out += '.';
  AppendInteger(out, tenths % 10);
}

// ---- Makers of columns that many have

template <typename Record>
using Column = StandardColumn<Record>;

/// A column that is only written.
template <typename Record>
constexpr Column<Record> Written(Text title, ColumnForm form, void (*write)(std::string&, const Record&, Context)) {
  return {title, form, nullptr, write, nullptr};
}

template <typename Record>
constexpr Column<Record> Lat() {
  return Written<Record>("lat", Bare, [](std::string& out, const Record&, Context context) {
    AppendAngle(out, context.position.latitude_deg, context.notation);
  });
}

template <typename Record>
constexpr Column<Record> Lon() {
  return Written<Record>("lon", Bare, [](std::string& out, const Record&, Context context) {
    AppendAngle(out, context.position.longitude_deg, context.notation);
  });
}

/// A byte of a record.
template <auto Member, typename Record>
constexpr Column<Record> Byte(Text title, ColumnForm form = Bare) {
  return {title, form, nullptr,
          [](std::string& out, const Record& record, Context) { AppendValue(out, record.*Member); },
          [](Record& record, Text text) { record.*Member = ByteOf(text); }};
}

/// A height or depth.
template <auto Member, typename Record>
constexpr Column<Record> Metres(Text title) {
  return {title, Bare, nullptr,
          [](std::string& out, const Record& record, Context) { AppendMetres(out, record.*Member); },
          [](Record& record, Text text) { record.*Member = MetresOf(text); }};
}

template <auto Member>
constexpr Column<Waypoint> DetailByte(Text title) {
  return {title, Bare, nullptr,
          [](std::string& out, const Waypoint& waypoint, Context) { AppendValue(out, (*waypoint.details).*Member); },
          [](Waypoint& waypoint, Text text) { waypoint.details.Set(Member, ByteOf(text)); }};
}

template <auto Member>
constexpr Column<Waypoint> State(Text title) {
  return {title, Wrapped, nullptr,
          [](std::string& out, const Waypoint& waypoint, Context) {
            AppendState(out, waypoint, (*waypoint.details).*Member);
          },
          [](Waypoint& waypoint, Text text) { waypoint.details.Set(Member, StateText(text)); }};
}

template <auto Member>
constexpr Column<Waypoint> DetailText(Text title) {
  return {title, WrappedTrimmed, [](const Waypoint& waypoint) -> Text { return (*waypoint.details).*Member; }, nullptr,
          [](Waypoint& waypoint, Text text) { waypoint.details.Set(Member, CapitalText(text)); }};
}

/// D108's other name of a text, which is read where the text itself was empty.
template <auto Member>
constexpr Column<Waypoint> OtherName(Text title) {
  return {title, WrappedTrimmed,
          [](const Waypoint& waypoint) -> Text {
            return HasFixedWidthTexts(waypoint.type) ? Text() : Text(waypoint.*Member);
          },
          nullptr,
          [](Waypoint& waypoint, Text text) {
            if ((waypoint.*Member).empty()) waypoint.*Member = CapitalText(text);
          }};
}

template <auto Member, typename Record>
constexpr Column<Record> Capitals(Text title) {
  return {title, Wrapped, [](const Record& record) -> Text { return record.*Member; }, nullptr,
          [](Record& record, Text text) { record.*Member = CapitalText(text); }};
}

/// Gives byte I of the subclass that details hold another value.
template <std::size_t I, typename Details>
void SetSubclassByte(Rare<Details>& details, Text text) {
  Subclass subclass = details->subclass;
  subclass[I] = ByteOf(text);
  details.Set(&Details::subclass, subclass);
}

constexpr std::array<Text, SubclassBytes> SubclassTitles{
    "subclass(1/18)",  "subclass(2/18)",  "subclass(3/18)",  "subclass(4/18)",  "subclass(5/18)",  "subclass(6/18)",
    "subclass(7/18)",  "subclass(8/18)",  "subclass(9/18)",  "subclass(10/18)", "subclass(11/18)", "subclass(12/18)",
    "subclass(13/18)", "subclass(14/18)", "subclass(15/18)", "subclass(16/18)", "subclass(17/18)", "subclass(18/18)"};

template <std::size_t I>
constexpr Column<Waypoint> SubclassByte() {
  return {SubclassTitles[I], Bare, nullptr,
          [](std::string& out, const Waypoint& waypoint, Context) { AppendValue(out, waypoint.details->subclass[I]); },
          [](Waypoint& waypoint, Text text) { SetSubclassByte<I>(waypoint.details, text); }};
}

template <std::size_t I>
constexpr Column<RoutePoint> LinkSubclassByte() {
  return {SubclassTitles[I], Bare, nullptr,
          [](std::string& out, const RoutePoint& point, Context) { AppendValue(out, point.link->subclass[I]); },
          [](RoutePoint& point, Text text) {
            if (!text.empty()) SetSubclassByte<I>(point.link, text);
          }};
}

// ---- The tables

constexpr auto WaypointTable = []<std::size_t... I>(std::index_sequence<I...>) {
  using W = Waypoint;
  using D = WaypointDetails;
  return std::array{
      Capitals<&W::ident, W>("ident"),
      Lat<W>(),
      Lon<W>(),
      Capitals<&W::cmnt, W>("cmnt"),
      Column<W>{
          "smbl", Wrapped, nullptr,
          [](std::string& out, const W& waypoint, Context) { AppendValue(out, waypoint.smbl.value_or(0)); },
          [](W& waypoint, Text text) { waypoint.smbl = text.empty() ? std::nullopt : std::optional(WordOf(text)); }},
      Column<W>{"smbl(notes)", Bare, nullptr,
                [](std::string& out, const W& waypoint, Context) {
                  AppendSymbolName(out, waypoint, waypoint.smbl.value_or(0));
                },
                [](W& waypoint, Text text) {
                  waypoint.symbol_set = SymbolSetOf(waypoint.smbl.value_or(LargestSmallSymbol + 1), text);
                }},
      Byte<&W::dspl, W>("dspl", Wrapped),
      Written<W>("dspl(notes)", Bare,
                 [](std::string& out, const W& waypoint, Context) {
                   out.append(NameOf(DisplayNames(waypoint.type), waypoint.dspl));
                 }),
      Column<W>{"dst", Bare, nullptr,
                [](std::string& out, const W& waypoint, Context) {
                  if (waypoint.dst_m) AppendShortestNumber(out, *waypoint.dst_m);
                },
                [](W& waypoint, Text text) { waypoint.dst_m = SingleOf(text); }},
      Byte<&W::color, W>("color"),
      DetailByte<&D::wpt_class>("wpt_class"),
      DetailByte<&D::attr>("attr"),
      SubclassByte<I>()...,
      Metres<&W::alt_m, W>("alt"),
      Metres<&W::dpth_m, W>("dpth"),
      Column<W>{"dist", Bare, nullptr,
                [](std::string& out, const W& waypoint, Context) { AppendShortestNumber(out, waypoint.dist_m); },
                [](W& waypoint, Text text) { waypoint.dist_m = SingleOf(text); }},
      State<&D::state>("state"),
      State<&D::country>("cc"),
      OtherName<&W::ident>("idents"),
      OtherName<&W::cmnt>("comment"),
      DetailText<&D::facility>("facility"),
      DetailText<&D::city>("city"),
      DetailText<&D::addr>("addr"),
      DetailText<&D::cross_road>("cross_road"),
  };
}
(std::make_index_sequence<SubclassBytes>{});
static_assert(WaypointTable[LatColumn].title == "lat" && WaypointTable[SubclassColumn].title == SubclassTitles[0]);

/// A route point's columns are not trimmed, and its display code is named from the symbols.
constexpr auto RouteWaypointTable = [] {
  auto table = WaypointTable;
  for (auto& column : table) {
    const bool notes = column.title.ends_with("(notes)");
    if (notes || column.form == WrappedTrimmed) column.form = Wrapped;
    if (column.title != "dspl(notes)") continue;
    column.write = [](std::string& out, const Waypoint& waypoint, Context) {
      AppendSymbolName(out, waypoint, waypoint.dspl);
    };
  }
  return table;
}();

constexpr auto LinkTable = []<std::size_t... I>(std::index_sequence<I...>) {
  using P = RoutePoint;
  using L = RouteLink;
  return std::array{
      Column<P>{"class", Bare, nullptr,
                [](std::string& out, const P& point, Context) { AppendValue(out, point.link->link_class); },
                [](P& point, Text text) { point.link.Set(&L::link_class, WordOf(text)); }},
      LinkSubclassByte<I>()...,
      Column<P>{"ident", Wrapped, [](const P& point) -> Text { return point.link->ident; }, nullptr,
                [](P& point, Text text) { point.link.Set(&L::ident, LineText(text)); }},
  };
}
(std::make_index_sequence<SubclassBytes>{});
static_assert(LinkTable[LinkSubclassColumn].title == SubclassTitles[0]);

constexpr std::array RouteTable{
    Byte<&Route::nmbr, Route>("nmbr"),
    Capitals<&Route::cmnt, Route>("cmnt"),
    Written<Route>("rte_wpt_num", Bare,
                   [](std::string& out, const Route& route, Context) { AppendValue(out, route.points.size()); }),
};

constexpr std::array TrackLogTable{
    Written<TrackLog>("trk_pnt_num", Bare,
                      [](std::string& out, const TrackLog& log, Context) { AppendValue(out, log.points.size()); }),
    Column<TrackLog>{"hdr.dspl", Bare, nullptr,
                     [](std::string& out, const TrackLog& log, Context) { AppendTruth(out, log.dspl); },
                     [](TrackLog& log, Text text) { log.dspl = text.empty() || TruthOf(text); }},
    Byte<&TrackLog::color, TrackLog>("hdr.color"),
    Capitals<&TrackLog::trk_ident, TrackLog>("hdr.trk_ident"),
};

// A point's time needs the zone, and is read where that is known.
constexpr std::array TrackPointTable{
    Lat<TrackPoint>(),
    Lon<TrackPoint>(),
    Written<TrackPoint>("time", Bare,
                        [](std::string& out, const TrackPoint& point, Context context) {
                          AppendDateTime(out, LocalTimeOfGarminTime(point.time, context.utc_offset_hours));
                        }),
    Column<TrackPoint>{"new_trk", Bare, nullptr,
                       [](std::string& out, const TrackPoint& point, Context) { AppendTruth(out, point.new_trk); },
                       [](TrackPoint& point, Text text) { point.new_trk = TruthOf(text); }},
    Metres<&TrackPoint::alt_m, TrackPoint>("alt"),
    Metres<&TrackPoint::dpth_m, TrackPoint>("dpth"),
    Written<TrackPoint>(
        "leg_dist(m)", Bare,
        [](std::string& out, const TrackPoint& point, Context context) { AppendLeg(out, point, context.before); }),
};
static_assert(TrackPointTable[TrackLatColumn].title == "lat" && TrackPointTable[TrackTimeColumn].title == "time");

std::string RoutePointTitle(std::size_t column) {
  if (column < RouteWaypointTable.size()) return std::string("(wp)").append(RouteWaypointTable[column].title);
  return std::string("(link)").append(LinkTable.at(column - RouteWaypointTable.size()).title);
}

template <const auto& Table>
std::string TitleIn(std::size_t column) {
  return std::string(Table.at(column).title);
}

constexpr std::array Sections{
    StandardSection{StandardLine::Waypoint, "WPT", true, WaypointTable.size(), TitleIn<WaypointTable>},
    StandardSection{StandardLine::RouteHeader, "RTH", false, RouteTable.size(), TitleIn<RouteTable>},
    StandardSection{StandardLine::RoutePoint, "RTP", true, RouteWaypointTable.size() + LinkTable.size(),
                    RoutePointTitle},
    StandardSection{StandardLine::TrackHeader, "TRH", false, TrackLogTable.size(), TitleIn<TrackLogTable>},
    StandardSection{StandardLine::TrackPoint, "TRP", true, TrackPointTable.size(), TitleIn<TrackPointTable>},
};

}  // namespace

std::span<const StandardColumn<Waypoint>> WaypointColumns() {
  return WaypointTable;
}

std::span<const StandardColumn<Waypoint>> RouteWaypointColumns() {
  return RouteWaypointTable;
}

std::span<const StandardColumn<RoutePoint>> LinkColumns() {
  return LinkTable;
}

std::span<const StandardColumn<Route>> RouteColumns() {
  return RouteTable;
}

std::span<const StandardColumn<TrackLog>> TrackLogColumns() {
  return TrackLogTable;
}

std::span<const StandardColumn<TrackPoint>> TrackPointColumns() {
  return TrackPointTable;
}

const StandardSection& SectionOf(StandardLine line) {
  return Sections[static_cast<std::size_t>(line)];
}

const StandardSection* SectionOfTag(std::string_view tag) {
  for (const StandardSection& section : Sections) {
    if (section.tag == tag) return &section;
  }
  for (const StandardSection& section : Sections) {
    if (SaysWord(tag, section.tag)) return &section;
  }
  return nullptr;
}

}  // namespace walrim

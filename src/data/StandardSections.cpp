#include "data/StandardSections.h"

#include "data/GeneralWalrim.h"

namespace walrim {
namespace {

constexpr ColumnForm Bare = ColumnForm::Bare;
constexpr ColumnForm Wrapped = ColumnForm::Wrapped;
constexpr ColumnForm WrappedTrimmed = ColumnForm::WrappedTrimmed;

constexpr std::array<std::string_view, SubclassBytes> SubclassTitles{
    "subclass(1/18)",  "subclass(2/18)",  "subclass(3/18)",  "subclass(4/18)",  "subclass(5/18)",  "subclass(6/18)",
    "subclass(7/18)",  "subclass(8/18)",  "subclass(9/18)",  "subclass(10/18)", "subclass(11/18)", "subclass(12/18)",
    "subclass(13/18)", "subclass(14/18)", "subclass(15/18)", "subclass(16/18)", "subclass(17/18)", "subclass(18/18)"};

struct WaypointColumn {
  WaypointField field;
  std::string_view title;
  ColumnForm in_waypoint;
  ColumnForm in_route_point;
};
using enum WaypointField;
constexpr std::array WaypointTable{
    WaypointColumn{ident, "ident", Wrapped, Wrapped},
    WaypointColumn{lat, "lat", Bare, Bare},
    WaypointColumn{lon, "lon", Bare, Bare},
    WaypointColumn{cmnt, "cmnt", Wrapped, Wrapped},
    WaypointColumn{smbl, "smbl", Wrapped, Wrapped},
    WaypointColumn{smbl_notes, "smbl(notes)", Bare, Wrapped},
    WaypointColumn{dspl, "dspl", Wrapped, Wrapped},
    WaypointColumn{dspl_notes, "dspl(notes)", Bare, Wrapped},
    WaypointColumn{dst, "dst", Bare, Bare},
    WaypointColumn{color, "color", Bare, Bare},
    WaypointColumn{wpt_class, "wpt_class", Bare, Bare},
    WaypointColumn{attr, "attr", Bare, Bare},
    WaypointColumn{subclass, "", Bare, Bare},
    WaypointColumn{alt, "alt", Bare, Bare},
    WaypointColumn{dpth, "dpth", Bare, Bare},
    WaypointColumn{dist, "dist", Bare, Bare},
    WaypointColumn{state, "state", Wrapped, Wrapped},
    WaypointColumn{cc, "cc", Wrapped, Wrapped},
    WaypointColumn{idents, "idents", WrappedTrimmed, Wrapped},
    WaypointColumn{comment, "comment", WrappedTrimmed, Wrapped},
    WaypointColumn{facility, "facility", WrappedTrimmed, Wrapped},
    WaypointColumn{city, "city", WrappedTrimmed, Wrapped},
    WaypointColumn{addr, "addr", WrappedTrimmed, Wrapped},
    WaypointColumn{cross_road, "cross_road", WrappedTrimmed, Wrapped},
};

template <std::size_t Size>
constexpr void PutSubclass(std::array<Column, Size>& columns, std::size_t first, std::string_view prefix) {
  for (std::size_t i = 0; i < SubclassBytes; ++i)
    columns[first + i] = {prefix, SubclassTitles[i], Bare};
}

template <std::size_t Size>
constexpr void PutWaypoint(std::array<Column, Size>& columns, std::string_view prefix, bool in_route_point) {
  for (const WaypointColumn& row : WaypointTable) {
    columns[static_cast<std::size_t>(row.field)] = {prefix, row.title,
                                                    in_route_point ? row.in_route_point : row.in_waypoint};
  }
  PutSubclass(columns, static_cast<std::size_t>(subclass), prefix);
}

constexpr auto WaypointColumns = [] {
  std::array<Column, WaypointRecord::FieldCount> columns{};
  PutWaypoint(columns, "", false);
  return columns;
}();

constexpr auto RoutePointColumns = [] {
  constexpr std::size_t Link = WaypointRecord::FieldCount;
  std::array<Column, Link + LinkRecord::FieldCount> columns{};
  PutWaypoint(columns, "(wp)", true);
  columns[Link + static_cast<std::size_t>(LinkField::link_class)] = {"(link)", "class", Bare};
  PutSubclass(columns, Link + static_cast<std::size_t>(LinkField::subclass), "(link)");
  columns[Link + static_cast<std::size_t>(LinkField::ident)] = {"(link)", "ident", Wrapped};
  return columns;
}();

constexpr std::array<Column, RouteHeader::FieldCount> RouteHeaderColumns{
    {{"", "nmbr", Bare}, {"", "cmnt", Wrapped}, {"", "rte_wpt_num", Bare}}};

constexpr std::array<Column, TrackHeader::FieldCount> TrackHeaderColumns{
    {{"", "trk_pnt_num", Bare}, {"hdr.", "dspl", Bare}, {"hdr.", "color", Bare}, {"hdr.", "trk_ident", Wrapped}}};

constexpr std::array<Column, TrackPoint::FieldCount> TrackPointColumns{{{"", "lat", Bare},
                                                                        {"", "lon", Bare},
                                                                        {"", "time", Bare},
                                                                        {"", "new_trk", Bare},
                                                                        {"", "alt", Bare},
                                                                        {"", "dpth", Bare},
                                                                        {"", "leg_dist(m)", Bare}}};

}  // namespace

constinit const Section WaypointSection{"WPT", true, WaypointColumns};
constinit const Section RouteHeaderSection{"RTH", false, RouteHeaderColumns};
constinit const Section RoutePointSection{"RTP", true, RoutePointColumns};
constinit const Section TrackHeaderSection{"TRH", false, TrackHeaderColumns};
constinit const Section TrackPointSection{"TRP", true, TrackPointColumns};

const Section* FindSection(std::string_view tag) {
  for (const Section* section :
       {&TrackPointSection, &RoutePointSection, &WaypointSection, &TrackHeaderSection, &RouteHeaderSection}) {
    if (section->tag == tag) return section;
  }
  return nullptr;
}

std::vector<std::string> ColumnTitles(std::string_view tag) {
  const Section* section = FindSection(tag);
  if (section == nullptr) return {};
  std::vector<std::string> titles;
  if (section->positioned) titles = {"DegreeType", "Datum"};
  for (const Column& column : section->columns)
    titles.push_back(column.FullTitle());
  return titles;
}

std::string BuildHeaderLine(std::string_view tag) {
  const Section* section = FindSection(tag);
  if (section == nullptr) return {};
  std::string line(section->tag);
  for (const std::string& title : ColumnTitles(tag))
    line.append(1, '\t').append(title);
  return line;
}

}  // namespace walrim

// Columns of the standard file in a GPX file: attributes of one element, for values that GPX cannot say.
//
// An attribute is called as its column; a subclass is one attribute of hexadecimal digits, and the columns of a route
// point's link have "link_" in front. In a text, "\" is written as "\\" and a character that no XML may hold as
// "\uXXXX".
#pragma once

#include <string>
#include <string_view>

#include "records/DataSet.h"

namespace walrim {

// What is written of a record: ' name="value"' for each column whose value in a standard file would be another one
// after reading. back is the record as it is read back without these attributes, at the same place.
[[nodiscard]] std::string ColumnAttributes(const Waypoint& record, const Waypoint& back);
/// With those of its waypoint.
[[nodiscard]] std::string ColumnAttributes(const RoutePoint& record, const RoutePoint& back);
[[nodiscard]] std::string ColumnAttributes(const Route& record, const Route& back);
[[nodiscard]] std::string ColumnAttributes(const TrackLog& record, const TrackLog& back);
[[nodiscard]] std::string ColumnAttributes(const TrackPoint& record, const TrackPoint& back);

// Gives a record the value of an attribute. One of an unknown name is passed over.
void ReadColumnAttribute(Waypoint& record, std::string_view name, std::string_view value);
void ReadColumnAttribute(RoutePoint& record, std::string_view name, std::string_view value);
void ReadColumnAttribute(Route& record, std::string_view name, std::string_view value);
void ReadColumnAttribute(TrackLog& record, std::string_view name, std::string_view value);
void ReadColumnAttribute(TrackPoint& record, std::string_view name, std::string_view value);

// The columns that say how many points there are, written where reading would make something else of them: of a route
// with more points than receivers take, and of a log without any.
inline constexpr std::string_view RoutePointCountAttribute = "rte_wpt_num";
inline constexpr std::string_view TrackPointCountAttribute = "trk_pnt_num";
void AppendRoutePointCount(std::string& attributes, std::size_t count);
void AppendTrackPointCount(std::string& attributes, std::size_t count);

}  // namespace walrim

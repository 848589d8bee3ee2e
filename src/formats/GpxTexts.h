// What GPX has of a record, as texts: the one place that says what goes where, for the reader and the writer.
//
// A text that the writer makes of a record is read as another value where GPX cannot say it (a blank at the end of a
// name, a colour of a waypoint, a number of a symbol without a name). The writer knows by reading its own texts; such
// a column of the standard file goes into an attribute of an element of the program's own.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "records/Route.h"
#include "records/TrackLog.h"
#include "records/Waypoint.h"

namespace walrim {

inline constexpr std::string_view GpxNamespace = "http://www.topografix.com/GPX/1/1";
/// Garmin's extension, without its version.
inline constexpr std::string_view GpxxNamespace = "http://www.garmin.com/xmlschemas/GpxExtensions/v";
inline constexpr std::string_view GpxxVersion = "3";
inline constexpr std::string_view WalrimNamespace = "urn:walrim:record:1";

/// Contents of elements; empty where there is none. Those of a waypoint unless they say otherwise.
struct GpxTexts {
  std::string ele;   ///< of a track point too
  std::string time;  ///< of a track point
  std::string name;  ///< of a route and a log too
  std::string cmt;
  std::string desc;  ///< is only read
  std::string sym;
  std::string proximity;
  std::string depth;  ///< of a track point too
  std::string display_mode;
  std::string street;
  std::string city;
  std::string state;
  std::string country;
  std::string subclass;  ///< of a route point's link
  std::string number;    ///< of a route
  std::string color;     ///< of a log
};

/// The header alone.
[[nodiscard]] GpxTexts GpxTextsOf(const Route& route);
[[nodiscard]] GpxTexts GpxTextsOf(const TrackLog& log);
/// Those of which there are many, in place of the texts of the one before. file is the record that a standard file
/// holds of a waypoint.
void SetTexts(GpxTexts& texts, const Waypoint& waypoint, const Waypoint& file);
void SetTexts(GpxTexts& texts, const TrackPoint& point);

/// Everything but the position. number, from 1, names a waypoint without a name.
[[nodiscard]] Waypoint WaypointOf(const GpxTexts& texts, int number);
[[nodiscard]] Rare<RouteLink> LinkOf(const GpxTexts& texts);
/// The number is 0 where there is none, or none that a route can have.
[[nodiscard]] Route RouteOf(const GpxTexts& texts);
[[nodiscard]] TrackLog TrackLogOf(const GpxTexts& texts);
/// Everything but the position and whether it begins a segment. A time that is none is unknown.
[[nodiscard]] TrackPoint TrackPointOf(const GpxTexts& texts);
/// The same of a point's own texts, which say a number wholly or not at all.
[[nodiscard]] TrackPoint AsSaid(const TrackPoint& point, const GpxTexts& texts);

/// A number of 0 to 255 alone.
[[nodiscard]] std::optional<int> GpxRouteNumber(std::string_view text);
/// Whether a text is a date and time. One that no receiver can tell is one too.
[[nodiscard]] bool IsGpxTime(std::string_view text);
/// A decimal number alone, within what a double holds.
[[nodiscard]] std::optional<double> GpxNumber(std::string_view text);
/// Two hexadecimal digits a byte.
[[nodiscard]] std::string HexText(const Subclass& subclass);
[[nodiscard]] std::optional<Subclass> SubclassOfHex(std::string_view text);

/// The record that a standard file holds of a record.
[[nodiscard]] Waypoint AsInFile(const Waypoint& waypoint);
[[nodiscard]] Route AsInFile(const Route& route);
[[nodiscard]] TrackLog AsInFile(const TrackLog& log);

}  // namespace walrim

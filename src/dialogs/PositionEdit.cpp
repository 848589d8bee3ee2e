#include "dialogs/PositionEdit.h"

#include <algorithm>
#include <cmath>

#include "dialogs/MapPoint.h"
#include "dialogs/MapPointPair.h"
#include "dialogs/Messages.h"
#include "text/Numbers.h"
#include "text/Scan.h"
#include "text/Utf8.h"

namespace walrim {

using namespace dialog_messages;

namespace {

struct AxisRow {
  std::string_view name;
  std::string_view directions;
  int limit_deg;
};

const AxisRow& RowOf(PositionAxis axis) {
  static constexpr AxisRow latitude{Latitude, "NS", 90};
  static constexpr AxisRow longitude{Longitude, "EW", 180};
  return axis == PositionAxis::Latitude ? latitude : longitude;
}

/// Numbers as the notations are made of.
bool IsNumbers(std::string_view text) {
  const std::size_t slash = text.find('/');
  if (slash == std::string_view::npos) return IsNumber(text);
  return IsNumber(text.substr(0, slash)) && IsNumbers(text.substr(slash + 1));
}

/// An angle that is numbers alone: in the shown notation, or in the one that parts its numbers in that way.
std::optional<double> DegreesOfNumbers(std::string_view text, AngleNotation shown) {
  if (!IsNumbers(text)) return std::nullopt;
  const bool parted = text.find('/') != std::string_view::npos;
  const bool shown_parted = shown == AngleNotation::MPS || shown == AngleNotation::PAO;
  if (parted == shown_parted) return ReadAngle(text, shown);
  return ReadAngle(text, parted ? AngleNotation::MPS : AngleNotation::D);
}

/// Packed notations round degrees down: what is typed south or west would not be what is meant.
bool IsPacked(AngleNotation notation) {
  return notation == AngleNotation::DM || notation == AngleNotation::DMS;
}

PositionEdit Refused(std::string why) {
  return {std::nullopt, std::move(why)};
}

PositionEdit WholePosition(const MapPoint& point) {
  const GeoPoint given{point.lat_deg, point.lon_deg, 0};
  const GeoPoint converted = ConvertDatum(given, point.datum, Datum::Wgs84);
  return OnGlobe(converted) ? PositionEdit{converted, {}} : Refused(std::string(LinkOffGlobe));
}

/// Below what any receiver and any file tells.
constexpr double SameAngle_deg = 1e-9;

/// The point that is shown so. One conversion there and one back come out some centimetres away.
GeoPoint OnWgs84(const GeoPoint& shown, Datum datum) {
  constexpr int Rounds = 4;
  GeoPoint point = ConvertDatum(shown, datum, Datum::Wgs84);
  for (int round = 0; round < Rounds && datum != Datum::Wgs84; ++round) {
    const GeoPoint again = ConvertDatum(point, Datum::Wgs84, datum);
    point.latitude_deg += shown.latitude_deg - again.latitude_deg;
    point.longitude_deg += shown.longitude_deg - again.longitude_deg;
  }
  return point;
}

}  // namespace

PositionEdit EditPosition(const GeoPoint& before, PositionAxis axis, std::string_view text, const PositionForm& form) {
  text = TrimSpace(text);
  if (const auto point = RecognizeMapPoint(text)) return WholePosition(*point);
  if (LeadsOffGlobe(text)) return Refused(std::string(LinkOffGlobe));
  const AxisRow& row = RowOf(axis);
  const std::string shown = WithoutControlCharacters(text);
  const auto angle = AngleOfText(text);
  if (angle && angle->direction != 0 && row.directions.find(angle->direction) == std::string_view::npos) {
    return Refused(OtherAxis(row.name, shown));
  }
  const bool is_marked = angle && !angle->is_number;
  const auto degrees = is_marked ? std::optional(angle->degrees) : DegreesOfNumbers(text, form.notation);
  if (!degrees) return Refused(NoPosition(row.name, shown));
  if (!is_marked && text.starts_with('-') && IsPacked(form.notation)) return Refused(NoNegativeDms(row.name, shown));
  if (!(std::abs(*degrees) <= row.limit_deg)) return Refused(OutOfRange(row.name, shown, row.limit_deg));
  GeoPoint shown_point = ConvertDatum(before, Datum::Wgs84, form.datum);
  const bool is_latitude = axis == PositionAxis::Latitude;
  (is_latitude ? shown_point.latitude_deg : shown_point.longitude_deg) = *degrees;
  GeoPoint point = OnWgs84(shown_point, form.datum);
  double& other = is_latitude ? point.longitude_deg : point.latitude_deg;
  const double other_before = is_latitude ? before.longitude_deg : before.latitude_deg;
  if (std::abs(other - other_before) < SameAngle_deg) other = other_before;
  return OnGlobe(point) ? PositionEdit{point, {}} : Refused(std::string(LinkOffGlobe));
}

}  // namespace walrim

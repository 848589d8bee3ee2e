#include "dialogs/MapPoint.h"

#include "dialogs/GeoLink.h"
#include "dialogs/MapPages.h"
#include "dialogs/MapPointPair.h"
#include "dialogs/MapPointScript.h"
#include "text/Scan.h"
#include "text/Utf8.h"

namespace walrim {

namespace {

/// The point of a text, wherever it lies.
std::optional<MapPoint> PointOf(std::string_view text) {
  if (text.size() > LongestMapPointText || !IsValidUtf8(text)) return std::nullopt;
  text = TrimSpace(text);
  for (const auto read : {PointOfGeoLink, PointOfMapPage, PointOfScript, PointOfPair}) {
    if (auto point = read(text)) return point;
  }
  return std::nullopt;
}

bool IsOnGlobe(const MapPoint& point) {
  return OnGlobe({point.lat_deg, point.lon_deg, 0});
}

}  // namespace

std::optional<MapPoint> RecognizeMapPoint(std::string_view text) {
  const auto point = PointOf(text);
  return point && IsOnGlobe(*point) ? point : std::nullopt;
}

bool LeadsOffGlobe(std::string_view text) {
  const auto point = PointOf(text);
  return point && !IsOnGlobe(*point);
}

}  // namespace walrim

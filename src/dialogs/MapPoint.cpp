#include "dialogs/MapPoint.h"

#include "dialogs/MapPointText.h"
#include "text/Scan.h"
#include "text/Utf8.h"

namespace walrim {

using namespace map_point;

std::optional<MapPoint> RecognizeMapPoint(std::string_view text) {
  if (text.size() > LongestMapPointText || !IsValidUtf8(text)) return std::nullopt;
  text = TrimSpace(text);
  for (const auto read : {PointOfGeoLink, PointOfScript, PointOfPair}) {
    if (auto point = read(text)) return point;
  }
  return std::nullopt;
}

}  // namespace walrim

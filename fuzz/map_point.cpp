// Texts from the clipboard. A point is in range, and comes back from every link that is made of it.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "dialogs/GeoLink.h"
#include "dialogs/MapPages.h"
#include "dialogs/MapPoint.h"
#include "text/Utf8.h"

using namespace walrim;

namespace {

void CheckPoint(const MapPoint& point) {
  if (!(std::abs(point.lat_deg) <= 90 && std::abs(point.lon_deg) <= 180)) std::abort();
  for (const std::string& text : {point.ident, point.cmnt}) {
    if (!IsValidUtf8(text) || WithoutControlCharacters(text) != text) std::abort();
  }
}

void CheckLink(const std::string& link, const MapPoint& point) {
  constexpr double HalfADigit = 0.6e-8;
  const auto again = RecognizeMapPoint(link);
  if (!again || std::abs(again->lat_deg - point.lat_deg) > HalfADigit) std::abort();
  if (std::abs(again->lon_deg - point.lon_deg) > HalfADigit) std::abort();
}

void CheckLinks(const MapPoint& point) {
  const MapPlace place{point.lat_deg, point.lon_deg, 599.0};
  CheckLink(GeoLink(place), point);
  for (const MapPage& page : MapPages()) {
    if (page.write != nullptr) CheckLink(page.write(place), point);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(bytes), size);
  const auto point = RecognizeMapPoint(text);
  if (point && LeadsOffGlobe(text)) std::abort();
  if (!point) return 0;
  CheckPoint(*point);
  CheckLinks(*point);
  return 0;
}

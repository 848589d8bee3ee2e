// Texts from the clipboard. A point is in range, and comes back from a link that is made of it.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "dialogs/MapPoint.h"
#include "text/Numbers.h"
#include "text/Utf8.h"

using namespace walrim;

namespace {

void CheckPoint(const MapPoint& point) {
  if (!(std::abs(point.lat_deg) <= 90 && std::abs(point.lon_deg) <= 180)) std::abort();
  for (const std::string& text : {point.ident, point.cmnt}) {
    if (!IsValidUtf8(text) || WithoutControlCharacters(text) != text) std::abort();
  }
}

void CheckLink(const MapPoint& point) {
  const std::string pair = ShortestNumber(point.lat_deg) + "," + ShortestNumber(point.lon_deg);
  if (pair.find('E') != std::string::npos) return;
  const auto again = RecognizeMapPoint("geo:" + pair);
  if (!again || again->lat_deg != point.lat_deg || again->lon_deg != point.lon_deg) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  const auto point = RecognizeMapPoint(std::string_view(reinterpret_cast<const char*>(bytes), size));
  if (!point) return 0;
  CheckPoint(*point);
  CheckLink(*point);
  return 0;
}

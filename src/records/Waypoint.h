// A waypoint, whatever receiver or file it came from.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "records/Rare.h"

namespace walrim {

/// The waypoint data types.
enum class WaypointType : std::uint8_t { D103, D104, D107, D108 };
/// Whether a type's ident and cmnt stand in fields of fixed width; such a type has no details.
[[nodiscard]] constexpr bool HasFixedWidthTexts(WaypointType type) {
  switch (type) {
    case WaypointType::D103:
    case WaypointType::D104:
    case WaypointType::D107:
      return true;
    case WaypointType::D108:
      return false;
  }
  return false;
}

/// Whose numbers a symbol's is one of. The first 16 mean other pictures in the one set than in the other.
enum class SymbolSet : std::uint8_t {
  Untold,  ///< that of the type; of a record from a file, which is D108 whatever it was before, unknown
  Small,   ///< D103's and D107's 16
  Large    ///< D104's and D108's
};

inline constexpr std::size_t SubclassBytes = 18;
/// What a map says of a point or of a link; receivers use it among themselves.
using Subclass = std::array<std::uint8_t, SubclassBytes>;
/// The pattern that stands for no subclass: six bytes of 0, twelve of 255.
inline constexpr Subclass NoSubclass{0, 0, 0, 0, 0, 0, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255};

/// What only D108 has, and few waypoints use. Texts are UTF-8.
struct WaypointDetails {
  std::uint8_t wpt_class = 0;  ///< 0 a user's waypoint; others come from maps
  std::uint8_t attr = 96;
  Subclass subclass = NoSubclass;
  std::string state;    ///< code of two letters
  std::string country;  ///< code of two letters
  std::string facility;
  std::string city;
  std::string addr;
  std::string cross_road;

  friend bool operator==(const WaypointDetails&, const WaypointDetails&) = default;
};

/// A waypoint as it came: what another type makes of it is that type's codec's business.
/// Texts are UTF-8. Of the types with fields of fixed width (D103, D104, D107) ident and cmnt are as wide as their
/// field (6 and 40 bytes of code page 932), padded with blanks or with the zero characters that the receiver sent.
struct Waypoint {
  WaypointType type = WaypointType::D108;  ///< the type it came as; D108 from a file
  bool missing = false;                    ///< was announced by the receiver and never came
  bool damaged = false;                    ///< came in a damaged frame, or with a position that is none
  bool chosen = true;                      ///< as of Chosen.h; no file and no receiver knows of it
  std::uint8_t dspl = 0;                   ///< display mode
  std::uint8_t color = 255;                ///< 255: the default
  std::optional<std::uint16_t> smbl = 18;  ///< symbol number; nothing where a text was empty
  SymbolSet symbol_set = SymbolSet::Untold;
  std::uint32_t unused = 0;           ///< of D103, D104 and D107; goes back as it came
  float dist_m = 0;                   ///< D108's proximity distance
  std::optional<float> dst_m = 0.0F;  ///< D104's and D107's proximity distance; D103 has none
  std::optional<float> alt_m;         ///< above the sea
  std::optional<float> dpth_m;
  double lat_deg = 0;  ///< on WGS84, north positive
  double lon_deg = 0;  ///< east positive
  std::string ident;
  std::string cmnt;
  Rare<WaypointDetails> details;

  friend bool operator==(const Waypoint&, const Waypoint&) = default;
};

}  // namespace walrim

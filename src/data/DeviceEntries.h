// The device tables' entry types: what one record of each Garmin data type holds in memory.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "data/Records.h"
#include "text/Cp932.h"

namespace walrim {

/// Text of a field that is exactly Width bytes of code page 932 on the wire, padded with blanks.
/// Held in UTF-8; a longer text is cut, never inside a double-byte character.
template <std::size_t Width>
class FixedText {
 public:
  FixedText() = default;
  explicit FixedText(std::string_view utf8) { Set(utf8); }

  void Set(std::string_view utf8) {
    utf8 = CutToCp932Width(utf8, Width);
    while (!utf8.empty() && utf8.back() == ' ')
      utf8.remove_suffix(1);
    text_.assign(utf8);
  }
  /// The text at its full width.
  [[nodiscard]] std::string Padded() const {
    std::string padded = text_;
    const std::size_t taken = Cp932Width(text_);
    if (taken < Width) padded.append(Width - taken, ' ');
    return padded;
  }
  /// The text without the blanks at its end.
  [[nodiscard]] const std::string& Bare() const { return text_; }
  /// Zero characters become blanks, as receivers pad with either.
  void ZerosToBlanks() {
    if (text_.find('\0') == std::string::npos) return;
    std::string cleaned = text_;
    for (char& c : cleaned) {
      if (c == '\0') c = ' ';
    }
    Set(cleaned);
  }

  friend bool operator==(const FixedText&, const FixedText&) = default;

 private:
  std::string text_;
};

/// The four waypoint data types.
enum class WaypointType : std::uint8_t { D103, D104, D107, D108 };
inline constexpr std::size_t WaypointTypeCount = 4;
[[nodiscard]] constexpr std::string_view WaypointTypeName(WaypointType type) {
  constexpr std::array<std::string_view, WaypointTypeCount> names{"D103", "D104", "D107", "D108"};
  return names[static_cast<std::size_t>(type)];
}
/// The type of a name, compared in upper case; nothing for any other name.
[[nodiscard]] std::optional<WaypointType> WaypointTypeOfName(std::string_view name);

/// Altitude and depth that a receiver does not know, in metres.
inline constexpr float UnknownMetres = 1.0e25F;

using Subclass = std::array<std::uint8_t, SubclassBytes>;
/// The pattern that stands for no subclass: six bytes of 0, twelve of 255.
inline constexpr Subclass NoSubclass{0, 0, 0, 0, 0, 0, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255};

// Entries as they are before anything is loaded into them. Positions are degrees on WGS84, distances metres.

struct D103Entry {
  FixedText<6> ident;
  double lat_deg = 0;
  double lon_deg = 0;
  double unused = 0;  ///< unsigned 32-bit
  FixedText<40> cmnt;
  std::uint8_t smbl = 0;
  std::uint8_t dspl = 0;
};

struct D104Entry {
  FixedText<6> ident;
  double lat_deg = 0;
  double lon_deg = 0;
  double unused = 0;
  FixedText<40> cmnt;
  float dst_m = 0;
  std::uint16_t smbl = 18;
  std::uint8_t dspl = 0;
};

struct D107Entry {
  FixedText<6> ident;
  double lat_deg = 0;
  double lon_deg = 0;
  double unused = 0;
  FixedText<40> cmnt;
  std::uint8_t smbl = 0;
  std::uint8_t dspl = 0;
  float dst_m = 0;
  std::uint8_t color = 0;
};

struct D108Entry {
  std::uint8_t wpt_class = 0;
  std::uint8_t color = 255;
  std::uint8_t dspl = 0;
  std::uint8_t attr = 96;
  std::uint16_t smbl = 18;
  Subclass subclass = NoSubclass;
  double lat_deg = 0;
  double lon_deg = 0;
  float alt_m = UnknownMetres;
  float dpth_m = UnknownMetres;
  float dist_m = 0;
  FixedText<2> state;
  FixedText<2> cc;
  std::string ident;
  std::string cmnt;
  std::string facility;
  std::string city;
  std::string addr;
  std::string cross_road;
};

/// Route header with a number and a comment.
struct D201Entry {
  std::uint8_t nmbr = 0;
  FixedText<20> cmnt;
};

/// Route header with a name of any length.
struct D202Entry {
  std::string rte_ident;
};

/// The link from one route point to the next.
struct D210Entry {
  double link_class = 0;  ///< unsigned 16-bit
  Subclass subclass = NoSubclass;
  std::string ident;
};

/// Header of a track log. A log that came without one is shown on the map in the default colour.
struct D310Entry {
  bool dspl = true;
  std::uint8_t color = 255;
  std::string trk_ident;
};

/// A track point of either type: D300 lacks altitude and depth, which then are unknown.
struct TrackPointEntry {
  double lat_deg = 0;
  double lon_deg = 0;
  double time = 0;  ///< GarminTime: unsigned 32-bit seconds since 1989/12/31 00:00:00
  bool new_trk = false;
  float alt_m = UnknownMetres;
  float dpth_m = UnknownMetres;
};

}  // namespace walrim

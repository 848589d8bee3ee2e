// What the map can be drawn on: the program's own coastline, or the tiles of a map server.
#pragma once

#include <QString>
#include <QUrl>
#include <array>
#include <cstdint>
#include <optional>

namespace walrim {

enum class MapBackground : std::uint8_t { None, Gsi, OpenStreetMap, Own };
inline constexpr std::array AllMapBackgrounds{MapBackground::None, MapBackground::Gsi, MapBackground::OpenStreetMap,
                                              MapBackground::Own};

/// As it is remembered; None for another word.
[[nodiscard]] QString MapBackgroundWord(MapBackground background);
[[nodiscard]] MapBackground MapBackgroundOfWord(const QString& word);

/// A tile by the numbers that the servers give it.
struct TileNumber {
  int zoom = 0;
  int x = 0;
  int y = 0;

  friend bool operator==(const TileNumber&, const TileNumber&) = default;
};

/// A server of square tiles of the Mercator plane.
struct TileSource {
  QString address;      ///< with {z}, {x} and {y} in it
  QString attribution;  ///< what has to stand on the map
  int least_zoom = 0;
  int most_zoom = 19;

  [[nodiscard]] QUrl UrlOf(const TileNumber& tile) const;
};

/// The source of a background; own_address is that of Own. Nothing for None, and for an address that is none.
[[nodiscard]] std::optional<TileSource> TileSourceOf(MapBackground background, const QString& own_address);
/// Whether a text is the address of tiles: of the web, with a place for each of the three numbers.
[[nodiscard]] bool IsTileAddress(const QString& text);

}  // namespace walrim

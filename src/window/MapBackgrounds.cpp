#include "window/MapBackgrounds.h"

#include <algorithm>

#include "window/Widgets.h"

namespace walrim {
namespace {

constexpr const char* GsiAddress = "https://cyberjapandata.gsi.go.jp/xyz/std/{z}/{x}/{y}.png";
constexpr const char* OsmAddress = "https://tile.openstreetmap.org/{z}/{x}/{y}.png";

}  // namespace

QString MapBackgroundWord(MapBackground background) {
  switch (background) {
    case MapBackground::None:
      return QStringLiteral("none");
    case MapBackground::Gsi:
      return QStringLiteral("gsi");
    case MapBackground::OpenStreetMap:
      return QStringLiteral("osm");
    case MapBackground::Own:
      return QStringLiteral("own");
  }
  return {};
}

MapBackground MapBackgroundOfWord(const QString& word) {
  const auto* background = std::ranges::find(AllMapBackgrounds, word, MapBackgroundWord);
  return background != AllMapBackgrounds.end() ? *background : MapBackground::None;
}

QUrl TileSource::UrlOf(const TileNumber& tile) const {
  QString text = address;
  text.replace(QStringLiteral("{z}"), QString::number(tile.zoom));
  text.replace(QStringLiteral("{x}"), QString::number(tile.x));
  text.replace(QStringLiteral("{y}"), QString::number(tile.y));
  return QUrl(text);
}

std::optional<TileSource> TileSourceOf(MapBackground background, const QString& own_address) {
  switch (background) {
    case MapBackground::None:
      return std::nullopt;
    case MapBackground::Gsi:
      return TileSource{Translated(GsiAddress), Translated("国土地理院"), 5, 18};
    case MapBackground::OpenStreetMap:
      return TileSource{Translated(OsmAddress), QStringLiteral("© OpenStreetMap contributors")};
    case MapBackground::Own:
      if (!IsTileAddress(own_address)) return std::nullopt;
      return TileSource{own_address, QUrl(TileSource{own_address, {}}.UrlOf({})).host()};
  }
  return std::nullopt;
}

bool IsTileAddress(const QString& text) {
  for (const char* place : {"{z}", "{x}", "{y}"}) {
    if (!text.contains(QLatin1String(place))) return false;
  }
  const QUrl url = TileSource{text, {}}.UrlOf({});
  return url.isValid() && !url.host().isEmpty() && (url.scheme() == "https" || url.scheme() == "http");
}

}  // namespace walrim

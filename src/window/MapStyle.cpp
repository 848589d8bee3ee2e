#include "window/MapStyle.h"

#include <array>

namespace walrim {
namespace {

/// Black, six dark ones, light and dark grey, six bright ones, white.
constexpr std::array<QRgb, 16> RecordColours{0xff000000, 0xff8b1a1a, 0xff1f7a1f, 0xff8a7400, 0xff1a2f8b, 0xff86198b,
                                             0xff007d86, 0xffb4b4b4, 0xff6b6b6b, 0xffe0261b, 0xff25b82b, 0xfff0d000,
                                             0xff2450e6, 0xffe033d6, 0xff00c2d1, 0xffffffff};

QColor Mixed(const QColor& colour, const QColor& ground, qreal share) {
  return QColor::fromRgbF(static_cast<float>(colour.redF() * share + ground.redF() * (1 - share)),
                          static_cast<float>(colour.greenF() * share + ground.greenF() * (1 - share)),
                          static_cast<float>(colour.blueF() * share + ground.blueF() * (1 - share)));
}

MapStyle LightStyle() {
  return {false,      0xffd3e4ee, 0xfff6f3ea, 0xff8fa9b8, 0xffb9cad4,
          0xff20303a, 0xffffffff, 0xff7a3fb0, 0xffcf2f12, 0xffffb000};
}

MapStyle DarkStyle() {
  return {true,       0xff131c23, 0xff27323a, 0xff5d7686, 0xff33444f,
          0xffe8eef2, 0xff0b1115, 0xffc9a0f5, 0xffff8a5c, 0xffffd24a};
}

}  // namespace

QColor MapStyle::LogColor(std::uint8_t color) const {
  return color < RecordColours.size() ? QColor::fromRgb(RecordColours.at(color)) : log;
}

QColor MapStyle::Pale(const QColor& color) const {
  constexpr qreal Share = 0.4;
  return Mixed(color, land, Share);
}

MapStyle MapStyleOf(const QPalette& palette) {
  constexpr int Middle = 128;
  return palette.color(QPalette::Base).lightness() < Middle ? DarkStyle() : LightStyle();
}

}  // namespace walrim

// The colours of maps and profiles, for light and for dark palettes.
#pragma once

#include <QColor>
#include <QPalette>
#include <cstdint>

namespace walrim {

struct MapStyle {
  bool dark = false;
  QColor sea;
  QColor land;
  QColor shore;
  QColor grid;
  QColor ink;    ///< of names, scale and captions
  QColor paper;  ///< behind them, and around lines that would be lost on the ground
  QColor route;
  QColor log;        ///< of the default colour
  QColor highlight;  ///< around what is chosen

  /// A display colour of the records: 0 to 15, or the default one.
  [[nodiscard]] QColor LogColor(std::uint8_t color) const;
  /// Of what is not checked.
  [[nodiscard]] QColor Pale(const QColor& color) const;
};

[[nodiscard]] MapStyle MapStyleOf(const QPalette& palette);

}  // namespace walrim

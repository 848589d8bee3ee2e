// What a map shows under and over the records: land and sea, the graticule, the scale.
#pragma once

#include <QString>
#include <span>
#include <vector>

#include "window/MapCamera.h"
#include "window/MapLine.h"
#include "window/MapStyle.h"

class QPainter;

namespace walrim {

void PaintLand(QPainter& painter, const std::vector<MapLine>& coast, const MapCamera& camera, const MapStyle& style);

/// Meridians and parallels, with what they are at the upper and the left border.
void PaintGrid(QPainter& painter, const MapCamera& camera, const MapStyle& style);
/// Degrees, minutes and seconds, as many as a step of so many seconds needs: "139°30'E".
[[nodiscard]] QString GridText(int seconds, int step_s, bool is_longitude);
/// Seconds of arc between two lines that are not nearer to each other than some pixels.
[[nodiscard]] int GridStep(double pixels_per_second, double least_px);

/// A length on the ground, in the middle of the map.
struct MapScaleBar {
  double metres = 0;  ///< 1, 2 or 5 with zeros
  double pixels = 0;

  [[nodiscard]] QString Text() const;
};
/// The longest one of at most so many pixels.
[[nodiscard]] MapScaleBar ScaleBarOf(const MapCamera& camera, double most_px);
/// In the lower left corner.
void PaintScaleBar(QPainter& painter, const MapCamera& camera, const MapStyle& style);

/// A text with paper behind it.
void PaintCaption(QPainter& painter, const QRectF& rect, const QString& text, const MapStyle& style);
/// How large such a text is.
[[nodiscard]] QSizeF CaptionSize(const QPainter& painter, const QString& text);

}  // namespace walrim

// Which part of the world a map shows, and where on the screen.
#pragma once

#include <QPointF>
#include <QRectF>
#include <QSizeF>

#include "geo/Mercator.h"

namespace walrim {

class MapCamera {
 public:
  /// Japan, before anything else is chosen.
  MapCamera();

  /// In device-independent pixels. What lies in the middle stays there.
  void SetSize(QSizeF size);
  [[nodiscard]] QSizeF Size() const { return size_; }

  /// 0 to FinestZoom (MapLine.h), and not so small that the world would not fill the screen.
  [[nodiscard]] double Zoom() const { return zoom_; }
  [[nodiscard]] MercatorPoint Middle() const { return middle_; }
  [[nodiscard]] double PixelsOfWorld() const;

  [[nodiscard]] QPointF ScreenOf(MercatorPoint point) const;
  /// x may lie beyond the world, where that begins again.
  [[nodiscard]] MercatorPoint PlaneOf(QPointF screen) const;
  /// What is seen, and so many pixels around.
  [[nodiscard]] MercatorBox Seen(double margin_px = 0) const;

  void Show(MercatorPoint middle, double zoom);
  /// What lies under a point of the screen stays there.
  void ZoomTo(double zoom, QPointF at);
  /// As if the map were dragged.
  void Move(QPointF pixels);
  /// The finest zoom, but for most_zoom, that shows all of a box with a margin around.
  void Fit(const MercatorBox& box, double most_zoom);

 private:
  [[nodiscard]] double LeastZoom() const;
  void KeepInWorld();

  QSizeF size_{1, 1};
  MercatorPoint middle_;
  double zoom_ = 0;
};

}  // namespace walrim

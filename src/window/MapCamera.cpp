#include "window/MapCamera.h"

#include <algorithm>
#include <cmath>

#include "window/MapLine.h"

namespace walrim {
namespace {

constexpr double FitMargin = 0.1;  ///< of the width and of the height, on either side
constexpr MercatorPoint MiddleOfJapan{0.88, 0.393};
constexpr double ZoomOfJapan = 4.5;

}  // namespace

MapCamera::MapCamera() {
  Show(MiddleOfJapan, ZoomOfJapan);
}

double MapCamera::PixelsOfWorld() const {
  return WorldPixels * std::exp2(zoom_);
}

double MapCamera::LeastZoom() const {
  return std::max(0.0, std::log2(std::max(size_.width(), size_.height()) / WorldPixels));
}

void MapCamera::SetSize(QSizeF size) {
  size_ = size.expandedTo({1, 1});
  KeepInWorld();
}

QPointF MapCamera::ScreenOf(MercatorPoint point) const {
  const double pixels = PixelsOfWorld();
  return {(point.x - middle_.x) * pixels + size_.width() / 2, (point.y - middle_.y) * pixels + size_.height() / 2};
}

MercatorPoint MapCamera::PlaneOf(QPointF screen) const {
  const double pixels = PixelsOfWorld();
  return {middle_.x + (screen.x() - size_.width() / 2) / pixels,
          middle_.y + (screen.y() - size_.height() / 2) / pixels};
}

MercatorBox MapCamera::Seen(double margin_px) const {
  MercatorBox box;
  box.Add(PlaneOf({-margin_px, -margin_px}));
  box.Add(PlaneOf({size_.width() + margin_px, size_.height() + margin_px}));
  return box;
}

void MapCamera::Show(MercatorPoint middle, double zoom) {
  middle_ = middle;
  zoom_ = zoom;
  KeepInWorld();
}

void MapCamera::ZoomTo(double zoom, QPointF at) {
  const MercatorPoint under = PlaneOf(at);
  zoom_ = std::clamp(zoom, LeastZoom(), static_cast<double>(FinestZoom));
  const MercatorPoint now_under = PlaneOf(at);
  middle_.x += under.x - now_under.x;
  middle_.y += under.y - now_under.y;
  KeepInWorld();
}

void MapCamera::Move(QPointF pixels) {
  middle_.x -= pixels.x() / PixelsOfWorld();
  middle_.y -= pixels.y() / PixelsOfWorld();
  KeepInWorld();
}

void MapCamera::Fit(const MercatorBox& box, double most_zoom) {
  if (box.Empty()) return;
  const QSizeF room = size_ * (1 - 2 * FitMargin);
  const double across = std::max((box.east - box.west) / room.width(), (box.south - box.north) / room.height());
  const double zoom = across > 0 ? std::log2(1 / (across * WorldPixels)) : most_zoom;
  Show(box.Middle(), std::min(zoom, most_zoom));
}

void MapCamera::KeepInWorld() {
  zoom_ = std::clamp(zoom_, LeastZoom(), static_cast<double>(FinestZoom));
  const double half = size_.height() / 2 / PixelsOfWorld();
  middle_.x -= std::floor(middle_.x);
  middle_.y = half < 0.5 ? std::clamp(middle_.y, half, 1 - half) : 0.5;
}

}  // namespace walrim

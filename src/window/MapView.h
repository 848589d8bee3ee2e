// A map of the records: drawn, moved and zoomed by hand.
#pragma once

#include <QWidget>
#include <functional>
#include <optional>
#include <vector>

#include "dialogs/GeoLink.h"
#include "window/MapCamera.h"
#include "window/MapRecords.h"
#include "window/MapScene.h"
#include "window/MapStyle.h"

class QToolButton;

namespace walrim {

class MapTiles;

class MapView : public QWidget {
  Q_OBJECT

 public:
  explicit MapView(QWidget* parent = nullptr);
  ~MapView() override;

  /// Shows other records. Until the user has moved the map, it moves so that all are seen.
  void SetScene(MapScene scene);
  [[nodiscard]] const MapScene& Scene() const { return scene_; }
  /// Takes over which records of a data set, the one that is shown, are checked. False where nothing differs.
  [[nodiscard]] bool TakeChecks(const DataSet& data_set);
  /// Highlights what is chosen.
  void SetSelection(MapSelection selection);
  [[nodiscard]] const MapSelection& Selection() const { return selection_; }
  /// Brings a part of the plane into view, moving no more than is needed.
  void Reveal(const MercatorBox& box);
  /// Marks a place, or none.
  void SetPointer(std::optional<MercatorPoint> pointer);
  /// The log or route whose points the mouse finds; nothing for none.
  void SetPointed(std::optional<MapItem> way) { pointed_ = way; }

  /// Tiles under the records; null for the program's own coastline. They must outlive this widget, or be taken back.
  void SetTiles(MapTiles* tiles);

  [[nodiscard]] const MapCamera& Camera() const { return camera_; }
  void ShowAll();
  void ZoomBy(double steps);

  [[nodiscard]] QSize sizeHint() const override { return {480, 360}; }
  [[nodiscard]] QSize minimumSizeHint() const override { return {64, 48}; }

 Q_SIGNALS:
  /// A record, or a point, was pressed.
  void ItemChosen(const MapItem& item);
  /// A place where nothing lies was pressed twice.
  void PlaceChosen(const MapPlace& place);
  /// The mouse is over a point of the pointed way, by its index; -1 when it has left.
  void PointHovered(int point);

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void timerEvent(QTimerEvent* event) override;

 private:
  void LoadLater();
  void AddButtons();
  void PlaceButtons();
  void MovedByUser();
  void Hover(QPointF at);
  void PaintGround(QPainter& painter);
  void PaintZoomFrame(QPainter& painter) const;
  [[nodiscard]] MapStyle Style() const;
  void Fit(const MercatorBox& box, double most_zoom);
  void ZoomToTiles();
  [[nodiscard]] double ZoomStep() const;

  MapCamera camera_;
  MapScene scene_;
  MapSelection selection_;
  MapPictures pictures_;
  std::vector<MapLine> coast_;
  MapTiles* tiles_ = nullptr;
  std::optional<MercatorPoint> pointer_;
  std::optional<MapItem> pointed_;
  bool hovered_ = false;
  bool follows_records_ = true;  ///< until the user moves the map
  bool loading_begun_ = false;
  std::optional<QPointF> pressed_at_;
  QPointF dragged_to_;
  bool dragging_ = false;
  bool framing_ = false;  ///< a part to be zoomed into is drawn
  double wheel_steps_ = 0;
  QWidget* buttons_ = nullptr;
};

}  // namespace walrim

#include "window/MapView.h"

#include <QApplication>
#include <QFontMetrics>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolButton>
#include <QWheelEvent>
#include <cmath>
#include <utility>

#include "window/Coast.h"
#include "window/MapGround.h"
#include "window/MapTiles.h"
#include "window/Widgets.h"

namespace walrim {
namespace {

constexpr double KeyStep_px = 80;
constexpr double FitZoom = 16;      ///< of a single place
constexpr double WheelStep = 0.5;   ///< of zoom, for a notch
constexpr double WheelNotch = 120;  ///< as Qt counts
constexpr int ButtonMargin_px = 6;
/// Nearer than this one point of a way is as good as the next.
constexpr double HoverReach_px = 12;

}  // namespace

MapView::MapView(QWidget* parent) : QWidget(parent) {
  setFocusPolicy(Qt::StrongFocus);
  setMouseTracking(true);
  setAttribute(Qt::WA_OpaquePaintEvent);
  NameControl(*this, "Map");
  setAccessibleName(Translated("地図"));
  setAccessibleDescription(Translated("矢印キーで動かし，＋と－で拡大・縮小，0で全体を表示します"));
}

MapView::~MapView() = default;

// ---- What is shown

void MapView::SetScene(MapScene scene) {
  scene_ = std::move(scene);
  if (follows_records_) Fit(scene_.box, FitZoom);
  update();
}

bool MapView::TakeChecks(const DataSet& data_set) {
  const bool differs = walrim::TakeChecks(scene_, data_set);
  if (differs) update();
  return differs;
}

void MapView::SetSelection(MapSelection selection) {
  selection_ = std::move(selection);
  update();
}

void MapView::Reveal(const MercatorBox& box) {
  constexpr double Margin_px = -12;
  if (box.Empty()) return;
  for (const double worlds : {0.0, -1.0, 1.0}) {
    if (camera_.Seen(Margin_px).Holds(box.Moved(worlds))) return;
  }
  Fit(box, camera_.Zoom());
  update();
}

void MapView::SetPointer(std::optional<MercatorPoint> pointer) {
  if (pointer == pointer_) return;
  pointer_ = pointer;
  update();
}

void MapView::SetTiles(MapTiles* tiles) {
  tiles_ = tiles;
  pictures_ = {};
  wheel_steps_ = 0;
  if (tiles_ != nullptr) {
    ZoomToTiles();
    connect(tiles_, &MapTiles::Changed, this, qOverload<>(&QWidget::update));
  }
  update();
}

void MapView::ShowAll() {
  follows_records_ = true;
  Fit(scene_.box, FitZoom);
  update();
}

void MapView::Fit(const MercatorBox& box, double most_zoom) {
  camera_.Fit(box, most_zoom);
  if (tiles_ != nullptr) ZoomToTiles();
}

/// Tiles are sharp at their own zoom alone.
void MapView::ZoomToTiles() {
  constexpr double Rounding = 1e-6;
  camera_.ZoomTo(std::floor(camera_.Zoom() + Rounding), QRectF({0, 0}, camera_.Size()).center());
}

double MapView::ZoomStep() const {
  return tiles_ != nullptr ? 1 : WheelStep;
}

void MapView::ZoomBy(double steps) {
  camera_.ZoomTo(camera_.Zoom() + steps * ZoomStep(), QRectF({0, 0}, camera_.Size()).center());
  MovedByUser();
}

void MapView::MovedByUser() {
  follows_records_ = false;
  update();
}

MapStyle MapView::Style() const {
  return tiles_ != nullptr ? MapStyleOf(QPalette(Qt::white)) : MapStyleOf(palette());
}

// ---- Painting

/// What is not seen in the first frame comes behind it.
void MapView::LoadLater() {
  if (!std::exchange(loading_begun_, true)) startTimer(0);
}

void MapView::timerEvent(QTimerEvent* event) {
  killTimer(event->timerId());
  coast_ = LoadCoast();
  AddButtons();
  update();
}

void MapView::PaintGround(QPainter& painter) {
  const MapStyle style = Style();
  painter.fillRect(rect(), style.sea);
  if (tiles_ == nullptr || !tiles_->CoverAll(camera_)) {
    painter.setRenderHint(QPainter::Antialiasing);
    PaintLand(painter, coast_, camera_, style);
    painter.setRenderHint(QPainter::Antialiasing, false);
  }
  if (tiles_ != nullptr) tiles_->Paint(painter, camera_);
  if (tiles_ == nullptr) PaintGrid(painter, camera_, style);
}

void MapView::paintEvent(QPaintEvent* /*event*/) {
  LoadLater();
  const MapStyle style = Style();
  QPainter painter(this);
  QFont small = font();
  small.setPointSizeF(small.pointSizeF() * 0.9);
  painter.setFont(small);
  PaintGround(painter);
  PaintRecords(painter, {scene_, selection_, pointer_}, camera_, style, pictures_);
  painter.setRenderHint(QPainter::Antialiasing, false);
  PaintScaleBar(painter, camera_, style);
  if (tiles_ != nullptr) {
    const QSizeF room = CaptionSize(painter, tiles_->Attribution());
    const QPointF corner(width() - room.width(), height() - room.height());
    PaintCaption(painter, QRectF(corner, room), tiles_->Attribution(), style);
  }
  if (framing_) PaintZoomFrame(painter);
  if (hasFocus()) {
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(rect().adjusted(1, 1, -1, -1));
  }
}

void MapView::PaintZoomFrame(QPainter& painter) const {
  QColor inside = palette().color(QPalette::Highlight);
  painter.setPen(QPen(inside, 1.5));
  inside.setAlpha(50);
  painter.setBrush(inside);
  painter.drawRect(QRectF(*pressed_at_, dragged_to_).normalized());
}

void MapView::resizeEvent(QResizeEvent* /*event*/) {
  camera_.SetSize(size());
  if (follows_records_) Fit(scene_.box, FitZoom);
  PlaceButtons();
}

void MapView::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() != QEvent::PaletteChange && event->type() != QEvent::FontChange) return;
  pictures_ = {};
  update();
}

// ---- Buttons on the map

void MapView::AddButtons() {
  buttons_ = new QWidget(this);
  auto* line = new QHBoxLayout(buttons_);
  line->setContentsMargins(0, 0, 0, 0);
  line->setSpacing(2);
  const auto add = [&](const char* name, const char* text, const char* tip, const std::function<void()>& run) {
    auto* button = new QToolButton;
    NameControl(*button, name);
    button->setText(Translated(text));
    button->setToolTip(Translated(tip));
    button->setAccessibleName(button->toolTip());
    button->setFocusPolicy(Qt::TabFocus);
    connect(button, &QToolButton::clicked, this, run);
    line->addWidget(button);
  };
  add("MapZoomIn", "＋", "拡大（＋）", [this] { ZoomBy(2); });
  add("MapZoomOut", "－", "縮小（－）", [this] { ZoomBy(-2); });
  add("MapShowAll", "全体", "すべてのデータが見えるようにします（0）", [this] { ShowAll(); });
  buttons_->setAutoFillBackground(false);
  PlaceButtons();
  buttons_->show();
}

void MapView::PlaceButtons() {
  if (buttons_ == nullptr) return;
  const QSize size = buttons_->sizeHint();
  const int top = QFontMetrics(font()).height() + ButtonMargin_px;
  buttons_->setGeometry(QRect(QPoint(width() - size.width() - ButtonMargin_px, top), size));
  buttons_->setVisible(width() > size.width() + 2 * ButtonMargin_px && height() > 3 * top);
}

// ---- By hand

/// Keys that the map takes are no shortcuts of the window around.
bool MapView::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride) {
    const auto* key = static_cast<QKeyEvent*>(event);
    if (framing_ && key->key() == Qt::Key_Escape) event->accept();
  }
  return QWidget::event(event);
}

void MapView::wheelEvent(QWheelEvent* event) {
  wheel_steps_ += event->angleDelta().y() / WheelNotch;
  const double steps = tiles_ != nullptr ? std::trunc(wheel_steps_) : wheel_steps_;
  wheel_steps_ -= steps;
  if (steps != 0) {
    camera_.ZoomTo(camera_.Zoom() + steps * ZoomStep(), event->position());
    MovedByUser();
  }
  event->accept();
}

void MapView::keyPressEvent(QKeyEvent* event) {
  const auto move = [this](double x, double y) {
    camera_.Move(QPointF(x, y) * KeyStep_px);
    MovedByUser();
  };
  switch (event->key()) {
    case Qt::Key_Plus:
    case Qt::Key_Semicolon:
    case Qt::Key_Equal:
      return ZoomBy(1);
    case Qt::Key_Minus:
      return ZoomBy(-1);
    case Qt::Key_0:
    case Qt::Key_Home:
      return ShowAll();
    case Qt::Key_Left:
      return move(1, 0);
    case Qt::Key_Right:
      return move(-1, 0);
    case Qt::Key_Up:
      return move(0, 1);
    case Qt::Key_Down:
      return move(0, -1);
    default:
      QWidget::keyPressEvent(event);
  }
}

void MapView::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return QWidget::mousePressEvent(event);
  pressed_at_ = dragged_to_ = event->position();
  framing_ = event->modifiers().testFlag(Qt::ShiftModifier);
  dragging_ = false;
}

void MapView::mouseMoveEvent(QMouseEvent* event) {
  if (!pressed_at_) return Hover(event->position());
  const QPointF from = dragging_ ? dragged_to_ : *pressed_at_;
  if (!dragging_ && (event->position() - from).manhattanLength() < QApplication::startDragDistance()) return;
  dragging_ = true;
  dragged_to_ = event->position();
  if (framing_) return update();
  setCursor(Qt::ClosedHandCursor);
  camera_.Move(event->position() - from);
  MovedByUser();
}

void MapView::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || !pressed_at_) return QWidget::mouseReleaseEvent(event);
  const QPointF from = *std::exchange(pressed_at_, std::nullopt);
  unsetCursor();
  const bool framed = std::exchange(framing_, false);
  if (!std::exchange(dragging_, false)) {
    if (const auto item = ItemAt(scene_, camera_, event->position())) Q_EMIT ItemChosen(*item);
    return;
  }
  if (!framed) return;
  MercatorBox box;
  box.Add(camera_.PlaneOf(from));
  box.Add(camera_.PlaneOf(event->position()));
  Fit(box, FitZoom + 2);
  MovedByUser();
}

void MapView::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || ItemAt(scene_, camera_, event->position())) return;
  const MercatorPoint at = camera_.PlaneOf(event->position());
  Q_EMIT PlaceChosen({LatitudeOfMercator(at.y), LongitudeOfMercator(at.x), std::nullopt});
}

void MapView::Hover(QPointF at) {
  int point = -1;
  if (pointed_) {
    const std::vector<MapWay>& ways = scene_.Ways(pointed_->kind);
    if (pointed_->place.record < ways.size()) {
      const auto near = PointNear(ways[pointed_->place.record], camera_, at, HoverReach_px);
      if (near) point = static_cast<int>(*near);
    }
  }
  if (point < 0 && !hovered_) return;
  hovered_ = point >= 0;
  Q_EMIT PointHovered(point);
}

void MapView::leaveEvent(QEvent* /*event*/) {
  if (std::exchange(hovered_, false)) Q_EMIT PointHovered(-1);
}

}  // namespace walrim

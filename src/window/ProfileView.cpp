#include "window/ProfileView.h"

#include <QFontMetricsF>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QToolButton>
#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <numeric>

#include "window/FigureTexts.h"
#include "window/MapStyle.h"
#include "window/Messages.h"
#include "window/Widgets.h"

namespace walrim {
namespace {

constexpr double KilometresPerHour = 3.6;
constexpr double MetresPerKilometre = 1000;
constexpr int Margin_px = 4;
constexpr double LineSpacing = 1.6;
constexpr int KeySteps = 100;  ///< presses from one end to the other

/// The next of 1, 2, 5, 10, ... that is not less.
double RoundStep(double least) {
  const double power = std::pow(10, std::floor(std::log10(least)));
  for (const double factor : {1.0, 2.0, 5.0}) {
    if (factor * power >= least) return factor * power;
  }
  return 10 * power;
}

/// Of seconds: what clocks divide by.
double RoundSeconds(double least) {
  constexpr std::array<double, 14> steps{1, 2, 5, 10, 30, 60, 120, 300, 600, 1800, 3600, 7200, 21600, 86400};
  const auto* step = std::ranges::lower_bound(steps, least);
  return step != steps.end() ? *step : 86400 * RoundStep(least / 86400);
}

/// The multiples of a step from one number to another; no more than can be read.
std::vector<double> StepsBetween(double least, double most, double step) {
  constexpr int MostSteps = 200;
  const double first = std::ceil(least / step) * step;
  const int last = static_cast<int>(std::clamp((most - first) / step, -1.0, double{MostSteps}));
  std::vector<double> steps;
  for (int i = 0; i <= last; ++i)
    steps.push_back(first + i * step);
  return steps;
}

void Widen(std::optional<double>& least, std::optional<double>& most, double value) {
  least = std::min(least.value_or(value), value);
  most = std::max(most.value_or(value), value);
}

}  // namespace

ProfileView::ProfileView(QWidget* parent)
    : QWidget(parent),
      over_distance_(NewAxisButton("ProfileOverDistance", "距離", "距離に沿って見ます", ProfileAxis::Distance)),
      over_time_(NewAxisButton("ProfileOverTime", "時間", "時間に沿って見ます", ProfileAxis::Time)) {
  NameControl(*this, "Profile");
  setAccessibleName(Translated("断面図"));
  setAccessibleDescription(Translated("左右の矢印キーで点を移り，Shiftと一緒に押すと範囲を選びます"));
  setFocusPolicy(Qt::StrongFocus);
  setMouseTracking(true);
  ShowAxis();
}

QToolButton* ProfileView::NewAxisButton(const char* name, const char* text, const char* tip, ProfileAxis axis) {
  auto* button = new QToolButton(this);
  NameControl(*button, name);
  button->setText(Translated(text));
  button->setToolTip(Translated(tip));
  button->setAccessibleName(button->toolTip());
  button->setCheckable(true);
  button->setAutoRaise(true);
  connect(button, &QToolButton::clicked, this, [this, axis] { SetAxis(axis); });
  return button;
}

void ProfileView::SetProfile(std::vector<ProfilePoint> profile) {
  profile_ = std::move(profile);
  timed_ = std::ranges::any_of(profile_, [](const ProfilePoint& point) { return point.time_s > 0.0; });
  cursor_.reset();
  range_.reset();
  pressed_.reset();
  range_text_.clear();
  ShowAxis();
}

void ProfileView::SetCursor(std::optional<std::size_t> point) {
  if (point && *point >= profile_.size()) point.reset();
  if (point == cursor_) return;
  cursor_ = point;
  update();
}

void ProfileView::SetRangeText(const QString& text) {
  range_text_ = text;
  update();
}

void ProfileView::SetAxis(ProfileAxis axis) {
  axis_ = axis;
  ShowAxis();
}

void ProfileView::ShowAxis() {
  over_distance_->setChecked(!OverTime());
  over_time_->setChecked(OverTime());
  over_time_->setEnabled(timed_);
  MeasureScales();
  update();
}

// ---- Scales

QSize ProfileView::minimumSizeHint() const {
  return {64, 3 * fontMetrics().height()};
}

std::optional<double> ProfileView::AlongOf(const ProfilePoint& point) const {
  return OverTime() ? point.time_s : std::optional(point.distance_m);
}

void ProfileView::MeasureScales() {
  std::optional<double> lowest;
  std::optional<double> highest;
  std::optional<double> slowest;
  std::optional<double> fastest;
  length_ = 0;
  for (const ProfilePoint& point : profile_) {
    length_ = std::max(length_, AlongOf(point).value_or(0));
    if (point.alt_m) Widen(lowest, highest, *point.alt_m);
    if (point.speed_m_s) Widen(slowest, fastest, *point.speed_m_s);
  }
  constexpr double LeastClimb_m = 20;
  heights_m_.reset();
  speeds_m_s_.reset();
  if (lowest) {
    const double spare = std::max(0.0, LeastClimb_m - (*highest - *lowest)) / 2;
    heights_m_ = Scale{*lowest - spare, *highest + spare};
  }
  if (fastest && *fastest > 0) speeds_m_s_ = Scale{0, *fastest};
}

/// With less there is the curve alone.
bool ProfileView::HasRoom() const {
  constexpr int Lines = 5;
  return height() >= Lines * fontMetrics().height();
}

QRectF ProfileView::PlotRect() const {
  const QFontMetricsF metrics(font());
  const double left = metrics.horizontalAdvance(QStringLiteral("0000 m")) + 2 * Margin_px;
  const double most = speeds_m_s_ ? speeds_m_s_->most * KilometresPerHour : 0;
  const double right =
      metrics.horizontalAdvance(QString::number(std::floor(most)) + QStringLiteral("0 km/h")) + 2 * Margin_px;
  const double top = HasRoom() ? over_distance_->height() + Margin_px : Margin_px;
  const double bottom = HasRoom() ? metrics.height() + Margin_px : Margin_px;
  return QRectF(rect()).adjusted(left, top, -right, -bottom);
}

double ProfileView::XOf(double along) const {
  const QRectF plot = PlotRect();
  return plot.left() + (length_ > 0 ? along / length_ : 0) * plot.width();
}

std::optional<std::size_t> ProfileView::PointAt(double x) const {
  const QRectF plot = PlotRect();
  if (profile_.empty() || plot.width() <= 0) return std::nullopt;
  const double along = std::clamp((x - plot.left()) / plot.width(), 0.0, 1.0) * length_;
  std::optional<std::size_t> nearest;
  double best = 0;
  for (std::size_t i = 0; i < profile_.size(); ++i) {
    const auto at = AlongOf(profile_[i]);
    if (!at) continue;
    const double away = std::abs(*at - along);
    if (nearest && away >= best) continue;
    best = away;
    nearest = i;
  }
  return nearest;
}

// ---- Painting

/// Of many points in one column of pixels the lowest and the highest are drawn.
template <typename ValueOf>
std::vector<QPolygonF> ProfileView::Curves(const ValueOf& value_of, const Scale& scale) const {
  const QRectF plot = PlotRect();
  const double range = std::max(scale.most - scale.least, 1e-9);
  const double pixels = length_ > 0 ? plot.width() / length_ : 0;
  std::vector<QPolygonF> curves;
  QPolygonF curve;
  const auto end_curve = [&] {
    if (!curve.isEmpty()) curves.push_back(std::exchange(curve, {}));
  };
  for (const ProfilePoint& point : profile_) {
    const std::optional<double> value = value_of(point);
    const std::optional<double> along = AlongOf(point);
    if (point.begins || !value || !along) end_curve();
    if (!value || !along) continue;
    const QPointF at(plot.left() + *along * pixels, plot.bottom() - (*value - scale.least) / range * plot.height());
    const qsizetype last = curve.size() - 1;
    const bool same_column = last >= 2 && at.x() - curve[last - 2].x() < 0.7;
    if (!same_column) {
      curve.append(at);
      continue;
    }
    const double low = std::max({curve[last - 1].y(), curve[last].y(), at.y()});
    const double high = std::min({curve[last - 1].y(), curve[last].y(), at.y()});
    curve[last - 1].setY(low);
    curve[last].setY(high);
  }
  end_curve();
  return curves;
}

void ProfileView::PaintHeightScale(QPainter& painter) const {
  if (!heights_m_) return;
  const QRectF plot = PlotRect();
  const double line = QFontMetricsF(painter.font()).height();
  const double range = heights_m_->most - heights_m_->least;
  const double step = RoundStep(std::max(range * line * LineSpacing / std::max(plot.height(), 1.0), 1.0));
  for (const double height : StepsBetween(heights_m_->least, heights_m_->most, step)) {
    const double y = std::round(plot.bottom() - (height - heights_m_->least) / range * plot.height()) + 0.5;
    painter.setPen(MapStyleOf(palette()).grid);
    painter.drawLine(QPointF(plot.left(), y), QPointF(plot.right(), y));
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(QRectF(0, y - line / 2, plot.left() - Margin_px, line), Qt::AlignRight | Qt::AlignVCenter,
                     HeightText(height));
  }
}

void ProfileView::PaintSpeedScale(QPainter& painter) const {
  if (!speeds_m_s_) return;
  const QRectF plot = PlotRect();
  const double line = QFontMetricsF(painter.font()).height();
  const double most = speeds_m_s_->most * KilometresPerHour;
  const double step = RoundStep(std::max(most * line * LineSpacing / std::max(plot.height(), 1.0), 1.0));
  painter.setPen(MapStyleOf(palette()).route);
  for (const double speed : StepsBetween(0, most, step)) {
    const double y = plot.bottom() - speed / most * plot.height();
    const QString unit = speed + step > most ? QStringLiteral(" km/h") : QString();
    painter.drawText(QRectF(plot.right() + Margin_px, y - line / 2, width() - plot.right(), line),
                     Qt::AlignLeft | Qt::AlignVCenter, QString::number(speed) + unit);
  }
}

void ProfileView::PaintAlongScale(QPainter& painter) const {
  if (length_ <= 0 || !HasRoom()) return;
  const QRectF plot = PlotRect();
  const QFontMetricsF metrics(painter.font());
  const double room = metrics.horizontalAdvance(QStringLiteral("00:00:00  "));
  const double least = length_ * room / std::max(plot.width(), 1.0);
  const double step = OverTime() ? RoundSeconds(least) : RoundStep(least);
  for (const double along : StepsBetween(0, length_, step)) {
    const double x = std::round(XOf(along)) + 0.5;
    painter.setPen(MapStyleOf(palette()).grid);
    painter.drawLine(QPointF(x, plot.top()), QPointF(x, plot.bottom()));
    const QString label = OverTime() ? DurationText(static_cast<std::int64_t>(along))
                                     : QStringLiteral("%1 km").arg(along / MetresPerKilometre);
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(QRectF(x - room / 2, plot.bottom() + 2, room, metrics.height()), Qt::AlignHCenter | Qt::AlignTop,
                     label);
  }
}

void ProfileView::PaintHeights(QPainter& painter) const {
  if (!heights_m_) return;
  const MapStyle style = MapStyleOf(palette());
  const QRectF plot = PlotRect();
  QColor area = style.log;
  constexpr int Alpha = 60;
  area.setAlpha(Alpha);
  for (const QPolygonF& curve : Curves([](const ProfilePoint& point) { return point.alt_m; }, *heights_m_)) {
    QPolygonF ground = curve;
    ground.append(QPointF(curve.back().x(), plot.bottom()));
    ground.append(QPointF(curve.front().x(), plot.bottom()));
    painter.setPen(Qt::NoPen);
    painter.setBrush(area);
    painter.drawPolygon(ground);
    painter.setPen(QPen(style.log, 1.6));
    curve.size() > 1 ? painter.drawPolyline(curve) : painter.drawPoint(curve.front());
  }
}

void ProfileView::PaintSpeeds(QPainter& painter) const {
  if (!speeds_m_s_) return;
  painter.setPen(QPen(MapStyleOf(palette()).route, 1));
  for (const QPolygonF& curve : Curves([](const ProfilePoint& point) { return point.speed_m_s; }, *speeds_m_s_))
    curve.size() > 1 ? painter.drawPolyline(curve) : painter.drawPoint(curve.front());
}

void ProfileView::PaintMarks(QPainter& painter) const {
  const QRectF plot = PlotRect();
  if (range_) {
    QColor inside = palette().color(QPalette::Highlight);
    constexpr int Alpha = 60;
    inside.setAlpha(Alpha);
    const double from = XOf(AlongOf(profile_[range_->first]).value_or(0));
    const double to = XOf(AlongOf(profile_[range_->second]).value_or(length_));
    painter.fillRect(QRectF(QPointF(from, plot.top()), QPointF(to, plot.bottom())), inside);
  }
  if (!cursor_) return;
  const ProfilePoint& point = profile_[*cursor_];
  const auto along = AlongOf(point);
  if (!along) return;
  painter.setPen(QPen(palette().color(QPalette::Text), 1));
  painter.drawLine(QPointF(XOf(*along), plot.top()), QPointF(XOf(*along), plot.bottom()));
  if (!point.alt_m || !heights_m_) return;
  const double range = std::max(heights_m_->most - heights_m_->least, 1e-9);
  painter.setBrush(palette().color(QPalette::Base));
  painter.drawEllipse(QPointF(XOf(*along), plot.bottom() - (*point.alt_m - heights_m_->least) / range * plot.height()),
                      3.5, 3.5);
}

QString ProfileView::Headline() const {
  if (range_ && !range_text_.isEmpty()) return range_text_;
  if (!cursor_) return heights_m_ ? QString() : Translated(window_messages::NoHeights);
  const ProfilePoint& point = profile_[*cursor_];
  QStringList parts{DistanceText(point.distance_m)};
  if (point.time_s) parts.append(DurationText(static_cast<std::int64_t>(*point.time_s)));
  if (point.alt_m) parts.append(HeightText(point.alt_m));
  if (point.speed_m_s) parts.append(SpeedText(point.speed_m_s));
  return parts.join(QStringLiteral("   "));
}

void ProfileView::PaintHeadline(QPainter& painter) const {
  const QRectF head(Margin_px, 0, over_distance_->x() - 2 * Margin_px, over_distance_->height());
  painter.setPen(palette().color(QPalette::Text));
  const QString text = QFontMetricsF(painter.font()).elidedText(Headline(), Qt::ElideRight, head.width());
  painter.drawText(head, Qt::AlignLeft | Qt::AlignVCenter, text);
}

void ProfileView::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.fillRect(rect(), palette().color(QPalette::Base));
  if (HasRoom()) PaintHeadline(painter);
  PaintHeightScale(painter);
  PaintSpeedScale(painter);
  PaintAlongScale(painter);
  painter.setRenderHint(QPainter::Antialiasing);
  PaintHeights(painter);
  PaintSpeeds(painter);
  PaintMarks(painter);
  if (!hasFocus()) return;
  painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
  painter.setBrush(Qt::NoBrush);
  painter.drawRect(rect().adjusted(1, 1, -1, -1));
}

void ProfileView::resizeEvent(QResizeEvent* /*event*/) {
  over_time_->adjustSize();
  over_distance_->adjustSize();
  over_time_->move(width() - over_time_->width() - Margin_px, 2);
  over_distance_->move(over_time_->x() - over_distance_->width(), 2);
  over_distance_->setVisible(HasRoom());
  over_time_->setVisible(HasRoom());
}

void ProfileView::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::FontChange) resizeEvent(nullptr);
}

// ---- By hand

void ProfileView::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  pressed_ = PointAt(event->position().x());
  range_.reset();
  SetRangeText({});
}

void ProfileView::mouseMoveEvent(QMouseEvent* event) {
  const auto point = PointAt(event->position().x());
  SetCursor(point);
  Q_EMIT PointHovered(point ? static_cast<int>(*point) : -1);
  if (!pressed_ || !point || (!range_ && *point == *pressed_)) return;
  range_ = std::minmax(*pressed_, *point);
  Q_EMIT RangeChosen(range_->first, range_->second);
  update();
}

void ProfileView::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  const auto pressed = std::exchange(pressed_, std::nullopt);
  if (pressed && !range_) Q_EMIT PointChosen(*pressed);
}

void ProfileView::leaveEvent(QEvent* /*event*/) {
  Q_EMIT PointHovered(-1);
}

void ProfileView::MoveCursor(int points, bool extend) {
  if (profile_.empty()) return;
  const std::size_t from = cursor_.value_or(0);
  const auto last = static_cast<std::ptrdiff_t>(profile_.size()) - 1;
  const auto to =
      static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(static_cast<std::ptrdiff_t>(from) + points, 0, last));
  SetCursor(to);
  Q_EMIT PointHovered(static_cast<int>(to));
  if (extend) {
    const std::size_t other = !range_ ? from : range_->first == from ? range_->second : range_->first;
    range_ = std::minmax(other, to);
    Q_EMIT RangeChosen(range_->first, range_->second);
  } else {
    range_.reset();
    SetRangeText({});
  }
}

void ProfileView::keyPressEvent(QKeyEvent* event) {
  const bool extend = event->modifiers().testFlag(Qt::ShiftModifier);
  const int step = std::max(static_cast<int>(profile_.size()) / KeySteps, 1);
  const int all = static_cast<int>(profile_.size());
  switch (event->key()) {
    case Qt::Key_Left:
      return MoveCursor(-step, extend);
    case Qt::Key_Right:
      return MoveCursor(step, extend);
    case Qt::Key_Home:
      return MoveCursor(-all, extend);
    case Qt::Key_End:
      return MoveCursor(all, extend);
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (cursor_) Q_EMIT PointChosen(*cursor_);
      return;
    default:
      QWidget::keyPressEvent(event);
  }
}

}  // namespace walrim

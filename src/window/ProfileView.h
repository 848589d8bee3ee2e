// A way's height and speed as curves over its distance or its time.
#pragma once

#include <QWidget>
#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

#include "walks/Profile.h"

class QToolButton;

namespace walrim {

enum class ProfileAxis { Distance, Time };

class ProfileView : public QWidget {
  Q_OBJECT

 public:
  explicit ProfileView(QWidget* parent = nullptr);

  /// Shows a way, without a range. Where no time is known distance is the only axis.
  void SetProfile(std::vector<ProfilePoint> profile);
  /// Marks a point by its index, or none.
  void SetCursor(std::optional<std::size_t> point);
  /// What is told of the chosen range, in place of the cursor's values.
  void SetRangeText(const QString& text);
  void SetAxis(ProfileAxis axis);
  /// What the user wants; what is shown may differ where times are not known.
  [[nodiscard]] ProfileAxis Axis() const { return axis_; }
  /// What stands over the curves.
  [[nodiscard]] QString Headline() const;

  [[nodiscard]] QSize sizeHint() const override { return {400, 170}; }
  [[nodiscard]] QSize minimumSizeHint() const override;

 Q_SIGNALS:
  /// The mouse is over a point; -1 when it has left.
  void PointHovered(int point);
  void PointChosen(std::size_t point);
  /// The points from one to another, both included.
  void RangeChosen(std::size_t first, std::size_t last);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  struct Scale {
    double least = 0;
    double most = 1;
  };

  [[nodiscard]] QToolButton* NewAxisButton(const char* name, const char* text, const char* tip, ProfileAxis axis);
  void ShowAxis();
  [[nodiscard]] bool OverTime() const { return axis_ == ProfileAxis::Time && timed_; }
  [[nodiscard]] std::optional<double> AlongOf(const ProfilePoint& point) const;
  [[nodiscard]] bool HasRoom() const;
  [[nodiscard]] QRectF PlotRect() const;
  [[nodiscard]] double XOf(double along) const;
  [[nodiscard]] std::optional<std::size_t> PointAt(double x) const;
  void MeasureScales();
  void PaintHeadline(QPainter& painter) const;
  void PaintHeightScale(QPainter& painter) const;
  void PaintSpeedScale(QPainter& painter) const;
  void PaintAlongScale(QPainter& painter) const;
  void PaintHeights(QPainter& painter) const;
  void PaintSpeeds(QPainter& painter) const;
  void PaintMarks(QPainter& painter) const;
  template <typename ValueOf>
  [[nodiscard]] std::vector<QPolygonF> Curves(const ValueOf& value_of, const Scale& scale) const;
  void MoveCursor(int points, bool extend);

  std::vector<ProfilePoint> profile_;
  ProfileAxis axis_ = ProfileAxis::Distance;
  bool timed_ = false;
  double length_ = 0;  ///< metres, or seconds
  std::optional<Scale> heights_m_;
  std::optional<Scale> speeds_m_s_;
  std::optional<std::size_t> cursor_;
  std::optional<std::pair<std::size_t, std::size_t>> range_;
  std::optional<std::size_t> pressed_;
  QString range_text_;
  QToolButton* over_distance_;
  QToolButton* over_time_;
};

}  // namespace walrim

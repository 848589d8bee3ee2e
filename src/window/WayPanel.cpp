#include "window/WayPanel.h"

#include <QLabel>
#include <QScrollArea>
#include <algorithm>
#include <array>
#include <numeric>
#include <span>

#include "text/Scan.h"
#include "text/Utf8.h"
#include "window/FigureTexts.h"
#include "window/Messages.h"
#include "window/ProfileView.h"
#include "window/Widgets.h"

namespace walrim {
namespace {

QString Caption(std::string_view text) {
  return Translated(text);
}

QString NameShown(const std::string& name) {
  return QString::fromStdString(WithoutControlCharacters(TrimBlanks(name))).toHtmlEscaped();
}

QString Cell(const QString& text, const char* tag = "td") {
  return QStringLiteral("<%1 align=\"right\">&nbsp;&nbsp;%2</%1>").arg(QLatin1String(tag), text);
}

/// A figure's caption and its texts, one in each column.
QString FigureCells(std::string_view caption, const std::vector<Figures>& columns, QString (*text)(const Figures&)) {
  QString cells = QStringLiteral("<td>&nbsp;&nbsp;%1</td>").arg(Caption(caption));
  for (const Figures& figures : columns)
    cells += Cell(text(figures));
  return cells;
}

/// Two to a line, as the panel is wide rather than high.
QString FigureRows(const std::vector<Figures>& columns) {
  namespace m = window_messages;
  using F = const Figures&;
  const std::array<QString, 12> cells{
      FigureCells(m::FigureDistance, columns, [](F of) { return DistanceText(of.distance_m); }),
      FigureCells(m::FigureAscent, columns, [](F of) { return HeightText(of.ascent_m); }),
      FigureCells(m::FigureDuration, columns, [](F of) { return DurationText(of.duration_s); }),
      FigureCells(m::FigureDescent, columns, [](F of) { return HeightText(of.descent_m); }),
      FigureCells(m::FigureMoving, columns, [](F of) { return DurationText(of.moving_s); }),
      FigureCells(m::FigureLowest, columns, [](F of) { return HeightText(of.lowest_m); }),
      FigureCells(m::FigureAverage, columns, [](F of) { return SpeedText(of.AverageSpeed_m_s()); }),
      FigureCells(m::FigureHighest, columns, [](F of) { return HeightText(of.highest_m); }),
      FigureCells(m::FigureMovingSpeed, columns, [](F of) { return SpeedText(of.MovingSpeed_m_s()); }),
      FigureCells(m::FigurePoints, columns, [](F of) { return QString::number(of.points); }),
      FigureCells(m::FigureFastest, columns, [](F of) { return SpeedText(of.fastest_m_s); }),
      FigureCells(m::FigureSegments, columns, [](F of) { return QString::number(of.segments); })};
  QString rows;
  for (std::size_t i = 0; i < cells.size(); i += 2)
    rows += QStringLiteral("<tr>%1%2</tr>").arg(cells.at(i), cells.at(i + 1));
  return rows;
}

QString RouteText(const Route& route) {
  const std::vector<double> legs_m = LegsOf(route);
  QString text = QStringLiteral("<b>%1</b><table><tr><td>%2</td>%3</tr><tr><td>%4</td>%5</tr>")
                     .arg(NameShown(route.cmnt), Caption(window_messages::FigurePoints),
                          Cell(QString::number(route.points.size())), Caption(window_messages::FigureLength),
                          Cell(DistanceText(std::accumulate(legs_m.begin(), legs_m.end(), 0.0))));
  for (std::size_t i = 0; i < legs_m.size(); ++i) {
    text += QStringLiteral("<tr><td>%1 → %2</td>%3</tr>")
                .arg(NameShown(route.points[i].waypoint.ident), NameShown(route.points[i + 1].waypoint.ident),
                     Cell(DistanceText(legs_m[i])));
  }
  return text + QStringLiteral("</table>");
}

std::vector<std::size_t> AllOf(std::size_t count) {
  std::vector<std::size_t> all(count);
  std::iota(all.begin(), all.end(), std::size_t{0});
  return all;
}

}  // namespace

WayPanel::WayPanel(const DataSet& data_set, QWidget* parent)
    : QTabWidget(parent), data_(data_set), profile_(new ProfileView), figures_text_(new QLabel) {
  NameControl(*this, "WayPanel");
  setAccessibleName(Translated("断面図と概要"));
  setDocumentMode(true);
  addTab(profile_, Translated("断面図"));
  NameControl(*figures_text_, "Figures");
  figures_text_->setTextFormat(Qt::RichText);
  figures_text_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  figures_text_->setAlignment(Qt::AlignTop | Qt::AlignLeft);
  figures_text_->setMargin(figures_text_->fontMetrics().averageCharWidth());
  auto* scroll = new QScrollArea;
  scroll->setWidget(figures_text_);
  scroll->setWidgetResizable(true);
  scroll->setFrameShape(QFrame::NoFrame);
  figures_page_ = scroll;
  addTab(scroll, Translated("概要"));
  connect(this, &QTabWidget::currentChanged, this, [this] { FillFigures(); });
  connect(profile_, &ProfileView::RangeChosen, this, &WayPanel::TellRange);
}

void WayPanel::ShowWay(const std::optional<MapItem>& way) {
  way_ = way;
  if (!way) return profile_->SetProfile({});
  const std::size_t record = way->place.record;
  profile_->SetProfile(way->kind == DataKind::Route ? ProfileOf(data_.Routes()[record])
                                                    : ProfileOf(data_.Logs()[record].points));
}

void WayPanel::TellRange(std::size_t first, std::size_t last) {
  if (!way_ || way_->kind != DataKind::TrackLog || way_->place.record >= data_.Logs().size()) return;
  const std::span<const TrackPoint> points = data_.Logs()[way_->place.record].points;
  if (last >= points.size()) return;
  const Figures figures = FiguresOf(points.subspan(first, last - first + 1));
  profile_->SetRangeText(QString::fromStdString(window_messages::RangeFigures(
      DistanceText(figures.distance_m).toStdString(), DurationText(figures.duration_s).toStdString(),
      HeightText(figures.ascent_m).toStdString(), HeightText(figures.descent_m).toStdString(),
      SpeedText(figures.AverageSpeed_m_s()).toStdString())));
}

// ---- Figures

void WayPanel::ForgetFigures() {
  figures_.assign(data_.Logs().size(), std::nullopt);
  figures_shown_ = false;
}

const Figures& WayPanel::FiguresOfLog(std::size_t log) {
  std::optional<Figures>& figures = figures_[log];
  if (!figures) figures = FiguresOf(data_.Logs()[log].points);
  return *figures;
}

Figures WayPanel::TotalOfLogs(const std::vector<std::size_t>& logs) {
  std::vector<Figures> parts(logs.size());
  std::ranges::transform(logs, parts.begin(), [this](std::size_t log) { return FiguresOfLog(log); });
  return TotalOf(parts);
}

void WayPanel::ShowFigures(const RecordSelection& chosen) {
  if (chosen == chosen_ && figures_shown_) return;
  chosen_ = chosen;
  figures_shown_ = false;
  FillFigures();
}

QString WayPanel::LogTable() {
  const std::vector<std::size_t> chosen = ChosenOf(DataKind::TrackLog);
  std::vector<Figures> columns;
  QString titles = QStringLiteral("<td></td>");
  if (!chosen.empty()) {
    const QString title = chosen.size() == 1 ? NameShown(data_.Logs()[chosen.front()].trk_ident)
                                             : Caption(window_messages::FiguresOfChosen);
    titles += Cell(title, "th");
    columns.push_back(TotalOfLogs(chosen));
  }
  titles += Cell(Caption(window_messages::FiguresOfAll), "th");
  columns.push_back(TotalOfLogs(AllOf(data_.Logs().size())));
  return QStringLiteral("<table><tr>%1%1</tr>%2</table><p>%3</p>")
      .arg(titles, FigureRows(columns),
           QString::fromStdString(window_messages::AscentNote(static_cast<int>(AscentThreshold_m))));
}

/// A transfer may have taken records away of which the tables have not heard.
std::vector<std::size_t> WayPanel::ChosenOf(DataKind kind) const {
  std::vector<std::size_t> records = chosen_.kind == kind ? chosen_.Records() : AllOf(0);
  const std::size_t held = kind == DataKind::Route ? data_.Routes().size() : data_.Logs().size();
  std::erase_if(records, [held](std::size_t record) { return record >= held; });
  return records;
}

/// Large logs take milliseconds, so nothing is computed that nobody looks at.
void WayPanel::FillFigures() {
  if (figures_shown_ || currentWidget() != figures_page_) return;
  figures_shown_ = true;
  figures_.resize(data_.Logs().size());
  std::vector<std::size_t> routes = ChosenOf(DataKind::Route);
  if (routes.empty() && !data_.Logs().empty()) return figures_text_->setText(LogTable());
  if (routes.empty()) routes = AllOf(data_.Routes().size());
  QString text;
  for (const std::size_t route : routes)
    text += RouteText(data_.Routes()[route]);
  figures_text_->setText(text);
}

}  // namespace walrim

#include "window/RowMenu.h"

#include <QAction>
#include <QInputDialog>
#include <QKeySequence>
#include <QMenu>
#include <algorithm>
#include <chrono>
#include <utility>

#include "window/RecordView.h"
#include "window/Widgets.h"

namespace walrim {

namespace {

/// What many receivers take of a saved log.
constexpr int UsualPoints = 250;
/// Hours without a point that part two walks: a night.
constexpr double UsualGap_h = 6;
constexpr double ShortestGap_h = 0.1;
constexpr double LongestGap_h = 9999;

bool AreAny(const RecordSelection& selection) {
  return !selection.places.empty();
}

bool AreRecords(const RecordSelection& selection, DataKind kind) {
  return selection.kind == kind && !selection.of_points && AreAny(selection);
}

bool AreLogs(const RecordSelection& selection) {
  return AreRecords(selection, DataKind::TrackLog);
}

bool AreOfLogs(const RecordSelection& selection) {
  return selection.kind == DataKind::TrackLog && AreAny(selection);
}

/// Points of one route or log alone.
bool ArePointsOfOne(const RecordSelection& selection, DataKind kind) {
  return selection.kind == kind && selection.of_points && selection.Records().size() == 1;
}

std::vector<std::size_t> PointsOf(const RecordSelection& selection) {
  std::vector<std::size_t> points(selection.places.size());
  std::ranges::transform(selection.places, points.begin(), [](const RecordPlace& place) { return *place.point; });
  return points;
}

}  // namespace

RowMenu::RowMenu(QMenu& menu, WalrimMain& main, RecordTables& tables, Run run)
    : QObject(&menu), main_(main), tables_(tables), run_(std::move(run)) {
  AddEdits(menu);
  AddMoves(menu);
  AddLogEdits(menu);
  QList<QAction*> actions;
  for (const Row& row : rows_)
    actions.append(row.action);
  tables_.SetRowActions(actions);
  connect(&tables_, &RecordTables::SelectionMayDiffer, this, [this] { ShowState(command_runs_); });
}

QAction* RowMenu::Add(QMenu& menu, const char* name, const char* text, const QKeySequence& keys, Applies applies,
                      const std::function<void()>& command) {
  QAction* action = menu.addAction(Translated(text), this, command);
  action->setObjectName(name);
  action->setShortcut(keys);
  // In a table alone: elsewhere the same keys edit texts.
  action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
  rows_.push_back({action, std::move(applies)});
  return action;
}

void RowMenu::AddEdits(QMenu& menu) {
  const auto always = [](const RecordSelection&) { return true; };
  Add(menu, "NewWaypoint", "新しいウェイポイント(&N)...", QKeySequence("Ctrl+N"), always, [this] {
    NewWaypoint();
  })->setShortcutContext(Qt::WindowShortcut);
  Add(menu, "EditCell", "セルを編集(&I)", QKeySequence("F2"), AreAny, [this] { EditCell(); });
  Add(menu, "DeleteRows", "選んだ行を削除(&L)", QKeySequence::Delete, AreAny, [this] { Delete(); });
}

void RowMenu::AddMoves(QMenu& menu) {
  const auto not_first = [](const RecordSelection& selection) {
    return ArePointsOfOne(selection, DataKind::Route) && *selection.places.front().point > 0;
  };
  const auto not_last = [this](const RecordSelection& selection) {
    if (!ArePointsOfOne(selection, DataKind::Route)) return false;
    const RecordPlace& last = selection.places.back();
    const std::vector<Route>& routes = main_.State().Data().Routes();
    return last.record < routes.size() && *last.point + 1 < routes[last.record].points.size();
  };
  const auto has_order = [](const RecordSelection& selection) {
    return AreRecords(selection, DataKind::Route) || AreLogs(selection);
  };
  Add(menu, "MoveUp", "前へ移す(&U)", QKeySequence("Alt+Up"), not_first, [this] { MovePoints(true); });
  Add(menu, "MoveDown", "後ろへ移す(&W)", QKeySequence("Alt+Down"), not_last, [this] { MovePoints(false); });
  Add(menu, "ReverseRows", "逆順にする(&B)", {}, has_order, [this] { Reverse(); });
}

void RowMenu::AddLogEdits(QMenu& menu) {
  const auto several = [](const RecordSelection& selection) {
    return AreLogs(selection) && selection.places.size() > 1;
  };
  const auto one_point = [](const RecordSelection& selection) {
    const bool one = ArePointsOfOne(selection, DataKind::TrackLog) && selection.places.size() == 1;
    return one && *selection.places.front().point > 0;
  };
  Add(menu, "JoinLogs", "トラックログをつなぐ(&J)", {}, several, [this] { JoinLogs(); });
  Add(menu, "CutLog", "この点の前でトラックログを分ける(&K)", {}, one_point, [this] { CutLog(); });
  Add(menu, "SplitByDay", "トラックログを日ごとに分ける(&Y)", {}, AreLogs, [this] { SplitByDay(); });
  Add(menu, "SplitByGap", "トラックログを時間の空きで分ける(&G)...", {}, AreLogs, [this] { SplitByGap(); });
  Add(menu, "FindOutliers", "外れ値を選ぶ(&O)", {}, AreOfLogs, [this] { FindOutliers(); });
  Add(menu, "ShortenLogs", "ポイントを間引く(&M)...", {}, AreLogs, [this] { Shorten(); });
}

void RowMenu::ShowState(bool command_runs) {
  command_runs_ = command_runs;
  const RecordSelection selection = command_runs ? RecordSelection{} : tables_.Selection();
  for (const Row& row : rows_)
    row.action->setEnabled(!command_runs && row.applies(selection));
}

void RowMenu::NewWaypoint() {
  run_([this] {
    const RecordView* view = tables_.ActiveView();
    main_.Imports().NewWaypoint(view != nullptr ? view->CurrentPlace() : std::nullopt);
  });
}

void RowMenu::EditCell() {
  if (RecordView* view = tables_.ActiveView()) view->EditCurrentCell();
}

/// The row behind those that go is chosen then, so that the key can be pressed again.
void RowMenu::Delete() {
  const RecordSelection selection = tables_.Selection();
  RecordView* view = tables_.ActiveView();
  const int row = view->FirstSelectedRow();
  run_([&] { main_.Records().Delete(selection.kind, selection.places); });
  view->SelectRowNear(row);
}

void RowMenu::MovePoints(bool to_begin) {
  RecordSelection selection = tables_.Selection();
  Outcome outcome = Outcome::Refused;
  run_([&] { outcome = main_.Records().MovePoints(selection.places.front().record, PointsOf(selection), to_begin); });
  if (outcome != Outcome::Done) return;
  for (RecordPlace& place : selection.places)
    place.point = to_begin ? *place.point - 1 : *place.point + 1;
  tables_.Select(selection);
}

void RowMenu::Reverse() {
  const RecordSelection selection = tables_.Selection();
  run_([&] { main_.Records().Reverse(selection.kind, selection.Records()); });
}

void RowMenu::JoinLogs() {
  const RecordSelection selection = tables_.Selection();
  run_([&] { main_.Records().JoinLogs(selection.Records()); });
}

void RowMenu::CutLog() {
  const RecordPlace place = tables_.Selection().places.front();
  run_([&] { main_.Records().CutLog(place.record, *place.point); });
}

void RowMenu::SplitByDay() {
  const std::vector<std::size_t> logs = tables_.Selection().Records();
  run_([&] { main_.Records().SplitByDay(logs); });
}

void RowMenu::SplitByGap() {
  const std::vector<std::size_t> logs = tables_.Selection().Records();
  run_([&] {
    QInputDialog dialog(tables_.window());
    dialog.setObjectName("SplitDialog");
    dialog.setWindowTitle(Translated("トラックログを時間の空きで分ける"));
    dialog.setLabelText(Translated("次のポイントまでに空いた時間（時間）"));
    dialog.setOkButtonText("OK");
    dialog.setCancelButtonText(Translated("キャンセル"));
    dialog.setInputMode(QInputDialog::DoubleInput);
    dialog.setDoubleDecimals(1);
    dialog.setDoubleRange(ShortestGap_h, LongestGap_h);
    dialog.setDoubleValue(UsualGap_h);
    if (dialog.exec() != QDialog::Accepted) return;
    const std::chrono::duration<double, std::ratio<3600>> gap(dialog.doubleValue());
    main_.Records().SplitByGap(logs, std::chrono::round<std::chrono::seconds>(gap));
  });
}

/// They are chosen in the table of the points, so that they can be looked at, and deleted, there.
void RowMenu::FindOutliers() {
  const std::vector<std::size_t> logs = tables_.Selection().Records();
  std::vector<RecordPlace> places;
  run_([&] { places = main_.Records().FindOutliers(logs); });
  if (!places.empty()) tables_.Select({DataKind::TrackLog, true, places});
}

/// A command from its question on, so that nothing else changes the logs meanwhile.
void RowMenu::Shorten() {
  const std::vector<std::size_t> logs = tables_.Selection().Records();
  run_([&] {
    QInputDialog dialog(tables_.window());
    dialog.setObjectName("ShortenDialog");
    dialog.setWindowTitle(Translated("ポイントを間引く"));
    dialog.setLabelText(
        Translated("トラックログごとに残すポイントの数（曲がりの大きいところと，区間の両端が残ります）"));
    dialog.setOkButtonText("OK");
    dialog.setCancelButtonText(Translated("キャンセル"));
    dialog.setInputMode(QInputDialog::IntInput);
    dialog.setIntRange(2, static_cast<int>(MaxTrackPoints));
    dialog.setIntValue(UsualPoints);
    if (dialog.exec() != QDialog::Accepted) return;
    main_.Records().ShortenLogs(logs, static_cast<std::size_t>(dialog.intValue()));
  });
}

}  // namespace walrim

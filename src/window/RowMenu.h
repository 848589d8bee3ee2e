// The commands for chosen rows, in the menu of the window and in those of the tables.
#pragma once

#include <QObject>
#include <functional>
#include <vector>

#include "app/WalrimMain.h"
#include "window/RecordTables.h"

class QAction;
class QKeySequence;
class QMenu;

namespace walrim {

class RowMenu : public QObject {
 public:
  /// Runs a command with the others out of reach.
  using Run = std::function<void(const std::function<void()>& command)>;

  /// main and tables must outlive the menu, which owns this object.
  RowMenu(QMenu& menu, WalrimMain& main, RecordTables& tables, Run run);

  /// Enables what can be done with the chosen rows.
  void ShowState(bool command_runs);

 private:
  using Applies = std::function<bool(const RecordSelection& selection)>;
  /// A command, and whether it can be done with some rows.
  struct Row {
    QAction* action;
    Applies applies;
  };

  void AddEdits(QMenu& menu);
  void AddMoves(QMenu& menu);
  void AddLogEdits(QMenu& menu);
  QAction* Add(QMenu& menu, const char* name, const char* text, const QKeySequence& keys, Applies applies,
               const std::function<void()>& command);
  void NewWaypoint();
  void EditCell();
  void Delete();
  void MovePoints(bool to_begin);
  void Reverse();
  void JoinLogs();
  void CutLog();
  void SplitByDay();
  void SplitByGap();
  void FindOutliers();
  void Shorten();

  WalrimMain& main_;
  RecordTables& tables_;
  Run run_;
  std::vector<Row> rows_;
  bool command_runs_ = false;
};

}  // namespace walrim

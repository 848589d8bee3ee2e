// What a full store of track points costs on screen: filling the tables, sorting them and painting one screen of them.
// Each time is the best of several rounds, and is given as a ratio to writing the same 30000 points as standard lines,
// measured in turn with it.
//   records_bench [ROUNDS]
#include <QApplication>
#include <QHeaderView>
#include <QPixmap>
#include <QTableView>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <limits>
#include <string>
#include <vector>

#include "data/full_set.h"
#include "formats/StandardFile.h"
#include "window/RecordTables.h"

namespace walrim {
namespace {

struct Measured {
  const char* what;
  std::function<void()> prepare;
  std::function<void()> run;
  double best_ms = std::numeric_limits<double>::infinity();
};

double MillisecondsOf(const std::function<void()>& run) {
  const auto start = std::chrono::steady_clock::now();
  run();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

void MeasureInTurn(std::vector<Measured>& all, int rounds) {
  for (int round = 0; round < rounds; ++round) {
    for (Measured& one : all) {
      if (one.prepare) one.prepare();
      one.best_ms = std::min(one.best_ms, MillisecondsOf(one.run));
    }
  }
}

/// The screen anew at another place of the table every time.
void PaintSomewhere(QTableView& table) {
  static int row = 0;
  row = (row + 7919) % table.model()->rowCount();
  table.scrollTo(table.model()->index(row, 0), QAbstractItemView::PositionAtTop);
  QPixmap screen = table.viewport()->grab();
  if (screen.isNull()) std::abort();
}

int Run(int rounds) {
  const DataSet data = FullDataSet(1);
  WriteSettings only_tracks;
  only_tracks.kinds = {false, false, true};
  RecordTables tables(data);
  tables.resize(1000, 700);
  tables.show();
  tables.Refresh({});
  auto& table = *tables.findChild<QTableView*>("TrackPointTable");
  if (table.model()->rowCount() != static_cast<int>(MaxTrackPoints)) {
    std::fprintf(stderr, "the track points are not all shown\n");
    return 1;
  }
  table.resize(1000, 600);

  const auto sort_by = [&table](int column) {
    return [&table, column] { table.sortByColumn(column, Qt::DescendingOrder); };
  };
  const auto unsort = [&table] { table.sortByColumn(-1, Qt::AscendingOrder); };
  std::string lines;
  std::vector<Measured> all;
  all.push_back({"write the points' lines", [&lines] { lines.clear(); },
                 [&] {
                   TextOutput out([&lines](const std::string& some) { lines += some; });
                   static_cast<void>(WriteStandardFile(out, data, only_tracks));
                   out.Flush();
                 }});
  RecordTables* fresh = nullptr;
  all.push_back({"fill empty tables",
                 [&] {
                   delete fresh;
                   fresh = new RecordTables(data);
                 },
                 [&] { fresh->Refresh({}); }});
  all.push_back({"refresh, nothing new", unsort, [&] { tables.Refresh({}); }});
  all.push_back({"sort by altitude", unsort, sort_by(4)});
  all.push_back({"refresh while sorted", sort_by(4), [&] { tables.Refresh({}); }});
  all.push_back({"sort by leg distance", unsort, sort_by(6)});
  all.push_back({"paint a screen", unsort, [&] { PaintSomewhere(table); }});
  MeasureInTurn(all, rounds);
  delete fresh;

  std::printf("%zu track points, best of %d rounds\n", MaxTrackPoints, rounds);
  for (const Measured& one : all)
    std::printf("%-24s %8.2f ms  %6.3f\n", one.what, one.best_ms, one.best_ms / all.front().best_ms);
  return 0;
}

}  // namespace
}  // namespace walrim

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  const int rounds = argc > 1 ? std::atoi(argv[1]) : 15;
  return walrim::Run(std::max(rounds, 1));
}

// How long the window stands still during a transfer: the longest time between two turns of its event loop while the
// demonstration receiver's data are downloaded next to a full data set. Prints milliseconds.
#include <QApplication>
#include <QElapsedTimer>
#include <QPushButton>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <thread>

#include "qt/QtClock.h"
#include "qt/QtEventLoop.h"
#include "qt/QtInet.h"
#include "receiver/DemoSerialPort.h"
#include "window/MainWindow.h"

namespace {

/// Fills the kind that is not downloaded up to its limit.
void FillTracks(walrim::DataSet& data) {
  if (data.Begin(walrim::TrackLog{}) != walrim::AddResult::Stored) std::abort();
  for (std::size_t i = 0; i < walrim::MaxTrackPoints; ++i) {
    if (data.Add(walrim::TrackPoint{}) != walrim::AddResult::Stored) std::abort();
  }
}

}  // namespace

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  const walrim::QtClock clock;
  walrim::QtEventLoop event_loop;
  walrim::DemoReceiverOptions options;
  options.baud = 0;
  walrim::DemoSerialPort port(options, clock, [](std::chrono::nanoseconds time) { std::this_thread::sleep_for(time); });
  walrim::QtInet inet;
  walrim::MainWindow window({port, clock, event_loop, inet, [] { return std::vector<walrim::NumberedPort>{}; }});
  walrim::ProgramState& state = window.Main().State();
  FillTracks(state.Data());
  state.SetHeldCount(walrim::DataKind::TrackLog, 1);
  state.Settings().port = "demo";
  state.Settings().download_kinds = {true, true, false};
  window.show();
  QApplication::processEvents();

  QElapsedTimer since_turn;
  qint64 longest_ns = 0;
  int turns = 0;
  QTimer turn;
  QObject::connect(&turn, &QTimer::timeout, &turn, [&] {
    longest_ns = std::max(longest_ns, since_turn.nsecsElapsed());
    since_turn.start();
    ++turns;
  });
  since_turn.start();
  turn.start(0);
  window.findChild<QPushButton*>("GpsDownLoad")->click();
  QApplication::processEvents();
  turn.stop();
  if (state.Data().Waypoints().empty() || turns < 10) {
    std::fputs("nothing was downloaded\n", stderr);
    return 1;
  }
  std::printf("%.1f\n", static_cast<double>(longest_ns) / 1e6);
  return 0;
}

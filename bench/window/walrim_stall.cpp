// How long the window stands still during a transfer: the longest time between two turns of its event loop while the
// demonstration receiver's data are downloaded next to a full data set. Prints milliseconds.
#include <QApplication>
#include <QElapsedTimer>
#include <QPushButton>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <thread>

#include "qt/QtClock.h"
#include "qt/QtEventLoop.h"
#include "qt/QtInet.h"
#include "receiver/DemoSerialPort.h"
#include "window/MainWindow.h"

namespace {

/// Fills the kinds that are not downloaded up to their limits.
void FillRoutesAndTracks(walrim::InternalData& data) {
  walrim::TrackHeader header;
  header[walrim::TrackHeaderField::trk_pnt_num] = std::to_string(walrim::MaxTrackPoints);
  const int log = data.AddTrackHeader(header);
  walrim::TrackPointEntry point;
  for (int i = 0; i < walrim::MaxTrackPoints; ++i)
    data.AddTrackPoint(point, log, i);
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
  FillRoutesAndTracks(window.Main().Data());
  window.Main().SetGpsNum(walrim::DataKind::TrackLog, "1");
  window.Main().controls.CommPort = "demo";
  window.Main().controls.DownCheck = {true, true, false};
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
  if (window.Main().Data().WaypointCount == 0 || turns < 10) {
    std::fputs("nothing was downloaded\n", stderr);
    return 1;
  }
  std::printf("%.1f\n", static_cast<double>(longest_ns) / 1e6);
  return 0;
}

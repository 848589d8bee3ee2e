// What a frame of the map costs while a log of 30000 points is moved and zoomed: a walk of 240 km on a coastline, seen
// from all Japan down to single steps. Each frame counts with the best of several rounds; the slowest of them is told,
// and the slowest of the first round, in which every zoom is prepared.
//   walrim_map [ROUNDS]
#include <QApplication>
#include <QKeyEvent>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>
#include <vector>

#include "window/MapView.h"

namespace walrim {
namespace {

constexpr QSize ViewSize(1000, 700);
constexpr int Zooms = 14;
constexpr int FramesOfZoom = 5;

/// A step of 8 m and a turn to either side, again and again, with the metre of noise that a receiver has.
DataSet Walk() {
  constexpr double Metre_deg = 1 / 111'000.0;
  DataSet data;
  std::mt19937 random(7);
  std::normal_distribution<double> turn(0, 0.25);
  std::normal_distribution<double> noise(0, Metre_deg);
  double lat_deg = 35.6;
  double lon_deg = 139.2;
  double way = 0;
  if (data.Begin(TrackLog{}) != AddResult::Stored) std::abort();
  for (std::size_t i = 0; i < MaxTrackPoints; ++i) {
    way += turn(random);
    lat_deg += 8 * Metre_deg * std::sin(way);
    lon_deg += 8 * Metre_deg * std::cos(way);
    TrackPoint point;
    point.lat_deg = lat_deg + noise(random);
    point.lon_deg = lon_deg + noise(random);
    if (data.Add(point) != AddResult::Stored) std::abort();
  }
  return data;
}

void Press(MapView& view, Qt::Key key) {
  QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
  QCoreApplication::sendEvent(&view, &event);
}

/// The times of all frames, from the whole walk inwards; at each zoom it is moved to every side.
std::vector<double> RunFrames(MapView& view) {
  constexpr Qt::Key Moves[] = {Qt::Key_Left, Qt::Key_Up, Qt::Key_Right, Qt::Key_Down};
  std::vector<double> times_ms;
  view.ShowAll();
  view.ZoomBy(-4);
  for (int zoom = 0; zoom < Zooms; ++zoom) {
    for (int frame = 0; frame < FramesOfZoom; ++frame) {
      if (frame == 0) {
        view.ZoomBy(1);
      } else {
        Press(view, Moves[frame - 1]);
      }
      const auto start = std::chrono::steady_clock::now();
      view.repaint();
      times_ms.push_back(std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count());
    }
  }
  return times_ms;
}

void Run(int rounds) {
  const DataSet data = Walk();
  MapView view;
  view.resize(ViewSize);
  view.show();
  view.SetScene(SceneOf(data));
  QApplication::processEvents();
  const std::vector<double> first_ms = RunFrames(view);
  std::vector<double> best_ms(first_ms.size(), std::numeric_limits<double>::infinity());
  for (int round = 0; round < rounds; ++round) {
    const std::vector<double> times_ms = RunFrames(view);
    std::ranges::transform(times_ms, best_ms, best_ms.begin(), [](double a, double b) { return std::min(a, b); });
  }
  const double slowest_ms = *std::ranges::max_element(best_ms);
  std::vector<double> sorted_ms = best_ms;
  std::ranges::sort(sorted_ms);
  std::printf("%zu points, %zu frames of %d x %d, best of %d rounds\n", MaxTrackPoints, best_ms.size(),
              ViewSize.width(), ViewSize.height(), rounds);
  std::printf("median %.2f ms, slowest when first seen %.2f ms\n", sorted_ms[sorted_ms.size() / 2],
              *std::ranges::max_element(first_ms));
  std::printf("slowest %.2f ms\n", slowest_ms);
}

}  // namespace
}  // namespace walrim

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  const int rounds = argc > 1 ? std::atoi(argv[1]) : 15;
  walrim::Run(std::max(rounds, 1));
  return 0;
}

// How long it takes to undo deletions of 30000 track points, and to read them from a standard file; in milliseconds,
// the best of some rounds each.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <limits>
#include <string>

#include "formats/Format.h"
#include "records/DataSet.h"
#include "text/TextOutput.h"

namespace walrim {
namespace {

constexpr int Rounds = 15;

double Milliseconds(const std::function<void()>& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

void Check(bool good) {
  if (!good) std::abort();
}

/// Logs of the same length, MaxTrackPoints points in all.
DataSet LogsOf(std::size_t count) {
  DataSet data;
  for (std::size_t log = 0; log < count; ++log) {
    Check(data.Begin(TrackLog{}) == AddResult::Stored);
    for (std::size_t i = 0; i < MaxTrackPoints / count; ++i) {
      TrackPoint point;
      point.lat_deg = 35 + static_cast<double>(i) * 1e-5;
      point.lon_deg = 139 + static_cast<double>(log) * 1e-3;
      point.time = static_cast<GarminSeconds>(500'000'000 + i);
      point.alt_m = 100;
      Check(data.Add(point) == AddResult::Stored);
    }
  }
  return data;
}

double Reading(const DataSet& data) {
  std::string text;
  TextOutput out([&text](const std::string& lines) { text += lines; });
  WriteSettings settings{};
  settings.kinds = {false, false, true};
  static_cast<void>(FormatOf(FormatId::Standard).write(out, data, settings));
  out.Flush();
  double best = std::numeric_limits<double>::max();
  for (int i = 0; i < Rounds; ++i) {
    DataSet read;
    best = std::min(best, Milliseconds([&] {
                      LineSource lines(text, TextEncoding::Utf8);
                      static_cast<void>(FormatOf(FormatId::Standard).read(lines, read, {}));
                    }));
    Check(read.TrackPointCount() == MaxTrackPoints);
  }
  return best;
}

/// The slowest of the two, undoing and redoing.
double Undoing(DataSet data, const std::function<bool(DataSet&)>& erase) {
  data.KeepChanges();
  double best = std::numeric_limits<double>::max();
  for (int i = 0; i < Rounds; ++i) {
    Check(erase(data));
    DataChanges changes = data.TakeChanges();
    const double undo = Milliseconds([&] { data.Exchange(changes); });
    Check(data.TrackPointCount() == MaxTrackPoints);
    const double redo = Milliseconds([&] { data.Exchange(changes); });
    data.Exchange(changes);
    best = std::min(best, std::max(undo, redo));
  }
  return best;
}

bool EraseEverySecondPoint(DataSet& data) {
  bool done = true;
  for (std::size_t log = 0; log < data.Logs().size(); ++log) {
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < data.Logs()[log].points.size(); i += 2)
      places.push_back(i);
    done = data.Edit(Erasure<TrackPoint>(places, log)) && done;
  }
  return done;
}

bool ErasePoints(DataSet& data) {
  std::vector<std::size_t> places(data.Logs()[0].points.size());
  for (std::size_t i = 0; i < places.size(); ++i)
    places[i] = i;
  places.pop_back();  // one stays, so that the list is not simply exchanged
  return data.Edit(Erasure<TrackPoint>(places, 0));
}

bool EraseLogs(DataSet& data) {
  data.Clear(DataKind::TrackLog);
  return true;
}

void Tell(const char* what, double undo_ms, double read_ms) {
  std::printf("undo of %s: %.3f ms; undo / read: %.3f\n", what, undo_ms, undo_ms / read_ms);
}

int Run() {
  const DataSet one = LogsOf(1);
  const DataSet many = LogsOf(1500);
  const double read_ms = Reading(many);
  std::printf("read 30000 points: %.3f ms\n", read_ms);
  Tell("all logs", Undoing(many, EraseLogs), read_ms);
  Tell("the points of a log", Undoing(one, ErasePoints), read_ms);
  Tell("every second point of a log", Undoing(one, EraseEverySecondPoint), read_ms);
  Tell("every second point of 1500 logs", Undoing(many, EraseEverySecondPoint), read_ms);
  return 0;
}

}  // namespace
}  // namespace walrim

int main() {
  return walrim::Run();
}

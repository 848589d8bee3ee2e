#include "records/Chosen.h"

#include <algorithm>

namespace walrim {

namespace {

/// Calls a function with the records of a kind.
template <typename Function>
auto WithRecords(const DataSet& data, DataKind kind, Function function) {
  switch (kind) {
    case DataKind::Waypoint:
      return function(data.Waypoints());
    case DataKind::Route:
      return function(data.Routes());
    case DataKind::TrackLog:
      break;
  }
  return function(data.Logs());
}

void AddTo(DataSet& part, const Waypoint& waypoint) {
  static_cast<void>(part.Add(waypoint));
}
void AddTo(DataSet& part, const Route& route) {
  static_cast<void>(part.Begin(route));
}
void AddTo(DataSet& part, const TrackLog& log) {
  static_cast<void>(part.Begin(TrackLog{log.headless, log.dspl, log.color, log.trk_ident, {}, log.chosen}));
  for (const TrackPoint& point : log.points)
    static_cast<void>(part.Add(point));
}

void AddChosen(DataSet& part, const DataSet& data, DataKind kind) {
  WithRecords(data, kind, [&part](const auto& records) {
    for (const auto& record : records) {
      if (record.chosen) AddTo(part, record);
    }
  });
}

}  // namespace

std::size_t RecordCount(const DataSet& data, DataKind kind) {
  return WithRecords(data, kind, [](const auto& records) { return records.size(); });
}

std::size_t ChosenCount(const DataSet& data, DataKind kind) {
  return WithRecords(data, kind, [](const auto& records) {
    return static_cast<std::size_t>(std::ranges::count_if(records, [](const auto& record) { return record.chosen; }));
  });
}

bool AllChosen(const DataSet& data, DataKind kind) {
  return ChosenCount(data, kind) == RecordCount(data, kind);
}

bool NoneChosen(const DataSet& data, DataKind kind) {
  return data.Holds(kind) && ChosenCount(data, kind) == 0;
}

void SetAllChosen(DataSet& data, DataKind kind, bool chosen) {
  for (std::size_t i = 0; i < RecordCount(data, kind); ++i)
    data.SetChosen(kind, i, chosen);
}

std::vector<std::size_t> ChosenIndices(const DataSet& data, DataKind kind) {
  return WithRecords(data, kind, [](const auto& records) {
    std::vector<std::size_t> indices;
    for (std::size_t i = 0; i < records.size(); ++i) {
      if (records[i].chosen) indices.push_back(i);
    }
    return indices;
  });
}

void RemoveChosen(DataSet& data, DataKind kind) {
  const std::vector<std::size_t> indices = ChosenIndices(data, kind);
  switch (kind) {
    case DataKind::Waypoint:
      static_cast<void>(data.Edit(Erasure<Waypoint>(indices)));
      return;
    case DataKind::Route:
      static_cast<void>(data.Edit(Erasure<Route>(indices)));
      return;
    case DataKind::TrackLog:
      static_cast<void>(data.Edit(Erasure<TrackLog>(indices)));
      return;
  }
}

ChosenData::ChosenData(const DataSet& data) : all_(data) {
  if (std::ranges::all_of(AllDataKinds, [&data](DataKind kind) { return AllChosen(data, kind); })) return;
  part_.emplace();
  for (const DataKind kind : AllDataKinds)
    AddChosen(*part_, data, kind);
}

}  // namespace walrim

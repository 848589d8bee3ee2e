#include "app/Duplicates.h"

#include <algorithm>

#include "app/ReadBack.h"

namespace walrim {

namespace {

bool Same(const Waypoint& one, const Waypoint& other) {
  return one.smbl == other.smbl && SameRecord(one, other);
}

bool Same(const Route& one, const Route& other) {
  return SameRecord(one, other);
}

bool Same(const TrackLog& one, const TrackLog& other) {
  return SameRecord(one, other);
}

template <typename Record>
std::vector<std::size_t> Duplicates(const std::vector<Record>& records, std::size_t held_before) {
  std::vector<std::size_t> duplicates;
  for (std::size_t i = held_before; i < records.size(); ++i) {
    const auto here = records.begin() + static_cast<std::ptrdiff_t>(i);
    if (std::any_of(records.begin(), here, [&](const Record& other) { return Same(other, *here); })) {
      duplicates.push_back(i);
    }
  }
  return duplicates;
}

}  // namespace

std::size_t CountOf(const RecordIndices& indices) {
  std::size_t count = 0;
  for (const auto& of_kind : indices)
    count += of_kind.size();
  return count;
}

RecordCounts CountsOf(const DataSet& data) {
  return {data.Waypoints().size(), data.Routes().size(), data.Logs().size()};
}

RecordIndices DuplicatesBehind(const DataSet& data, const RecordCounts& held_before) {
  return {Duplicates(data.Waypoints(), held_before[IndexOf(DataKind::Waypoint)]),
          Duplicates(data.Routes(), held_before[IndexOf(DataKind::Route)]),
          Duplicates(data.Logs(), held_before[IndexOf(DataKind::TrackLog)])};
}

}  // namespace walrim

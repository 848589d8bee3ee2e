// The three kinds of data that a receiver holds.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace walrim {

/// The kinds of data; the number indexes every per-kind control.
enum class DataKind : int { Waypoint = 0, Route = 1, TrackLog = 2 };
inline constexpr std::size_t DataKindCount = 3;
inline constexpr std::array<DataKind, DataKindCount> AllDataKinds{DataKind::Waypoint, DataKind::Route,
                                                                  DataKind::TrackLog};
[[nodiscard]] constexpr std::size_t IndexOf(DataKind kind) {
  return static_cast<std::size_t>(kind);
}
/// The name of a kind in the window, in messages and in status texts.
[[nodiscard]] constexpr std::string_view DataKindName(DataKind kind) {
  constexpr std::array<std::string_view, DataKindCount> names{"Waypoint", "Route", "TrackLog"};
  return names[IndexOf(kind)];
}

/// Which kinds are meant.
using DataKinds = std::array<bool, DataKindCount>;

}  // namespace walrim

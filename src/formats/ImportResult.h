// What reading a text into a data set has brought.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "records/DataKind.h"

namespace walrim {

/// Something that happened to lines of a text: how often, where first, and why that one.
struct LineCount {
  int count = 0;
  int first_line = 0;     ///< number of the first of them, from 1
  std::string first_why;  ///< in Japanese; empty where there is but one reason

  void Add(int line, std::string_view why = {});
};

/// Messages for the user: the first few, and how many there were.
struct MessageList {
  static constexpr std::size_t MostKept = 20;
  std::vector<std::string> kept;
  int count = 0;
  void Add(std::string_view message);
};

/// What an import brought, and what it met on the way.
struct ImportResult {
  std::array<int, DataKindCount> stored{};  ///< waypoints, routes, track logs that were added
  int route_points = 0;
  int track_points = 0;
  LineCount skipped;      ///< lines that were not stored (header lines do not count)
  LineCount overfull;     ///< stored although they have more filled columns than they should: a comma has cut a text
  LineCount unread_time;  ///< track points whose time is no date; stored without one
  LineCount statements;   ///< statements of a script that were not stored; their lines are not numbered
  MessageList messages;   ///< about unknown commands of a WPT+ text, and about what a GPX text makes of its contents
  std::string refusal;    ///< why the text was not taken at all, in Japanese; then nothing of it was stored

  /// Whether any record or point of a kind came in.
  [[nodiscard]] bool Received(DataKind kind) const;
  /// Adds what another import brought; lines stay those of the one that complained first.
  void Add(const ImportResult& other);
};

}  // namespace walrim

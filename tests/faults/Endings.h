// What each row of the fault matrix is expected to come to, written down by hand.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "app/WalrimMain.h"
#include "faults/Rows.h"

namespace walrim {

/// What the command has moved of a kind: into the data set (download), into the receiver (upload), or the number that
/// is shown (info).
enum class Held {
  Whole,         ///< what was there is replaced by all that was to come
  Old,           ///< what was there before
  Empty,         ///< nothing any more
  Cut,           ///< the records before the fault
  CutAndBlank,   ///< the same; the waypoints that never came are blank
  FirstMissing,  ///< all records but the first; a waypoint is blank at the end
  AllButOne      ///< all records but the one that was hit
};

/// What the program knows of the receiver.
enum class Identity { Known, Silent, Unknown, Refusing };

struct Ending {
  Outcome outcome = Outcome::Done;
  int exit_status = 0;  ///< of walrim-cli
  /// Message boxes in their order. A warning with outcome Done comes for each kind that is hit.
  std::array<std::string_view, 2> messages;
  std::string (*notice)(DataKind) = nullptr;  ///< in the status line, for each kind that is hit
  Identity identity = Identity::Known;
  bool stalled = false;  ///< nobody pressed Cancel for 30 seconds
  Held before = Held::Whole;
  Held hit = Held::Whole;
  Held after = Held::Whole;  ///< of kinds whose turn comes behind the one that is hit
};

/// Numbers, from 0, of the rules that a row falls under. Every row falls under one.
[[nodiscard]] std::vector<std::size_t> RulesOf(const Row& row);
[[nodiscard]] std::size_t RuleCount();
/// The ending of the row's first rule. Throws std::out_of_range for a row without one.
[[nodiscard]] const Ending& EndingOf(const Row& row);

/// What a kind comes to at a row's ending.
[[nodiscard]] Held HeldAfter(const Row& row, const Ending& ending, DataKind kind);
/// The kinds whose transfer is hit.
[[nodiscard]] std::vector<DataKind> HitKinds(const Row& row, const Ending& ending);
/// The kinds whose turn comes, the last one perhaps in vain.
[[nodiscard]] std::vector<DataKind> KindsReached(const Row& row, const Ending& ending);
/// Whether the receiver has told, behind a kind's upload, how much it holds.
[[nodiscard]] bool NewNumberKnown(const Row& row, const Ending& ending, DataKind kind);
[[nodiscard]] std::vector<std::string> MessagesOf(const Row& row, const Ending& ending);
/// The text of the status line.
[[nodiscard]] std::string StatusOf(const Row& row, const Ending& ending);
/// What walrim-cli says beyond the message boxes and the status line; empty: nothing.
[[nodiscard]] std::string_view TerminalMessage(const Ending& ending);
/// Records in front of the fault: how many have come, or were announced.
[[nodiscard]] int RecordsBeforeFault(const Row& row, int count);

}  // namespace walrim

// What is left of the records when the program does not come to its end.
#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>

#include "app/DateCommands.h"
#include "app/Outcome.h"
#include "app/ProgramState.h"
#include "app/RecoveryFiles.h"
#include "platform/Clock.h"
#include "platform/Desktop.h"

namespace walrim {

class RecoveryCommands {
 public:
  /// A file is written this long after the one before at the earliest.
  static constexpr std::chrono::seconds Interval{30};

  /// All must outlive this object.
  RecoveryCommands(ProgramState& state, DateCommands& dates, const Clock& clock, Desktop& desktop)
      : state_(state), dates_(dates), clock_(clock), desktop_(desktop) {}

  /// Where the files lie; before, and without a folder, nothing is kept. The state keeps steps.
  void UseFolder(const std::filesystem::path& folder) { files_.emplace(folder); }

  /// Asks what becomes of each file that is left. What is restored is unsaved, and a step.
  Outcome OfferLeft();

  /// Writes what is held where that is unsaved, differs from what was written last, and the interval is over; takes the
  /// file away where all is saved. To be called behind each command, and when DueIn is over. That it cannot be written
  /// is told once, in the status line.
  void Keep();
  /// How long it is until Keep has something to write; nothing where it has not.
  [[nodiscard]] std::optional<std::chrono::nanoseconds> DueIn() const;
  /// The program comes to its end: what is unsaved is not wanted.
  void End();

 private:
  using Revisions = std::array<std::uint64_t, DataKindCount>;

  [[nodiscard]] bool Differs() const;
  void Write();
  void Offer(LeftRecovery& left);
  [[nodiscard]] bool Restore(const DataSet& data, std::optional<std::int64_t> written);

  ProgramState& state_;
  DateCommands& dates_;
  const Clock& clock_;
  Desktop& desktop_;
  std::optional<RecoveryFiles> files_;
  std::optional<Revisions> written_;  ///< what the file holds; nothing where there is none
  std::optional<std::chrono::nanoseconds> last_write_;
  bool problem_told_ = false;
};

}  // namespace walrim

// What is left of the records when the program does not come to its end.
#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <list>
#include <optional>
#include <string>

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

  /// Looks for files that are left. Until this program ends or an answer is given no other one takes them for left. One
  /// that is damaged is renamed.
  void FindLeft();
  /// What is to be asked of the first one, or told of one that is damaged; nothing where there is none.
  struct LeftQuestion {
    std::string text;
    bool damaged = false;
  };
  [[nodiscard]] std::optional<LeftQuestion> Question() const;
  /// Restores what was asked for (First), which is unsaved then, and a step; removes the file (Second); or leaves it
  /// for the next start (Back).
  Outcome AnswerLeft(Answer answer);

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

  struct Offer {
    LeftRecovery file;
    LeftQuestion question;
  };

  [[nodiscard]] bool Differs() const;
  void Write();
  [[nodiscard]] LeftQuestion QuestionOf(LeftRecovery& left);
  void RestoreFrom(LeftRecovery& left);
  [[nodiscard]] bool Restore(const DataSet& data, std::optional<std::int64_t> written);

  ProgramState& state_;
  DateCommands& dates_;
  const Clock& clock_;
  Desktop& desktop_;
  std::optional<RecoveryFiles> files_;
  std::list<Offer> offers_;
  std::optional<Revisions> written_;  ///< what the file holds; nothing where there is none
  std::optional<std::chrono::nanoseconds> last_write_;
  bool problem_told_ = false;
};

}  // namespace walrim

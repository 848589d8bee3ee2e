// The commands that look after dates: logs that are 1024 weeks behind, and the receiver's clock.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "app/Dialogs.h"
#include "app/Outcome.h"
#include "app/ProgramState.h"
#include "device/Garmin.h"
#include "platform/Clock.h"
#include "platform/Desktop.h"

namespace walrim {

class DateCommands {
 public:
  /// All must outlive this object. Without dialogs FixDates asks nobody.
  DateCommands(ProgramState& state, Garmin& garmin, const Clock& clock, Desktop& desktop, Dialogs* dialogs)
      : state_(state), garmin_(garmin), clock_(clock), desktop_(desktop), dialogs_(dialogs) {}

  /// Finds what is to be repaired in the logs that were downloaded just now. Where they look as if something is, the
  /// receiver's clock is asked first, unless DateFixing::Never is set.
  void ExamineDownload();
  /// The same for the logs from one on, which a file brought that was last written at a Unix time. Without one nothing
  /// is known of them.
  void ExamineFile(std::size_t first_log, std::optional<std::int64_t> written);

  /// Shows the repairs and makes them when the user agrees.
  Outcome FixDates();

  /// What the receiver's clock tells, in seconds since 1989/12/31 00:00:00 UTC; nothing where it tells none.
  [[nodiscard]] std::optional<std::int64_t> AskReceiver();
  /// Tells the receiver's clock in the status line, where there is one. Nothing depends on it.
  void TellReceiverClock();
  /// Shows the receiver's date beside the computer's, and sets it when the user agrees. The receiver has been
  /// identified.
  Outcome SetReceiverClock();

 private:
  ProgramState& state_;
  Garmin& garmin_;
  const Clock& clock_;
  Desktop& desktop_;
  Dialogs* dialogs_;
};

}  // namespace walrim

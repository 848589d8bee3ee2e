// The status line as the transfers use it: progress is shown behind the text that stood there before.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/Desktop.h"

namespace walrim {

/// One level of saved text; a second Save overwrites the first.
class StatusLine {
 public:
  explicit StatusLine(Desktop& desktop) : desktop_(desktop) {}

  void Save() { saved_ = desktop_.StatusCaption(); }
  void Restore() { desktop_.SetStatusCaption(saved_); }
  /// Shows a text behind the saved one and a blank.
  void ShowBehindSaved(std::string_view text) { desktop_.SetStatusCaption(saved_ + ' ' + std::string(text)); }
  /// Shows a text alone; the saved text stays.
  void SetCaption(std::string_view text) { desktop_.SetStatusCaption(text); }
  /// Shows how far an operation has come; a total of 0 ends that.
  void SetProgress(std::int64_t done, std::int64_t total) { desktop_.SetProgress(done, total); }

 private:
  Desktop& desktop_;
  std::string saved_;
};

}  // namespace walrim
